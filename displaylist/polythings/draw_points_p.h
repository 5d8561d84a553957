#pragma once

#include "displaylist/core/device_buffer_p.h"
#include "displaylist/core/display_list.h"
#include "displaylist/core/transform_p.h"
#include "displaylist/polythings/inside_p.h"
#include "displaylist/polythings/polything.h"

namespace DL {

/// Transforms all points, repeated ones too, and calls `unclipped` when `clip`
/// is false and every point lies inside the clip rectangle, else `clipped`;
/// `arguments` follow the points. Without points nothing is called.
template <class Action, class... Arguments>
void draw_points(Polything& polything, DisplayList& list, bool clip, const Action& unclipped,
                 const Action& clipped, Arguments... arguments) {
  const std::int32_t count = polything.count;
  if (count < 1) return;
  with_device_buffer<0>(count, [&](LM_DCI_Point* device) {
    transform::all_with_rotation(list, polything.points, count, device);
    const bool inside = !clip && all_inside(list.m_rendition.clip_rectangle(), device, count);
    (inside ? unclipped : clipped)(polything.rendition(list), count, device, arguments...);
  });
}

}  // namespace DL
