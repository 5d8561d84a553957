#include "importers/ogr/geometry_reader.h"

#include <memory>

namespace importers::ogr {

void GeometryReader::add(const OGRGeometry& geometry) {
  if (!geometry.hasCurveGeometry()) return add_flat(geometry);
  const std::unique_ptr<OGRGeometry> linear(geometry.getLinearGeometry());
  if (linear != nullptr) add_flat(*linear);
}

void GeometryReader::add_flat(const OGRGeometry& geometry) {
  if (geometry.IsEmpty()) return;
  switch (wkbFlatten(geometry.getGeometryType())) {
    case wkbPoint: {
      const OGRPoint* point = geometry.toPoint();
      return m_sketch.add_point({point->getX(), point->getY()});
    }
    case wkbLineString:
      return m_sketch.add_line(vertices_of(*geometry.toLineString()));
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

void GeometryReader::add_collection(const OGRGeometryCollection& collection) {
  for (const OGRGeometry* part : collection) add_flat(*part);
}

void GeometryReader::add_surface(const OGRPolyhedralSurface& surface) {
  for (const OGRPolygon* part : surface) add_polygon(*part);
}

void GeometryReader::add_polygon(const OGRPolygon& polygon) {
  m_sketch.begin_area();
  for (const OGRLinearRing* ring : polygon) m_sketch.add_ring(vertices_of(*ring));
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
