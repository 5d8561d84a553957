#include "lumen/vector/vector_arc_p.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lumen {
namespace {

/// How many curves make up the arc. A curve for the angle a is about
/// r (a / (pi / 2))^6 / 3700 off.
int curve_count(const EllipticalArc& arc) {
  constexpr double deviation = 0.01;
  constexpr double quarter = std::numbers::pi / 2;
  const double off = std::max(arc.largest_radius() / 3700, deviation);
  const double step = quarter * std::pow(deviation / off, 1.0 / 6);
  return std::max(static_cast<int>(std::ceil(arc.sweep() / step - 1e-9)), 1);
}

}  // namespace

bool is_inside(const EllipticalArc& arc, const PageBox& box) {
  const PlaceBox bounds = arc.bounds();
  return box.contains(page_point(Place{bounds.min_x, bounds.min_y})) &&
         box.contains(page_point(Place{bounds.max_x, bounds.max_y}));
}

void add_curves(cairo_t* cairo, const EllipticalArc& arc) {
  const int count = curve_count(arc);
  const double step = arc.sweep() / count;
  const double reach = 4.0 / 3 * std::tan(step / 4);
  PagePoint from = page_point(arc.at(arc.start()));
  cairo_line_to(cairo, from.x, from.y);
  Place direction = arc.direction_at(arc.start());
  for (int i = 1; i <= count; ++i) {
    const double angle = arc.start() + step * i;
    const PagePoint to = page_point(arc.at(angle));
    const Place next = arc.direction_at(angle);
    cairo_curve_to(cairo, from.x + reach * direction.x, from.y + reach * direction.y,
                   to.x - reach * next.x, to.y - reach * next.y, to.x, to.y);
    from = to;
    direction = next;
  }
}

void add_points(const EllipticalArc& arc, const PageBox& box, Contour& points) {
  ArcSteps(arc, 0, ArcSteps::unlimited)
      .visit({box.min_x, box.min_y, box.max_x, box.max_y},
             [&](const Place& place) { points.push_back(page_point(place)); });
}

}  // namespace lumen
