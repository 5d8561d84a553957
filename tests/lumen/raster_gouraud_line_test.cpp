#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>

#include "tests/lumen/gouraud.h"

using gouraud::blue;
using gouraud::channel;
using gouraud::Colors;
using gouraud::difference;
using gouraud::green;
using gouraud::half_black;
using gouraud::line;
using gouraud::red;
using text_art::Canvas;
using text_art::Points;
using text_art::points;
using text_art::Rows;

namespace {

TEST(GouraudPolyline, GoesFromColorToColor) {
  Canvas canvas(13, 1);
  line(canvas, points({{0, 0}, {10, 0}, {12, 0}}), {{0x00000000}, {0x00FFC864}, {0x00000000}});
  for (std::int32_t x = 0; x <= 10; ++x) {
    const std::uint32_t word = canvas.picture.pixel(x, 0).word;
    EXPECT_NEAR(channel(word, 2), 25.5 * x, 0.51) << x;
    EXPECT_NEAR(channel(word, 1), 20 * x, 0.51) << x;
    EXPECT_NEAR(channel(word, 0), 10 * x, 0.51) << x;
  }
  EXPECT_EQ(canvas.picture.pixel(11, 0).word, 0x00806432U);
  EXPECT_EQ(canvas.picture.pixel(12, 0).word, 0x00000000U);
}

TEST(GouraudPolyline, WideColorsAreTheSameAcrossTheLine) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(32, 16);
    canvas.device.set_antialiased(antialiased);
    canvas.rendition.set_line_weight(5);
    line(canvas, points({{5, 8}, {25, 8}}), {{0x00000000}, {0x000000C8}});
    for (std::int32_t x = 5; x <= 25; ++x) {
      for (std::int32_t y = 6; y <= 10; ++y) {
        EXPECT_EQ(canvas.picture.pixel(x, y).word, static_cast<std::uint32_t>(10 * (x - 5)))
            << x << "," << y;
      }
      EXPECT_EQ(canvas.picture.pixel(x, 5), text_art::white);
      EXPECT_EQ(canvas.picture.pixel(x, 11), text_art::white);
    }
  }
}

TEST(GouraudPolyline, EvenWeightsAreMeasuredAlongTheirMiddle) {
  Canvas canvas(16, 32);
  canvas.rendition.set_line_weight(2);
  line(canvas, points({{4, 5}, {4, 25}}), {{0x00000000}, {0x000000C8}});
  for (std::int32_t y = 6; y < 25; ++y) {
    // The stroke lies half a pixel up: its pixels are half a step further on.
    EXPECT_EQ(canvas.picture.pixel(3, y).word, static_cast<std::uint32_t>(10 * (y - 5) + 5)) << y;
    EXPECT_EQ(canvas.picture.pixel(4, y).word, static_cast<std::uint32_t>(10 * (y - 5) + 5)) << y;
  }
}

TEST(GouraudPolyline, TheNearestSegmentGivesTheColor) {
  Canvas canvas(40, 40);
  canvas.rendition.set_line_weight(9);
  line(canvas, points({{5, 10}, {30, 10}, {30, 35}}), {red, green, blue});
  // The outside of the joint has the colour of its point.
  EXPECT_EQ(canvas.picture.pixel(32, 8), green);
  EXPECT_LE(difference(canvas.picture.pixel(10, 13), {0x00CC3300}), 1);
  EXPECT_LE(difference(canvas.picture.pixel(27, 30), {0x000033CC}), 1);
}

struct Style {
  std::int32_t weight;
  std::int32_t pattern;
  std::int32_t ends;
};

class GouraudPolylineStyles : public testing::TestWithParam<Style> {};

/// Both kinds of polylines in one opaque or transparent colour.
void compare(const Style& style, bool antialiased, LM_RGB32 color, const Points& path) {
  Canvas plain(48, 48);
  Canvas gouraud(48, 48);
  for (Canvas* canvas : {&plain, &gouraud}) {
    canvas->device.set_antialiased(antialiased);
    canvas->rendition.set_line_weight(style.weight);
    canvas->rendition.set_line_pattern(style.pattern);
    canvas->rendition.set_end_styles(style.ends);
  }
  plain.rendition.set_color(color, true);
  plain.polyline(path);
  line(gouraud, path, Colors(path.size(), color));
  ASSERT_LE(difference(plain.picture, gouraud.picture), antialiased ? 1 : 0);
}

TEST(GouraudPolyline, WideSquareEndsHaveTheirCorners) {
  for (const std::int32_t weight : {12, 20}) {
    for (const bool antialiased : {false, true}) {
      compare({weight, LM_PATTERN_SOLID, LM_END_SQUARE}, antialiased, text_art::black,
              points({{18, 18}, {30, 30}}));
    }
  }
}

TEST_P(GouraudPolylineStyles, CoverThePixelsOfAPolyline) {
  std::mt19937 random(21);
  for (int i = 0; i < 300; ++i) {
    const int reach = i % 7 == 0 ? 100'000 : i % 3 == 0 ? 3 : 40;
    std::uniform_int_distribution<std::int32_t> any(20 - reach, 28 + reach);
    Points path;
    for (int k = 0; k < 1 + i % 6; ++k) path.push_back({any(random), any(random), 0});
    if (i % 4 == 0) path.push_back(path.front());
    for (const bool antialiased : {false, true}) {
      for (const LM_RGB32 color : {text_art::black, half_black}) {
        SCOPED_TRACE(i);
        compare(GetParam(), antialiased, color, path);
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, GouraudPolylineStyles,
                         testing::Values(Style{1, LM_PATTERN_SOLID, LM_END_FLAT},
                                         Style{1, LM_PATTERN_DASH, LM_END_FLAT},
                                         Style{2, LM_PATTERN_SOLID, LM_END_FLAT},
                                         Style{2, LM_PATTERN_DOT, LM_END_SQUARE},
                                         Style{5, LM_PATTERN_SOLID, LM_END_ROUND},
                                         Style{5, LM_PATTERN_DASH, LM_END_FLAT},
                                         Style{8, LM_PATTERN_DASH_DOT, LM_END_ROUND},
                                         Style{9, LM_PATTERN_SOLID, LM_END_SQUARE}),
                         [](const testing::TestParamInfo<Style>& style) {
                           return "Weight" + std::to_string(style.param.weight) + "Pattern" +
                                  std::to_string(style.param.pattern) + "Ends" +
                                  std::to_string(style.param.ends);
                         });

TEST(GouraudPolyline, DashesKeepTheColorOfTheirPlace) {
  Canvas canvas(24, 1);
  canvas.rendition.set_line_pattern(LM_PATTERN_DASH);
  line(canvas, points({{0, 0}, {20, 0}}), {{0x00000000}, {0x000000C8}});
  for (std::int32_t x = 0; x <= 20; ++x) {
    const bool drawn = x % 12 < 8;
    EXPECT_EQ(canvas.picture.pixel(x, 0).word,
              drawn ? static_cast<std::uint32_t>(10 * x) : text_art::white.word)
        << x;
  }
}

TEST(GouraudPolyline, JointsAreBlendedOnce) {
  for (const std::int32_t weight : {1, 5}) {
    Canvas canvas(20, 9);
    canvas.rendition.set_line_weight(weight);
    line(canvas, points({{2, 4}, {6, 4}, {6, 4}, {12, 4}, {17, 4}}), Colors(5, half_black));
    EXPECT_EQ(canvas.rows()[4], "..4444444444444444..");
  }
}

TEST(GouraudPolyline, AClosedThinLineMeetsItselfInItsFirstColor) {
  Canvas canvas(8, 8);
  line(canvas, points({{1, 1}, {6, 1}, {6, 6}, {1, 1}}), {red, green, blue, green});
  EXPECT_EQ(canvas.picture.pixel(1, 1), red);
}

TEST(GouraudPolyline, WithoutLengthIsADotInItsLastColor) {
  for (const bool antialiased : {false, true}) {
    for (const std::int32_t weight : {1, 3}) {
      Canvas canvas(9, 9);
      canvas.device.set_antialiased(antialiased);
      canvas.rendition.set_line_weight(weight);
      line(canvas, points({{2, 2}}), {red});
      line(canvas, points({{6, 6}, {6, 6}, {6, 6}}), {red, green, blue});
      EXPECT_EQ(canvas.picture.pixel(2, 2), red);
      EXPECT_EQ(canvas.picture.pixel(6, 6), blue);
      EXPECT_EQ(canvas.picture.pixel(5, 5) == blue, weight == 3);
      EXPECT_EQ(canvas.picture.pixel(4, 4), text_art::white);
    }
  }
}

TEST(GouraudPolyline, BadCountsDrawNothing) {
  Canvas canvas(4, 4);
  const Points path = points({{0, 0}, {3, 3}});
  const Colors colors(2, text_art::black);
  for (const std::int32_t count : {0, -1, INT_MIN}) {
    canvas.device.actions.gouraud_polyline_unclipped(&canvas.rendition, count, path.data(),
                                                     colors.data());
  }
  canvas.device.actions.gouraud_polyline_clipped(&canvas.rendition, 0, nullptr, nullptr);
  canvas.device.actions.gouraud_polyline_clipped(&canvas.rendition, 2, path.data(), nullptr);
  EXPECT_EQ(canvas.rows(), Rows(4, "...."));
}

TEST(GouraudPolyline, FarEndsHaveTheRightColors) {
  for (const bool antialiased : {false, true}) {
    // A smooth line of weight 1 covers no pixel wholly on its way down.
    for (const std::int32_t weight : {antialiased ? 3 : 1, 4, INT_MAX}) {
      Canvas canvas(16, 16);
      canvas.device.set_antialiased(antialiased);
      canvas.rendition.set_line_weight(weight);
      line(canvas, points({{INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}}), {{0x00000000}, {0x00FF64C8}});
      for (std::int32_t i = 0; i < 16; ++i) {
        EXPECT_LE(difference(canvas.picture.pixel(i, i), {0x00803264}), 1) << weight;
      }
      line(canvas, points({{INT_MAX, INT_MIN}, {INT_MAX, INT_MAX}}), {red, green});
      EXPECT_LE(difference(canvas.picture.pixel(9, 9), {0x00803264}), 1) << weight;
    }
  }
}

}  // namespace
