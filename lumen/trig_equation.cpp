#include "displaylist/platform/trig_equation.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;

/// The angle, which lies within a turn of it, in [0, 2 pi).
double in_first_turn(double angle) {
  if (angle < 0.0) angle += kTurn;
  if (angle >= kTurn) angle -= kTurn;
  return std::max(angle, 0.0);
}

}  // namespace

int solveTrigEquation(double a, double b, double c, double tolerance, double roots[2]) {
  if (!std::isfinite(a) || !std::isfinite(b) || !std::isfinite(c)) return 0;
  const double radius = std::hypot(a, b);
  if (radius <= tolerance) return std::abs(c) <= tolerance ? kEveryAngle : 0;
  const double middle = std::atan2(b, a);
  if (std::abs(std::abs(c) - radius) <= tolerance) {
    roots[0] = in_first_turn(c > 0.0 ? middle + std::numbers::pi : middle);
    return 1;
  }
  if (std::abs(c) > radius) return 0;
  const double half = std::acos(-c / radius);
  roots[0] = in_first_turn(middle - half);
  roots[1] = in_first_turn(middle + half);
  if (roots[1] < roots[0]) std::swap(roots[0], roots[1]);
  return 2;
}
