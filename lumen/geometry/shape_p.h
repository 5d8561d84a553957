#pragma once

#include <vector>

#include "displaylist/platform/contour_set.h"
#include "lumen/geometry/cell_rasterizer_p.h"
#include "lumen/geometry/edge_table_p.h"
#include "lumen/geometry/pixel_rectangle_p.h"

namespace lumen {

/// Closed contours to be filled, in device units (the centre of a pixel is at
/// whole numbers), any finite coordinates. Kept per thread: it allocates only
/// while it grows.
class Shape {
 public:
  void clear() { m_vertices.clear(); }
  void move_to(double x, double y) { m_vertices.push_back({x, y, true}); }
  void line_to(double x, double y) { m_vertices.push_back({x, y, false}); }

  /// Colours the pixels inside both the contours and the rectangle. `Pen` has
  /// `solid(x, y, length, cover)` and `varied(x, y, length, covers)`.
  template <class Pen>
  void fill(LM_Fill_Rule rule, bool antialiased, const PixelRectangle& inside, Pen& pen) {
    if (inside.is_empty() || m_vertices.empty()) return;
    if (antialiased) {
      fill_covers(rule, inside, pen);
    } else {
      fill_centers(rule, inside, pen);
    }
  }

  /// The same for the pixels whose centre is inside; both must not be empty.
  /// All that `Pen` needs is `solid`.
  template <class Pen>
  void fill_centers(LM_Fill_Rule rule, const PixelRectangle& inside, Pen& pen) {
    collect_edges(inside);
    m_edges.sweep(rule, inside.min_x, inside.max_x,
                  [&pen](std::int32_t x, std::int32_t y, std::int32_t length) {
                    pen.solid(x, y, length, 255);
                  });
  }

 private:
  struct Vertex {
    double x;
    double y;
    bool starts;
  };

  /// Bands of rows keep the number of cells, and with it the memory, bounded.
  template <class Pen>
  void fill_covers(LM_Fill_Rule rule, const PixelRectangle& inside, Pen& pen) {
    for (PixelRectangle band = inside; band.min_y <= inside.max_y; band.min_y = band.max_y + 1) {
      band.max_y = last_row_of_band(band.min_y, inside);
      collect_cells(rule, band);
      sweep_cells(band, pen);
    }
  }

  template <class Pen>
  void sweep_cells(const PixelRectangle& band, Pen& pen) {
    if (!m_cells.rewind_scanlines()) return;
    m_scanline.reset(m_cells.min_x(), m_cells.max_x());
    while (m_cells.sweep_scanline(m_scanline)) {
      const std::int32_t y = m_scanline.y();
      if (y < band.min_y || y > band.max_y) continue;
      auto span = m_scanline.begin();
      for (unsigned left = m_scanline.num_spans(); left > 0; --left, ++span) {
        draw_span(span->x, y, span->len, span->covers, band, pen);
      }
    }
  }

  /// A negative length stands for one cover for all.
  template <class Pen>
  static void draw_span(std::int32_t x, std::int32_t y, std::int32_t length,
                        const std::uint8_t* covers, const PixelRectangle& band, Pen& pen) {
    const bool is_solid = length < 0;
    const std::int32_t from = std::max(x, band.min_x);
    const std::int32_t beyond = std::min(x + (is_solid ? -length : length), band.max_x + 1);
    if (from >= beyond) return;
    if (is_solid) {
      pen.solid(from, y, beyond - from, *covers);
    } else {
      pen.varied(from, y, beyond - from, covers + (from - x));
    }
  }

  void collect_edges(const PixelRectangle& inside);
  void collect_clipped_edges(const PixelRectangle& inside);
  void collect_cells(LM_Fill_Rule rule, const PixelRectangle& band);
  [[nodiscard]] std::int32_t last_row_of_band(std::int32_t first,
                                              const PixelRectangle& inside) const;
  [[nodiscard]] bool is_near() const;

  std::vector<Vertex> m_vertices;
  EdgeTable m_edges;
  CellRasterizer m_cells;
  agg::scanline32_p8 m_scanline;
};

}  // namespace lumen
