#include "lumen/vector/vector_painter_p.h"

#include <algorithm>
#include <utility>

#include "lumen/picture_image.h"
#include "lumen/raster_device.h"
#include "lumen/vector/vector_arc_p.h"

namespace lumen {
namespace {

/// The most pixels of one picture of a textured strip.
constexpr std::int32_t pixels_of_band = 1 << 24;

/// The part of the visible rectangle that the points may cover.
LM_Clip_Rectangle covered_part(const LM_Clip_Rectangle& visible, std::int32_t count,
                               const LM_DCI_Point* points) {
  const auto [left, right] =
      std::minmax_element(points, points + count,
                          [](const LM_DCI_Point& a, const LM_DCI_Point& b) { return a.x < b.x; });
  const auto [top, bottom] =
      std::minmax_element(points, points + count,
                          [](const LM_DCI_Point& a, const LM_DCI_Point& b) { return a.y < b.y; });
  return common_part(visible, {left->x, right->x, top->y, bottom->y});
}

/// A rectangle on the page, larger on all sides; `by` is far below 2^31.
LM_Clip_Rectangle grown(const LM_Clip_Rectangle& rectangle, std::int32_t by) {
  return {rectangle.min_x - by, rectangle.max_x + by, rectangle.min_y - by, rectangle.max_y + by};
}

/// As seen from the new origin, which is no further than the page is large:
/// where that leaves 32 bits, nobody sees the difference.
std::int32_t moved(std::int32_t coordinate, std::int32_t origin) {
  return static_cast<std::int32_t>(
      std::max<std::int64_t>(std::int64_t{coordinate} - origin, INT32_MIN));
}

}  // namespace

void VectorPainter::fill_table(LM_Device_Actions& a) {
  bind<&VectorPainter::draw_dot>(a.dot_clipped, a.dot_unclipped);
  bind<&VectorPainter::draw_polyline>(a.polyline_clipped, a.polyline_unclipped);
  bind<&VectorPainter::draw_gouraud_polyline>(a.gouraud_polyline_clipped,
                                              a.gouraud_polyline_unclipped);
  bind<&VectorPainter::draw_polygon>(a.polygon_clipped, a.polygon_unclipped);
  bind<&VectorPainter::draw_strip>(a.triangle_strip_clipped, a.triangle_strip_unclipped);
  bind<&VectorPainter::draw_gouraud_strip>(a.gouraud_triangle_strip_clipped,
                                           a.gouraud_triangle_strip_clipped);
  bind<&VectorPainter::draw_textured_strip>(a.textured_triangle_strip_clipped,
                                            a.textured_triangle_strip_unclipped);
  bind<&VectorPainter::draw_markers>(a.marker_clipped, a.marker_unclipped);
  bind<&VectorPainter::draw_image>(a.image_clipped, a.image_unclipped);
  bind<&VectorPainter::draw_arc>(a.elliptical_arc, a.elliptical_arc);
  bind<&VectorPainter::draw_sector>(a.elliptical_arc_colored, a.elliptical_arc_colored);
  bind<&VectorPainter::draw_area>(a.elliptical_area, a.elliptical_area);
}

void VectorPainter::draw_dot(LM_Rendition* rendition, const LM_DCI_Point* point,
                             const LM_RGB32* color) {
  const LM_RGB32 ink = color != nullptr ? *color : rendition->color();
  if (is_invisible(ink) || !m_page.enter(*rendition)) return;
  if (!m_page.visible().contains(*point)) return;
  m_page.set_ink(ink);
  cairo_rectangle(m_page.cairo(), point->x, point->y, 1, 1);
  cairo_fill(m_page.cairo());
}

void VectorPainter::draw_polyline(LM_Rendition* rendition, std::int32_t count,
                                  const LM_DCI_Point* points) {
  const LM_RGB32 ink = rendition->color();
  if (count < 1 || is_invisible(ink) || !m_page.enter(*rendition)) return;
  m_stroker.stroke(count, points, rendition->line_style(), ink);
}

void VectorPainter::draw_gouraud_polyline(LM_Rendition* rendition, std::int32_t count,
                                          const LM_DCI_Point* points, const LM_RGB32* colors) {
  if (count < 1 || colors == nullptr || !m_page.enter(*rendition)) return;
  if (std::all_of(colors, colors + count, is_invisible)) return;
  m_stroker.stroke(count, points, rendition->line_style(), colors);
}

void VectorPainter::draw_polygon(LM_Rendition* rendition, std::int32_t count,
                                 const LM_DCI_Point* points, std::int32_t /*reserved*/) {
  const LM_RGB32 ink = rendition->color();
  if (count < 3 || is_invisible(ink) || !m_page.enter(*rendition)) return;
  m_page.set_ink(ink);
  m_contour.clear();
  for (std::int32_t i = 0; i < count; ++i) m_contour.push_back(page_point(points[i]));
  m_page.add(m_contour);
  cairo_set_fill_rule(m_page.cairo(), CAIRO_FILL_RULE_EVEN_ODD);
  cairo_fill(m_page.cairo());
}

void VectorPainter::draw_strip(LM_Rendition* rendition, std::int32_t count,
                               const LM_DCI_Point* points) {
  const LM_RGB32 ink = rendition->color();
  if (count < 3 || is_invisible(ink) || !m_page.enter(*rendition)) return;
  m_strip.fill(count, points, ink);
}

void VectorPainter::draw_gouraud_strip(LM_Rendition* rendition, std::int32_t count,
                                       const LM_DCI_Point* points, const LM_RGB32* colors) {
  if (count < 3 || colors == nullptr || !m_page.enter(*rendition)) return;
  if (std::all_of(colors, colors + count, is_invisible)) return;
  m_strip.fill(count, points, colors);
}

void VectorPainter::draw_textured_strip(LM_Rendition* rendition, std::int32_t count,
                                        const LM_DCI_Point* points, const LM_RGB32* colors,
                                        const LM_Vertex_Triple* places, std::int32_t wrap,
                                        const std::uint32_t* modulation,
                                        const LM_Vertex_Triple* second_places) {
  if (count < 3 || !m_page.enter(*rendition)) return;
  const LM_Clip_Rectangle part = covered_part(m_page.visible(), count, points);
  if (is_empty(part)) return;
  LM_Rendition whole;
  whole.set_texture_pages(LM_Handle<const LM_Texture_Pages>(rendition->texture_pages()));
  m_points.resize(static_cast<std::size_t>(count));
  // In bands of rows, so that the pictures of a large page can be held.
  const std::int32_t width = part.max_x - part.min_x + 1;
  const std::int32_t rows = std::max(1, pixels_of_band / width);
  for (std::int32_t top = part.min_y; top <= part.max_y; top += rows) {
    Picture picture(width, std::min(rows, part.max_y - top + 1), {0xFFFFFFFF});
    if (picture.is_empty()) return;
    std::transform(points, points + count, m_points.begin(), [&](const LM_DCI_Point& point) {
      return LM_DCI_Point{moved(point.x, part.min_x), moved(point.y, top), 0};
    });
    RasterDevice raster(picture);
    raster.set_antialiased(true);
    raster.draw_textured_strip(&whole, count, m_points.data(), colors, places, wrap, modulation,
                               second_places);
    m_images.draw_once(LM_Create<PictureImage>(std::move(picture)), {part.min_x, top, 0});
  }
}

void VectorPainter::draw_markers(LM_Rendition* rendition, std::int32_t count,
                                 const LM_DCI_Point* points) {
  const LM_RGB32 ink = rendition->color();
  if (count < 1 || is_invisible(ink) || !m_page.enter(*rendition)) return;
  const MarkerGeometry marker(rendition->marker());
  const std::int32_t weight =
      std::clamp(rendition->line_style().weight, 1, MarkerGeometry::max_reach);
  const LM_Clip_Rectangle near = grown(m_page.visible(), marker.reach() + weight);
  m_page.set_ink(ink);
  for (std::int32_t i = 0; i < count; ++i) {
    if (near.contains(points[i])) draw_marker(marker, page_point(points[i]), weight);
  }
}

void VectorPainter::draw_marker(const MarkerGeometry& marker, const PagePoint& place,
                                std::int32_t weight) {
  cairo_t* cairo = m_page.cairo();
  if (!marker.is_circle() && !marker.is_disc()) return m_stroker.stroke(marker, place, weight);
  const double radius = marker.reach() + (marker.is_disc() ? 0.5 : 0);
  cairo_new_sub_path(cairo);
  cairo_arc(cairo, place.x, place.y, radius, 0, EllipticalArc::turn);
  cairo_close_path(cairo);
  if (marker.is_disc()) return cairo_fill(cairo);
  cairo_set_dash(cairo, nullptr, 0, 0);
  cairo_set_line_width(cairo, weight);
  cairo_stroke(cairo);
}

void VectorPainter::draw_image(LM_Rendition* rendition, const LM_DCI_Point* corner,
                               LM_Image* const* cell) {
  if (cell == nullptr || *cell == nullptr || !m_page.enter(*rendition)) return;
  m_images.draw(**cell, *corner);
}

void VectorPainter::draw_arc(LM_Rendition* rendition, const LM_DCI_Point* center,
                             const LM_DCI_Point* radii, float start, float end, float rotation,
                             const LM_RGB32* fill) {
  const EllipticalArc arc(*center, *radii, start, end, rotation);
  if (!arc.is_drawable() || !m_page.enter(*rendition)) return;
  if (fill != nullptr) fill_arc(arc, *fill, false);
  const LM_RGB32 ink = rendition->color();
  if (!is_invisible(ink)) m_stroker.stroke(arc, rendition->line_style(), ink);
}

void VectorPainter::draw_sector(LM_Rendition* rendition, const LM_DCI_Point* center,
                                const LM_DCI_Point* radii, float start, float end, float rotation,
                                const LM_RGB32* fill) {
  draw_area(rendition, center, radii, start, end, rotation, fill);
}

void VectorPainter::draw_area(LM_Rendition* rendition, const LM_DCI_Point* center,
                              const LM_DCI_Point* radii, double start, double end, double rotation,
                              const LM_RGB32* fill) {
  const EllipticalArc arc(*center, *radii, start, end, rotation);
  if (!arc.is_drawable() || !m_page.enter(*rendition)) return;
  fill_arc(arc, fill != nullptr ? *fill : rendition->color(), true);
}

void VectorPainter::fill_arc(const EllipticalArc& arc, LM_RGB32 color, bool with_center) {
  if (is_invisible(color)) return;
  if (arc.is_flat()) return m_stroker.stroke_flat(arc, with_center, {}, color);
  cairo_t* cairo = m_page.cairo();
  const PagePoint center = page_point(arc.center());
  const bool from_center = with_center && !arc.is_whole();
  if (is_inside(arc, m_page.box())) {
    cairo_new_sub_path(cairo);
    if (from_center) cairo_line_to(cairo, center.x, center.y);
    add_curves(cairo, arc);
    cairo_close_path(cairo);
  } else {
    m_contour.clear();
    if (from_center) m_contour.push_back(center);
    add_points(arc, m_page.box(), m_contour);
    m_page.add(m_contour);
  }
  m_page.set_ink(color);
  cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_WINDING);
  cairo_fill(cairo);
}

}  // namespace lumen
