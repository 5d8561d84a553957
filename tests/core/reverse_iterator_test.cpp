#include <gtest/gtest.h>

#include "displaylist/core/iterators.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/grove.h"
#include "tests/support/iterator_walk.h"

namespace {

using DL::DisplayListReverseIterator;
using DL::Drawable;
using DL::Group;
using Bounds = DL::BoundsTemplate<long>;
using Ids = std::vector<int>;

constexpr Bounds kNowhere{-1000, -1000, -900, -900};

Ids reversed(DL::DisplayList& list, const Bounds& bounds) {
  return ids_walked(DisplayListReverseIterator(&list, bounds));
}

TEST(ReverseIterator, YieldsTheDrawablesOfOneGroupLastFirst) {
  ProbeScene scene;
  for (int i = 0; i < 3; ++i) scene.add({i, 0, i, 0});
  DisplayListReverseIterator at(&scene.list, Bounds::plane());
  EXPECT_EQ(at.m_pGroup, &scene.root());
  EXPECT_EQ(at.m_pCurrent, scene.root().m_pLastChild.drawable);
  EXPECT_EQ(ids_walked(at), (Ids{3, 2, 1}));
  EXPECT_EQ(at.m_pCurrent, nullptr);
  EXPECT_EQ(at.m_pGroup, nullptr);
  EXPECT_EQ(at.next(), nullptr);
}

TEST(ReverseIterator, GoesThroughAllLeavesLastFirst) {
  Grove grove;
  const auto all = drawables_of(grove.list);
  DisplayListReverseIterator at(&grove.list, Bounds::plane());
  EXPECT_EQ(at.m_pGroup, grove.open);
  EXPECT_EQ(at.m_pCurrent, all[3]);
  EXPECT_EQ(at.next(), all[2]);
  EXPECT_EQ(at.m_pGroup, grove.deep);
  EXPECT_EQ(at.next(), all[1]);
  EXPECT_EQ(at.m_pGroup, grove.shallow);
  EXPECT_EQ(at.next(), all[0]);
  EXPECT_EQ(at.m_pGroup, grove.right);
  EXPECT_EQ(at.next(), nullptr);
}

TEST(ReverseIterator, GoesToTheGroupsThatMeetTheRectangle) {
  Grove grove;
  EXPECT_EQ(reversed(grove.list, {15, 15, 16, 16}), (Ids{4, 1}));
  EXPECT_EQ(reversed(grove.list, {21, 20, 25, 25}), Ids{4});
  EXPECT_EQ(reversed(grove.list, {-15, 11, -12, 11}), (Ids{3, 2}));
  EXPECT_EQ(reversed(grove.list, {-14, 11, -12, 11}), Ids{3});
  EXPECT_EQ(reversed(grove.list, {-30, 15, -20, 30}), Ids{2});
  EXPECT_EQ(reversed(grove.list, kNowhere), Ids{});
}

TEST(ReverseIterator, TestsNoDrawable) {
  ProbeScene scene(2, 5);
  scene.add({10, 10, 11, 11});
  scene.add({50, 50, 51, 51});
  scene.add({-10, 10, -9, 11});
  EXPECT_EQ(reversed(scene.list, {30, 30, 31, 31}), (Ids{2, 1}));
}

TEST(ReverseIterator, DoesNotTestTheRoot) {
  ProbeScene scene;
  scene.add({10, 10, 11, 11});
  scene.root().m_bounds = {10, 10, 11, 11};
  EXPECT_EQ(reversed(scene.list, kNowhere), Ids{1});

  // Nor do its bounds stand for those of its children.
  Grove grove;
  grove.root().m_bounds = {0, 0, 1, 1};
  EXPECT_EQ(reversed(grove.list, {0, 0, 10, 10}), (Ids{4, 1}));
}

// Bounds that are not those of what a group holds show which of them are read.

TEST(ReverseIterator, TestsNothingBelowAGroupInsideTheRectangle) {
  Grove grove;
  grove.shallow->m_bounds = kNowhere;
  grove.deep->m_bounds = kNowhere;
  EXPECT_EQ(reversed(grove.list, {-20, 10, -10, 15}), (Ids{3, 2}));
  EXPECT_EQ(reversed(grove.list, {-19, 10, -10, 15}), (Ids{3}));
  EXPECT_EQ(reversed(grove.list, {-11, 10, -10, 15}), Ids{});
}

TEST(ReverseIterator, TestsEachGroupBelowOneThatOnlyMeets) {
  Grove grove;
  grove.deeper->m_bounds = kNowhere;
  EXPECT_EQ(reversed(grove.list, {-19, 10, -10, 15}), Ids{2});
  grove.inner->m_bounds = kNowhere;
  EXPECT_EQ(reversed(grove.list, {-20, 10, -10, 15}), Ids{});
}

TEST(ReverseIterator, OverAnEmptyListHasNothing) {
  DL::DisplayList list;
  DisplayListReverseIterator at(&list, Bounds::plane());
  EXPECT_FALSE(at.is_at_drawable());
  EXPECT_EQ(at.next(), nullptr);
  EXPECT_EQ(at.m_pCurrent, nullptr);
  EXPECT_EQ(at.init(nullptr, Bounds::plane()), nullptr);
  EXPECT_EQ(at.next(), nullptr);
}

TEST(ReverseIterator, PassesOverEmptyGroups) {
  Grove grove;
  grove.open->remove_all();
  DisplayListReverseIterator at(&grove.list, Bounds::plane());
  EXPECT_EQ(at.m_pGroup, grove.deep);
  EXPECT_EQ(ids_walked(at), (Ids{3, 2, 1}));
  grove.deep->remove_all();
  EXPECT_EQ(reversed(grove.list, Bounds::plane()), (Ids{2, 1}));
  grove.deeper->remove_all();
  EXPECT_EQ(reversed(grove.list, Bounds::plane()), (Ids{2, 1}));
  grove.right->remove_all();
  EXPECT_EQ(reversed(grove.list, Bounds::plane()), Ids{2});
  grove.inner->remove_all();
  EXPECT_EQ(reversed(grove.list, Bounds::plane()), Ids{});
  grove.root().remove_all();
  EXPECT_EQ(reversed(grove.list, Bounds::plane()), Ids{});
}

TEST(ReverseIterator, StartsAnewInTheMiddleOfAWalk) {
  ProbeScene scene(3, 5);
  for (int i = 0; i < 3; ++i) scene.add({10 + i, 10, 20, 20});
  for (int i = 0; i < 3; ++i) scene.add({-20 + i, 10, -10, 20});
  DisplayListReverseIterator at(&scene.list, Bounds::plane());
  at.next();
  EXPECT_EQ(at.init(&scene.list, {10, 10, 20, 20}), scene.child(scene.root(), 0));
  EXPECT_EQ(ids_walked(at), (Ids{3, 2, 1}));
  EXPECT_EQ(at.init(&scene.list, kNowhere), nullptr);
  EXPECT_EQ(at.next(), nullptr);
}

TEST(ReverseIterator, RemembersAnyNumberOfDrawablesAndGroups) {
  constexpr int kMany = 1000;
  Ids backwards;
  for (int id = kMany; id > 0; --id) backwards.push_back(id);
  ProbeScene leaf(kMany);
  ProbeScene leaves(1, 1);
  for (int i = 0; i < kMany; ++i) {
    leaf.add({i, i, i, i});
    leaves.add({i, i, i, i});
  }
  ASSERT_EQ(leaves_of(leaf.list).size(), 1U);
  ASSERT_EQ(leaves_of(leaves.list).size(), std::size_t{kMany});
  EXPECT_EQ(reversed(leaf.list, Bounds::plane()), backwards);
  EXPECT_EQ(reversed(leaves.list, Bounds::plane()), backwards);
}

TEST(ReverseIterator, EndsEarlyWithoutMemory) {
  constexpr int kMany = 40;
  ProbeScene leaf(kMany);
  ProbeScene leaves(1, 1);
  for (int i = 0; i < kMany; ++i) {
    leaf.add({i, i, i, i});
    leaves.add({i, i, i, i});
  }
  // 40 entries need three sizes of a stack.
  for (const std::int64_t requests : {0, 1, 2}) {
    for (DL::DisplayList* list : {&leaf.list, &leaves.list}) {
      const FailingDefaultHeap heap(requests);
      DisplayListReverseIterator at(list, Bounds::plane());
      EXPECT_EQ(at.m_pGroup, nullptr);
      EXPECT_EQ(at.m_pCurrent, nullptr);
      EXPECT_EQ(at.next(), nullptr);
    }
  }
  const FailingDefaultHeap heap(3);
  EXPECT_EQ(ids_walked(DisplayListReverseIterator(&leaf.list, Bounds::plane())).size(),
            std::size_t{kMany});
}

TEST(ReverseIterator, NextUntilAndNextGroupGoForward) {
  ProbeScene scene;
  for (int i = 0; i < 3; ++i) scene.add({i, 0, i, 0});
  const auto all = drawables_of(scene.list);
  DisplayListReverseIterator at(&scene.list, Bounds::plane());
  EXPECT_EQ(at.next_until(all[2]), all[2]);
  at.next();
  EXPECT_EQ(at.m_pCurrent, all[1]);
  EXPECT_EQ(at.next_until(all[2]), all[2]);
  EXPECT_EQ(at.next_until(all[0]), nullptr);
  EXPECT_EQ(at.next(), nullptr);

  Grove grove;
  at.init(&grove.list, Grove::k3);
  EXPECT_EQ(at.m_pGroup, grove.deep);
  EXPECT_EQ(at.next_group(), grove.open);
  EXPECT_EQ(at.prev(), nullptr);
  EXPECT_EQ(at.reserved_step(), nullptr);
}

}  // namespace
