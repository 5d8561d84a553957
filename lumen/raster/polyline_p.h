#pragma once

#include <cstdint>

#include "displaylist/platform/rendition.h"
#include "lumen/geometry/line_pattern_p.h"
#include "lumen/pixel_blend_p.h"
#include "lumen/raster/shading_p.h"

namespace lumen {

/// A line like most: opaque, one pixel wide, solid.
inline bool is_plain(LM_RGB32 color, const LM_Line_Style& style) {
  return opacity_of(color) == 255 && style.weight <= 1 && pattern_lengths(style.pattern).empty();
}

/// Draws a polyline of any style in colours that change along it: `count` points,
/// at least 1, with a colour each. The target is not empty.
void draw_shaded_polyline(const ShadingTarget& target, const LM_Line_Style& style,
                          std::int32_t count, const LM_DCI_Point* points, const LM_RGB32* colors);

}  // namespace lumen
