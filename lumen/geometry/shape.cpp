#include "lumen/geometry/shape_p.h"

#include <cmath>

namespace lumen {
namespace {

/// Coordinates up to here are exact in 24.8 numbers with room to spare.
constexpr double near_limit = 1 << 21;

/// Cells that one band may need at most.
constexpr double cells_of_band = 1 << 20;

std::int32_t fixed(double coordinate) {
  return agg::ras_conv_int::upscale(coordinate);
}

}  // namespace

bool Shape::is_near() const {
  return std::all_of(m_vertices.begin(), m_vertices.end(), [](const Vertex& vertex) {
    return std::abs(vertex.x) <= near_limit && std::abs(vertex.y) <= near_limit;
  });
}

void Shape::collect_edges(const PixelRectangle& inside) {
  m_edges.reset(inside.min_y, inside.max_y);
  if (!is_near()) return collect_clipped_edges(inside);
  const Vertex* start = nullptr;
  const Vertex* previous = nullptr;
  const auto line = [this](const Vertex& from, const Vertex& to) {
    m_edges.line(fixed(from.x), fixed(from.y), fixed(to.x), fixed(to.y));
  };
  for (const Vertex& vertex : m_vertices) {
    if (vertex.starts) {
      if (start != nullptr) line(*previous, *start);
      start = &vertex;
    } else {
      line(*previous, vertex);
    }
    previous = &vertex;
  }
  line(*previous, *start);
}

void Shape::collect_clipped_edges(const PixelRectangle& inside) {
  // So far outside that rounding the cuts moves nothing in the rectangle.
  constexpr double margin = 1 << 20;
  agg::rasterizer_sl_clip_dbl clipper;
  clipper.clip_box(inside.min_x - margin, inside.min_y - margin, inside.max_x + margin,
                   inside.max_y + margin);
  const Vertex* start = nullptr;
  for (const Vertex& vertex : m_vertices) {
    if (!vertex.starts) {
      clipper.line_to(m_edges, vertex.x, vertex.y);
      continue;
    }
    if (start != nullptr) clipper.line_to(m_edges, start->x, start->y);
    start = &vertex;
    clipper.move_to(vertex.x, vertex.y);
  }
  clipper.line_to(m_edges, start->x, start->y);
}

void Shape::collect_cells(LM_Fill_Rule rule, const PixelRectangle& band) {
  m_cells.reset();
  m_cells.clip_box(band.min_x, band.min_y, band.max_x + 1.0, band.max_y + 1.0);
  m_cells.filling_rule(rule == LM_Fill_Rule::even_odd ? agg::fill_even_odd : agg::fill_non_zero);
  for (const Vertex& vertex : m_vertices) {
    // The library's pixel (x, y) reaches from x to x + 1.
    const double x = vertex.x + 0.5;
    const double y = vertex.y + 0.5;
    if (vertex.starts) {
      m_cells.move_to_d(x, y);
    } else {
      m_cells.line_to_d(x, y);
    }
  }
}

std::int32_t Shape::last_row_of_band(std::int32_t first, const PixelRectangle& inside) const {
  const double width = inside.max_x - inside.min_x + 1;
  const double height = inside.max_y - inside.min_y + 1;
  // Few vertices cannot need many cells, however long their edges.
  const auto count = static_cast<double>(m_vertices.size());
  if (count * (width + 3 * height + 3) <= cells_of_band) return inside.max_y;

  double cells = 0;
  const Vertex* previous = &m_vertices.back();
  for (const Vertex& vertex : m_vertices) {
    cells += std::min(std::abs(vertex.x - previous->x), width) +
             3 * std::min(std::abs(vertex.y - previous->y), height) + 3;
    previous = &vertex;
  }
  const double bands = std::clamp(std::ceil(cells / cells_of_band), 1.0, height);
  const double rows = std::ceil(height / bands);
  return static_cast<std::int32_t>(std::min(first + rows - 1, double{1} * inside.max_y));
}

}  // namespace lumen
