#pragma once

#include <cmath>

#include "importers/sketch.h"

namespace importers::dxf {

/// An affine map of the plane: x' = xx x + xy y + dx, y' = yx x + yy y + dy.
struct Affine {
  double xx = 1.0;
  double xy = 0.0;
  double yx = 0.0;
  double yy = 1.0;
  double dx = 0.0;
  double dy = 0.0;

  [[nodiscard]] static Affine scaling(double x, double y) { return {x, 0.0, 0.0, y, 0.0, 0.0}; }
  [[nodiscard]] static Affine moving(double x, double y) { return {1.0, 0.0, 0.0, 1.0, x, y}; }
  /// Counter-clockwise.
  [[nodiscard]] static Affine turning(double radians) {
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    return {c, -s, s, c, 0.0, 0.0};
  }

  [[nodiscard]] Vertex point(const Vertex& v) const {
    return {xx * v.x + xy * v.y + dx, yx * v.x + yy * v.y + dy};
  }
  [[nodiscard]] Vertex direction(const Vertex& v) const {
    return {xx * v.x + xy * v.y, yx * v.x + yy * v.y};
  }
  [[nodiscard]] double determinant() const { return xx * yy - xy * yx; }
  [[nodiscard]] bool is_axis_aligned() const { return xy == 0.0 && yx == 0.0; }

  /// First `b`, then `a`.
  friend Affine operator*(const Affine& a, const Affine& b) {
    const Vertex x = a.direction({b.xx, b.yx});
    const Vertex y = a.direction({b.xy, b.yy});
    const Vertex origin = a.point({b.dx, b.dy});
    return {x.x, y.x, x.y, y.y, origin.x, origin.y};
  }
};

inline Vertex operator+(const Vertex& a, const Vertex& b) {
  return {a.x + b.x, a.y + b.y};
}
inline Vertex operator-(const Vertex& a, const Vertex& b) {
  return {a.x - b.x, a.y - b.y};
}
inline Vertex operator*(double factor, const Vertex& v) {
  return {factor * v.x, factor * v.y};
}
inline double length(const Vertex& v) {
  return std::hypot(v.x, v.y);
}
inline double angle(const Vertex& v) {
  return std::atan2(v.y, v.x);
}

}  // namespace importers::dxf
