#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "displaylist/platform/image.h"
#include "displaylist/platform/points.h"
#include "displaylist/platform/rendition.h"
#include "lumen/geometry/coverage_p.h"
#include "lumen/geometry/elliptical_arc_p.h"
#include "lumen/geometry/marker_stamp_p.h"
#include "lumen/geometry/shape_p.h"
#include "lumen/geometry/stroker_p.h"
#include "lumen/geometry/thin_pixels_p.h"
#include "lumen/selector/touch_pen_p.h"
#include "lumen/text/text_run_p.h"

namespace lumen {

/// Whether the rectangle has pixels and comes within `reach`, a few 2^31 at
/// most, of a box around the points. `count` is at least 1.
inline bool is_within_reach(std::int32_t count, const LM_DCI_Point* points, std::int64_t reach,
                            const PixelRectangle& inside) {
  std::int32_t left = points[0].x;
  std::int32_t right = left;
  std::int32_t top = points[0].y;
  std::int32_t bottom = top;
  for (std::int32_t i = 1; i < count; ++i) {
    left = std::min(left, points[i].x);
    right = std::max(right, points[i].x);
    top = std::min(top, points[i].y);
    bottom = std::max(bottom, points[i].y);
  }
  return left - reach <= inside.max_x && right + reach >= inside.min_x &&
         top - reach <= inside.max_y && bottom + reach >= inside.min_y && !inside.is_empty();
}

/// Tells whether shapes, drawn without antialiasing, cover a pixel of an area,
/// which is not empty. It works on what RasterDevice draws with, and allocates
/// only while it grows.
class TouchTest {
 public:
  /// How far from its points the line of a style may have pixels.
  static std::int64_t reach_of(const LM_Line_Style& style);
  /// The same for the markers of a rendition.
  static std::int64_t marker_reach(const LM_Rendition& rendition);

  /// `count` is at least 1.
  bool polyline(const TouchArea& area, std::int32_t count, const LM_DCI_Point* points,
                const LM_Line_Style& style);
  /// The same with a count of at least 3.
  bool polygon(const TouchArea& area, std::int32_t count, const LM_DCI_Point* points);
  bool strip(const TouchArea& area, std::int32_t count, const LM_DCI_Point* points);
  /// Those of the rendition; `count` may be any.
  bool markers(const TouchArea& area, std::int32_t count, const LM_DCI_Point* points,
               const LM_Rendition& rendition);
  /// A pixel of the image that is not invisible.
  bool image(const TouchArea& area, const LM_DCI_Point& corner, const LM_Image& image);
  /// The line along a drawable arc, which is moved like the area.
  bool arc_line(const TouchArea& area, const EllipticalArc& arc, const LM_Line_Style& style);
  bool arc_area(const TouchArea& area, const EllipticalArc& arc, ArcArea part);
  /// A pixel that letters, or the bar in the place of tiny ones, have a part of:
  /// their edges are always smooth. The placement is moved like the area.
  bool text(const TouchArea& area, const TextRun& run, const TextPlacement& placement, bool is_bar);

 private:
  bool thin_line(const TouchArea& area, std::int32_t count, const LM_DCI_Point* points,
                 std::int32_t pattern);
  bool fill_strokes(const TouchArea& area);
  bool fill_shape(const TouchArea& area, LM_Fill_Rule rule);

  Shape m_shape;
  Stroker m_stroker;
  Strokes m_strokes{m_stroker, m_shape};
  MarkerStamp m_marker_stamp{m_strokes, m_shape};
  ThinPixels m_pixels;
  std::vector<Place> m_path;
};

}  // namespace lumen
