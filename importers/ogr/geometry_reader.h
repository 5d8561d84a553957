#pragma once

#include <ogr_geometry.h>

#include <vector>

#include "importers/sketch.h"

namespace importers::ogr {

/// Adds geometries of every kind to a sketch; curves become chains of lines.
class GeometryReader {
 public:
  /// The sketch outlives the reader. `spherical`: edges take the shortest way
  /// around the globe.
  GeometryReader(Sketch& sketch, bool spherical) : m_sketch(sketch), m_spherical(spherical) {}

  void add(const OGRGeometry& geometry);

 private:
  void add_flat(const OGRGeometry& geometry);
  void add_point(const OGRPoint& point);
  void add_collection(const OGRGeometryCollection& collection);
  void add_surface(const OGRPolyhedralSurface& surface);
  void add_line(const OGRLineString& line);
  void add_polygon(const OGRPolygon& polygon);
  const std::vector<Vertex>& vertices_of(const OGRSimpleCurve& curve);

  Sketch& m_sketch;
  bool m_spherical;
  std::vector<Vertex> m_vertices;  ///< of the curve at hand, kept for its memory
};

}  // namespace importers::ogr
