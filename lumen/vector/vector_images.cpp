#include "lumen/vector/vector_images_p.h"

#include <algorithm>
#include <utility>

#include "lumen/pixel_blend_p.h"

namespace lumen {
namespace {

constexpr std::int32_t piece_side = 16384;

/// Cairo's pixels are premultiplied.
std::uint32_t premultiplied(std::uint32_t word) {
  const std::uint32_t opacity = opacity_of({word});
  std::uint32_t result = opacity << 24;
  for (int shift = 0; shift < 24; shift += 8) {
    result |= scale_255((word >> shift) & 0xFF, opacity) << shift;
  }
  return result;
}

/// The part of the image from this pixel on, up to the size of a piece.
cairo_surface_t* surface_of(const LM_Image& image, std::int32_t x, std::int32_t y) {
  const std::int32_t width = std::min(image.width() - x, piece_side);
  const std::int32_t height = std::min(image.height() - y, piece_side);
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
  unsigned char* bytes = cairo_image_surface_get_data(surface);
  if (bytes == nullptr) return surface;  // the context gets to know its error
  const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface);
  for (std::int32_t i = 0; i < height; ++i) {
    const std::uint32_t* row = image.row(y + i) + x;
    std::transform(row, row + width, reinterpret_cast<std::uint32_t*>(bytes + i * stride),
                   premultiplied);
  }
  cairo_surface_mark_dirty(surface);
  return surface;
}

/// The first and the last piece of an image of `size` pixels from `start` on
/// that is seen from `low` to `high`; none when first > last.
struct PieceRange {
  std::int64_t first;
  std::int64_t last;
};

PieceRange pieces_between(std::int64_t start, std::int64_t size, std::int64_t low,
                          std::int64_t high) {
  const std::int64_t first = std::max<std::int64_t>(low - start, 0);
  const std::int64_t last = std::min(high - start, size - 1);
  if (first > last) return {0, -1};
  return {first / piece_side, last / piece_side};
}

struct PieceRanges {
  PieceRange columns;
  PieceRange rows;

  [[nodiscard]] bool is_empty() const {
    return columns.first > columns.last || rows.first > rows.last;
  }
};

PieceRanges pieces_seen(const LM_Image& image, const LM_DCI_Point& corner,
                        const LM_Clip_Rectangle& visible) {
  return {pieces_between(corner.x, image.width(), visible.min_x, visible.max_x),
          pieces_between(corner.y, image.height(), visible.min_y, visible.max_y)};
}

}  // namespace

void VectorImages::draw(const LM_Image& image, const LM_DCI_Point& corner) {
  if (pieces_seen(image, corner, m_page.visible()).is_empty()) return;
  Pieces& pieces = m_images[&image];
  pieces.image = LM_Handle<const LM_Image>(&image);
  draw_pieces(pieces, corner);
}

void VectorImages::draw_once(LM_Handle<const LM_Image> image, const LM_DCI_Point& corner) {
  Pieces pieces{std::move(image), {}};
  draw_pieces(pieces, corner);
}

void VectorImages::draw_pieces(Pieces& pieces, const LM_DCI_Point& corner) {
  const PieceRanges seen = pieces_seen(*pieces.image, corner, m_page.visible());
  for (std::int64_t row = seen.rows.first; row <= seen.rows.last; ++row) {
    for (std::int64_t column = seen.columns.first; column <= seen.columns.last; ++column) {
      draw_piece(pieces, column, row, corner);
    }
  }
}

void VectorImages::draw_piece(Pieces& pieces, std::int64_t column, std::int64_t row,
                              const LM_DCI_Point& corner) {
  const std::int64_t x = column * piece_side;
  const std::int64_t y = row * piece_side;
  Surface& surface = pieces.surfaces[{column, row}];
  if (surface == nullptr) {
    surface.reset(
        surface_of(*pieces.image, static_cast<std::int32_t>(x), static_cast<std::int32_t>(y)));
  }
  cairo_t* cairo = m_page.cairo();
  cairo_set_source_surface(cairo, surface.get(), static_cast<double>(corner.x + x),
                           static_cast<double>(corner.y + y));
  cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_NEAREST);
  cairo_paint(cairo);
}

}  // namespace lumen
