#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "displaylist/displaylist.h"

/// Generated drawings with names, shared by tests, benchmarks and viewers. The
/// same name, count and seed give the same drawing on every machine.
namespace scenes {

using Point = DL::PointTemplate<long>;
using Bounds = DL::BoundsTemplate<long>;

/// The most points that a polyline of a scene has.
inline constexpr std::size_t kLargestPolyline = 4;

/// Polylines of equal length, one after the other in drawing order.
struct Polylines {
  std::size_t points_each = 0;
  std::vector<Point> points;

  [[nodiscard]] std::size_t count() const { return points.size() / points_each; }
  [[nodiscard]] std::span<const Point> polyline(std::size_t index) const {
    return std::span(points).subspan(index * points_each, points_each);
  }
};

struct Scene {
  std::string_view name;
  std::string_view description;
  Polylines (*generate)(std::size_t count, std::uint64_t seed);
};

/// Every scene.
std::span<const Scene> all();

/// The scene of that name; null when there is none.
const Scene* find(std::string_view name);

/// Adds the polylines to the list in their order, each in a colour of its own
/// neighbourhood, allocated from the list's heap.
void add_to(DL::DisplayList& list, const Polylines& polylines);

}  // namespace scenes
