#include <algorithm>

#include "lumen/raster/shading_p.h"

namespace lumen {

PixelRectangle box_around(std::int32_t count, const LM_DCI_Point* points, double margin,
                          const PixelRectangle& inside) {
  if (count <= 0 || inside.is_empty()) return {0, 0, -1, -1};
  const PixelRectangle box = box_of(count, points);
  // A step beyond the rectangle at most, so that an empty box stays one.
  const auto within = [](double value, std::int32_t min, std::int32_t max) {
    return static_cast<std::int32_t>(std::clamp(value, min - 1.0, max + 1.0));
  };
  return {std::max(within(box.min_x - margin, inside.min_x, inside.max_x), inside.min_x),
          std::max(within(box.min_y - margin, inside.min_y, inside.max_y), inside.min_y),
          std::min(within(box.max_x + margin, inside.min_x, inside.max_x), inside.max_x),
          std::min(within(box.max_y + margin, inside.min_y, inside.max_y), inside.max_y)};
}

}  // namespace lumen
