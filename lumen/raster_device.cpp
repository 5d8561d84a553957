#include "lumen/raster_device.h"

#include <algorithm>
#include <cmath>

#include "lumen/band_drawing_p.h"
#include "lumen/geometry/coverage_p.h"
#include "lumen/geometry/line_pattern_p.h"
#include "lumen/geometry/pixel_rectangle_p.h"
#include "lumen/raster/image_blit_p.h"
#include "lumen/raster/plain_line_p.h"
#include "lumen/raster/polyline_p.h"
#include "lumen/raster/raster_scratch_p.h"
#include "lumen/raster/row_range_p.h"
#include "lumen/raster/span_pen_p.h"
#include "lumen/raster/thin_line_p.h"
#include "lumen/text/text_run_p.h"
#include "lumen/text/text_shape_p.h"

namespace lumen {
namespace {

/// Whether LM_Rendition::device_clip() may tell of a clip, without asking for it.
bool has_complex_clip(const LM_Rendition& rendition) {
  return rendition.hard_complex_clip_validated() ? rendition.hard_complex_clip() != nullptr
                                                 : rendition.complex_clip() != nullptr;
}

/// Whether every action is as it is in the other table.
bool are_same(const LM_Device_Actions& one, const LM_Device_Actions& other) {
#define LM_IS_SAME_ACTION(name, type)                       \
  if (one.name.context != other.name.context) return false; \
  if (one.name.function != other.name.function) return false;
  LM_DEVICE_ACTIONS(LM_IS_SAME_ACTION)
#undef LM_IS_SAME_ACTION
  return true;
}

}  // namespace

RasterDevice::RasterDevice(Picture& picture)
    : m_picture(picture), m_bands(std::make_unique<BandDrawing>(*this, picture)) {
  bind_actions();
}

RasterDevice::RasterDevice(Picture& picture, BandLog& log) : m_picture(picture), m_log(&log) {
  bind_actions();
}

RasterDevice::RasterDevice(Picture& picture, const RowRange& rows) : m_picture(picture) {
  bind_actions();
  draw_rows(rows);
}

RasterDevice::~RasterDevice() = default;

void RasterDevice::bind_actions() {
  actions.dot_clipped = {this, &LM_Bound_Action<&RasterDevice::draw_dot>::call};
  actions.dot_unclipped = actions.dot_clipped;
  actions.polyline_clipped = {this, &LM_Bound_Action<&RasterDevice::draw_polyline>::call};
  actions.polyline_unclipped = actions.polyline_clipped;
  actions.polygon_clipped = {this, &LM_Bound_Action<&RasterDevice::draw_polygon>::call};
  actions.polygon_unclipped = actions.polygon_clipped;
  actions.triangle_strip_clipped = {this, &LM_Bound_Action<&RasterDevice::draw_strip>::call};
  actions.triangle_strip_unclipped = actions.triangle_strip_clipped;
  actions.marker_clipped = {this, &LM_Bound_Action<&RasterDevice::draw_markers>::call};
  actions.marker_unclipped = actions.marker_clipped;
  actions.image_clipped = {this, &LM_Bound_Action<&RasterDevice::draw_image>::call};
  actions.image_unclipped = actions.image_clipped;
  actions.elliptical_arc = {this, &LM_Bound_Action<&RasterDevice::draw_arc>::call};
  actions.elliptical_arc_colored = {this, &LM_Bound_Action<&RasterDevice::draw_arc_colored>::call};
  actions.elliptical_area = {this, &LM_Bound_Action<&RasterDevice::draw_area>::call};
  actions.gouraud_polyline_clipped = {this,
                                      &LM_Bound_Action<&RasterDevice::draw_gouraud_polyline>::call};
  actions.gouraud_polyline_unclipped = actions.gouraud_polyline_clipped;
  actions.gouraud_triangle_strip_clipped = {
      this, &LM_Bound_Action<&RasterDevice::draw_gouraud_strip>::call};
  actions.textured_triangle_strip_clipped = {
      this, &LM_Bound_Action<&RasterDevice::draw_textured_strip>::call};
  actions.textured_triangle_strip_unclipped = actions.textured_triangle_strip_clipped;
  options.supports_complex_clip = true;
  m_own_actions = actions;
}

LM_Ordered_Drawing* RasterDevice::ordered_drawing() {
  // Collectors would pass over actions that a client has put in their place.
  return are_same(actions, m_own_actions) ? m_bands.get() : nullptr;
}

PixelRectangle RasterDevice::drawn_pixels(const LM_Rendition& rendition) const {
  const RowRange rows{m_first_row, m_last_row};
  return rows.part_of(visible_pixels(m_picture, rendition.clip_rectangle()));
}

void RasterDevice::draw_rows(const RowRange& rows) {
  m_first_row = rows.first;
  m_last_row = rows.last;
}

const std::uint8_t* RasterDevice::clip_mask(const LM_Rendition& rendition) const {
  const LM_Contour_Set_Data* clip = rendition.device_clip();
  return clip == nullptr ? nullptr : scratch().masks.mask(*clip, m_picture, m_antialiased);
}

SpanPen RasterDevice::span_pen(const LM_Rendition& rendition, LM_RGB32 ink) const {
  if (m_log == nullptr) return {m_picture, ink, clip_mask(rendition)};
  m_log->use(rendition, ink);
  return {m_picture, *m_log};
}

void RasterDevice::draw_dot(LM_Rendition* rendition, const LM_DCI_Point* point,
                            const LM_RGB32* color) {
  const LM_RGB32 ink = color != nullptr ? *color : rendition->color();
  if (opacity_of(ink) != 255 || has_complex_clip(*rendition)) {
    return blend_dot(*rendition, *point, ink);
  }
  if (drawn_pixels(*rendition).contains(*point)) {
    write_pixel(m_picture.row(point->y)[point->x], ink.word);
  }
}

void RasterDevice::blend_dot(const LM_Rendition& rendition, const LM_DCI_Point& point,
                             LM_RGB32 ink) {
  const PixelRectangle inside = drawn_pixels(rendition);
  if (is_invisible(ink) || !inside.contains(point)) return;
  draw_pixel({m_picture, inside, ink, clip_mask(rendition), LM_PATTERN_SOLID}, point);
}

void RasterDevice::draw_polyline(LM_Rendition* rendition, std::int32_t count,
                                 const LM_DCI_Point* points) {
  if (count <= 0) return;
  const LM_RGB32 ink = rendition->color();
  if (m_antialiased || !is_plain(ink, rendition->line_style()) || has_complex_clip(*rendition)) {
    return stroke_polyline(*rendition, count, points);
  }
  draw_plain_polyline(m_picture, drawn_pixels(*rendition), ink.word, count, points);
}

void RasterDevice::stroke_polyline(const LM_Rendition& rendition, std::int32_t count,
                                   const LM_DCI_Point* points) {
  const LM_RGB32 ink = rendition.color();
  const PixelRectangle inside = drawn_pixels(rendition);
  if (is_invisible(ink) || inside.is_empty()) return;

  const LM_Line_Style& style = rendition.line_style();
  if (style.weight <= 1 && !m_antialiased) {
    return draw_thin_polyline({m_picture, inside, ink, clip_mask(rendition), style.pattern}, count,
                              points);
  }
  SpanPen pen = span_pen(rendition, ink);
  if (is_plain(ink, style) && SmoothLine::can_draw(count, points)) {
    return scratch().smooth_line.draw(count, points, inside, pen);
  }
  Shape& shape = scratch().shape;
  shape.clear();
  scratch().stroker.add(count, points, style, inside, shape);
  shape.fill(LM_Fill_Rule::non_zero, m_antialiased, inside, pen);
}

template <class Collect>
void RasterDevice::fill_shape(const LM_Rendition& rendition, LM_Fill_Rule rule,
                              const Collect& collect) {
  const LM_RGB32 ink = rendition.color();
  const PixelRectangle inside = drawn_pixels(rendition);
  if (is_invisible(ink) || inside.is_empty()) return;

  SpanPen pen = span_pen(rendition, ink);
  Shape& shape = scratch().shape;
  shape.clear();
  collect(shape);
  shape.fill(rule, m_antialiased, inside, pen);
}

void RasterDevice::draw_polygon(LM_Rendition* rendition, std::int32_t count,
                                const LM_DCI_Point* points, std::int32_t /*reserved*/) {
  if (count < 3) return;
  fill_shape(*rendition, LM_Fill_Rule::even_odd,
             [&](Shape& shape) { add_polygon(count, points, shape); });
}

void RasterDevice::draw_strip(LM_Rendition* rendition, std::int32_t count,
                              const LM_DCI_Point* points) {
  if (count < 3) return;
  fill_shape(*rendition, LM_Fill_Rule::non_zero,
             [&](Shape& shape) { add_strip(count, points, shape); });
}

void RasterDevice::draw_markers(LM_Rendition* rendition, std::int32_t count,
                                const LM_DCI_Point* points) {
  const LM_RGB32 ink = rendition->color();
  const PixelRectangle inside = drawn_pixels(*rendition);
  if (count <= 0 || is_invisible(ink) || inside.is_empty()) return;

  SpanPen pen = span_pen(*rendition, ink);
  scratch().marker_stamp.draw(*rendition, m_antialiased, count, points, inside, pen);
}

void RasterDevice::draw_image(LM_Rendition* rendition, const LM_DCI_Point* corner,
                              LM_Image* const* cell) {
  if (cell == nullptr || *cell == nullptr) return;
  const LM_Image& image = **cell;
  const PixelRectangle inside = drawn_pixels(*rendition);
  const PixelRectangle part = image_pixels(image, *corner, inside);
  if (part.is_empty()) return;
  blit_image(image, *corner, part, clip_mask(*rendition), m_picture);
}

void RasterDevice::draw_arc(LM_Rendition* rendition, const LM_DCI_Point* center,
                            const LM_DCI_Point* radii, float start, float end, float rotation,
                            const LM_RGB32* fill) {
  const EllipticalArc arc(*center, *radii, start, end, rotation);
  const PixelRectangle inside = drawn_pixels(*rendition);
  if (!arc.is_drawable() || inside.is_empty()) return;
  if (fill != nullptr) fill_area(*rendition, arc, ArcArea::to_chord, *fill, inside);
  stroke_arc(*rendition, arc, inside);
}

void RasterDevice::draw_arc_colored(LM_Rendition* rendition, const LM_DCI_Point* center,
                                    const LM_DCI_Point* radii, float start, float end,
                                    float rotation, const LM_RGB32* fill) {
  draw_area(rendition, center, radii, start, end, rotation, fill);
}

void RasterDevice::draw_area(LM_Rendition* rendition, const LM_DCI_Point* center,
                             const LM_DCI_Point* radii, double start, double end, double rotation,
                             const LM_RGB32* fill) {
  const EllipticalArc arc(*center, *radii, start, end, rotation);
  const PixelRectangle inside = drawn_pixels(*rendition);
  if (!arc.is_drawable() || inside.is_empty()) return;
  fill_area(*rendition, arc, ArcArea::to_center, fill != nullptr ? *fill : rendition->color(),
            inside);
}

void RasterDevice::fill_area(const LM_Rendition& rendition, const EllipticalArc& arc, ArcArea area,
                             LM_RGB32 ink, const PixelRectangle& inside) {
  if (is_invisible(ink)) return;
  SpanPen pen = span_pen(rendition, ink);
  if (arc.is_flat()) {
    Strokes& strokes = scratch().strokes;
    strokes.start(LM_Line_Style(), m_antialiased, inside);
    strokes.add_flat_area(arc, area);
    return strokes.fill(true, pen);
  }
  Shape& shape = scratch().shape;
  shape.clear();
  add_area(arc, area, m_antialiased, inside, shape);
  shape.fill(LM_Fill_Rule::even_odd, m_antialiased, inside, pen);
}

void RasterDevice::stroke_arc(const LM_Rendition& rendition, const EllipticalArc& arc,
                              const PixelRectangle& inside) {
  const LM_RGB32 ink = rendition.color();
  if (is_invisible(ink)) return;
  SpanPen pen = span_pen(rendition, ink);
  Strokes& strokes = scratch().strokes;
  strokes.start(rendition.line_style(), m_antialiased, inside);
  strokes.add_arc(arc);
  strokes.fill(opacity_of(ink) != 255, pen);
}

void RasterDevice::draw_gouraud_polyline(LM_Rendition* rendition, std::int32_t count,
                                         const LM_DCI_Point* points, const LM_RGB32* colors) {
  const PixelRectangle inside = drawn_pixels(*rendition);
  if (count <= 0 || colors == nullptr || inside.is_empty()) return;

  draw_shaded_polyline({m_picture, inside, clip_mask(*rendition), m_antialiased, {}},
                       rendition->line_style(), count, points, colors);
}

void RasterDevice::draw_gouraud_strip(LM_Rendition* rendition, std::int32_t count,
                                      const LM_DCI_Point* points, const LM_RGB32* colors) {
  const PixelRectangle inside = drawn_pixels(*rendition);
  if (count < 3 || colors == nullptr || inside.is_empty()) return;
  scratch().shaded_strip.draw({m_picture, inside, clip_mask(*rendition), m_antialiased, {}}, count,
                              points, colors);
}

void RasterDevice::draw_textured_strip(LM_Rendition* rendition, std::int32_t count,
                                       const LM_DCI_Point* points, const LM_RGB32* colors,
                                       const LM_Vertex_Triple* first, std::int32_t wrap,
                                       const std::uint32_t* modulation,
                                       const LM_Vertex_Triple* second) {
  const PixelRectangle inside = drawn_pixels(*rendition);
  if (count < 3 || inside.is_empty()) return;
  scratch().shaded_strip.draw(
      {m_picture, inside, clip_mask(*rendition), m_antialiased, {}}, count, points,
      {colors, first, modulation, second, rendition->texture_pages(), wrap});
}

template <class Character>
void RasterDevice::fill_text(const LM_Rendition& rendition, const LM_DCI_Point& start,
                             const Character* characters, std::int32_t count) {
  const LM_Text_Attributes& attributes = rendition.text_attributes();
  const bool is_bar = is_tiny(attributes.size);
  const LM_RGB32 ink = is_bar ? bar_ink(rendition.color()) : rendition.color();
  const PixelRectangle inside = drawn_pixels(rendition);
  if (is_invisible(ink) || inside.is_empty()) return;

  const TextRun& run = set_text(attributes.font, characters, count);
  TextPlacement placement(attributes, start);
  placement.sit_on_pixels();
  Shape& shape = scratch().shape;
  shape.clear();
  if (is_bar) {
    add_bar(run, placement, shape);
  } else {
    add_glyphs(run, placement, inside, shape);
  }
  SpanPen pen = span_pen(rendition, ink);
  shape.fill(LM_Fill_Rule::non_zero, true, inside, pen);
}

void RasterDevice::draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                             const wchar_t* characters, std::int32_t count) {
  fill_text(*rendition, start, characters, count);
}

void RasterDevice::draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                             const unsigned char* characters, std::int32_t count) {
  fill_text(*rendition, start, characters, count);
}

}  // namespace lumen
