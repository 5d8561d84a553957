#include "scenes/scene.h"

#include <algorithm>
#include <array>

#include "scenes/generators_p.h"

namespace scenes {

namespace {

constexpr std::array<Scene, 10> kScenes{{
    {"coherent", "random walks in runs of 200 neighbours", 1'000'000, &coherent, nullptr},
    {"scattered", "random walks, each anywhere", 1'000'000, &scattered, nullptr},
    {"rows", "short walks row by row", 1'000'000, &rows, nullptr},
    {"towns", "random walks in dense towns and between them", 1'000'000, &towns, nullptr},
    {"many", "lines of two points in runs of 200 neighbours", 10'000'000, &many, nullptr},
    {"rivers", "polylines of a thousand points", 1'000, &rivers, nullptr},
    {"deep", "detail in each detail, to be zoomed into", 200'000, &deep, nullptr},
    {"mixed", "every drawable class in turn", 200'000, nullptr, &fill_mixed},
    {"texts", "labels", 50'000, nullptr, &fill_texts},
    {"nested", "one drawing placed many times", 20'000, nullptr, &fill_nested},
}};

}  // namespace

std::span<const Scene> all() {
  return kScenes;
}

const Scene* find(std::string_view name) {
  const auto* found = std::ranges::find(kScenes, name, &Scene::name);
  return found == kScenes.end() ? nullptr : found;
}

Bounds bounds_of(std::span<const Point> points) {
  Bounds bounds;
  for (const Point& point : points) bounds.widen(point);
  return bounds;
}

Bounds bounds_of(const Polylines& polylines) {
  Bounds bounds;
  for (std::size_t i = 0; i < polylines.count(); ++i) {
    bounds.widen(bounds_of(polylines.polyline(i)));
  }
  return bounds;
}

void add_to(DL::DisplayList& list, const Polylines& polylines) {
  for (std::size_t i = 0; i < polylines.count(); ++i) {
    const std::span<const Point> points = polylines.polyline(i);
    auto* polyline = new (list.m_heap) DL::DLPolyline(
        polylines.color(i), static_cast<std::int32_t>(points.size()), points.data(), list.m_heap);
    list.add(polyline, bounds_of(points), 0);
  }
}

void add_to(DL::DisplayList& list, const Scene& scene, std::size_t count, std::uint64_t seed) {
  if (scene.generate != nullptr) {
    add_to(list, scene.generate(count, seed));
  } else {
    scene.fill(list, count, seed);
  }
}

}  // namespace scenes
