#include "lumen/geometry/stroker_p.h"

#include <agg_clip_liang_barsky.h>

#include <algorithm>
#include <cmath>

#include "lumen/geometry/line_pattern_p.h"

namespace lumen {
namespace {

/// Wider lines than this would leave the coordinates that AGG can hold.
constexpr std::int32_t max_weight = 1 << 20;

std::int32_t weight_of(const LM_Line_Style& style) {
  return std::clamp(style.weight, 1, max_weight);
}

agg::line_cap_e cap_of(std::int32_t end_style) {
  switch (end_style) {
    case LM_END_ROUND:
      return agg::round_cap;
    case LM_END_SQUARE:
      return agg::square_cap;
    default:
      return agg::butt_cap;
  }
}

agg::point_d place_of(const LM_DCI_Point& point) {
  return {static_cast<double>(point.x), static_cast<double>(point.y)};
}

agg::point_d place_of(const Place& place) {
  return {place.x, place.y};
}

agg::rect_d grown(const PixelRectangle& inside, double margin) {
  return {inside.min_x - margin, inside.min_y - margin, inside.max_x + margin,
          inside.max_y + margin};
}

bool contains(const agg::rect_d& box, const agg::point_d& point) {
  return box.x1 <= point.x && point.x <= box.x2 && box.y1 <= point.y && point.y <= box.y2;
}

template <class Point>
bool same_place(const Point& a, const Point& b) {
  return a.x == b.x && a.y == b.y;
}

double distance_between(const agg::point_d& a, const agg::point_d& b) {
  return agg::calc_distance(a.x, a.y, b.x, b.y);
}

/// The corners of a polyline in the order in which it is cut. A closed solid
/// one starts at a corner that is out of sight, so that its own start and end
/// come out joined like any other corner.
template <class Point>
class CornerOrder {
 public:
  CornerOrder(std::int32_t count, const Point* points, const agg::rect_d& box, bool solid)
      : m_points(points) {
    if (!solid || count < 4 || !same_place(points[0], points[count - 1])) return;
    m_cycle = count - 1;
    while (m_start < m_cycle && contains(box, place_of(points[m_start]))) ++m_start;
  }

  [[nodiscard]] agg::point_d corner(std::int32_t index) const {
    if (m_cycle == 0) return place_of(m_points[index]);
    const std::int64_t turned = (std::int64_t{m_start} + index) % m_cycle;
    return place_of(m_points[turned]);
  }

 private:
  const Point* m_points;
  std::int32_t m_cycle = 0;  ///< corners of a closed polyline, 0 for an open one
  std::int32_t m_start = 0;
};

}  // namespace

Stroker::Stroker() {
  // Where a line turns more sharply than it is wide, its inner edge turns
  // inside out and would leave a hole; by way of the corners it does not.
  m_math.inner_join(agg::inner_jag);
}

void Stroker::add(std::int32_t count, const LM_DCI_Point* points, const LM_Line_Style& style,
                  const PixelRectangle& inside, Shape& shape) {
  set_style(style);
  add_styled(count, points, inside, shape);
}

void Stroker::add(std::int32_t count, const Place* points, const LM_Line_Style& style,
                  const PixelRectangle& inside, Shape& shape) {
  set_style(style);
  add_styled(count, points, inside, shape);
}

double Stroker::width_of(const LM_Line_Style& style) {
  return weight_of(style);
}

template <class Point>
void Stroker::add_styled(std::int32_t count, const Point* points, const PixelRectangle& inside,
                         Shape& shape) {
  const bool has_length = std::any_of(points, points + count,
                                      [&](const Point& p) { return !same_place(p, points[0]); });
  if (!has_length) return add_dot(place_of(points[0]), shape);
  add_clipped(count, points, inside, shape);
}

void Stroker::set_style(const LM_Line_Style& style) {
  const std::int32_t weight = weight_of(style);
  m_math.width(weight);
  m_math.line_join(weight > 1 ? agg::round_join : agg::bevel_join);
  m_offset = weight % 2 == 0 ? -0.5 : 0;
  m_start_cap = cap_of(style.start_style);
  m_end_cap = cap_of(style.end_style);

  m_dash.remove_all_dashes();
  m_pattern_length = 0;
  const auto lengths = pattern_lengths(style.pattern);
  for (std::size_t i = 0; i + 1 < lengths.size(); i += 2) {
    m_dash.add_dash(lengths[i] * weight, lengths[i + 1] * weight);
    m_pattern_length += (lengths[i] + lengths[i + 1]) * weight;
  }
}

template <class Point>
void Stroker::add_clipped(std::int32_t count, const Point* points, const PixelRectangle& inside,
                          Shape& shape) {
  // A solid line is cut so far outside that rounding the cuts moves nothing in
  // the rectangle; of a patterned one no dash more is made than can be seen.
  const bool solid = m_pattern_length == 0;
  const double margin = m_math.width() + (solid ? solid_margin : 16);
  const agg::rect_d box = grown(inside, margin);
  const agg::rect_d tolerant_box = grown(inside, margin + 1);
  const CornerOrder<Point> order(count, points, box, solid);
  double distance = 0;
  double piece_distance = 0;
  m_piece.clear();
  for (std::int32_t i = 1; i < count; ++i) {
    const agg::point_d from = order.corner(i - 1);
    const agg::point_d to = order.corner(i);
    agg::point_d first = from;
    agg::point_d last = to;
    const unsigned cuts = agg::clip_line_segment(&first.x, &first.y, &last.x, &last.y, box);
    const bool visible = cuts < 4 && contains(tolerant_box, first) && contains(tolerant_box, last);
    if (visible && m_piece.empty()) {
      piece_distance = distance + distance_between(from, first);
      m_piece.push_back(first);
    }
    if (visible) m_piece.push_back(last);
    if (!visible || (cuts & 2) != 0) {
      add_piece(piece_distance, shape);
      m_piece.clear();
    }
    if (!solid) distance += distance_between(from, to);
  }
  add_piece(piece_distance, shape);
}

void Stroker::add_piece(double distance, Shape& shape) {
  if (m_piece.size() < 2) return;
  if (m_pattern_length != 0) return add_dashes(distance, shape);
  const agg::point_d& first = m_piece.front();
  const agg::point_d& last = m_piece.back();
  const bool closed = m_piece.size() > 3 && first.x == last.x && first.y == last.y;
  if (closed) m_piece.pop_back();
  m_path.remove_all();
  for (const agg::point_d& point : m_piece) m_path.add({point.x, point.y});
  add_path(closed, {true, true}, shape);
}

void Stroker::add_dashes(double distance, Shape& shape) {
  m_dash.dash_start(std::fmod(distance, m_pattern_length));
  m_dash.remove_all();
  for (const agg::point_d& point : m_piece) {
    m_dash.add_vertex(point.x, point.y,
                      &point == m_piece.data() ? agg::path_cmd_move_to : agg::path_cmd_line_to);
  }
  m_dash.rewind(0);
  // The first dash starts where the piece does, even if it is left out; so
  // with the last one and its end.
  LineEnds ends{true, false};
  m_path.remove_all();
  double x = 0;
  double y = 0;
  unsigned command = m_dash.vertex(&x, &y);
  while (!agg::is_stop(command)) {
    m_path.add({x, y});
    command = m_dash.vertex(&x, &y);
    if (agg::is_line_to(command)) continue;
    ends.end = agg::is_stop(command);
    add_path(false, ends, shape);
    m_path.remove_all();
    ends.start = false;
  }
}

void Stroker::add_path(bool closed, LineEnds ends, Shape& shape) {
  m_path.close(closed);
  if (closed && m_path.size() > 2) {
    add_closed(shape);
  } else if (m_path.size() > 1) {
    add_open(ends, shape);
  }
}

void Stroker::add_open(LineEnds ends, Shape& shape) {
  Outline outline(shape, m_offset);
  const auto& path = m_path;
  const unsigned last = path.size() - 1;
  add_end(m_start_cap, ends.start, path[0], path[1], outline);
  for (unsigned i = 1; i < last; ++i) {
    m_math.calc_join(outline, path[i - 1], path[i], path[i + 1], path[i - 1].dist, path[i].dist);
  }
  add_end(m_end_cap, ends.end, path[last], path[last - 1], outline);
  for (unsigned i = last - 1; i > 0; --i) {
    m_math.calc_join(outline, path[i + 1], path[i], path[i - 1], path[i].dist, path[i - 1].dist);
  }
}

void Stroker::add_end(agg::line_cap_e cap, bool of_line, const agg::vertex_dist& end,
                      const agg::vertex_dist& next, Outline& outline) {
  const double length = agg::calc_distance(end.x, end.y, next.x, next.y);
  double x = 0;
  double y = 0;
  if (cap == agg::butt_cap && of_line) {
    const double along_x = (end.x - next.x) / length;
    const double along_y = (end.y - next.y) / length;
    // The offset moves the stroke sideways; how far it reaches stays.
    const double reach = 0.5 - m_offset * (along_x + along_y);
    x = reach * along_x;
    y = reach * along_y;
  }
  m_math.line_cap(cap);
  m_math.calc_cap(outline, {end.x + x, end.y + y}, {next.x + x, next.y + y}, length);
}

void Stroker::add_closed(Shape& shape) {
  const auto& path = m_path;
  const unsigned count = path.size();
  Outline one_side(shape, m_offset);
  for (unsigned i = 0; i < count; ++i) {
    const auto& before = path[(i + count - 1) % count];
    m_math.calc_join(one_side, before, path[i], path[(i + 1) % count], before.dist, path[i].dist);
  }
  Outline other_side(shape, m_offset);
  for (unsigned i = count; i-- > 0;) {
    const auto& before = path[(i + count - 1) % count];
    m_math.calc_join(other_side, path[(i + 1) % count], path[i], before, path[i].dist, before.dist);
  }
}

void Stroker::add_dot(const agg::point_d& point, Shape& shape) {
  const agg::vertex_dist center(point.x, point.y);
  Outline outline(shape, m_offset);
  m_math.line_cap(m_start_cap == agg::round_cap ? agg::round_cap : agg::square_cap);
  m_math.calc_cap(outline, center, {center.x + 1, center.y}, 1);
  m_math.calc_cap(outline, center, {center.x - 1, center.y}, 1);
}

}  // namespace lumen
