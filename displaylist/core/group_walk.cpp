#include "displaylist/core/group.h"
#include "displaylist/core/group_walk_p.h"

namespace DL {

namespace {

/// The nearest group after the whole subtree of `group`.
Group* after_subtree(Group* group) {
  while (group != nullptr && group->m_pNext == nullptr) group = group->m_pParent;
  return group == nullptr ? nullptr : group->m_pNext;
}

}  // namespace

BottomGroup* first_bottom_group(Group* start) {
  Group* group = start;
  while (group != nullptr && !group->contains_drawables()) {
    Group* child = group->m_pFirst.group;
    group = child != nullptr ? child : after_subtree(group);
  }
  return static_cast<BottomGroup*>(group);
}

BottomGroup* next_bottom_group(Group* group) {
  return first_bottom_group(after_subtree(group));
}

}  // namespace DL
