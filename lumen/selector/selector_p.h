#pragma once

#include <cstdint>
#include <vector>

#include "displaylist/platform/device_actions.h"
#include "displaylist/platform/rendition.h"
#include "lumen/geometry/pixel_rectangle_p.h"
#include "lumen/selector/touch_test_p.h"
#include "lumen/selector_device.h"

namespace lumen {

/// What a SelectorDevice does.
class Selector {
 public:
  using Hit = SelectorDevice::Hit;

  void set_pick_box(const LM_Clip_Rectangle& box);
  [[nodiscard]] const std::vector<Hit>& hits() const { return m_hits; }
  void clear() { m_hits.clear(); }

  /// A text of wide or multibyte characters.
  template <class Character>
  void draw_text(const LM_Rendition& rendition, const LM_DCI_Point& start,
                 const Character* characters, std::int32_t count);

  // The actions, called through the table.
  void dot_clipped(LM_Rendition* rendition, const LM_DCI_Point* point, const LM_RGB32* color);
  void polyline_clipped(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points);
  void gouraud_polyline_clipped(LM_Rendition* rendition, std::int32_t count,
                                const LM_DCI_Point* points, const LM_RGB32* colors);
  void polygon_clipped(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points,
                       std::int32_t reserved);
  void triangle_strip_clipped(LM_Rendition* rendition, std::int32_t count,
                              const LM_DCI_Point* points);
  void gouraud_triangle_strip_clipped(LM_Rendition* rendition, std::int32_t count,
                                      const LM_DCI_Point* points, const LM_RGB32* colors);
  void textured_triangle_strip_clipped(LM_Rendition* rendition, std::int32_t count,
                                       const LM_DCI_Point* points, const LM_RGB32* colors,
                                       const LM_Vertex_Triple* first, std::int32_t wrap,
                                       const std::uint32_t* modulation,
                                       const LM_Vertex_Triple* second);
  void marker_clipped(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points);
  void image_clipped(LM_Rendition* rendition, const LM_DCI_Point* corner, LM_Image* const* cell);
  void elliptical_arc(LM_Rendition* rendition, const LM_DCI_Point* center,
                      const LM_DCI_Point* radii, float start, float end, float rotation,
                      const LM_RGB32* fill);
  void elliptical_arc_colored(LM_Rendition* rendition, const LM_DCI_Point* center,
                              const LM_DCI_Point* radii, float start, float end, float rotation,
                              const LM_RGB32* fill);
  void elliptical_area(LM_Rendition* rendition, const LM_DCI_Point* center,
                       const LM_DCI_Point* radii, double start, double end, double rotation,
                       const LM_RGB32* fill);

  // Points that are known to be inside the clip rectangle are searched the same
  // way, since what is drawn at them may leave it.
  void dot_unclipped(LM_Rendition* rendition, const LM_DCI_Point* point, const LM_RGB32* color) {
    dot_clipped(rendition, point, color);
  }
  void polyline_unclipped(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points) {
    polyline_clipped(rendition, count, points);
  }
  void gouraud_polyline_unclipped(LM_Rendition* rendition, std::int32_t count,
                                  const LM_DCI_Point* points, const LM_RGB32* colors) {
    gouraud_polyline_clipped(rendition, count, points, colors);
  }
  void polygon_unclipped(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points,
                         std::int32_t reserved) {
    polygon_clipped(rendition, count, points, reserved);
  }
  void triangle_strip_unclipped(LM_Rendition* rendition, std::int32_t count,
                                const LM_DCI_Point* points) {
    triangle_strip_clipped(rendition, count, points);
  }
  void textured_triangle_strip_unclipped(LM_Rendition* rendition, std::int32_t count,
                                         const LM_DCI_Point* points, const LM_RGB32* colors,
                                         const LM_Vertex_Triple* first, std::int32_t wrap,
                                         const std::uint32_t* modulation,
                                         const LM_Vertex_Triple* second) {
    textured_triangle_strip_clipped(rendition, count, points, colors, first, wrap, modulation,
                                    second);
  }
  void marker_unclipped(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points) {
    marker_clipped(rendition, count, points);
  }
  void image_unclipped(LM_Rendition* rendition, const LM_DCI_Point* corner, LM_Image* const* cell) {
    image_clipped(rendition, corner, cell);
  }

 private:
  /// The pixels of the pick box inside the rendition's clip rectangle.
  [[nodiscard]] PixelRectangle inside(const LM_Rendition& rendition) const;
  void search_line(const LM_Rendition& rendition, std::int32_t count, const LM_DCI_Point* points);
  void search_strip(const LM_Rendition& rendition, std::int32_t count, const LM_DCI_Point* points);
  template <class Test>
  void search_arc(const LM_Rendition& rendition, const LM_DCI_Point& center,
                  const LM_DCI_Point& radii, std::int64_t reach, const Test& test);
  template <class Test>
  void search(const LM_Rendition& rendition, const PixelRectangle& inside, const Test& test);

  PixelRectangle m_pick_box{0, 0, -1, -1};
  std::vector<Hit> m_hits;
  TouchTest m_touch_test;
};

}  // namespace lumen
