#include <gtest/gtest.h>

#include <thread>

#include "tests/lumen/raster_checks.h"
#include "tests/lumen/reference_text.h"
#include "tests/lumen/text_art.h"

using reference_text::length;
using reference_text::utf16;

namespace {

/// Text in many fonts, scripts and sizes, the same for every caller.
void draw_much(lumen::Picture& picture) {
  lumen::RasterDevice device(picture);
  LM_Rendition rendition;
  const std::wstring families[] = {L"DejaVu Sans", L"DejaVu Serif", L"DejaVu Sans Mono", L""};
  for (std::int32_t i = 0; i < 200; ++i) {
    LM_Font_Description description = reference_text::named(families[i % 4]);
    description.weight = 100 * (1 + i % 9);
    description.given |= LM_Font_Description::WEIGHT;
    rendition.set_shared_font(device.find_or_create_font(description));
    rendition.set_text_size(static_cast<float>(4 + i % 13));
    rendition.set_text_rotation(static_cast<float>(i % 5) * 0.2F);
    const std::wstring text =
        utf16(U"Te\u0301xt \u05E9\u05DC \u0639\u0631 \U0001D538\u4E2D ") + std::to_wstring(i % 50);
    device.draw_text(&rendition, {i % 100, 20 + i, 0}, text.data(), length(text));
  }
}

TEST(TextThreads, FourAtOnceDrawWhatOneDraws) {
  constexpr std::int32_t side = 250;
  std::vector<lumen::Picture> pictures(4, lumen::Picture(side, side));
  std::vector<std::thread> threads;
  threads.reserve(pictures.size());
  // At once from the start: they also open the fonts together.
  for (lumen::Picture& picture : pictures) {
    threads.emplace_back([&picture] { draw_much(picture); });
  }
  for (std::thread& thread : threads) thread.join();
  lumen::Picture alone(side, side);
  draw_much(alone);
  EXPECT_GT(raster_checks::ink_of(alone), 500);
  for (const lumen::Picture& picture : pictures) EXPECT_TRUE(picture == alone);
}

TEST(TextThreads, ManyMayDrawOnOneDevice) {
  constexpr std::int32_t side = 200;
  lumen::Picture picture(side, side);
  lumen::RasterDevice device(picture);
  const auto draw = [](lumen::RasterDevice& target, std::int32_t first, std::int32_t last) {
    LM_Rendition rendition;
    rendition.set_clip_rectangle({0, side - 1, first, last});
    for (std::int32_t i = 0; i < 40; ++i) {
      rendition.set_text_size(static_cast<float>(3 + i));
      rendition.set_text_rotation(static_cast<float>(i));
      target.draw_text(&rendition, {100, 100, 0}, L"     Whole", 10);
    }
  };
  std::thread upper([&] { draw(device, 0, side / 2 - 1); });
  std::thread lower([&] { draw(device, side / 2, side - 1); });
  upper.join();
  lower.join();
  lumen::Picture alone(side, side);
  lumen::RasterDevice alone_device(alone);
  draw(alone_device, 0, side / 2 - 1);
  draw(alone_device, side / 2, side - 1);
  EXPECT_TRUE(picture == alone);
}

}  // namespace
