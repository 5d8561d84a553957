#pragma once

#include <cstdint>

#include "displaylist/platform/export.h"
#include "displaylist/platform/points.h"

/// Writes `count` points of an elliptical arc to `out`, which has room for
/// them: the i-th at angle t = start + (end - start) * i / (count - 1),
///
///     x = center.x + radii.x cos t cos rotation - radii.y sin t sin rotation
///     y = center.y + radii.x cos t sin rotation + radii.y sin t cos rotation
///
/// in the units of the centre, computed in double precision, rounded to
/// nearest and saturated at the 32-bit limits; z is 0. Angles are radians;
/// where one is not finite every point is the centre. A single point is that
/// at `start`; a count below 1 writes nothing. Any thread may call it.
LUMEN_API void LD_Generate_Elliptical_Points(const LM_DCI_Point& center, const LM_DCI_Point& radii,
                                             float start, float end, float rotation,
                                             std::int32_t count, LM_DCI_Point* out);
