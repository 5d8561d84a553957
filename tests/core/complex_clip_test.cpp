// Which groups the complex draw forms skip: told by what a leaf draws.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "tests/support/contours.h"
#include "tests/support/point_printing.h"
#include "tests/support/probe_scene.h"

namespace {

using Bounds = DL::BoundsTemplate<long>;

constexpr Bounds kBox{10, 10, 20, 20};

/// A closed leaf over a box; the transform is the identity.
struct ComplexClip : testing::Test {
  ComplexClip() {
    scene.add(kBox);
    scene.root().close();
  }
  /// Whether the leaf is drawn under the clip.
  bool draws(const LM_Contour_Set& clip) {
    scene.list.m_rendition.set_complex_clip(clip, true);
    return draws();
  }
  bool draws() {
    scene.root().draw_complex(scene.list);
    return !scene.log.take().empty();
  }
  bool draws(const ContourPoints& points) { return draws(contour_set({points})); }

  ProbeScene scene;
};

TEST_F(ComplexClip, WithoutContoursDrawsEverything) {
  EXPECT_TRUE(draws(LM_Contour_Set()));
}

TEST_F(ComplexClip, AroundTheBoxDraws) {
  EXPECT_TRUE(draws(rectangle(0, 0, 100, 100)));
}

TEST_F(ComplexClip, InsideTheBoxDraws) {
  EXPECT_TRUE(draws(rectangle(14, 14, 16, 16)));
}

TEST_F(ComplexClip, BesideTheBoxDoesNot) {
  EXPECT_FALSE(draws(rectangle(30, 0, 40, 100)));
  EXPECT_FALSE(draws(rectangle(0, 30, 100, 40)));
  EXPECT_FALSE(draws(rectangle(0, 0, 5, 100)));
  EXPECT_FALSE(draws(rectangle(0, 0, 100, 5)));
}

TEST_F(ComplexClip, AnEdgeThroughTheBoxDrawsWithNoCornerInside) {
  EXPECT_TRUE(draws(ContourPoints{{0, 15, 0}, {100, 15, 0}, {100, 500, 0}}));
  EXPECT_TRUE(draws(ContourPoints{{5, 12, 0}, {18, 25, 0}, {5, 25, 0}}));
}

TEST_F(ComplexClip, AnEdgePastACornerDoesNot) {
  // Its end points lie left of and above the box, but it misses the corner.
  EXPECT_FALSE(draws(ContourPoints{{5, 16, 0}, {14, 25, 0}, {5, 25, 0}}));
}

TEST_F(ComplexClip, TouchingTheBorderIsTouching) {
  EXPECT_TRUE(draws(rectangle(20, 0, 40, 100)));
  EXPECT_FALSE(draws(rectangle(20.5, 0, 40, 100)));
  EXPECT_TRUE(draws(rectangle(20, 20, 40, 40)));
  EXPECT_TRUE(draws(ContourPoints{{5, 15, 0}, {15, 25, 0}, {5, 25, 0}}));
}

TEST_F(ComplexClip, TheClosingEdgeCounts) {
  EXPECT_TRUE(draws(ContourPoints{{15, 0, 0}, {60, 50, 0}, {15, 100, 0}}));
}

TEST_F(ComplexClip, HoleGoesByTheFillRule) {
  const ContourPoints outer = rectangle(0, 0, 100, 100);
  const ContourPoints inner = rectangle(5, 5, 50, 50);
  EXPECT_FALSE(draws(contour_set({outer, inner}, LM_Fill_Rule::even_odd)));
  EXPECT_TRUE(draws(contour_set({outer, inner}, LM_Fill_Rule::non_zero)));
}

TEST_F(ComplexClip, GroupOverTheWholePlaneIsAlwaysDrawn) {
  scene.root().m_bounds = Bounds::plane();
  EXPECT_TRUE(draws(rectangle(3e9F, 3e9F, 4e9F, 4e9F)));
  scene.root().m_bounds.min.x += 1;
  EXPECT_FALSE(draws(rectangle(3e9F, 3e9F, 4e9F, 4e9F)));
}

TEST_F(ComplexClip, TheGroupIsTestedInDeviceUnits) {
  scene.list.m_scale = {10.0, 10.0};
  scene.list.m_offset = {-50.0, 0.0};
  EXPECT_TRUE(draws(rectangle(140, 190, 160, 300)));
  EXPECT_FALSE(draws(rectangle(10, 10, 20, 20)));
}

TEST_F(ComplexClip, NegativeScalesTurnTheBoxOver) {
  scene.list.m_scale = {-1.0, -1.0};
  EXPECT_TRUE(draws(rectangle(-100, -100, 0, 0)));
  EXPECT_TRUE(draws(rectangle(-16, -16, -14, -14)));
  EXPECT_FALSE(draws(rectangle(0, 0, 100, 100)));
}

TEST_F(ComplexClip, FollowsAQuarterTurn) {
  const double quarter[6] = {1.0, -1.0, 0.0, 0.0, 0.0, 0.0};
  std::copy(std::begin(quarter), std::end(quarter), scene.list.m_rotation);
  EXPECT_TRUE(draws(rectangle(0, 0, 100, 100)));
  scene.list.m_bRotated = true;
  EXPECT_FALSE(draws(rectangle(0, 0, 100, 100)));
  EXPECT_TRUE(draws(rectangle(-100, 0, 0, 100)));
}

TEST_F(ComplexClip, FollowsTheShiftOfATurnedView) {
  const double shift[6] = {0.0, 0.0, 500.0, -300.0, 1.0, 1.0};
  std::copy(std::begin(shift), std::end(shift), scene.list.m_rotation);
  scene.list.m_bRotated = true;
  EXPECT_TRUE(draws(rectangle(514, -286, 516, -284)));
  EXPECT_FALSE(draws(rectangle(514, 514, 516, 516)));
}

TEST_F(ComplexClip, InATurnedViewTheBoxHoldsAllFourCorners) {
  // An eighth of a turn puts the minimum and maximum corners on one vertical.
  const double eighth = std::sqrt(0.5);
  const double turn[6] = {eighth, -eighth, 0.0, 0.0, eighth, eighth};
  std::copy(std::begin(turn), std::end(turn), scene.list.m_rotation);
  scene.list.m_bRotated = true;
  scene.root().m_bounds = {0, 0, 100, 100};
  EXPECT_TRUE(draws(rectangle(30, 60, 40, 80)));
  EXPECT_TRUE(draws(rectangle(-40, 60, -30, 80)));
  EXPECT_FALSE(draws(rectangle(80, 60, 90, 80)));
}

TEST_F(ComplexClip, BoundsBeyondTheDeviceRangeStillReachAsFarAsTheyDo) {
  scene.root().m_bounds = {0, 0, 1000000, 1000000};
  scene.list.m_scale = {10000.0, 10000.0};
  for (const bool checked : {false, true}) {
    scene.list.m_bCheckOverflow = checked;
    EXPECT_TRUE(draws(rectangle(500, 500, 600, 600)));
    EXPECT_FALSE(draws(rectangle(-600, 500, -500, 600)));
  }
}

TEST_F(ComplexClip, IsValidatedBeforeItIsTested) {
  EXPECT_FALSE(scene.list.m_rendition.hard_complex_clip_validated());
  EXPECT_FALSE(draws(rectangle(30, 30, 40, 40)));
  EXPECT_TRUE(scene.list.m_rendition.hard_complex_clip_validated());
  EXPECT_TRUE(draws(rectangle(0, 0, 40, 40)));
  // A hard clip that is still valid is tested as it is.
  scene.list.m_rendition.set_complex_clip(contour_set({rectangle(30, 30, 40, 40)}), false);
  EXPECT_TRUE(draws());
}

using Corner = std::array<int, 2>;

long long turn(const Corner& a, const Corner& b, const Corner& c) {
  return static_cast<long long>(b[0] - a[0]) * (c[1] - a[1]) -
         static_cast<long long>(b[1] - a[1]) * (c[0] - a[0]);
}

bool is_in_box(const Corner& p) {
  return p[0] >= kBox.min.x && p[0] <= kBox.max.x && p[1] >= kBox.min.y && p[1] <= kBox.max.y;
}

bool segments_meet(const Corner& a, const Corner& b, const Corner& c, const Corner& d) {
  const auto sign = [](long long v) { return v > 0 ? 1 : v < 0 ? -1 : 0; };
  for (int axis = 0; axis < 2; ++axis) {
    const auto i = static_cast<std::size_t>(axis);
    if (std::max(a[i], b[i]) < std::min(c[i], d[i])) return false;
    if (std::max(c[i], d[i]) < std::min(a[i], b[i])) return false;
  }
  return sign(turn(a, b, c)) * sign(turn(a, b, d)) <= 0 &&
         sign(turn(c, d, a)) * sign(turn(c, d, b)) <= 0;
}

bool edge_meets_box(const Corner& a, const Corner& b) {
  if (is_in_box(a) || is_in_box(b)) return true;
  const Corner corners[] = {{10, 10}, {20, 10}, {20, 20}, {10, 20}};
  for (std::size_t i = 0; i < 4; ++i) {
    if (segments_meet(a, b, corners[i], corners[(i + 1) % 4])) return true;
  }
  return false;
}

RC_GTEST_FIXTURE_PROP(ComplexClip, AgreesWithExactGeometryForAnyTriangle, ()) {
  const auto coordinate = rc::gen::resize(rc::kNominalSize, rc::gen::inRange(-15, 46));
  std::array<Corner, 3> t;
  ContourPoints points;
  for (Corner& corner : t) {
    corner = {*coordinate, *coordinate};
    points.push_back({static_cast<float>(corner[0]), static_cast<float>(corner[1]), 0});
  }
  bool expected = false;
  for (std::size_t i = 0; i < 3; ++i) expected |= edge_meets_box(t[i], t[(i + 1) % 3]);
  // Else the box lies wholly in or out of the triangle, and so does its corner.
  const Corner corner{10, 10};
  const long long a = turn(t[0], t[1], corner);
  const long long b = turn(t[1], t[2], corner);
  const long long c = turn(t[2], t[0], corner);
  expected |= (a > 0 && b > 0 && c > 0) || (a < 0 && b < 0 && c < 0);
  RC_ASSERT(draws(points) == expected);
}

}  // namespace
