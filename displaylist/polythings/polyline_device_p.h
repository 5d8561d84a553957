#pragma once

#include <cstdint>

#include "displaylist/core/display_list.h"
#include "displaylist/polythings/wide_dot_p.h"

namespace DL::polyline {

/// Draws a polyline that falls on one device point.
inline void draw_collapsed(DisplayList& list, LM_Rendition& rendition, const LM_DCI_Point& point,
                           bool inside) {
  const std::int32_t weight = rendition.line_style().weight;
  if (weight >= 2 && list.m_bWideDots) {
    draw_wide_dot(list, rendition, point, weight);
    return;
  }
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  (inside ? actions.dot_unclipped : actions.dot_clipped)(&rendition, &point, nullptr);
}

/// Draws a polyline of distinct device points; `inside`: none needs clipping.
inline void draw_device(DisplayList& list, LM_Rendition& rendition, const LM_DCI_Point* device,
                        std::int32_t count, bool inside) {
  if (count == 1) {
    draw_collapsed(list, rendition, device[0], inside);
    return;
  }
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  (inside ? actions.polyline_unclipped : actions.polyline_clipped)(&rendition, count, device);
}

}  // namespace DL::polyline
