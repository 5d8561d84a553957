#pragma once

#include <agg_basics.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

#include "lumen/geometry/pixel_rectangle_p.h"

namespace lumen {

/// Calls `run(x, y, length)` for every row of the area: the pixels that come
/// within `reach` of a convex polygon, each way, along rows and columns.
/// Coordinates may be any that a device point can have.
class ConvexRows {
 public:
  ConvexRows(std::span<const agg::point_d> corners, double reach)
      : m_corners(corners), m_reach(reach) {}

  template <class Run>
  void sweep(const PixelRectangle& area, const Run& run) const {
    double low = std::numeric_limits<double>::max();
    double high = std::numeric_limits<double>::lowest();
    for (const agg::point_d& corner : m_corners) {
      low = std::min(low, corner.y);
      high = std::max(high, corner.y);
    }
    const std::int32_t last = at_most(high + m_reach, area.min_y - 1, area.max_y);
    for (std::int32_t y = at_least(low - m_reach, area.min_y, area.max_y + 1); y <= last; ++y) {
      const Extent extent = extent_of(y);
      const std::int32_t from = at_least(extent.left - m_reach, area.min_x, area.max_x + 1);
      const std::int32_t to = at_most(extent.right + m_reach, area.min_x - 1, area.max_x);
      if (from <= to) run(from, y, to - from + 1);
    }
  }

 private:
  struct Extent {
    double left = std::numeric_limits<double>::max();
    double right = std::numeric_limits<double>::lowest();

    void add(double x) {
      left = std::min(left, x);
      right = std::max(right, x);
    }
  };

  static std::int32_t at_least(double value, std::int32_t min, std::int32_t max) {
    return static_cast<std::int32_t>(
        std::clamp(std::ceil(value), double{1} * min, double{1} * max));
  }
  static std::int32_t at_most(double value, std::int32_t min, std::int32_t max) {
    return static_cast<std::int32_t>(
        std::clamp(std::floor(value), double{1} * min, double{1} * max));
  }

  /// How far the polygon extends within reach of the row.
  [[nodiscard]] Extent extent_of(std::int32_t y) const {
    Extent extent;
    const agg::point_d* previous = &m_corners.back();
    for (const agg::point_d& corner : m_corners) {
      add_edge(*previous, corner, y, extent);
      previous = &corner;
    }
    return extent;
  }

  void add_edge(const agg::point_d& a, const agg::point_d& b, std::int32_t y,
                Extent& extent) const {
    const agg::point_d& upper = a.y < b.y ? a : b;
    const agg::point_d& lower = a.y < b.y ? b : a;
    const double from = std::max(upper.y, y - m_reach);
    const double to = std::min(lower.y, y + m_reach);
    if (from > to) return;
    const double slope = upper.y < lower.y ? (lower.x - upper.x) / (lower.y - upper.y) : 0;
    extent.add(from > upper.y ? upper.x + (from - upper.y) * slope : upper.x);
    extent.add(to < lower.y ? upper.x + (to - upper.y) * slope : lower.x);
  }

  std::span<const agg::point_d> m_corners;
  double m_reach;
};

}  // namespace lumen
