#pragma once

#include <cstdint>

#include "lumen/picture.h"
#include "lumen/pixel_blend_p.h"
#include "lumen/raster/band_log_p.h"
#include "lumen/raster/pixel_access_p.h"
#include "lumen/raster/row_range_p.h"

namespace lumen {

/// Colours runs of pixels of a picture, which must exist, or notes them.
class SpanPen {
 public:
  /// `mask`, when there is one, has a byte per pixel of the picture: how much of
  /// it is inside.
  SpanPen(Picture& picture, LM_RGB32 color, const std::uint8_t* mask)
      : m_picture(picture),
        m_color(color.word & 0x00FFFFFF),
        m_opacity(opacity_of(color)),
        m_mask(mask) {}
  /// Notes the runs for the picture. The log has been told of clips and colour.
  SpanPen(Picture& picture, BandLog& log) : m_picture(picture), m_log(&log) {}

  /// `length` pixels from (x, y) to the right, all covered by `cover` of 255.
  void solid(std::int32_t x, std::int32_t y, std::int32_t length, std::uint32_t cover) {
    if (m_log != nullptr) return m_log->solid(x, y, length, cover);
    std::uint32_t* pixels = m_picture.row(y) + x;
    const std::uint32_t opacity = scale_255(m_opacity, cover);
    if (m_mask == nullptr) return lay_on_pixels(pixels, length, m_color, opacity);
    const std::uint8_t* mask = mask_row(x, y);
    for (std::int32_t i = 0; i < length; ++i) {
      lay_on_pixel(pixels[i], m_color, scale_255(opacity, mask[i]));
    }
  }

  /// The same with a cover of its own for each pixel.
  void varied(std::int32_t x, std::int32_t y, std::int32_t length, const std::uint8_t* covers) {
    if (m_log != nullptr) return m_log->varied(x, y, length, covers);
    std::uint32_t* pixels = m_picture.row(y) + x;
    const std::uint8_t* mask = m_mask == nullptr ? nullptr : mask_row(x, y);
    for (std::int32_t i = 0; i < length; ++i) {
      const std::uint32_t opacity = scale_255(m_opacity, covers[i]);
      lay_on_pixel(pixels[i], m_color, mask == nullptr ? opacity : scale_255(opacity, mask[i]));
    }
  }

 private:
  [[nodiscard]] const std::uint8_t* mask_row(std::int32_t x, std::int32_t y) const {
    return m_mask + static_cast<std::ptrdiff_t>(y) * m_picture.width() + x;
  }

  Picture& m_picture;
  std::uint32_t m_color = 0;
  std::uint32_t m_opacity = 0;
  const std::uint8_t* m_mask = nullptr;
  BandLog* m_log = nullptr;
};

/// Hands on to another pen what lies in the rows.
template <class Pen>
class RowPen {
 public:
  RowPen(Pen& pen, const RowRange& rows) : m_pen(pen), m_rows(rows) {}

  void solid(std::int32_t x, std::int32_t y, std::int32_t length, std::uint32_t cover) {
    if (m_rows.contains(y)) m_pen.solid(x, y, length, cover);
  }
  void varied(std::int32_t x, std::int32_t y, std::int32_t length, const std::uint8_t* covers) {
    if (m_rows.contains(y)) m_pen.varied(x, y, length, covers);
  }

 private:
  Pen& m_pen;
  RowRange m_rows;
};

}  // namespace lumen
