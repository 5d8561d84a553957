#pragma once

#include <algorithm>
#include <cstdint>

#include "displaylist/platform/points.h"

namespace DL {

/// Whether every device point lies inside the rectangle or on its border.
inline bool all_inside(const LM_Clip_Rectangle& rectangle, const LM_DCI_Point* points,
                       std::int32_t count) {
  return std::all_of(points, points + count,
                     [&](const LM_DCI_Point& point) { return rectangle.contains(point); });
}

}  // namespace DL
