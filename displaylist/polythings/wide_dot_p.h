#pragma once

#include <cstdint>

#include "displaylist/platform/device_actions.h"
#include "displaylist/platform/rendition.h"

namespace DL {

inline std::int32_t wrapping_add(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

/// Draws a point as a horizontal stroke that covers exactly `weight` device
/// units, with flat ends. Afterwards both ends have the style they had in
/// common, or -1 where they differed.
inline void draw_wide_dot(const LM_Device_Actions& actions, LM_Rendition& rendition,
                          const LM_DCI_Point& point, std::int32_t weight) {
  const std::int32_t half = (weight - 1) / 2;
  const std::int32_t longer = weight % 2 == 0 ? 1 : 0;
  const LM_DCI_Point stroke[2] = {
      {wrapping_add(point.x, -half), point.y, 0},
      {wrapping_add(point.x, half + longer), point.y, 0},
  };
  const std::int32_t ends = rendition.line_style().common_end_style();
  rendition.set_end_styles(LM_END_FLAT);
  actions.polyline_clipped(&rendition, 2, stroke);
  rendition.set_end_styles(ends);
}

}  // namespace DL
