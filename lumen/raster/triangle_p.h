#pragma once

#include <agg_basics.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "displaylist/platform/points.h"
#include "lumen/geometry/pixel_rectangle_p.h"
#include "lumen/raster/color_mix_p.h"

namespace lumen {

/// A triangle of device points, any coordinates, and where a pixel lies
/// between its corners.
class Triangle {
 public:
  /// Of three points that follow each other.
  explicit Triangle(const LM_DCI_Point* points) {
    for (std::size_t i = 0; i < 3; ++i) m_corners[i] = agg::point_d(points[i].x, points[i].y);
    const auto& [a, b, c] = m_corners;
    m_area = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
    m_step_a = (b.y - c.y) / m_area;
    m_step_b = (c.y - a.y) / m_area;
  }

  /// Twice the area, negative when the corners run counter-clockwise on a
  /// picture. 0 as well where a double cannot tell.
  [[nodiscard]] double area() const { return m_area; }
  [[nodiscard]] const std::array<agg::point_d, 3>& corners() const { return m_corners; }

  /// Whether pixels of the area may be within a pixel of the triangle.
  [[nodiscard]] bool is_near(const PixelRectangle& area) const {
    const auto [left, right] = std::minmax({m_corners[0].x, m_corners[1].x, m_corners[2].x});
    const auto [top, bottom] = std::minmax({m_corners[0].y, m_corners[1].y, m_corners[2].y});
    return left <= area.max_x + 1.0 && right >= area.min_x - 1.0 && top <= area.max_y + 1.0 &&
           bottom >= area.min_y - 1.0;
  }

  /// Calls `put(i, weights)` for the pixels (x + i, y), i from 0 up to
  /// `length`. Outside the triangle it is the weights of a place on its edge.
  /// There has to be an area.
  template <class Put>
  void walk(std::int32_t x, std::int32_t y, std::int32_t length, const Put& put) const {
    const double first_a = share(m_corners[1], m_corners[2], x, y);
    const double first_b = share(m_corners[2], m_corners[0], x, y);
    for (std::int32_t i = 0; i < length; ++i) {
      put(i, within(first_a + i * m_step_a, first_b + i * m_step_b));
    }
  }

 private:
  /// What the corner across from the edge has of the pixel. Relative to the
  /// pixel, where far corners cost no digits that matter.
  [[nodiscard]] double share(const agg::point_d& from, const agg::point_d& to, std::int32_t x,
                             std::int32_t y) const {
    return ((from.x - x) * (to.y - y) - (from.y - y) * (to.x - x)) / m_area;
  }

  static Weights within(double a, double b) {
    const double c = 1 - a - b;
    if (a >= 0 && b >= 0 && c >= 0) return {a, b, c};
    a = std::max(a, 0.0);
    b = std::max(b, 0.0);
    const double sum = a + b + std::max(c, 0.0);
    return {a / sum, b / sum, std::max(c, 0.0) / sum};
  }

  std::array<agg::point_d, 3> m_corners;
  double m_area = 0;
  double m_step_a = 0;
  double m_step_b = 0;
};

}  // namespace lumen
