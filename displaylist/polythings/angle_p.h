#pragma once

#include <cmath>

/// Angles as ellipses keep them: radians in single precision.
namespace DL::angle {

inline constexpr float kTurn = 6.2831855F;

/// A sweep above this is a whole turn: what is missing of it counts as nothing.
inline constexpr float kAlmostTurn = 6.2731853F;

/// The angle in [0, 2 pi). One so large that it has no place within the turn
/// any more is 0; NaN stays.
[[nodiscard]] inline float normalized(float angle) {
  if (angle - 1.0F == angle) return 0.0F;
  const float turns = angle / kTurn;
  float within = (turns - std::trunc(turns)) * kTurn;
  if (within < 0.0F) within += kTurn;
  if (within >= kTurn) within -= kTurn;
  return within;
}

}  // namespace DL::angle
