#pragma once

#include <agg_rasterizer_scanline_aa.h>
#include <agg_scanline_p.h>

namespace lumen {

/// AGG's clipper in double precision, with long edges handed over in pieces:
/// the cell store adds an edge of 16384 pixels and more twice.
class PiecewiseClipper : public agg::rasterizer_sl_clip_dbl {
 public:
  template <class Cells>
  void line_to(Cells& cells, double x, double y) {
    Pieces<Cells> pieces{cells};
    agg::rasterizer_sl_clip_dbl::line_to(pieces, x, y);
  }

 private:
  template <class Cells>
  struct Pieces {
    Cells& cells;

    void line(int x1, int y1, int x2, int y2) {
      constexpr int limit = 16000 << agg::poly_subpixel_shift;
      const int length = x2 > x1 ? x2 - x1 : x1 - x2;
      if (length < limit) return cells.line(x1, y1, x2, y2);
      const int middle_x = x1 + (x2 - x1) / 2;
      const int middle_y = y1 + (y2 - y1) / 2;
      line(x1, y1, middle_x, middle_y);
      line(middle_x, middle_y, x2, y2);
    }
  };
};

/// AGG's cell rasteriser. The store takes as many cells as memory holds: at
/// its default limit it drops the rest of a path without a word.
class CellRasterizer : public agg::rasterizer_scanline_aa<PiecewiseClipper> {
 public:
  CellRasterizer() : agg::rasterizer_scanline_aa<PiecewiseClipper>(1U << 18) {}
};

}  // namespace lumen
