#pragma once

#include <cstdint>

#include "displaylist/platform/counted.h"

/// A raster image, shared by count: `width` by `height` pixels, one device
/// pixel each when drawn. It does not change while anybody else holds it, so
/// that any thread may read it.
class LM_Image : public LM_Counted {
 public:
  [[nodiscard]] std::int32_t width() const { return m_width; }
  [[nodiscard]] std::int32_t height() const { return m_height; }

  /// The `width()` words of row y, top row first, each 0xTTRRGGBB as LM_RGB32
  /// has it and not premultiplied. Asked for rows that exist only; valid as
  /// long as the image.
  [[nodiscard]] virtual const std::uint32_t* row(std::int32_t y) const = 0;

 protected:
  /// Both at least 0; an image without pixels draws nothing.
  LM_Image(std::int32_t width, std::int32_t height) : m_width(width), m_height(height) {}

 private:
  std::int32_t m_width;
  std::int32_t m_height;
};
