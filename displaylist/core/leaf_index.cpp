#include "displaylist/core/leaf_index_p.h"

#include <algorithm>
#include <bit>
#include <new>
#include <utility>

#include "displaylist/core/display_list.h"

namespace DL {

namespace {

const Group& root_of(const Group& group) {
  const Group* at = &group;
  while (at->m_pParent != nullptr) at = at->m_pParent;
  return *at;
}

/// The group after `group` in the order of the walk below `top`; null at the end.
Group* next_below(const Group& top, Group* group) {
  if (!group->contains_drawables() && group->m_pFirst.group != nullptr) {
    return group->m_pFirst.group;
  }
  while (group != &top && group->m_pNext == nullptr) group = group->m_pParent;
  return group == &top ? nullptr : group->m_pNext;
}

BoundsTemplate<long> bounds_of(const void* groups, std::uint32_t place) {
  const Group* group = static_cast<const Group* const*>(groups)[place];
  return group == nullptr ? BoundsTemplate<long>() : group->m_bounds;
}

void ask_for(const void* memory, int lines) {
  constexpr int line_size = 64;
  const auto* line = static_cast<const char*>(memory);
  for (int i = 0; i < lines; ++i) __builtin_prefetch(line + i * line_size);
}

/// Room for so many 32-bit numbers, in whole words.
constexpr std::size_t room_for_numbers(std::uint32_t count) {
  return (std::size_t{count} + 1) / 2 * sizeof(std::uint64_t);
}

// On 32-bit systems the low half is all of the address.
constexpr bool kHasTwoHalves = sizeof(std::uintptr_t) > sizeof(std::uint32_t);

}  // namespace

/// What a walk through the children of a group but the last one finds.
class LeafIndex::Survey {
 public:
  explicit Survey(const Group& group) {
    for (Group* child = group.m_pFirst.group; child->m_pNext != nullptr && m_holds;
         child = child->m_pNext) {
      m_extent.children += 1;
      for (Group* each = child; each != nullptr && m_holds; each = next_below(*child, each)) {
        look_at(*each, *child);
      }
    }
  }

  /// Whether the groups can be covered.
  [[nodiscard]] bool holds() const { return m_holds; }
  [[nodiscard]] const Extent& extent() const { return m_extent; }

 private:
  void look_at(const Group& group, const Group& child) {
    if (group.contains_drawables()) {
      m_extent.leaves += 1;
    } else if (&group != &child) {
      m_extent.nested += 1;
    }
    m_holds = !group.is_open() && !group.m_bounds.is_empty() &&
              (&group == &child || group.m_bounds.is_inside(group.m_pParent->m_bounds));
  }

  Extent m_extent;
  bool m_holds = true;
};

LeafIndex* LeafIndex::marked(const Group& group) {
  std::uint64_t address = group.m_indexLow - 1U;
  if constexpr (kHasTwoHalves) address |= std::uint64_t{group.m_levelAndIndex[1]} << 32;
  return reinterpret_cast<LeafIndex*>(static_cast<std::uintptr_t>(address));
}

void LeafIndex::mark(const Group& group, const LeafIndex* index) {
  const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(index));
  group.m_indexLow = static_cast<std::uint32_t>(address) + 1U;
  if constexpr (kHasTwoHalves) {
    group.m_levelAndIndex[1] = static_cast<std::uint32_t>(address >> 32);
  }
}

void LeafIndex::make(const Group& group, std::uint32_t tail_count, const DisplayList& list) {
  if (&root_of(group) != list.m_pRootGroup) return;
  if (const LeafIndex* index = of(group)) {
    if (tail_count <= kFewest + index->m_extent.children / 16) return;
    drop(group);
  }
  const Survey survey(group);
  if (!survey.holds()) return;
  void* memory = LD_AllocateMemory(size_of(survey.extent()), list.m_heap);
  void* scratch = LD_AllocateMemory(scratch_size_of(survey.extent()), list.m_heap);
  if (memory != nullptr && scratch != nullptr) {
    mark(group, ::new (memory) LeafIndex(group, survey.extent(), scratch));
  } else {
    LD_ReleaseMemory(memory);
  }
  LD_ReleaseMemory(scratch);
}

void LeafIndex::drop_marked(const Group& group) {
  LeafIndex* index = marked(group);
  group.m_indexLow = 0;
  if (index->m_holders.fetch_sub(kGroup) == kGroup) index->let_go();
}

void LeafIndex::let_go() {
  this->~LeafIndex();
  LD_ReleaseMemory(this);
}

void LeafIndex::drop_upward(const Group& group) {
  for (const Group* each = &group; each != nullptr; each = each->m_pParent) drop(*each);
}

void LeafIndex::drop_covering(const Group& group) {
  for (const Group* child = &group; child->m_pParent != nullptr; child = child->m_pParent) {
    // The last child is never covered, so that adding at the end keeps the index.
    if (child->m_pNext != nullptr) drop(*child->m_pParent);
  }
}

Group* LeafIndex::forget(const Group& child) {
  const bool leaf = child.contains_drawables();
  Group* sibling = nullptr;
  for (const Group* each = child.m_pParent; each != nullptr; each = each->m_pParent) {
    LeafIndex* index = of(*each);
    if (index == nullptr) continue;
    const bool is_tail = child.m_pNext == nullptr && index->m_lastCovered->m_pNext == &child;
    if (is_tail || !leaf || !index->forget_leaf(child, sibling)) drop_marked(*each);
  }
  return sibling;
}

bool LeafIndex::forget_leaf(const Group& leaf, Group*& sibling) {
  Group** const end = m_leaves + m_extent.leaves;
  Group** const found = std::find(m_leaves, end, &leaf);
  if (found == end) return true;  // it lies in the tail
  if (found != m_leaves && found[-1] != nullptr && found[-1]->m_pParent == leaf.m_pParent) {
    sibling = found[-1];
  }
  *found = nullptr;
  return &leaf != m_lastCovered && ++m_forgotten <= m_extent.leaves / 2;
}

std::size_t LeafIndex::size_of(const Extent& extent) {
  return sizeof(LeafIndex) + extent.leaves * sizeof(Group*) + room_for_numbers(extent.leaves + 1) +
         room_for_numbers(extent.nested) +
         (MarkSet::size_for(extent.leaves) + MarkSet::size_for(extent.nested)) *
             sizeof(std::uint64_t) +
         BoxTree::size_of(extent.leaves) + BoxTree::size_of(extent.nested);
}

std::size_t LeafIndex::scratch_size_of(const Extent& extent) {
  return std::max(extent.leaves, extent.nested) * sizeof(std::uint64_t) +
         extent.nested * sizeof(Group*);
}

LeafIndex::LeafIndex(const Group& group, const Extent& extent, void* scratch) : m_extent(extent) {
  auto* free = reinterpret_cast<std::byte*>(this + 1);
  const auto take = [&free](std::size_t size) { return std::exchange(free, free + size); };
  m_leaves = reinterpret_cast<Group**>(take(extent.leaves * sizeof(Group*)));
  m_childrenUpTo = reinterpret_cast<std::uint32_t*>(take(room_for_numbers(extent.leaves + 1)));
  m_leavesBefore = reinterpret_cast<std::uint32_t*>(take(room_for_numbers(extent.nested)));
  const auto take_marks = [&take](std::uint32_t count) {
    const std::size_t size = MarkSet::size_for(count);
    auto* words = reinterpret_cast<std::uint64_t*>(take(size * sizeof(std::uint64_t)));
    std::fill_n(words, size, 0);
    return MarkSet(words, count);
  };
  m_leafMarks = take_marks(extent.leaves);
  m_nestedMarks = take_marks(extent.nested);

  auto* keys = static_cast<std::uint64_t*>(scratch);
  auto* parents = reinterpret_cast<const Group**>(keys + std::max(extent.leaves, extent.nested));
  take_in(group, parents);
  m_leafBoxes =
      BoxTree(take(BoxTree::size_of(extent.leaves)), extent.leaves, {m_leaves, &bounds_of}, keys);
  m_parentBoxes = BoxTree(free, extent.nested, {parents, &bounds_of}, keys);
}

void LeafIndex::take_in(const Group& group, const Group** parents) {
  std::uint32_t leaves = 0;
  std::uint32_t nested = 0;
  std::uint32_t children = 0;
  for (Group* child = group.m_pFirst.group; child->m_pNext != nullptr; child = child->m_pNext) {
    m_lastCovered = child;
    if (!child->contains_drawables()) ++children;
    for (Group* each = child; each != nullptr; each = next_below(*child, each)) {
      if (each->contains_drawables()) {
        m_childrenUpTo[leaves] = children;
        m_leaves[leaves++] = each;
      } else if (each != child) {
        m_leavesBefore[nested] = leaves;
        parents[nested++] = each->m_pParent;
      }
    }
  }
  m_childrenUpTo[leaves] = children;
}

LeafIndex::Hits::Hits(LeafIndex* index, const BoundsTemplate<long>& rectangle, bool counting) {
  if (index == nullptr) return;
  if ((index->m_holders.fetch_or(kHits, std::memory_order_acquire) & kHits) != 0) return;
  m_index = index;
  m_index->m_leafBoxes.mark_meeting(rectangle, m_index->m_leafMarks);
  m_found = MarkSet::Reader(m_index->m_leafMarks);
  for (std::uint32_t& place : m_ahead) place = find();
  if (!counting) return;
  m_index->m_parentBoxes.mark_meeting(rectangle, m_index->m_nestedMarks);
  m_nested = MarkSet::Reader(m_index->m_nestedMarks);
  m_hasNested = m_nested.take(m_nextNested);
}

void LeafIndex::Hits::release() {
  // A walk that was stopped leaves marks behind.
  m_found.clear();
  m_nested.clear();
  if (m_index->m_holders.fetch_sub(kHits, std::memory_order_release) == kHits) m_index->let_go();
}

/// The next leaf that was hit, whose memory is asked for; their count at the end.
std::uint32_t LeafIndex::Hits::find() {
  std::uint32_t place = 0;
  do {
    if (!m_found.take(place)) return m_index->m_extent.leaves;
  } while (m_index->m_leaves[place] == nullptr);
  ask_for(m_index->m_leaves[place], 2);
  return place;
}

Group* LeafIndex::Hits::next() {
  std::uint32_t& oldest = m_ahead[m_given % kAhead];
  m_place = oldest;
  if (m_place == m_index->m_extent.leaves) return nullptr;
  oldest = find();
  ++m_given;
  return m_index->m_leaves[m_place];
}

std::uint32_t LeafIndex::Hits::inner_groups_passed() {
  const std::uint32_t children = m_index->m_childrenUpTo[m_place];
  std::uint32_t count = children - std::exchange(m_childCount, children);
  while (m_hasNested && m_index->m_leavesBefore[m_nextNested] <= m_place) {
    ++count;
    m_hasNested = m_nested.take(m_nextNested);
  }
  return count;
}

}  // namespace DL
