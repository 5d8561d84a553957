#pragma once

#include <numbers>
#include <vector>

#include "importers/dxf/affine.h"
#include "importers/mapping.h"

namespace importers::dxf {

inline constexpr double whole_turn = 2 * std::numbers::pi;

[[nodiscard]] constexpr double radians(double degrees) {
  return degrees * (std::numbers::pi / 180.0);
}

/// A piece of an ellipse: center + cos(t) p + sin(t) q for t from `start` up to
/// `end`. Any two vectors will do for p and q, so that every affine image of an
/// arc is one; it runs clockwise where q lies to the right of p.
struct Arc {
  Vertex center;
  Vertex p;
  Vertex q;
  double start = 0.0;
  double end = whole_turn;

  [[nodiscard]] Vertex at(double t) const { return center + std::cos(t) * p + std::sin(t) * q; }
  [[nodiscard]] bool is_whole() const { return end - start >= whole_turn * (1 - 1e-9); }
};

/// Whether a side is a line: its ends are the same, or the centre of its arc is so
/// far away that nothing is left of it in numbers.
[[nodiscard]] bool is_straight(const Vertex& from, const Vertex& to, double bulge);

/// The arc from one vertex to the next whose bulge is `bulge`: the tangent of a
/// quarter of its angle, positive counter-clockwise. Not of a straight side.
[[nodiscard]] Arc bulge_arc(const Vertex& from, const Vertex& to, double bulge);

/// Angles brought in order: `end` within a whole turn above `start`, a whole
/// turn where the two are equal.
void put_in_order(double& start, double& end);

[[nodiscard]] Arc transformed(const Arc& arc, const Affine& affine);
void widen(Extent& extent, const Arc& arc);

/// The same curve by its axes: center + R(rotation) (major cos t, minor sin t),
/// both radii positive, `start` from 0 to a whole turn.
struct Axes {
  double major;
  double minor;
  double rotation;
  double start;
  double end;
};
[[nodiscard]] Axes axes(const Arc& arc);

/// Appends points along the arc, both ends included: 256 for a whole turn, and at
/// least 32.
void flatten(const Arc& arc, std::vector<Vertex>& points);

/// A B-spline by control points or, where it has none, the points that it goes
/// through.
struct Spline {
  int degree = 3;
  bool is_closed = false;
  std::vector<double> knots;
  std::vector<Vertex> control;
  std::vector<double> weights;  ///< as many as control points, or none
  std::vector<Vertex> fit;
};

/// Points along the curve. Where degree, knots or weights make no sense, they
/// are replaced by usual ones.
[[nodiscard]] std::vector<Vertex> flattened(const Spline& spline);

}  // namespace importers::dxf
