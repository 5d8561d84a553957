#include <gtest/gtest.h>

#include "tests/support/point_printing.h"
#include "tests/support/probe_scene.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Group;
using Bounds = DL::BoundsTemplate<long>;

constexpr Bounds kRight{10, 10, 20, 20};
constexpr Bounds kLeft{-20, 10, -10, 20};

/// A root over a closed leaf (probe 1) and an open one (probe 2).
struct HiddenGroups : testing::Test {
  HiddenGroups() {
    scene.add(kRight, 2);
    scene.add(kLeft, 4);
    all = {&scene.root(), scene.child(scene.root(), 0), scene.child(scene.root(), 1)};
  }
  void hide_all() {
    for (Group* group : all) group->make_hidden();
  }

  ProbeScene scene{1, 5};
  std::vector<Group*> all;
};

TEST_F(HiddenGroups, TellTheyAreUntilMadeVisible) {
  for (Group* group : all) {
    const std::uint32_t level = group->level();
    const Bounds bounds = group->m_bounds;
    const std::uint32_t flags = group->m_flags;
    const bool leaf = group->contains_drawables();
    const bool open = group->is_open();
    for (const bool hidden : {true, true, false, false, true, false}) {
      hidden ? group->make_hidden() : group->make_visible();
      EXPECT_EQ(group->is_hidden(), hidden);
      EXPECT_EQ(group->level(), level);
      EXPECT_EQ(group->m_bounds, bounds);
      EXPECT_EQ(group->m_flags, flags);
      EXPECT_EQ(group->contains_drawables(), leaf);
      EXPECT_EQ(group->is_open(), open);
    }
  }
}

TEST_F(HiddenGroups, DrawLikeVisibleOnes) {
  const Bounds plane = Bounds::plane();
  hide_all();
  scene.root().draw_unclipped(scene.list);
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::unclipped, {1, 2}));
  scene.root().draw_bounded(scene.list, Bounds(), plane);
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::clipped, {1, 2}));
  scene.root().draw_circled_bounded(scene.list, Bounds(), plane);
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::clipped, {1, 2}));
  scene.root().draw_bounded_selection(scene.list, plane, plane);
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::unclipped_selection, {1, 2}));
}

TEST_F(HiddenGroups, TakeDrawablesLikeVisibleOnes) {
  scene.list.m_cMaxOpenDrawables = 2;
  hide_all();
  EXPECT_EQ(scene.add(kLeft), all[2]);
  EXPECT_TRUE(all[2]->is_hidden());
  EXPECT_TRUE(all[2]->is_open());
  EXPECT_EQ(scene.ids_in(*all[2]), (std::vector<int>{2, 3}));
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST_F(HiddenGroups, AnOpenOneIsVisibleOnceClosed) {
  hide_all();
  scene.list.m_cMaxOpenDrawables = 2;
  EXPECT_NE(scene.add(kRight), nullptr);
  EXPECT_FALSE(all[2]->is_hidden());
  EXPECT_FALSE(all[2]->is_open());
  EXPECT_EQ(all[2]->m_bounds, kLeft);
  EXPECT_EQ(all[2]->level(), 1U);
  EXPECT_TRUE(all[0]->is_hidden());
  EXPECT_TRUE(all[1]->is_hidden());
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST_F(HiddenGroups, AnOpenOneIsVisibleOnceSplit) {
  hide_all();
  EXPECT_NE(scene.add(kLeft), nullptr);
  EXPECT_FALSE(all[2]->is_hidden());
  EXPECT_FALSE(all[2]->contains_drawables());
  EXPECT_EQ(all[2]->level(), 1U);
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(HiddenOpenGroup, IsDiscardedWhileEmpty) {
  ProbeScene scene;
  scene.list.m_cMaxOpenDrawables = 1;
  scene.add(kRight);
  scene.add(kRight);
  ASSERT_FALSE(scene.root().contains_drawables());
  scene.list.m_pOpenGroup->close();
  scene.root().m_pFirst.group->create_open_bottom_group(&scene.list);
  scene.list.m_pOpenGroup->make_hidden();
  ASSERT_EQ(leaves_of(scene.list).size(), 3U);
  scene.add(kLeft);
  EXPECT_EQ(leaves_of(scene.list).size(), 3U);
  EXPECT_FALSE(scene.list.m_pOpenGroup->is_hidden());
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST_F(HiddenGroups, CloseAndReopenLikeVisibleOnes) {
  hide_all();
  scene.root().close();
  EXPECT_EQ(scene.root().m_bounds, (Bounds{-20, 10, 20, 20}));
  EXPECT_TRUE(scene.root().is_hidden());
  all[0]->m_bounds = Bounds::plane();
  all[1]->create_open_bottom_group(&scene.list);
  EXPECT_EQ(scene.list.m_pOpenGroup, scene.child(scene.root(), 2));
  EXPECT_EQ(scene.list.m_pOpenGroup->level(), 1U);
}

}  // namespace
