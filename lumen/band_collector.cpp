#include "lumen/band_collector_p.h"

#include <algorithm>

#include "lumen/geometry/coverage_p.h"
#include "lumen/geometry/line_run_p.h"
#include "lumen/raster/polyline_p.h"
#include "lumen/raster/shading_p.h"
#include "lumen/raster/smooth_line_p.h"

namespace lumen {
namespace {

RowRange rows_of(const PixelRectangle& box) {
  return {box.min_y, box.max_y};
}

/// The part of the box that lies inside the rectangle.
PixelRectangle part_of(const PixelRectangle& box, const PixelRectangle& inside) {
  return {std::max(box.min_x, inside.min_x), std::max(box.min_y, inside.min_y),
          std::min(box.max_x, inside.max_x), std::min(box.max_y, inside.max_y)};
}

}  // namespace

BandCollector::BandCollector(Picture& picture) : m_log(picture), m_shapes(picture, m_log) {
  bind_actions();
}

void BandCollector::bind_actions() {
  actions = m_shapes.actions;
  actions.dot_clipped = {this, &LM_Bound_Action<&BandCollector::note_dot>::call};
  actions.dot_unclipped = actions.dot_clipped;
  actions.polyline_clipped = {this, &LM_Bound_Action<&BandCollector::note_polyline>::call};
  actions.polyline_unclipped = actions.polyline_clipped;
  actions.image_clipped = {this, &LM_Bound_Action<&BandCollector::note_image>::call};
  actions.image_unclipped = actions.image_clipped;
  actions.gouraud_polyline_clipped = {this,
                                      &LM_Bound_Action<&BandCollector::note_shaded_polyline>::call};
  actions.gouraud_polyline_unclipped = actions.gouraud_polyline_clipped;
  actions.gouraud_triangle_strip_clipped = {
      this, &LM_Bound_Action<&BandCollector::note_shaded_strip>::call};
  actions.textured_triangle_strip_clipped = {
      this, &LM_Bound_Action<&BandCollector::note_textured_strip>::call};
  actions.textured_triangle_strip_unclipped = actions.textured_triangle_strip_clipped;
}

void BandCollector::start(const RasterDevice& device, const BandGrid& grid) {
  options = device.options;
  options.is_for_one_thread = true;
  option_table = device.option_table;
  m_shapes.set_antialiased(device.is_antialiased());
  m_log.start(grid);
}

void BandCollector::note_dot(LM_Rendition* rendition, const LM_DCI_Point* point,
                             const LM_RGB32* color) {
  const LM_RGB32 ink = color != nullptr ? *color : rendition->color();
  m_log.use(*rendition, ink);
  if (m_log.inside().contains(*point) && !is_invisible(ink)) m_log.pixel(point->x, point->y);
}

void BandCollector::note_polyline(LM_Rendition* rendition, std::int32_t count,
                                  const LM_DCI_Point* points) {
  if (count <= 0 || is_invisible(rendition->color())) return;
  if (rendition->line_style().weight <= 1 && !m_shapes.is_antialiased()) {
    note_thin(*rendition, count, points);
  } else if (!note_smooth(*rendition, count, points)) {
    m_shapes.draw_polyline(rendition, count, points);
  }
}

bool BandCollector::note_smooth(const LM_Rendition& rendition, std::int32_t count,
                                const LM_DCI_Point* points) {
  if (!is_plain(rendition.color(), rendition.line_style()) ||
      !SmoothLine::can_draw(count, points)) {
    return false;
  }
  m_log.use(rendition, rendition.color());
  const PixelRectangle box = box_around(count, points, SmoothLine::reach, m_log.inside());
  if (box.is_empty()) return true;
  // To draw all of it for two bands takes no longer than to note the pixels it covers.
  constexpr std::int32_t most_bands = 2;
  const std::int32_t margin = SmoothLine::margin_of(count, points);
  const std::int32_t bands = m_log.band_of(box.max_y) - m_log.band_of(box.min_y) + 1;
  if (margin == SmoothLine::whole_margin && bands > most_bands) return false;
  const BandSmoothPolyline line{count, margin};
  m_log.add(rows_of(box), BandStep::smooth_polyline, line, {BandLog::words_of(points, count)});
  return true;
}

void BandCollector::note_thin(const LM_Rendition& rendition, std::int32_t count,
                              const LM_DCI_Point* points) {
  const LM_RGB32 ink = rendition.color();
  m_log.use(rendition, ink);
  const PixelRectangle box = part_of(box_of(count, points), m_log.inside());
  if (box.is_empty()) return;
  const bool is_in_one = m_log.band_of(box.min_y) == m_log.band_of(box.max_y);
  if (!is_in_one && is_plain(ink, rendition.line_style()) && !m_log.has_clip()) {
    return note_pieces(count, points);
  }
  const BandPolyline line{count, rendition.line_style().pattern};
  m_log.add(rows_of(box), BandStep::polyline, line, {BandLog::words_of(points, count)});
}

void BandCollector::note_pieces(std::int32_t count, const LM_DCI_Point* points) {
  // Where each pixel is as good as any other of the line, a band needs only the
  // segments that it shows: those from its first point to its last one, and the
  // one that leads on to another band.
  const LM_DCI_Point* first = points;
  const LM_DCI_Point* const last = points + count - 1;
  std::int32_t band = m_log.band_of(first->y);
  for (const LM_DCI_Point* point = first + 1; point <= last; ++point) {
    const std::int32_t next = m_log.band_of(point->y);
    if (next == band) continue;
    if (point - first > 1) note_piece(first, point - 1);
    note_crossing(point[-1], point[0]);
    first = point;
    band = next;
  }
  if (first != last) note_piece(first, last);
}

void BandCollector::note_piece(const LM_DCI_Point* first, const LM_DCI_Point* last) {
  const auto count = static_cast<std::int32_t>(last - first) + 1;
  const PixelRectangle whole = box_of(count, first);
  const PixelRectangle box = part_of(whole, m_log.inside());
  if (box == whole && m_log.band_of(box.min_y) == m_log.band_of(box.max_y)) {
    const BandPoints piece{count};
    m_log.add(rows_of(box), BandStep::inside_polyline, piece, {BandLog::words_of(first, count)});
  } else if (!box.is_empty()) {
    const BandPolyline piece{count, LM_PATTERN_SOLID};
    m_log.add(rows_of(box), BandStep::polyline, piece, {BandLog::words_of(first, count)});
  }
}

void BandCollector::note_crossing(const LM_DCI_Point& from, const LM_DCI_Point& to) {
  // Up to here pixels are fewer words, and sooner drawn, than parts of a line.
  constexpr std::int64_t most_pixels = 32;
  const PixelRectangle& inside = m_log.inside();
  if (!inside.contains(from) || !inside.contains(to) || line_length(from, to) > most_pixels) {
    const LM_DCI_Point ends[] = {from, to};
    return note_piece(ends, ends + 1);
  }
  LineRun run = line_run(from, to, inside);
  for (std::int64_t i = 0; i < run.count; ++i) {
    m_log.pixel(run.x, run.y);
    run.error += run.error_step;
    const bool turns = run.error >= run.error_limit;
    if (turns) run.error -= run.error_limit;
    if (run.x_is_major || turns) run.x += run.step_x;
    if (!run.x_is_major || turns) run.y += run.step_y;
  }
  m_log.pixel(to.x, to.y);
}

void BandCollector::note_image(LM_Rendition* rendition, const LM_DCI_Point* corner,
                               LM_Image* const* cell) {
  if (cell == nullptr || *cell == nullptr) return;
  m_log.use(*rendition);
  const PixelRectangle part = image_pixels(**cell, *corner, m_log.inside());
  if (part.is_empty()) return;
  const BandImage image{*corner, m_log.hold(**cell)};
  m_log.add(rows_of(part), BandStep::image, image, {});
}

void BandCollector::note_shaded_polyline(LM_Rendition* rendition, std::int32_t count,
                                         const LM_DCI_Point* points, const LM_RGB32* colors) {
  if (count <= 0 || colors == nullptr) return;
  m_log.use(*rendition);
  const LM_Line_Style& style = rendition->line_style();
  // More than what square ends and smooth edges reach.
  const double margin = std::max(style.weight, 1) + 4.0;
  const PixelRectangle box = box_around(count, points, margin, m_log.inside());
  if (box.is_empty()) return;
  const BandShadedPolyline line{count, style.weight, style.pattern, style.start_style,
                                style.end_style};
  m_log.add(rows_of(box), BandStep::shaded_polyline, line,
            {BandLog::words_of(points, count), BandLog::words_of(colors, count)});
}

void BandCollector::note_shaded_strip(LM_Rendition* rendition, std::int32_t count,
                                      const LM_DCI_Point* points, const LM_RGB32* colors) {
  if (count < 3 || colors == nullptr) return;
  m_log.use(*rendition);
  const PixelRectangle box = box_around(count, points, 1, m_log.inside());
  if (box.is_empty()) return;
  const BandStrip strip{count};
  m_log.add(rows_of(box), BandStep::shaded_strip, strip,
            {BandLog::words_of(points, count), BandLog::words_of(colors, count)});
}

void BandCollector::note_textured_strip(LM_Rendition* rendition, std::int32_t count,
                                        const LM_DCI_Point* points, const LM_RGB32* colors,
                                        const LM_Vertex_Triple* first, std::int32_t wrap,
                                        const std::uint32_t* modulation,
                                        const LM_Vertex_Triple* second) {
  if (count < 3) return;
  m_log.use(*rendition);
  const PixelRectangle box = box_around(count, points, 1, m_log.inside());
  if (box.is_empty()) return;
  const BandTexturedStrip strip{count,
                                wrap,
                                m_log.hold(rendition->texture_pages()),
                                colors != nullptr ? 1U : 0U,
                                first != nullptr ? 1U : 0U,
                                modulation != nullptr ? 1U : 0U,
                                second != nullptr ? 1U : 0U};
  m_log.add(rows_of(box), BandStep::textured_strip, strip,
            {BandLog::words_of(points, count), BandLog::words_of(colors, count),
             BandLog::words_of(first, count), BandLog::words_of(modulation, count),
             BandLog::words_of(second, count)});
}

}  // namespace lumen
