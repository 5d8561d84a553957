#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "lumen/pixel_blend_p.h"
#include "lumen/selector/selector_p.h"
#include "lumen/text/text_shape_p.h"

namespace lumen {
namespace {

bool is_visible(LM_RGB32 color) {
  return !is_invisible(color);
}

/// Whether there are colours and one of them is visible.
bool are_visible(std::int32_t count, const LM_RGB32* colors) {
  return colors != nullptr && std::any_of(colors, colors + count, is_visible);
}

/// Whether a vertex lies on a texture page that exists.
bool have_page(std::int32_t count, const LM_Vertex_Triple* places, const LM_Texture_Pages* pages) {
  return places != nullptr && pages != nullptr &&
         std::any_of(places, places + count, [pages](const LM_Vertex_Triple& place) {
           return pages->page(place.page()) != nullptr;
         });
}

/// The part of the pixels that the clip's contours may enclose.
PixelRectangle within(const PixelRectangle& pixels, const LM_Contour_Set_Data& clip) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  double min_x = infinity;
  double min_y = infinity;
  double max_x = -infinity;
  double max_y = -infinity;
  for (std::int32_t i = 0; i < clip.contour_count(); ++i) {
    const LM_Contour contour = clip.contour(i);
    if (contour.points == nullptr) continue;
    for (const LM_Point& point :
         std::span(contour.points, static_cast<std::size_t>(contour.count))) {
      if (!std::isfinite(point.x) || !std::isfinite(point.y)) return pixels;
      min_x = std::min(min_x, std::floor(double{point.x}));
      min_y = std::min(min_y, std::floor(double{point.y}));
      max_x = std::max(max_x, std::ceil(double{point.x}));
      max_y = std::max(max_y, std::ceil(double{point.y}));
    }
  }
  const auto limited = [](double value, std::int32_t min, std::int32_t max) {
    return static_cast<std::int32_t>(std::clamp<double>(value, min, max));
  };
  if (min_x > pixels.max_x || max_x < pixels.min_x || min_y > pixels.max_y ||
      max_y < pixels.min_y) {
    return {0, 0, -1, -1};
  }
  return {limited(min_x, pixels.min_x, pixels.max_x), limited(min_y, pixels.min_y, pixels.max_y),
          limited(max_x, pixels.min_x, pixels.max_x), limited(max_y, pixels.min_y, pixels.max_y)};
}

Selector::Hit hit_of(const LM_Rendition& rendition) {
  const LM_Handle<LM_Selector_Data> data = rendition.selector_data();
  return data ? Selector::Hit{data->key(), data->index()} : Selector::Hit();
}

}  // namespace

void Selector::set_pick_box(const LM_Clip_Rectangle& box) {
  const auto limited = [](std::int32_t min, std::int32_t max) {
    const std::int64_t limit = std::int64_t{min} + Picture::max_side - 1;
    return static_cast<std::int32_t>(std::min<std::int64_t>(max, limit));
  };
  m_pick_box = {box.min_x, box.min_y, limited(box.min_x, box.max_x), limited(box.min_y, box.max_y)};
  m_hits.clear();
}

PixelRectangle Selector::inside(const LM_Rendition& rendition) const {
  const LM_Clip_Rectangle& clip = rendition.clip_rectangle();
  return {std::max(m_pick_box.min_x, clip.min_x), std::max(m_pick_box.min_y, clip.min_y),
          std::min(m_pick_box.max_x, clip.max_x), std::min(m_pick_box.max_y, clip.max_y)};
}

/// Notes a hit if `test(area)` holds. The area is not empty.
template <class Test>
void Selector::search(const LM_Rendition& rendition, const PixelRectangle& inside,
                      const Test& test) {
  const Hit hit = hit_of(rendition);
  if (!m_hits.empty() && m_hits.back() == hit) return;
  const LM_Contour_Set_Data* clip = rendition.device_clip();
  const PixelRectangle pixels = clip == nullptr ? inside : within(inside, *clip);
  if (!pixels.is_empty() && test(TouchArea(pixels, clip))) m_hits.push_back(hit);
}

void Selector::dot_clipped(LM_Rendition* rendition, const LM_DCI_Point* point,
                           const LM_RGB32* color) {
  const PixelRectangle pixels = inside(*rendition);
  if (!pixels.contains(*point) || !is_visible(color != nullptr ? *color : rendition->color())) {
    return;
  }
  search(*rendition, pixels,
         [point](const TouchArea& area) { return area.is_clear(point->x, point->y); });
}

void Selector::search_line(const LM_Rendition& rendition, std::int32_t count,
                           const LM_DCI_Point* points) {
  const PixelRectangle pixels = inside(rendition);
  const LM_Line_Style style = rendition.line_style();
  if (!is_within_reach(count, points, TouchTest::reach_of(style), pixels)) return;
  search(rendition, pixels,
         [&](const TouchArea& area) { return m_touch_test.polyline(area, count, points, style); });
}

void Selector::polyline_clipped(LM_Rendition* rendition, std::int32_t count,
                                const LM_DCI_Point* points) {
  if (count <= 0 || !is_visible(rendition->color())) return;
  search_line(*rendition, count, points);
}

void Selector::gouraud_polyline_clipped(LM_Rendition* rendition, std::int32_t count,
                                        const LM_DCI_Point* points, const LM_RGB32* colors) {
  if (count <= 0 || !are_visible(count, colors)) return;
  search_line(*rendition, count, points);
}

void Selector::polygon_clipped(LM_Rendition* rendition, std::int32_t count,
                               const LM_DCI_Point* points, std::int32_t /*reserved*/) {
  if (count < 3 || !is_visible(rendition->color())) return;
  const PixelRectangle pixels = inside(*rendition);
  if (!is_within_reach(count, points, 0, pixels)) return;
  search(*rendition, pixels,
         [&](const TouchArea& area) { return m_touch_test.polygon(area, count, points); });
}

void Selector::search_strip(const LM_Rendition& rendition, std::int32_t count,
                            const LM_DCI_Point* points) {
  const PixelRectangle pixels = inside(rendition);
  if (!is_within_reach(count, points, 0, pixels)) return;
  search(rendition, pixels,
         [&](const TouchArea& area) { return m_touch_test.strip(area, count, points); });
}

void Selector::triangle_strip_clipped(LM_Rendition* rendition, std::int32_t count,
                                      const LM_DCI_Point* points) {
  if (count < 3 || !is_visible(rendition->color())) return;
  search_strip(*rendition, count, points);
}

void Selector::gouraud_triangle_strip_clipped(LM_Rendition* rendition, std::int32_t count,
                                              const LM_DCI_Point* points, const LM_RGB32* colors) {
  if (count < 3 || !are_visible(count, colors)) return;
  search_strip(*rendition, count, points);
}

void Selector::textured_triangle_strip_clipped(LM_Rendition* rendition, std::int32_t count,
                                               const LM_DCI_Point* points, const LM_RGB32* colors,
                                               const LM_Vertex_Triple* first, std::int32_t /*wrap*/,
                                               const std::uint32_t* /*modulation*/,
                                               const LM_Vertex_Triple* second) {
  if (count < 3) return;
  const LM_Texture_Pages* pages = rendition->texture_pages();
  if (!are_visible(count, colors) && !have_page(count, first, pages) &&
      !have_page(count, second, pages)) {
    return;
  }
  search_strip(*rendition, count, points);
}

void Selector::marker_clipped(LM_Rendition* rendition, std::int32_t count,
                              const LM_DCI_Point* points) {
  if (count <= 0 || !is_visible(rendition->color())) return;
  const PixelRectangle pixels = inside(*rendition);
  if (!is_within_reach(count, points, TouchTest::marker_reach(*rendition), pixels)) return;
  search(*rendition, pixels, [&](const TouchArea& area) {
    return m_touch_test.markers(area, count, points, *rendition);
  });
}

void Selector::image_clipped(LM_Rendition* rendition, const LM_DCI_Point* corner,
                             LM_Image* const* cell) {
  if (cell == nullptr || *cell == nullptr) return;
  const PixelRectangle pixels = inside(*rendition);
  if (pixels.is_empty() || image_pixels(**cell, *corner, pixels).is_empty()) return;
  search(*rendition, pixels,
         [&](const TouchArea& area) { return m_touch_test.image(area, *corner, **cell); });
}

/// Calls `test(area)` where the whole ellipse with a line that reaches so far
/// around it comes near.
template <class Test>
void Selector::search_arc(const LM_Rendition& rendition, const LM_DCI_Point& center,
                          const LM_DCI_Point& radii, std::int64_t reach, const Test& test) {
  // Flat ones are rounded to pixels.
  const std::int64_t far = std::int64_t{std::max(radii.x, radii.y)} + reach + 1;
  const PixelRectangle pixels = inside(rendition);
  if (!is_within_reach(1, &center, far, pixels)) return;
  search(rendition, pixels, test);
}

void Selector::elliptical_arc(LM_Rendition* rendition, const LM_DCI_Point* center,
                              const LM_DCI_Point* radii, float start, float end, float rotation,
                              const LM_RGB32* fill) {
  const bool is_filled = fill != nullptr && is_visible(*fill);
  const bool is_stroked = is_visible(rendition->color());
  const LM_Line_Style style = rendition->line_style();
  if (!is_filled && !is_stroked) return;
  search_arc(*rendition, *center, *radii, TouchTest::reach_of(style), [&](const TouchArea& area) {
    const EllipticalArc arc(area.moved_pixel(*center), *radii, start, end, rotation);
    return arc.is_drawable() &&
           ((is_filled && m_touch_test.arc_area(area, arc, ArcArea::to_chord)) ||
            (is_stroked && m_touch_test.arc_line(area, arc, style)));
  });
}

void Selector::elliptical_arc_colored(LM_Rendition* rendition, const LM_DCI_Point* center,
                                      const LM_DCI_Point* radii, float start, float end,
                                      float rotation, const LM_RGB32* fill) {
  elliptical_area(rendition, center, radii, start, end, rotation, fill);
}

void Selector::elliptical_area(LM_Rendition* rendition, const LM_DCI_Point* center,
                               const LM_DCI_Point* radii, double start, double end, double rotation,
                               const LM_RGB32* fill) {
  if (!is_visible(fill != nullptr ? *fill : rendition->color())) return;
  search_arc(*rendition, *center, *radii, 0, [&](const TouchArea& area) {
    const EllipticalArc arc(area.moved_pixel(*center), *radii, start, end, rotation);
    return arc.is_drawable() && m_touch_test.arc_area(area, arc, ArcArea::to_center);
  });
}

template <class Character>
void Selector::draw_text(const LM_Rendition& rendition, const LM_DCI_Point& start,
                         const Character* characters, std::int32_t count) {
  const LM_Text_Attributes& attributes = rendition.text_attributes();
  const bool is_bar = is_tiny(attributes.size);
  const PixelRectangle pixels = inside(rendition);
  const LM_RGB32 ink = rendition.color();
  if (!is_visible(is_bar ? bar_ink(ink) : ink) || pixels.is_empty()) return;
  search(rendition, pixels, [&](const TouchArea& area) {
    TextPlacement placement(attributes, start);
    const Place moved = area.moved(start);
    placement.start_x = moved.x;
    placement.start_y = moved.y;
    placement.sit_on_pixels();
    return m_touch_test.text(area, set_text(attributes.font, characters, count), placement, is_bar);
  });
}

template void Selector::draw_text(const LM_Rendition&, const LM_DCI_Point&, const wchar_t*,
                                  std::int32_t);
template void Selector::draw_text(const LM_Rendition&, const LM_DCI_Point&, const unsigned char*,
                                  std::int32_t);

}  // namespace lumen
