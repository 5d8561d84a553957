#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "displaylist/platform/export.h"
#include "displaylist/platform/points.h"

namespace lumen {

/// Where the pixels of pictures lie: large ones on huge pages where the system has
/// them, as lines up and down touch a page for each pixel.
struct LUMEN_API PixelAllocator {
  using value_type = std::uint32_t;
  template <class>
  struct rebind {
    using other = PixelAllocator;
  };

  /// Throws std::bad_alloc.
  static std::uint32_t* allocate(std::size_t count);
  static void deallocate(std::uint32_t* pixels, std::size_t count) noexcept;
  friend bool operator==(const PixelAllocator&, const PixelAllocator&) { return true; }
};

/// An image in memory: one 32-bit word a pixel, 0xTTRRGGBB as LM_RGB32 reads
/// it (TT is transparency: 0 opaque, 0xFF invisible; colours are not
/// premultiplied). Row 0 is at the top, rows follow each other without gaps.
/// Several threads may draw on any pixels at once through a RasterDevice; all
/// else is done to pixels that no other thread touches meanwhile.
class LUMEN_API Picture {
 public:
  /// The longest side and the most pixels that a picture may have.
  static constexpr std::int32_t max_side = 65535;
  static constexpr std::size_t max_pixels = std::size_t{1} << 28;

  /// An empty picture, 0 by 0.
  Picture() = default;
  /// All pixels of one colour. Empty when a side is 0 or less, when the
  /// picture would be too large, or when memory is exhausted.
  Picture(std::int32_t width, std::int32_t height, LM_RGB32 color = {0x00FFFFFF});

  [[nodiscard]] std::int32_t width() const { return m_width; }
  [[nodiscard]] std::int32_t height() const { return m_height; }
  [[nodiscard]] bool is_empty() const { return m_pixels.empty(); }

  void clear(LM_RGB32 color);

  /// The pixel, or an invisible one outside the picture.
  [[nodiscard]] LM_RGB32 pixel(std::int32_t x, std::int32_t y) const;

  /// The `width()` words of row y, which must exist. Valid while the picture is.
  [[nodiscard]] std::uint32_t* row(std::int32_t y) { return m_pixels.data() + row_offset(y); }
  [[nodiscard]] const std::uint32_t* row(std::int32_t y) const {
    return m_pixels.data() + row_offset(y);
  }

  friend bool operator==(const Picture&, const Picture&) = default;

 private:
  [[nodiscard]] std::size_t row_offset(std::int32_t y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width);
  }

  std::int32_t m_width = 0;
  std::int32_t m_height = 0;
  std::vector<std::uint32_t, PixelAllocator> m_pixels;
};

}  // namespace lumen
