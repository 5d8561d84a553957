#include "lumen/band_collector_p.h"

#include <algorithm>

#include "lumen/geometry/coverage_p.h"
#include "lumen/raster/polyline_p.h"
#include "lumen/raster/shading_p.h"

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
  if (rendition->line_style().weight > 1 || m_shapes.is_antialiased()) {
    m_shapes.draw_polyline(rendition, count, points);
  } else {
    note_thin(*rendition, count, points);
  }
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
  // segments that it shows.
  const auto segment_box = [&](std::int32_t last) {
    return part_of(box_of(2, points + last - 1), m_log.inside());
  };
  PixelRectangle next = segment_box(1);
  for (std::int32_t first = 0; first < count - 1;) {
    PixelRectangle box = next;
    std::int32_t last = first + 1;
    for (; last < count - 1; ++last) {
      next = segment_box(last + 1);
      if (next.is_empty() || box.is_empty()) break;
      const std::int32_t band = m_log.band_of(box.min_y);
      if (band != m_log.band_of(box.max_y) || band != m_log.band_of(next.min_y) ||
          band != m_log.band_of(next.max_y)) {
        break;
      }
    }
    if (!box.is_empty()) {
      const BandPolyline piece{last - first + 1, LM_PATTERN_SOLID};
      m_log.add(rows_of(box), BandStep::polyline, piece,
                {BandLog::words_of(points + first, piece.count)});
    }
    first = last;
  }
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
