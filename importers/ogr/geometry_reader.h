#pragma once

#include <ogr_geometry.h>

#include <vector>

#include "importers/sketch.h"

namespace importers::ogr {

/// Adds geometries of every kind to a sketch; curves become chains of lines.
class GeometryReader {
 public:
  /// The sketch outlives the reader.
  explicit GeometryReader(Sketch& sketch) : m_sketch(sketch) {}

  void add(const OGRGeometry& geometry);

 private:
  void add_flat(const OGRGeometry& geometry);
  void add_collection(const OGRGeometryCollection& collection);
  void add_surface(const OGRPolyhedralSurface& surface);
  void add_polygon(const OGRPolygon& polygon);
  const std::vector<Vertex>& vertices_of(const OGRSimpleCurve& curve);

  Sketch& m_sketch;
  std::vector<Vertex> m_vertices;  ///< of the curve at hand, kept for its memory
};

}  // namespace importers::ogr
