#pragma once

#include "displaylist/core/group.h"

// The walk over bottom groups in drawing order. `taken` tells of each group that
// the walk comes to, but for the start, whether it goes there.

namespace DL {

/// The first of `group` and its later siblings that is taken; null when none is.
template <class Taken>
Group* first_taken(Group* group, const Taken& taken) {
  while (group != nullptr && !taken(*group)) group = group->m_pNext;
  return group;
}

/// The nearest taken group after the whole subtree of `group`.
template <class Taken>
Group* after_subtree(Group* group, const Taken& taken) {
  for (; group != nullptr; group = group->m_pParent) {
    if (Group* next = first_taken(group->m_pNext, taken)) return next;
  }
  return nullptr;
}

/// The leaf that drawing reaches first in or after `start`; null when `start`
/// is null or no leaf follows.
template <class Taken>
Group* first_bottom_group(Group* start, const Taken& taken) {
  Group* group = start;
  while (group != nullptr && !group->contains_drawables()) {
    Group* child = first_taken(group->m_pFirst.group, taken);
    group = child != nullptr ? child : after_subtree(group, taken);
  }
  return group;
}

/// The leaf that is drawn after `group`, or first in it when it is no leaf; null
/// at the end.
template <class Taken>
Group* next_bottom_group(Group* group, const Taken& taken) {
  if (group == nullptr) return nullptr;
  return first_bottom_group(group->contains_drawables() ? after_subtree(group, taken) : group,
                            taken);
}

}  // namespace DL
