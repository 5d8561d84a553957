#include "displaylist/core/group.h"

#include <gtest/gtest.h>

#include "tests/support/point_printing.h"
#include "tests/support/probe_scene.h"
#include "tests/support/tree_walk.h"
#include "tests/support/two_leaves.h"

namespace {

using DL::BottomGroup;
using DL::Group;
using DL::OpenBottomGroup;
using Bounds = DL::BoundsTemplate<long>;

TEST(Cell, OfEachLevelIsAnAlignedPowerOfTwoSquare) {
  const Bounds point{5, -5, 5, -5};
  EXPECT_EQ(OpenBottomGroup::cell_around(point, 1), (Bounds{0, INT32_MIN, INT32_MAX, -1}));
  EXPECT_EQ(OpenBottomGroup::cell_around(point, 2), (Bounds{0, -(1 << 30), (1 << 30) - 1, -1}));
  EXPECT_EQ(OpenBottomGroup::cell_around(point, 24), (Bounds{0, -256, 255, -1}));
  EXPECT_EQ(OpenBottomGroup::cell_around(point, 31), (Bounds{4, -6, 5, -5}));
}

TEST(Cell, TakesTheLevelModuloThirtyTwo) {
  const Bounds point{5, -5, 5, -5};
  EXPECT_EQ(OpenBottomGroup::cell_around(point, 33), OpenBottomGroup::cell_around(point, 1));
}

TEST(Cell, OfAStraddlingSeedIsTheUnionOfTheCellsItTouches) {
  EXPECT_EQ(OpenBottomGroup::cell_around({-1, 100, 0, 300}, 24), (Bounds{-256, 0, 255, 511}));
  EXPECT_EQ(OpenBottomGroup::cell_around({INT32_MIN, 0, INT32_MAX, 0}, 20),
            (Bounds{INT32_MIN, 0, INT32_MAX, 4095}));
}

TEST(NewList, HasAnEmptyOpenRootOverThePlane) {
  DL::DisplayList list;
  ASSERT_NE(list.m_pRootGroup, nullptr);
  EXPECT_EQ(list.m_pRootGroup, list.m_pOpenGroup);
  EXPECT_EQ(list.m_pRootGroup->m_bounds, Bounds::plane());
  EXPECT_EQ(list.m_pRootGroup->level(), 0U);
  EXPECT_EQ(list.m_pRootGroup->m_pParent, nullptr);
  EXPECT_EQ(list.m_openBounds, Bounds());
  EXPECT_EQ(broken_invariants(list), "");
}

TEST(GroupClasses, TellWhatTheyHold) {
  TwoLeaves scene;
  EXPECT_FALSE(scene.root().contains_drawables());
  EXPECT_FALSE(scene.root().is_open());
  EXPECT_TRUE(scene.closed().contains_drawables());
  EXPECT_FALSE(scene.closed().is_open());
  EXPECT_TRUE(scene.open().contains_drawables());
  EXPECT_TRUE(scene.open().is_open());
  for (const Group* group : {&scene.root(), &scene.closed(), &scene.open()}) {
    EXPECT_FALSE(group->is_hidden());
    group->assert_valid();
  }
}

TEST(GroupClasses, ClosedLeafTakesNothing) {
  TwoLeaves scene;
  ProbeDrawable probe(scene.log, 9, kFirst);
  EXPECT_EQ(scene.closed().add(&probe, kFirst, &scene.list, 0), nullptr);
  EXPECT_EQ(scene.ids_in(scene.closed()), std::vector<int>{1});
}

TEST(GroupClasses, ClosingAClosedLeafOrReopeningAnOpenOneDoesNothing) {
  TwoLeaves scene;
  scene.closed().close();
  scene.open().create_open_bottom_group(&scene.list);
  EXPECT_EQ(scene.closed().m_bounds, kFirst);
  EXPECT_EQ(leaves_of(scene.list).size(), 2U);
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(AddBounds, WidensByEveryDrawableBelowAnyGroup) {
  TwoLeaves scene;
  Bounds all;
  scene.root().add_bounds(all);
  EXPECT_EQ(all, (Bounds{-20, 10, 20, 20}));
  Bounds more{15, 15, 100, 16};
  scene.closed().add_bounds(more);
  EXPECT_EQ(more, (Bounds{10, 10, 100, 20}));
  Bounds open;
  scene.open().add_bounds(open);
  EXPECT_EQ(open, kLeft);
}

TEST(CountAndSetLastDrawable, OfAnEmptyGroupIsZeroAndLeavesTheLastLink) {
  TwoLeaves scene;
  auto& leaf = static_cast<BottomGroup&>(scene.closed());
  DL::Drawable* only = leaf.m_pFirst.drawable;
  leaf.m_pFirst.drawable = nullptr;
  EXPECT_EQ(leaf.count_and_set_last_drawable(), 0);
  EXPECT_EQ(leaf.m_pLastChild.drawable, only);
  leaf.m_pFirst.drawable = only;
}

TEST(CountAndSetLastDrawable, FindsTheEndOfTheChain) {
  ProbeScene scene;
  for (int i = 0; i < 3; ++i) scene.add(kFirst);
  auto& leaf = static_cast<BottomGroup&>(scene.root());
  DL::Drawable* last = leaf.m_pLastChild.drawable;
  leaf.m_pLastChild.drawable = nullptr;
  EXPECT_EQ(leaf.count_and_set_last_drawable(), 3);
  EXPECT_EQ(leaf.m_pLastChild.drawable, last);
}

TEST(Destruction, DestroysEveryDrawable) {
  ProbeLog log;
  {
    DL::DisplayList list;
    list.m_cMaxOpenDrawables = 2;
    for (long i = -20; i < 20; ++i) {
      const auto x = static_cast<std::int32_t>(i * 1000);
      const Bounds b{x, x, x + 1, x + 1};
      list.add(new ProbeDrawable(log, 0, b), b, 0);
    }
    EXPECT_EQ(log.alive, 40);
  }
  EXPECT_EQ(log.alive, 0);
}

TEST(Destruction, OfAHiddenGroupDestroysItsDrawables) {
  ProbeLog log;
  {
    DL::DisplayList list;
    list.m_cMaxOpenDrawables = 1;
    list.add(new ProbeDrawable(log, 1, kFirst), kFirst, 0);
    list.add(new ProbeDrawable(log, 2, kLeft), kLeft, 0);
    list.m_pRootGroup->m_pFirst.group->make_hidden();
    list.m_pOpenGroup->make_hidden();
    list.m_pRootGroup->make_hidden();
  }
  EXPECT_EQ(log.alive, 0);
}

TEST(Close, ShrinksAGroupToItsChildrenThroughTheLastOne) {
  TwoLeaves scene;
  scene.root().close();
  EXPECT_EQ(scene.root().m_bounds, (Bounds{-20, 10, 20, 20}));
  Group& last = scene.open();
  EXPECT_FALSE(last.is_open());
  EXPECT_EQ(last.m_bounds, kLeft);
  EXPECT_EQ(last.level(), 1U);
  EXPECT_EQ(scene.list.m_pOpenGroup, &last);
}

}  // namespace
