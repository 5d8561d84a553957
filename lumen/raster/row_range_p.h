#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "lumen/geometry/pixel_rectangle_p.h"

namespace lumen {

/// Rows of a picture, both ends included. Unlike a clip rectangle it leaves the
/// geometry alone: what is drawn is the same, and only pixels of these rows get
/// it. At first all rows.
struct RowRange {
  std::int32_t first = std::numeric_limits<std::int32_t>::min();
  std::int32_t last = std::numeric_limits<std::int32_t>::max();

  [[nodiscard]] bool contains(std::int32_t row) const { return first <= row && row <= last; }
  /// The part of the rectangle in these rows.
  [[nodiscard]] PixelRectangle part_of(const PixelRectangle& rectangle) const {
    return {rectangle.min_x, std::max(rectangle.min_y, first), rectangle.max_x,
            std::min(rectangle.max_y, last)};
  }
};

}  // namespace lumen
