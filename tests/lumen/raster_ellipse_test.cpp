#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "tests/lumen/arc_art.h"
#include "tests/lumen/raster_checks.h"
#include "tests/lumen/text_art.h"

using arc_art::Arc;
using arc_art::fill;
using arc_art::random_ellipse;
using arc_art::stroke;
using arc_art::turn;
using raster_checks::darkness;
using raster_checks::expect_halves_make_the_whole;
using raster_checks::expect_only_hidden;
using raster_checks::ink_of;
using text_art::Canvas;
using text_art::Rows;

namespace {

/// Where a pixel is in the arc's own ellipse: 1 on its edge.
double relative_distance(const Arc& arc, double x, double y) {
  const double dx = x - arc.center.x;
  const double dy = y - arc.center.y;
  const double along = dx * std::cos(double{arc.rotation}) + dy * std::sin(double{arc.rotation});
  const double across = dy * std::cos(double{arc.rotation}) - dx * std::sin(double{arc.rotation});
  return std::hypot(along / arc.radii.x, across / arc.radii.y);
}

TEST(Ellipse, ATurnLessAHundredthIsWhole) {
  for (const bool antialiased : {false, true}) {
    Canvas whole(40, 40);
    Canvas nearly(40, 40);
    Canvas open(40, 40);
    for (Canvas* canvas : {&whole, &nearly, &open}) canvas->device.set_antialiased(antialiased);
    fill(whole, {{20, 20, 0}, {15, 15, 0}, 1, 1 + turn});
    fill(nearly, {{20, 20, 0}, {15, 15, 0}, 1, 1 + turn - 0.0099F});
    fill(open, {{20, 20, 0}, {15, 15, 0}, 1, 1 + turn - 0.1F});
    EXPECT_EQ(whole.rows(), nearly.rows());
    EXPECT_NE(whole.rows(), open.rows());
    Canvas further(40, 40);
    further.device.set_antialiased(antialiased);
    fill(further, {{20, 20, 0}, {15, 15, 0}, 1, 50});
    EXPECT_EQ(whole.rows(), further.rows());
  }
}

TEST(Ellipse, FilledCirclesAndThickOnesLookTheSameFromFourSides) {
  for (std::int32_t radius = 0; radius <= 40; ++radius) {
    const std::int32_t middle = radius + 4;
    Canvas disc(2 * middle + 1, 2 * middle + 1);
    fill(disc, {{middle, middle, 0}, {radius, radius, 0}});
    Canvas ring(2 * middle + 1, 2 * middle + 1);
    ring.rendition.set_line_weight(3);
    stroke(ring, {{middle, middle, 0}, {radius, radius, 0}});
    for (const Canvas* canvas : {&disc, &ring}) {
      for (std::int32_t y = -middle; y <= middle; ++y) {
        for (std::int32_t x = -middle; x <= middle; ++x) {
          const LM_RGB32 pixel = canvas->picture.pixel(middle + x, middle + y);
          ASSERT_EQ(pixel, canvas->picture.pixel(middle - x, middle + y)) << radius;
          ASSERT_EQ(pixel, canvas->picture.pixel(middle + x, middle - y)) << radius;
        }
      }
    }
  }
}

TEST(Ellipse, AreasHoldThePixelsWithTheirCenterInside) {
  std::mt19937 random(7);
  for (int i = 0; i < 500; ++i) {
    const Arc arc = random_ellipse(random);
    Canvas canvas(64, 64);
    fill(canvas, arc);
    const double band = 0.1 / std::min(arc.radii.x, arc.radii.y);
    for (std::int32_t y = 0; y < 64; ++y) {
      for (std::int32_t x = 0; x < 64; ++x) {
        const double distance = relative_distance(arc, x, y);
        if (std::abs(distance - 1) < band) continue;
        ASSERT_EQ(canvas.picture.pixel(x, y) == text_art::black, distance < 1)
            << i << ": " << x << "," << y;
      }
    }
  }
}

TEST(Ellipse, ColoredArcsAreCutFromTheCenterAndStrokedOnesAlongTheChord) {
  const LM_RGB32 gray{0x00808080};
  Canvas sector(9, 9);
  fill(sector, {{4, 4, 0}, {4, 4, 0}, 0, turn * 0.75F});
  EXPECT_EQ(sector.picture.pixel(6, 2), text_art::white);
  EXPECT_EQ(sector.picture.pixel(2, 2), text_art::black);
  EXPECT_EQ(sector.picture.pixel(2, 6), text_art::black);
  EXPECT_EQ(sector.picture.pixel(6, 6), text_art::black);

  Canvas chord(14, 14);
  stroke(chord, {{4, 4, 0}, {8, 8, 0}, 0, turn * 0.25F}, &gray);
  EXPECT_EQ(chord.picture.pixel(4, 4), text_art::white);
  EXPECT_EQ(chord.picture.pixel(7, 7), text_art::white);
  EXPECT_EQ(chord.picture.pixel(9, 9), gray);
  EXPECT_EQ(chord.picture.pixel(12, 4), text_art::black);
}

TEST(Ellipse, QuartersMakeTheWholeAndShareNoPixel) {
  Canvas canvas(41, 41);
  canvas.rendition.set_color({0x80000000}, true);
  Arc arc{{20, 20, 0}, {18, 13, 0}};
  for (const float quarter : {0.0F, 1.0F, 2.0F, 3.0F}) {
    arc.start = quarter * turn / 4;
    arc.end = (quarter + 1) * turn / 4;
    fill(canvas, arc);
  }
  Canvas whole(41, 41);
  whole.rendition.set_color({0x80000000}, true);
  fill(whole, {{20, 20, 0}, {18, 13, 0}});
  for (std::int32_t y = 0; y < 41; ++y) {
    for (std::int32_t x = 0; x < 41; ++x) {
      const bool is_edge = std::abs(relative_distance(arc, x, y) - 1) < 0.01;
      if (is_edge) continue;
      ASSERT_EQ(canvas.picture.pixel(x, y), whole.picture.pixel(x, y)) << x << "," << y;
    }
  }
}

TEST(Ellipse, FillColorsAndTheRenditionsColor) {
  const LM_RGB32 red{0x00FF0000};
  Canvas canvas(30, 10);
  fill(canvas, {{5, 5, 0}, {4, 4, 0}});
  fill(canvas, {{15, 5, 0}, {4, 4, 0}}, &red);
  const LM_DCI_Point center{25, 5, 0};
  const LM_DCI_Point radii{4, 4, 0};
  canvas.device.actions.elliptical_area(&canvas.rendition, &center, &radii, 0.0, 7.0, 0.0, &red);
  EXPECT_EQ(canvas.picture.pixel(5, 5), text_art::black);
  for (std::int32_t y = 0; y < 10; ++y) {
    for (std::int32_t x = 10; x < 20; ++x) {
      EXPECT_EQ(canvas.picture.pixel(x, y), canvas.picture.pixel(x + 10, y));
    }
  }
  EXPECT_EQ(canvas.picture.pixel(15, 5), red);
  const LM_RGB32 invisible{0xFF00FF00};
  Canvas outline(12, 12);
  stroke(outline, {{5, 5, 0}, {4, 4, 0}}, &invisible);
  EXPECT_EQ(outline.picture.pixel(5, 5), text_art::white);
  EXPECT_EQ(outline.picture.pixel(9, 5), text_art::black);
}

TEST(Ellipse, AntialiasedInkOfADiscIsItsArea) {
  for (const std::int32_t radius : {1, 2, 3, 5, 10, 50}) {
    Canvas canvas(110, 110);
    canvas.device.set_antialiased(true);
    fill(canvas, {{55, 55, 0}, {radius, radius, 0}});
    const double area = std::numbers::pi * radius * radius;
    EXPECT_NEAR(ink_of(canvas.picture), area, 0.01 * area) << radius;
  }
}

TEST(Ellipse, WithoutARadiusIsALineOrADot) {
  for (const bool filled : {false, true}) {
    const auto draw = filled ? fill : stroke;
    Canvas canvas(9, 7);
    canvas.rendition.set_color({0x00000000}, true);
    draw(canvas, {{4, 1, 0}, {3, 0, 0}}, nullptr);
    draw(canvas, {{1, 4, 0}, {0, 2, 0}}, nullptr);
    draw(canvas, {{7, 4, 0}, {0, 0, 0}}, nullptr);
    draw(canvas, {{5, 4, 0}, {2, 0, 0}, 0, turn, turn / 4}, nullptr);
    EXPECT_EQ(canvas.rows(), (Rows{
                                 ".........",
                                 ".#######.",
                                 ".#...#...",
                                 ".#...#...",
                                 ".#...#.#.",
                                 ".#...#...",
                                 ".#...#...",
                             }));
  }
}

TEST(Ellipse, PartsOfAFlatOneReachAsFarAsTheirAngles) {
  Canvas canvas(13, 4);
  stroke(canvas, {{6, 0, 0}, {6, 0, 0}, turn / 6, turn / 3});  // from 3 right to 3 left
  fill(canvas, {{6, 2, 0}, {6, 0, 0}, 0, turn / 6});           // from the centre to the right
  EXPECT_EQ(canvas.rows(), (Rows{
                               "...#######...",
                               ".............",
                               "......#######",
                               ".............",
                           }));
}

TEST(Ellipse, HugeCirclesAreExactWhereTheyAreSeenAndFast) {
  constexpr std::int32_t radius = 1'000'000'000;
  const Arc arc{{100 - 600'000'000, 100 - 800'000'000, 0}, {radius, radius, 0}};
  for (const bool antialiased : {false, true}) {
    for (const std::int32_t weight : {1, 2}) {
      Canvas canvas(200, 200);
      canvas.device.set_antialiased(antialiased);
      canvas.rendition.set_line_weight(weight);
      const auto start = std::chrono::steady_clock::now();
      stroke(canvas, arc);
      EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
      // The circle runs at right angles to (3, 4) through (100, 100).
      int dark = 0;
      for (std::int32_t y = 0; y < 200; ++y) {
        for (std::int32_t x = 0; x < 200; ++x) {
          if (canvas.picture.pixel(x, y) == text_art::white) continue;
          ++dark;
          ASSERT_LE(std::abs(0.6 * (x - 100) + 0.8 * (y - 100)), 1.0 + weight) << x << "," << y;
        }
      }
      EXPECT_GE(dark, 200);
    }
    Canvas disc(200, 200);
    disc.device.set_antialiased(antialiased);
    fill(disc, arc);
    for (std::int32_t y = 0; y < 200; ++y) {
      for (std::int32_t x = 0; x < 200; ++x) {
        const double outside = 0.6 * (x - 100) + 0.8 * (y - 100);
        if (std::abs(outside) < 1) continue;
        ASSERT_EQ(disc.picture.pixel(x, y) == text_art::black, outside < 0) << x << "," << y;
      }
    }
  }
}

TEST(Ellipse, AClipRectangleOnlyHides) {
  std::mt19937 random(11);
  std::uniform_real_distribution<float> angle(-10, 10);
  for (int i = 0; i < 400; ++i) {
    Arc arc = random_ellipse(random);
    if (i % 5 == 0) arc.radii.x *= 2000;
    arc.start = angle(random);
    arc.end = i % 3 == 0 ? arc.start + 7 : angle(random);
    const LM_RGB32 tint{0x80FF0000};
    Canvas whole(64, 64);
    whole.rendition.set_line_weight(i % 6);
    whole.rendition.set_line_pattern(i % 7);
    const LM_Clip_Rectangle clip{10, 50, i % 30, i % 30 + 25};
    Canvas part(64, 64);
    part.rendition = whole.rendition;
    part.rendition.set_clip_rectangle(clip);
    for (Canvas* canvas : {&whole, &part}) {
      stroke(*canvas, arc, &tint);
      if (i % 2 == 0) fill(*canvas, arc, &tint);
    }
    expect_only_hidden(whole.picture, part.picture, clip);
  }
}

TEST(Ellipse, AClipRectangleHidesTheAntialiasedToTheLastBits) {
  std::mt19937 random(12);
  std::uniform_real_distribution<float> angle(-10, 10);
  for (int i = 0; i < 300; ++i) {
    Arc arc = random_ellipse(random);
    if (i % 2 == 0) {
      const std::int32_t far = i % 4 == 0 ? 20'000'000 : 20'000;
      arc.center.x += arc.radii.x * far;
      arc.radii.x *= far;
      arc.rotation = 0;
    }
    arc.start = angle(random);
    arc.end = arc.start + (i % 3 == 0 ? 7 : 3);
    const LM_Clip_Rectangle clip{10, 50, i % 30, i % 30 + 25};
    Canvas whole(64, 64);
    Canvas part(64, 64);
    part.rendition.set_clip_rectangle(clip);
    for (Canvas* canvas : {&whole, &part}) {
      canvas->device.set_antialiased(true);
      canvas->rendition.set_line_weight(i % 6);
      if (i % 5 == 0) {
        fill(*canvas, arc);
      } else {
        stroke(*canvas, arc);
      }
    }
    for (std::int32_t y = clip.min_y; y <= std::min(clip.max_y, 63); ++y) {
      for (std::int32_t x = clip.min_x; x <= clip.max_x; ++x) {
        ASSERT_NEAR(darkness(part.picture, x, y), darkness(whole.picture, x, y), 0.02)
            << i << ": " << x << "," << y;
      }
    }
  }
}

TEST(Ellipse, AComplexClipHidesPartOfIt) {
  auto clip = LM_Create<LM_Contour_Set_Data>();
  const LM_Point corners[] = {{0, 0, 0}, {20, 0, 0}, {20, 41, 0}, {0, 41, 0}};
  clip->add_contour(corners, 4);
  for (const bool filled : {false, true}) {
    Canvas whole(41, 41);
    Canvas part(41, 41);
    part.rendition.set_complex_clip(clip, true);
    const auto draw = filled ? fill : stroke;
    for (Canvas* canvas : {&whole, &part}) draw(*canvas, {{20, 20, 0}, {18, 12, 0}}, nullptr);
    expect_only_hidden(whole.picture, part.picture, {0, 19, 0, 40});
  }
}

TEST(Ellipse, WhatCannotBeDrawnDrawsNothing) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float infinity = std::numeric_limits<float>::infinity();
  const LM_RGB32 red{0x00FF0000};
  for (const bool antialiased : {false, true}) {
    Canvas canvas(20, 20);
    canvas.device.set_antialiased(antialiased);
    for (const Arc& arc :
         {Arc{{10, 10, 0}, {-1, 5, 0}}, Arc{{10, 10, 0}, {5, -1, 0}},
          Arc{{10, 10, 0}, {INT32_MIN, INT32_MIN, 0}}, Arc{{10, 10, 0}, {5, 5, 0}, nan, 1},
          Arc{{10, 10, 0}, {5, 5, 0}, 0, nan}, Arc{{10, 10, 0}, {5, 5, 0}, 0, infinity},
          Arc{{10, 10, 0}, {5, 5, 0}, -infinity, 1}, Arc{{10, 10, 0}, {5, 5, 0}, 0, 1, nan},
          Arc{{10, 10, 0}, {5, 5, 0}, 0, 1, infinity}}) {
      stroke(canvas, arc, &red);
      fill(canvas, arc, &red);
      canvas.device.actions.elliptical_area(&canvas.rendition, &arc.center, &arc.radii, arc.start,
                                            arc.end, arc.rotation, &red);
    }
    EXPECT_EQ(ink_of(canvas.picture), 0);
  }
}

TEST(Ellipse, ExtremeNumbersAreNoHarm) {
  const std::int32_t places[] = {INT32_MIN, -1, 8, INT32_MAX};
  const std::int32_t radii[] = {0, 1, 1'000'000, INT32_MAX};
  const LM_RGB32 tint{0x80FF0000};
  for (const bool antialiased : {false, true}) {
    for (int i = 0; i < 4 * 4 * 4 * 4; ++i) {
      Canvas canvas(16, 16);
      canvas.device.set_antialiased(antialiased);
      canvas.rendition.set_line_weight(i % 3 == 0 ? 1 : i % 3 == 1 ? 4 : INT32_MAX);
      const Arc arc{{places[i % 4], places[i / 4 % 4], 0},
                    {radii[i / 16 % 4], radii[i / 64], 0},
                    i % 7 == 0 ? -3e38F : 1,
                    i % 7 == 0 ? 3e38F : static_cast<float>(i % 5),
                    i % 2 == 0 ? 3e38F : 0};
      stroke(canvas, arc, &tint);
      fill(canvas, arc, &tint);
      const double most = std::numeric_limits<double>::max();
      canvas.device.actions.elliptical_area(&canvas.rendition, &arc.center, &arc.radii, -most, most,
                                            most, &tint);
      ASSERT_EQ(canvas.picture.width(), 16);
    }
  }
}

TEST(Ellipse, HalvesDrawnByTwoThreadsAreTheWhole) {
  expect_halves_make_the_whole([](const lumen::RasterDevice& device, LM_Rendition& rendition) {
    std::mt19937 random(3);
    for (int i = 0; i < 200; ++i) {
      Arc arc = random_ellipse(random);
      arc.center.x *= 3;
      arc.center.y *= 3;
      arc.end = static_cast<float>(i % 8);
      rendition.set_line_weight(i % 5);
      rendition.set_line_pattern(i % 6);
      const LM_RGB32 tint{0x60000000U + static_cast<std::uint32_t>(random()) % 0x1000000};
      device.actions.elliptical_arc(&rendition, &arc.center, &arc.radii, arc.start, arc.end,
                                    arc.rotation, i % 2 == 0 ? &tint : nullptr);
      device.actions.elliptical_arc_colored(&rendition, &arc.center, &arc.radii, arc.start, arc.end,
                                            arc.rotation, &tint);
    }
  });
}

}  // namespace
