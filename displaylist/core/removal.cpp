// How drawables leave the list: found by a search, named with the one before
// them, by area, or all at once; and how what that empties goes with them.

#include <cassert>
#include <cstdint>

#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "displaylist/core/leaf_index_p.h"
#include "displaylist/core/multithread.h"
#include "displaylist/drawables/drawable.h"
#include "displaylist/drawables/search.h"

namespace DL {

namespace {

/// The group of the tree that takes drawables, found on the way that closing
/// takes; null when there is none.
[[maybe_unused]] const Group* open_group_of(const Group& group) {
  const Group* at = &group;
  while (at->m_pParent != nullptr) at = at->m_pParent;
  while (!at->contains_drawables() && at->m_pLastChild.group != nullptr)
    at = at->m_pLastChild.group;
  return at->is_open() ? at : nullptr;
}

/// Whether workers have no group of the tree still to draw, as far as that can
/// be told from the tree.
[[maybe_unused]] bool is_drained(const Group& group) {
  const Group* open = open_group_of(group);
  return open == nullptr || is_drained(*open->m_pDisplayList);
}

/// Takes a drawable out of a leaf's chain.
void unlink(BottomGroup& group, Drawable* drawable, Drawable* previous) {
  (previous == nullptr ? group.m_pFirst.drawable : previous->m_pNext) = drawable->m_pNext;
  if (group.m_pLastChild.drawable == drawable) group.m_pLastChild.drawable = previous;
  drawable->m_pNext = nullptr;
  if (group.is_open()) group.m_pDisplayList->m_cOpenDrawables -= 1;
}

/// A drawable that matched stays, perhaps with others linked after it.
void keep(BottomGroup& group) {
  const std::int32_t count = group.count_and_set_last_drawable();
  if (group.is_open()) group.m_pDisplayList->m_cOpenDrawables = count;
}

/// Whether a leaf goes since it holds nothing.
bool is_to_be_pruned(const BottomGroup& group) {
  return group.m_pFirst.drawable == nullptr && group.m_pParent != nullptr;
}

enum class Fate : std::uint8_t { destroyed, detached };

/// Removes the first drawable that matches; null without a match.
Group* remove_match(BottomGroup& group, Search& search, Fate fate) {
  Drawable* previous = nullptr;
  Drawable* drawable = group.m_pFirst.drawable;
  while (drawable != nullptr && !drawable->remove(search)) {
    previous = drawable;
    drawable = drawable->m_pNext;
  }
  if (drawable == nullptr) return nullptr;
  if (search.handled) {
    keep(group);
    return &group;
  }
  unlink(group, drawable, previous);
  if (fate == Fate::detached) {
    search.m_pDetached = drawable;
  } else {
    delete drawable;
  }
  if (!is_to_be_pruned(group)) return &group;
  Group* next = group.m_pNext;
  Group* left = group.m_pParent->empty_child_notify(&group);
  return next != nullptr ? next : left;
}

/// Asks the leaves in an index whose bounds contain the search's, in order. What
/// finds a match may change the tree: nothing else of it is looked at then.
template <class Ask>
Group* ask_leaves(LeafIndex::Hits& leaves, const Search& search, const Ask& ask) {
  while (Group* leaf = leaves.next()) {
    if (!search.m_bounds.is_inside(leaf->m_bounds)) continue;
    if (Group* found = ask(*leaf)) return found;
  }
  return nullptr;
}

/// Asks what is below the group and contains the search's bounds until one finds
/// a match: the leaves that an index knows, then the other children.
template <class Ask>
Group* ask_children(const Group& group, const Search& search, const Ask& ask) {
  Group* child = group.m_pFirst.group;
  // Bounds of nothing lie inside all others, and meet none.
  LeafIndex* index = search.m_bounds.is_empty() ? nullptr : LeafIndex::of(group);
  if (LeafIndex::Hits leaves(index, search.m_bounds, false); leaves) {
    if (Group* found = ask_leaves(leaves, search, ask)) return found;
    child = index->tail();
  }
  for (; child != nullptr; child = child->m_pNext) {
    if (!search.m_bounds.is_inside(child->m_bounds)) continue;
    if (Group* found = ask(*child)) return found;
  }
  return nullptr;
}

/// Keeps those children of a group that `stays` is true for, in order, and
/// destroys the others.
template <class Stays>
void sift_children(Group& group, const Stays& stays) {
  Group* last = nullptr;
  for (Group* child = group.m_pFirst.group; child != nullptr;) {
    Group* next = child->m_pNext;
    if (stays(*child)) {
      last = child;
    } else {
      (last == nullptr ? group.m_pFirst.group : last->m_pNext) = next;
      group.m_pLastChild.group = next == nullptr ? last : group.m_pLastChild.group;
      delete child;
    }
    child = next;
  }
}

bool lies_inside(const Drawable& drawable, const BoundsTemplate<long>& rectangle) {
  BoundsTemplate<long> bounds;
  drawable.add_bounds(bounds);
  return bounds.is_inside(rectangle);
}

}  // namespace

Group* Group::remove(Drawable*, Drawable*) {
  return nullptr;
}

Group* BottomGroup::remove(Drawable* drawable, Drawable* previous) {
  assert(is_drained(*this));
  const Drawable* at = previous == nullptr ? m_pFirst.drawable : previous->m_pNext;
  if (drawable == nullptr || at != drawable) return nullptr;
  unlink(*this, drawable, previous);
  delete drawable;
  return is_to_be_pruned(*this) ? m_pParent->empty_child_notify(this) : this;
}

Group* Group::remove_inside(Search& search) {
  return search.m_bounds.is_inside(m_bounds) ? remove_fast(search) : nullptr;
}

Group* Group::remove_fast(Search& search) {
  return ask_children(*this, search, [&](Group& child) { return child.remove_inside(search); });
}

Group* BottomGroup::remove_fast(Search& search) {
  assert(is_drained(*this));
  return remove_match(*this, search, Fate::destroyed);
}

Group* Group::detach_fast(Search& search) {
  search.m_pDetached = nullptr;
  if (contains_drawables()) return static_cast<BottomGroup*>(this)->detach_fast(search);
  return ask_children(*this, search, [&](Group& child) { return child.detach_fast(search); });
}

Group* BottomGroup::detach_fast(Search& search) {
  assert(is_drained(*this));
  search.m_pDetached = nullptr;
  return remove_match(*this, search, Fate::detached);
}

void Group::remove_bounded(const BoundsTemplate<long>& rectangle) {
  remove_bounded_worker(rectangle);
  if (m_pFirst.group == nullptr && m_pParent != nullptr) m_pParent->empty_child_notify(this);
}

void Group::remove_bounded_worker(const BoundsTemplate<long>& rectangle) {
  assert(is_drained(*this));
  LeafIndex::drop_upward(*this);
  sift_children(*this, [&](Group& child) {
    if (child.m_bounds.is_inside(rectangle)) return false;
    if (!child.m_bounds.meets(rectangle)) return true;
    child.remove_bounded_worker(rectangle);
    return child.m_pFirst.group != nullptr;
  });
}

void BottomGroup::remove_bounded_worker(const BoundsTemplate<long>& rectangle) {
  assert(is_drained(*this));
  Drawable* previous = nullptr;
  for (Drawable* drawable = m_pFirst.drawable; drawable != nullptr;) {
    Drawable* next = drawable->m_pNext;
    if (lies_inside(*drawable, rectangle)) {
      unlink(*this, drawable, previous);
      delete drawable;
    } else {
      previous = drawable;
    }
    drawable = next;
  }
}

void Group::remove_all() {
  assert(is_drained(*this));
  LeafIndex::drop_upward(*this);
  sift_children(*this, [](const Group&) { return false; });
}

void BottomGroup::remove_all() {
  assert(is_drained(*this));
  while (m_pFirst.drawable != nullptr) {
    Drawable* first = m_pFirst.drawable;
    unlink(*this, first, nullptr);
    delete first;
  }
}

}  // namespace DL
