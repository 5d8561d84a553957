#pragma once

#include <algorithm>
#include <functional>
#include <vector>

#include "tests/support/tree_walk.h"

/// The drawables of a group and of those below it that `enters` lets a walk go to,
/// in drawing order.
inline void collect_drawables(DL::Group& group, const std::function<bool(DL::Group&)>& enters,
                              std::vector<DL::Drawable*>& drawables) {
  if (group.contains_drawables()) {
    for (DL::Drawable* d = group.m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
      drawables.push_back(d);
    }
    return;
  }
  for (DL::Group* child = group.m_pFirst.group; child != nullptr; child = child->m_pNext) {
    if (enters(*child)) collect_drawables(*child, enters, drawables);
  }
}

inline std::vector<DL::Drawable*> drawables_below(DL::Group& group) {
  std::vector<DL::Drawable*> drawables;
  collect_drawables(
      group, [](DL::Group&) { return true; }, drawables);
  return drawables;
}

/// The drawables of all groups that meet the bounds with every group above them.
inline std::vector<DL::Drawable*> drawables_meeting(DL::DisplayList& list,
                                                    const DL::BoundsTemplate<long>& bounds) {
  std::vector<DL::Drawable*> drawables;
  collect_drawables(
      *list.m_pRootGroup, [&](DL::Group& group) { return group.m_bounds.meets(bounds); },
      drawables);
  return drawables;
}

/// The drawables of a group and of all that are drawn after it.
inline std::vector<DL::Drawable*> drawables_from(DL::DisplayList& list, const DL::Group* start) {
  const std::vector<DL::Group*> groups = groups_of(list);
  std::vector<DL::Drawable*> drawables;
  for (auto at = std::find(groups.begin(), groups.end(), start); at != groups.end(); ++at) {
    if (!(*at)->contains_drawables()) continue;
    for (DL::Drawable* d : drawables_below(**at)) drawables.push_back(d);
  }
  return drawables;
}

/// The leaf that holds a drawable; null when none does.
inline DL::Group* leaf_of(DL::DisplayList& list, const DL::Drawable* drawable) {
  for (DL::Group* leaf : leaves_of(list)) {
    for (const DL::Drawable* d = leaf->m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
      if (d == drawable) return leaf;
    }
  }
  return nullptr;
}

/// The lowest ancestor that stays when a group goes with all that this empties.
inline DL::Group* survivor_above(const DL::Group& gone) {
  const DL::Group* group = &gone;
  while (group->m_pParent->m_pParent != nullptr && group->m_pParent->m_pFirst.group == group &&
         group->m_pNext == nullptr) {
    group = group->m_pParent;
  }
  return group->m_pParent;
}
