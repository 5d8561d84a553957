#include "importers/coloring.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace importers {

namespace {

/// More vertices than this are not searched for neighbours: nobody sees single
/// areas then, and the search would need more memory than the drawing.
constexpr std::size_t most_corners = 1 << 23;

/// A vertex by its hash, and a feature that has it.
using Corner = std::pair<std::uint64_t, std::uint32_t>;
/// Two features that share a vertex.
using Border = std::pair<std::uint32_t, std::uint32_t>;

std::uint64_t hash(const Vertex& vertex) {
  constexpr std::uint64_t odd = 0x9E3779B97F4A7C15;
  const auto x = std::bit_cast<std::uint64_t>(vertex.x + 0.0);  // no negative zero
  const auto y = std::bit_cast<std::uint64_t>(vertex.y + 0.0);
  const std::uint64_t mixed = (x * odd ^ std::rotl(y, 32)) * odd;
  return mixed ^ mixed >> 29;
}

template <class T>
void sort_and_drop_equal(std::vector<T>& values) {
  std::sort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end()), values.end());
}

std::vector<Corner> corners_of(const Sketch& sketch, const Sketch::Layer& layer) {
  std::vector<Corner> corners;
  for (const Sketch::Area& area : layer.areas) {
    for (std::size_t i = 0; i < area.ring_count; ++i) {
      for (const Vertex& vertex : sketch.vertices(layer.rings[area.first_ring + i])) {
        if (corners.size() == most_corners) return {};
        corners.emplace_back(hash(vertex), area.feature);
      }
    }
  }
  sort_and_drop_equal(corners);
  return corners;
}

/// Both directions of every border, sorted.
std::vector<Border> borders_of(const std::vector<Corner>& corners) {
  constexpr std::size_t most_at_a_corner = 8;
  std::vector<Border> borders;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    for (std::size_t j = i + 1; j < corners.size() && j < i + most_at_a_corner; ++j) {
      if (corners[j].first != corners[i].first) break;
      borders.emplace_back(corners[i].second, corners[j].second);
      borders.emplace_back(corners[j].second, corners[i].second);
    }
  }
  sort_and_drop_equal(borders);
  return borders;
}

/// The first colour from `wanted` on that no bit of `taken` forbids.
std::uint32_t first_free(std::uint32_t wanted, std::uint32_t taken, std::uint32_t colors) {
  for (std::uint32_t i = 0; i < colors; ++i) {
    const std::uint32_t color = (wanted + i) % colors;
    if ((taken >> color & 1U) == 0) return color;
  }
  return wanted;
}

}  // namespace

std::vector<std::uint32_t> color_areas(const Sketch& sketch, const Sketch::Layer& layer,
                                       std::uint32_t colors) {
  if (layer.areas.empty()) return {};
  const std::vector<Border> borders = borders_of(corners_of(sketch, layer));
  std::vector<std::uint32_t> of_feature(layer.areas.back().feature + std::size_t{1});
  std::vector<std::uint32_t> of_area;
  of_area.reserve(layer.areas.size());
  std::uint32_t last_feature = 0;  // features count from 1
  auto border = borders.begin();
  for (const Sketch::Area& area : layer.areas) {
    if (area.feature != last_feature) {
      std::uint32_t taken = 0;
      for (; border != borders.end() && border->first <= area.feature; ++border) {
        // Later features choose after this one.
        if (border->second < area.feature) taken |= 1U << of_feature[border->second];
      }
      of_feature[area.feature] = first_free((area.feature - 1) * 3 % colors, taken, colors);
      last_feature = area.feature;
    }
    of_area.push_back(of_feature[area.feature]);
  }
  return of_area;
}

}  // namespace importers
