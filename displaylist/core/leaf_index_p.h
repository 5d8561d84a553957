#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "displaylist/core/box_tree_p.h"
#include "displaylist/core/geometry.h"
#include "displaylist/core/group.h"
#include "displaylist/core/mark_set_p.h"
#include "displaylist/platform/memory.h"

namespace DL {

/// Finds the leaves that meet a rectangle, in drawing order, below a group with
/// many children, without a walk through the groups between; and counts which of
/// those the walk would visit. Bounded drawing makes it, and the group holds it in
/// its two spare words. It stays while children are appended.
///
/// 1. It covers the group's children up to some place in drawing order, never the
///    last one: all that is covered is closed, and its links and bounds stand
///    still. The children behind that place, the tail, are for the caller to walk.
/// 2. Below the children each group lies inside its parent's bounds. So a leaf
///    that meets a rectangle, or lies inside one, has a parent that meets it.
/// 3. A leaf that goes is forgotten. Any other change drops the index.
/// 4. One Hits at a time uses the marks, on any thread; others go without. An
///    index that is dropped meanwhile goes with it.
class LeafIndex {
 public:
  /// Fewer children than that are walked.
  static constexpr std::uint32_t kFewest = 48;

  /// The index of a group; null when it has none.
  [[nodiscard]] static LeafIndex* of(const Group& group) {
    // The low bit tells of an index, whose address is even.
    return (group.m_indexLow & 1U) == 0 ? nullptr : marked(group);
  }
  /// Makes an index, or a larger one, where it is due: after a walk along the
  /// tail, which is all children where there is none yet. There is none without
  /// memory, where an invariant does not hold, or where the list that draws is not
  /// the tree's own: its heap may go before the tree.
  static void make_if_due(const Group& group, std::uint32_t tail_count, const DisplayList& list) {
    if (tail_count > kFewest) make(group, tail_count, list);
  }
  static void drop(const Group& group) {
    if ((group.m_indexLow & 1U) != 0) drop_marked(group);
  }
  /// Drops what covers the group: to be told when its bounds change or it gets
  /// another child.
  static void drop_covering(const Group& group);
  /// Drops what covers the group or what is below it.
  static void drop_upward(const Group& group);
  /// To be told before a child leaves its parent. Returns a sibling that lies
  /// before it, where one is known.
  static Group* forget(const Group& child);

  LeafIndex(const LeafIndex&) = delete;
  LeafIndex& operator=(const LeafIndex&) = delete;

  /// The first child of the tail.
  [[nodiscard]] Group* tail() const { return m_lastCovered->m_pNext; }

  class Hits;

 private:
  /// How much there is to cover.
  struct Extent {
    std::uint32_t children = 0;
    std::uint32_t leaves = 0;
    std::uint32_t nested = 0;  ///< groups of groups that are no children
  };
  class Survey;

  LeafIndex(const Group& group, const Extent& extent, void* scratch);
  ~LeafIndex() = default;

  static std::size_t size_of(const Extent& extent);
  static std::size_t scratch_size_of(const Extent& extent);
  static LeafIndex* marked(const Group& group);
  static void make(const Group& group, std::uint32_t tail_count, const DisplayList& list);
  static void mark(const Group& group, const LeafIndex* index);
  static void drop_marked(const Group& group);

  /// Lists the leaves, and the parents of the nested groups.
  void take_in(const Group& group, const Group** parents);
  /// Forgets a leaf and names a sibling before it. False when the index can not
  /// go on.
  [[nodiscard]] bool forget_leaf(const Group& leaf, Group*& sibling);
  void let_go();

  Extent m_extent;
  std::uint32_t m_forgotten = 0;  ///< leaves
  const Group* m_lastCovered = nullptr;
  Group** m_leaves;  ///< in drawing order; null when forgotten
  /// How many children that are groups of groups the walk comes to up to each leaf;
  /// behind the last one, up to the end. It visits them all.
  std::uint32_t* m_childrenUpTo;
  std::uint32_t* m_leavesBefore;  ///< each nested group, in the order of the walk
  BoxTree m_leafBoxes;
  BoxTree m_parentBoxes;  ///< of each nested group: the walk visits it if its parent meets
  MarkSet m_leafMarks;    ///< leaves that meet
  MarkSet m_nestedMarks;  ///< nested groups that are visited
  /// Who holds it: the group, and the Hits that uses the marks.
  std::atomic<std::uint32_t> m_holders = kGroup;
  static constexpr std::uint32_t kGroup = 1;
  static constexpr std::uint32_t kHits = 2;
};

/// The leaves in an index that meet a rectangle, in drawing order.
class LeafIndex::Hits {
 public:
  /// With `counting`, the visits of groups of groups are counted too.
  Hits(LeafIndex* index, const BoundsTemplate<long>& rectangle, bool counting);
  Hits(const Hits&) = delete;
  Hits& operator=(const Hits&) = delete;
  ~Hits() {
    if (m_index != nullptr) release();
  }

  /// Whether the index answers. Where there is none, or others use it, all
  /// children are to be walked.
  explicit operator bool() const { return m_index != nullptr; }

  /// The next leaf; null at the end, and from then on.
  Group* next();
  /// The first child that is not covered.
  [[nodiscard]] Group* tail() const { return m_index->tail(); }
  /// How many groups of groups the walk would visit between the last two that
  /// `next` gave, null at the end being one.
  std::uint32_t inner_groups_passed();

 private:
  /// The memory of so many leaves ahead is on its way.
  static constexpr std::uint32_t kAhead = 8;

  [[nodiscard]] std::uint32_t find();
  void release();

  LeafIndex* m_index = nullptr;
  MarkSet::Reader m_found;
  MarkSet::Reader m_nested;
  std::array<std::uint32_t, kAhead> m_ahead{};  ///< leaves found and not yet given, in a ring
  std::uint32_t m_given = 0;
  std::uint32_t m_place = 0;       ///< of the leaf given last
  std::uint32_t m_childCount = 0;  ///< counted as passed
  std::uint32_t m_nextNested = 0;  ///< visited, to be counted next
  bool m_hasNested = false;        ///< there is such a one
};

}  // namespace DL
