#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <memory>

#include "tests/support/bounds_generators.h"
#include "tests/support/point_printing.h"
#include "tests/support/probe_scene.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Drawable;
using DL::Group;
using Bounds = DL::BoundsTemplate<long>;
using Ids = std::vector<int>;

constexpr Bounds kRight{10, 10, 20, 20};
constexpr Bounds kLeft{-20, 10, -10, 20};
constexpr Bounds kFar{1000, -500, 1001, 30};

Ids all_ids(DL::DisplayList& list) {
  Ids ids;
  for (Drawable* d : drawables_of(list)) ids.push_back(static_cast<ProbeDrawable*>(d)->id());
  return ids;
}

/// The leaves (1, 2), (3, 4) and, open, (5).
struct AddBefore : testing::Test {
  AddBefore() {
    for (const Bounds& b : {kRight, kRight, kLeft, kLeft, kRight}) scene.add(b);
    leaves = leaves_of(scene.list);
    drawables = drawables_of(scene.list);
  }
  /// A chain of new probes, numbered from 6 on.
  Drawable* chain_of(int count, const Bounds& bounds) {
    Drawable* first = scene.make(bounds);
    Drawable* last = first;
    while (--count > 0) last = last->m_pNext = scene.make(bounds);
    return first;
  }

  ProbeScene scene{2, 5};
  std::vector<Group*> leaves;
  std::vector<Drawable*> drawables;
};

TEST_F(AddBefore, TheFirstOfALeafBecomesItsNewFirst) {
  ASSERT_EQ(leaves.size(), 3U);
  Group* taken = scene.list.add_before(&scene.root(), drawables[2], chain_of(1, kLeft), kLeft);
  EXPECT_EQ(taken, leaves[1]);
  EXPECT_EQ(all_ids(scene.list), (Ids{1, 2, 6, 3, 4, 5}));
  EXPECT_EQ(scene.ids_in(*leaves[1]), (Ids{6, 3, 4}));
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST_F(AddBefore, InTheMiddleOfALeafTheChainKeepsItsOrder) {
  scene.list.add_before(&scene.root(), drawables[1], chain_of(3, kRight), kRight);
  EXPECT_EQ(all_ids(scene.list), (Ids{1, 6, 7, 8, 2, 3, 4, 5}));
  EXPECT_EQ(leaves[0]->m_pLastChild.drawable, drawables[1]);
  EXPECT_EQ(scene.list.m_cOpenDrawables, 1);
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST_F(AddBefore, WidensEveryGroupUpToTheRoot) {
  scene.root().m_bounds = {-100, -100, 100, 100};
  scene.list.add_before(&scene.root(), drawables[2], chain_of(1, kFar), kFar);
  EXPECT_EQ(leaves[1]->m_bounds, (Bounds{-20, -500, 1001, 30}));
  EXPECT_EQ(scene.root().m_bounds, (Bounds{-100, -500, 1001, 100}));
  EXPECT_EQ(leaves[0]->m_bounds, kRight);
  EXPECT_EQ(scene.list.m_openBounds, kRight);
}

TEST_F(AddBefore, IntoTheOpenGroupIsCounted) {
  scene.list.m_cMaxOpenDrawables = 10;
  scene.add({12, 12, 13, 13});  // probe 6
  Group* taken = scene.list.add_before(leaves[2], drawables[4], chain_of(2, kFar), kFar);
  EXPECT_EQ(taken, scene.list.m_pOpenGroup);
  EXPECT_EQ(scene.ids_in(*taken), (Ids{7, 8, 5, 6}));
  EXPECT_EQ(scene.list.m_cOpenDrawables, 4);
  EXPECT_EQ(scene.list.m_openBounds, (Bounds{10, -500, 1001, 30}));
  // What the open group holds is what it shrinks to.
  scene.add({-5, -5, -4, -4});
  EXPECT_EQ(leaves[2]->m_bounds, (Bounds{10, -500, 1001, 30}));
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST_F(AddBefore, HintMayBeAnyGroupVisitedEarlier) {
  for (Group* hint : {&scene.root(), leaves[0], leaves[1], leaves[2]}) {
    Group* taken = scene.list.add_before(hint, drawables[4], chain_of(1, kRight), kRight);
    EXPECT_EQ(taken, leaves[2]);
  }
  EXPECT_EQ(all_ids(scene.list), (Ids{1, 2, 3, 4, 6, 7, 8, 9, 5}));
}

TEST_F(AddBefore, WhatIsNotFoundIsGivenBack) {
  ProbeDrawable stranger(scene.log, 99, kRight);
  std::unique_ptr<Drawable> chain(chain_of(1, kRight));
  EXPECT_EQ(scene.list.add_before(&scene.root(), &stranger, chain.get(), kRight), nullptr);
  EXPECT_EQ(scene.list.add_before(leaves[1], drawables[0], chain.get(), kRight), nullptr);
  EXPECT_EQ(scene.list.add_before(nullptr, drawables[0], chain.get(), kRight), nullptr);
  EXPECT_EQ(chain->m_pNext, nullptr);
  EXPECT_EQ(all_ids(scene.list), (Ids{1, 2, 3, 4, 5}));
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST_F(AddBefore, LeavesWithNothingInThemArePassedOver) {
  scene.list.m_pOpenGroup->close();
  scene.root().create_open_bottom_group(&scene.list);
  Group* empty = scene.list.m_pOpenGroup;
  EXPECT_EQ(scene.list.add_before(&scene.root(), drawables[4], chain_of(1, kRight), kRight),
            leaves[2]);
  std::unique_ptr<Drawable> chain(chain_of(1, kRight));
  EXPECT_EQ(scene.list.add_before(empty, drawables[4], chain.get(), kRight), nullptr);
}

TEST_F(AddBefore, GroupsAboveGoOnContainingWhatIsAdded) {
  scene.list.m_cMaxOpenDrawables = 2;
  ASSERT_EQ(leaves[2], scene.list.m_pOpenGroup);
  const Bounds far{-1000, 10, -1000, 10};
  scene.list.add_before(leaves[2], drawables[4], chain_of(1, far), far);
  // The split makes a cell around the far drawable, wider than its parent.
  scene.add({-999, 11, -999, 11});
  const Bounds beyond{-1001, 5000, -1001, 5000};
  scene.add(beyond);
  for (Group* leaf : leaves_of(scene.list)) {
    Bounds contents;
    leaf->add_bounds(contents);
    for (Group* g = leaf; g != nullptr; g = g->m_pParent) {
      EXPECT_TRUE(contents.is_inside(g->m_bounds)) << contents << g->m_bounds;
    }
  }
  scene.root().draw_bounded(scene.list, Bounds(), beyond);
  const ProbeCalls calls = scene.log.take();
  ASSERT_FALSE(calls.empty());
  EXPECT_EQ(calls.back().id, scene.next_id - 1);
}

RC_GTEST_PROP(AddBeforeProperty, InsertsWhereAFlatListWould, ()) {
  ProbeScene scene(*rc::gen::inRange(1, 9), *rc::gen::inRange(1, 32));
  Ids order;
  for (const Bounds& bounds : *rc::gen::nonEmpty(scene_bounds())) {
    order.push_back(scene.next_id);
    scene.add(bounds);
  }
  for (const Bounds& bounds : *scene_bounds()) {
    if (*rc::gen::arbitrary<bool>()) {
      order.push_back(scene.next_id);
      RC_ASSERT(scene.add(bounds) != nullptr);
      RC_ASSERT(all_ids(scene.list) == order);
      continue;
    }
    const std::vector<Drawable*> drawables = drawables_of(scene.list);
    const auto at = *rc::gen::inRange<std::size_t>(0, drawables.size());
    const auto insert_at = order.begin() + static_cast<std::ptrdiff_t>(at);
    order.insert(insert_at, scene.next_id);
    ProbeDrawable* probe = scene.make(bounds);
    RC_ASSERT(scene.list.add_before(&scene.root(), drawables[at], probe, bounds) != nullptr);
    RC_ASSERT(all_ids(scene.list) == order);
  }
  Bounds all;
  scene.root().add_bounds(all);
  RC_ASSERT(all.is_inside(scene.root().m_bounds));
  for (Group* leaf : leaves_of(scene.list)) {
    Bounds contents;
    leaf->add_bounds(contents);
    for (Group* g = leaf; g != nullptr; g = g->m_pParent)
      RC_ASSERT(contents.is_inside(g->m_bounds));
  }
  Bounds open;
  scene.list.m_pOpenGroup->add_bounds(open);
  RC_ASSERT(scene.list.m_openBounds == open);
  RC_ASSERT(scene.list.m_cOpenDrawables ==
            static_cast<std::int32_t>(scene.ids_in(*scene.list.m_pOpenGroup).size()));
}

}  // namespace
