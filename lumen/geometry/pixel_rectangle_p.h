#pragma once

#include <algorithm>
#include <cstdint>

#include "displaylist/platform/points.h"
#include "lumen/picture.h"

namespace lumen {

/// Pixels of a picture, inclusive at all four ends; empty when min > max.
struct PixelRectangle {
  std::int32_t min_x;
  std::int32_t min_y;
  std::int32_t max_x;
  std::int32_t max_y;

  [[nodiscard]] bool is_empty() const { return min_x > max_x || min_y > max_y; }
  [[nodiscard]] bool contains(const LM_DCI_Point& point) const {
    return min_x <= point.x && point.x <= max_x && min_y <= point.y && point.y <= max_y;
  }

  friend bool operator==(const PixelRectangle&, const PixelRectangle&) = default;
};

/// The pixels of the picture inside the clip rectangle.
inline PixelRectangle visible_pixels(const Picture& picture, const LM_Clip_Rectangle& clip) {
  return {std::max(clip.min_x, 0), std::max(clip.min_y, 0),
          std::min(clip.max_x, picture.width() - 1), std::min(clip.max_y, picture.height() - 1)};
}

}  // namespace lumen
