#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <thread>
#include <vector>

#include "tests/lumen/crowd.h"
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

/// Calls `draw(i)` for 0 to 3, each on a thread of its own.
template <class Draw>
void on_four_threads(const Draw& draw) {
  std::vector<std::thread> threads;
  for (unsigned i = 0; i < 4; ++i) threads.emplace_back(draw, i);
  for (std::thread& thread : threads) thread.join();
}

lumen::Picture crowd_sheet() {
  return {Crowd::width, Crowd::height, text_art::white};
}

/// Draws the crowd of a seed with a rendition of its own.
void draw_crowd(lumen::RasterDevice& device, LM_RGB32 ink, unsigned seed, bool with_text) {
  LM_Rendition rendition;
  Crowd crowd(device, rendition, ink, seed);
  crowd.prepare();
  const LM_Contour_Set clip = diamond();
  for (int i = 0; i < 12; ++i) {
    crowd.vary(i, clip);
    crowd.draw_one_of_each();
    if (with_text) crowd.draw_text();
  }
}

/// Calls `check(x, y)` for every pixel of a sheet, until one fails.
template <class Check>
void for_each_pixel(const Check& check) {
  for (std::int32_t y = 0; y < Crowd::height; ++y) {
    for (std::int32_t x = 0; x < Crowd::width; ++x) {
      check(x, y);
      if (testing::Test::HasFailure()) return;
    }
  }
}

TEST(RasterThreads, OverlappingOpaqueCrowdsLeaveAColorOfWhatCoversAPixel) {
  // Colours without a byte in common.
  const LM_RGB32 inks[] = {{0x00112233}, {0x00445566}};
  lumen::Picture alone[] = {crowd_sheet(), crowd_sheet()};
  for (unsigned i = 0; i < 4; ++i) {
    lumen::RasterDevice device(alone[i % 2]);
    draw_crowd(device, inks[i % 2], i, false);
  }
  lumen::Picture together = crowd_sheet();
  lumen::RasterDevice device(together);
  on_four_threads([&](unsigned i) { draw_crowd(device, inks[i % 2], i, false); });

  for_each_pixel([&](std::int32_t x, std::int32_t y) {
    const LM_RGB32 one = alone[0].pixel(x, y);
    const LM_RGB32 two = alone[1].pixel(x, y);
    const LM_RGB32 pixel = together.pixel(x, y);
    const bool is_fine = one == text_art::white   ? pixel == two
                         : two == text_art::white ? pixel == one
                                                  : pixel == one || pixel == two;
    EXPECT_TRUE(is_fine) << x << "," << y << " is " << std::hex << pixel.word;
  });
}

TEST(RasterThreads, OverlappingSmoothCrowdsLeaveSomeOfWhatCoversAPixel) {
  for (const LM_RGB32 ink : {LM_RGB32{0x00000000}, LM_RGB32{0x80000000}}) {
    lumen::Picture one_by_one = crowd_sheet();
    lumen::RasterDevice orderly(one_by_one);
    orderly.set_antialiased(true);
    for (unsigned i = 0; i < 4; ++i) draw_crowd(orderly, ink, i, true);
    lumen::Picture together = crowd_sheet();
    lumen::RasterDevice device(together);
    device.set_antialiased(true);
    on_four_threads([&](unsigned i) { draw_crowd(device, ink, i, true); });

    for_each_pixel([&](std::int32_t x, std::int32_t y) {
      const std::uint32_t word = together.pixel(x, y).word;
      EXPECT_EQ(word, (word & 0xFF) * 0x010101) << "not gray at " << x << "," << y;
      // Layers can get lost where threads meet, but for their rounding none is added.
      const std::uint32_t all = one_by_one.pixel(x, y).word;
      EXPECT_GE((word & 0xFF) + 4, all & 0xFF) << x << "," << y;
      EXPECT_TRUE(all != text_art::white.word || word == all) << x << "," << y;
    });
  }
}

TEST(RasterThreads, OneRenditionMayBeDrawnWithByAll) {
  LM_Rendition shared;
  lumen::Picture alone = crowd_sheet();
  lumen::RasterDevice alone_device(alone);
  Crowd owner(alone_device, shared, text_art::black, 0);
  owner.prepare();
  owner.vary(7, diamond());
  lumen::Picture together = crowd_sheet();
  lumen::RasterDevice device(together);
  const auto draw_shapes = [&shared](lumen::RasterDevice& target, unsigned seed) {
    Crowd crowd(target, shared, text_art::black, seed);
    for (int i = 0; i < 12; ++i) crowd.draw_one_of_each();
  };
  // Its edges are smooth, so that texts on each other would show their order.
  const auto draw_text = [&shared](lumen::RasterDevice& target, unsigned line) {
    const LM_DCI_Point start{60, 30 + 30 * static_cast<std::int32_t>(line), 0};
    target.draw_text(&shared, start, L"of all", 6);
  };
  for (unsigned i = 0; i < 4; ++i) draw_shapes(alone_device, i);
  for (unsigned i = 0; i < 4; ++i) draw_text(alone_device, i);
  on_four_threads([&](unsigned i) { draw_shapes(device, i); });
  on_four_threads([&](unsigned i) { draw_text(device, i); });
  EXPECT_TRUE(together == alone);
  EXPECT_FALSE(shared.hard_complex_clip_validated());
}

LM_Contour_Set clip_beside_the_sheet() {
  auto set = LM_Create<LM_Contour_Set_Data>();
  const LM_Point corners[] = {{-9, -9, 0}, {-8, -9, 0}, {-8, -8, 0}};
  set->add_contour(corners, 3);
  return set;
}

TEST(RasterThreads, WhatCoversNoPartOfAPixelTakesNothingFromOthers) {
  const LM_Contour_Set clip = clip_beside_the_sheet();
  const auto invisible =
      LM_Create<lumen::PictureImage>(lumen::Picture(Crowd::width, Crowd::height, {0xFF000000}));
  const Points sheet = text_art::points(
      {{0, 0}, {Crowd::width, 0}, {Crowd::width, Crowd::height}, {0, Crowd::height}});
  lumen::Picture picture = crowd_sheet();
  const lumen::RasterDevice device(picture);
  std::atomic<bool> is_done = false;
  std::thread ghost([&] {
    LM_Rendition rendition;
    LM_Image* const cell = invisible.get();
    const LM_DCI_Point corner{0, 0, 0};
    do {
      rendition.set_complex_clip(nullptr, true);
      device.actions.image_clipped(&rendition, &corner, &cell);
      rendition.set_complex_clip(clip, true);
      device.actions.polygon_clipped(&rendition, 4, sheet.data(), 0);
    } while (!is_done);
  });
  LM_Rendition rendition;
  for (std::uint32_t word = 1; word < 60; ++word) {
    rendition.set_color({word}, true);
    device.actions.polygon_clipped(&rendition, 4, sheet.data(), 0);
    for_each_pixel(
        [&](std::int32_t x, std::int32_t y) { ASSERT_EQ(picture.pixel(x, y).word, word); });
  }
  is_done = true;
  ghost.join();
}

}  // namespace
