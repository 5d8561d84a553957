#include "importers/sphere.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace importers::sphere {

namespace {

constexpr double border = 180.0;
constexpr double pole = 90.0;
constexpr double turn = 360.0;

/// The vertices moved by whole turns, so that no edge is longer than half a
/// turn. Longitudes then leave the map where it is crossed.
Vertices unwrapped(std::span<const Vertex> vertices) {
  Vertices result(vertices.begin(), vertices.end());
  for (std::size_t i = 1; i < result.size(); ++i) {
    const double step = result[i].x - result[i - 1].x;
    result[i].x -= turn * std::nearbyint(step / turn);
  }
  return result;
}

/// False for vertices that are not finite, too.
bool is_on_map(std::span<const Vertex> vertices) {
  return std::all_of(vertices.begin(), vertices.end(), [](const Vertex& v) {
    return std::fabs(v.x) <= border && std::fabs(v.y) <= pole;
  });
}

Vertex at_longitude(const Vertex& from, const Vertex& to, double longitude) {
  return {longitude, from.y + (to.y - from.y) * (longitude - from.x) / (to.x - from.x)};
}

/// The part of a ring on one side of a meridian.
Vertices clipped(const Vertices& ring, double longitude, bool keep_west) {
  const auto is_kept = [&](const Vertex& v) {
    return keep_west ? v.x <= longitude : v.x >= longitude;
  };
  Vertices kept;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Vertex& from = ring[i];
    const Vertex& to = ring[(i + 1) % ring.size()];
    if (is_kept(from)) kept.push_back(from);
    if (is_kept(from) != is_kept(to)) kept.push_back(at_longitude(from, to, longitude));
  }
  return kept;
}

/// Closes an unwrapped ring that ends a whole turn from where it starts: it
/// goes around a pole, the one that it is nearer to. False for other rings.
bool close_around_pole(Vertices& ring) {
  const Vertex start = ring.front();
  const double step = start.x - ring.back().x;
  const double turns = std::nearbyint(step / turn);
  if (turns == 0.0) return false;
  double latitudes = 0.0;
  for (const Vertex& v : ring) latitudes += v.y;
  const double nearer = latitudes < 0.0 ? -pole : pole;
  ring.push_back({start.x - turns * turn, start.y});
  ring.push_back({ring.back().x, nearer});
  ring.push_back({start.x, nearer});
  return true;
}

/// The first and last whole turns that the vertices reach into.
std::pair<double, double> turns_reached(const Vertices& vertices) {
  const auto [west, east] = std::minmax_element(
      vertices.begin(), vertices.end(), [](const Vertex& a, const Vertex& b) { return a.x < b.x; });
  return {std::floor((west->x + border) / turn), std::ceil((east->x - border) / turn)};
}

}  // namespace

Rings ring_on_map(std::span<const Vertex> ring) {
  if (ring.size() > 1 && ring.front() == ring.back()) ring = ring.first(ring.size() - 1);
  if (ring.empty() || !is_on_map(ring)) return {{Vertices(ring.begin(), ring.end())}, false};
  Vertices whole = unwrapped(ring);
  const bool is_closed = close_around_pole(whole);
  if (is_on_map(whole)) return {{std::move(whole)}, is_closed};
  std::vector<Vertices> pieces;
  const auto [first, last] = turns_reached(whole);
  for (double k = first; k <= last; ++k) {
    const double east = k * turn + border;
    Vertices piece = clipped(clipped(whole, east, true), east - turn, false);
    for (Vertex& v : piece) v.x -= k * turn;
    if (piece.size() > 2) pieces.push_back(std::move(piece));
  }
  return {std::move(pieces), true};
}

std::vector<Vertices> line_on_map(std::span<const Vertex> line) {
  const Vertices whole = is_on_map(line) ? unwrapped(line) : Vertices();
  if (is_on_map(whole)) return {Vertices(line.begin(), line.end())};
  std::vector<Vertices> pieces{{line.front()}};
  for (std::size_t i = 1; i < line.size(); ++i) {
    if (std::fabs(line[i].x - line[i - 1].x) > border) {
      const double side = std::copysign(border, line[i - 1].x);
      const Vertex beyond{line[i].x + std::copysign(turn, side), line[i].y};
      const Vertex cut =
          beyond.x == line[i - 1].x ? line[i - 1] : at_longitude(line[i - 1], beyond, side);
      pieces.back().push_back(cut);
      pieces.push_back({{-side, cut.y}});
    }
    pieces.back().push_back(line[i]);
  }
  return pieces;
}

bool is_seam(const Vertex& from, const Vertex& to) {
  const bool on_border = std::fabs(from.x) == border && from.x == to.x;
  return on_border || (std::fabs(from.y) == pole && from.y == to.y);
}

}  // namespace importers::sphere
