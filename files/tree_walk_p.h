#pragma once

#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "displaylist/drawables/drawable.h"

/// Walks over the trees of lists, without recursion.
namespace files {

/// The group after this one, parents before their children; null at the end.
inline DL::Group* next_in_preorder(DL::Group& group) {
  if (!group.contains_drawables() && group.m_pFirst.group != nullptr) return group.m_pFirst.group;
  DL::Group* at = &group;
  while (at->m_pParent != nullptr && at->m_pNext == nullptr) at = at->m_pParent;
  return at->m_pParent == nullptr ? nullptr : at->m_pNext;
}

/// Calls `visit(group)` for each group, parents before their children.
template <class Visit>
void for_each_group(const DL::DisplayList& list, const Visit& visit) {
  for (DL::Group* group = list.m_pRootGroup; group != nullptr; group = next_in_preorder(*group)) {
    visit(*group);
  }
}

/// Calls `visit(drawable)` for each drawable, in drawing order.
template <class Visit>
void for_each_drawable(const DL::DisplayList& list, const Visit& visit) {
  for_each_group(list, [&visit](DL::Group& group) {
    if (!group.contains_drawables()) return;
    for (DL::Drawable* d = group.m_pFirst.drawable; d != nullptr; d = d->m_pNext) visit(*d);
  });
}

}  // namespace files
