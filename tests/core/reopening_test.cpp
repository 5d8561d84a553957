#include <gtest/gtest.h>

#include "tests/support/point_printing.h"
#include "tests/support/probe_scene.h"
#include "tests/support/tree_walk.h"
#include "tests/support/two_leaves.h"

namespace {

using DL::Group;
using DL::OpenBottomGroup;
using Bounds = DL::BoundsTemplate<long>;

TEST(CreateOpenBottomGroup, OfAGroupOpensALastChildOverItsOwnBounds) {
  TwoLeaves scene;
  scene.open().close();
  scene.root().create_open_bottom_group(&scene.list);
  Group* opened = scene.child(scene.root(), 2);
  ASSERT_NE(opened, nullptr);
  EXPECT_EQ(scene.list.m_pOpenGroup, opened);
  EXPECT_TRUE(opened->is_open());
  EXPECT_EQ(opened->m_bounds, Bounds::plane());
  EXPECT_EQ(opened->level(), 1U);
  EXPECT_EQ(scene.list.m_cOpenDrawables, 0);
  EXPECT_EQ(scene.list.m_openBounds, Bounds());
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(CreateOpenBottomGroup, RecursesIntoALastChildThatIsStillAWholeCell) {
  ProbeScene scene(1, 5);
  const Bounds quadrant{0, 0, INT32_MAX, INT32_MAX};
  scene.add(kFirst);
  scene.add(quadrant);
  Group* last = scene.root().m_pLastChild.group;
  last->close();
  ASSERT_EQ(last->m_bounds, quadrant);
  scene.root().create_open_bottom_group(&scene.list);
  Group* opened = scene.root().m_pLastChild.group;
  EXPECT_EQ(last->m_pNext, opened);
  EXPECT_EQ(opened->m_bounds, quadrant);
  EXPECT_EQ(opened->level(), 1U);
  EXPECT_EQ(opened->m_pParent, &scene.root());
}

TEST(CreateOpenBottomGroup, DoesNotRecurseIntoAChildOfAnotherLevel) {
  TwoLeaves scene;
  Group& last = scene.open();
  last.close();
  last.m_bounds = {0, 0, INT32_MAX, INT32_MAX};
  last.m_level = 24;
  scene.root().create_open_bottom_group(&scene.list);
  EXPECT_EQ(scene.list.m_pOpenGroup->level(), 1U);
  EXPECT_EQ(scene.list.m_pOpenGroup->m_bounds, Bounds::plane());
}

TEST(CreateOpenBottomGroup, GoesDownThroughWholeInnerGroups) {
  ProbeScene scene(1, 5);
  scene.add(kFirst);
  scene.add({1, 1, 2, 2});
  Group* inner = scene.root().m_pLastChild.group;
  scene.add({3, 3, 4, 4});
  ASSERT_FALSE(inner->m_pParent == nullptr || inner->is_open());
  Group* cell = scene.list.m_pOpenGroup->m_pParent;
  ASSERT_NE(cell, &scene.root());
  const std::uint32_t level = scene.list.m_pOpenGroup->level();
  scene.list.m_pOpenGroup->close();
  scene.root().create_open_bottom_group(&scene.list);
  EXPECT_EQ(scene.list.m_pOpenGroup->m_pParent, cell);
  EXPECT_EQ(scene.list.m_pOpenGroup->level(), level);
  EXPECT_EQ(scene.list.m_pOpenGroup->m_bounds, OpenBottomGroup::cell_around(cell->m_bounds, level));
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(CreateOpenBottomGroup, OfALeafOpensASiblingAfterTheLastChild) {
  TwoLeaves scene;
  scene.open().close();
  scene.closed().create_open_bottom_group(&scene.list);
  Group* opened = scene.child(scene.root(), 2);
  ASSERT_NE(opened, nullptr);
  EXPECT_EQ(scene.list.m_pOpenGroup, opened);
  EXPECT_EQ(opened->m_bounds, (Bounds{0, 0, INT32_MAX, INT32_MAX}));
  EXPECT_EQ(opened->level(), 1U);
}

TEST(CreateOpenBottomGroup, OfALeafWithoutParentDoesNothing) {
  ProbeScene scene;
  scene.add(kFirst);
  scene.root().close();
  scene.root().create_open_bottom_group(&scene.list);
  EXPECT_EQ(scene.root().m_pNext, nullptr);
  EXPECT_FALSE(scene.root().is_open());
}

// Unlinking and pruning.

TEST(EmptyChildNotify, DestroysEmptiedAncestorsUpToTheFirstThatHoldsMore) {
  ProbeScene scene(1, 5);
  scene.add(kFirst);
  scene.add(kLeft);
  scene.add(kLeft);
  Group* open = scene.list.m_pOpenGroup;
  Group* cell = open->m_pParent;
  ASSERT_NE(cell, &scene.root());
  while (cell->m_pFirst.group != open) {
    Group* sibling = cell->m_pFirst.group;
    ASSERT_TRUE(cell->unlink_child(sibling));
    delete sibling;
  }
  EXPECT_EQ(cell->empty_child_notify(open), &scene.root());
  EXPECT_EQ(leaves_of(scene.list).size(), 1U);
  EXPECT_EQ(scene.list.m_pOpenGroup, nullptr);
  EXPECT_EQ(scene.log.alive, 1);
}

TEST(EmptyChildNotify, OfAStrangerIsNull) {
  TwoLeaves scene;
  EXPECT_EQ(scene.root().empty_child_notify(&scene.root()), nullptr);
  EXPECT_FALSE(scene.root().unlink_child(nullptr));
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(UnlinkChild, KeepsTheFirstAndLastLinksRight) {
  for (const int index : {0, 1}) {
    TwoLeaves scene;
    Group* taken = scene.child(scene.root(), index);
    Group* kept = scene.child(scene.root(), 1 - index);
    ASSERT_TRUE(scene.root().unlink_child(taken));
    EXPECT_EQ(taken->m_pNext, nullptr);
    EXPECT_EQ(scene.root().m_pFirst.group, kept);
    EXPECT_EQ(scene.root().m_pLastChild.group, kept);
    EXPECT_EQ(kept->m_pNext, nullptr);
    delete taken;
  }
}

}  // namespace
