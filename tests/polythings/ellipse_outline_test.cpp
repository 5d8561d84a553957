#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>

#include "displaylist/platform/elliptical_points.h"
#include "tests/polythings/ellipses.h"
#include "tests/support/point_printing.h"

// How finely outlines are divided, what they are made of, and how they are
// walked.

namespace {

using namespace ellipses;
using Points = std::vector<LM_DCI_Point>;
using Vector = DL::VectorTemplate<long>;

Points outline_of(const DL::DLEllipse& drawable) {
  LM_DCI_Point* points = nullptr;
  int n = -1;
  drawable.generateVectors(points, n);
  const std::unique_ptr<LM_DCI_Point[]> owner(points);
  return {points, points + n};
}

int segments(float device_radius, float sweep) {
  const float f = std::sqrt(device_radius) * 4.0F;
  return std::max(2, 1 - static_cast<int>(sweep * f / -6.2831855F));
}

TEST(EllipseOutline, OfDeviceRadius100Has41Vectors) {
  RecordedList recorded;
  const DL::DLEllipse drawable = ellipse({.major = 100, .minor = 100, .list = &recorded.list});
  EXPECT_EQ(drawable.get_vector_count(), 41);
  EXPECT_EQ(outline_of(drawable).size(), 42U);
}

TEST(EllipseOutline, HasTwoVectorsAtLeast) {
  RecordedList recorded;
  EXPECT_EQ(ellipse({.major = 1, .minor = 1, .list = &recorded.list}).get_vector_count(), 5);
  EXPECT_EQ(ellipse({.major = 0, .minor = 0, .list = &recorded.list}).get_vector_count(), 2);
  EXPECT_EQ(arc({.start = 0.0F, .end = 0.01F, .list = &recorded.list}).get_vector_count(), 2);
  EXPECT_EQ(arc({.start = 3.0F, .end = -9.0F, .list = &recorded.list}).get_vector_count(), 2);
}

TEST(EllipseOutline, OfHalfATurnHasHalfTheVectors) {
  RecordedList recorded;
  for (const int radius : {1, 10, 100, 12345}) {
    const DL::DLEllipticalArc half = arc({.major = radius,
                                          .minor = radius,
                                          .start = 1.0F,
                                          .end = 1.0F + kHalfTurn,
                                          .list = &recorded.list});
    const auto expected = 1 + static_cast<int>(std::floor(2 * std::sqrt(radius)));
    EXPECT_EQ(half.get_vector_count(), std::max(expected, 2)) << radius;
  }
}

TEST(EllipseOutline, IsDividedByTheLargerRadiusInDeviceUnits) {
  RecordedList recorded;
  recorded.list.m_deviceScale = {0.25, 4.0};
  recorded.list.m_scale = {77.0, 77.0};
  EXPECT_EQ(ellipse({.major = 400, .minor = 9, .list = &recorded.list}).get_vector_count(), 41);
  EXPECT_EQ(ellipse({.major = 9, .minor = 25, .list = &recorded.list}).get_vector_count(), 41);
}

TEST(EllipseOutline, WithoutAListIsDividedAsInAScaleOfOne) {
  EXPECT_EQ(ellipse({.major = 100, .minor = 7}).get_vector_count(), 41);
  EXPECT_EQ(outline_of(ellipse({.center = {5, 6}, .major = 100, .minor = 7})).front(),
            (LM_DCI_Point{105, 6, 0}));
}

TEST(EllipseOutline, OfAnyAnglesIsDividedByTheFormula) {
  std::mt19937 random(5);
  std::uniform_real_distribution<float> angle(-20.0F, 20.0F);
  std::uniform_int_distribution<std::int32_t> radius(0, 1000000);
  std::uniform_real_distribution<double> scale(0.001, 10.0);
  for (int i = 0; i < 2000; ++i) {
    DL::DisplayList list;
    list.m_deviceScale = {scale(random), scale(random)};
    const DL::DLEllipticalArc drawable = arc({.major = radius(random),
                                              .minor = radius(random),
                                              .start = angle(random),
                                              .end = angle(random),
                                              .list = &list});
    const double x = drawable.major * list.m_deviceScale.x;
    const double y = drawable.minor * list.m_deviceScale.y;
    ASSERT_EQ(drawable.get_vector_count(),
              segments(static_cast<float>(std::max(x, y)), drawable.end - drawable.start));
  }
}

TEST(EllipseOutline, OfNumbersThatAreNoneHasTwoVectorsAtLeast) {
  for (const float start : {0.0F, kNan, kInfinity, -kInfinity, 3e38F, -3e38F}) {
    for (const float end : {0.0F, kNan, kInfinity, -kInfinity, 3e38F, -3e38F}) {
      for (const std::int32_t radius : {kLowest, -1, 0, 1, kHighest}) {
        EXPECT_GE(
            arc({.major = radius, .minor = radius, .start = start, .end = end}).get_vector_count(),
            2);
      }
    }
  }
  for (const double scale : {0.0, -1.0, 1e300, std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()}) {
    DL::DisplayList list;
    list.m_deviceScale = {scale, scale};
    EXPECT_GE(ellipse({.list = &list}).get_vector_count(), 2);
  }
}

TEST(EllipseOutline, RunsOnceAroundTheCenter) {
  RecordedList recorded;
  const Points points =
      outline_of(ellipse({.center = {10, 20}, .major = 16, .minor = 4, .list = &recorded.list}));
  ASSERT_EQ(points.size(), 18U);
  EXPECT_EQ(points.front(), (LM_DCI_Point{26, 20, 0}));
  EXPECT_EQ(points.back(), points.front());
  for (const LM_DCI_Point& p : points) {
    EXPECT_NEAR(std::hypot((p.x - 10) / 16.0, (p.y - 20) / 4.0), 1.0, 0.2);
  }
  EXPECT_GT(points[4].y, 20);
}

TEST(EllipseOutline, IsGeneratedInDeviceProportionsAndTakenBack) {
  std::mt19937 random(6);
  std::uniform_int_distribution<std::int32_t> number(-5000, 5000);
  std::uniform_real_distribution<double> scale(0.1, 10.0);
  std::uniform_real_distribution<float> angle(-7.0F, 7.0F);
  for (int i = 0; i < 300; ++i) {
    DL::DisplayList list;
    list.m_deviceScale = {scale(random), scale(random)};
    const DL::DLEllipticalArc drawable = arc({.center = {number(random), number(random)},
                                              .major = std::abs(number(random)),
                                              .minor = std::abs(number(random)),
                                              .rotation = angle(random),
                                              .start = angle(random),
                                              .end = angle(random),
                                              .list = &list});
    const double k = list.m_deviceScale.x / list.m_deviceScale.y;
    const int n = drawable.get_vector_count() + 1;
    Points expected(static_cast<std::size_t>(n));
    LD_Generate_Elliptical_Points(
        {0, 0, 0}, {static_cast<std::int32_t>(drawable.major * k), drawable.minor, 0},
        drawable.start, drawable.end, drawable.rotation, n, expected.data());
    for (LM_DCI_Point& p : expected) {
      p.x = static_cast<std::int32_t>(p.x / k) + drawable.center.x;
      p.y += drawable.center.y;
    }
    ASSERT_EQ(outline_of(drawable), expected);
  }
}

TEST(EllipseOutline, OfTheLargestNumbersIsDefined) {
  for (const std::int32_t limit : {kLowest, kHighest}) {
    for (const double scale : {1e-6, 0.0, -2.0, 1e-300}) {
      DL::DisplayList list;
      list.m_deviceScale = {scale, 1e-6};
      const Points points = outline_of(
          ellipse({.center = {limit, limit}, .major = limit, .minor = limit, .list = &list}));
      EXPECT_GE(points.size(), 3U);
    }
  }
  EXPECT_GE(outline_of(arc({.rotation = kNan, .start = 0.0F, .end = kInfinity})).size(), 3U);
}

std::unique_ptr<DL::DrawableVectorIteratorEllipse> walk(DL::DLEllipse& drawable) {
  auto* iterator = drawable.create_vector_iterator(false);
  return std::unique_ptr<DL::DrawableVectorIteratorEllipse>(
      dynamic_cast<DL::DrawableVectorIteratorEllipse*>(iterator));
}

Vector vector_of(const Points& points, std::size_t i) {
  return {{points[i].x, points[i].y}, {points[i + 1].x, points[i + 1].y}};
}

TEST(EllipseIterator, StartsAtTheFirstVector) {
  DL::DLEllipse drawable = ellipse({.center = {3, 4}});
  const auto iterator = walk(drawable);
  ASSERT_NE(iterator, nullptr);
  EXPECT_FALSE(iterator->m_bDone);
  EXPECT_EQ(iterator->index, 0);
  EXPECT_EQ(iterator->vector_count, 41);
  EXPECT_EQ(iterator->ellipse, &drawable);
  EXPECT_NE(iterator->points, nullptr);
  EXPECT_EQ(iterator->m_vector, vector_of(outline_of(drawable), 0));
}

TEST(EllipseIterator, WalksTheWholeOutlineForwards) {
  DL::DLEllipticalArc drawable = arc({.rotation = 0.3F, .start = 1.0F, .end = 4.0F});
  const Points points = outline_of(drawable);
  const auto iterator = walk(drawable);
  for (std::size_t i = 1; i + 1 < points.size(); ++i) {
    const Vector* vector = iterator->next();
    ASSERT_EQ(vector, &iterator->m_vector);
    EXPECT_EQ(*vector, vector_of(points, i));
    EXPECT_FALSE(iterator->m_bDone);
  }
  EXPECT_EQ(iterator->next(), nullptr);
  EXPECT_TRUE(iterator->m_bDone);
  EXPECT_EQ(iterator->index, iterator->vector_count);
}

TEST(EllipseIterator, StaysPastTheEndAndComesBackToTheLastVector) {
  DL::DLEllipse drawable = ellipse({});
  const Points points = outline_of(drawable);
  const auto iterator = walk(drawable);
  while (iterator->next() != nullptr) {
  }
  for (int times = 0; times < 3; ++times) {
    EXPECT_EQ(iterator->next(), nullptr);
    EXPECT_EQ(iterator->index, iterator->vector_count);
  }
  const Vector* last = iterator->prev();
  ASSERT_NE(last, nullptr);
  EXPECT_EQ(*last, vector_of(points, points.size() - 2));
}

TEST(EllipseIterator, BackwardsNeverHandsOutTheFirstVector) {
  DL::DLEllipse drawable = ellipse({});
  const Points points = outline_of(drawable);
  const auto iterator = walk(drawable);
  iterator->next();
  iterator->next();
  EXPECT_EQ(iterator->index, 2);
  const Vector* first = iterator->prev();
  ASSERT_EQ(first, &iterator->m_vector);
  EXPECT_EQ(*first, vector_of(points, 1));
  EXPECT_EQ(iterator->prev(), nullptr);
  EXPECT_TRUE(iterator->m_bDone);
  EXPECT_EQ(iterator->index, 0);
  EXPECT_EQ(iterator->m_vector, vector_of(points, 0));
}

TEST(EllipseIterator, BackwardsFromTheStartIsDefined) {
  DL::DLEllipse drawable = ellipse({});
  const auto iterator = walk(drawable);
  for (int times = 0; times < 5; ++times) EXPECT_EQ(iterator->prev(), nullptr);
  int steps = 0;
  while (iterator->next() != nullptr && steps < 100) ++steps;
  EXPECT_LE(steps, 46);
}

TEST(EllipseIterator, LoadsNothingWhereThereIsNoVector) {
  DL::DLEllipse drawable = ellipse({});
  const auto iterator = walk(drawable);
  const Vector first = iterator->m_vector;
  for (const int i : {-1, 41, 42, kLowest, kHighest}) {
    iterator->get_vector(i);
    EXPECT_EQ(iterator->m_vector, first) << i;
  }
  iterator->get_vector(40);
  EXPECT_EQ(iterator->m_vector, vector_of(outline_of(drawable), 40));
}

TEST(EllipseIterator, GivesTheSameVectorsForEveryFlagAndOfEveryClass) {
  const Geometry g{.start = 1.0F, .end = 2.0F};
  DL::DLEllipticalArc part = arc(g);
  DL::DLEllipticalPie sector = pie(g);
  DL::DLColorizedEllipse colored = colorized(g);
  const Points points = outline_of(part);
  EXPECT_EQ(outline_of(sector), points);
  EXPECT_EQ(outline_of(colored), points);
  for (DL::Drawable* drawable : std::initializer_list<DL::Drawable*>{&part, &sector, &colored}) {
    for (const bool flag : {false, true}) {
      const std::unique_ptr<DL::DrawableVectorIterator> iterator(
          drawable->create_vector_iterator(flag));
      EXPECT_EQ(iterator->m_vector, vector_of(points, 0));
      EXPECT_EQ(*iterator->next(), vector_of(points, 1));
    }
  }
}

}  // namespace
