#include "importers/mapping.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace importers {

bool Extent::meets(const Extent& other) const {
  return max_x >= other.min_x && max_y >= other.min_y && min_x <= other.max_x &&
         min_y <= other.max_y;
}

void Extent::widen(double x, double y) {
  if (is_empty()) {
    *this = {x, y, x, y};
    return;
  }
  min_x = std::min(min_x, x);
  min_y = std::min(min_y, y);
  max_x = std::max(max_x, x);
  max_y = std::max(max_y, y);
}

Mapping Mapping::fitting(const Extent& extent) {
  Mapping mapping;
  // Halves first: the sum of two huge coordinates has no finite value.
  mapping.origin_x = extent.min_x / 2 + extent.max_x / 2;
  mapping.origin_y = extent.min_y / 2 + extent.max_y / 2;
  const double half_width = extent.max_x / 2 - extent.min_x / 2;
  const double half_height = extent.max_y / 2 - extent.min_y / 2;
  const double half = std::max(half_width, half_height);
  mapping.scale = half_side / (half > 0.0 ? half : 1.0);
  mapping.scale = std::min(mapping.scale, std::numeric_limits<double>::max());
  return mapping;
}

std::int32_t nearest_logical(double value) {
  constexpr double lowest = std::numeric_limits<std::int32_t>::min();
  constexpr double highest = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::nearbyint(std::clamp(value, lowest, highest)));
}

DL::PointTemplate<long> Mapping::to_logical(double x, double y) const {
  return {nearest_logical(logical_x(x)), nearest_logical(logical_y(y))};
}

}  // namespace importers
