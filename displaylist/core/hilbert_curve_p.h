#pragma once

#include <cstdint>
#include <utility>

namespace DL {

/// How far along a Hilbert curve, which fills a square of 2^bits by 2^bits cells,
/// the cell at (x, y) lies. Higher bits of the coordinates count for nothing.
[[nodiscard]] inline std::uint64_t place_on_hilbert_curve(std::uint32_t x, std::uint32_t y,
                                                          std::uint32_t bits) {
  std::uint64_t place = 0;
  for (std::uint32_t bit = 1U << (bits - 1); bit != 0; bit >>= 1U) {
    const std::uint64_t right = (x & bit) != 0 ? 1 : 0;
    const std::uint64_t upper = (y & bit) != 0 ? 1 : 0;
    place = place << 2U | ((3 * right) ^ upper);
    if (upper != 0) continue;
    // The curve is turned in the lower quarters.
    if (right != 0) {
      x = ~x;
      y = ~y;
    }
    std::swap(x, y);
  }
  return place;
}

}  // namespace DL
