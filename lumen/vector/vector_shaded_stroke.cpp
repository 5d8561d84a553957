#include <cmath>
#include <utility>

#include "lumen/vector/vector_color_p.h"
#include "lumen/vector/vector_segment_p.h"
#include "lumen/vector/vector_stroke_p.h"

namespace lumen {

void VectorStroker::stroke(std::int32_t count, const LM_DCI_Point* points,
                           const LM_Line_Style& style, const LM_RGB32* colors) {
  set_style(style);
  take(count, points);
  if (!has_length()) {
    m_page.set_ink(colors[count - 1]);
    return draw_dot(style.start_style);
  }
  if (!has_common_opacity(count, colors)) return draw_segments(style, colors, false);
  m_opaque.assign(colors, colors + count);
  for (LM_RGB32& color : m_opaque) color = opaque(color);
  m_page.lay(opacity_of(colors[0]), [&] { draw_segments(style, m_opaque.data(), true); });
}

void VectorStroker::draw_segments(const LM_Line_Style& style, const LM_RGB32* colors, bool joined) {
  const bool closed = is_closed();
  const End start = closed ? End{} : end_of(style.start_style, false);
  const End end = closed ? End{} : end_of(style.end_style, false);
  if (is_solid() || !joined) cairo_set_line_cap(m_page.cairo(), CAIRO_LINE_CAP_BUTT);
  if (joined) draw_joints(colors, closed);
  const std::size_t last = m_path.size() - 1;
  for (const auto& [has_disc, index] :
       {std::pair{start.has_disc, std::size_t{0}}, {end.has_disc, last}}) {
    if (!has_disc || !joined) continue;
    m_page.set_ink(colors[index]);
    draw_disc(m_path[index]);
  }
  lengthen(start.reach, end.reach);
  double distance = 0;
  for (std::size_t i = 0; i < last; ++i) {
    draw_segment(i, colors, distance);
    distance += distance_between(m_path[i], m_path[i + 1]);
  }
}

void VectorStroker::draw_joints(const LM_RGB32* colors, bool closed) {
  double distance = 0;
  for (std::size_t i = 0; i + 1 < m_path.size(); ++i) {
    if ((i > 0 || closed) && is_drawn_at(distance)) {
      m_page.set_ink(colors[i]);
      draw_disc(m_path[i]);
    }
    distance += distance_between(m_path[i], m_path[i + 1]);
  }
}

bool VectorStroker::is_drawn_at(double distance) const {
  if (is_solid()) return true;
  double rest = std::fmod(distance, pattern_length());
  std::size_t i = 0;
  while (i + 1 < m_dashes.size() && rest >= m_dashes[i]) rest -= m_dashes[i++];
  return i % 2 == 0;
}

void VectorStroker::draw_segment(std::size_t index, const LM_RGB32* colors, double distance) {
  const PagePoint& from = m_path[index];
  const PagePoint& to = m_path[index + 1];
  const SegmentPart part = part_inside(m_box, from, to);
  if (part.is_empty() || same_place(from, to)) return;
  const PagePoint first = between(from, to, part.first);
  const PagePoint last = between(from, to, part.last);
  const PageColor start = page_color(colors[index]);
  const PageColor end = page_color(colors[index + 1]);
  set_gradient(m_page.cairo(), first, between(start, end, part.first), last,
               between(start, end, part.last));
  set_dash_offset(distance + part.first * distance_between(from, to));
  cairo_move_to(m_page.cairo(), first.x, first.y);
  cairo_line_to(m_page.cairo(), last.x, last.y);
  cairo_stroke(m_page.cairo());
}

}  // namespace lumen
