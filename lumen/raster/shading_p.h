#pragma once

#include <cstdint>

#include "lumen/geometry/pixel_rectangle_p.h"
#include "lumen/picture.h"

namespace lumen {

/// What shapes with a colour for each pixel are drawn on.
struct ShadingTarget {
  Picture& picture;
  PixelRectangle inside;     ///< within the picture
  const std::uint8_t* mask;  ///< a byte per pixel of the picture, or null
  bool antialiased;
};

/// The pixels inside the rectangle that lie within `margin` of the points.
PixelRectangle box_around(std::int32_t count, const LM_DCI_Point* points, double margin,
                          const PixelRectangle& inside);

}  // namespace lumen
