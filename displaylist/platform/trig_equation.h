#pragma once

#include "displaylist/platform/export.h"

/// What solveTrigEquation returns when every angle is a root.
inline constexpr int kEveryAngle = -1;

/// Solves a cos t + b sin t + c = 0 for t in [0, 2 pi).
///
/// With r = hypot(a, b) the equation is r cos(t - atan2(b, a)) = -c: it has two
/// roots where |c| < r, one where |c| = r, none where |c| > r. Values that
/// differ by `tolerance` or less count as equal, so that a line which touches
/// is not missed for a rounding error; scale the coefficients to suit it. Where
/// r counts as 0 every angle is a root, or none, as c counts as 0 or not.
///
/// Writes the roots to `roots` in ascending order, and returns how many there
/// are, 0 to 2, or kEveryAngle. A coefficient that is not finite gives 0.
/// `tolerance` is at least 0. Any thread may call it.
LUMEN_API int solveTrigEquation(double a, double b, double c, double tolerance, double roots[2]);
