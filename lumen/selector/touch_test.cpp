#include "lumen/geometry/line_pattern_p.h"
#include "lumen/geometry/line_run_p.h"
#include "lumen/geometry/marker_geometry_p.h"
#include "lumen/pixel_blend_p.h"
#include "lumen/selector/touch_test_p.h"
#include "lumen/text/text_shape_p.h"

namespace lumen {
namespace {

bool is_thin(const LM_Line_Style& style) {
  return style.weight <= 1;
}

/// The corners of square ends are furthest away; the rest is for flat ends and
/// even weights.
std::int64_t stroke_reach(const LM_Line_Style& style) {
  return static_cast<std::int64_t>(Stroker::width_of(style)) + 2;
}

}  // namespace

std::int64_t TouchTest::reach_of(const LM_Line_Style& style) {
  return is_thin(style) ? 0 : stroke_reach(style);
}

std::int64_t TouchTest::marker_reach(const LM_Rendition& rendition) {
  return MarkerGeometry(rendition.marker()).reach() + stroke_reach(rendition.line_style());
}

bool TouchTest::polyline(const TouchArea& area, std::int32_t count, const LM_DCI_Point* points,
                         const LM_Line_Style& style) {
  if (is_thin(style)) return thin_line(area, count, points, style.pattern);
  m_path.clear();
  for (std::int32_t i = 0; i < count; ++i) m_path.push_back(area.moved(points[i]));
  m_shape.clear();
  m_stroker.add(count, m_path.data(), style, area.moved_inside(), m_shape);
  return fill_shape(area, LM_Fill_Rule::non_zero);
}

bool TouchTest::thin_line(const TouchArea& area, std::int32_t count, const LM_DCI_Point* points,
                          std::int32_t pattern) {
  const PixelRectangle& inside = area.inside();
  if (!area.has_clip() && pattern_lengths(pattern).empty()) {
    for (std::int32_t i = 1; i < count; ++i) {
      if (line_run(points[i - 1], points[i], inside).count > 0) return true;
    }
    return inside.contains(points[count - 1]);
  }
  m_pixels.start(inside, pattern);
  m_pixels.add_polyline(count, points);
  const TouchArea unmoved = area.left_in_place();
  TouchPen pen(unmoved);
  m_pixels.fill(false, pen);
  return pen.touched();
}

bool TouchTest::polygon(const TouchArea& area, std::int32_t count, const LM_DCI_Point* points) {
  m_shape.clear();
  for (std::int32_t i = 0; i < count; ++i) {
    const Place place = area.moved(points[i]);
    if (i == 0) {
      m_shape.move_to(place.x, place.y);
    } else {
      m_shape.line_to(place.x, place.y);
    }
  }
  return fill_shape(area, LM_Fill_Rule::even_odd);
}

bool TouchTest::strip(const TouchArea& area, std::int32_t count, const LM_DCI_Point* points) {
  // Together the triangles cover what each one covers.
  for (std::int32_t i = 0; i < count - 2; ++i) {
    if (is_within_reach(3, points + i, 0, area.inside()) && polygon(area, 3, points + i)) {
      return true;
    }
  }
  return false;
}

bool TouchTest::markers(const TouchArea& area, std::int32_t count, const LM_DCI_Point* points,
                        const LM_Rendition& rendition) {
  const std::int64_t reach = marker_reach(rendition);
  TouchPen pen(area);
  for (std::int32_t i = 0; i < count && !pen.touched(); ++i) {
    if (!is_within_reach(1, points + i, reach, area.inside())) continue;
    const LM_DCI_Point point = area.moved_pixel(points[i]);
    m_marker_stamp.draw(rendition, false, 1, &point, area.moved_inside(), pen);
  }
  return pen.touched();
}

bool TouchTest::image(const TouchArea& area, const LM_DCI_Point& corner, const LM_Image& image) {
  const PixelRectangle part = image_pixels(image, corner, area.inside());
  const std::int64_t columns = std::int64_t{part.max_x} - part.min_x + 1;
  const std::ptrdiff_t left = std::ptrdiff_t{part.min_x} - corner.x;
  for (std::int64_t y = part.min_y; y <= part.max_y && columns > 0; ++y) {
    const std::uint32_t* words = image.row(static_cast<std::int32_t>(y - corner.y)) + left;
    for (std::int64_t i = 0; i < columns; ++i) {
      if (opacity_of({words[i]}) == 0) continue;
      if (area.is_clear(static_cast<std::int32_t>(part.min_x + i), static_cast<std::int32_t>(y))) {
        return true;
      }
    }
  }
  return false;
}

bool TouchTest::arc_line(const TouchArea& area, const EllipticalArc& arc,
                         const LM_Line_Style& style) {
  m_strokes.start(style, false, area.moved_inside());
  m_strokes.add_arc(arc);
  return fill_strokes(area);
}

bool TouchTest::arc_area(const TouchArea& area, const EllipticalArc& arc, ArcArea part) {
  if (arc.is_flat()) {
    m_strokes.start(LM_Line_Style(), false, area.moved_inside());
    m_strokes.add_flat_area(arc, part);
    return fill_strokes(area);
  }
  m_shape.clear();
  add_area(arc, part, false, area.moved_inside(), m_shape);
  return fill_shape(area, LM_Fill_Rule::even_odd);
}

bool TouchTest::text(const TouchArea& area, const TextRun& run, const TextPlacement& placement,
                     bool is_bar) {
  m_shape.clear();
  if (is_bar) {
    add_bar(run, placement, m_shape);
  } else {
    add_glyphs(run, placement, area.moved_inside(), m_shape);
  }
  TouchPen pen(area);
  m_shape.fill(LM_Fill_Rule::non_zero, true, area.moved_inside(), pen);
  return pen.touched();
}

bool TouchTest::fill_strokes(const TouchArea& area) {
  TouchPen pen(area);
  m_strokes.fill(false, pen);
  return pen.touched();
}

bool TouchTest::fill_shape(const TouchArea& area, LM_Fill_Rule rule) {
  TouchPen pen(area);
  m_shape.fill(rule, false, area.moved_inside(), pen);
  return pen.touched();
}

}  // namespace lumen
