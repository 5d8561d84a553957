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

/// Checks the tree of a list against its invariants, one group at a time, and
/// tells in words what does not hold.
class TreeCheck {
 public:
  explicit TreeCheck(DL::DisplayList& list) : m_list(list) {
    if (list.m_pRootGroup == nullptr) {
      m_broken = "no root";
      return;
    }
    check(*list.m_pRootGroup, nullptr);
    expect(m_open_groups == 1, "there is exactly one open group");
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
    if (!leaf.is_open()) {
      expect(leaf.m_bounds == contents, "a closed leaf is as tight as its drawables");
      return;
    }
    ++m_open_groups;
    expect(m_list.m_pOpenGroup == &leaf, "m_pOpenGroup is the open group");
    expect(m_list.m_cOpenDrawables == count, "m_cOpenDrawables counts the open drawables");
    expect(m_list.m_openBounds == contents, "m_openBounds is the union of the open drawables");
    expect(leaf.m_bounds == DL::OpenBottomGroup::cell_around(leaf.m_bounds, leaf.level()) ||
               leaf.m_pParent == nullptr,
           "an open group is made of whole cells");
  }

  DL::DisplayList& m_list;
  int m_open_groups = 0;
  std::string m_broken;
};

/// What is wrong with the list's tree, empty when nothing is.
inline std::string broken_invariants(DL::DisplayList& list) {
  return TreeCheck(list).broken();
}
