// How drawables find their group: appending to the open group, splitting it,
// closing it and climbing; and insertion in the middle of the drawing order.

#include <algorithm>
#include <cassert>
#include <new>
#include <utility>

#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "displaylist/core/iterators.h"
#include "displaylist/core/leaf_index_p.h"
#include "displaylist/core/multithread.h"
#include "displaylist/core/nesting_p.h"
#include "displaylist/drawables/drawable.h"

namespace DL {

namespace {

BoundsTemplate<long> bounds_of(const Drawable& drawable) {
  BoundsTemplate<long> bounds;
  drawable.add_bounds(bounds);
  return bounds;
}

/// The cells of deeper levels would be smaller than one logical unit.
constexpr std::int32_t kDeepestLevel = 31;

/// What DisplayList::add is asked to add.
struct Addition {
  Drawable* drawable;
  const BoundsTemplate<long>& bounds;
  DisplayList& list;
  unsigned long flags;
};

/// The memory of the next open group: taken before anything makes way for the
/// group, so that a list without memory stays as it is.
class NextOpenGroup {
 public:
  explicit NextOpenGroup(const DisplayList& list)
      : m_memory(Group::operator new(sizeof(OpenBottomGroup), list.m_heap)) {}
  NextOpenGroup(const NextOpenGroup&) = delete;
  NextOpenGroup& operator=(const NextOpenGroup&) = delete;
  ~NextOpenGroup() { Group::operator delete(m_memory); }

  explicit operator bool() const { return m_memory != nullptr; }

  /// Opens the group as the last child of `parent`.
  OpenBottomGroup* open_below(Group& parent, std::uint32_t level, const BoundsTemplate<long>& seed,
                              DisplayList& list) {
    auto* child = ::new (std::exchange(m_memory, nullptr))
        OpenBottomGroup(list, &parent, level, OpenBottomGroup::cell_around(seed, level));
    parent.append_child(child);
    return child;
  }
  /// Opens the group as the last child of `parent`, with the addition in it.
  Group* open_below(Group& parent, const Addition& a) {
    OpenBottomGroup* child = open_below(parent, parent.level() + 1, a.bounds, a.list);
    child->append(a.drawable, a.bounds, a.flags);
    return child;
  }

 private:
  void* m_memory;
};

/// The nearest group from `start` upward that contains the bounds; null when
/// none does. `left` becomes the last group left on the way, if any.
Group* nearest_container(Group* start, const BoundsTemplate<long>& bounds, Group*& left) {
  Group* group = start;
  while (group != nullptr && !bounds.is_inside(group->m_bounds)) {
    left = group;
    group = group->m_pParent;
  }
  return group;
}

/// Adds to a new child of the nearest group from `start` upward that contains
/// the bounds, and closes the last group left on the way (`to_close` when it is
/// the start's own child).
Group* climb_and_add(Group* start, Group* to_close, const Addition& a) {
  Group* group = nearest_container(start, a.bounds, to_close);
  NextOpenGroup next(a.list);
  if (group == nullptr || !next) return nullptr;
  if (to_close != nullptr) {
    // In a list that was read the open group may not be the last one there.
    if (a.list.has_open_group()) a.list.m_pOpenGroup->close();
    to_close->close();
  }
  Group* child = next.open_below(*group, a);
  if (group != start) a.list.m_pInsertHint = nullptr;
  return child;
}

/// The lowest ancestor of an empty group that does not go with it.
Group* lowest_survivor(const Group& empty) {
  Group* group = empty.m_pParent;
  const Group* child = &empty;
  while (group != nullptr && group->m_pParent != nullptr && group->m_pFirst.group == child &&
         child->m_pNext == nullptr) {
    child = group;
    group = group->m_pParent;
  }
  return group;
}

/// Takes the empty open group out of the tree, with the ancestors that this
/// empties, and adds to a new child of the nearest group that contains the
/// bounds.
Group* discard_and_add(OpenBottomGroup* empty, const Addition& a) {
  Group* to_close = nullptr;
  Group* group = nearest_container(lowest_survivor(*empty), a.bounds, to_close);
  NextOpenGroup next(a.list);
  if (group == nullptr || !next) return nullptr;
  if (empty->m_pParent->empty_child_notify(empty) == nullptr) return nullptr;
  if (to_close != nullptr) to_close->close();
  return next.open_below(*group, a);
}

/// Makes the bounds of a group and of those above contain the bounds.
void widen_upward(Group* group, const BoundsTemplate<long>& bounds) {
  for (; group != nullptr; group = group->m_pParent) {
    if (bounds.is_inside(group->m_bounds)) continue;
    group->m_bounds.widen(bounds);
    LeafIndex::drop_covering(*group);
  }
}

/// Appends to the open group whatever its cell.
void append_anyhow(const Addition& a) {
  widen_upward(a.list.m_pOpenGroup, a.bounds);
  a.list.m_pOpenGroup->append(a.drawable, a.bounds, a.flags);
}

/// Takes the first drawable off a chain.
Drawable* unlink_first(Drawable*& chain) {
  Drawable* first = std::exchange(chain, chain->m_pNext);
  first->m_pNext = nullptr;
  return first;
}

/// The drawable before another one in its group; null for the first.
Drawable* predecessor_of(const Drawable* drawable, const Group& group) {
  Drawable* predecessor = group.m_pFirst.drawable;
  if (predecessor == drawable) return nullptr;
  while (predecessor->m_pNext != drawable) predecessor = predecessor->m_pNext;
  return predecessor;
}

}  // namespace

Group* DisplayList::add(Drawable* drawable, const BoundsTemplate<long>& bounds,
                        unsigned long flags) {
  assert(is_drained(*this));
  if (drawable == nullptr || !ensure_open_group()) return nullptr;
  if (m_cOpenDrawables < m_cMaxOpenDrawables) {
    return m_pOpenGroup->add(drawable, bounds, this, flags);
  }
  if (static_cast<std::int32_t>(m_pOpenGroup->level()) < std::min(m_cMaxLevel, kDeepestLevel) &&
      nesting::depth_of(*m_pOpenGroup) < nesting::kDeepestSplit) {
    return split_open_group_and_add(drawable, bounds, flags);
  }
  Group* parent = m_pOpenGroup->m_pParent;
  // A full root has nowhere to go on: it takes what does not fit elsewhere.
  if (parent == nullptr) return m_pOpenGroup->add(drawable, bounds, this, flags);
  return climb_and_add(parent, m_pOpenGroup, {drawable, bounds, *this, flags});
}

Group* DisplayList::add(Drawable* drawable, unsigned long flags) {
  return drawable == nullptr ? nullptr : add(drawable, bounds_of(*drawable), flags);
}

Group* DisplayList::split_open_group_and_add(Drawable* drawable, const BoundsTemplate<long>& bounds,
                                             unsigned long flags) {
  NextOpenGroup next(*this);
  if (!next) return nullptr;
  OpenBottomGroup* split = m_pOpenGroup;
  Drawable* chain = split->m_pFirst.drawable;
  const std::uint32_t level = split->level();
  split->m_level = level;
  split->m_pFirst.group = split->m_pLastChild.group = nullptr;
  class_change::become<Group>(split);
  Group* inner = split;

  const BoundsTemplate<long> seed = chain != nullptr ? bounds_of(*chain) : bounds;
  OpenBottomGroup* child = next.open_below(*inner, level + 1, seed, *this);
  // The first at least stays in the child, which so cannot be discarded.
  if (chain != nullptr) chain = child->append_fitting(chain, inner->m_flags);
  while (chain != nullptr) {
    Drawable* moved = unlink_first(chain);
    const BoundsTemplate<long> moved_bounds = bounds_of(*moved);
    if (m_pOpenGroup->add(moved, moved_bounds, this, inner->m_flags) == nullptr) {
      append_anyhow({moved, moved_bounds, *this, inner->m_flags});
    }
  }
  if (child == m_pOpenGroup && bounds.is_inside(child->m_bounds)) {
    return climb_and_add(inner, child, {drawable, bounds, *this, flags});
  }
  return m_pOpenGroup->add(drawable, bounds, this, flags);
}

bool DisplayList::ensure_open_group() {
  if (has_open_group()) return true;
  if (m_pRootGroup == nullptr) {
    m_pRootGroup = new (m_heap) OpenBottomGroup(*this, nullptr, 0, BoundsTemplate<long>::plane());
  } else {
    m_pRootGroup->create_open_bottom_group(this);
  }
  return has_open_group();
}

Group* Group::add(Drawable* drawable, const BoundsTemplate<long>& bounds, DisplayList* list,
                  unsigned long flags) {
  return climb_and_add(this, nullptr, {drawable, bounds, *list, flags});
}

Group* OpenBottomGroup::add(Drawable* drawable, const BoundsTemplate<long>& bounds,
                            DisplayList* list, unsigned long flags) {
  if (bounds.is_inside(m_bounds)) {
    append(drawable, bounds, flags);
    return this;
  }
  const Addition addition{drawable, bounds, *list, flags};
  Group* child = m_pFirst.drawable != nullptr ? climb_and_add(m_pParent, this, addition)
                                              : discard_and_add(this, addition);
  if (child != nullptr) list->m_pInsertHint = nullptr;
  return child;
}

void Group::create_open_bottom_group(DisplayList* list) {
  const std::uint32_t child_level = level() + 1;
  Group* last = m_pLastChild.group;
  if (last != nullptr && last->level() == child_level &&
      OpenBottomGroup::cell_around(last->m_bounds, child_level) == last->m_bounds) {
    last->create_open_bottom_group(list);
    return;
  }
  NextOpenGroup next(*list);
  if (next) next.open_below(*this, child_level, m_bounds, *list);
}

void BottomGroup::create_open_bottom_group(DisplayList* list) {
  NextOpenGroup next(*list);
  if (next && m_pParent != nullptr) next.open_below(*m_pParent, level(), m_bounds, *list);
}

void OpenBottomGroup::create_open_bottom_group(DisplayList*) {}

Group* DisplayList::add_before(Group* hint, Drawable* before, Drawable* chain,
                               const BoundsTemplate<long>& bounds) {
  assert(is_drained(*this));
  if (before == nullptr || chain == nullptr) return nullptr;
  auto* group = static_cast<BottomGroup*>(SubEntityIterator(before, before, hint).m_pGroup);
  if (group == nullptr) return nullptr;
  Drawable* predecessor = predecessor_of(before, *group);

  widen_upward(group, bounds);
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
