#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>

#include "tests/polythings/ellipses.h"

/// Elliptical arcs in double precision: as they are on the device when each
/// logical point is transformed by itself, and as a device action got them.
namespace ellipses {

inline constexpr double kTwoPi = 2 * std::numbers::pi;

struct Place {
  double x, y;
};

inline double distance(Place a, Place b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

/// The place of a fractional logical point on the device.
inline Place to_device(const DL::DisplayList& list, Place p) {
  if (list.m_bRotated) {
    const double* r = list.m_rotation;
    return {r[4] * p.x + r[1] * p.y + r[2], r[0] * p.x + r[5] * p.y + r[3]};
  }
  return {p.x * list.m_scale.x + list.m_offset.x, p.y * list.m_scale.y + list.m_offset.y};
}

/// Whether a walk to the left becomes a walk to the right on the device.
inline bool is_mirrored(const DL::DisplayList& list) {
  const double* r = list.m_rotation;
  if (list.m_bRotated) return r[4] * r[5] - r[1] * r[0] < 0;
  return list.m_scale.x * list.m_scale.y < 0;
}

/// The point of a logical ellipse at angle t, on the device.
inline Place point_at(const DL::DisplayList& list, const Geometry& g, double t) {
  const double c = std::cos(static_cast<double>(g.rotation));
  const double s = std::sin(static_cast<double>(g.rotation));
  const double x = g.major * std::cos(t);
  const double y = g.minor * std::sin(t);
  return to_device(list, {g.center.x + x * c - y * s, g.center.y + x * s + y * c});
}

/// What a device action got.
struct DeviceArc {
  explicit DeviceArc(const lumen::RecordedCall& call)
      : center(call.points[0]),
        radii(call.points[1]),
        start(call.angles[0]),
        end(call.angles[1]),
        rotation(call.angles[2]) {}

  [[nodiscard]] Place at(double t) const {
    const double x = radii.x * std::cos(t);
    const double y = radii.y * std::sin(t);
    const double c = std::cos(rotation);
    const double s = std::sin(rotation);
    return {center.x + x * c - y * s, center.y + x * s + y * c};
  }
  /// How far t runs from the start up to the end.
  [[nodiscard]] double sweep() const { return end < start ? end - start + kTwoPi : end - start; }

  LM_DCI_Point center;
  LM_DCI_Point radii;
  double start, end, rotation;
};

/// How far (x, y), neither below 0, is from the ellipse of the radii a >= b >= 0
/// along the axes.
///
/// The nearest point is (a^2 x / (t + a^2), b^2 y / (t + b^2)) for the t that
/// puts it on the ellipse; with s = t / b^2 that is found by halving.
inline double distance_to_axes_ellipse(double a, double b, double x, double y) {
  if (b == 0.0) return std::hypot(std::max(x - a, 0.0), y);
  if (y == 0.0) {
    const double slope = a * x / std::max(a * a - b * b, 1e-300);
    if (slope >= 1.0) return std::abs(x - a);
    return distance({x, 0.0}, {a * slope, b * std::sqrt(1.0 - slope * slope)});
  }
  const double ratio = (a / b) * (a / b);
  const double u = ratio * x / a;
  const double v = y / b;
  double low = v - 1.0;
  double high = std::hypot(u, v) - 1.0;
  for (int i = 0; i < 200; ++i) {
    const double s = (low + high) / 2;
    (std::hypot(u / (s + ratio), v / (s + 1.0)) > 1.0 ? low : high) = s;
  }
  return distance({x, y}, {ratio * x / (low + ratio), y / (low + 1.0)});
}

/// How far a place is from the whole ellipse that the device got.
inline double distance_to_outline(const DeviceArc& arc, Place place) {
  const double x = place.x - arc.center.x;
  const double y = place.y - arc.center.y;
  const double c = std::cos(arc.rotation);
  const double s = std::sin(arc.rotation);
  const double along = std::abs(x * c + y * s);
  const double across = std::abs(y * c - x * s);
  const double a = arc.radii.x;
  const double b = arc.radii.y;
  return a < b ? distance_to_axes_ellipse(b, a, across, along)
               : distance_to_axes_ellipse(a, b, along, across);
}

/// The half axes of the ellipse on the device, the larger first: the singular
/// values of the matrix that takes the unit circle there.
inline Place half_axes(const DL::DisplayList& list, const Geometry& g) {
  const Place center = to_device(list, {double(g.center.x), double(g.center.y)});
  const Place u = point_at(list, g, 0.0);
  const Place v = point_at(list, g, std::numbers::pi / 2);
  const double ux = u.x - center.x;
  const double uy = u.y - center.y;
  const double vx = v.x - center.x;
  const double vy = v.y - center.y;
  const double sum = std::hypot(ux + vy, uy - vx) / 2;
  const double difference = std::hypot(ux - vy, uy + vx) / 2;
  return {sum + difference, std::abs(sum - difference)};
}

}  // namespace ellipses
