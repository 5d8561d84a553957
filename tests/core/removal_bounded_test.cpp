// Removal of what lies inside a rectangle.

#include <gtest/gtest.h>

#include "displaylist/core/group.h"
#include "tests/support/grove.h"
#include "tests/support/point_printing.h"

namespace {

using DL::Group;
using Bounds = DL::BoundsTemplate<long>;
using Ids = std::vector<int>;

constexpr Bounds kNowhere{-1000, -1000, -900, -900};
constexpr Bounds kLeftHalf{INT32_MIN, INT32_MIN, -1, INT32_MAX};

/// Four probes in the root: of width 0 to 3.
struct WideProbes : ProbeScene {
  WideProbes() {
    for (int i = 0; i < 4; ++i) add({10, 10, 10 + i, 10});
  }
};

TEST(RemoveBounded, RemovesWhatLiesInside) {
  Grove grove;
  grove.root().remove_bounded({-20, 10, 20, 20});
  EXPECT_EQ(grove.ids(), Ids{4});
  EXPECT_EQ(grove.root().m_pFirst.group, grove.open);
  EXPECT_EQ(grove.root().m_pLastChild.group, grove.open);
  EXPECT_EQ(grove.log.alive, 1);
  EXPECT_EQ(grove.broken(), "");
}

TEST(RemoveBounded, KeepsWhatOnlyOverlaps) {
  Grove grove;
  grove.root().remove_bounded({-19, 10, 19, 20});
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 4}));
  grove.root().remove_bounded({-20, 10, 20, 14});
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 4}));
  grove.root().remove_bounded(kNowhere);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 4}));
  EXPECT_EQ(grove.broken(), "");
}

TEST(RemoveBounded, InALeafLooksAtEachDrawable) {
  WideProbes scene;
  scene.root().remove_bounded({9, 9, 11, 11});
  EXPECT_EQ(scene.ids_in(scene.root()), (Ids{3, 4}));
  EXPECT_EQ(scene.list.m_cOpenDrawables, 2);
  EXPECT_EQ(scene.log.alive, 2);
  EXPECT_EQ(scene.list.m_openBounds, (Bounds{10, 10, 13, 10}));
  EXPECT_EQ(broken_invariants(scene.list, TreeHistory::removals), "");
}

TEST(RemoveBounded, InALeafKeepsItsLinksRightWhereverDrawablesGo) {
  const Bounds narrow{0, 0, 1, 1};
  const Bounds wide{0, 0, 9, 1};
  for (int mask = 0; mask < 16; ++mask) {
    ProbeScene scene;
    Ids left;
    for (int i = 0; i < 4; ++i) {
      const bool stays = (mask & 1 << i) != 0;
      if (stays) left.push_back(i + 1);
      scene.add(stays ? wide : narrow);
    }
    scene.root().remove_bounded_worker(narrow);
    EXPECT_EQ(scene.ids_in(scene.root()), left);
    EXPECT_EQ(scene.list.m_cOpenDrawables, static_cast<std::int32_t>(left.size()));
    EXPECT_EQ(broken_invariants(scene.list, TreeHistory::removals), "");
    EXPECT_EQ(scene.add(wide), &scene.root());
    left.push_back(5);
    EXPECT_EQ(scene.ids_in(scene.root()), left);
  }
}

TEST(RemoveBounded, OfTheRootAsALeafLeavesIt) {
  ProbeScene scene;
  scene.add(Grove::k1);
  Group* root = &scene.root();
  root->remove_bounded(Bounds::plane());
  EXPECT_EQ(&scene.root(), root);
  EXPECT_EQ(scene.list.m_pOpenGroup, root);
  EXPECT_EQ(scene.list.m_cOpenDrawables, 0);
  EXPECT_EQ(scene.add(Grove::k2), root);
}

TEST(RemoveBounded, OfTheRootLeavesItWithoutChildren) {
  Grove grove;
  grove.root().remove_bounded(Bounds::plane());
  EXPECT_EQ(grove.root().m_pFirst.group, nullptr);
  EXPECT_EQ(grove.root().m_pLastChild.group, nullptr);
  EXPECT_EQ(grove.list.m_pOpenGroup, nullptr);
  EXPECT_EQ(grove.log.alive, 0);
  EXPECT_NE(grove.add(Grove::k2), nullptr);
  EXPECT_EQ(grove.ids(), Ids{5});
  EXPECT_EQ(broken_invariants(grove.list), "");
}

TEST(RemoveBounded, DestroysAGroupThatLiesInsideAsAWhole) {
  Grove grove;
  // The bounds of the group decide, whatever its drawables have become.
  static_cast<ProbeDrawable*>(grove.deep->m_pFirst.drawable)->move_to(Grove::k1);
  grove.root().remove_bounded({-20, 10, -10, 15});
  EXPECT_EQ(grove.ids(), (Ids{1, 4}));
  EXPECT_EQ(grove.right->m_pNext, grove.open);
}

TEST(RemoveBounded, DoesNotLookIntoGroupsThatDoNotMeet) {
  Grove grove;
  static_cast<ProbeDrawable*>(grove.deep->m_pFirst.drawable)->move_to(kNowhere);
  grove.root().remove_bounded(kNowhere);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 3, 4}));
  grove.deep->remove_bounded(kNowhere);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 4}));
}

TEST(RemoveBounded, DestroysGroupsThatItEmpties) {
  Grove grove;
  grove.inner->m_bounds = {-50, 10, -10, 50};
  grove.deeper->m_bounds = {-50, 10, -10, 50};
  grove.deep->m_bounds = {-50, 10, -10, 50};
  grove.root().remove_bounded(Grove::k3);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 4}));
  EXPECT_EQ(grove.inner->m_pLastChild.group, grove.shallow);
  EXPECT_EQ(grove.shallow->m_pNext, nullptr);
  EXPECT_EQ(grove.broken(), "");
}

TEST(RemoveBounded, OfABelowGroupPrunesUpToTheFirstThatHoldsMore) {
  Grove grove;
  grove.deep->remove_bounded(Grove::k3);
  EXPECT_EQ(grove.inner->m_pLastChild.group, grove.shallow);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 4}));
  grove.inner->remove_bounded(kLeftHalf);
  EXPECT_EQ(grove.right->m_pNext, grove.open);
  EXPECT_EQ(grove.ids(), (Ids{1, 4}));
  grove.right->remove_bounded(Bounds::plane());
  EXPECT_EQ(grove.root().m_pFirst.group, grove.open);
  EXPECT_EQ(grove.broken(), "");
}

TEST(RemoveBounded, OfTheOpenGroupLeavesTheListWithoutOneUntilTheNextAdd) {
  Grove grove;
  grove.list.m_pInsertHint = grove.open;
  grove.open->remove_bounded(Grove::k4);
  EXPECT_EQ(grove.list.m_pOpenGroup, nullptr);
  EXPECT_EQ(grove.list.m_pInsertHint, nullptr);
  EXPECT_EQ(grove.list.m_cOpenDrawables, 0);
  EXPECT_EQ(grove.root().m_pLastChild.group, grove.inner);
  EXPECT_NE(grove.add(Grove::k3), nullptr);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 3, 5}));
  EXPECT_EQ(grove.broken(), "");
}

TEST(RemoveBounded, DestroysAnEmptyGroupThatMeets) {
  Grove grove;
  grove.deep->remove_all();
  grove.root().remove_bounded({-12, 10, -12, 10});
  EXPECT_EQ(grove.inner->m_pLastChild.group, grove.shallow);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 4}));
  EXPECT_EQ(grove.broken(), "");
}

TEST(RemoveBoundedWorker, LeavesTheGroupThatItEmpties) {
  Grove grove;
  grove.open->remove_bounded_worker(Grove::k4);
  EXPECT_EQ(grove.list.m_pOpenGroup, grove.open);
  EXPECT_EQ(grove.list.m_cOpenDrawables, 0);
  EXPECT_EQ(grove.open->m_pLastChild.drawable, nullptr);
  grove.inner->remove_bounded_worker(kLeftHalf);
  EXPECT_EQ(grove.inner->m_pFirst.group, nullptr);
  EXPECT_EQ(grove.inner->m_pLastChild.group, nullptr);
  grove.right->remove_bounded_worker(Grove::k1);
  EXPECT_EQ(grove.ids(), Ids{});
  EXPECT_EQ(grove.root().m_pFirst.group, grove.right);
  EXPECT_EQ(grove.root().m_pLastChild.group, grove.open);
  EXPECT_EQ(grove.log.alive, 0);
}

TEST(RemoveBoundedWorker, KeepsWhatOnlyOverlaps) {
  WideProbes scene;
  scene.root().remove_bounded_worker({11, 10, 20, 10});
  EXPECT_EQ(scene.ids_in(scene.root()), (Ids{1, 2, 3, 4}));
  scene.root().remove_bounded_worker({10, 10, 12, 10});
  EXPECT_EQ(scene.ids_in(scene.root()), Ids{4});
  scene.root().remove_bounded_worker({10, 10, 12, 10});
  EXPECT_EQ(scene.ids_in(scene.root()), Ids{4});
}

TEST(RemoveBounded, InHiddenGroupsIsThatInVisibleOnes) {
  Grove grove;
  for (Group* group : groups_of(grove.list)) group->make_hidden();
  grove.root().remove_bounded(Grove::k3);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 4}));
  grove.open->remove_bounded_worker(Grove::k4);
  EXPECT_EQ(grove.list.m_cOpenDrawables, 0);
  grove.root().remove_bounded(kLeftHalf);
  EXPECT_EQ(grove.ids(), Ids{1});
  EXPECT_EQ(grove.broken(), "");
}

TEST(RemoveBounded, WithARectangleOfNothingRemovesNothing) {
  Grove grove;
  grove.root().remove_bounded(Bounds());
  grove.open->remove_bounded(Bounds());
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 3, 4}));
}

}  // namespace
