#include "importers/ogr/geometry_reader.h"

#include <cmath>
#include <memory>

#include "importers/sphere.h"

namespace importers::ogr {

void GeometryReader::add(const OGRGeometry& geometry) {
  if (!geometry.hasCurveGeometry()) return add_flat(geometry);
  const std::unique_ptr<OGRGeometry> linear(geometry.getLinearGeometry());
  if (linear != nullptr) add_flat(*linear);
}

void GeometryReader::add_flat(const OGRGeometry& geometry) {
  const OGRwkbGeometryType type = wkbFlatten(geometry.getGeometryType());
  if (type == wkbPoint) return add_point(*geometry.toPoint());
  if (geometry.IsEmpty()) return;
  switch (type) {
    case wkbLineString:
      return add_line(*geometry.toLineString());
    case wkbPolygon:
    case wkbTriangle:
      return add_polygon(*geometry.toPolygon());
    case wkbMultiPoint:
    case wkbMultiLineString:
    case wkbMultiPolygon:
    case wkbGeometryCollection:
      return add_collection(*geometry.toGeometryCollection());
    case wkbPolyhedralSurface:
    case wkbTIN:
      return add_surface(*geometry.toPolyhedralSurface());
    default:  // nothing else is left once curves are gone
      return;
  }
}

void GeometryReader::add_point(const OGRPoint& point) {
  // Two NaNs are how an empty point is written; a single one is a mistake,
  // though GDAL calls that point empty, too.
  const bool half_a_point = std::isnan(point.getX()) != std::isnan(point.getY());
  if (point.IsEmpty() && !half_a_point) return;
  m_sketch.add_point({point.getX(), point.getY()});
}

void GeometryReader::add_collection(const OGRGeometryCollection& collection) {
  for (const OGRGeometry* part : collection) add_flat(*part);
}

void GeometryReader::add_surface(const OGRPolyhedralSurface& surface) {
  for (const OGRPolygon* part : surface) add_polygon(*part);
}

void GeometryReader::add_line(const OGRLineString& line) {
  const std::vector<Vertex>& vertices = vertices_of(line);
  if (!m_spherical) return m_sketch.add_line(vertices);
  for (const sphere::Vertices& piece : sphere::line_on_map(vertices)) m_sketch.add_line(piece);
}

void GeometryReader::add_polygon(const OGRPolygon& polygon) {
  m_sketch.begin_area();
  for (const OGRLinearRing* ring : polygon) {
    const std::vector<Vertex>& vertices = vertices_of(*ring);
    if (!m_spherical) {
      m_sketch.add_ring(vertices);
      continue;
    }
    const sphere::Rings rings = sphere::ring_on_map(vertices);
    for (const sphere::Vertices& piece : rings.pieces) m_sketch.add_ring(piece, rings.is_cut);
  }
  m_sketch.end_area();
}

const std::vector<Vertex>& GeometryReader::vertices_of(const OGRSimpleCurve& curve) {
  m_vertices.clear();
  m_vertices.reserve(static_cast<std::size_t>(curve.getNumPoints()));
  for (int i = 0; i < curve.getNumPoints(); ++i) {
    m_vertices.push_back({curve.getX(i), curve.getY(i)});
  }
  return m_vertices;
}

}  // namespace importers::ogr
