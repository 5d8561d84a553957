#pragma once

#include <cstdint>

#include "displaylist/core/geometry.h"

namespace importers {

/// A rectangle in drawing coordinates, inclusive; as constructed it is empty.
struct Extent {
  double min_x = 1.0;
  double min_y = 1.0;
  double max_x = 0.0;
  double max_y = 0.0;

  [[nodiscard]] bool is_empty() const { return min_x > max_x || min_y > max_y; }
  [[nodiscard]] double width() const { return max_x - min_x; }
  [[nodiscard]] double height() const { return max_y - min_y; }
  /// Whether the two share at least a border point.
  [[nodiscard]] bool meets(const Extent& other) const;
  void widen(double x, double y);

  friend bool operator==(const Extent&, const Extent&) = default;
};

/// The nearest logical coordinate, saturated.
[[nodiscard]] std::int32_t nearest_logical(double value);

/// How drawing coordinates become logical ones: logical = (drawing - origin) *
/// scale, the same scale on both axes, y upward in both.
struct Mapping {
  /// Where the longer side of a drawing ends in logical coordinates. As much
  /// again is free around it, for windows that look beyond the drawing.
  static constexpr double half_side = 1 << 30;

  double origin_x = 0.0;
  double origin_y = 0.0;
  double scale = 1.0;

  /// Centres the extent, which is finite and not empty, and makes its longer
  /// side two half_sides long. An extent without any size counts as two units
  /// wide, so that a single point can be looked at like a small drawing.
  static Mapping fitting(const Extent& extent);

  [[nodiscard]] double logical_x(double x) const { return (x - origin_x) * scale; }
  [[nodiscard]] double logical_y(double y) const { return (y - origin_y) * scale; }
  /// To the nearest logical point, saturated.
  [[nodiscard]] DL::PointTemplate<long> to_logical(double x, double y) const;
};

}  // namespace importers
