#pragma once

#include <vector>

#include "displaylist/core/group.h"
#include "displaylist/drawables/drawable.h"
#include "tests/support/stream_client.h"

/// The words of a tree as a plain recursion over groups writes them: a group,
/// its next sibling's record, its children's.
class RecursiveWriter {
 public:
  /// The list's callbacks tell the indices of renditions.
  explicit RecursiveWriter(DL::DisplayList& list) : m_list(list) {
    if (list.m_pRootGroup == nullptr) {
      m_words.push_back(stream_words::kEnd);
    } else {
      write(*list.m_pRootGroup);
    }
  }

  [[nodiscard]] const stream_words::Words& words() const { return m_words; }

 private:
  void write(DL::Group& group) {
    const bool is_leaf = group.contains_drawables();
    m_words.push_back(!is_leaf          ? stream_words::kGroup
                      : group.is_open() ? stream_words::kOpen
                                        : stream_words::kBottom);
    for (const std::int32_t side :
         {group.m_bounds.min.x, group.m_bounds.min.y, group.m_bounds.max.x, group.m_bounds.max.y}) {
      m_words.push_back(static_cast<std::uint32_t>(side));
    }
    if (!group.is_open()) m_words.push_back(group.level());
    m_words.push_back(group.m_flags);
    write_or_end(group.m_pNext);
    if (is_leaf) {
      write_drawables(group.m_pFirst.drawable);
    } else {
      write_or_end(group.m_pFirst.group);
    }
  }

  void write_or_end(DL::Group* group) {
    if (group == nullptr) {
      m_words.push_back(stream_words::kEnd);
    } else {
      write(*group);
    }
  }

  /// Each drawable alone, without the end marker that it then writes.
  void write_drawables(DL::Drawable* first) {
    for (DL::Drawable* drawable = first; drawable != nullptr; drawable = drawable->m_pNext) {
      DL::Drawable* next = drawable->m_pNext;
      drawable->m_pNext = nullptr;
      MemoryStream stream;
      drawable->serialize_out(&stream, m_list);
      drawable->m_pNext = next;
      stream_words::Words record = stream.words();
      if (!record.empty()) record.pop_back();
      m_words.insert(m_words.end(), record.begin(), record.end());
    }
    m_words.push_back(stream_words::kEnd);
  }

  DL::DisplayList& m_list;
  stream_words::Words m_words;
};
