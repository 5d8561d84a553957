#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "tests/lumen/raster_checks.h"
#include "tests/lumen/text_art.h"

using raster_checks::expect_halves_make_the_whole;
using raster_checks::expect_only_hidden;
using raster_checks::ink_of;
using text_art::Canvas;
using text_art::Points;
using text_art::points;
using text_art::Rows;

namespace {

constexpr std::int32_t all_shapes[] = {LM_MARKER_POINT,   LM_MARKER_PLUS,    LM_MARKER_CROSS,
                                       LM_MARKER_STAR,    LM_MARKER_CIRCLE,  LM_MARKER_SQUARE,
                                       LM_MARKER_DIAMOND, LM_MARKER_TRIANGLE};

void mark(Canvas& canvas, const Points& places) {
  canvas.device.actions.marker_clipped(&canvas.rendition, static_cast<std::int32_t>(places.size()),
                                       places.data());
}

Rows marker(std::int32_t shape, std::int32_t size, std::int32_t weight = 1) {
  Canvas canvas(9, 9);
  canvas.rendition.set_marker({shape, size});
  canvas.rendition.set_line_weight(weight);
  mark(canvas, points({{4, 4}}));
  return canvas.rows();
}

TEST(Marker, PointIsADisc) {
  const Rows disc = {
      ".........",  //
      "...###...",  //
      "..#####..",  //
      ".#######.",  //
      ".#######.",  //
      ".#######.",  //
      "..#####..",  //
      "...###...",  //
      ".........",
  };
  EXPECT_EQ(marker(LM_MARKER_POINT, 7), disc);
  EXPECT_EQ(marker(LM_MARKER_POINT, 7, 3), disc);
  EXPECT_EQ(marker(-1, 7), disc);
  EXPECT_EQ(marker(8, 7), disc);
}

TEST(Marker, PlusAndCrossAndStar) {
  EXPECT_EQ(marker(LM_MARKER_PLUS, 7), (Rows{
                                           ".........",
                                           "....#....",
                                           "....#....",
                                           "....#....",
                                           ".#######.",
                                           "....#....",
                                           "....#....",
                                           "....#....",
                                           ".........",
                                       }));
  EXPECT_EQ(marker(LM_MARKER_CROSS, 5), (Rows{
                                            ".........",
                                            ".........",
                                            "..#...#..",
                                            "...#.#...",
                                            "....#....",
                                            "...#.#...",
                                            "..#...#..",
                                            ".........",
                                            ".........",
                                        }));
  EXPECT_EQ(marker(LM_MARKER_STAR, 7), (Rows{
                                           ".........",
                                           ".#..#..#.",
                                           "..#.#.#..",
                                           "...###...",
                                           ".#######.",
                                           "...###...",
                                           "..#.#.#..",
                                           ".#..#..#.",
                                           ".........",
                                       }));
}

TEST(Marker, Outlines) {
  EXPECT_EQ(marker(LM_MARKER_CIRCLE, 7), (Rows{
                                             ".........",
                                             "...###...",
                                             "..#...#..",
                                             ".#.....#.",
                                             ".#.....#.",
                                             ".#.....#.",
                                             "..#...#..",
                                             "...###...",
                                             ".........",
                                         }));
  EXPECT_EQ(marker(LM_MARKER_SQUARE, 5), (Rows{
                                             ".........",
                                             ".........",
                                             "..#####..",
                                             "..#...#..",
                                             "..#...#..",
                                             "..#...#..",
                                             "..#####..",
                                             ".........",
                                             ".........",
                                         }));
  EXPECT_EQ(marker(LM_MARKER_DIAMOND, 7), (Rows{
                                              ".........",
                                              "....#....",
                                              "...#.#...",
                                              "..#...#..",
                                              ".#.....#.",
                                              "..#...#..",
                                              "...#.#...",
                                              "....#....",
                                              ".........",
                                          }));
}

TEST(Marker, TriangleStandsOnItsSide) {
  EXPECT_EQ(marker(LM_MARKER_TRIANGLE, 7), (Rows{
                                               ".........",
                                               "....#....",
                                               "...###...",
                                               "...#.#...",
                                               "..#...#..",
                                               "..#...#..",
                                               ".#.....#.",
                                               ".#######.",
                                               ".........",
                                           }));
}

TEST(Marker, EvenSizesAreOneLargerThanOddOnesBelow) {
  for (const std::int32_t shape : all_shapes) {
    EXPECT_EQ(marker(shape, 6), marker(shape, 7)) << shape;
    EXPECT_NE(marker(shape, 5), marker(shape, 6)) << shape;
  }
}

TEST(Marker, OfSizeOneAndLessIsADot) {
  for (const std::int32_t shape : all_shapes) {
    for (const std::int32_t size : {1, 0, -1, INT32_MIN}) {
      Rows dot(9, ".........");
      dot[4] = "....#....";
      EXPECT_EQ(marker(shape, size), dot) << shape;
      if (shape != LM_MARKER_POINT) dot[3] = dot[4] = dot[5] = "...###...";
      EXPECT_EQ(marker(shape, size, 3), dot) << shape;
    }
  }
}

TEST(Marker, StrokesHaveTheWeightAndAreSolid) {
  EXPECT_EQ(marker(LM_MARKER_PLUS, 7, 3), (Rows{
                                              ".........",
                                              "...###...",
                                              "...###...",
                                              ".#######.",
                                              ".#######.",
                                              ".#######.",
                                              "...###...",
                                              "...###...",
                                              ".........",
                                          }));
  Canvas patterned(9, 9);
  patterned.rendition.set_marker({LM_MARKER_SQUARE, 9});
  patterned.rendition.set_line_pattern(LM_PATTERN_DOT);
  patterned.rendition.set_end_styles(LM_END_SQUARE);
  mark(patterned, points({{4, 4}}));
  EXPECT_EQ(patterned.rows(), marker(LM_MARKER_SQUARE, 9));
}

TEST(Marker, LooksTheSameFromBothSides) {
  for (const bool antialiased : {false, true}) {
    for (const std::int32_t shape : all_shapes) {
      for (std::int32_t size = 1; size <= 24; ++size) {
        for (const std::int32_t weight : {1, 3}) {
          Canvas canvas(35, 35);
          canvas.device.set_antialiased(antialiased);
          canvas.rendition.set_marker({shape, size});
          canvas.rendition.set_line_weight(weight);
          mark(canvas, points({{17, 17}}));
          const auto dark = [&](std::int32_t x, std::int32_t y) {
            return static_cast<std::int32_t>(canvas.picture.pixel(x, y).word & 0xFF);
          };
          for (std::int32_t y = 0; y < 35; ++y) {
            for (std::int32_t x = 0; x < 35; ++x) {
              const std::int32_t tolerance = antialiased ? 3 : 0;
              ASSERT_NEAR(dark(x, y), dark(34 - x, y), tolerance)
                  << shape << " " << size << " " << weight << ": " << x << "," << y;
              if (shape == LM_MARKER_TRIANGLE) continue;
              ASSERT_NEAR(dark(x, y), dark(x, 34 - y), tolerance)
                  << shape << " " << size << " " << weight << ": " << x << "," << y;
            }
          }
        }
      }
    }
  }
}

TEST(Marker, AntialiasedDiscHasItsArea) {
  Canvas canvas(60, 60);
  canvas.device.set_antialiased(true);
  canvas.rendition.set_marker({LM_MARKER_POINT, 41});
  mark(canvas, points({{30, 30}}));
  const double area = std::numbers::pi * 20.5 * 20.5;
  EXPECT_NEAR(ink_of(canvas.picture), area, 0.01 * area);
}

TEST(Marker, TransparentInkCoversEachPixelOnce) {
  for (const std::int32_t shape : all_shapes) {
    for (const std::int32_t weight : {1, 2, 3, 7}) {
      for (const std::int32_t size : {1, 3, 7, 20}) {
        Canvas canvas(40, 40);
        canvas.rendition.set_color({0x80000000}, true);
        canvas.rendition.set_marker({shape, size});
        canvas.rendition.set_line_weight(weight);
        mark(canvas, points({{20, 20}}));
        EXPECT_NE(canvas.rows(), Rows(40, std::string(40, '.')));
        for (const std::string& row : canvas.rows()) {
          EXPECT_EQ(row.find_first_not_of(".4"), std::string::npos) << shape << ": " << row;
        }
      }
    }
  }
}

TEST(Marker, StandsAtEachPoint) {
  Canvas canvas(12, 5);
  canvas.rendition.set_marker({LM_MARKER_CROSS, 3});
  mark(canvas, points({{1, 1}, {5, 3}, {10, 2}, {-50, 2}, {12, 4}}));
  EXPECT_EQ(canvas.rows(), (Rows{
                               "#.#.........",
                               ".#.......#.#",
                               "#.#.#.#...#.",
                               ".....#...#.#",
                               "....#.#.....",
                           }));
}

TEST(Marker, AClipRectangleOnlyHides) {
  std::mt19937 random(6);
  std::uniform_int_distribution<std::int32_t> any(-40, 100);
  for (int i = 0; i < 400; ++i) {
    Points places;
    for (int k = 0; k < 1 + i % 4; ++k) places.push_back({any(random), any(random), 0});
    const LM_Clip_Rectangle clip{10, 45, i % 30, i % 30 + 20};
    Canvas whole(64, 64);
    Canvas part(64, 64);
    part.rendition.set_clip_rectangle(clip);
    for (Canvas* canvas : {&whole, &part}) {
      canvas->rendition.set_marker({i % 9, i % 100 == 0 ? 1000 : i % 97});
      canvas->rendition.set_line_weight(i % 6);
      mark(*canvas, places);
    }
    expect_only_hidden(whole.picture, part.picture, clip);
  }
}

TEST(Marker, AComplexClipHidesPartOfIt) {
  auto clip = LM_Create<LM_Contour_Set_Data>();
  const LM_Point corners[] = {{0, 0, 0}, {4, 0, 0}, {4, 9, 0}, {0, 9, 0}};
  clip->add_contour(corners, 4);
  Canvas canvas(9, 9);
  canvas.rendition.set_complex_clip(clip, true);
  mark(canvas, points({{4, 4}}));
  Rows expected(9, ".........");
  expected[4] = ".###.....";
  EXPECT_EQ(canvas.rows(), expected);
}

TEST(Marker, NoPointsAndInvisibleInkDrawNothing) {
  Canvas canvas(9, 9);
  canvas.device.actions.marker_clipped(&canvas.rendition, 0, nullptr);
  canvas.device.actions.marker_unclipped(&canvas.rendition, -3, nullptr);
  canvas.rendition.set_color({0xFF000000}, true);
  mark(canvas, points({{4, 4}}));
  EXPECT_EQ(ink_of(canvas.picture), 0);
}

TEST(Marker, ExtremeNumbersAreNoHarm) {
  const Points places = points(
      {{INT32_MIN, INT32_MIN}, {INT32_MAX, 4}, {4, INT32_MAX}, {INT32_MIN, INT32_MAX}, {4, 4}});
  for (const bool antialiased : {false, true}) {
    for (const std::int32_t shape : all_shapes) {
      for (const std::int32_t size : {7, 100'000, INT32_MAX}) {
        for (const std::int32_t weight : {INT32_MIN, 1, INT32_MAX}) {
          Canvas canvas(9, 9);
          canvas.device.set_antialiased(antialiased);
          canvas.rendition.set_marker({shape, size});
          canvas.rendition.set_line_weight(weight);
          canvas.device.actions.marker_unclipped(&canvas.rendition, 5, places.data());
          if (shape == LM_MARKER_PLUS) {
            EXPECT_EQ(canvas.picture.pixel(4, 4), text_art::black) << size << " " << weight;
          }
        }
      }
    }
  }
}

TEST(Marker, HalvesDrawnByTwoThreadsAreTheWhole) {
  expect_halves_make_the_whole([](const lumen::RasterDevice& device, LM_Rendition& rendition) {
    std::mt19937 random(3);
    std::uniform_int_distribution<std::int32_t> any(-20, 220);
    for (int i = 0; i < 300; ++i) {
      Points places;
      for (int k = 0; k < 5; ++k) places.push_back({any(random), any(random), 0});
      rendition.set_marker({i % 8, i % 150});
      rendition.set_line_weight(i % 4);
      rendition.set_color({static_cast<std::uint32_t>(random())}, true);
      device.actions.marker_clipped(&rendition, 5, places.data());
    }
  });
}

}  // namespace
