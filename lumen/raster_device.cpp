#include "lumen/raster_device.h"

#include "lumen/clip_mask_p.h"
#include "lumen/line_pattern_p.h"
#include "lumen/pixel_rectangle_p.h"
#include "lumen/shape_p.h"
#include "lumen/smooth_line_p.h"
#include "lumen/span_pen_p.h"
#include "lumen/stroker_p.h"
#include "lumen/thin_line_p.h"

namespace lumen {
namespace {

constexpr bool is_invisible(LM_RGB32 color) {
  return opacity_of(color) == 0;
}

/// A line like most: opaque, one pixel wide, solid.
bool is_plain(LM_RGB32 color, const LM_Line_Style& style) {
  return opacity_of(color) == 255 && style.weight <= 1 && pattern_lengths(style.pattern).empty();
}

/// What a thread keeps from one action to the next, so that drawing allocates
/// only until it has seen its largest shape.
struct Scratch {
  Shape shape;
  Stroker stroker;
  SmoothLine smooth_line;
  ClipMasks masks;
};

Scratch& scratch() {
  thread_local Scratch instance;
  return instance;
}

}  // namespace

RasterDevice::RasterDevice(Picture& picture) : m_picture(picture) {
  actions.dot_clipped = {this, &LM_Bound_Action<&RasterDevice::draw_dot>::call};
  actions.dot_unclipped = actions.dot_clipped;
  actions.polyline_clipped = {this, &LM_Bound_Action<&RasterDevice::draw_polyline>::call};
  actions.polyline_unclipped = actions.polyline_clipped;
  actions.polygon_clipped = {this, &LM_Bound_Action<&RasterDevice::draw_polygon>::call};
  actions.polygon_unclipped = actions.polygon_clipped;
  options.supports_complex_clip = true;
}

const std::uint8_t* RasterDevice::clip_mask(LM_Rendition& rendition) const {
  if (!rendition.hard_complex_clip_validated()) {
    if (!rendition.complex_clip()) return nullptr;
    rendition.validate_hard_complex_clip();
  }
  const LM_Contour_Set_Data* clip = rendition.hard_complex_clip();
  return clip == nullptr ? nullptr : scratch().masks.mask(*clip, m_picture, m_antialiased);
}

void RasterDevice::draw_dot(LM_Rendition* rendition, const LM_DCI_Point* point,
                            const LM_RGB32* color) {
  const LM_RGB32 ink = color != nullptr ? *color : rendition->color();
  const PixelRectangle inside = visible_pixels(m_picture, rendition->clip_rectangle());
  if (is_invisible(ink) || !inside.contains(*point)) return;
  draw_pixel({m_picture, inside, ink, clip_mask(*rendition), LM_PATTERN_SOLID}, *point);
}

void RasterDevice::draw_polyline(LM_Rendition* rendition, std::int32_t count,
                                 const LM_DCI_Point* points) {
  const LM_RGB32 ink = rendition->color();
  const PixelRectangle inside = visible_pixels(m_picture, rendition->clip_rectangle());
  if (count <= 0 || is_invisible(ink) || inside.is_empty()) return;

  const LM_Line_Style& style = rendition->line_style();
  const std::uint8_t* mask = clip_mask(*rendition);
  if (style.weight <= 1 && !m_antialiased) {
    return draw_thin_polyline({m_picture, inside, ink, mask, style.pattern}, count, points);
  }
  SpanPen pen(m_picture, ink, mask);
  if (is_plain(ink, style) && SmoothLine::can_draw(count, points)) {
    return scratch().smooth_line.draw(count, points, inside, pen);
  }
  Shape& shape = scratch().shape;
  shape.clear();
  scratch().stroker.add(count, points, style, inside, shape);
  shape.fill(LM_Fill_Rule::non_zero, m_antialiased, inside, pen);
}

void RasterDevice::draw_polygon(LM_Rendition* rendition, std::int32_t count,
                                const LM_DCI_Point* points, std::int32_t /*reserved*/) {
  const LM_RGB32 ink = rendition->color();
  const PixelRectangle inside = visible_pixels(m_picture, rendition->clip_rectangle());
  if (count < 3 || is_invisible(ink) || inside.is_empty()) return;

  SpanPen pen(m_picture, ink, clip_mask(*rendition));
  Shape& shape = scratch().shape;
  shape.clear();
  shape.move_to(points[0].x, points[0].y);
  for (std::int32_t i = 1; i < count; ++i) shape.line_to(points[i].x, points[i].y);
  shape.fill(LM_Fill_Rule::even_odd, m_antialiased, inside, pen);
}

}  // namespace lumen
