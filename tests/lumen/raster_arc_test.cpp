#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "tests/lumen/arc_art.h"
#include "tests/lumen/raster_checks.h"
#include "tests/lumen/text_art.h"

using arc_art::Arc;
using arc_art::random_ellipse;
using arc_art::stroke;
using arc_art::turn;
using raster_checks::darkness;
using raster_checks::half_gray;
using raster_checks::ink_of;
using text_art::Canvas;
using text_art::Rows;

namespace {

TEST(EllipticalArc, ThinCircle) {
  Canvas canvas(11, 11);
  stroke(canvas, {{5, 5, 0}, {4, 4, 0}});
  EXPECT_EQ(canvas.rows(), (Rows{
                               "...........",
                               "....###....",
                               "..##...##..",
                               "..#.....#..",
                               ".#.......#.",
                               ".#.......#.",
                               ".#.......#.",
                               "..#.....#..",
                               "..##...##..",
                               "....###....",
                               "...........",
                           }));
}

TEST(EllipticalArc, ThinArcRunsClockwiseOnAScreenFromItsStartPixelToItsEndPixel) {
  Canvas canvas(9, 7);
  stroke(canvas, {{1, 1, 0}, {6, 4, 0}, 0, turn / 4});
  EXPECT_EQ(canvas.rows(), (Rows{
                               ".........",
                               ".......#.",
                               ".......#.",
                               "......#..",
                               "....##...",
                               ".###.....",
                               ".........",
                           }));
}

TEST(EllipticalArc, AnEndBelowTheStartIsReachedThroughAFullTurn) {
  Canvas through(9, 9);
  stroke(through, {{4, 4, 0}, {3, 3, 0}, turn * 0.75F, turn * 0.25F});
  Canvas ahead(9, 9);
  stroke(ahead, {{4, 4, 0}, {3, 3, 0}, -turn * 0.25F, turn * 0.25F});
  EXPECT_EQ(through.rows(), ahead.rows());
  EXPECT_EQ(through.rows()[4], ".......#.");
}

TEST(EllipticalArc, ThinCirclesLookTheSameFromEightSides) {
  for (std::int32_t radius = 0; radius <= 150; ++radius) {
    const std::int32_t middle = radius + 1;
    Canvas canvas(2 * middle + 1, 2 * middle + 1);
    stroke(canvas, {{middle, middle, 0}, {radius, radius, 0}});
    const auto is_dark = [&](std::int32_t x, std::int32_t y) {
      return canvas.picture.pixel(middle + x, middle + y) == text_art::black;
    };
    for (std::int32_t y = -middle; y <= middle; ++y) {
      for (std::int32_t x = -middle; x <= middle; ++x) {
        ASSERT_EQ(is_dark(x, y), is_dark(-x, y)) << radius;
        ASSERT_EQ(is_dark(x, y), is_dark(x, -y)) << radius;
        ASSERT_EQ(is_dark(x, y), is_dark(y, x)) << radius << ": " << x << "," << y;
        if (is_dark(x, y)) {
          ASSERT_NEAR(std::hypot(x, y), radius, 0.51);
        }
      }
    }
  }
}

/// How far a place is from the line of the arc, by trying many points of it.
double distance_to(const Arc& arc, double x, double y) {
  double least = 1e9;
  const int count = 16 * std::max(arc.radii.x, arc.radii.y) + 16;
  for (int i = 0; i <= count; ++i) {
    const double t = arc.start + (double{arc.end} - arc.start) * i / count;
    const double along = arc.radii.x * std::cos(t);
    const double across = arc.radii.y * std::sin(t);
    const double c = std::cos(double{arc.rotation});
    const double s = std::sin(double{arc.rotation});
    least = std::min(least, std::hypot(arc.center.x + along * c - across * s - x,
                                       arc.center.y + along * s + across * c - y));
  }
  return least;
}

/// How many pixels that are not white touch each other, from one of them on.
/// They are made white.
int take_connected(lumen::Picture& picture, std::int32_t x, std::int32_t y) {
  if (picture.pixel(x, y) == text_art::white || picture.pixel(x, y).word >> 24 != 0) return 0;
  picture.row(y)[x] = text_art::white.word;
  int count = 1;
  for (std::int32_t dy = -1; dy <= 1; ++dy) {
    for (std::int32_t dx = -1; dx <= 1; ++dx) count += take_connected(picture, x + dx, y + dy);
  }
  return count;
}

TEST(EllipticalArc, ThinOnesHaveNoGaps) {
  std::mt19937 random(18);
  std::uniform_real_distribution<float> angle(0, turn);
  for (int i = 0; i < 4000; ++i) {
    Arc arc = random_ellipse(random);
    arc.center = {45, 45, 0};
    arc.radii.x = std::max(arc.radii.x, 2);
    arc.radii.y = i % 3 == 0 ? 2 + i % 5 : std::max(arc.radii.y, 2);
    arc.start = angle(random);
    arc.end = i % 2 == 0 ? arc.start + turn : arc.start + angle(random);
    Canvas canvas(91, 91);
    stroke(canvas, arc);
    const double ink = ink_of(canvas.picture);
    int connected = 0;
    for (std::int32_t k = 0; connected == 0 && k < 91 * 91; ++k) {
      connected = take_connected(canvas.picture, k % 91, k / 91);
    }
    ASSERT_EQ(connected, ink) << i;
  }
}

TEST(EllipticalArc, ThinEllipsesTakeNoPixelTwice) {
  std::mt19937 random(8);
  for (int i = 0; i < 400; ++i) {
    Arc arc = random_ellipse(random);
    arc.center = {45, 45, 0};
    if (i % 4 == 0) arc.radii.y = 1 + i % 3;
    Canvas canvas(91, 91);
    canvas.rendition.set_color({0x80000000}, true);
    stroke(canvas, arc);
    for (std::int32_t y = 0; y < 91; ++y) {
      for (std::int32_t x = 0; x < 91; ++x) {
        const std::uint32_t word = canvas.picture.pixel(x, y).word;
        if (word == text_art::white.word) continue;
        ASSERT_EQ(word, half_gray) << i << ": " << x << "," << y;
        ASSERT_LE(distance_to(arc, x, y), 0.75) << i << ": " << x << "," << y;
      }
    }
  }
}

TEST(EllipticalArc, ThinArcsArePartOfTheWholeEllipse) {
  std::mt19937 random(9);
  std::uniform_real_distribution<float> angle(0, turn);
  for (int i = 0; i < 300; ++i) {
    Arc arc = random_ellipse(random);
    arc.start = angle(random);
    arc.end = arc.start + angle(random);
    Canvas canvas(64, 64);
    stroke(canvas, arc);
    for (std::int32_t y = 0; y < 64; ++y) {
      for (std::int32_t x = 0; x < 64; ++x) {
        if (canvas.picture.pixel(x, y) == text_art::white) continue;
        ASSERT_LE(distance_to(arc, x, y), 1.0) << i << ": " << x << "," << y;
      }
    }
  }
}

TEST(EllipticalArc, AntialiasedStrokesLieEvenlyAlongTheRadius) {
  for (const std::int32_t radius : {3, 8, 20, 45}) {
    for (const std::int32_t weight : {1, 3, 5}) {
      Canvas canvas(110, 110);
      canvas.device.set_antialiased(true);
      canvas.rendition.set_line_weight(weight);
      stroke(canvas, {{55, 55, 0}, {radius, radius, 0}});
      double ink = 0;
      double moment = 0;
      for (std::int32_t y = 0; y < 110; ++y) {
        for (std::int32_t x = 0; x < 110; ++x) {
          const double dark = darkness(canvas.picture, x, y);
          ink += dark;
          moment += dark * std::hypot(x - 55, y - 55);
          if (dark > 0) {
            ASSERT_NEAR(std::hypot(x - 55, y - 55), radius, weight / 2.0 + 0.72);
          }
        }
      }
      const double area = 2 * std::numbers::pi * radius * weight;
      EXPECT_NEAR(ink, area, 0.015 * area) << radius << " " << weight;
      // A ring's mean radius is a little outside its middle.
      const double mean = radius + weight * weight / (12.0 * radius);
      EXPECT_NEAR(moment / ink, mean, 0.05) << radius << " " << weight;
    }
  }
}

TEST(EllipticalArc, StrokesWiderThanTheEllipseHaveNoHole) {
  for (const bool antialiased : {false, true}) {
    for (std::int32_t radius = 1; radius <= 5; ++radius) {
      Canvas canvas(40, 40);
      canvas.device.set_antialiased(antialiased);
      canvas.rendition.set_line_weight(13);
      canvas.rendition.set_color({0x80000000}, true);
      stroke(canvas, {{20, 20, 0}, {2 * radius, radius, 0}});
      for (std::int32_t y = 20 - radius; y <= 20 + radius; ++y) {
        for (std::int32_t x = 20 - radius; x <= 20 + radius; ++x) {
          ASSERT_EQ(canvas.picture.pixel(x, y).word, half_gray) << radius << ": " << x << "," << y;
        }
      }
    }
  }
}

TEST(EllipticalArc, HugePatternedCirclesKeepTheirPhaseThroughAnyClipRectangle) {
  for (const std::int32_t weight : {1, 3}) {
    const Arc arc{{100 - 60'000'000, 100 - 80'000'000, 0}, {100'000'000, 100'000'000, 0}};
    Canvas whole(200, 200);
    Canvas part(200, 200);
    for (Canvas* canvas : {&whole, &part}) {
      canvas->rendition.set_line_weight(weight);
      canvas->rendition.set_line_pattern(LM_PATTERN_DASH_DOT);
    }
    part.rendition.set_clip_rectangle({90, 150, 0, 199});
    stroke(whole, arc);
    stroke(part, arc);
    EXPECT_GT(ink_of(whole.picture), 50);
    EXPECT_LT(ink_of(whole.picture), 230 * weight);
    for (std::int32_t y = 0; y < 200; ++y) {
      for (std::int32_t x = 90; x <= 150; ++x) {
        ASSERT_EQ(whole.picture.pixel(x, y), part.picture.pixel(x, y)) << x << "," << y;
      }
    }
  }
}

TEST(EllipticalArc, ThinPatternsCountPixels) {
  Canvas canvas(61, 61);
  canvas.rendition.set_line_pattern(LM_PATTERN_DOT);
  stroke(canvas, {{0, 0, 0}, {60, 60, 0}, 0, turn / 4});
  Canvas solid(61, 61);
  stroke(solid, {{0, 0, 0}, {60, 60, 0}, 0, turn / 4});
  // Two of six.
  EXPECT_NEAR(ink_of(canvas.picture), ink_of(solid.picture) / 3, 2);
  EXPECT_EQ(canvas.picture.pixel(60, 0), text_art::black);
  EXPECT_EQ(canvas.picture.pixel(60, 1), text_art::black);
  EXPECT_EQ(canvas.picture.pixel(60, 2), text_art::white);
}

TEST(EllipticalArc, EndsHaveTheirStyles) {
  const Arc half{{10, 2, 0}, {7, 7, 0}, 0, turn / 2};
  Canvas flat(21, 13);
  Canvas square(21, 13);
  for (Canvas* canvas : {&flat, &square}) canvas->rendition.set_line_weight(3);
  square.rendition.set_end_styles(LM_END_SQUARE);
  stroke(flat, half);
  stroke(square, half);
  EXPECT_EQ(flat.rows()[1], Rows{std::string(21, '.')}[0]);
  EXPECT_EQ(flat.rows()[2], "..###...........###..");
  EXPECT_EQ(square.rows()[1], "..###...........###..");
}

}  // namespace
