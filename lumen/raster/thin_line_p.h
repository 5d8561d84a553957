#pragma once

#include <cstdint>

#include "displaylist/platform/points.h"
#include "lumen/geometry/pixel_rectangle_p.h"
#include "lumen/picture.h"

namespace lumen {

/// What a one-pixel line without antialiasing is drawn with.
struct ThinLinePen {
  Picture& picture;
  PixelRectangle inside;  ///< within the picture
  LM_RGB32 color;
  const std::uint8_t* mask;  ///< a byte per pixel of the picture, or null
  std::int32_t pattern;
};

/// Draws the polyline. No pixel of a joint is coloured twice; the last pixel
/// of a closed polyline is its first one. Coordinates may be any.
void draw_thin_polyline(const ThinLinePen& pen, std::int32_t count, const LM_DCI_Point* points);

/// The same with a colour for each point, mixed along each segment, instead of
/// the pen's. Where a closed polyline meets itself it has its first colour.
void draw_thin_polyline(const ThinLinePen& pen, std::int32_t count, const LM_DCI_Point* points,
                        const LM_RGB32* colors);

/// Colours one pixel if it is inside.
void draw_pixel(const ThinLinePen& pen, const LM_DCI_Point& point);

}  // namespace lumen
