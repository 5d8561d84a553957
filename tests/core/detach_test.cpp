// Drawables that are taken out of the list alive.

#include <gtest/gtest.h>

#include <memory>

#include "displaylist/displaylist.h"
#include "tests/support/grove.h"
#include "tests/support/point_printing.h"

namespace {

using DL::BottomGroup;
using DL::Drawable;
using DL::Group;
using DL::OpenBottomGroup;
using DL::Search;
using Bounds = DL::BoundsTemplate<long>;
using Ids = std::vector<int>;

struct Detach : testing::Test {
  Detach() {
    grove.log.on_search = [this](ProbeDrawable& probe, Search&) {
      asked.push_back(probe.id());
      return probe.id() == wanted;
    };
  }
  /// Searches `from`, and takes over what is found.
  Group* detach(Group* from, int id, const Bounds& bounds) {
    Search search;
    search.m_bounds = bounds;
    wanted = id;
    asked.clear();
    Group* group = from->detach_fast(search);
    detached.reset(search.m_pDetached);
    EXPECT_FALSE(search.handled);
    return group;
  }

  Grove grove;
  int wanted = 0;
  Ids asked;
  std::unique_ptr<Drawable> detached;
};

TEST_F(Detach, LeavesTheDrawableAliveAndUnlinked) {
  ProbeDrawable* first = grove.make(Grove::k2);
  grove.list.add_before(grove.shallow, grove.shallow->m_pFirst.drawable, first, Grove::k2);
  Drawable* second = first->m_pNext;
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(detach(&grove.root(), 5, Grove::k2), grove.shallow);
  ASSERT_EQ(detached.get(), first);
  EXPECT_EQ(first->m_pNext, nullptr);
  EXPECT_EQ(first->bounds(), Grove::k2);
  EXPECT_EQ(grove.shallow->m_pFirst.drawable, second);
  EXPECT_EQ(grove.shallow->m_pLastChild.drawable, second);
  EXPECT_EQ(grove.log.alive, 5);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 3, 4}));
  EXPECT_EQ(grove.broken(), "");
}

TEST_F(Detach, FromTheMiddleAndTheEndOfTheOpenGroupIsCounted) {
  grove.list.m_cMaxOpenDrawables = 4;
  for (int i = 0; i < 3; ++i) grove.add(Grove::k4);
  EXPECT_EQ(detach(&grove.root(), 6, Grove::k4), grove.open);
  EXPECT_EQ(grove.ids_in(*grove.open), (Ids{4, 5, 7}));
  EXPECT_EQ(grove.list.m_cOpenDrawables, 3);
  EXPECT_EQ(detached->m_pNext, nullptr);
  EXPECT_EQ(detach(grove.open, 7, Grove::k4), grove.open);
  EXPECT_EQ(grove.list.m_cOpenDrawables, 2);
  EXPECT_EQ(grove.add(Grove::k4), grove.open);
  EXPECT_EQ(grove.ids_in(*grove.open), (Ids{4, 5, 8}));
  EXPECT_EQ(grove.broken(), "");
}

TEST_F(Detach, ReturnsTheNextSiblingOfAGroupThatItEmptied) {
  EXPECT_EQ(detach(&grove.root(), 2, Grove::k2), grove.deeper);
  EXPECT_EQ(detached->m_pNext, nullptr);
  EXPECT_EQ(detach(&grove.root(), 1, Grove::k1), grove.inner);
  EXPECT_EQ(grove.ids(), (Ids{3, 4}));
}

TEST_F(Detach, ReturnsTheLowestAncestorWithChildrenWhereNoSiblingFollows) {
  EXPECT_EQ(detach(&grove.root(), 3, Grove::k3), grove.inner);
  EXPECT_EQ(detach(grove.inner, 2, Grove::k2), &grove.root());
  EXPECT_EQ(detach(&grove.root(), 4, Grove::k4), &grove.root());
  EXPECT_EQ(grove.list.m_pOpenGroup, nullptr);
  EXPECT_EQ(grove.list.m_cOpenDrawables, 0);
  EXPECT_EQ(detach(&grove.root(), 1, Grove::k1), &grove.root());
  EXPECT_EQ(grove.log.alive, 1);
  EXPECT_EQ(grove.root().m_pFirst.group, nullptr);
  EXPECT_EQ(grove.broken(), "");
}

TEST_F(Detach, WithoutAMatchIsNull) {
  EXPECT_EQ(detach(&grove.root(), 99, {12, 12, 13, 13}), nullptr);
  EXPECT_EQ(detached, nullptr);
  EXPECT_EQ(asked, (Ids{1, 4}));
  EXPECT_EQ(detach(&grove.root(), 1, {9, 10, 20, 20}), nullptr);
  EXPECT_EQ(asked, Ids{4});
  EXPECT_EQ(detach(&grove.root(), 2, {-21, 10, -15, 15}), nullptr);
  EXPECT_EQ(asked, Ids{});
  grove.open->remove_all();
  EXPECT_EQ(detach(grove.open, 4, Grove::k4), nullptr);
}

TEST_F(Detach, LooksAtEachLevelOnTheWayDownButNotAtTheStart) {
  // Not those of what it holds, which shows where the search looks.
  grove.deeper->m_bounds = Grove::k1;
  EXPECT_EQ(detach(&grove.root(), 3, Grove::k3), nullptr);
  EXPECT_EQ(asked, Ids{});
  EXPECT_EQ(detach(grove.deeper, 3, Grove::k3), grove.inner);
  EXPECT_EQ(detached->m_pNext, nullptr);
}

TEST_F(Detach, FromTheRootAsALeafReturnsTheRoot) {
  ProbeLog log;
  DL::DisplayList list;
  log.on_search = [](ProbeDrawable&, Search&) { return true; };
  list.add(new ProbeDrawable(log, 1, Grove::k1));
  Search search;
  search.m_bounds = Grove::k1;
  EXPECT_EQ(list.m_pRootGroup->detach_fast(search), list.m_pRootGroup);
  const std::unique_ptr<Drawable> taken(search.m_pDetached);
  ASSERT_NE(taken, nullptr);
  EXPECT_EQ(log.alive, 1);
  EXPECT_EQ(list.m_pOpenGroup, list.m_pRootGroup);
  EXPECT_EQ(list.m_cOpenDrawables, 0);
  EXPECT_EQ(list.m_pRootGroup->m_pLastChild.drawable, nullptr);
  EXPECT_EQ(list.m_pRootGroup->detach_fast(search), nullptr);
}

TEST_F(Detach, OfEachClassOfGroupIsTheSame) {
  Search search;
  search.m_bounds = Grove::k4;
  wanted = 4;
  EXPECT_EQ(static_cast<OpenBottomGroup*>(grove.open)->detach_fast(search), &grove.root());
  detached.reset(search.m_pDetached);
  EXPECT_EQ(grove.list.m_cOpenDrawables, 0);
  search.m_bounds = Grove::k2;
  wanted = 2;
  EXPECT_EQ(static_cast<BottomGroup*>(grove.shallow)->detach_fast(search), grove.deeper);
  detached.reset(search.m_pDetached);
  EXPECT_EQ(grove.ids(), (Ids{1, 3}));
}

TEST_F(Detach, InHiddenGroupsIsThatInVisibleOnes) {
  for (Group* group : groups_of(grove.list)) group->make_hidden();
  EXPECT_EQ(detach(&grove.root(), 2, Grove::k2), grove.deeper);
  EXPECT_EQ(detach(&grove.root(), 4, Grove::k4), &grove.root());
  EXPECT_EQ(grove.list.m_pOpenGroup, nullptr);
  EXPECT_EQ(grove.ids(), (Ids{1, 3}));
}

TEST_F(Detach, WhatWasDetachedCanBeAddedAgain) {
  EXPECT_EQ(detach(&grove.root(), 1, Grove::k1), grove.inner);
  EXPECT_NE(grove.list.add(detached.release(), Grove::k1, 0), nullptr);
  EXPECT_EQ(grove.ids(), (Ids{2, 3, 4, 1}));
  EXPECT_EQ(grove.open->m_pLastChild.group, grove.list.m_pOpenGroup);
  EXPECT_EQ(detach(&grove.root(), 1, Grove::k1), grove.open);
  Drawable* before = grove.shallow->m_pFirst.drawable;
  EXPECT_EQ(grove.list.add_before(&grove.root(), before, detached.release(), Grove::k1),
            grove.shallow);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 3, 4}));
  EXPECT_EQ(grove.log.alive, 4);
}

}  // namespace
