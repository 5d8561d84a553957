#pragma once

#include <cstdint>

#include "displaylist/platform/points.h"
#include "lumen/geometry/pixel_rectangle_p.h"
#include "lumen/picture.h"

namespace lumen {

// One-pixel lines like most: opaque and solid, so that they replace the pixels
// they cover. Some of them are written twice.

/// Draws a polyline of at least one point, all of them inside the picture.
void draw_plain_inside(Picture& picture, std::uint32_t word, std::int32_t count,
                       const LM_DCI_Point* points);

/// Draws what of a polyline of at least one point lies inside the rectangle,
/// which is within the picture or empty. Coordinates may be any.
void draw_plain_clipped(Picture& picture, const PixelRectangle& inside, std::uint32_t word,
                        std::int32_t count, const LM_DCI_Point* points);

/// The same, faster where all of it is inside.
inline void draw_plain_polyline(Picture& picture, const PixelRectangle& inside, std::uint32_t word,
                                std::int32_t count, const LM_DCI_Point* points) {
  for (std::int32_t i = 0; i < count; ++i) {
    if (!inside.contains(points[i])) {
      return draw_plain_clipped(picture, inside, word, count, points);
    }
  }
  draw_plain_inside(picture, word, count, points);
}

}  // namespace lumen
