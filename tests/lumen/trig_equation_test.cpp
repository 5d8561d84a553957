#include "displaylist/platform/trig_equation.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kTolerance = 1e-12;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

int count_of(double a, double b, double c, double tolerance = kTolerance) {
  double roots[2];
  return solveTrigEquation(a, b, c, tolerance, roots);
}

std::vector<double> roots_of(double a, double b, double c, double tolerance = kTolerance) {
  double roots[2] = {-1.0, -1.0};
  const int count = solveTrigEquation(a, b, c, tolerance, roots);
  EXPECT_GE(count, 0);
  EXPECT_LE(count, 2);
  return {roots, roots + count};
}

void expect_roots(const std::vector<double>& roots, const std::vector<double>& expected) {
  ASSERT_EQ(roots.size(), expected.size());
  for (std::size_t i = 0; i < roots.size(); ++i) EXPECT_NEAR(roots[i], expected[i], 1e-15 * 8);
}

double value(double a, double b, double c, double t) {
  return a * std::cos(t) + b * std::sin(t) + c;
}

TEST(TrigEquation, HasTwoRootsInAscendingOrder) {
  expect_roots(roots_of(1.0, 0.0, 0.0), {kPi / 2, 3 * kPi / 2});
  expect_roots(roots_of(0.0, 1.0, 0.0), {0.0, kPi});
  expect_roots(roots_of(0.0, -1.0, 0.0), {0.0, kPi});
  expect_roots(roots_of(1.0, 1.0, 0.0), {3 * kPi / 4, 7 * kPi / 4});
  expect_roots(roots_of(2.0, 0.0, -1.0), {kPi / 3, 5 * kPi / 3});
  expect_roots(roots_of(1.0, 1.0, 1.0), {kPi, 3 * kPi / 2});
}

TEST(TrigEquation, HasOneRootWhereItTouches) {
  for (const double size : {1e-3, 1.0, 1024.0}) {
    expect_roots(roots_of(size, 0.0, -size), {0.0});
    expect_roots(roots_of(size, 0.0, size), {kPi});
    expect_roots(roots_of(0.0, size, -size), {kPi / 2});
    expect_roots(roots_of(0.0, size, size), {3 * kPi / 2});
  }
  expect_roots(roots_of(3.0, 4.0, -5.0), {std::atan2(4.0, 3.0)});
  expect_roots(roots_of(3.0, 4.0, 5.0), {std::atan2(4.0, 3.0) + kPi});
}

TEST(TrigEquation, TouchesWithinTheToleranceAndNoFurther) {
  for (const double sign : {-1.0, 1.0}) {
    for (const double tolerance : {1e-12, 1e-6, 0.01}) {
      for (const double missing : {-0.9 * tolerance, 0.0, 0.9 * tolerance}) {
        const double c = sign * (1.0 + missing);
        const std::vector<double> roots = roots_of(0.6, 0.8, c, tolerance);
        ASSERT_EQ(roots.size(), 1U) << c;
        EXPECT_NEAR(value(0.6, 0.8, sign, roots[0]), 0.0, 1e-15 * 8);
      }
      EXPECT_EQ(count_of(0.6, 0.8, sign * (1.0 + 1.1 * tolerance), tolerance), 0);
      EXPECT_EQ(count_of(0.6, 0.8, sign * (1.0 - 1.1 * tolerance), tolerance), 2);
    }
  }
}

TEST(TrigEquation, HasNoRootWhereTheConstantIsLarger) {
  EXPECT_EQ(count_of(1.0, 0.0, 1.5), 0);
  EXPECT_EQ(count_of(1.0, 1.0, -1.5), 0);
  EXPECT_EQ(count_of(0.0, 0.0, 1.0), 0);
  EXPECT_EQ(count_of(0.0, 0.0, -1e300), 0);
}

TEST(TrigEquation, OfZeroCoefficientsHasEveryAngle) {
  EXPECT_EQ(count_of(0.0, 0.0, 0.0), kEveryAngle);
  EXPECT_EQ(count_of(-0.0, 0.0, -0.0, 0.0), kEveryAngle);
}

TEST(TrigEquation, CountsCoefficientsWithinTheToleranceAsZero) {
  EXPECT_EQ(count_of(5e-13, -5e-13, 5e-13), kEveryAngle);
  EXPECT_EQ(count_of(5e-13, 5e-13, -9e-13), kEveryAngle);
  EXPECT_EQ(count_of(5e-13, 5e-13, 2e-12), 0);
  EXPECT_EQ(count_of(0.05, 0.05, 0.05, 0.1), kEveryAngle);
  EXPECT_EQ(count_of(2e-12, 0.0, 0.0), 2);
}

TEST(TrigEquation, WithoutToleranceIsExact) {
  expect_roots(roots_of(1.0, 0.0, -1.0, 0.0), {0.0});
  expect_roots(roots_of(1e-300, 0.0, 0.0, 0.0), {kPi / 2, 3 * kPi / 2});
  EXPECT_EQ(count_of(1.0, 0.0, std::nextafter(1.0, 2.0), 0.0), 0);
  EXPECT_EQ(count_of(1.0, 0.0, std::nextafter(1.0, 0.0), 0.0), 2);
}

TEST(TrigEquation, OfACoefficientThatIsNotFiniteHasNoRoot) {
  for (const double bad : {kNan, kInfinity, -kInfinity}) {
    EXPECT_EQ(count_of(bad, 1.0, 0.0), 0);
    EXPECT_EQ(count_of(1.0, bad, 0.0), 0);
    EXPECT_EQ(count_of(1.0, 0.0, bad), 0);
    EXPECT_EQ(count_of(0.0, 0.0, bad), 0);
    EXPECT_EQ(count_of(bad, bad, bad), 0);
  }
}

TEST(TrigEquation, OfTheLargestAndSmallestCoefficientsIsSolved) {
  constexpr double kLargest = std::numeric_limits<double>::max();
  expect_roots(roots_of(kLargest, 0.0, 0.0), {kPi / 2, 3 * kPi / 2});
  expect_roots(roots_of(kLargest / 2, kLargest / 2, 0.0), {3 * kPi / 4, 7 * kPi / 4});
  constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
  expect_roots(roots_of(kSmallest, 0.0, 0.0, 0.0), {kPi / 2, 3 * kPi / 2});
}

TEST(TrigEquation, GivesNoRootOfAWholeTurn) {
  // Each has a root that is 0 but for rounding, on the one or the other side.
  for (const double a : {1.0, 1e-9, 1e9}) {
    for (const double b : {1e-17, -1e-17, 1e-30, -1e-30, -0.0}) {
      for (const double root : roots_of(a, a * b, -a, 1e-12 * a)) {
        EXPECT_GE(root, 0.0);
        EXPECT_LT(root, 2 * kPi);
      }
      for (const double root : roots_of(a * b, a, 0.0, 0.0)) {
        EXPECT_GE(root, 0.0);
        EXPECT_LT(root, 2 * kPi);
      }
    }
  }
}

TEST(TrigEquation, IsSolvedWhereverTheValueChangesItsSign) {
  constexpr int kSteps = 720;
  std::mt19937 random(3);
  std::uniform_real_distribution<double> any(-1.0, 1.0);
  for (int round = 0; round < 5000; ++round) {
    const double size = std::pow(10.0, 6 * any(random));
    const double a = size * any(random);
    const double b = size * any(random);
    const double c = 1.5 * size * any(random);
    const double r = std::hypot(a, b);
    // Two roots closer than the steps would hide their changes of sign.
    if (std::abs(std::abs(c) - r) < 1e-3 * r) continue;
    std::vector<int> changes;
    for (int i = 0; i < kSteps; ++i) {
      const double here = value(a, b, c, 2 * kPi * i / kSteps);
      const double there = value(a, b, c, 2 * kPi * ((i + 1) % kSteps) / kSteps);
      if ((here < 0) != (there < 0)) changes.push_back(i);
    }
    const std::vector<double> roots = roots_of(a, b, c, kTolerance * size);
    ASSERT_EQ(roots.size(), changes.size()) << a << ' ' << b << ' ' << c;
    for (std::size_t i = 0; i < roots.size(); ++i) {
      ASSERT_NEAR(roots[i], 2 * kPi * (changes[i] + 0.5) / kSteps, 1.0001 * kPi / kSteps);
    }
  }
}

rc::Gen<double> coefficients() {
  return rc::gen::map(rc::gen::inRange(-1000000, 1000001), [](int n) { return n / 1024.0; });
}

RC_GTEST_PROP(TrigEquation, LeavesNoResidual, ()) {
  const double a = *coefficients();
  const double b = *coefficients();
  const double c = *rc::gen::oneOf(coefficients(), rc::gen::just(0.0),
                                   rc::gen::element(std::hypot(a, b), -std::hypot(a, b)));
  const double size = std::hypot(a, b);
  RC_PRE(size > 0.0);
  const double tolerance = 1e-12 * size;
  double roots[2] = {-1.0, -1.0};
  const int count = solveTrigEquation(a, b, c, tolerance, roots);
  const double excess = std::abs(c) - size;
  if (excess > 2 * tolerance) RC_ASSERT(count == 0);
  if (excess < -2 * tolerance) RC_ASSERT(count == 2);
  if (std::abs(excess) < tolerance / 2) RC_ASSERT(count == 1);
  for (int i = 0; i < count; ++i) {
    RC_ASSERT(roots[i] >= 0.0 && roots[i] < 2 * kPi);
    RC_ASSERT(std::abs(value(a, b, c, roots[i])) <= 3 * tolerance);
  }
  if (count == 2) RC_ASSERT(roots[0] < roots[1]);
}

}  // namespace
