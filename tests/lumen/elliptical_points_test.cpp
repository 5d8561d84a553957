#include "displaylist/platform/elliptical_points.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "tests/support/point_printing.h"

namespace {

using Points = std::vector<LM_DCI_Point>;

constexpr float kTurn = 6.2831855F;
constexpr float kQuarter = kTurn / 4;
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr LM_DCI_Point kUntouched{71, 72, 73};

Points generate(LM_DCI_Point center, LM_DCI_Point radii, float start, float end, float rotation,
                std::int32_t count) {
  // One more than asked for, to see that it is left alone.
  Points points(static_cast<std::size_t>(std::max(count, 0)) + 1, kUntouched);
  LD_Generate_Elliptical_Points(center, radii, start, end, rotation, count, points.data());
  EXPECT_EQ(points.back(), kUntouched);
  points.pop_back();
  return points;
}

TEST(EllipticalPoints, RunAroundTheCenter) {
  EXPECT_EQ(generate({10, 20, 0}, {100, 50, 0}, 0.0F, kTurn, 0.0F, 5),
            (Points{{110, 20, 0}, {10, 70, 0}, {-90, 20, 0}, {10, -30, 0}, {110, 20, 0}}));
}

TEST(EllipticalPoints, AreTurnedByTheRotation) {
  EXPECT_EQ(generate({10, 20, 0}, {100, 50, 0}, 0.0F, kTurn, kQuarter, 5),
            (Points{{10, 120, 0}, {-40, 20, 0}, {10, -80, 0}, {60, 20, 0}, {10, 120, 0}}));
}

TEST(EllipticalPoints, RunFromTheStartToTheEnd) {
  EXPECT_EQ(generate({0, 0, 0}, {100, 50, 0}, kQuarter, 2 * kQuarter, 0.0F, 2),
            (Points{{0, 50, 0}, {-100, 0, 0}}));
  EXPECT_EQ(generate({0, 0, 0}, {100, 50, 0}, 2 * kQuarter, kQuarter, 0.0F, 2),
            (Points{{-100, 0, 0}, {0, 50, 0}}));
}

TEST(EllipticalPoints, ASingleOneIsThatAtTheStart) {
  EXPECT_EQ(generate({1, 2, 0}, {100, 50, 0}, kQuarter, kTurn, 0.0F, 1), Points({{1, 52, 0}}));
}

TEST(EllipticalPoints, OfACountBelowOneWriteNothing) {
  for (const std::int32_t count : {0, -1, INT32_MIN}) {
    EXPECT_TRUE(generate({1, 2, 0}, {100, 50, 0}, 0.0F, kTurn, 0.0F, count).empty());
    LD_Generate_Elliptical_Points({}, {}, 0.0F, kTurn, 0.0F, count, nullptr);
  }
}

TEST(EllipticalPoints, HaveNoDepth) {
  for (const LM_DCI_Point& point : generate({1, 2, 5}, {10, 20, 6}, 0.0F, kTurn, 0.3F, 9)) {
    EXPECT_EQ(point.z, 0);
  }
}

TEST(EllipticalPoints, OfRadiiOfZeroAreTheCenterOrALine) {
  EXPECT_EQ(generate({3, 4, 0}, {0, 0, 0}, 0.0F, kTurn, 1.0F, 3), Points(3, {3, 4, 0}));
  for (const LM_DCI_Point& point : generate({3, 4, 0}, {10, 0, 0}, 0.0F, kTurn, 0.0F, 30)) {
    EXPECT_EQ(point.y, 4);
  }
}

TEST(EllipticalPoints, OfNegativeRadiiFollowTheFormula) {
  EXPECT_EQ(generate({0, 0, 0}, {-100, -50, 0}, 0.0F, kQuarter, 0.0F, 2),
            (Points{{-100, 0, 0}, {0, -50, 0}}));
}

TEST(EllipticalPoints, SaturateAtThe32BitLimits) {
  const LM_DCI_Point radii{INT32_MAX, INT32_MAX, 0};
  EXPECT_EQ(generate({1000, 1000, 0}, radii, 0.0F, kQuarter, 0.0F, 2),
            (Points{{INT32_MAX, 1000, 0}, {906, INT32_MAX, 0}}));
  EXPECT_EQ(generate({INT32_MIN, INT32_MIN, 0}, radii, 0.0F, kQuarter, 0.5F, 1)[0],
            (LM_DCI_Point{-262889447, -1117925144, 0}));
  EXPECT_EQ(generate({-1000, -1000, 0}, radii, 2 * kQuarter, 3 * kQuarter, 0.0F, 2)[0].x,
            INT32_MIN);
  EXPECT_EQ(generate({INT32_MAX, 0, 0}, {INT32_MIN, 0, 0}, 0.0F, 0.0F, 0.0F, 1)[0].x, -1);
}

TEST(EllipticalPoints, AreTheCenterWhereAnAngleIsNotFinite) {
  for (const float bad : {kNan, kInfinity, -kInfinity}) {
    const Points centers(3, {3, 4, 0});
    EXPECT_EQ(generate({3, 4, 0}, {100, 50, 0}, bad, 1.0F, 0.0F, 3), centers);
    EXPECT_EQ(generate({3, 4, 0}, {100, 50, 0}, 0.0F, bad, 0.0F, 3), centers);
    EXPECT_EQ(generate({3, 4, 9}, {100, 50, 0}, 0.0F, 1.0F, bad, 3), centers);
  }
}

double exact(double center, double along_cos, double along_sin, double t) {
  return center + along_cos * std::cos(t) + along_sin * std::sin(t);
}

RC_GTEST_PROP(EllipticalPoints, FollowTheFormula, ()) {
  const auto coordinate = rc::gen::inRange<std::int32_t>(-1000000, 1000001);
  const auto angle =
      rc::gen::map(rc::gen::inRange(-4000, 4001), [](int n) { return static_cast<float>(n) / 97; });
  const LM_DCI_Point center{*coordinate, *coordinate, 0};
  const LM_DCI_Point radii{*coordinate, *coordinate, 0};
  const float start = *angle;
  const float end = *angle;
  const float rotation = *angle;
  const std::int32_t count = *rc::gen::inRange(2, 60);
  const Points points = generate(center, radii, start, end, rotation, count);
  const double c = std::cos(static_cast<double>(rotation));
  const double s = std::sin(static_cast<double>(rotation));
  for (std::int32_t i = 0; i < count; ++i) {
    const double t = start + (static_cast<double>(end) - start) * i / (count - 1);
    const LM_DCI_Point& point = points[static_cast<std::size_t>(i)];
    // Rounding to nearest, and what two ways to compute the same may differ by.
    constexpr double kHalf = 0.5 + 1e-7;
    RC_ASSERT(std::abs(point.x - exact(center.x, radii.x * c, -radii.y * s, t)) <= kHalf);
    RC_ASSERT(std::abs(point.y - exact(center.y, radii.x * s, radii.y * c, t)) <= kHalf);
    RC_ASSERT(point.z == 0);
  }
}

RC_GTEST_PROP(EllipticalPoints, OfAnyNumbersAreDefined, ()) {
  const auto number =
      rc::gen::oneOf(rc::gen::arbitrary<std::int32_t>(),
                     rc::gen::element<std::int32_t>(INT32_MIN, INT32_MAX, INT32_MIN + 1, 0, 1, -1));
  const auto angle = rc::gen::element(0.0F, 1.0F, -7.0F, 1e10F, -1e30F, 3.4e38F, -3.4e38F, 1e-40F,
                                      kInfinity, kNan);
  const std::int32_t count = *rc::gen::inRange(-2, 20);
  const LM_DCI_Point center{*number, *number, 0};
  const LM_DCI_Point radii{*number, *number, *number};
  for (const LM_DCI_Point& point : generate(center, radii, *angle, *angle, *angle, count)) {
    RC_ASSERT(point.z == 0);
  }
}

}  // namespace
