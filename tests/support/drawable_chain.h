#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include "displaylist/displaylist.h"

/// Drawables linked through m_pNext, as a bottom group holds them; owned.
class DrawableChain {
 public:
  DrawableChain() = default;
  explicit DrawableChain(DL::Drawable* first) : m_first(first) {}
  DrawableChain(std::initializer_list<DL::Drawable*> drawables) {
    DL::Drawable** link = &m_first;
    for (DL::Drawable* drawable : drawables) {
      *link = drawable;
      link = &drawable->m_pNext;
    }
  }
  DrawableChain(const DrawableChain&) = delete;
  DrawableChain& operator=(const DrawableChain&) = delete;
  ~DrawableChain() {
    while (m_first != nullptr) {
      DL::Drawable* gone = m_first;
      m_first = gone->m_pNext;
      delete gone;
    }
  }

  [[nodiscard]] DL::Drawable* first() const { return m_first; }
  [[nodiscard]] std::vector<DL::Drawable*> drawables() const {
    std::vector<DL::Drawable*> all;
    for (DL::Drawable* each = m_first; each != nullptr; each = each->m_pNext) all.push_back(each);
    return all;
  }

 private:
  DL::Drawable* m_first = nullptr;
};

/// Reads a class tag and the drawable's record with all that follows it, as a
/// bottom group's reader does; null when the tag makes no drawable.
inline DL::Drawable* read_drawables(ZtFsStream& stream, DL::DisplayList& list) {
  std::uint32_t tag = 0;
  std::int32_t size = sizeof tag;
  stream.read(&tag, &size);
  DL::Drawable* first = list.create_drawable(tag);
  if (first != nullptr) first->serialize_in(&stream, list);
  return first;
}
