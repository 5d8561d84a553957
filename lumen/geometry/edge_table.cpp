#include "lumen/geometry/edge_table_p.h"

#include <utility>

namespace lumen {
namespace {

constexpr std::int32_t units = 256;

std::int64_t floor_quotient(std::int64_t numerator, std::int64_t denominator) {
  const std::int64_t quotient = numerator / denominator;
  return numerator % denominator < 0 ? quotient - 1 : quotient;
}

/// The first row or column whose centre is not before the coordinate.
std::int32_t first_center(std::int32_t coordinate) {
  return (coordinate + units - 1) >> 8;
}

}  // namespace

void EdgeTable::reset(std::int32_t first_row, std::int32_t last_row) {
  m_first_row = first_row;
  m_last_row = last_row;
  m_edges.clear();
  m_active.clear();
}

void EdgeTable::line(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2) {
  std::int32_t winding = 1;
  if (y1 > y2) {
    std::swap(x1, x2);
    std::swap(y1, y2);
    winding = -1;
  }
  const std::int32_t row = std::max(first_center(y1), m_first_row);
  const std::int32_t last_row = std::min(first_center(y2) - 1, m_last_row);
  if (row > last_row) return;

  // At the row's centre x is (x1 dy + (256 row - y1) dx) / dy, in 1/256 pixel.
  const std::int64_t dx = std::int64_t{x2} - x1;
  const std::int64_t dy = std::int64_t{y2} - y1;
  const std::int64_t limit = dy * units;
  const std::int64_t numerator = x1 * dy + (std::int64_t{row} * units - y1) * dx;
  const std::int64_t column = -floor_quotient(-numerator, limit);
  const std::int64_t column_step = floor_quotient(dx, dy);
  m_edges.push_back({column * limit - numerator, (dx - column_step * dy) * units, limit,
                     static_cast<std::int32_t>(column), static_cast<std::int32_t>(column_step), row,
                     last_row, winding});
}

void EdgeTable::start_sweep() {
  std::sort(m_edges.begin(), m_edges.end(),
            [](const Edge& a, const Edge& b) { return a.row < b.row; });
  m_active.clear();
  m_next = 0;
}

void EdgeTable::activate(std::int32_t row) {
  while (m_next < m_edges.size() && m_edges[m_next].row == row) {
    m_active.push_back(&m_edges[m_next++]);
  }
  sort_active();
}

void EdgeTable::step_active(std::int32_t row) {
  std::size_t kept = 0;
  for (Edge* edge : m_active) {
    if (edge->last_row == row) continue;
    edge->step();
    m_active[kept++] = edge;
  }
  m_active.resize(kept);
}

void EdgeTable::sort_active() {
  // Nearly sorted from row to row: insertion is cheapest, until a row turns
  // out to be in disorder.
  std::size_t moves_left = 8 * m_active.size();
  for (std::size_t i = 1; i < m_active.size(); ++i) {
    Edge* edge = m_active[i];
    std::size_t place = i;
    for (; place > 0 && m_active[place - 1]->column > edge->column; --place) {
      m_active[place] = m_active[place - 1];
    }
    m_active[place] = edge;
    if (i - place > moves_left) {
      std::sort(m_active.begin(), m_active.end(),
                [](const Edge* a, const Edge* b) { return a->column < b->column; });
      return;
    }
    moves_left -= i - place;
  }
}

}  // namespace lumen
