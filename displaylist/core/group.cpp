#include "displaylist/core/group.h"

#include <cassert>
#include <utility>

#include "displaylist/core/display_list.h"
#include "displaylist/core/leaf_index_p.h"
#include "displaylist/drawables/drawable.h"

namespace DL {

namespace {

/// The bits of a coordinate that tell places within one cell of the level apart.
std::uint32_t cell_mask(std::uint32_t level) {
  return 0xFFFFFFFFU >> (level % 32);
}

std::int32_t round_down(std::int32_t coordinate, std::uint32_t mask) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(coordinate) & ~mask);
}

std::int32_t round_up(std::int32_t coordinate, std::uint32_t mask) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(coordinate) | mask);
}

}  // namespace

bool Group::contains_drawables() const {
  return false;
}

bool Group::is_open() const {
  return false;
}

void Group::assert_valid() const {
  for (const Group* child = m_pFirst.group; child != nullptr; child = child->m_pNext) {
    assert(child->m_pParent == this);
    assert(child->m_pNext != nullptr || child == m_pLastChild.group);
    child->assert_valid();
  }
}

Group::~Group() {
  LeafIndex::drop(*this);
  // A leaf has emptied itself by now.
  while (m_pFirst.group != nullptr) {
    Group* child = m_pFirst.group;
    m_pFirst.group = child->m_pNext;
    delete child;
  }
}

void Group::add_bounds(BoundsTemplate<long>& bounds) const {
  for (const Group* child = m_pFirst.group; child != nullptr; child = child->m_pNext) {
    child->add_bounds(bounds);
  }
}

void Group::close() {
  if (m_pLastChild.group != nullptr) m_pLastChild.group->close();
  BoundsTemplate<long> bounds;
  for (const Group* child = m_pFirst.group; child != nullptr; child = child->m_pNext) {
    bounds.widen(child->m_bounds);
  }
  if (bounds == m_bounds) return;
  m_bounds = bounds;
  LeafIndex::drop_covering(*this);
}

std::uint32_t Group::level() const {
  return m_level;
}

void Group::make_visible() {}

void Group::make_hidden() {
  class_change::become<GroupHidden>(this);
}

bool Group::is_hidden() const {
  return false;
}

Group* Group::empty_child_notify(Group* child) {
  Group* group = this;
  for (;;) {
    if (!group->unlink_child(child)) return nullptr;
    delete child;
    if (group->m_pFirst.group != nullptr || group->m_pParent == nullptr) return group;
    child = group;
    group = group->m_pParent;
  }
}

void Group::append_child(Group* child) {
  LeafIndex::drop_covering(*this);
  if (m_pLastChild.group == nullptr) {
    m_pFirst.group = child;
  } else {
    m_pLastChild.group->m_pNext = child;
  }
  m_pLastChild.group = child;
  // What fits the child is found only if the groups above contain it too. A cell
  // reaches beyond a parent whose bounds are no whole cell; the root's are the
  // client's.
  for (Group* group = this;
       group->m_pParent != nullptr && !child->m_bounds.is_inside(group->m_bounds);
       group = group->m_pParent) {
    group->m_bounds.widen(child->m_bounds);
    LeafIndex::drop_covering(*group);
  }
}

bool Group::unlink_child(Group* child) {
  if (child == nullptr || child->m_pParent != this) return false;
  Group* previous = LeafIndex::forget(*child);
  Group* candidate = previous == nullptr ? m_pFirst.group : previous->m_pNext;
  for (; candidate != child; candidate = candidate->m_pNext) {
    if (candidate == nullptr) return false;
    previous = candidate;
  }
  (previous == nullptr ? m_pFirst.group : previous->m_pNext) = child->m_pNext;
  if (m_pLastChild.group == child) m_pLastChild.group = previous;
  child->m_pNext = nullptr;
  return true;
}

void* Group::operator new(std::size_t size) noexcept {
  return LD_AllocateMemory(size, nullptr);
}

void* Group::operator new(std::size_t size, LumenHeap* heap) noexcept {
  return LD_AllocateMemory(size, heap);
}

void Group::operator delete(void* memory) noexcept {
  LD_ReleaseMemory(memory);
}

void Group::operator delete(void* memory, LumenHeap*) noexcept {
  LD_ReleaseMemory(memory);
}

bool BottomGroup::contains_drawables() const {
  return true;
}

void BottomGroup::assert_valid() const {}

BottomGroup::~BottomGroup() {
  while (m_pFirst.drawable != nullptr) {
    Drawable* drawable = m_pFirst.drawable;
    m_pFirst.drawable = drawable->m_pNext;
    delete drawable;
  }
  m_pFirst.group = nullptr;
}

Group* BottomGroup::add(Drawable*, const BoundsTemplate<long>&, DisplayList*, unsigned long) {
  return nullptr;
}

void BottomGroup::close() {}

void BottomGroup::add_bounds(BoundsTemplate<long>& bounds) const {
  for (const Drawable* d = m_pFirst.drawable; d != nullptr; d = d->m_pNext) d->add_bounds(bounds);
}

void BottomGroup::make_hidden() {
  class_change::become<BottomGroupHidden>(this);
}

std::int32_t BottomGroup::count_and_set_last_drawable() {
  std::int32_t count = 0;
  for (Drawable* d = m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
    m_pLastChild.drawable = d;
    ++count;
  }
  return count;
}

OpenBottomGroup::OpenBottomGroup(DisplayList& list, Group* parent, std::uint32_t level,
                                 const BoundsTemplate<long>& cell)
    : BottomGroup(class_change::kUnfilled) {
  m_bounds = cell;
  m_pParent = parent;
  if (list.m_pInsertHint == list.m_pOpenGroup) list.m_pInsertHint = this;
  open_in(list, level);
}

void OpenBottomGroup::open_in(DisplayList& list, std::uint32_t level) {
  m_pDisplayList = &list;
  list.m_openLevel = static_cast<std::int32_t>(level);
  list.m_cOpenDrawables = 0;
  list.m_openBounds = {};
  list.m_pOpenGroup = this;
  list.m_bOpenGroupClosed = false;
}

OpenBottomGroup::~OpenBottomGroup() {
  if (m_pDisplayList == nullptr || m_pDisplayList->m_pOpenGroup != this) return;
  if (m_pDisplayList->m_pInsertHint == this) m_pDisplayList->m_pInsertHint = nullptr;
  m_pDisplayList->m_pOpenGroup = nullptr;
  m_pDisplayList->m_cOpenDrawables = 0;
  m_pDisplayList->m_openBounds = {};
}

BoundsTemplate<long> OpenBottomGroup::cell_around(const BoundsTemplate<long>& seed,
                                                  std::uint32_t level) {
  const std::uint32_t mask = cell_mask(level);
  return {round_down(seed.min.x, mask), round_down(seed.min.y, mask), round_up(seed.max.x, mask),
          round_up(seed.max.y, mask)};
}

bool OpenBottomGroup::is_open() const {
  return true;
}

void OpenBottomGroup::assert_valid() const {
  const Drawable* last = m_pFirst.drawable;
  while (last != nullptr && last != m_pLastChild.drawable) last = last->m_pNext;
  assert(last == m_pLastChild.drawable && "the last link lies on the chain");
}

void OpenBottomGroup::close() {
  m_bounds = m_pDisplayList->m_openBounds;
  m_pDisplayList->m_bOpenGroupClosed = true;
  m_level = level();
  class_change::become<BottomGroup>(this);
}

std::uint32_t OpenBottomGroup::level() const {
  return static_cast<std::uint32_t>(m_pDisplayList->m_openLevel);
}

void OpenBottomGroup::make_hidden() {
  class_change::become<OpenBottomGroupHidden>(this);
}

void OpenBottomGroup::append(Drawable* drawable, const BoundsTemplate<long>& bounds,
                             unsigned long flags) {
  m_flags |= static_cast<std::uint32_t>(flags);
  if (m_pLastChild.drawable == nullptr) {
    m_pFirst.drawable = drawable;
  } else {
    m_pLastChild.drawable->m_pNext = drawable;
  }
  m_pLastChild.drawable = drawable;
  m_pDisplayList->m_cOpenDrawables += 1;
  m_pDisplayList->m_openBounds.widen(bounds);
}

Drawable* OpenBottomGroup::append_fitting(Drawable* chain, unsigned long flags) {
  Drawable* last = nullptr;
  for (Drawable* next = chain; next != nullptr; next = next->m_pNext) {
    BoundsTemplate<long> bounds;
    next->add_bounds(bounds);
    if (!bounds.is_inside(m_bounds)) break;
    m_pDisplayList->m_openBounds.widen(bounds);
    m_pDisplayList->m_cOpenDrawables += 1;
    last = next;
  }
  if (last == nullptr) return chain;
  m_flags |= static_cast<std::uint32_t>(flags);
  m_pFirst.drawable = chain;
  m_pLastChild.drawable = last;
  return std::exchange(last->m_pNext, nullptr);
}

template <class Visible>
void HiddenGroup<Visible>::make_visible() {
  class_change::become<Visible>(this);
}

template class HiddenGroup<Group>;
template class HiddenGroup<BottomGroup>;
template class HiddenGroup<OpenBottomGroup>;

}  // namespace DL
