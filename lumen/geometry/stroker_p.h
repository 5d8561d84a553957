#pragma once

#include <agg_math_stroke.h>
#include <agg_vcgen_dash.h>
#include <agg_vertex_sequence.h>

#include <cstdint>
#include <vector>

#include "displaylist/platform/points.h"
#include "displaylist/platform/rendition.h"
#include "lumen/geometry/elliptical_arc_p.h"
#include "lumen/geometry/pixel_rectangle_p.h"
#include "lumen/geometry/shape_p.h"

namespace lumen {

/// Turns polylines into the contours of their strokes, to be filled by the
/// non-zero rule. Joints are round (cut off where nobody sees the difference),
/// so that no ink lies further from the path than its ends reach. Each end
/// has its own style; so has each dash of a patterned line.
///
/// Points are pixel centres. A flat end of the line reaches half a pixel past
/// its point, to the far edge of that pixel; a flat end of a dash within the
/// line does not. The stroke of an even weight lies half a pixel further left
/// and up, so that its edges, too, run between pixels.
class Stroker {
 public:
  Stroker();

  /// Adds the stroke of the polyline as far as it can be seen in the
  /// rectangle. Coordinates may be any, `count` is at least 1.
  void add(std::int32_t count, const LM_DCI_Point* points, const LM_Line_Style& style,
           const PixelRectangle& inside, Shape& shape);
  /// The same for the points of a curve.
  void add(std::int32_t count, const Place* points, const LM_Line_Style& style,
           const PixelRectangle& inside, Shape& shape);

  /// The width of the strokes of a style.
  [[nodiscard]] static double width_of(const LM_Line_Style& style);
  /// A solid line is cut this far and its width outside the rectangle.
  static constexpr double solid_margin = 4096;

  /// How far the stroke that was added last lies right of and below the points.
  [[nodiscard]] double offset() const { return m_offset; }

 private:
  /// Takes the corners of one contour from AGG's stroke mathematics.
  class Outline {
   public:
    using value_type = agg::point_d;

    /// Every corner is moved by the offset in both directions.
    Outline(Shape& shape, double offset) : m_shape(shape), m_offset(offset) {}
    /// The mathematics asks for an empty list before each joint.
    void remove_all() {}
    void add(const agg::point_d& point) {
      if (m_started) {
        m_shape.line_to(point.x + m_offset, point.y + m_offset);
      } else {
        m_shape.move_to(point.x + m_offset, point.y + m_offset);
      }
      m_started = true;
    }

   private:
    Shape& m_shape;
    double m_offset;
    bool m_started = false;
  };

  void set_style(const LM_Line_Style& style);
  template <class Point>
  void add_styled(std::int32_t count, const Point* points, const PixelRectangle& inside,
                  Shape& shape);
  template <class Point>
  void add_clipped(std::int32_t count, const Point* points, const PixelRectangle& inside,
                   Shape& shape);
  /// The part of the polyline in m_piece; `distance` of its start along the line.
  void add_piece(double distance, Shape& shape);
  void add_dashes(double distance, Shape& shape);
  /// Which ends of an open path are ends of the line, not of a dash within.
  struct LineEnds {
    bool start;
    bool end;
  };

  /// The path in m_path.
  void add_path(bool closed, LineEnds ends, Shape& shape);
  void add_open(LineEnds ends, Shape& shape);
  /// The end at `end` of the segment from there to `next`.
  void add_end(agg::line_cap_e cap, bool of_line, const agg::vertex_dist& end,
               const agg::vertex_dist& next, Outline& outline);
  void add_closed(Shape& shape);
  void add_dot(const agg::point_d& point, Shape& shape);

  agg::math_stroke<Outline> m_math;
  agg::line_cap_e m_start_cap = agg::butt_cap;
  agg::line_cap_e m_end_cap = agg::butt_cap;
  double m_offset = 0;
  agg::vcgen_dash m_dash;
  double m_pattern_length = 0;  ///< 0 for a solid line
  agg::vertex_sequence<agg::vertex_dist> m_path;
  std::vector<agg::point_d> m_piece;
};

}  // namespace lumen
