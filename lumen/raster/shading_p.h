#pragma once

#include <algorithm>
#include <cstdint>

#include "displaylist/platform/points.h"
#include "lumen/geometry/pixel_rectangle_p.h"
#include "lumen/picture.h"
#include "lumen/raster/row_range_p.h"

namespace lumen {

/// What shapes with a colour for each pixel are drawn on.
struct ShadingTarget {
  Picture& picture;
  PixelRectangle inside;     ///< within the picture
  const std::uint8_t* mask;  ///< a byte per pixel of the picture, or null
  bool antialiased;
  RowRange rows;  ///< alone are written
};

/// The box around the points, of which there is one at least.
inline PixelRectangle box_of(std::int32_t count, const LM_DCI_Point* points) {
  PixelRectangle box{points[0].x, points[0].y, points[0].x, points[0].y};
  for (std::int32_t i = 1; i < count; ++i) {
    box.min_x = std::min(box.min_x, points[i].x);
    box.min_y = std::min(box.min_y, points[i].y);
    box.max_x = std::max(box.max_x, points[i].x);
    box.max_y = std::max(box.max_y, points[i].y);
  }
  return box;
}

/// The pixels inside the rectangle that lie within `margin` of the points.
PixelRectangle box_around(std::int32_t count, const LM_DCI_Point* points, double margin,
                          const PixelRectangle& inside);

}  // namespace lumen
