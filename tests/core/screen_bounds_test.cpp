#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstdlib>

#include "displaylist/core/display_list.h"
#include "tests/support/bounds_generators.h"
#include "tests/support/point_printing.h"

namespace {

using DL::DisplayList;
using LogicalBounds = DL::BoundsTemplate<long>;
using ScreenBounds = DL::BoundsTemplate<int>;
using Pair = DL::PointTemplate<double>;

TEST(ScreenBounds, MapTheLogicalExtentsCornerToCorner) {
  DisplayList list;
  list.m_logicalBounds = {100, 1000, 300, 1400};
  list.set_screen_bounds({10, 20, 110, 120});
  EXPECT_EQ(list.m_screenBounds, (ScreenBounds{10, 20, 110, 120}));
  EXPECT_EQ(list.m_scale, (Pair{0.5, 0.25}));
  EXPECT_EQ(list.m_offset, (Pair{-40.0, -230.0}));
}

TEST(ScreenBounds, VerticalAspectMultipliesTheVerticalScaleAlone) {
  DisplayList list;
  list.m_yAspect = 2.0;
  list.m_logicalBounds = {0, 100, 100, 200};
  list.set_screen_bounds({0, 10, 100, 110});
  EXPECT_EQ(list.m_scale, (Pair{1.0, 2.0}));
  EXPECT_EQ(list.m_offset, (Pair{0.0, -190.0}));
  EXPECT_EQ(list.m_deviceScale, (Pair{1.0, 2.0}));
}

TEST(ScreenBounds, DeviceRectangleIsTheScreenTimesTheRatioTruncated) {
  DisplayList list;
  list.m_deviceRatio = {1.5, 0.3};
  list.m_logicalBounds = {0, 0, 45, 9};
  list.set_screen_bounds({-5, -5, 25, 25});
  EXPECT_EQ(list.m_deviceBounds, (ScreenBounds{-7, -1, 37, 7}));
  EXPECT_EQ(list.m_deviceScale, (Pair{44.0 / 45.0, 8.0 / 9.0}));
  EXPECT_EQ(list.m_deviceOffset, (Pair{-7.0, -1.0}));
  EXPECT_EQ(list.m_scale, (Pair{30.0 / 45.0, 30.0 / 9.0}));
}

TEST(ScreenBounds, DeviceRectangleBeyondTheRangeIsIndefinite) {
  DisplayList list;
  list.m_deviceRatio = {2.0, 1.0};
  list.set_screen_bounds({0, 0, 2000000000, 10});
  EXPECT_EQ(list.m_deviceBounds, (ScreenBounds{0, 0, INT32_MIN, 10}));
}

TEST(ScreenBounds, TheStoredRectangleAgainChangesNothing) {
  DisplayList list;
  list.m_logicalBounds = {0, 0, 100, 100};
  list.set_screen_bounds({0, 0, 100, 100});
  const LogicalBounds visible = list.m_visibleBounds;
  list.m_logicalBounds = {0, 0, 1000, 1000};
  list.m_deviceRatio = {3.0, 3.0};
  list.set_screen_bounds({0, 0, 100, 100});
  EXPECT_EQ(list.m_visibleBounds, visible);
  EXPECT_EQ(list.m_scale, (Pair{1.0, 1.0}));
  EXPECT_EQ(list.m_deviceBounds, (ScreenBounds{0, 0, 100, 100}));
  list.recompute_transform();
  EXPECT_EQ(list.m_scale, (Pair{0.1, 0.1}));
  EXPECT_EQ(list.m_visibleBounds, (LogicalBounds{-10, -10, 1010, 1010}));
}

TEST(ScreenBounds, EachOfTheFourValuesCountsAsAChange) {
  const ScreenBounds others[] = {
      {1, 0, 100, 100}, {0, 1, 100, 100}, {0, 0, 99, 100}, {0, 0, 100, 99}};
  for (const ScreenBounds& other : others) {
    DisplayList list;
    list.m_logicalBounds = {0, 0, 100, 100};
    list.set_screen_bounds({0, 0, 100, 100});
    list.m_logicalBounds = {0, 0, 10, 10};
    list.set_screen_bounds(other);
    EXPECT_GT(list.m_scale.x, 9.0) << other;
    EXPECT_EQ(list.m_deviceBounds, other);
  }
}

TEST(VisibleBounds, AreOneScreenUnitWiderOnEverySide) {
  DisplayList list;
  list.m_logicalBounds = {0, 0, 1000, 2000};
  list.set_screen_bounds({0, 0, 100, 100});
  EXPECT_EQ(list.m_visibleBounds, (LogicalBounds{-10, -20, 1010, 2020}));
}

TEST(VisibleBounds, AreNotWidenedBeyondTheScreenRange) {
  DisplayList list;
  list.m_logicalBounds = LogicalBounds::plane();
  list.set_screen_bounds({INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX});
  EXPECT_EQ(list.m_scale, (Pair{1.0, 1.0}));
  EXPECT_EQ(list.m_visibleBounds, LogicalBounds::plane());

  list.m_logicalBounds = {0, 0, 100, 100};
  list.m_screenBounds = {INT32_MIN, 0, 0, INT32_MAX};
  list.recompute_transform();
  EXPECT_EQ(list.m_visibleBounds.min.x, 0);
  EXPECT_EQ(list.m_visibleBounds.max.y, 100);
}

TEST(VisibleBounds, SaturateAtTheLogicalRange) {
  DisplayList list;
  list.m_logicalBounds = LogicalBounds::plane();
  list.set_screen_bounds({0, 0, 100, 100});
  EXPECT_EQ(list.m_visibleBounds, LogicalBounds::plane());
}

TEST(VisibleBounds, OfAnUpsideDownScreenStayInverted) {
  DisplayList list;
  list.m_logicalBounds = {0, 0, 100, 100};
  list.set_screen_bounds({0, 200, 100, 0});
  EXPECT_EQ(list.m_scale, (Pair{1.0, -2.0}));
  EXPECT_EQ(list.m_offset, (Pair{0.0, 200.0}));
  // Widened before mapping: 199 and 1 on the screen, halves go to even.
  EXPECT_EQ(list.m_visibleBounds, (LogicalBounds{-1, 0, 101, 100}));
  LM_DCI_Point top;
  list.transform_point(DL::PointTemplate<long>{0, 0}, top);
  EXPECT_EQ(top, (LM_DCI_Point{0, 200, 0}));
}

/// Whether the transform of a list has been left as it was constructed.
bool is_untouched(const DisplayList& list) {
  return list.m_scale == Pair{1.0, 1.0} && list.m_offset == Pair{0.0, 0.0} &&
         list.m_deviceScale == Pair{1.0, 1.0} && list.m_deviceOffset == Pair{0.0, 0.0} &&
         list.m_visibleBounds == LogicalBounds();
}

TEST(RecomputeTransform, AnUnsetLogicalExtentLeavesItUntouched) {
  DisplayList list;
  list.set_screen_bounds({0, 0, 100, 100});
  EXPECT_EQ(list.m_screenBounds, (ScreenBounds{0, 0, 100, 100}));
  EXPECT_EQ(list.m_deviceBounds, (ScreenBounds{0, 0, 100, 100}));
  EXPECT_TRUE(is_untouched(list));
}

TEST(RecomputeTransform, AnEmptyRectangleLeavesItUntouched) {
  const LogicalBounds logical[] = {{5, 0, 4, 10}, {0, 5, 10, 4}};
  for (const LogicalBounds& bounds : logical) {
    DisplayList list;
    list.m_logicalBounds = bounds;
    list.set_screen_bounds({0, 0, 100, 100});
    EXPECT_TRUE(is_untouched(list)) << bounds;
  }
  DisplayList list;
  list.m_logicalBounds = {0, 0, 10, 10};
  list.set_screen_bounds({100, 0, 99, 100});
  EXPECT_TRUE(is_untouched(list));
  EXPECT_EQ(list.m_screenBounds, (ScreenBounds{100, 0, 99, 100}));
}

TEST(RecomputeTransform, AZeroLogicalWidthStoresInfinities) {
  DisplayList list;
  list.m_logicalBounds = {5, 0, 5, 10};
  list.set_screen_bounds({0, 0, 100, 100});
  EXPECT_TRUE(std::isinf(list.m_scale.x));
  EXPECT_GT(list.m_scale.x, 0.0);
  EXPECT_TRUE(std::isinf(list.m_offset.x));
  EXPECT_EQ(list.m_scale.y, 10.0);
  EXPECT_TRUE(std::isinf(list.m_deviceScale.x));
}

TEST(RecomputeTransform, AZeroLogicalHeightStoresInfinities) {
  DisplayList list;
  list.m_logicalBounds = {0, -5, 10, -5};
  list.set_screen_bounds({0, 0, 100, 100});
  EXPECT_TRUE(std::isinf(list.m_scale.y));
  EXPECT_TRUE(std::isinf(list.m_offset.y));
  EXPECT_EQ(list.m_scale.x, 10.0);
}

TEST(RecomputeTransform, AScreenOfOnePointScalesToNothing) {
  DisplayList list;
  list.m_logicalBounds = {0, 0, 10, 10};
  list.set_screen_bounds({50, 60, 50, 60});
  EXPECT_EQ(list.m_scale, (Pair{0.0, 0.0}));
  EXPECT_EQ(list.m_offset, (Pair{50.0, 60.0}));
  EXPECT_EQ(list.m_visibleBounds, LogicalBounds::plane());
}

RC_GTEST_PROP(RecomputeTransform, FollowsTheFormulasAndMapsTheCorners, ()) {
  DisplayList list;
  const LogicalBounds logical = *any_bounds();
  const LogicalBounds screen = *clustered_bounds(10000);
  RC_PRE(logical.min.x < logical.max.x && logical.min.y < logical.max.y);
  list.m_logicalBounds = logical;
  list.set_screen_bounds({screen.min.x, screen.min.y, screen.max.x, screen.max.y});

  const double width = double{1.0} * logical.max.x - logical.min.x;
  const double height = double{1.0} * logical.max.y - logical.min.y;
  RC_ASSERT(list.m_scale.x == (screen.max.x - screen.min.x) / width);
  RC_ASSERT(list.m_scale.y == (screen.max.y - screen.min.y) / height);
  RC_ASSERT(list.m_offset.x == screen.min.x - list.m_scale.x * logical.min.x);
  RC_ASSERT(list.m_offset.y == screen.min.y - list.m_scale.y * logical.min.y);
  LM_DCI_Point corner;
  list.transform_point(logical.min, corner);
  RC_ASSERT(corner == (LM_DCI_Point{screen.min.x, screen.min.y, 0}));
  list.transform_point(logical.max, corner);
  RC_ASSERT(corner == (LM_DCI_Point{screen.max.x, screen.max.y, 0}));
  RC_ASSERT(logical.is_inside(list.m_visibleBounds));
}

}  // namespace
