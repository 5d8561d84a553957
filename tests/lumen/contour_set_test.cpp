#include "displaylist/platform/contour_set.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Points = std::vector<LM_Point>;

void add(LM_Contour_Set_Data& set, const Points& points) {
  set.add_contour(points.data(), static_cast<std::int32_t>(points.size()));
}

Points square(float low, float high) {
  return {{low, low, 0}, {high, low, 0}, {high, high, 0}, {low, high, 0}};
}

TEST(ContourSet, CopiesThePoints) {
  const auto set = LM_Create<LM_Contour_Set_Data>();
  Points points = square(0, 10);
  add(*set, points);
  points[0].x = 99;
  ASSERT_EQ(set->contour_count(), 1);
  EXPECT_EQ(set->contour(0).count, 4);
  EXPECT_EQ(set->contour(0).points[0], (LM_Point{0, 0, 0}));
}

TEST(ContourSet, TellsAnEmptyArrayFromNone) {
  const auto set = LM_Create<LM_Contour_Set_Data>();
  const LM_Point point{};
  set->add_contour(&point, 0);
  set->add_contour(nullptr, 0);
  set->add_contour(nullptr, 3);
  EXPECT_NE(set->contour(0).points, nullptr);
  EXPECT_EQ(set->contour(0).count, 0);
  EXPECT_EQ(set->contour(1).points, nullptr);
  EXPECT_EQ(set->contour(2).points, nullptr);
  EXPECT_EQ(set->contour(2).count, 3);
  EXPECT_FALSE(set->point_inside(0, 0));
}

TEST(ContourSet, AHoleIsOutsideByTheEvenOddRule) {
  const auto set = LM_Create<LM_Contour_Set_Data>(LM_Fill_Rule::even_odd);
  add(*set, square(0, 10));
  add(*set, square(3, 7));
  EXPECT_TRUE(set->point_inside(1, 5));
  EXPECT_FALSE(set->point_inside(5, 5));
  EXPECT_FALSE(set->point_inside(11, 5));
  EXPECT_FALSE(set->point_inside(-1, 5));
  EXPECT_FALSE(set->point_inside(5, 10.5));
}

TEST(ContourSet, TheNonZeroRuleLooksAtDirections) {
  const auto same_way = LM_Create<LM_Contour_Set_Data>(LM_Fill_Rule::non_zero);
  add(*same_way, square(0, 10));
  add(*same_way, square(3, 7));
  EXPECT_TRUE(same_way->point_inside(5, 5));

  const auto other_way = LM_Create<LM_Contour_Set_Data>(LM_Fill_Rule::non_zero);
  add(*other_way, square(0, 10));
  const Points inner = square(3, 7);
  add(*other_way, {inner.rbegin(), inner.rend()});
  EXPECT_FALSE(other_way->point_inside(5, 5));
  EXPECT_TRUE(other_way->point_inside(1, 5));
}

TEST(ContourSet, ASlantedEdgeDividesExactly) {
  const auto set = LM_Create<LM_Contour_Set_Data>();
  add(*set, {{0, 0, 0}, {8, 0, 0}, {0, 4, 0}});
  EXPECT_TRUE(set->point_inside(3.9, 2));
  EXPECT_FALSE(set->point_inside(4.1, 2));
}

TEST(ContourSet, IsDestroyedWithItsLastHandle) {
  struct Watched : LM_Contour_Set_Data {
    explicit Watched(int& left) : m_left(left) { ++m_left; }
    ~Watched() override { --m_left; }
    int& m_left;
  };
  int left = 0;
  LM_Contour_Set handle = LM_Create<Watched>(left);
  LM_Contour_Set copy = handle;
  handle = nullptr;
  EXPECT_EQ(left, 1);
  copy = nullptr;
  EXPECT_EQ(left, 0);
}

}  // namespace
