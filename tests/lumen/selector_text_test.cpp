#include <gtest/gtest.h>

#include <random>
#include <string>

#include "displaylist/platform/option_table.h"
#include "lumen/raster_device.h"
#include "lumen/selector_device.h"
#include "tests/lumen/text_art.h"

using lumen::SelectorDevice;

namespace {

constexpr std::int32_t side = 48;

struct Text {
  LM_DCI_Point start{4, 34, 0};
  std::wstring characters = L"\u00C4fi\u05E9";

  void draw(LM_Renderer& renderer, LM_Rendition& rendition) const {
    renderer.draw_text(&rendition, start, characters.c_str(), INT32_MAX);
  }
};

/// Whether the text touches a pixel.
bool touches(LM_Rendition& rendition, const Text& text, std::int32_t x, std::int32_t y) {
  SelectorDevice device;
  device.set_pick_box({x, x, y, y});
  text.draw(device, rendition);
  return device.touched();
}

/// Whether the pixel or one around it is not white.
bool has_ink_near(const lumen::Picture& picture, std::int32_t x, std::int32_t y) {
  for (std::int32_t row = std::max(y - 1, 0); row <= std::min(y + 1, side - 1); ++row) {
    for (std::int32_t column = std::max(x - 1, 0); column <= std::min(x + 1, side - 1); ++column) {
      if (picture.pixel(column, row) != text_art::white) return true;
    }
  }
  return false;
}

/// Compares every pixel of a picture with those that are picked one by one, but
/// for those with a trace of ink; returns how many have more of it.
int expect_picked_as_drawn(LM_Rendition& rendition, const Text& text) {
  text_art::Canvas canvas(side, side);
  text.draw(canvas.device, rendition);
  int ink = 0;
  int traces = 0;
  for (std::int32_t y = 0; y < side; ++y) {
    for (std::int32_t x = 0; x < side; ++x) {
      const std::uint32_t blue = canvas.picture.pixel(x, y).word & 0xFF;
      const bool picked = touches(rendition, text, x, y);
      if (blue < 254) {
        ++ink;
        EXPECT_TRUE(picked) << x << "," << y;
      } else if (picked && blue == 255) {
        // Covers differ in their last bits: there may be a trace after all.
        ++traces;
        EXPECT_TRUE(has_ink_near(canvas.picture, x, y)) << x << "," << y;
      }
      if (testing::Test::HasFailure()) return ink;
    }
  }
  EXPECT_LE(traces, 3);
  return ink;
}

LM_Rendition rendition_of_size(float size) {
  LM_Rendition rendition;
  rendition.set_text_size(size);
  return rendition;
}

TEST(SelectorText, SaysThatItSelects) {
  const SelectorDevice device;
  const LM_Option_Table::Value* value = device.option_table.find(LM_String(LM_IS_SELECTOR));
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(*value, LM_Option_Table::Value{1});
  lumen::Picture picture(1, 1);
  const lumen::RasterDevice raster(picture);
  EXPECT_EQ(raster.option_table.find(LM_String(LM_IS_SELECTOR)), nullptr);
}

TEST(SelectorText, IsPickedWhereLettersAreAndNotBetween) {
  LM_Rendition rendition = rendition_of_size(40);
  const Text text{{4, 40, 0}, L"H"};
  EXPECT_TRUE(touches(rendition, text, 9, 25)) << "the left stem";
  EXPECT_FALSE(touches(rendition, text, 20, 15)) << "between the stems";
  EXPECT_FALSE(touches(rendition, text, 20, 45)) << "below";
}

TEST(SelectorText, IsPickedAsItIsDrawnByBruteForce) {
  std::mt19937 engine(5);
  const auto number = [&engine](int min, int max) {
    return std::uniform_int_distribution<int>(min, max)(engine);
  };
  int ink = 0;
  for (int round = 0; round < 40; ++round) {
    SCOPED_TRACE(round);
    const int size = number(5, 40) * (number(0, 1) == 0 ? 1 : -1);
    SCOPED_TRACE(size);
    LM_Rendition rendition = rendition_of_size(static_cast<float>(size));
    rendition.set_text_rotation(static_cast<float>(number(0, 62)) / 10);
    rendition.set_text_width_scale(static_cast<float>(number(1, 8)) / 4);
    if (number(1, 3) == 1) {
      rendition.set_clip_rectangle({number(0, 20), number(20, 60), number(0, 20), number(20, 60)});
    }
    if (number(1, 3) == 1) {
      const auto clip = LM_Create<LM_Contour_Set_Data>();
      const LM_Point contour[] = {{3.3F, 2.7F, 0}, {44.2F, 20.4F, 0}, {7.6F, 45.1F, 0}};
      clip->add_contour(contour, 3);
      rendition.set_complex_clip(clip, true);
    }
    ink += expect_picked_as_drawn(rendition, {{number(0, side), number(0, side), 0}, L"fi\u05E9g"});
    if (testing::Test::HasFailure()) return;
  }
  EXPECT_GT(ink, 2000);
}

TEST(SelectorText, OfMultibyteCharactersIsPickedToo) {
  LM_Rendition rendition = rendition_of_size(40);
  const auto* bytes = reinterpret_cast<const unsigned char*>("xH");
  SelectorDevice device;
  device.set_pick_box({4, 30, 10, 40});
  LM_Renderer& renderer = device;
  renderer.draw_text(&rendition, {4, 40, 0}, bytes, 0);
  EXPECT_FALSE(device.touched());
  renderer.draw_text(&rendition, {4, 40, 0}, bytes, 1);
  EXPECT_TRUE(device.touched());
  device.set_pick_box({40, 44, 15, 40});
  renderer.draw_text(&rendition, {4, 40, 0}, bytes, 1);
  EXPECT_FALSE(device.touched()) << "the second character was not drawn";
  renderer.draw_text(&rendition, {4, 40, 0}, bytes, 2);
  EXPECT_TRUE(device.touched());
}

TEST(SelectorText, TooSmallToBeReadIsPickedAsTheBarInItsPlace) {
  LM_Rendition rendition = rendition_of_size(4);
  const Text text{{2, 20, 0}, L"mmmmmmmm   mmm"};
  EXPECT_GT(expect_picked_as_drawn(rendition, text), 20);
  EXPECT_TRUE(touches(rendition, text, 35, 19)) << "in a gap between words";
  EXPECT_FALSE(touches(rendition, text, 10, 10));
}

TEST(SelectorText, InInvisibleInkIsNotPicked) {
  LM_Rendition rendition = rendition_of_size(40);
  const Text text{{4, 40, 0}, L"H"};
  rendition.set_color({0xFF000000}, true);
  EXPECT_FALSE(touches(rendition, text, 9, 25));
  rendition.set_color({0xFE000000}, true);
  EXPECT_TRUE(touches(rendition, text, 9, 25));
  // At 40 % of its opacity nothing is left of it.
  rendition.set_text_size(4);
  SelectorDevice device;
  device.set_pick_box({0, 50, 0, 50});
  text.draw(device, rendition);
  EXPECT_FALSE(device.touched());
}

TEST(SelectorText, IsPickedTheSameWhereverItLies) {
  LM_Rendition rendition = rendition_of_size(30);
  rendition.set_text_rotation(0.4F);
  for (const LM_DCI_Point& offset :
       {LM_DCI_Point{INT32_MAX - 100, INT32_MIN + 100, 0},
        LM_DCI_Point{-2'000'000'000, 5'000'000, 0}, LM_DCI_Point{1'600'000, -1'500'000, 0}}) {
    for (std::int32_t y = 0; y < side; y += 3) {
      for (std::int32_t x = 0; x < side; ++x) {
        const Text near;
        const Text far{{near.start.x + offset.x, near.start.y + offset.y, 0}, near.characters};
        ASSERT_EQ(touches(rendition, far, x + offset.x, y + offset.y),
                  touches(rendition, near, x, y))
            << x << "," << y;
      }
    }
  }
}

TEST(SelectorText, OfAnySizeAndAngleIsSurvived) {
  constexpr float infinity = std::numeric_limits<float>::infinity();
  for (const float size : {0.0F, 1e-30F, 1e9F, 3e38F, -3e38F, infinity, std::nanf("")}) {
    for (const LM_DCI_Point& start :
         {LM_DCI_Point{INT32_MIN, INT32_MAX, 0}, LM_DCI_Point{5, 5, 0}}) {
      LM_Rendition rendition;
      rendition.set_shared_text_size(size);
      SelectorDevice device;
      device.set_pick_box({0, 100, 0, 100});
      Text{start, L"abc"}.draw(device, rendition);
      device.draw_text(&rendition, start, static_cast<const wchar_t*>(nullptr), 5);
      device.draw_text(&rendition, start, L"abc", INT32_MIN);
      EXPECT_LE(device.hits().size(), 1U);
    }
  }
}

}  // namespace
