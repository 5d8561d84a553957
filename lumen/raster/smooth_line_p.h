#pragma once

#include <agg_color_rgba.h>
#include <agg_rasterizer_outline_aa.h>
#include <agg_renderer_outline_aa.h>

#include <cstdint>

#include "displaylist/platform/points.h"
#include "lumen/geometry/pixel_rectangle_p.h"

namespace lumen {

/// Draws antialiased solid lines of weight 1 with AGG's outline renderer: a
/// third of the time of filling the stroke, but crossings are covered twice,
/// which only transparent ink shows. Kept per thread.
class SmoothLine {
 public:
  SmoothLine();
  SmoothLine(const SmoothLine&) = delete;
  SmoothLine& operator=(const SmoothLine&) = delete;

  /// More than how far from its points a line covers pixels.
  static constexpr double reach = 4;

  /// Whether the polyline can be drawn so: the outline renderer swallows
  /// polylines of less than two pixels and flat closed ones, and saturates far
  /// coordinates.
  static bool can_draw(std::int32_t count, const LM_DCI_Point* points);

  /// How far from what is seen of a polyline its segments may be cut, so that no cut
  /// segment is seen; whole_margin for polylines with longer segments.
  static std::int32_t margin_of(std::int32_t count, const LM_DCI_Point* points);
  static constexpr std::int32_t whole_margin = 64;

  /// `Pen` has `varied(x, y, length, covers)`.
  template <class Pen>
  void draw(std::int32_t count, const LM_DCI_Point* points, const PixelRectangle& inside, Pen& pen,
            std::int32_t margin = whole_margin) {
    m_target.aim(inside, pen);
    draw(count, points, inside, margin);
  }

 private:
  /// What AGG takes for the canvas: hands the pen what is inside.
  class Target {
   public:
    using color_type = agg::rgba8;

    template <class Pen>
    void aim(const PixelRectangle& inside, Pen& pen) {
      m_inside = inside;
      m_pen = &pen;
      m_varied = [](void* aimed, int x, int y, int length, const agg::int8u* covers) {
        static_cast<Pen*>(aimed)->varied(x, y, length, covers);
      };
    }
    void blend_solid_hspan(int x, int y, int length, const color_type& /*color*/,
                           const agg::int8u* covers) const;
    void blend_solid_vspan(int x, int y, int length, const color_type& /*color*/,
                           const agg::int8u* covers) const;

   private:
    PixelRectangle m_inside{};
    void* m_pen = nullptr;
    void (*m_varied)(void* pen, int x, int y, int length, const agg::int8u* covers) = nullptr;
  };
  using Renderer = agg::renderer_outline_aa<Target>;
  void draw(std::int32_t count, const LM_DCI_Point* points, const PixelRectangle& inside,
            std::int32_t margin);

  Target m_target;
  agg::line_profile_aa m_profile;
  Renderer m_renderer;
  agg::rasterizer_outline_aa<Renderer> m_rasterizer;
};

}  // namespace lumen
