#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <thread>

#include "lumen/raster_device.h"
#include "tests/lumen/text_art.h"

/// What is checked of every action that draws areas, for tests.
namespace raster_checks {

/// What one layer of 0x80000000 leaves of white.
inline constexpr std::uint32_t half_gray = 0x00808080;

/// How much of a pixel is dark, 0 to 1.
inline double darkness(const lumen::Picture& picture, std::int32_t x, std::int32_t y) {
  return (255.0 - (picture.pixel(x, y).word & 0xFF)) / 255;
}

/// How much of the picture is dark, in pixels.
inline double ink_of(const lumen::Picture& picture) {
  double ink = 0;
  for (std::int32_t y = 0; y < picture.height(); ++y) {
    for (std::int32_t x = 0; x < picture.width(); ++x) ink += darkness(picture, x, y);
  }
  return ink;
}

/// That `part` shows `whole` inside the rectangle and is white outside.
inline void expect_only_hidden(const lumen::Picture& whole, const lumen::Picture& part,
                               const LM_Clip_Rectangle& clip) {
  for (std::int32_t y = 0; y < whole.height(); ++y) {
    for (std::int32_t x = 0; x < whole.width(); ++x) {
      const LM_RGB32 expected = clip.contains({x, y, 0}) ? whole.pixel(x, y) : text_art::white;
      ASSERT_EQ(part.pixel(x, y), expected) << x << "," << y;
    }
  }
}

/// That `draw(device, rendition)`, called by two threads at once for half a
/// picture each, draws what one call draws.
template <class Draw>
void expect_halves_make_the_whole(const Draw& draw) {
  constexpr std::int32_t side = 200;
  const auto draw_rows = [&](const lumen::RasterDevice& device, std::int32_t first,
                             std::int32_t last) {
    LM_Rendition rendition;
    rendition.set_clip_rectangle({0, side - 1, first, last});
    draw(device, rendition);
  };
  lumen::Picture whole(side, side);
  draw_rows(lumen::RasterDevice(whole), 0, side - 1);
  lumen::Picture halves(side, side);
  const lumen::RasterDevice device(halves);
  std::thread upper([&] { draw_rows(device, 0, side / 2 - 1); });
  std::thread lower([&] { draw_rows(device, side / 2, side - 1); });
  upper.join();
  lower.join();
  EXPECT_TRUE(whole == halves);
  EXPECT_GT(ink_of(whole), 0);
}

}  // namespace raster_checks
