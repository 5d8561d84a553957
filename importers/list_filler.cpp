#include "importers/list_filler.h"

#include <algorithm>

#include "displaylist/displaylist.h"
#include "importers/complete_drawable.h"
#include "importers/sphere.h"

namespace importers {

namespace {

using LogicalPoint = DL::PointTemplate<long>;
using PointSymbol = DL::PalettizedDrawable<DL::DLPolyline>;

/// The vertex of a ring that follows the one at `index`.
const Vertex& next_vertex(std::span<const Vertex> ring, std::size_t index) {
  return ring[index + 1 == ring.size() ? 0 : index + 1];
}

bool has_only_seams(std::span<const Vertex> ring) {
  for (std::size_t i = 0; i < ring.size(); ++i) {
    if (!sphere::is_seam(ring[i], next_vertex(ring, i))) return false;
  }
  return true;
}

}  // namespace

void ListFiller::load(const Sketch::Run& run) {
  for (const Vertex& vertex : m_sketch.vertices(run)) m_points.push_back(logical(vertex));
}

void ListFiller::add_fill(const Sketch::Layer& layer, const Sketch::Area& area, LM_RGB32 color) {
  m_points.clear();
  const Sketch::Ring* rings = &layer.rings[area.first_ring];
  load(rings[0]);
  const LogicalPoint anchor = m_points.front();
  if (area.ring_count > 1) m_points.push_back(anchor);
  for (std::size_t i = 1; i < area.ring_count; ++i) {
    const std::size_t start = m_points.size();
    load(rings[i]);
    m_points.push_back(m_points[start]);
    m_points.push_back(anchor);
  }
  const auto count = static_cast<std::int32_t>(m_points.size());
  add(complete_or_null(new (m_drawing.heap.get()) DL::DLPolygon(color, count, m_points.data())),
      m_points);
}

void ListFiller::add_outline(const Sketch::Ring& ring, LM_RGB32 color) {
  const std::span<const Vertex> vertices = m_sketch.vertices(ring);
  const bool is_cut = ring.is_cut && !has_only_seams(vertices);
  m_points.assign(1, logical(vertices.front()));
  for (std::size_t i = 0; i < vertices.size(); ++i) {
    const Vertex& to = next_vertex(vertices, i);
    if (is_cut && sphere::is_seam(vertices[i], to)) {
      add_pieces(color);
      m_points.clear();
    }
    m_points.push_back(logical(to));
  }
  add_pieces(color);
}

void ListFiller::add_line(const Sketch::Run& line, LM_RGB32 color) {
  m_points.clear();
  load(line);
  add_pieces(color);
}

void ListFiller::add_pieces(LM_RGB32 color) {
  const std::span<const LogicalPoint> all(m_points);
  for (std::size_t first = 0; first + 1 < all.size(); first += longest_piece - 1) {
    const auto piece = all.subspan(first, std::min(longest_piece, all.size() - first));
    const auto count = static_cast<std::int32_t>(piece.size());
    add(complete_or_null(new (m_drawing.heap.get()) DL::DLPolyline(color, count, piece.data())),
        piece);
  }
}

void ListFiller::begin_points(LM_RGB32 color, std::int32_t size) {
  m_point_color = color;
  m_point_rendition = nullptr;
  if (size < 2) return;
  auto rendition = std::make_unique<LM_Rendition>();
  rendition->set_color(color, false);
  rendition->set_line_weight(size);
  m_point_rendition = rendition.get();
  m_drawing.renditions.push_back(std::move(rendition));
}

void ListFiller::add_point(const Vertex& vertex) {
  const LogicalPoint both_ends[2] = {logical(vertex), logical(vertex)};
  LumenHeap* heap = m_drawing.heap.get();
  DL::Drawable* symbol = nullptr;
  if (m_point_rendition == nullptr) {
    symbol = complete_or_null(new (heap) DL::DLDot(m_point_color, both_ends[0]));
  } else {
    symbol = complete_or_null(new (heap) PointSymbol(m_point_rendition, 2, both_ends));
  }
  add(symbol, {both_ends, 1});
}

void ListFiller::add(DL::Drawable* drawable, std::span<const LogicalPoint> points) {
  if (drawable == nullptr) {
    m_out_of_memory = true;
    return;
  }
  DL::BoundsTemplate<long> bounds;
  for (const LogicalPoint& point : points) bounds.widen(point);
  if (m_reorders) {
    m_waiting.push(drawable, bounds);
    return;
  }
  if (m_drawing.list->add(drawable, bounds, 0) == nullptr) {
    delete drawable;
    m_out_of_memory = true;
    return;
  }
  ++m_drawing.drawables;
}

void ListFiller::end_kind() {
  const std::size_t waiting = m_waiting.size();
  const std::size_t added = m_waiting.add_to(*m_drawing.list);
  m_drawing.drawables += added;
  m_out_of_memory = m_out_of_memory || added != waiting;
}

}  // namespace importers
