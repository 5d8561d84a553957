#include "scenes/scene.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "scenes/random.h"

namespace scenes {

namespace {

constexpr std::size_t kWalkPoints = kLargestPolyline;
constexpr std::int64_t kStep = 1 << 14;       ///< of a random walk
constexpr std::int64_t kExtent = 1 << 28;     ///< starts lie in [-kExtent, kExtent]
constexpr std::size_t kNeighbours = 200;      ///< polylines of one run
constexpr std::int64_t kRunExtent = 1 << 20;  ///< how far a run spreads

Point start_in(Random& random, std::int64_t extent) {
  return {random.between(-extent, extent), random.between(-extent, extent)};
}

Point moved(const Point& from, Random& random, std::int64_t by) {
  return {from.x + random.between(-by, by), from.y + random.between(-by, by)};
}

void append_walk(Polylines& lines, Point at, Random& random) {
  for (std::size_t i = 0; i < kWalkPoints; ++i) {
    lines.points.push_back(at);
    at = moved(at, random, kStep);
  }
}

Polylines with_room(std::size_t count) {
  Polylines lines{kWalkPoints, {}};
  lines.points.reserve(count * kWalkPoints);
  return lines;
}

/// Random walks in runs of neighbours, as a person or a program draws.
Polylines coherent(std::size_t count, std::uint64_t seed) {
  Random random(seed);
  Polylines lines = with_room(count);
  Point center{};
  for (std::size_t i = 0; i < count; ++i) {
    if (i % kNeighbours == 0) center = start_in(random, kExtent);
    append_walk(lines, moved(center, random, kRunExtent), random);
  }
  return lines;
}

/// The same walks, each anywhere: the worst order to add in.
Polylines scattered(std::size_t count, std::uint64_t seed) {
  Random random(seed);
  Polylines lines = with_room(count);
  for (std::size_t i = 0; i < count; ++i) append_walk(lines, start_in(random, kExtent), random);
  return lines;
}

/// Row by row over the whole extent, as scans and sorted files come.
Polylines rows(std::size_t count, std::uint64_t seed) {
  Random random(seed);
  Polylines lines = with_room(count);
  const auto side = static_cast<std::int64_t>(std::ceil(std::sqrt(static_cast<double>(count))));
  const std::int64_t pitch = 2 * kExtent / std::max<std::int64_t>(side, 1);
  for (std::size_t i = 0; i < count; ++i) {
    const auto index = static_cast<std::int64_t>(i);
    const Point at{static_cast<std::int32_t>(index % side * pitch - kExtent),
                   static_cast<std::int32_t>(index / side * pitch - kExtent)};
    append_walk(lines, at, random);
  }
  return lines;
}

/// Most of the drawing in a few dense towns, the rest between them.
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
    append_walk(lines, moved(at, random, kStep * 4), random);
  }
  return lines;
}

constexpr std::array<Scene, 4> kScenes{{
    {"coherent", "random walks in runs of 200 neighbours", &coherent},
    {"scattered", "random walks, each anywhere", &scattered},
    {"rows", "short walks row by row", &rows},
    {"towns", "random walks in dense towns and between them", &towns},
}};

/// A colour that neighbours in drawing order share.
LM_RGB32 color_of(std::size_t index) {
  Random random(index / kNeighbours);
  return {random.next() & 0x00BFBFBFU};
}

}  // namespace

std::span<const Scene> all() {
  return kScenes;
}

const Scene* find(std::string_view name) {
  const auto* found = std::ranges::find(kScenes, name, &Scene::name);
  return found == kScenes.end() ? nullptr : found;
}

void add_to(DL::DisplayList& list, const Polylines& polylines) {
  for (std::size_t i = 0; i < polylines.count(); ++i) {
    const std::span<const Point> points = polylines.polyline(i);
    Bounds bounds;
    for (const Point& point : points) bounds.widen(point);
    list.add(new (list.m_heap) DL::DLPolyline(color_of(i), static_cast<std::int32_t>(points.size()),
                                              points.data(), list.m_heap),
             bounds, 0);
  }
}

}  // namespace scenes
