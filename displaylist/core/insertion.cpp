// How drawables find their group: appending to the open group, splitting it,
// closing it and climbing; and insertion in the middle of the drawing order.

#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "displaylist/core/group_walk_p.h"
#include "displaylist/drawables/drawable.h"

namespace DL {

namespace {

BoundsTemplate<long> bounds_of(const Drawable& drawable) {
  BoundsTemplate<long> bounds;
  drawable.add_bounds(bounds);
  return bounds;
}

/// Climbs from `start` to the nearest group that contains the bounds, closes
/// the last group left on the way (`to_close` when it is the start's own child)
/// and opens a child there.
Group* climb_and_add(Group* start, Group* to_close, Drawable* drawable,
                     const BoundsTemplate<long>& bounds, DisplayList& list, unsigned long flags) {
  Group* group = start;
  while (group != nullptr && !bounds.is_inside(group->m_bounds)) {
    to_close = group;
    group = group->m_pParent;
  }
  if (group == nullptr) return nullptr;
  if (to_close != nullptr) to_close->close();
  Group* child = group->open_child_with(drawable, bounds, list, flags);
  list.m_pInsertHint = nullptr;
  return child;
}

/// Takes the empty open group out of the tree, with the ancestors that this
/// empties. Returns where to climb from.
Group* discard_empty(OpenBottomGroup* empty) {
  Group* parent = empty->m_pParent;
  if (parent == nullptr || !parent->unlink_child(empty)) return nullptr;
  delete empty;
  if (parent->m_pFirst.group != nullptr || parent->m_pParent == nullptr) return parent;
  return parent->m_pParent->empty_child_notify(parent);
}

/// Finds the predecessor of `before` in the group's chain; false when `before`
/// is not in it.
bool find_predecessor(const BottomGroup& group, const Drawable* before, Drawable*& predecessor) {
  predecessor = nullptr;
  for (Drawable* d = group.m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
    if (d == before) return true;
    predecessor = d;
  }
  return false;
}

}  // namespace

Group* DisplayList::add(Drawable* drawable, const BoundsTemplate<long>& bounds,
                        unsigned long flags) {
  if (!ensure_open_group()) return nullptr;
  if (m_cOpenDrawables < m_cMaxOpenDrawables) {
    return m_pOpenGroup->add(drawable, bounds, this, flags);
  }
  if (static_cast<std::int32_t>(m_pOpenGroup->level()) < m_cMaxLevel) {
    return split_open_group_and_add(drawable, bounds, flags);
  }
  Group* parent = m_pOpenGroup->m_pParent;
  // A full root has nowhere to go on: it takes what does not fit elsewhere.
  if (parent == nullptr) return m_pOpenGroup->add(drawable, bounds, this, flags);
  m_pOpenGroup->close();
  return parent->add(drawable, bounds, this, flags);
}

Group* DisplayList::add(Drawable* drawable, unsigned long flags) {
  return add(drawable, bounds_of(*drawable), flags);
}

Group* DisplayList::split_open_group_and_add(Drawable* drawable, const BoundsTemplate<long>& bounds,
                                             unsigned long flags) {
  OpenBottomGroup* split = m_pOpenGroup;
  Drawable* chain = split->m_pFirst.drawable;
  const std::uint32_t level = split->level();
  const BoundsTemplate<long> seed = chain != nullptr ? bounds_of(*chain) : bounds;

  auto* child = new (m_heap)
      OpenBottomGroup(*this, split, level + 1, OpenBottomGroup::cell_around(seed, level + 1));
  if (child == nullptr) return nullptr;
  split->m_level = level;
  class_change::become<Group>(split);
  Group* inner = split;
  inner->m_pFirst.group = inner->m_pLastChild.group = child;

  while (chain != nullptr) {
    Drawable* moved = chain;
    chain = chain->m_pNext;
    moved->m_pNext = nullptr;
    m_pOpenGroup->add(moved, bounds_of(*moved), this, inner->m_flags);
  }
  if (child == m_pOpenGroup && bounds.is_inside(child->m_bounds)) {
    child->close();
    return inner->add(drawable, bounds, this, flags);
  }
  return m_pOpenGroup->add(drawable, bounds, this, flags);
}

bool DisplayList::ensure_open_group() {
  if (m_pOpenGroup != nullptr) return true;
  if (m_pRootGroup == nullptr) {
    m_pRootGroup = new (m_heap) OpenBottomGroup(*this, nullptr, 0, BoundsTemplate<long>::plane());
  } else {
    m_pRootGroup->create_open_bottom_group(this);
  }
  return m_pOpenGroup != nullptr;
}

Group* Group::add(Drawable* drawable, const BoundsTemplate<long>& bounds, DisplayList* list,
                  unsigned long flags) {
  if (bounds.is_inside(m_bounds)) return open_child_with(drawable, bounds, *list, flags);
  return climb_and_add(m_pParent, this, drawable, bounds, *list, flags);
}

Group* OpenBottomGroup::add(Drawable* drawable, const BoundsTemplate<long>& bounds,
                            DisplayList* list, unsigned long flags) {
  if (bounds.is_inside(m_bounds)) {
    append(drawable, bounds, flags);
    return this;
  }
  if (m_pFirst.drawable != nullptr) {
    return climb_and_add(m_pParent, this, drawable, bounds, *list, flags);
  }
  return climb_and_add(discard_empty(this), nullptr, drawable, bounds, *list, flags);
}

Group* DisplayList::add_before(Group* hint, Drawable* before, Drawable* chain,
                               const BoundsTemplate<long>& bounds) {
  Drawable* predecessor = nullptr;
  BottomGroup* group = first_bottom_group(hint);
  while (group != nullptr && !find_predecessor(*group, before, predecessor)) {
    group = next_bottom_group(group);
  }
  if (group == nullptr) return nullptr;

  for (Group* widened = group; widened != nullptr; widened = widened->m_pParent) {
    widened->m_bounds.widen(bounds);
  }
  (predecessor == nullptr ? group->m_pFirst.drawable : predecessor->m_pNext) = chain;
  Drawable* end = chain;
  while (end->m_pNext != nullptr) end = end->m_pNext;
  end->m_pNext = before;
  if (group == m_pOpenGroup) {
    m_openBounds.widen(bounds);
    m_cOpenDrawables = group->count_and_set_last_drawable();
  }
  return group;
}

}  // namespace DL
