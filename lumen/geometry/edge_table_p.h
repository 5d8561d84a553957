#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "displaylist/platform/contour_set.h"
#include "lumen/geometry/pixel_rectangle_p.h"

namespace lumen {

/// Fills closed contours without antialiasing: a pixel is inside when its
/// centre is. A centre on a left or upper edge is inside, one on a right or
/// lower edge is not, so that neighbours share no pixel and leave none out.
/// Crossings are exact: which rows and columns are asked for changes nothing.
///
/// Coordinates are 1/256 pixel, within +-2^30, pixel centres at multiples of
/// 256. Kept per thread: it allocates only while it grows.
class EdgeTable {
 public:
  /// Forgets the edges; edges added next are limited to the rows.
  void reset(std::int32_t first_row, std::int32_t last_row);

  /// Adds one edge. The name is that of the library's clipper's target.
  void line(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2);

  /// Calls `run(x, y, length)` for every run of pixels inside the contours
  /// and the columns.
  template <class Run>
  void sweep(LM_Fill_Rule rule, std::int32_t first_column, std::int32_t last_column,
             const Run& run);

 private:
  /// An edge at one row: it meets the row's centre line at `column` minus
  /// `rest / limit` pixels.
  struct Edge {
    std::int64_t rest;
    std::int64_t rest_step;
    std::int64_t limit;
    std::int32_t column;
    std::int32_t column_step;
    std::int32_t row;
    std::int32_t last_row;
    std::int32_t winding;

    void step() {
      column += column_step;
      rest -= rest_step;
      if (rest < 0) {
        rest += limit;
        ++column;
      }
    }
  };

  void start_sweep();
  /// The edges that meet the row, by column.
  void activate(std::int32_t row);
  void step_active(std::int32_t row);
  void sort_active();

  std::int32_t m_first_row = 0;
  std::int32_t m_last_row = -1;
  std::vector<Edge> m_edges;
  std::vector<Edge*> m_active;
  std::size_t m_next = 0;
};

template <class Run>
void EdgeTable::sweep(LM_Fill_Rule rule, std::int32_t first_column, std::int32_t last_column,
                      const Run& run) {
  if (m_edges.empty()) return;
  start_sweep();
  for (std::int32_t row = m_edges.front().row; row <= m_last_row; ++row) {
    if (m_active.empty() && m_next == m_edges.size()) return;
    activate(row);
    std::int32_t winding = 0;
    std::int32_t start = 0;
    for (const Edge* edge : m_active) {
      const bool was_inside = winding != 0;
      winding = rule == LM_Fill_Rule::even_odd ? winding ^ 1 : winding + edge->winding;
      if (!was_inside) {
        start = edge->column;
      } else if (winding == 0) {
        const std::int32_t from = std::max(start, first_column);
        const std::int32_t beyond = std::min(edge->column, last_column + 1);
        if (from < beyond) run(from, row, beyond - from);
      }
    }
    step_active(row);
  }
}

}  // namespace lumen
