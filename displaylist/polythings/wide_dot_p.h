#pragma once

#include <array>
#include <cstdint>

#include "displaylist/core/display_list.h"
#include "displaylist/core/wrapping_p.h"

namespace DL {

/// The horizontal stroke that stands for a wide dot: from the first to the last
/// of `weight` device units.
inline std::array<LM_DCI_Point, 2> wide_dot_stroke(const LM_DCI_Point& point, std::int32_t weight) {
  const std::int32_t half = (weight - 1) / 2;
  const std::int32_t longer = weight % 2 == 0 ? 1 : 0;
  return {{{wrapping_add(point.x, -half), point.y, 0},
           {wrapping_add(point.x, half + longer), point.y, 0}}};
}

/// Draws a point as a horizontal stroke that covers exactly `weight` device
/// units, with flat ends. Afterwards both ends have the style they had in
/// common, or -1 where they differed.
inline void draw_wide_dot(DisplayList& list, LM_Rendition& rendition, const LM_DCI_Point& point,
                          std::int32_t weight) {
  const std::array<LM_DCI_Point, 2> stroke = wide_dot_stroke(point, weight);
  LM_Rendition& changed = list.changeable(rendition);
  const std::int32_t ends = changed.line_style().common_end_style();
  changed.set_end_styles(LM_END_FLAT);
  list.m_pRenderer->actions.polyline_clipped(&changed, 2, stroke.data());
  changed.set_end_styles(ends);
}

}  // namespace DL
