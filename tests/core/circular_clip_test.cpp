#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "displaylist/core/display_list.h"
#include "tests/support/contours.h"

namespace {

using DL::DisplayList;

struct CircularClip : testing::Test {
  CircularClip() {
    list.m_circleRadiusSquared = -1.0F;
    list.m_circleReserved = 77;
  }
  bool is_circular(const LM_Contour_Set& clip) {
    list.m_rendition.set_complex_clip(clip, true);
    return list.circular_complex_clip();
  }
  bool is_circular(const ContourPoints& points) { return is_circular(contour_set({points})); }

  DisplayList list;
};

TEST_F(CircularClip, RegularSixtyFourGonIs) {
  EXPECT_TRUE(is_circular(regular_polygon(64, 100, 100, 0, 0)));
  const double radius = 100.0 * std::cos(std::numbers::pi / 64);
  EXPECT_NEAR(list.m_circleRadiusSquared, radius * radius, 0.01);
  EXPECT_LT(list.m_circleRadiusSquared, 10000.0F);
  EXPECT_EQ(list.m_circleReserved, 0U);
}

TEST_F(CircularClip, TheCentreIsThatOfTheContoursBox) {
  EXPECT_TRUE(is_circular(regular_polygon(64, 100, 100, 320, -240)));
  EXPECT_NEAR(list.m_circleCenter.x, 320.0F, 1e-3);
  EXPECT_NEAR(list.m_circleCenter.y, -240.0F, 1e-3);
}

TEST_F(CircularClip, SquareIsNot) {
  EXPECT_FALSE(is_circular(rectangle(-100, -100, 100, 100)));
  EXPECT_EQ(list.m_circleRadiusSquared, -1.0F);
}

TEST_F(CircularClip, TwoContoursAreNot) {
  const ContourPoints circle = regular_polygon(64, 100, 100, 0, 0);
  EXPECT_FALSE(is_circular(contour_set({circle, circle})));
  EXPECT_EQ(list.m_circleRadiusSquared, -1.0F);
  EXPECT_EQ(list.m_circleReserved, 77U);
}

TEST_F(CircularClip, NoClipNoContourAndNoPointArrayAreNot) {
  EXPECT_FALSE(is_circular(LM_Contour_Set()));
  EXPECT_FALSE(is_circular(contour_set({})));
  const auto without_points = LM_Create<LM_Contour_Set_Data>();
  without_points->add_contour(nullptr, 12);
  EXPECT_FALSE(is_circular(without_points));
  EXPECT_EQ(list.m_circleReserved, 77U);
}

TEST_F(CircularClip, VerticesMayDifferByTwoUnits) {
  EXPECT_TRUE(is_circular(regular_polygon(64, 100.0, 98.1, 0, 0)));
  EXPECT_FALSE(is_circular(regular_polygon(64, 100.0, 97.9, 0, 0)));
}

TEST_F(CircularClip, EdgesMayLieFiveUnitsInside) {
  // The middle of an edge lies R (1 - cos(pi / n)) inside the vertices.
  EXPECT_TRUE(is_circular(regular_polygon(12, 140, 140, 0, 0)));   // 4.8
  EXPECT_FALSE(is_circular(regular_polygon(12, 150, 150, 0, 0)));  // 5.1
  EXPECT_TRUE(is_circular(rectangle(-10, -10, 10, 10)));           // 4.1
}

TEST_F(CircularClip, TheEdgeFromTheLastPointToTheFirstCounts) {
  ContourPoints points = regular_polygon(64, 100, 100, 0, 0);
  // Without the first points the closing edge cuts off a piece.
  points.erase(points.begin() + 1, points.begin() + 8);
  EXPECT_FALSE(is_circular(points));
}

TEST_F(CircularClip, AnEllipseIsNot) {
  ContourPoints points = regular_polygon(64, 100, 100, 0, 0);
  for (LM_Point& p : points) p.x *= 1.05F;
  EXPECT_FALSE(is_circular(points));
}

TEST_F(CircularClip, RepeatedPointsDoNotMatter) {
  ContourPoints points = regular_polygon(64, 100, 100, 0, 0);
  points.push_back(points.front());
  EXPECT_TRUE(is_circular(points));
}

TEST_F(CircularClip, SinglePointIsACircleOfNoRadius) {
  EXPECT_TRUE(is_circular(ContourPoints{{5, 6, 0}}));
  EXPECT_EQ(list.m_circleRadiusSquared, 0.0F);
  EXPECT_EQ(list.m_circleCenter.x, 5.0F);
  EXPECT_EQ(list.m_circleCenter.y, 6.0F);
}

TEST_F(CircularClip, ContourOfNoPointsStoresACentreOfItsInitialValues) {
  const LM_Point unused{};
  const auto clip = LM_Create<LM_Contour_Set_Data>();
  clip->add_contour(&unused, 0);
  is_circular(clip);
  EXPECT_EQ(list.m_circleReserved, 0U);
  EXPECT_FALSE(std::isnan(list.m_circleCenter.x));
  EXPECT_FALSE(std::isnan(list.m_circleRadiusSquared));
}

TEST_F(CircularClip, CountsOnTheClipAreGivenBack) {
  const LM_Contour_Set clip = contour_set({regular_polygon(64, 100, 100, 0, 0)});
  ASSERT_TRUE(is_circular(clip));
  list.m_rendition.set_complex_clip(nullptr, true);
  EXPECT_FALSE(clip->is_shared());
}

}  // namespace
