#include <gtest/gtest.h>

#include "tests/support/point_printing.h"
#include "tests/support/probe_scene.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Group;
using Bounds = DL::BoundsTemplate<long>;
using Ids = std::vector<int>;

Bounds square(std::int32_t at) {
  return {at, at, at + 1, at + 1};
}

TEST(InsertHint, FollowsTheOpenGroupUntilInsertionClimbs) {
  ProbeScene scene(1, 5);
  scene.add(square(10));
  EXPECT_EQ(scene.list.m_pInsertHint, scene.list.m_pOpenGroup);
  scene.add(square(20));
  EXPECT_EQ(scene.list.m_pInsertHint, scene.list.m_pOpenGroup);
  scene.add(square(-20));
  EXPECT_EQ(scene.list.m_pInsertHint, nullptr);
  scene.add(square(-30));
  EXPECT_EQ(scene.list.m_pInsertHint, nullptr);
}

TEST(InsertHint, IsClearedAlsoWhenTheParentContainsTheBounds) {
  ProbeScene scene(1, 5);
  scene.add(square(10));
  scene.add(square(20));
  scene.list.m_cMaxOpenDrawables = 10;
  ASSERT_EQ(scene.list.m_pInsertHint, scene.list.m_pOpenGroup);
  scene.add(square(-20));
  EXPECT_EQ(scene.list.m_pOpenGroup->m_pParent, &scene.root());
  EXPECT_EQ(scene.list.m_pInsertHint, nullptr);
}

TEST(InsertHint, OnAnotherGroupStaysThere) {
  ProbeScene scene(1, 1);
  scene.add(square(10));
  scene.add(square(20));
  Group* elsewhere = scene.child(scene.root(), 0);
  scene.list.m_pInsertHint = elsewhere;
  scene.add(square(30));
  EXPECT_EQ(scene.list.m_pInsertHint, elsewhere);
}

TEST(OutsideTheRoot, NothingIsAddedAndTheListGoesOn) {
  ProbeScene scene(2, 5);
  scene.root().m_bounds = {0, 0, 100, 100};
  scene.add(square(10));
  EXPECT_EQ(scene.add(square(200)), nullptr);
  EXPECT_EQ(scene.log.alive, 1);
  EXPECT_NE(scene.add(square(20)), nullptr);
  EXPECT_EQ(scene.add(square(200)), nullptr);
  EXPECT_NE(scene.add(square(30)), nullptr);
  EXPECT_EQ(drawables_of(scene.list).size(), 3U);
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(OutsideTheRoot, FullOpenGroupStaysOpen) {
  ProbeScene scene(1, 1);
  scene.root().m_bounds = {0, 0, 100, 100};
  scene.add(square(10));
  scene.add(square(20));
  Group* open = scene.list.m_pOpenGroup;
  EXPECT_EQ(scene.add(square(-10)), nullptr);
  EXPECT_EQ(scene.list.m_pOpenGroup, open);
  EXPECT_NE(scene.add(square(30)), nullptr);
  EXPECT_EQ(drawables_of(scene.list).size(), 3U);
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(FullRootAtTheDeepestLevel, TakesWhatDoesNotFitElsewhere) {
  ProbeScene scene(2, 0);
  for (const int at : {10, 20, 30}) EXPECT_EQ(scene.add(square(at)), &scene.root());
  EXPECT_EQ(scene.ids_in(scene.root()), (Ids{1, 2, 3}));
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(AddByDrawable, AsksItForItsBounds) {
  ProbeScene scene;
  scene.list.add(scene.make(square(10)), 3);
  EXPECT_EQ(scene.list.m_openBounds, square(10));
  EXPECT_EQ(scene.root().m_flags, 3U);
}

}  // namespace
