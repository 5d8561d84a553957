#include <gtest/gtest.h>

#include <random>
#include <thread>

#include "tests/lumen/text_art.h"

using text_art::Points;

namespace {

constexpr std::int32_t width = 300;
constexpr std::int32_t height = 200;

LM_Contour_Set diamond() {
  auto set = LM_Create<LM_Contour_Set_Data>();
  const LM_Point corners[] = {{150, -40, 0}, {320, 100, 0}, {150, 240, 0}, {-20, 100, 0}};
  set->add_contour(corners, 4);
  return set;
}

/// The same crowd of lines, strokes and polygons for every caller, limited to
/// the rows.
void draw_rows(const lumen::RasterDevice& device, const LM_Contour_Set& clip, std::int32_t first,
               std::int32_t last) {
  std::mt19937 random(42);
  std::uniform_int_distribution<std::int32_t> any_x(-50, width + 50);
  std::uniform_int_distribution<std::int32_t> any_y(-50, height + 50);
  LM_Rendition rendition;
  rendition.set_clip_rectangle({0, width - 1, first, last});
  for (int i = 0; i < 400; ++i) {
    Points path;
    for (int k = 0; k < 3 + i % 7; ++k) path.push_back({any_x(random), any_y(random), 0});
    const auto count = static_cast<std::int32_t>(path.size());
    const auto shade = static_cast<std::uint32_t>(random());
    rendition.set_color({i % 5 == 0 ? shade & 0x7FFFFFFF : shade & 0x00FFFFFF}, true);
    rendition.set_line_weight(1 + i % 4);
    rendition.set_line_pattern(i % 5);
    rendition.set_complex_clip(i % 11 == 0 ? clip : nullptr, true);
    if (i % 6 == 0) {
      device.actions.polygon_clipped(&rendition, count, path.data(), 0);
    } else {
      device.actions.polyline_clipped(&rendition, count, path.data());
    }
  }
}

TEST(RasterThreads, HalvesDrawnAtOnceAreTheWhole) {
  const LM_Contour_Set clip = diamond();
  lumen::Picture whole(width, height);
  draw_rows(lumen::RasterDevice(whole), clip, 0, height - 1);

  lumen::Picture halves(width, height);
  const lumen::RasterDevice device(halves);
  std::thread upper([&] { draw_rows(device, clip, 0, height / 2 - 1); });
  std::thread lower([&] { draw_rows(device, clip, height / 2, height - 1); });
  upper.join();
  lower.join();
  EXPECT_TRUE(halves == whole);
}

TEST(RasterThreads, AntialiasedHalvesDifferByNoMoreThanTheLastBit) {
  lumen::Picture whole(width, height);
  lumen::RasterDevice whole_device(whole);
  whole_device.set_antialiased(true);
  lumen::Picture halves(width, height);
  lumen::RasterDevice device(halves);
  device.set_antialiased(true);

  LM_Rendition rendition;
  rendition.set_line_weight(4);
  const Points path = text_art::points({{-3, 7}, {280, 190}, {120, -44}, {20, 180}, {290, 31}});
  whole_device.actions.polyline_clipped(&rendition, 5, path.data());
  const auto draw_half = [&](std::int32_t first, std::int32_t last) {
    LM_Rendition own = rendition;
    own.set_clip_rectangle({0, width - 1, first, last});
    device.actions.polyline_clipped(&own, 5, path.data());
  };
  std::thread upper(draw_half, 0, height / 2 - 1);
  std::thread lower(draw_half, height / 2, height - 1);
  upper.join();
  lower.join();
  for (std::int32_t y = 0; y < height; ++y) {
    for (std::int32_t x = 0; x < width; ++x) {
      const auto one = static_cast<std::int32_t>(whole.pixel(x, y).word & 0xFF);
      const auto two = static_cast<std::int32_t>(halves.pixel(x, y).word & 0xFF);
      ASSERT_NEAR(one, two, 2) << x << "," << y;
    }
  }
}

}  // namespace
