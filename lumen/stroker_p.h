#pragma once

#include <agg_math_stroke.h>
#include <agg_vcgen_dash.h>
#include <agg_vertex_sequence.h>

#include <cstdint>
#include <vector>

#include "displaylist/platform/points.h"
#include "displaylist/platform/rendition.h"
#include "lumen/pixel_rectangle_p.h"
#include "lumen/shape_p.h"

namespace lumen {

/// Turns polylines into the contours of their strokes, to be filled by the
/// non-zero rule. Joints are round (cut off where nobody sees the difference),
/// so that no ink lies further from the path than its ends reach. Each end
/// has its own style; so has each dash of a patterned line.
class Stroker {
 public:
  /// Adds the stroke of the polyline as far as it can be seen in the
  /// rectangle. Coordinates may be any.
  void add(std::int32_t count, const LM_DCI_Point* points, const LM_Line_Style& style,
           const PixelRectangle& inside, Shape& shape);

 private:
  struct Corner {
    double x;
    double y;
  };
  class Outline;

  void set_style(const LM_Line_Style& style);
  void add_piece(Shape& shape);
  void add_dashes(Shape& shape);
  void add_path(Shape& shape, bool closed);
  void add_open(Outline& outline);
  void add_closed(Outline& outline);
  void add_dot(double x, double y, Shape& shape);
  void start_piece(const Corner& corner, double distance);

  agg::math_stroke<Outline> m_math;
  agg::line_cap_e m_start_cap = agg::butt_cap;
  agg::line_cap_e m_end_cap = agg::butt_cap;
  agg::vcgen_dash m_dash;
  double m_pattern_length = 0;  ///< 0 for a solid line
  agg::vertex_sequence<agg::vertex_dist> m_path;
  std::vector<Corner> m_piece;   ///< consecutive visible corners
  double m_piece_distance = 0;   ///< of its first corner from the polyline's start
};

}  // namespace lumen
