#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "tests/lumen/text_art.h"

/// Shapes with a colour for each vertex, for tests.
namespace gouraud {

using Colors = std::vector<LM_RGB32>;

inline constexpr LM_RGB32 red{0x00FF0000};
inline constexpr LM_RGB32 green{0x0000FF00};
inline constexpr LM_RGB32 blue{0x000000FF};
inline constexpr LM_RGB32 half_black{0x80000000};

inline void strip(text_art::Canvas& canvas, const text_art::Points& path, const Colors& colors) {
  canvas.device.actions.gouraud_triangle_strip_clipped(
      &canvas.rendition, static_cast<std::int32_t>(path.size()), path.data(), colors.data());
}

inline void line(text_art::Canvas& canvas, const text_art::Points& path, const Colors& colors) {
  canvas.device.actions.gouraud_polyline_clipped(
      &canvas.rendition, static_cast<std::int32_t>(path.size()), path.data(), colors.data());
}

inline int channel(std::uint32_t word, int index) {
  return static_cast<int>((word >> (8 * index)) & 0xFF);
}

inline int difference(LM_RGB32 a, LM_RGB32 b) {
  int most = 0;
  for (int i = 0; i < 4; ++i) {
    most = std::max(most, std::abs(channel(a.word, i) - channel(b.word, i)));
  }
  return most;
}

/// The largest difference of two pictures of one size, in any channel.
inline int difference(const lumen::Picture& a, const lumen::Picture& b) {
  int most = 0;
  for (std::int32_t y = 0; y < a.height(); ++y) {
    for (std::int32_t x = 0; x < a.width(); ++x) {
      most = std::max(most, difference(a.pixel(x, y), b.pixel(x, y)));
    }
  }
  return most;
}

}  // namespace gouraud
