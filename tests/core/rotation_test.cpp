#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>

#include "displaylist/core/display_list.h"
#include "tests/support/bounds_generators.h"
#include "tests/support/point_printing.h"

namespace {

using DL::DisplayList;
using Logical = DL::PointTemplate<long>;
using Screen = DL::PointTemplate<int>;

LM_DCI_Point with_rotation(const DisplayList& list, const Logical& p) {
  LM_DCI_Point result{77, 77, 77};
  list.transform_point_with_rotation(p, result);
  return result;
}
Logical back(const DisplayList& list, const Screen& p) {
  Logical result{77, 77};
  list.transform_point_with_rotation(p, result);
  return result;
}
void rotate(DisplayList& list, std::initializer_list<double> coefficients) {
  std::copy(coefficients.begin(), coefficients.end(), list.m_rotation);
  list.m_bRotated = true;
}

TEST(Rotation, UsesTheCoefficientsInStorageOrder) {
  DisplayList list;
  rotate(list, {2.0, 3.0, 5.0, 7.0, 11.0, 13.0});
  EXPECT_EQ(with_rotation(list, {0, 0}), (LM_DCI_Point{5, 7, 0}));
  EXPECT_EQ(with_rotation(list, {1, 0}), (LM_DCI_Point{16, 9, 0}));
  EXPECT_EQ(with_rotation(list, {0, 1}), (LM_DCI_Point{8, 20, 0}));
  EXPECT_EQ(with_rotation(list, {100, -10}), (LM_DCI_Point{1075, 77, 0}));
}

TEST(Rotation, RoundsToNearestEvenAndNeverSaturates) {
  DisplayList list;
  list.m_bCheckOverflow = true;
  rotate(list, {0.0, 0.0, 0.0, 0.0, 0.5, 2.0});
  EXPECT_EQ(with_rotation(list, {5, 1}), (LM_DCI_Point{2, 2, 0}));
  EXPECT_EQ(with_rotation(list, {7, 1500000000}), (LM_DCI_Point{4, INT32_MIN, 0}));
}

TEST(Rotation, WithoutItThePointIsTransformedUnchecked) {
  DisplayList list;
  list.m_scale = {2.0, 0.5};
  list.m_offset = {1.0, 0.0};
  list.m_bCheckOverflow = true;
  std::fill(std::begin(list.m_rotation), std::end(list.m_rotation), 99.0);
  EXPECT_EQ(with_rotation(list, {3, 5}), (LM_DCI_Point{7, 2, 0}));
  EXPECT_EQ(with_rotation(list, {1500000000, 4}), (LM_DCI_Point{INT32_MIN, 2, 0}));
}

TEST(Rotation, TheSecondaryFlagDoesNotRotate) {
  DisplayList list;
  std::fill(std::begin(list.m_rotation), std::end(list.m_rotation), 99.0);
  list.m_bRotationSecondary = true;
  EXPECT_EQ(with_rotation(list, {3, 5}), (LM_DCI_Point{3, 5, 0}));
}

TEST(Rotation, NewListTurnsNothing) {
  DisplayList list;
  list.m_bRotated = true;
  EXPECT_EQ(with_rotation(list, {3, -5}), (LM_DCI_Point{3, -5, 0}));
}

TEST(RotationBack, TruncatesTowardZero) {
  DisplayList list;
  rotate(list, {0.0, 0.0, 0.0, 0.0, 4.0, 4.0});
  EXPECT_EQ(back(list, {7, -7}), (Logical{1, -1}));
  list.m_bRotated = false;
  list.m_scale = {4.0, -4.0};
  list.m_offset = {0.0, 0.0};
  EXPECT_EQ(back(list, {8, 8}), (Logical{1, -1}));
  EXPECT_EQ(back(list, {-7, -7}), (Logical{-1, 1}));
}

TEST(RotationBack, TakesHalfAUnitMoreOffWithoutRotation) {
  DisplayList list;
  list.m_offset = {10.0, 20.0};
  EXPECT_EQ(back(list, {15, 25}), (Logical{4, 4}));
  EXPECT_EQ(back(list, {10, 20}), (Logical{0, 0}));
  EXPECT_EQ(back(list, {5, 15}), (Logical{-5, -5}));
}

TEST(RotationBack, WhatDoesNotFitIsIndefinite) {
  DisplayList list;
  list.m_scale = {1e-3, 1e-3};
  EXPECT_EQ(back(list, {INT32_MAX, INT32_MIN}), (Logical{INT32_MIN, INT32_MIN}));
  rotate(list, {0.0, 0.0, 0.0, 0.0, 1e-3, 1e-3});
  EXPECT_EQ(back(list, {INT32_MAX, INT32_MIN}), (Logical{INT32_MIN, INT32_MIN}));
}

TEST(RotationBack, QuarterTurnDividesByZeroInX) {
  DisplayList list;
  rotate(list, {1.0, -1.0, 0.0, 0.0, 0.0, 0.0});
  EXPECT_EQ(back(list, {-5, 7}), (Logical{INT32_MIN, 5}));
}

TEST(RotationBack, UsesTheUnroundedYForX) {
  DisplayList list;
  // x' = x + 10 y, y' = x + 20 y: a rounded y would shift x by several units.
  rotate(list, {1.0, 10.0, 0.0, 0.0, 1.0, 20.0});
  EXPECT_EQ(back(list, {100, 106}), (Logical{94, 0}));
}

RC_GTEST_PROP(RotationBack, UndoesATurnToWithinAUnit, ()) {
  DisplayList list;
  const double angle = *rc::gen::inRange(1, 89) * 0.0174532925;
  const double zoom = *rc::gen::inRange(1, 50);
  const double c = std::cos(angle) * zoom;
  const double s = std::sin(angle) * zoom;
  rotate(list, {s, -s, 17.0, -40.0, c, c});
  const Logical p{*rc::gen::inRange(-100000, 100001), *rc::gen::inRange(-100000, 100001)};
  const LM_DCI_Point d = with_rotation(list, p);
  const Logical q = back(list, Screen{d.x, d.y});
  RC_ASSERT(std::abs(q.x - p.x) <= 2);
  RC_ASSERT(std::abs(q.y - p.y) <= 2);
}

RC_GTEST_PROP(RotationBack, FollowsTheFormulaForAnyCoefficients, ()) {
  DisplayList list;
  double r[6];
  for (double& coefficient : r) coefficient = *rc::gen::inRange(-1000, 1001) / 8.0;
  rotate(list, {r[0], r[1], r[2], r[3], r[4], r[5]});
  const Screen p{*rc::gen::inRange(-100000, 100001), *rc::gen::inRange(-100000, 100001)};
  const double determinant = r[0] * r[1] - r[4] * r[5];
  RC_PRE(determinant != 0.0 && r[4] != 0.0);
  const double y = (r[0] * p.x - r[4] * p.y - r[0] * r[2] + r[4] * r[3]) / determinant;
  const double x = (p.x - r[2] - y * r[1]) / r[4];
  RC_PRE(std::abs(x) < 2e9 && std::abs(y) < 2e9);
  const Logical q = back(list, p);
  RC_ASSERT(q.x == static_cast<std::int32_t>(x));
  RC_ASSERT(q.y == static_cast<std::int32_t>(y));
}

}  // namespace
