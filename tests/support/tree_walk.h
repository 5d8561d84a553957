#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "displaylist/drawables/drawable.h"

/// Every leaf below the group, in drawing order.
inline void collect_leaves(DL::Group* group, std::vector<DL::Group*>& leaves) {
  if (group == nullptr) return;
  if (group->contains_drawables()) {
    leaves.push_back(group);
    return;
  }
  for (DL::Group* child = group->m_pFirst.group; child != nullptr; child = child->m_pNext) {
    collect_leaves(child, leaves);
  }
}

inline std::vector<DL::Group*> leaves_of(DL::DisplayList& list) {
  std::vector<DL::Group*> leaves;
  collect_leaves(list.m_pRootGroup, leaves);
  return leaves;
}

/// The group and every one below it, parents first, in drawing order.
inline void collect_groups(DL::Group* group, std::vector<DL::Group*>& groups) {
  groups.push_back(group);
  if (group->contains_drawables()) return;
  for (DL::Group* child = group->m_pFirst.group; child != nullptr; child = child->m_pNext) {
    collect_groups(child, groups);
  }
}

inline std::vector<DL::Group*> groups_of(DL::DisplayList& list) {
  std::vector<DL::Group*> groups;
  if (list.m_pRootGroup != nullptr) collect_groups(list.m_pRootGroup, groups);
  return groups;
}

/// Every drawable of the list, in drawing order.
inline std::vector<DL::Drawable*> drawables_of(DL::DisplayList& list) {
  std::vector<DL::Drawable*> drawables;
  for (DL::Group* leaf : leaves_of(list)) {
    for (DL::Drawable* d = leaf->m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
      drawables.push_back(d);
    }
  }
  return drawables;
}

/// What has happened to a list, which tells how exact its bounds are.
enum class TreeHistory {
  only_adds,
  /// Bounds do not shrink, and the open group may have gone.
  removals,
};

/// Checks the tree of a list against its invariants, one group at a time, and
/// tells in words what does not hold.
class TreeCheck {
 public:
  explicit TreeCheck(DL::DisplayList& list, TreeHistory history = TreeHistory::only_adds)
      : m_list(list), m_history(history) {
    if (list.m_pRootGroup == nullptr) {
      m_broken = "no root";
      return;
    }
    check(*list.m_pRootGroup, nullptr);
    if (m_history == TreeHistory::only_adds || list.m_pOpenGroup != nullptr) {
      expect(m_open_groups == 1, "there is exactly one open group");
    } else {
      expect(m_open_groups == 0, "the open group is the list's");
      expect(list.m_cOpenDrawables == 0, "without an open group none are counted");
    }
  }

  /// The broken invariants, empty when all hold.
  [[nodiscard]] const std::string& broken() const { return m_broken; }

 private:
  void expect(bool holds, const char* invariant) {
    if (!holds) m_broken += std::string(invariant) + "; ";
  }

  void check(DL::Group& group, DL::Group* parent) {
    expect(group.m_pParent == parent, "a child names its parent");
    const std::uint32_t level = parent == nullptr ? 0 : parent->level() + 1;
    expect(group.level() == level, "a level is the parent's plus one");
    DL::BoundsTemplate<long> contents;
    group.add_bounds(contents);
    expect(contents.is_inside(group.m_bounds), "bounds contain what the group holds");
    if (group.contains_drawables()) {
      check_leaf(group, contents);
    } else {
      check_children(group);
    }
  }

  void check_children(DL::Group& group) {
    DL::Group* last = nullptr;
    for (DL::Group* child = group.m_pFirst.group; child != nullptr; child = child->m_pNext) {
      check(*child, &group);
      last = child;
    }
    expect(group.m_pLastChild.group == last, "m_pLastChild is the last child");
  }

  void check_leaf(DL::Group& leaf, const DL::BoundsTemplate<long>& contents) {
    std::int32_t count = 0;
    DL::Drawable* last = nullptr;
    for (DL::Drawable* d = leaf.m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
      last = d;
      ++count;
    }
    expect(leaf.m_pLastChild.drawable == last, "m_pLastChild is the last drawable");
    if (leaf.is_open()) {
      ++m_open_groups;
      expect(m_list.m_pOpenGroup == &leaf, "m_pOpenGroup is the open group");
      expect(m_list.m_cOpenDrawables == count, "m_cOpenDrawables counts the open drawables");
      expect(contents.is_inside(m_list.m_openBounds), "m_openBounds contain the open drawables");
    }
    if (m_history == TreeHistory::only_adds) check_leaf_is_tight(leaf, contents);
  }

  void check_leaf_is_tight(const DL::Group& leaf, const DL::BoundsTemplate<long>& contents) {
    if (!leaf.is_open()) {
      expect(leaf.m_bounds == contents, "a closed leaf is as tight as its drawables");
      return;
    }
    expect(m_list.m_openBounds == contents, "m_openBounds is the union of the open drawables");
    expect(leaf.m_bounds == DL::OpenBottomGroup::cell_around(leaf.m_bounds, leaf.level()) ||
               leaf.m_pParent == nullptr,
           "an open group is made of whole cells");
  }

  DL::DisplayList& m_list;
  TreeHistory m_history;
  int m_open_groups = 0;
  std::string m_broken;
};

/// What is wrong with the list's tree, empty when nothing is.
inline std::string broken_invariants(DL::DisplayList& list,
                                     TreeHistory history = TreeHistory::only_adds) {
  return TreeCheck(list, history).broken();
}
