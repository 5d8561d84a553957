#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "lumen/raster_device.h"

/// Small pictures as rows of characters, for tests.
namespace text_art {

inline constexpr LM_RGB32 white{0x00FFFFFF};
inline constexpr LM_RGB32 black{0x00000000};

using Rows = std::vector<std::string>;

/// '.' is white, '#' is black, a digit is how much of nine parts is dark.
inline Rows rows_of(const lumen::Picture& picture) {
  Rows rows;
  for (std::int32_t y = 0; y < picture.height(); ++y) {
    std::string& row = rows.emplace_back();
    for (std::int32_t x = 0; x < picture.width(); ++x) {
      const std::uint32_t dark = 255 - ((picture.pixel(x, y).word >> 8) & 0xFF);
      const char digit = static_cast<char>('0' + (dark * 9 + 127) / 255);
      row += dark == 255 ? '#' : dark == 0 ? '.' : digit;
    }
  }
  return rows;
}

using Points = std::vector<LM_DCI_Point>;

inline Points points(std::initializer_list<std::pair<std::int32_t, std::int32_t>> list) {
  Points result;
  for (const auto& [x, y] : list) result.push_back({x, y, 0});
  return result;
}

/// A white picture, a device on it, and a black rendition to draw with.
struct Canvas {
  Canvas(std::int32_t width, std::int32_t height)
      : picture(width, height, white), device(picture) {}

  void polyline(const Points& path) {
    device.actions.polyline_clipped(&rendition, static_cast<std::int32_t>(path.size()),
                                    path.data());
  }
  void polygon(const Points& path) {
    device.actions.polygon_clipped(&rendition, static_cast<std::int32_t>(path.size()), path.data(),
                                   0);
  }
  [[nodiscard]] Rows rows() const { return rows_of(picture); }

  lumen::Picture picture;
  lumen::RasterDevice device;
  LM_Rendition rendition;
};

}  // namespace text_art
