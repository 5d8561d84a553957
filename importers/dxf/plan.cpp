#include "importers/dxf/plan.h"

#include <algorithm>
#include <limits>

namespace importers::dxf {

namespace {

/// Narrows the parameters for which base + t direction lies from low to high.
/// False when there are none.
bool narrow(double base, double direction, double low, double high, double& from, double& to) {
  if (direction == 0.0) return base >= low && base <= high;
  const double at_low = (low - base) / direction;
  const double at_high = (high - base) / direction;
  from = std::max(from, std::min(at_low, at_high));
  to = std::min(to, std::max(at_low, at_high));
  return from <= to;
}

bool cut(Shape& shape, const Extent& extent) {
  const Beam beam = std::get<Beam>(shape.what);
  if (length(beam.direction) == 0.0) return false;
  double to = std::numeric_limits<double>::max();
  double from = beam.both_ways ? -to : 0.0;
  if (!narrow(beam.base.x, beam.direction.x, extent.min_x, extent.max_x, from, to) ||
      !narrow(beam.base.y, beam.direction.y, extent.min_y, extent.max_y, from, to)) {
    return false;
  }
  Stroke stroke{{beam.base + from * beam.direction, beam.base + to * beam.direction}};
  for (const Vertex& v : stroke.points) shape.extent.widen(v.x, v.y);
  shape.what = std::move(stroke);
  return true;
}

/// Where there are only beams: around where they start.
Extent around_bases(const std::vector<Shape>& shapes) {
  Extent extent;
  for (const Shape& shape : shapes) {
    const Vertex& base = std::get<Beam>(shape.what).base;
    extent.widen(base.x - 1, base.y - 1);
    extent.widen(base.x + 1, base.y + 1);
  }
  return extent;
}

}  // namespace

void cut_beams(Plan& plan) {
  if (plan.shapes.empty()) return;
  if (plan.extent.is_empty()) plan.extent = around_bases(plan.shapes);
  std::erase_if(plan.shapes, [&](Shape& shape) {
    return std::holds_alternative<Beam>(shape.what) && !cut(shape, plan.extent);
  });
}

}  // namespace importers::dxf
