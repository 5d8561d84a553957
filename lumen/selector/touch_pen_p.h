#pragma once

#include <algorithm>
#include <cstdint>

#include "displaylist/platform/contour_set.h"
#include "displaylist/platform/points.h"
#include "lumen/geometry/elliptical_arc_p.h"
#include "lumen/geometry/pixel_rectangle_p.h"

namespace lumen {

/// Where touches are looked for: pixels inside a rectangle and a complex clip.
///
/// What fills shapes does so near the origin only. Therefore areas far from it
/// are moved there; those that can be in a picture stay, so that rounding is
/// that of drawing.
class TouchArea {
 public:
  /// Sides are at most Picture::max_side long. The clip may be null and
  /// outlives the object.
  TouchArea(const PixelRectangle& inside, const LM_Contour_Set_Data* clip)
      : m_inside(inside), m_clip(clip), m_x(origin(inside.min_x)), m_y(origin(inside.min_y)) {}

  /// The same area, not moved: for what can be done anywhere.
  [[nodiscard]] TouchArea left_in_place() const {
    TouchArea area = *this;
    area.m_x = 0;
    area.m_y = 0;
    return area;
  }

  [[nodiscard]] const PixelRectangle& inside() const { return m_inside; }
  [[nodiscard]] bool has_clip() const { return m_clip != nullptr; }
  /// Whether the complex clip, if there is one, encloses a pixel.
  [[nodiscard]] bool is_clear(std::int32_t x, std::int32_t y) const {
    return m_clip == nullptr || m_clip->point_inside(x, y);
  }

  [[nodiscard]] PixelRectangle moved_inside() const {
    return {m_inside.min_x - m_x, m_inside.min_y - m_y, m_inside.max_x - m_x, m_inside.max_y - m_y};
  }
  /// Any point, moved like the rectangle.
  [[nodiscard]] Place moved(const LM_DCI_Point& point) const {
    return {double{1} * point.x - m_x, double{1} * point.y - m_y};
  }
  /// The same for points that are at most 2^31 + 2^20 pixels off.
  [[nodiscard]] LM_DCI_Point moved_pixel(const LM_DCI_Point& point) const {
    return {static_cast<std::int32_t>(std::int64_t{point.x} - m_x),
            static_cast<std::int32_t>(std::int64_t{point.y} - m_y), 0};
  }
  /// Moves a pixel of the moved rectangle back.
  [[nodiscard]] bool is_moved_clear(std::int32_t x, std::int32_t y) const {
    return is_clear(x + m_x, y + m_y);
  }

 private:
  /// How far a coordinate is moved: not at all up to `near`, else there. The
  /// stretch leaves room for points that are further off than 2^31.
  static std::int32_t origin(std::int32_t coordinate) {
    constexpr std::int32_t near = 3 << 19;
    return coordinate - std::clamp(coordinate, -near, near);
  }

  PixelRectangle m_inside;
  const LM_Contour_Set_Data* m_clip;
  std::int32_t m_x;
  std::int32_t m_y;
};

/// The pen that marks nothing and remembers that it was asked to, for runs of
/// the moved rectangle.
class TouchPen {
 public:
  /// The area outlives the pen.
  explicit TouchPen(const TouchArea& area) : m_area(area) {}

  void solid(std::int32_t x, std::int32_t y, std::int32_t length, std::uint32_t /*cover*/) {
    for (std::int32_t i = 0; i < length && !m_touched; ++i) {
      m_touched = m_area.is_moved_clear(x + i, y);
    }
  }
  void varied(std::int32_t x, std::int32_t y, std::int32_t length, const std::uint8_t* /*covers*/) {
    solid(x, y, length, 255);
  }

  [[nodiscard]] bool touched() const { return m_touched; }

 private:
  const TouchArea& m_area;
  bool m_touched = false;
};

}  // namespace lumen
