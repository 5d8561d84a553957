#include "lumen/raster/smooth_line_p.h"

#include <algorithm>
#include <cstdlib>

namespace lumen {
namespace {

bool is_closed(std::int32_t count, const LM_DCI_Point* points) {
  const LM_DCI_Point& last = points[count - 1];
  return count > 3 && points[0].x == last.x && points[0].y == last.y;
}

/// Whether there are three points of which each two are 3 pixels apart or more:
/// the library merges points up to 1.5 pixels apart, and draws nothing of a
/// closed polyline of which fewer than three are left.
bool has_three_corners(std::int32_t count, const LM_DCI_Point* points) {
  const auto distance = [](const LM_DCI_Point& a, const LM_DCI_Point& b) {
    const std::int64_t x = std::int64_t{a.x} - b.x;
    const std::int64_t y = std::int64_t{a.y} - b.y;
    return x * x + y * y;
  };
  const LM_DCI_Point& first = points[0];
  const LM_DCI_Point& farthest =
      *std::max_element(points, points + count, [&](const LM_DCI_Point& a, const LM_DCI_Point& b) {
        return distance(first, a) < distance(first, b);
      });
  return std::any_of(points, points + count, [&](const LM_DCI_Point& point) {
    return distance(first, point) >= 9 && distance(farthest, point) >= 9;
  });
}

}  // namespace

SmoothLine::SmoothLine() : m_renderer(m_target, m_profile), m_rasterizer(m_renderer) {
  // No wider blur than the pixel that the line itself is wide.
  m_profile.smoother_width(1.0);
  m_profile.width(1.0);
}

bool SmoothLine::can_draw(std::int32_t count, const LM_DCI_Point* points) {
  constexpr std::int32_t far = 1 << 18;
  LM_Clip_Rectangle box{far, -far, far, -far};
  for (std::int32_t i = 0; i < count; ++i) {
    box.min_x = std::min(box.min_x, points[i].x);
    box.max_x = std::max(box.max_x, points[i].x);
    box.min_y = std::min(box.min_y, points[i].y);
    box.max_y = std::max(box.max_y, points[i].y);
  }
  if (box.min_x < -far || box.max_x > far || box.min_y < -far || box.max_y > far) return false;
  if (is_closed(count, points)) return has_three_corners(count, points);
  return box.max_x - box.min_x > 2 || box.max_y - box.min_y > 2;
}

std::int32_t SmoothLine::margin_of(std::int32_t count, const LM_DCI_Point* points) {
  std::int32_t longest = 0;
  for (std::int32_t i = 1; i < count; ++i) {
    longest = std::max({longest, std::abs(points[i].x - points[i - 1].x),
                        std::abs(points[i].y - points[i - 1].y)});
  }
  return std::min(longest + static_cast<std::int32_t>(2 * reach), whole_margin);
}

void SmoothLine::draw(std::int32_t count, const LM_DCI_Point* points, const PixelRectangle& inside,
                      std::int32_t margin) {
  // The library cuts lines at right angles to their direction: beyond the
  // rectangle, where the target drops what nobody is to see.
  m_renderer.clip_box(inside.min_x - margin, inside.min_y - margin, inside.max_x + margin,
                      inside.max_y + margin);
  const bool closed = is_closed(count, points);
  m_rasterizer.move_to_d(points[0].x + 0.5, points[0].y + 0.5);
  for (std::int32_t i = 1; i < (closed ? count - 1 : count); ++i) {
    m_rasterizer.line_to_d(points[i].x + 0.5, points[i].y + 0.5);
  }
  m_rasterizer.render(closed);
}

void SmoothLine::Target::blend_solid_hspan(int x, int y, int length, const color_type& /*color*/,
                                           const agg::int8u* covers) const {
  if (y < m_inside.min_y || y > m_inside.max_y) return;
  const int from = std::max(x, m_inside.min_x);
  const int beyond = std::min(x + length, m_inside.max_x + 1);
  if (from < beyond) m_varied(m_pen, from, y, beyond - from, covers + (from - x));
}

void SmoothLine::Target::blend_solid_vspan(int x, int y, int length, const color_type& /*color*/,
                                           const agg::int8u* covers) const {
  if (x < m_inside.min_x || x > m_inside.max_x) return;
  const int from = std::max(y, m_inside.min_y);
  const int beyond = std::min(y + length, m_inside.max_y + 1);
  for (int row = from; row < beyond; ++row) m_varied(m_pen, x, row, 1, covers + (row - y));
}

}  // namespace lumen
