#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "lumen/geometry/pixel_rectangle_p.h"
#include "lumen/picture.h"
#include "lumen/pixel_blend_p.h"
#include "lumen/raster/pixel_access_p.h"

namespace lumen {

/// A pixel of a layer that nobody has painted. It is invisible, so that it
/// needs no care where the layer is laid on a picture.
inline constexpr std::uint32_t unpainted = 0xFF000001;

/// The colour as a layer holds it.
constexpr std::uint32_t painted(std::uint32_t color) {
  return color == unpainted ? 0xFF000000 : color;
}

/// Colour words of the pixels of an area, in a layer or in a picture.
struct ColorRows {
  std::uint32_t* words;  ///< that of the area's left upper pixel
  std::ptrdiff_t pitch;  ///< words from a row to the next
  PixelRectangle area;   ///< in the picture; not empty

  [[nodiscard]] std::ptrdiff_t index(std::int32_t x, std::int32_t y) const {
    return (y - area.min_y) * pitch + (x - area.min_x);
  }
  [[nodiscard]] std::uint32_t* at(std::int32_t x, std::int32_t y) const {
    return words + index(x, y);
  }
};

inline ColorRows rows_of_picture(Picture& picture, const PixelRectangle& area) {
  return {picture.row(area.min_y) + area.min_x, picture.width(), area};
}

/// What is painted first and then laid on a picture at once, each pixel one
/// time. Kept per thread: it allocates only while it grows.
class ColorLayer {
 public:
  /// An unpainted layer; valid until the next call.
  ColorRows clear(const PixelRectangle& area) {
    const std::ptrdiff_t width = std::ptrdiff_t{area.max_x} - area.min_x + 1;
    const std::ptrdiff_t height = std::ptrdiff_t{area.max_y} - area.min_y + 1;
    m_words.assign(static_cast<std::size_t>(width * height), unpainted);
    return {m_words.data(), width, area};
  }

 private:
  std::vector<std::uint32_t> m_words;
};

/// Calls `draw(band)` for bands of rows that make up the area, small enough
/// for a layer each.
template <class Draw>
void for_each_band(const PixelRectangle& area, const Draw& draw) {
  constexpr std::int32_t max_pixels = 1 << 19;
  if (area.is_empty()) return;
  const std::int32_t rows = std::max(max_pixels / (area.max_x - area.min_x + 1), 1);
  for (PixelRectangle band = area; band.min_y <= area.max_y; band.min_y = band.max_y + 1) {
    band.max_y = std::min(band.min_y + rows - 1, area.max_y);
    draw(band);
  }
}

/// Lays runs of a layer's pixels on the picture, but none in rows that the layer
/// does not have. `mask`, when there is one, has a byte per pixel of the picture:
/// how much of it is inside.
class LayerPen {
 public:
  LayerPen(Picture& picture, const ColorRows& layer, const std::uint8_t* mask)
      : m_picture(picture), m_layer(layer), m_mask(mask) {}

  /// `length` pixels from (x, y) to the right, all covered by `cover` of 255.
  void solid(std::int32_t x, std::int32_t y, std::int32_t length, std::uint32_t cover) const {
    lay(x, y, length, [cover](std::int32_t) { return cover; });
  }
  /// The same with a cover of its own for each pixel.
  void varied(std::int32_t x, std::int32_t y, std::int32_t length,
              const std::uint8_t* covers) const {
    lay(x, y, length, [covers](std::int32_t i) { return std::uint32_t{covers[i]}; });
  }

 private:
  template <class Cover>
  void lay(std::int32_t x, std::int32_t y, std::int32_t length, const Cover& cover) const {
    if (y < m_layer.area.min_y || y > m_layer.area.max_y) return;
    std::uint32_t* pixels = m_picture.row(y) + x;
    const std::uint32_t* colors = m_layer.at(x, y);
    const std::uint8_t* mask =
        m_mask == nullptr ? nullptr : m_mask + std::ptrdiff_t{y} * m_picture.width() + x;
    for (std::int32_t i = 0; i < length; ++i) {
      std::uint32_t opacity = scale_255(opacity_of({colors[i]}), cover(i));
      if (mask != nullptr) opacity = scale_255(opacity, mask[i]);
      lay_on_pixel(pixels[i], colors[i] & 0x00FFFFFF, opacity);
    }
  }

  Picture& m_picture;
  ColorRows m_layer;
  const std::uint8_t* m_mask;
};

}  // namespace lumen
