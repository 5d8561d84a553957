#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "displaylist/displaylist.h"
#include "files/drawing_file.h"
#include "lumen/recorder.h"
#include "tests/support/tree_walk.h"

/// What tests of files write, read and compare.
namespace file_checks {

using Bytes = std::vector<std::byte>;
using Lines = std::vector<std::string>;

inline Bytes written(DL::DisplayList& list, const files::Properties& properties = {}) {
  Bytes bytes;
  EXPECT_EQ(files::write_bytes(bytes, list, properties), "");
  return bytes;
}

inline files::Contents read_back(const Bytes& bytes, const files::ReadOptions& options = {}) {
  files::Contents contents;
  EXPECT_EQ(files::read_bytes(bytes, options, contents), "");
  return contents;
}

/// What a list draws, one line for each device call.
inline Lines drawn(DL::DisplayList& list) {
  const auto recorder = LM_Create<lumen::Recorder>();
  const LM_Handle<LM_Renderer> before = list.m_pRenderer;
  list.m_pRenderer = recorder;
  if (list.m_pRootGroup != nullptr) list.m_pRootGroup->draw_unclipped(list);
  list.m_pRenderer = before;
  return recorder->lines();
}

/// The exact class of an object.
inline const void* class_of(const DL::Drawable& drawable) {
  const void* table = nullptr;
  std::memcpy(&table, static_cast<const void*>(&drawable), sizeof table);
  return table;
}

inline std::string text(const DL::BoundsTemplate<long>& b) {
  std::ostringstream os;
  os << b.min.x << ' ' << b.min.y << ' ' << b.max.x << ' ' << b.max.y;
  return os.str();
}

/// The text with a sign in the place of each address.
inline std::string without_addresses(std::string text) {
  for (std::size_t at = text.find("0x"); at != std::string::npos; at = text.find("0x", at)) {
    const std::size_t end = text.find_first_not_of("0123456789abcdef", at + 2);
    text.replace(at, (end == std::string::npos ? text.size() : end) - at, "@");
  }
  return text;
}

/// The line that the drawable dumps, without addresses.
inline std::string dump_line(const DL::Drawable& drawable) {
  std::ostringstream os;
  DL::DisplayListDebug statistics;
  drawable.dump(os, 0, statistics);
  os << statistics.m_cDrawableBytes;
  return without_addresses(os.str());
}

/// Everything that a drawable tells of its geometry.
inline std::string geometry(const DL::Drawable& drawable) {
  std::ostringstream os;
  DL::BoundsTemplate<long> bounds;
  drawable.add_bounds(bounds);
  os << text(bounds) << " | " << drawable.get_vector_count() << " |";
  for (int i = 0; drawable.supports_fast_vector_iterator() && i < drawable.get_vector_count();
       ++i) {
    DL::VectorTemplate<long> vector{};
    if (drawable.get_vector(i, vector)) {
      os << ' ' << vector.from.x << ',' << vector.from.y << '-' << vector.to.x << ','
         << vector.to.y;
    }
  }
  return os.str();
}

/// The tree with its groups' fields and the drawables in them, a line for each.
inline void describe(DL::Group& group, int depth, Lines& lines) {
  std::ostringstream os;
  os << std::string(static_cast<std::size_t>(depth), ' ') << text(group.m_bounds) << " level "
     << group.level() << " flags " << group.m_flags << (group.is_open() ? " open" : "")
     << (group.is_hidden() ? " hidden" : "");
  lines.push_back(os.str());
  if (group.contains_drawables()) {
    for (DL::Drawable* d = group.m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
      lines.push_back(std::string(static_cast<std::size_t>(depth) + 1, ' ') + dump_line(*d) +
                      geometry(*d) + (d->is_hidden() ? " hidden" : "") +
                      (d->is_palettized() ? " palettized" : ""));
    }
    return;
  }
  for (DL::Group* g = group.m_pFirst.group; g != nullptr; g = g->m_pNext) {
    describe(*g, depth + 1, lines);
  }
}

inline Lines describe(DL::DisplayList& list) {
  Lines lines;
  if (list.m_pRootGroup != nullptr) describe(*list.m_pRootGroup, 0, lines);
  return lines;
}

}  // namespace file_checks
