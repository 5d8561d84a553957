#include "importers/dxf/curves.h"

#include <algorithm>
#include <utility>

namespace importers::dxf {

bool is_straight(const Vertex& from, const Vertex& to, double bulge) {
  constexpr double least_bulge = 1e-9;
  return std::fabs(bulge) < least_bulge || from == to;
}

Arc bulge_arc(const Vertex& from, const Vertex& to, double bulge) {
  const Vertex chord = to - from;
  // From the middle of the chord to the centre, to the left of it.
  const double aside = (1 - bulge * bulge) / (4 * bulge);
  const Vertex center = 0.5 * (from + to) + aside * Vertex{-chord.y, chord.x};
  const double radius = length(from - center);
  const double turn = bulge > 0 ? 1.0 : -1.0;
  const double start = turn * angle(from - center);
  return {center, {radius, 0}, {0, turn * radius}, start, start + 4 * std::atan(std::fabs(bulge))};
}

void put_in_order(double& start, double& end) {
  double span = std::fmod(end - start, whole_turn);
  if (span < 0) span += whole_turn;
  // Files write the end of a whole turn as 6.2832, or as 6.283185.
  const bool is_whole = std::fabs(end - start - whole_turn) < 1e-4 || span <= 1e-12;
  start = std::remainder(start, whole_turn);
  if (start < 0) start += whole_turn;
  end = start + (is_whole ? whole_turn : span);
}

Arc transformed(const Arc& arc, const Affine& affine) {
  return {affine.point(arc.center), affine.direction(arc.p), affine.direction(arc.q), arc.start,
          arc.end};
}

void widen(Extent& extent, const Arc& arc) {
  const Vertex ends[2] = {arc.at(arc.start), arc.at(arc.end)};
  for (const Vertex& v : ends) extent.widen(v.x, v.y);
  // Where x and y are extreme, twice a turn each.
  const double extremes[2] = {std::atan2(arc.q.x, arc.p.x), std::atan2(arc.q.y, arc.p.y)};
  for (const double extreme : extremes) {
    double t = extreme + std::ceil((arc.start - extreme) / std::numbers::pi) * std::numbers::pi;
    for (; t <= arc.end; t += std::numbers::pi) {
      const Vertex v = arc.at(t);
      extent.widen(v.x, v.y);
    }
  }
}

Axes axes(const Arc& arc) {
  Arc ccw = arc;
  if (arc.p.x * arc.q.y - arc.p.y * arc.q.x < 0) {
    ccw.q = {-arc.q.x, -arc.q.y};
    ccw.start = -arc.end;
    ccw.end = -arc.start;
  }
  const double pp = ccw.p.x * ccw.p.x + ccw.p.y * ccw.p.y;
  const double qq = ccw.q.x * ccw.q.x + ccw.q.y * ccw.q.y;
  const double pq = ccw.p.x * ccw.q.x + ccw.p.y * ccw.q.y;
  const double noise = 1e-12 * (pp + qq);
  // A circle has no axes but those that it is given by.
  const bool is_circle = std::fabs(pq) <= noise && std::fabs(pp - qq) <= noise;
  const double shift = is_circle ? 0.0 : std::atan2(2 * pq, pp - qq) / 2;
  const Vertex major = std::cos(shift) * ccw.p + std::sin(shift) * ccw.q;
  const Vertex minor = -std::sin(shift) * ccw.p + std::cos(shift) * ccw.q;
  const double span = ccw.end - ccw.start;
  double start = std::remainder(ccw.start - shift, whole_turn);
  if (start < 0) start += whole_turn;
  return {length(major), length(minor), angle(major), start, start + span};
}

void flatten(const Arc& arc, std::vector<Vertex>& points) {
  // A part of a large ellipse is looked at as closely as a whole small one.
  constexpr double steps_of_turn = 256;
  constexpr int least_steps = 32;
  const double span = std::clamp(arc.end - arc.start, 0.0, whole_turn);
  const int steps =
      std::max(least_steps, static_cast<int>(std::ceil(span / whole_turn * steps_of_turn)));
  for (int i = 0; i <= steps; ++i) points.push_back(arc.at(arc.start + span * i / steps));
}

}  // namespace importers::dxf
