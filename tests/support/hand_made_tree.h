#pragma once

#include <cstdint>
#include <initializer_list>

#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "displaylist/drawables/drawable.h"

/// Trees as a test wants them, whatever insertion would make of the drawables.
namespace hand_made {

using Bounds = DL::BoundsTemplate<long>;

inline DL::Group* fill(DL::Group* group, std::uint32_t level, const Bounds& bounds,
                       std::uint32_t flags) {
  group->m_level = level;
  group->m_bounds = bounds;
  group->m_flags = flags;
  return group;
}

inline DL::Group* inner(std::uint32_t level, const Bounds& bounds, std::uint32_t flags,
                        std::initializer_list<DL::Group*> children) {
  DL::Group* group = fill(new DL::Group(DL::class_change::kUnfilled), level, bounds, flags);
  for (DL::Group* child : children) {
    group->append_child(child);
    child->m_pParent = group;
  }
  return group;
}

inline DL::Group* leaf(std::uint32_t level, const Bounds& bounds, std::uint32_t flags,
                       std::initializer_list<DL::Drawable*> drawables) {
  auto* group = new DL::BottomGroup(DL::class_change::kUnfilled);
  fill(group, level, bounds, flags);
  DL::Drawable** link = &group->m_pFirst.drawable;
  for (DL::Drawable* drawable : drawables) {
    *link = drawable;
    link = &drawable->m_pNext;
  }
  group->count_and_set_last_drawable();
  return group;
}

/// The list's new open group.
inline DL::Group* open(DL::DisplayList& list, std::uint32_t level, const Bounds& bounds,
                       std::uint32_t flags, std::initializer_list<DL::Drawable*> drawables) {
  auto* group = new DL::OpenBottomGroup(list, nullptr, level, bounds);
  for (DL::Drawable* drawable : drawables) {
    Bounds own;
    drawable->add_bounds(own);
    group->append(drawable, own, flags);
  }
  group->m_flags = flags;
  return group;
}

/// Makes `root`, which may be null, the list's tree instead of the one it has.
inline void plant(DL::DisplayList& list, DL::Group* root) {
  delete list.m_pRootGroup;
  list.m_pRootGroup = root;
}

}  // namespace hand_made
