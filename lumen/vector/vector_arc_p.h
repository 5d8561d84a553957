#pragma once

#include <cairo.h>

#include "lumen/geometry/elliptical_arc_p.h"
#include "lumen/vector/vector_contour_p.h"

namespace lumen {

inline PagePoint page_point(const Place& place) {
  return {place.x + 0.5, place.y + 0.5};
}

/// Whether the whole ellipse that a drawable arc is part of lies in the box.
bool is_inside(const EllipticalArc& arc, const PageBox& box);

/// Adds an arc that is inside a page's box to the path, as curves; joined by a line to what
/// the path ends with.
void add_curves(cairo_t* cairo, const EllipticalArc& arc);

/// Adds the points of any drawable arc, so that lines between them look like
/// it in the box; most others are left out.
void add_points(const EllipticalArc& arc, const PageBox& box, Contour& points);

}  // namespace lumen
