#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "importers/mapping.h"

namespace importers {

/// A vertex in drawing coordinates.
struct Vertex {
  double x;
  double y;

  friend bool operator==(const Vertex&, const Vertex&) = default;
};

/// The geometry of a drawing as its file has it, in drawing coordinates. An
/// importer fills a sketch layer by layer, feature by feature; only when all of
/// it is known, the mapping and the order of drawing are.
///
/// Vertices that are not finite or lie beyond `largest_coordinate` are left out
/// and counted.
class Sketch {
 public:
  /// Farther out, whole units can no longer be told apart.
  static constexpr double largest_coordinate = 1e15;

  /// Consecutive vertices: a line, or a ring without its closing vertex.
  struct Run {
    std::size_t first;
    std::size_t count;
  };
  struct Ring : Run {
    bool is_cut;  ///< some of its edges run where the map was cut
  };
  /// The outer ring and the holes, among the rings of the layer.
  struct Area {
    std::uint32_t feature;
    std::size_t first_ring;
    std::size_t ring_count;
  };
  struct Layer {
    std::string name;
    bool geographic = false;  ///< in degrees of longitude and latitude
    std::vector<Ring> rings;
    std::vector<Area> areas;
    std::vector<Run> lines;
    std::vector<std::size_t> points;  ///< each an index of a vertex
    double area_sizes = 0.0;          ///< the sum of the areas' extents
  };

  /// `geographic`: its coordinates are degrees of longitude and latitude.
  void begin_layer(std::string name, bool geographic);
  /// The geometry that follows is one feature.
  void begin_feature();
  /// Notes a feature in which nothing can be drawn.
  void end_feature();

  void add_point(const Vertex& vertex);
  /// A line with less than two usable vertices is left out.
  void add_line(std::span<const Vertex> vertices);
  /// The rings up to end_area() make one area, the outer one first. A ring with
  /// less than three usable vertices is left out, its area with it if it is the
  /// outer one. Whether the last vertex repeats the first does not matter.
  /// `is_cut`: the importer cut it along the border of the map.
  void begin_area();
  void add_ring(std::span<const Vertex> vertices, bool is_cut = false);
  void end_area();

  [[nodiscard]] const std::vector<Layer>& layers() const { return m_layers; }
  [[nodiscard]] std::span<const Vertex> vertices(const Run& run) const {
    return std::span(m_vertices).subspan(run.first, run.count);
  }
  [[nodiscard]] const Vertex& vertex(std::size_t index) const { return m_vertices[index]; }
  [[nodiscard]] std::size_t vertex_count() const { return m_vertices.size(); }
  [[nodiscard]] const Extent& extent() const { return m_extent; }

  [[nodiscard]] std::size_t feature_count() const { return m_feature_count; }
  [[nodiscard]] std::size_t empty_feature_count() const { return m_empty_feature_count; }
  [[nodiscard]] std::size_t unusable_vertex_count() const { return m_unusable_vertex_count; }
  /// Where the first unusable vertex is, in words; empty when there is none.
  [[nodiscard]] const std::string& first_unusable() const { return m_first_unusable; }

 private:
  Run append_usable(std::span<const Vertex> vertices);
  void note_unusable();
  void forget(const Run& run);
  void widen_by(const Run& run);

  std::vector<Layer> m_layers;
  std::vector<Vertex> m_vertices;
  Extent m_extent;
  Area m_open_area{};
  bool m_open_area_has_outer = false;
  std::uint32_t m_feature_in_layer = 0;
  bool m_feature_is_empty = true;
  std::size_t m_feature_count = 0;
  std::size_t m_empty_feature_count = 0;
  std::size_t m_unusable_vertex_count = 0;
  std::string m_first_unusable;
};

}  // namespace importers
