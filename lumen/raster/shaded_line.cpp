#include "lumen/raster/shaded_line_p.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <span>

#include "lumen/raster/color_mix_p.h"
#include "lumen/raster/convex_rows_p.h"
#include "lumen/raster/span_pen_p.h"

namespace lumen {
namespace {

/// How much further than half their width strokes may touch pixels: more than
/// half the diagonal of a pixel, and the blur of a smooth line.
constexpr double blur = 1;

/// A segment that has a length, with its colours.
class Segment {
 public:
  Segment(agg::point_d from, agg::point_d to, ColorRamp ramp)
      : m_from(from),
        m_along_x(to.x - from.x),
        m_along_y(to.y - from.y),
        m_length(std::hypot(m_along_x, m_along_y)),
        m_scale(1 / (m_length * m_length)),
        m_ramp(ramp) {}

  /// The corners of the rectangle that reaches so far around the segment.
  [[nodiscard]] std::array<agg::point_d, 4> around(double reach) const {
    const double scale = reach / m_length;
    const double x = m_along_x * scale;
    const double y = m_along_y * scale;
    const double end_x = m_from.x + m_along_x;
    const double end_y = m_from.y + m_along_y;
    return {agg::point_d(m_from.x - x - y, m_from.y - y + x),
            agg::point_d(m_from.x - x + y, m_from.y - y - x),
            agg::point_d(end_x + x + y, end_y + y - x), agg::point_d(end_x + x - y, end_y + y + x)};
  }

  /// The nearest place to a pixel: how far along the segment, from 0 to 1, and
  /// the square of its distance.
  struct Nearest {
    double part;
    float distance;
  };
  [[nodiscard]] Nearest nearest(std::int32_t x, std::int32_t y) const {
    const double off_x = x - m_from.x;
    const double off_y = y - m_from.y;
    const double part = std::clamp((off_x * m_along_x + off_y * m_along_y) * m_scale, 0.0, 1.0);
    const double rest_x = off_x - part * m_along_x;
    const double rest_y = off_y - part * m_along_y;
    return {part, static_cast<float>(rest_x * rest_x + rest_y * rest_y)};
  }
  [[nodiscard]] std::uint32_t color(double part) const { return m_ramp.at(part); }

 private:
  agg::point_d m_from;
  double m_along_x;
  double m_along_y;
  double m_length;
  double m_scale;
  ColorRamp m_ramp;
};

bool has_length(std::int32_t count, const LM_DCI_Point* points) {
  return std::any_of(points, points + count, [points](const LM_DCI_Point& point) {
    return point.x != points[0].x || point.y != points[0].y;
  });
}

void paint_segment(const Segment& segment, double reach, const ColorRows& rows,
                   std::span<float> distances) {
  ConvexRows(segment.around(reach), 0)
      .sweep(rows.area, [&](std::int32_t x, std::int32_t y, std::int32_t length) {
        const std::ptrdiff_t first = rows.index(x, y);
        for (std::int32_t i = 0; i < length; ++i) {
          const auto [part, distance] = segment.nearest(x + i, y);
          std::uint32_t& word = rows.words[first + i];
          float& known = distances[static_cast<std::size_t>(first + i)];
          if (word != unpainted && known <= distance) continue;
          word = painted(segment.color(part));
          known = distance;
        }
      });
}

}  // namespace

void ShadedLine::draw_stroke(const ShadingTarget& target, std::int32_t count,
                             const LM_DCI_Point* points, const LM_RGB32* colors,
                             const LM_Line_Style& style, Stroker& stroker) {
  m_shape.clear();
  stroker.add(count, points, style, target.inside, m_shape);
  if (!has_length(count, points)) {
    SpanPen whole_pen(target.picture, colors[count - 1], target.mask);
    RowPen pen(whole_pen, target.rows);
    return m_shape.fill(LM_Fill_Rule::non_zero, target.antialiased, target.inside, pen);
  }
  draw(target, count, points, colors, {Stroker::width_of(style) / 2 + blur, stroker.offset()},
       [&](const PixelRectangle& band, LayerPen& pen) {
         m_shape.fill(LM_Fill_Rule::non_zero, target.antialiased, band, pen);
       });
}

void ShadedLine::draw_smooth(const ShadingTarget& target, std::int32_t count,
                             const LM_DCI_Point* points, const LM_RGB32* colors,
                             SmoothLine& smooth_line) {
  draw(target, count, points, colors, {0.5 + blur, 0},
       [&](const PixelRectangle& band, LayerPen& pen) {
         smooth_line.draw(count, points, band, pen);
       });
}

template <class Cover>
void ShadedLine::draw(const ShadingTarget& target, std::int32_t count, const LM_DCI_Point* points,
                      const LM_RGB32* colors, const Stripe& stripe, const Cover& cover) {
  // The corner of a square end is the furthest from its point.
  const double reach = stripe.reach * std::numbers::sqrt2 + 1;
  const PixelRectangle box = box_around(count, points, reach, target.inside);
  for_each_band(box, [&](const PixelRectangle& band) {
    const PixelRectangle part = target.rows.part_of(band);
    if (part.is_empty()) return;
    const ColorRows rows = m_layer.clear(part);
    paint(count, points, colors, stripe, rows);
    LayerPen pen(target.picture, rows, target.mask);
    cover(band, pen);
  });
}

void ShadedLine::paint(std::int32_t count, const LM_DCI_Point* points, const LM_RGB32* colors,
                       const Stripe& stripe, const ColorRows& rows) {
  const std::int32_t height = rows.area.max_y - rows.area.min_y + 1;
  const std::size_t pixels =
      static_cast<std::size_t>(rows.pitch) * static_cast<std::size_t>(height);
  if (m_distances.size() < pixels) m_distances.resize(pixels);
  const auto place = [&](const LM_DCI_Point& point) {
    return agg::point_d(point.x + stripe.offset, point.y + stripe.offset);
  };
  for (std::int32_t i = 1; i < count; ++i) {
    if (points[i].x == points[i - 1].x && points[i].y == points[i - 1].y) continue;
    const Segment segment(place(points[i - 1]), place(points[i]),
                          ColorRamp(colors[i - 1], colors[i]));
    paint_segment(segment, stripe.reach, rows, m_distances);
  }
}

}  // namespace lumen
