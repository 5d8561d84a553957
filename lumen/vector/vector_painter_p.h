#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "displaylist/platform/device_actions.h"
#include "lumen/geometry/elliptical_arc_p.h"
#include "lumen/geometry/marker_geometry_p.h"
#include "lumen/vector/vector_images_p.h"
#include "lumen/vector/vector_page_p.h"
#include "lumen/vector/vector_strip_p.h"
#include "lumen/vector/vector_stroke_p.h"
#include "lumen/vector/vector_text_p.h"
#include "lumen/vector_device.h"

namespace lumen {

/// The device's actions, which are called through the table.
class VectorPainter {
 public:
  VectorPainter(VectorFormat format, std::int32_t width, std::int32_t height,
                const std::string& path)
      : m_page(format, width, height, path) {}

  void fill_table(LM_Device_Actions& actions);
  [[nodiscard]] const std::string& finish() { return m_page.finish(); }

  /// A text of wide or multibyte characters.
  template <class Character>
  void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start, const Character* characters,
                 std::int32_t count) {
    if (count < 1 || is_invisible(rendition->color()) || !m_page.enter(*rendition)) return;
    m_text.draw(*rendition, start, characters, count);
  }

 private:
  template <auto Member, class Action>
  void bind(Action& clipped, Action& unclipped) {
    clipped = {this, &LM_Bound_Action<Member>::call};
    unclipped = clipped;
  }

  void draw_dot(LM_Rendition* rendition, const LM_DCI_Point* point, const LM_RGB32* color);
  void draw_polyline(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points);
  void draw_gouraud_polyline(LM_Rendition* rendition, std::int32_t count,
                             const LM_DCI_Point* points, const LM_RGB32* colors);
  void draw_polygon(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points,
                    std::int32_t reserved);
  void draw_strip(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points);
  void draw_gouraud_strip(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points,
                          const LM_RGB32* colors);
  void draw_textured_strip(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points,
                           const LM_RGB32* colors, const LM_Vertex_Triple* places,
                           std::int32_t wrap, const std::uint32_t* modulation,
                           const LM_Vertex_Triple* second_places);
  void draw_markers(LM_Rendition* rendition, std::int32_t count, const LM_DCI_Point* points);
  void draw_image(LM_Rendition* rendition, const LM_DCI_Point* corner, LM_Image* const* cell);
  void draw_arc(LM_Rendition* rendition, const LM_DCI_Point* center, const LM_DCI_Point* radii,
                float start, float end, float rotation, const LM_RGB32* fill);
  void draw_sector(LM_Rendition* rendition, const LM_DCI_Point* center, const LM_DCI_Point* radii,
                   float start, float end, float rotation, const LM_RGB32* fill);
  void draw_area(LM_Rendition* rendition, const LM_DCI_Point* center, const LM_DCI_Point* radii,
                 double start, double end, double rotation, const LM_RGB32* fill);

  void draw_marker(const MarkerGeometry& marker, const PagePoint& place, std::int32_t weight);
  void fill_arc(const EllipticalArc& arc, LM_RGB32 color, bool with_center);

  VectorPage m_page;
  VectorStroker m_stroker{m_page};
  VectorStrip m_strip{m_page};
  VectorImages m_images{m_page};
  VectorText m_text{m_page};
  Contour m_contour;
  std::vector<LM_DCI_Point> m_points;
};

}  // namespace lumen
