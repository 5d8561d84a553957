#include "lumen/vector/vector_stroke_p.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

#include "lumen/geometry/line_pattern_p.h"
#include "lumen/vector/vector_color_p.h"
#include "lumen/vector/vector_segment_p.h"

namespace lumen {
namespace {

cairo_line_cap_t cap_of(std::int32_t end_style) {
  switch (end_style) {
    case LM_END_ROUND:
      return CAIRO_LINE_CAP_ROUND;
    case LM_END_SQUARE:
      return CAIRO_LINE_CAP_SQUARE;
    default:
      return CAIRO_LINE_CAP_BUTT;
  }
}

/// How far the flat end of a line reaches beyond its point.
constexpr double flat_reach = 0.5;

bool has_common_cap(const LM_Line_Style& style) {
  return cap_of(style.start_style) == cap_of(style.end_style);
}

/// A line along the tangent, from `place` or, with a negative reach, to it;
/// none without reach.
void add_tangent(cairo_t* cairo, const PagePoint& place, const Place& direction, double reach) {
  const double part = reach / std::hypot(direction.x, direction.y);
  if (reach != 0) {
    cairo_line_to(cairo, place.x + part * direction.x, place.y + part * direction.y);
  }
}

}  // namespace

void VectorStroker::stroke(std::int32_t count, const LM_DCI_Point* points,
                           const LM_Line_Style& style, LM_RGB32 color) {
  take(count, points);
  draw_path(style, color);
}

void VectorStroker::stroke(const EllipticalArc& arc, const LM_Line_Style& style, LM_RGB32 color) {
  if (arc.is_flat()) return stroke_flat(arc, false, style, color);
  set_style(style);
  if (!is_inside(arc, m_box)) {
    m_path.clear();
    add_points(arc, m_box, m_path);
    return draw_path(style, color);
  }
  m_page.set_ink(color);
  cairo_t* cairo = m_page.cairo();
  if (arc.is_whole()) {
    add_curves(cairo, arc);
    cairo_close_path(cairo);
    return cairo_stroke(cairo);
  }
  draw_arc(arc, style, color);
}

void VectorStroker::stroke_flat(const EllipticalArc& arc, bool with_center,
                                const LM_Line_Style& style, LM_RGB32 color) {
  m_path.clear();
  for (const Place& place : arc.ends_of_flat(with_center)) m_path.push_back(page_point(place));
  draw_path(style, color);
}

void VectorStroker::draw_arc(const EllipticalArc& arc, const LM_Line_Style& style, LM_RGB32 color) {
  const bool is_capped = has_common_cap(style);
  const End start = end_of(style.start_style, is_capped);
  const End end = end_of(style.end_style, is_capped);
  const double last_angle = arc.start() + arc.sweep();
  const PagePoint first = page_point(arc.at(arc.start()));
  const PagePoint last = page_point(arc.at(last_angle));
  draw_with_disc(disc_of(start, first, end, last), color, [&] {
    cairo_t* cairo = m_page.cairo();
    add_tangent(cairo, first, arc.direction_at(arc.start()), -start.reach);
    add_curves(cairo, arc);
    add_tangent(cairo, last, arc.direction_at(last_angle), end.reach);
    cairo_stroke(cairo);
  });
}

void VectorStroker::draw_path(const LM_Line_Style& style, LM_RGB32 color) {
  set_style(style);
  m_page.set_ink(color);
  if (!has_length()) return draw_dot(style.start_style);
  if (is_closed()) return draw_line(true);

  const bool is_capped = has_common_cap(style);
  const End start = end_of(style.start_style, is_capped);
  const End end = end_of(style.end_style, is_capped);
  lengthen(start.reach, end.reach);
  const PagePoint first = m_path.front();
  const PagePoint last = m_path.back();
  draw_with_disc(disc_of(start, first, end, last), color, [this] { draw_line(false); });
}

const PagePoint* VectorStroker::disc_of(const End& start, const PagePoint& first, const End& end,
                                        const PagePoint& last) {
  if (start.has_disc) return &first;
  return end.has_disc ? &last : nullptr;
}

template <class Draw>
void VectorStroker::draw_with_disc(const PagePoint* center, LM_RGB32 color, Draw draw) {
  if (center == nullptr) return draw();
  m_page.lay(opacity_of(color), [&] {
    m_page.set_ink(opaque(color));
    draw();
    draw_disc(*center);
  });
}

void VectorStroker::stroke(const MarkerGeometry& marker, const PagePoint& place,
                           std::int32_t weight) {
  LM_Line_Style style;
  style.weight = marker.has_weight() ? weight : 1;
  set_style(style);
  for (const MarkerStroke& stroke : marker.strokes()) {
    m_path.clear();
    for (const LM_DCI_Point& point :
         std::span(stroke.points).first(static_cast<std::size_t>(stroke.count))) {
      m_path.push_back({place.x + point.x, place.y + point.y});
    }
    if (!has_length()) return draw_dot(style.start_style);
    const bool closed = is_closed();
    if (!closed) lengthen(flat_reach, flat_reach);
    add_line(closed);
  }
  cairo_stroke(m_page.cairo());
}

void VectorStroker::set_style(const LM_Line_Style& style) {
  m_width = std::clamp(style.weight, 1, max_line_width);
  const auto lengths = pattern_lengths(style.pattern);
  std::transform(lengths.begin(), lengths.end(), m_lengths.begin(),
                 [this](std::uint8_t length) { return length * m_width; });
  m_dashes = std::span(m_lengths).first(lengths.size());
  m_box = m_page.box(m_width / 2);
  cairo_set_line_width(m_page.cairo(), m_width);
  cairo_set_line_cap(m_page.cairo(),
                     has_common_cap(style) ? cap_of(style.start_style) : CAIRO_LINE_CAP_BUTT);
  set_dash_offset(0);
}

double VectorStroker::pattern_length() const {
  return std::accumulate(m_dashes.begin(), m_dashes.end(), 0.0);
}

void VectorStroker::set_dash_offset(double distance) {
  cairo_set_dash(m_page.cairo(), m_dashes.data(), static_cast<int>(m_dashes.size()),
                 is_solid() ? 0 : std::fmod(distance, pattern_length()));
}

bool VectorStroker::is_closed() const {
  return is_solid() && m_path.size() > 3 && same_place(m_path.front(), m_path.back());
}

VectorStroker::End VectorStroker::end_of(std::int32_t end_style, bool is_capped) const {
  if (!is_solid()) return {};
  switch (cap_of(end_style)) {
    case CAIRO_LINE_CAP_ROUND:
      return {0, !is_capped};
    case CAIRO_LINE_CAP_SQUARE:
      return {is_capped ? 0 : m_width / 2, false};
    default:
      return {flat_reach, false};
  }
}

void VectorStroker::take(std::int32_t count, const LM_DCI_Point* points) {
  m_path.clear();
  for (std::int32_t i = 0; i < count; ++i) m_path.push_back(page_point(points[i]));
}

bool VectorStroker::has_length() const {
  return std::any_of(m_path.begin(), m_path.end(),
                     [this](const PagePoint& point) { return !same_place(point, m_path[0]); });
}

void VectorStroker::lengthen(double start, double end) {
  const auto move = [](PagePoint& last, const PagePoint& next, double reach) {
    last = between(last, next, -reach / distance_between(last, next));
  };
  const auto elsewhere = [](const PagePoint& from) {
    return [&from](const PagePoint& point) { return !same_place(point, from); };
  };
  if (start != 0) {
    PagePoint& first = m_path.front();
    move(first, *std::find_if(m_path.begin(), m_path.end(), elsewhere(first)), start);
  }
  if (end != 0) {
    PagePoint& last = m_path.back();
    move(last, *std::find_if(m_path.rbegin(), m_path.rend(), elsewhere(last)), end);
  }
}

void VectorStroker::draw_dot(std::int32_t start_style) {
  const PagePoint& center = m_path.front();
  if (start_style == LM_END_ROUND) return draw_disc(center);
  if (!m_box.contains(center)) return;
  cairo_rectangle(m_page.cairo(), center.x - m_width / 2, center.y - m_width / 2, m_width, m_width);
  cairo_fill(m_page.cairo());
}

void VectorStroker::draw_disc(const PagePoint& center) {
  if (!m_box.contains(center)) return;
  cairo_new_sub_path(m_page.cairo());
  cairo_arc(m_page.cairo(), center.x, center.y, m_width / 2, 0, 2 * std::numbers::pi);
  cairo_fill(m_page.cairo());
}

void VectorStroker::draw_line(bool closed) {
  if (!std::all_of(m_path.begin(), m_path.end(), in_box())) return draw_cut_line(closed);
  add_line(closed);
  cairo_stroke(m_page.cairo());
}

void VectorStroker::add_line(bool closed) {
  cairo_t* cairo = m_page.cairo();
  cairo_new_sub_path(cairo);
  for (const PagePoint& point : m_path) cairo_line_to(cairo, point.x, point.y);
  if (closed) cairo_close_path(cairo);
}

void VectorStroker::draw_cut_line(bool closed) {
  cairo_t* cairo = m_page.cairo();
  if (closed) {
    // Its start and end come out joined if they are out of sight.
    m_path.pop_back();
    std::rotate(m_path.begin(), std::find_if_not(m_path.begin(), m_path.end(), in_box()),
                m_path.end());
    m_path.push_back(m_path.front());
  }
  double distance = 0;
  bool goes_on = false;
  for (std::size_t i = 0; i + 1 < m_path.size(); ++i) {
    const PagePoint& from = m_path[i];
    const PagePoint& to = m_path[i + 1];
    const double length = distance_between(from, to);
    const SegmentPart part = part_inside(m_box, from, to);
    if (!part.is_empty()) {
      const PagePoint first = between(from, to, part.first);
      const PagePoint last = between(from, to, part.last);
      if (!goes_on && !is_solid()) {
        cairo_stroke(cairo);
        set_dash_offset(distance + part.first * length);
      }
      if (!goes_on) cairo_move_to(cairo, first.x, first.y);
      cairo_line_to(cairo, last.x, last.y);
    }
    goes_on = !part.is_empty() && part.last == 1;
    distance += length;
  }
  cairo_stroke(cairo);
}

}  // namespace lumen
