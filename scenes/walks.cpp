// The scenes of polylines.

#include <algorithm>
#include <array>
#include <cmath>

#include "scenes/generators_p.h"

namespace scenes {

namespace {

constexpr std::size_t kWalkPoints = 4;
constexpr std::int64_t kStep = 1 << 14;   ///< of a random walk
constexpr std::size_t kNeighbours = 200;  ///< polylines of one run

/// A random walk in steps of up to `step`. Returns where it would go on.
template <std::size_t Count>
Point append_walk(Polylines& lines, Point at, Random& random, std::int64_t step = kStep) {
  std::array<Point, Count> points;
  for (Point& point : points) {
    point = at;
    at = moved(at, random, step);
  }
  lines.append(points, color_of(lines.count()));
  return at;
}

Polylines with_room(std::size_t count, std::size_t points_each = kWalkPoints) {
  Polylines lines;
  lines.reserve(count, count * points_each);
  return lines;
}

/// Walks of `Count` points in runs of neighbours, where each goes on from the one
/// before.
template <std::size_t Count>
Polylines runs(std::size_t count, std::uint64_t seed) {
  Random random(seed);
  Polylines lines = with_room(count, Count);
  Point at{};
  for (std::size_t i = 0; i < count; ++i) {
    if (i % kNeighbours == 0) at = start_in(random, kExtent);
    at = append_walk<Count>(lines, at, random);
  }
  return lines;
}

}  // namespace

LM_RGB32 color_of(std::size_t index) {
  Random random(index / kNeighbours);
  return {random.next() & 0x00BFBFBFU};
}

/// As a person or a program draws.
Polylines coherent(std::size_t count, std::uint64_t seed) {
  return runs<kWalkPoints>(count, seed);
}

Polylines many(std::size_t count, std::uint64_t seed) {
  return runs<2>(count, seed);
}

/// The worst order to add in.
Polylines scattered(std::size_t count, std::uint64_t seed) {
  Random random(seed);
  Polylines lines = with_room(count);
  for (std::size_t i = 0; i < count; ++i) {
    append_walk<kWalkPoints>(lines, start_in(random, kExtent), random);
  }
  return lines;
}

/// As scans and sorted files come.
Polylines rows(std::size_t count, std::uint64_t seed) {
  Random random(seed);
  Polylines lines = with_room(count);
  const auto side = static_cast<std::int64_t>(std::ceil(std::sqrt(static_cast<double>(count))));
  const std::int64_t pitch = 2 * kExtent / std::max<std::int64_t>(side, 1);
  for (std::size_t i = 0; i < count; ++i) {
    const auto index = static_cast<std::int64_t>(i);
    const Point at{static_cast<std::int32_t>(index % side * pitch - kExtent),
                   static_cast<std::int32_t>(index / side * pitch - kExtent)};
    append_walk<kWalkPoints>(lines, at, random);
  }
  return lines;
}

Polylines towns(std::size_t count, std::uint64_t seed) {
  constexpr std::size_t town_count = 12;
  constexpr std::int64_t town_extent = 1 << 22;
  Random random(seed);
  std::array<Point, town_count> centers;
  for (Point& center : centers) center = start_in(random, kExtent);
  Polylines lines = with_room(count);
  Point at{};
  for (std::size_t i = 0; i < count; ++i) {
    if (i % kNeighbours == 0) {
      const bool in_town = random.next() % 8 != 0;
      at = in_town ? moved(centers[random.next() % town_count], random, town_extent)
                   : start_in(random, kExtent);
    }
    append_walk<kWalkPoints>(lines, moved(at, random, kStep * 4), random);
  }
  return lines;
}

Polylines rivers(std::size_t count, std::uint64_t seed) {
  constexpr std::size_t points_each = 1000;
  Random random(seed);
  Polylines lines = with_room(count, points_each);
  for (std::size_t i = 0; i < count; ++i) {
    append_walk<points_each>(lines, start_in(random, kExtent / 2), random, kExtent >> 6U);
  }
  return lines;
}

/// Runs of neighbours around the middle, each run half as large as the one
/// before and the largest again after the smallest.
Polylines deep(std::size_t count, std::uint64_t seed) {
  constexpr std::size_t depths = 16;
  Random random(seed);
  Polylines lines = with_room(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::int64_t extent = kExtent >> (i / kNeighbours % depths);
    append_walk<kWalkPoints>(lines, start_in(random, extent), random, extent >> 6U);
  }
  return lines;
}

}  // namespace scenes
