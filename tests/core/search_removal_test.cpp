// Removal of the first drawable that a search matches.

#include <gtest/gtest.h>

#include <utility>

#include "displaylist/displaylist.h"
#include "tests/support/grove.h"
#include "tests/support/point_printing.h"

namespace {

using DL::Drawable;
using DL::Group;
using DL::Search;
using Bounds = DL::BoundsTemplate<long>;
using Ids = std::vector<int>;
using Point = DL::PointTemplate<long>;

/// A grove whose probes match by their number, and tell that they were asked.
struct SearchRemoval : testing::Test {
  SearchRemoval() {
    grove.log.on_search = [this](ProbeDrawable& probe, Search&) {
      asked.push_back(probe.id());
      return probe.id() == wanted;
    };
  }
  Search search_for(int id, const Bounds& bounds) {
    wanted = id;
    asked.clear();
    Search search;
    search.m_bounds = bounds;
    return search;
  }
  /// What remove_fast of a group returns when it is searched for the probe.
  Group* remove_from(Group* group, int id, const Bounds& bounds) {
    Search search = search_for(id, bounds);
    Group* found = group->remove_fast(search);
    EXPECT_EQ(search.m_pDetached, nullptr);
    return found;
  }
  /// Gives a group bounds that are not those of what it holds, which shows where
  /// a search looks.
  void fake_bounds(Group* group, const Bounds& bounds) {
    group->m_bounds = bounds;
    bounds_hold = false;
  }
  void TearDown() override {
    if (bounds_hold) {
      EXPECT_EQ(grove.broken(), "");
    }
  }

  Grove grove;
  int wanted = 0;
  Ids asked;
  bool bounds_hold = true;
};

TEST_F(SearchRemoval, ReturnsTheNextSiblingOfAGroupThatItEmptied) {
  EXPECT_EQ(remove_from(&grove.root(), 2, Grove::k2), grove.deeper);
  EXPECT_EQ(grove.ids(), (Ids{1, 3, 4}));
  EXPECT_EQ(grove.inner->m_pFirst.group, grove.deeper);
  EXPECT_EQ(remove_from(&grove.root(), 1, Grove::k1), grove.inner);
  EXPECT_EQ(grove.log.alive, 2);
}

TEST_F(SearchRemoval, ReturnsTheLowestAncestorWithChildrenWhereNoSiblingFollows) {
  EXPECT_EQ(remove_from(&grove.root(), 3, Grove::k3), grove.inner);
  EXPECT_EQ(grove.inner->m_pLastChild.group, grove.shallow);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 4}));
  EXPECT_EQ(remove_from(&grove.root(), 2, Grove::k2), &grove.root());
  EXPECT_EQ(grove.right->m_pNext, grove.open);
  EXPECT_EQ(grove.log.alive, 2);
}

TEST_F(SearchRemoval, ReturnsTheRootWhenEverythingIsGone) {
  EXPECT_EQ(remove_from(&grove.root(), 4, Grove::k4), &grove.root());
  EXPECT_EQ(grove.list.m_pOpenGroup, nullptr);
  EXPECT_EQ(grove.list.m_cOpenDrawables, 0);
  EXPECT_EQ(remove_from(&grove.root(), 3, Grove::k3), grove.inner);
  EXPECT_EQ(remove_from(&grove.root(), 2, Grove::k2), &grove.root());
  EXPECT_EQ(remove_from(&grove.root(), 1, Grove::k1), &grove.root());
  EXPECT_EQ(grove.root().m_pFirst.group, nullptr);
  EXPECT_EQ(remove_from(&grove.root(), 1, Grove::k1), nullptr);
  EXPECT_EQ(grove.add(Grove::k3), grove.list.m_pOpenGroup);
  EXPECT_EQ(grove.ids(), Ids{5});
}

TEST_F(SearchRemoval, ReturnsTheGroupThatStillHoldsDrawables) {
  ProbeDrawable* second = grove.make(Grove::k2);
  grove.list.add_before(grove.shallow, grove.shallow->m_pFirst.drawable, second, Grove::k2);
  EXPECT_EQ(remove_from(&grove.root(), 2, Grove::k2), grove.shallow);
  EXPECT_EQ(grove.shallow->m_pLastChild.drawable, second);
  EXPECT_EQ(second->m_pNext, nullptr);
  EXPECT_EQ(grove.ids(), (Ids{1, 5, 3, 4}));
}

TEST_F(SearchRemoval, FromTheRootAsALeafReturnsTheRoot) {
  ProbeScene scene;
  scene.log = grove.log;
  scene.log.alive = 0;
  for (int i = 0; i < 3; ++i) scene.add({i, 0, i, 0});
  Search search = search_for(3, {2, 0, 2, 0});
  EXPECT_EQ(scene.root().remove_fast(search), &scene.root());
  EXPECT_EQ(scene.ids_in(scene.root()), (Ids{1, 2}));
  EXPECT_EQ(scene.list.m_cOpenDrawables, 2);
  search = search_for(1, {0, 0, 0, 0});
  EXPECT_EQ(scene.root().remove_inside(search), &scene.root());
  search = search_for(2, {1, 0, 1, 0});
  EXPECT_EQ(scene.root().remove_inside(search), &scene.root());
  EXPECT_EQ(scene.root().m_pLastChild.drawable, nullptr);
  EXPECT_EQ(scene.list.m_cOpenDrawables, 0);
  EXPECT_EQ(scene.list.m_pOpenGroup, &scene.root());
  EXPECT_EQ(scene.root().remove_inside(search), nullptr);
  EXPECT_EQ(scene.log.alive, 0);
}

TEST_F(SearchRemoval, WithoutAMatchIsNull) {
  EXPECT_EQ(remove_from(&grove.root(), 99, Grove::k3), nullptr);
  EXPECT_EQ(asked, Ids{3});
  EXPECT_EQ(remove_from(grove.deep, 99, Grove::k3), nullptr);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 3, 4}));
}

TEST_F(SearchRemoval, AsksOnlyInGroupsThatContainTheBounds) {
  // Both the first leaf and the open cell contain these.
  EXPECT_EQ(remove_from(&grove.root(), 99, {12, 12, 13, 13}), nullptr);
  EXPECT_EQ(asked, (Ids{1, 4}));
  EXPECT_EQ(remove_from(&grove.root(), 99, {-20, 10, -10, 12}), nullptr);
  EXPECT_EQ(asked, Ids{});
  EXPECT_EQ(remove_from(&grove.root(), 1, {9, 10, 20, 20}), nullptr);
  EXPECT_EQ(asked, Ids{4});
  EXPECT_EQ(remove_from(&grove.root(), 2, {-20, 10, -15, 16}), nullptr);
  EXPECT_EQ(asked, Ids{});
}

TEST_F(SearchRemoval, LooksAtEachLevelOnTheWayDown) {
  fake_bounds(grove.deep, {-12, 10, -11, 12});
  EXPECT_EQ(remove_from(&grove.root(), 3, Grove::k3), nullptr);
  grove.deep->m_bounds = Grove::k3;
  fake_bounds(grove.inner, {-11, 10, -10, 12});
  EXPECT_EQ(remove_from(&grove.root(), 3, Grove::k3), nullptr);
  EXPECT_EQ(asked, Ids{});
}

TEST_F(SearchRemoval, DoesNotTestTheGroupItStartsAt) {
  fake_bounds(grove.deep, Grove::k1);
  Search search = search_for(3, Grove::k3);
  EXPECT_EQ(grove.deep->remove_inside(search), nullptr);
  EXPECT_EQ(asked, Ids{});
  EXPECT_EQ(grove.deep->remove_fast(search), grove.inner);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 4}));
}

TEST_F(SearchRemoval, InsideIsTestedByRemoveInside) {
  Search search = search_for(2, Grove::k2);
  EXPECT_EQ(grove.right->remove_inside(search), nullptr);
  EXPECT_EQ(asked, Ids{});
  EXPECT_EQ(grove.inner->remove_inside(search), grove.deeper);
  search = search_for(3, Grove::k3);
  fake_bounds(grove.inner, {-11, 10, -10, 12});
  EXPECT_EQ(grove.inner->remove_inside(search), nullptr);
  EXPECT_EQ(grove.inner->remove_fast(search), &grove.root());
  EXPECT_EQ(grove.ids(), (Ids{1, 4}));
}

TEST_F(SearchRemoval, TakesTheFirstMatchOnly) {
  grove.log.on_search = [](ProbeDrawable&, Search&) { return true; };
  EXPECT_EQ(remove_from(&grove.root(), 0, {12, 12, 13, 13}), grove.inner);
  EXPECT_EQ(grove.ids(), (Ids{2, 3, 4}));
  EXPECT_EQ(remove_from(&grove.root(), 0, {12, 12, 13, 13}), &grove.root());
  EXPECT_EQ(grove.ids(), (Ids{2, 3}));
}

TEST_F(SearchRemoval, InHiddenGroupsIsThatInVisibleOnes) {
  for (Group* group : groups_of(grove.list)) group->make_hidden();
  EXPECT_EQ(remove_from(&grove.root(), 4, Grove::k4), &grove.root());
  EXPECT_EQ(grove.list.m_pOpenGroup, nullptr);
  EXPECT_EQ(remove_from(&grove.root(), 2, Grove::k2), grove.deeper);
  EXPECT_EQ(remove_from(&grove.root(), 3, Grove::k3), &grove.root());
  EXPECT_TRUE(grove.right->is_hidden());
  EXPECT_EQ(grove.ids(), Ids{1});
}

// Drawables that deal with the match themselves.

struct HandledSearch : SearchRemoval {
  HandledSearch() {
    grove.log.on_search = [this](ProbeDrawable& probe, Search& search) {
      if (probe.id() != wanted) return false;
      search.handled = true;
      for (int i = 0; i < added; ++i) {
        ProbeDrawable* next = grove.make(probe.bounds());
        next->m_pNext = std::exchange(probe.m_pNext, next);
      }
      return true;
    };
  }
  int added = 0;
};

TEST_F(HandledSearch, StaysInItsChain) {
  EXPECT_EQ(remove_from(&grove.root(), 3, Grove::k3), grove.deep);
  EXPECT_EQ(remove_from(&grove.root(), 4, Grove::k4), grove.open);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 3, 4}));
  EXPECT_EQ(grove.log.alive, 4);
  EXPECT_EQ(grove.list.m_cOpenDrawables, 1);
}

TEST_F(HandledSearch, WhatIsLinkedAfterItIsReachable) {
  added = 2;
  EXPECT_EQ(remove_from(&grove.root(), 3, Grove::k3), grove.deep);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 3, 6, 5, 4}));
  EXPECT_EQ(static_cast<ProbeDrawable*>(grove.deep->m_pLastChild.drawable)->id(), 5);
  EXPECT_EQ(grove.list.m_cOpenDrawables, 1);
}

TEST_F(HandledSearch, WhatIsLinkedInTheOpenGroupIsCounted) {
  added = 2;
  EXPECT_EQ(remove_from(&grove.root(), 4, Grove::k4), grove.open);
  EXPECT_EQ(grove.list.m_cOpenDrawables, 3);
  EXPECT_EQ(static_cast<ProbeDrawable*>(grove.open->m_pLastChild.drawable)->id(), 5);
  grove.list.m_cMaxOpenDrawables = 4;
  EXPECT_EQ(grove.add(Grove::k1), grove.open);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 3, 4, 6, 5, 7}));
}

TEST_F(HandledSearch, StaysWhenItIsToBeDetached) {
  added = 1;
  Search search = search_for(4, Grove::k4);
  EXPECT_EQ(grove.root().detach_fast(search), grove.open);
  EXPECT_EQ(search.m_pDetached, nullptr);
  EXPECT_TRUE(search.handled);
  EXPECT_EQ(grove.list.m_cOpenDrawables, 2);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 3, 4, 5}));
}

// The library's own drawables, which match by class and geometry.

bool removes(DL::DisplayList& list, Drawable& prototype) {
  Search search;
  search.prototype = &prototype;
  search.type = prototype.type();
  prototype.add_bounds(search.m_bounds);
  return list.m_pRootGroup->remove_fast(search) != nullptr;
}

TEST(SearchForDrawables, FindsHiddenAndPalettizedOnes) {
  LM_Rendition rendition;
  DL::DisplayList list;
  list.m_cMaxOpenDrawables = 1;
  Drawable* plain = new DL::DLDot({}, {1, 1});
  Drawable* hidden = new DL::DLDot({}, {2, 2});
  Drawable* palettized = new DL::PalettizedDrawable<DL::DLDot>(&rendition, Point{3, 3});
  Drawable* both = new DL::PalettizedDrawable<DL::DLDot>(&rendition, Point{4, 4});
  for (Drawable* each : {plain, hidden, palettized, both}) list.add(each);
  hidden->hide();
  both->hide();
  DL::DLDot prototype({}, {2, 2});
  EXPECT_TRUE(removes(list, prototype));
  EXPECT_EQ(drawables_of(list), (std::vector<Drawable*>{plain, palettized, both}));
  prototype.m_point = {3, 3};
  EXPECT_TRUE(removes(list, prototype));
  prototype.m_point = {4, 4};
  EXPECT_TRUE(removes(list, prototype));
  EXPECT_FALSE(removes(list, prototype));
  EXPECT_EQ(drawables_of(list), std::vector<Drawable*>{plain});
}

TEST(SearchForDrawables, OfAnotherClassAtTheSamePlaceFindsNothing) {
  const Point points[] = {{1, 1}, {5, 6}};
  DL::DisplayList list;
  list.add(new DL::DLPolyline({}, 2, points));
  DL::DLPolygon polygon({}, 2, points);
  EXPECT_FALSE(removes(list, polygon));
  DL::DLPolyline polyline({}, 2, points);
  EXPECT_TRUE(removes(list, polyline));
  EXPECT_TRUE(drawables_of(list).empty());
}

}  // namespace
