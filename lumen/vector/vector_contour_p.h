#pragma once

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <vector>

#include "displaylist/platform/points.h"

namespace lumen {

/// A place on the page of a vector device: units from its left upper corner.
struct PagePoint {
  double x;
  double y;
};

inline PagePoint page_point(const LM_DCI_Point& point) {
  return {point.x + 0.5, point.y + 0.5};
}

inline PagePoint between(const PagePoint& a, const PagePoint& b, double part) {
  return {a.x + (b.x - a.x) * part, a.y + (b.y - a.y) * part};
}

inline double distance_between(const PagePoint& a, const PagePoint& b) {
  return std::hypot(b.x - a.x, b.y - a.y);
}

/// Closer together than that, points tell no direction.
inline bool same_place(const PagePoint& a, const PagePoint& b) {
  constexpr double no_length = 1e-6;
  return std::abs(a.x - b.x) < no_length && std::abs(a.y - b.y) < no_length;
}

/// Twice the area of the triangle, positive when it turns from x to y.
inline double doubled_area(const PagePoint& a, const PagePoint& b, const PagePoint& c) {
  return (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
}

/// A box of the page and around it, its border included.
struct PageBox {
  double min_x;
  double min_y;
  double max_x;
  double max_y;

  [[nodiscard]] bool contains(const PagePoint& point) const {
    return min_x <= point.x && point.x <= max_x && min_y <= point.y && point.y <= max_y;
  }
};

using Contour = std::vector<PagePoint>;

/// Leaves of a closed contour what lies where `depth(point)`, which is linear,
/// is at least 0. `scratch` is overwritten.
template <class Depth>
requires std::invocable<Depth, PagePoint>
void cut(Contour& contour, Contour& scratch, Depth depth) {
  scratch.clear();
  for (std::size_t i = 0; i < contour.size(); ++i) {
    const PagePoint& from = contour[i];
    const PagePoint& to = contour[i + 1 < contour.size() ? i + 1 : 0];
    const double start = depth(from);
    const double end = depth(to);
    if (start >= 0) scratch.push_back(from);
    if ((start >= 0) != (end >= 0)) scratch.push_back(between(from, to, start / (start - end)));
  }
  contour.swap(scratch);
}

/// Leaves of a closed contour what lies in the box.
inline void cut(Contour& contour, Contour& scratch, const PageBox& box) {
  if (std::all_of(contour.begin(), contour.end(),
                  [&](const PagePoint& point) { return box.contains(point); })) {
    return;
  }
  cut(contour, scratch, [&](const PagePoint& point) { return point.x - box.min_x; });
  cut(contour, scratch, [&](const PagePoint& point) { return box.max_x - point.x; });
  cut(contour, scratch, [&](const PagePoint& point) { return point.y - box.min_y; });
  cut(contour, scratch, [&](const PagePoint& point) { return box.max_y - point.y; });
}

inline void add_to_path(cairo_t* cairo, const Contour& contour) {
  if (contour.empty()) return;
  cairo_new_sub_path(cairo);
  for (const PagePoint& point : contour) cairo_line_to(cairo, point.x, point.y);
  cairo_close_path(cairo);
}

}  // namespace lumen
