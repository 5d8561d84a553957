#include <gtest/gtest.h>

#include "tests/support/point_printing.h"
#include "tests/support/probe_scene.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Group;
using DL::OpenBottomGroup;
using Bounds = DL::BoundsTemplate<long>;
using Ids = std::vector<int>;

Bounds square(std::int32_t at, std::int32_t size = 1) {
  return {at, at, at + size, at + size};
}

constexpr Bounds kUpperRight{0, 0, INT32_MAX, INT32_MAX};

TEST(Insertion, AppendsToTheOpenGroupInConstantState) {
  ProbeScene scene(4, 2);
  Group* root = &scene.root();
  EXPECT_EQ(scene.add(square(10), 2), root);
  EXPECT_EQ(scene.add(square(20), 4), root);
  EXPECT_EQ(scene.ids_in(*root), (Ids{1, 2}));
  EXPECT_EQ(root->m_flags, 6U);
  EXPECT_EQ(scene.list.m_cOpenDrawables, 2);
  EXPECT_EQ(scene.list.m_openBounds, (Bounds{10, 10, 21, 21}));
  EXPECT_EQ(scene.list.m_pInsertHint, root);
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(Insertion, TheFifthOfFourSplitsTheRoot) {
  ProbeScene scene(4, 2);
  for (const int at : {10, 20, 30, 40}) scene.add(square(at), 2);
  Group* fifth = scene.add(square(50), 8);
  ASSERT_FALSE(scene.root().contains_drawables());
  EXPECT_EQ(scene.root().m_bounds, Bounds::plane());
  EXPECT_EQ(scene.root().m_flags, 2U);

  Group* old = scene.child(scene.root(), 0);
  EXPECT_EQ(scene.ids_in(*old), (Ids{1, 2, 3, 4}));
  EXPECT_EQ(old->level(), 1U);
  EXPECT_FALSE(old->is_open());
  EXPECT_EQ(old->m_bounds, (Bounds{10, 10, 41, 41}));
  EXPECT_EQ(old->m_flags, 2U);

  EXPECT_EQ(fifth, scene.child(scene.root(), 1));
  EXPECT_EQ(fifth, scene.list.m_pOpenGroup);
  EXPECT_EQ(scene.ids_in(*fifth), Ids{5});
  EXPECT_EQ(fifth->level(), 1U);
  EXPECT_EQ(fifth->m_bounds, kUpperRight);
  EXPECT_EQ(fifth->m_flags, 8U);
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(Insertion, SplitDistributesDrawablesInTheirOrder) {
  ProbeScene scene(4, 5);
  scene.add(square(10));
  scene.add(square(-10));
  scene.add(square(-20));
  scene.add(square(20));
  scene.add(square(30));
  const std::vector<Group*> leaves = leaves_of(scene.list);
  ASSERT_EQ(leaves.size(), 3U);
  EXPECT_EQ(scene.ids_in(*leaves[0]), Ids{1});
  EXPECT_EQ(scene.ids_in(*leaves[1]), (Ids{2, 3}));
  EXPECT_EQ(scene.ids_in(*leaves[2]), (Ids{4, 5}));
  EXPECT_EQ(leaves[1]->m_bounds, (Bounds{-20, -20, -9, -9}));
  EXPECT_EQ(leaves[2], scene.list.m_pOpenGroup);
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(Insertion, SplitTakesTheBoundsThatDrawablesHaveNow) {
  ProbeScene scene(2, 5);
  scene.add(square(10));
  scene.add(square(20));
  static_cast<ProbeDrawable*>(scene.root().m_pFirst.drawable)->move_to(square(-10));
  scene.add(square(30));
  const std::vector<Group*> leaves = leaves_of(scene.list);
  ASSERT_EQ(leaves.size(), 2U);
  EXPECT_EQ(scene.ids_in(*leaves[0]), Ids{1});
  EXPECT_EQ(leaves[0]->m_bounds, square(-10));
  EXPECT_EQ(scene.ids_in(*leaves[1]), (Ids{2, 3}));
}

TEST(Insertion, AfterASplitTheDrawableThatFitsElsewhereClimbs) {
  ProbeScene scene(2, 5);
  scene.add(square(10));
  scene.add(square(20));
  Group* third = scene.add(square(-10));
  EXPECT_EQ(third->m_pParent, &scene.root());
  EXPECT_EQ(third->m_bounds, (Bounds{INT32_MIN, INT32_MIN, -1, -1}));
  EXPECT_EQ(scene.child(scene.root(), 0)->m_bounds, (Bounds{10, 10, 21, 21}));
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(Insertion, FullAtTheDeepestLevelGoesOnInASibling) {
  ProbeScene scene(2, 1);
  for (const int at : {10, 20, 30, 40, 50}) scene.add(square(at), 1U << at % 7);
  const std::vector<Group*> leaves = leaves_of(scene.list);
  ASSERT_EQ(leaves.size(), 3U);
  EXPECT_EQ(scene.ids_in(*leaves[0]), (Ids{1, 2}));
  EXPECT_EQ(scene.ids_in(*leaves[1]), (Ids{3, 4}));
  EXPECT_EQ(scene.ids_in(*leaves[2]), Ids{5});
  for (const Group* leaf : leaves) EXPECT_EQ(leaf->level(), 1U);
  EXPECT_EQ(leaves[1]->m_bounds, (Bounds{30, 30, 41, 41}));
  EXPECT_EQ(leaves[1]->m_flags, (1U << 30 % 7) | (1U << 40 % 7));
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(Insertion, SplitsDownToTheDeepestLevel) {
  ProbeScene scene(1, 31);
  for (int i = 0; i < 40; ++i) scene.add({5, 5, 5, 5});
  EXPECT_EQ(scene.list.m_pOpenGroup->level(), 31U);
  EXPECT_EQ(scene.list.m_pOpenGroup->m_bounds, (Bounds{4, 4, 5, 5}));
  EXPECT_EQ(drawables_of(scene.list).size(), 40U);
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(Insertion, OutsideTheOpenCellClosesItAndClimbs) {
  ProbeScene scene(1, 5);
  scene.add(square(10), 2);
  scene.add(square(-10), 4);
  scene.list.m_cMaxOpenDrawables = 10;
  scene.add(square(-30), 16);
  Group* closed = scene.list.m_pOpenGroup;
  Group* next = scene.add(square(40), 32);
  EXPECT_FALSE(closed->is_open());
  EXPECT_EQ(closed->m_bounds, (Bounds{-30, -30, -9, -9}));
  EXPECT_EQ(closed->m_flags, 20U);
  EXPECT_EQ(closed->m_pNext, next);
  EXPECT_EQ(next->m_pParent, &scene.root());
  EXPECT_EQ(next->m_flags, 32U);
  EXPECT_EQ(next->m_bounds, kUpperRight);
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(Insertion, ClimbingClosesEveryGroupLeft) {
  ProbeScene scene(1, 31);
  for (const int at : {1000, 1001, 1002, 1003}) scene.add(square(at));
  Group* top = scene.root().m_pLastChild.group;
  ASSERT_FALSE(top->contains_drawables());
  scene.add(square(-10));
  EXPECT_EQ(top->m_bounds, (Bounds{1001, 1001, 1004, 1004}));
  for (Group* leaf : leaves_of(scene.list)) {
    EXPECT_EQ(leaf->is_open(), leaf == scene.list.m_pOpenGroup);
  }
  EXPECT_EQ(scene.list.m_pOpenGroup->m_pParent, &scene.root());
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(Insertion, BoundsOnTheCellBorderAreInside) {
  ProbeScene scene(1, 5);
  scene.add(square(10));
  scene.add(square(20));
  scene.list.m_cMaxOpenDrawables = 5;
  Group* open = scene.list.m_pOpenGroup;
  EXPECT_EQ(scene.add(open->m_bounds), open);
  Bounds over = open->m_bounds;
  over.min.x -= 1;
  EXPECT_NE(scene.add(over), open);
}

/// The open group replaced by an empty one: a fresh child of its parent.
void reopen_empty(ProbeScene& scene) {
  Group* open = scene.list.m_pOpenGroup;
  open->close();
  open->create_open_bottom_group(&scene.list);
  ASSERT_EQ(scene.list.m_pOpenGroup->m_pFirst.drawable, nullptr);
}

TEST(EmptyOpenGroup, IsDiscardedWhenADrawableDoesNotFit) {
  ProbeScene scene(1, 5);
  scene.add(square(10));
  scene.add(square(20));
  reopen_empty(scene);
  ASSERT_EQ(leaves_of(scene.list).size(), 3U);
  Group* added = scene.add(square(-10));
  ASSERT_EQ(leaves_of(scene.list).size(), 3U);
  EXPECT_EQ(leaves_of(scene.list)[2], added);
  EXPECT_EQ(added->m_pParent, &scene.root());
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(EmptyOpenGroup, TakesItsEmptiedAncestorsWithIt) {
  ProbeScene scene(1, 5);
  scene.add(square(10));
  scene.add(square(-10));
  scene.add(square(-30));  // splits the left cell
  Group* cell = scene.root().m_pLastChild.group;
  ASSERT_FALSE(cell->contains_drawables());
  reopen_empty(scene);
  while (cell->m_pFirst.group != cell->m_pLastChild.group) {
    Group* sibling = cell->m_pFirst.group;
    ASSERT_TRUE(cell->unlink_child(sibling));
    delete sibling;
  }
  scene.add(square(40));
  const std::vector<Group*> leaves = leaves_of(scene.list);
  ASSERT_EQ(leaves.size(), 2U);
  EXPECT_EQ(leaves[1]->m_pParent, &scene.root());
  EXPECT_EQ(scene.ids_in(*leaves[1]), Ids{4});
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(GroupAdd, OpensAChildWhereTheBoundsFit) {
  ProbeScene scene(1, 5);
  scene.add(square(10));
  scene.add(square(-10));
  scene.list.m_pOpenGroup->close();
  ProbeDrawable* probe = scene.make(square(30));
  Group* added = scene.root().add(probe, square(30), &scene.list, 5);
  EXPECT_EQ(added, scene.root().m_pLastChild.group);
  EXPECT_EQ(added->m_flags, 5U);
  EXPECT_EQ(scene.ids_in(*added), Ids{3});
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(GroupAdd, ClimbsAndClosesItselfWhereTheyDoNot) {
  ProbeScene scene(1, 5);
  for (const int at : {10, -10, -30}) scene.add(square(at));
  Group* cell = scene.root().m_pLastChild.group;
  ASSERT_FALSE(cell->contains_drawables());
  scene.list.m_pInsertHint = scene.list.m_pOpenGroup;
  ProbeDrawable* probe = scene.make(square(40));
  Group* added = cell->add(probe, square(40), &scene.list, 0);
  EXPECT_EQ(added->m_pParent, &scene.root());
  EXPECT_EQ(cell->m_bounds, (Bounds{-30, -30, -9, -9}));
  EXPECT_EQ(scene.list.m_pInsertHint, nullptr);
  EXPECT_EQ(broken_invariants(scene.list), "");
}

}  // namespace
