#include <gtest/gtest.h>

#include "displaylist/core/iterators.h"
#include "tests/support/grove.h"
#include "tests/support/iterator_walk.h"

namespace {

using DL::DisplayListBoundedIterator;
using DL::Group;
using Bounds = DL::BoundsTemplate<long>;
using Ids = std::vector<int>;

constexpr Bounds kNowhere{-1000, -1000, -900, -900};

Ids met(Grove& grove, const Bounds& bounds) {
  return ids_walked(DisplayListBoundedIterator(&grove.list, bounds));
}

TEST(BoundedIterator, GoesToTheGroupsThatMeetTheRectangle) {
  Grove grove;
  EXPECT_EQ(met(grove, Bounds::plane()), (Ids{1, 2, 3, 4}));
  EXPECT_EQ(met(grove, {15, 15, 16, 16}), (Ids{1, 4}));
  EXPECT_EQ(met(grove, {-20, 11, -19, 12}), Ids{2});
  EXPECT_EQ(met(grove, {-11, 11, -11, 11}), Ids{3});
  EXPECT_EQ(met(grove, {-14, 11, -12, 11}), Ids{3});
  EXPECT_EQ(met(grove, {-15, 11, -12, 11}), (Ids{2, 3}));
  EXPECT_EQ(met(grove, {1000, 1000, 1000, 1000}), Ids{4});
}

TEST(BoundedIterator, MeetsAtTheBorder) {
  Grove grove;
  EXPECT_EQ(met(grove, {20, 20, 25, 25}), (Ids{1, 4}));
  EXPECT_EQ(met(grove, {21, 20, 25, 25}), Ids{4});
  EXPECT_EQ(met(grove, {-30, 15, -20, 30}), Ids{2});
  EXPECT_EQ(met(grove, {-30, 16, -20, 30}), Ids{});
  EXPECT_EQ(met(grove, {-30, 15, -21, 30}), Ids{});
  EXPECT_EQ(met(grove, {-10, 0, -10, 10}), Ids{3});
  EXPECT_EQ(met(grove, {-10, 0, -10, 9}), Ids{});
}

TEST(BoundedIterator, DoesNotGoBelowAGroupThatDoesNotMeet) {
  Grove grove;
  // Not what the group holds: whether the walk looks at each level is seen.
  grove.inner->m_bounds = kNowhere;
  EXPECT_EQ(met(grove, Bounds{-20, 10, 40, 40}), (Ids{1, 4}));
  EXPECT_EQ(met(grove, kNowhere), Ids{});
}

TEST(BoundedIterator, GoesOnBesideAGroupWhoseChildrenDoNotMeet) {
  Grove grove;
  grove.deep->m_bounds = kNowhere;
  EXPECT_EQ(met(grove, Grove::k3), (Ids{}));
  EXPECT_EQ(met(grove, {-20, 10, 40, 40}), (Ids{1, 2, 4}));
  grove.shallow->m_bounds = kNowhere;
  grove.right->m_bounds = kNowhere;
  EXPECT_EQ(met(grove, {-20, 10, 40, 40}), Ids{4});
}

TEST(BoundedIterator, TestsNoDrawable) {
  ProbeScene scene(2, 5);
  scene.add({10, 10, 11, 11});
  scene.add({50, 50, 51, 51});
  scene.add({-10, 10, -9, 11});
  EXPECT_EQ(ids_walked(DisplayListBoundedIterator(&scene.list, {30, 30, 31, 31})), (Ids{1, 2}));
}

TEST(BoundedIterator, ThatMeetsNothingYieldsNothingAfterTheFirstGroup) {
  ProbeScene scene;
  scene.add({10, 10, 11, 11});
  scene.add({20, 20, 21, 21});
  scene.root().m_bounds = {10, 10, 21, 21};
  DisplayListBoundedIterator at(&scene.list, kNowhere);
  EXPECT_EQ(at.m_pGroup, &scene.root());
  EXPECT_EQ(ids_walked(at), (Ids{1, 2}));

  Grove grove;
  DisplayListBoundedIterator none(&grove.list, kNowhere);
  EXPECT_EQ(none.m_pGroup, nullptr);
  EXPECT_FALSE(none.is_at_drawable());
  EXPECT_EQ(none.next(), nullptr);
}

TEST(BoundedIterator, PassesOverEmptyGroups) {
  Grove grove;
  grove.shallow->remove_all();
  EXPECT_EQ(met(grove, Bounds::plane()), (Ids{1, 3, 4}));
  EXPECT_EQ(met(grove, Grove::k2), Ids{});
  grove.deeper->remove_all();
  EXPECT_EQ(met(grove, Bounds::plane()), (Ids{1, 4}));
  grove.open->remove_all();
  EXPECT_EQ(met(grove, Bounds::plane()), Ids{1});
  grove.right->remove_all();
  EXPECT_EQ(met(grove, Bounds::plane()), Ids{});
}

TEST(BoundedIterator, StandsAtTheSentinelWhereTheFirstGroupIsEmpty) {
  Grove grove;
  grove.right->remove_all();
  DisplayListBoundedIterator at(&grove.list, Bounds::plane());
  EXPECT_EQ(at.m_pGroup, grove.right);
  EXPECT_EQ(at.m_pCurrent, &at.m_sentinel);
  EXPECT_EQ(at.next(), grove.shallow->m_pFirst.drawable);
}

TEST(BoundedIterator, StartsAnewWithOtherBounds) {
  Grove grove;
  DisplayListBoundedIterator at(&grove.list, Grove::k1);
  EXPECT_EQ(at.m_bounds, Grove::k1);
  EXPECT_EQ(at.init(&grove.list, Grove::k3), grove.deep);
  EXPECT_EQ(at.m_bounds, Grove::k3);
  EXPECT_EQ(ids_walked(at), Ids{3});
  EXPECT_EQ(at.init(&grove.list, kNowhere), nullptr);
  EXPECT_EQ(at.init(nullptr, kNowhere), nullptr);
  EXPECT_EQ(at.next(), nullptr);
}

TEST(BoundedIterator, NextGroupNamesTheNextThatMeets) {
  Grove grove;
  DisplayListBoundedIterator at(&grove.list, {-12, 10, 10, 10});
  EXPECT_EQ(at.m_pGroup, grove.right);
  EXPECT_EQ(at.next_group(), grove.deep);
  EXPECT_EQ(at.m_pGroup, grove.right);
  at.next();
  EXPECT_EQ(at.next_group(), grove.open);
  at.next();
  EXPECT_EQ(at.next_group(), nullptr);
}

TEST(BoundedIterator, NextUntilDoesNotFindWhatIsInOtherGroups) {
  Grove grove;
  const auto all = drawables_of(grove.list);
  const Bounds bounds{-12, 10, 10, 10};
  DisplayListBoundedIterator at(&grove.list, bounds);
  EXPECT_EQ(at.next_until(all[2]), all[2]);
  EXPECT_EQ(at.m_pGroup, grove.deep);
  at.init(&grove.list, bounds);
  EXPECT_EQ(at.next_until(all[1]), nullptr);
  EXPECT_EQ(at.m_pCurrent, nullptr);
}

TEST(BoundedIterator, HasNoWayBack) {
  Grove grove;
  DisplayListBoundedIterator at(&grove.list, Bounds::plane());
  EXPECT_EQ(at.prev(), nullptr);
  EXPECT_EQ(at.reserved_step(), nullptr);
}

}  // namespace
