#include "importers/sketch.h"

#include <cmath>
#include <utility>

namespace importers {

namespace {

bool is_usable(const Vertex& vertex) {
  // False for what is not a number, too.
  return std::fabs(vertex.x) <= Sketch::largest_coordinate &&
         std::fabs(vertex.y) <= Sketch::largest_coordinate;
}

Extent extent_of(std::span<const Vertex> vertices) {
  Extent extent;
  for (const Vertex& vertex : vertices) extent.widen(vertex.x, vertex.y);
  return extent;
}

}  // namespace

void Sketch::begin_layer(std::string name, bool geographic) {
  Layer& layer = m_layers.emplace_back();
  layer.name = std::move(name);
  layer.geographic = geographic;
  m_feature_in_layer = 0;
}

void Sketch::begin_feature() {
  ++m_feature_count;
  ++m_feature_in_layer;
  m_feature_is_empty = true;
}

void Sketch::end_feature() {
  if (m_feature_is_empty) ++m_empty_feature_count;
}

void Sketch::add_point(const Vertex& vertex) {
  if (!is_usable(vertex)) return note_unusable();
  m_layers.back().points.push_back(m_vertices.size());
  m_vertices.push_back(vertex);
  m_extent.widen(vertex.x, vertex.y);
  m_feature_is_empty = false;
}

void Sketch::add_line(std::span<const Vertex> vertices) {
  const Run run = append_usable(vertices);
  if (run.count < 2) return forget(run);
  widen_by(run);
  m_layers.back().lines.push_back(run);
  m_feature_is_empty = false;
}

void Sketch::begin_area() {
  m_open_area = {m_feature_in_layer, m_layers.back().rings.size(), 0};
  m_open_area_has_outer = true;
}

void Sketch::add_ring(std::span<const Vertex> vertices, bool is_cut) {
  if (!m_open_area_has_outer) return;
  if (vertices.size() > 1 && vertices.front() == vertices.back()) {
    vertices = vertices.first(vertices.size() - 1);
  }
  const Run run = append_usable(vertices);
  if (run.count < 3) {
    forget(run);
    m_open_area_has_outer = m_open_area.ring_count > 0;
    return;
  }
  widen_by(run);
  m_layers.back().rings.push_back({run, is_cut});
  ++m_open_area.ring_count;
}

void Sketch::end_area() {
  if (m_open_area.ring_count == 0) return;
  Layer& layer = m_layers.back();
  const Extent extent = extent_of(vertices(layer.rings[m_open_area.first_ring]));
  layer.area_sizes += extent.width() * extent.height();
  layer.areas.push_back(m_open_area);
  m_feature_is_empty = false;
}

Sketch::Run Sketch::append_usable(std::span<const Vertex> vertices) {
  Run run{m_vertices.size(), 0};
  for (const Vertex& vertex : vertices) {
    if (is_usable(vertex)) {
      m_vertices.push_back(vertex);
    } else {
      note_unusable();
    }
  }
  run.count = m_vertices.size() - run.first;
  return run;
}

void Sketch::note_unusable() {
  if (m_unusable_vertex_count++ > 0) return;
  m_first_unusable =
      "feature " + std::to_string(m_feature_in_layer) + " of layer '" + m_layers.back().name + "'";
}

void Sketch::forget(const Run& run) {
  m_vertices.resize(run.first);
}

void Sketch::widen_by(const Run& run) {
  for (const Vertex& vertex : vertices(run)) m_extent.widen(vertex.x, vertex.y);
}

}  // namespace importers
