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

/// Starts of generated drawings lie in [-kExtent, kExtent] on both axes.
inline constexpr std::int64_t kExtent = 1 << 28;

/// Polylines one after the other in drawing order, each in a colour.
class Polylines {
 public:
  void append(std::span<const Point> points, LM_RGB32 color) {
    m_points.insert(m_points.end(), points.begin(), points.end());
    m_starts.push_back(static_cast<std::uint32_t>(m_points.size()));
    m_colors.push_back(color);
  }
  void reserve(std::size_t polylines, std::size_t points) {
    m_points.reserve(points);
    m_starts.reserve(polylines + 1);
    m_colors.reserve(polylines);
  }

  [[nodiscard]] std::size_t count() const { return m_colors.size(); }
  [[nodiscard]] std::size_t point_count() const { return m_points.size(); }
  [[nodiscard]] std::span<const Point> polyline(std::size_t index) const {
    return {m_points.data() + m_starts[index], m_points.data() + m_starts[index + 1]};
  }
  [[nodiscard]] LM_RGB32 color(std::size_t index) const { return m_colors[index]; }

 private:
  std::vector<Point> m_points;
  std::vector<std::uint32_t> m_starts{0};  ///< of each polyline, and their end
  std::vector<LM_RGB32> m_colors;
};

/// The box around the points.
Bounds bounds_of(std::span<const Point> points);
Bounds bounds_of(const Polylines& polylines);

struct Scene {
  std::string_view name;
  std::string_view description;
  std::size_t usual_count;  ///< of drawables, for benchmarks and viewers
  /// The polylines; null for a scene of other drawables.
  Polylines (*generate)(std::size_t count, std::uint64_t seed);
  /// Adds the drawables and prepares the list's rendition for them; null for a
  /// scene of polylines.
  void (*fill)(DL::DisplayList& list, std::size_t count, std::uint64_t seed);
};

/// Every scene.
std::span<const Scene> all();

/// The scene of that name; null when there is none.
const Scene* find(std::string_view name);

/// Adds the polylines to the list in their order, allocated from its heap.
void add_to(DL::DisplayList& list, const Polylines& polylines);

/// Adds a scene of any kind.
void add_to(DL::DisplayList& list, const Scene& scene, std::size_t count, std::uint64_t seed);

}  // namespace scenes
