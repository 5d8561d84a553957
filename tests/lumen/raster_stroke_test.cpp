#include <gtest/gtest.h>

#include <random>

#include "tests/lumen/text_art.h"

using text_art::Canvas;
using text_art::Points;
using text_art::points;
using text_art::Rows;

namespace {

Rows stroke(std::int32_t weight, std::int32_t start, std::int32_t end, const Points& path) {
  Canvas canvas(14, 7);
  canvas.rendition.set_line_weight(weight);
  canvas.rendition.set_end_styles(start, end);
  canvas.polyline(path);
  return canvas.rows();
}

TEST(Stroke, FlatEndsCoverBothEndPixels) {
  EXPECT_EQ(stroke(3, LM_END_FLAT, LM_END_FLAT, points({{4, 3}, {9, 3}})), (Rows{
                                                                               "..............",
                                                                               "..............",
                                                                               "....######....",
                                                                               "....######....",
                                                                               "....######....",
                                                                               "..............",
                                                                               "..............",
                                                                           }));
}

TEST(Stroke, EvenWeightsLieOneRowHigher) {
  EXPECT_EQ(stroke(2, LM_END_FLAT, LM_END_FLAT, points({{4, 3}, {9, 3}})), (Rows{
                                                                               "..............",
                                                                               "..............",
                                                                               "....######....",
                                                                               "....######....",
                                                                               "..............",
                                                                               "..............",
                                                                               "..............",
                                                                           }));
}

TEST(Stroke, EachEndHasItsOwnStyle) {
  const Rows square_then_round = {
      "..............",  //
      "..#########...",  //
      "..##########..",  //
      "..##########..",  //
      "..##########..",  //
      "..#########...",  //
      "..............",
  };
  EXPECT_EQ(stroke(5, LM_END_SQUARE, LM_END_ROUND, points({{4, 3}, {9, 3}})), square_then_round);
  Rows round_then_square = square_then_round;
  EXPECT_EQ(stroke(5, LM_END_ROUND, LM_END_SQUARE, points({{9, 3}, {4, 3}})), round_then_square);
}

TEST(Stroke, AnUnknownEndStyleIsFlat) {
  const Points path = points({{4, 3}, {9, 3}});
  EXPECT_EQ(stroke(5, -1, 77, path), stroke(5, LM_END_FLAT, LM_END_FLAT, path));
}

TEST(Stroke, WithoutLengthIsADotOfTheWeight) {
  EXPECT_EQ(stroke(3, LM_END_FLAT, LM_END_FLAT, points({{4, 3}})), (Rows{
                                                                       "..............",
                                                                       "..............",
                                                                       "...###........",
                                                                       "...###........",
                                                                       "...###........",
                                                                       "..............",
                                                                       "..............",
                                                                   }));
  EXPECT_EQ(stroke(5, LM_END_ROUND, LM_END_ROUND, points({{4, 3}, {4, 3}})), (Rows{
                                                                                 "..............",
                                                                                 "...###........",
                                                                                 "..#####.......",
                                                                                 "..#####.......",
                                                                                 "..#####.......",
                                                                                 "...###........",
                                                                                 "..............",
                                                                             }));
}

TEST(Stroke, JointsAreFilled) {
  EXPECT_EQ(stroke(3, LM_END_FLAT, LM_END_FLAT, points({{3, 6}, {3, 2}, {9, 2}})),
            (Rows{
                "..............",
                "..########....",
                "..########....",
                "..########....",
                "..###.........",
                "..###.........",
                "..###.........",
            }));
}

TEST(Stroke, AClosedPolylineHasNoEnds) {
  EXPECT_EQ(stroke(3, LM_END_FLAT, LM_END_FLAT, points({{3, 1}, {10, 1}, {10, 5}, {3, 5}, {3, 1}})),
            (Rows{
                "..##########..",
                "..##########..",
                "..##########..",
                "..###....###..",
                "..##########..",
                "..##########..",
                "..##########..",
            }));
}

TEST(Stroke, AClosedPolylineSmallerThanItsWeightHasNoHole) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(25, 25);
    canvas.device.set_antialiased(antialiased);
    canvas.rendition.set_line_weight(13);
    canvas.rendition.set_color({0x80000000}, true);
    canvas.polyline(points(
        {{12, 9}, {14, 10}, {15, 12}, {14, 14}, {12, 15}, {10, 14}, {9, 12}, {10, 10}, {12, 9}}));
    for (std::int32_t y = 7; y <= 17; ++y) {
      for (std::int32_t x = 7; x <= 17; ++x) {
        EXPECT_EQ(canvas.picture.pixel(x, y).word, 0x00808080U) << x << "," << y;
      }
    }
  }
}

TEST(Stroke, PatternsGrowWithTheWeight) {
  Canvas canvas(40, 3);
  canvas.rendition.set_line_weight(3);
  canvas.rendition.set_line_pattern(LM_PATTERN_DASH);
  canvas.polyline(points({{0, 1}, {40, 1}}));
  const std::string row = "########################............####";
  EXPECT_EQ(canvas.rows(), (Rows{row, row, row}));
}

TEST(Stroke, ACutPatternKeepsItsPhase) {
  for (const std::int32_t pattern : {LM_PATTERN_DASH, LM_PATTERN_DASH_DOT_DOT}) {
    Canvas near(60, 3);
    Canvas far(60, 3);
    near.rendition.set_line_weight(3);
    near.rendition.set_line_pattern(pattern);
    far.rendition = near.rendition;
    near.polyline(points({{0, 1}, {60, 1}}));
    // 3 * 24 and 3 * 12 units both divide the way to the window.
    far.polyline(points({{-72'000'000, 1}, {2'000'000'000, 1}}));
    EXPECT_EQ(near.rows(), far.rows());
  }
}

TEST(Stroke, DashesOfAHugeLineAreMadeOnlyWhereTheyAreSeen) {
  Canvas canvas(16, 16);
  canvas.device.set_antialiased(true);
  canvas.rendition.set_line_pattern(LM_PATTERN_DOT);
  canvas.polyline(points({{INT32_MIN, 8}, {INT32_MAX, 8}, {INT32_MIN, INT32_MAX}}));
  const Rows rows = canvas.rows();
  EXPECT_NE(rows[8].find('#'), std::string::npos);
  EXPECT_NE(rows[8].find('.'), std::string::npos);
}

TEST(Stroke, AntialiasedInkIsLengthTimesWeight) {
  for (const std::int32_t weight : {1, 2, 5, 9}) {
    Canvas canvas(120, 120);
    canvas.device.set_antialiased(true);
    canvas.rendition.set_line_weight(weight);
    canvas.polyline(points({{20, 30}, {90, 80}}));
    double ink = 0;
    for (std::int32_t y = 0; y < 120; ++y) {
      for (std::int32_t x = 0; x < 120; ++x) {
        ink += (255.0 - (canvas.picture.pixel(x, y).word & 0xFF)) / 255;
      }
    }
    // Half a pixel more at each flat end, but for the line that is no area.
    const bool is_area = weight > 1;
    const double area = (std::hypot(70, 50) + (is_area ? 1 : 0)) * weight;
    EXPECT_NEAR(ink, area, area * (is_area ? 0.005 : 0.02)) << weight;
  }
}

TEST(Stroke, AntialiasedFlatEndsCoverTheirPixelsWhole) {
  Canvas canvas(8, 5);
  canvas.device.set_antialiased(true);
  canvas.rendition.set_line_weight(3);
  canvas.polyline(points({{1, 2}, {6, 2}}));
  EXPECT_EQ(canvas.rows(), (Rows{
                               "........",
                               ".######.",
                               ".######.",
                               ".######.",
                               "........",
                           }));
}

TEST(SmoothLine, FillsThePixelsWhoseCentersItRunsThrough) {
  Canvas canvas(7, 6);
  canvas.device.set_antialiased(true);
  canvas.polyline(points({{1, 1}, {5, 1}, {5, 4}, {1, 4}, {1, 1}}));
  EXPECT_EQ(canvas.rows(), (Rows{
                               ".......",
                               ".#####.",
                               ".#...#.",
                               ".#...#.",
                               ".#####.",
                               ".......",
                           }));
}

TEST(SmoothLine, LeavesItsLastPixelToWhatJoinsThere) {
  Canvas there(7, 1);
  there.device.set_antialiased(true);
  there.polyline(points({{1, 0}, {5, 0}}));
  EXPECT_EQ(there.rows(), Rows{".####.."});
  Canvas back(7, 1);
  back.device.set_antialiased(true);
  back.polyline(points({{5, 0}, {1, 0}}));
  EXPECT_EQ(back.rows(), Rows{"..####."});
}

TEST(SmoothLine, TinyPolylinesDoNotVanish) {
  for (const Points& path :
       {points({{2, 2}}), points({{2, 2}, {3, 2}}), points({{2, 2}, {2, 3}, {3, 3}, {2, 2}})}) {
    Canvas canvas(6, 6);
    canvas.device.set_antialiased(true);
    canvas.polyline(path);
    EXPECT_NE(canvas.rows(), Rows(6, "......"));
  }
}

TEST(SmoothLine, FlatClosedPolylinesDoNotVanish) {
  for (const Points& path :
       {points({{5, 5}, {40, 5}, {40, 6}, {5, 6}, {5, 5}}),
        points({{5, 5}, {40, 5}, {40, 6}, {5, 5}}), points({{5, 5}, {40, 5}, {40, 5}, {5, 5}}),
        points({{5, 5}, {40, 40}, {40, 40}, {5, 5}}),
        points({{5, 5}, {8, 5}, {8, 6}, {5, 6}, {5, 5}}),
        points({{5, 5}, {6, 5}, {7, 5}, {8, 5}, {7, 5}, {6, 5}, {5, 5}}),
        points({{5, 5}, {9, 5}, {9, 9}, {5, 5}})}) {
    Canvas smooth(46, 46);
    Canvas sharp(46, 46);
    smooth.device.set_antialiased(true);
    smooth.polyline(path);
    sharp.polyline(path);
    for (std::int32_t y = 0; y < 46; ++y) {
      for (std::int32_t x = 0; x < 46; ++x) {
        if (sharp.picture.pixel(x, y) == text_art::white) continue;
        EXPECT_NE(smooth.picture.pixel(x, y), text_art::white) << x << "," << y;
      }
    }
  }
}

TEST(SmoothLine, AClipRectangleOnlyHides) {
  std::mt19937 random(12);
  std::uniform_int_distribution<std::int32_t> any(-300, 330);
  for (int i = 0; i < 300; ++i) {
    Points path;
    for (int k = 0; k < 4; ++k) path.push_back({any(random), any(random), 0});
    Canvas whole(32, 32);
    whole.device.set_antialiased(true);
    whole.polyline(path);
    const LM_Clip_Rectangle clip{3, 20, i % 16, i % 16 + 12};
    Canvas part(32, 32);
    part.device.set_antialiased(true);
    part.rendition.set_clip_rectangle(clip);
    part.polyline(path);
    for (std::int32_t y = 0; y < 32; ++y) {
      for (std::int32_t x = 0; x < 32; ++x) {
        const bool shown = clip.contains({x, y, 0});
        const std::uint32_t expected = shown ? whole.picture.pixel(x, y).word & 0xFF : 0xFF;
        ASSERT_NEAR(part.picture.pixel(x, y).word & 0xFF, expected, shown ? 4 : 0)
            << i << ": " << x << "," << y;
      }
    }
  }
}

TEST(Stroke, TransparentInkCoversCrossingsOnce) {
  Canvas canvas(9, 9);
  canvas.rendition.set_line_weight(3);
  canvas.rendition.set_color({0x80000000}, true);
  canvas.polyline(points({{4, 0}, {4, 8}, {8, 8}, {8, 4}, {0, 4}}));
  for (const std::string& row : canvas.rows()) {
    EXPECT_EQ(row.find_first_not_of(".4"), std::string::npos) << row;
  }
}

TEST(Stroke, AClipRectangleOnlyHides) {
  std::mt19937 random(11);
  std::uniform_int_distribution<std::int32_t> any(-60, 90);
  for (int i = 0; i < 300; ++i) {
    Points path;
    for (int k = 0; k < 5; ++k) path.push_back({any(random), any(random), 0});
    if (i % 3 == 0) path.push_back(path.front());
    Canvas whole(32, 32);
    whole.rendition.set_line_weight(2 + i % 9);
    whole.rendition.set_end_styles(i % 3, i % 2);
    whole.polyline(path);
    const LM_Clip_Rectangle clip{3, 20, i % 16, i % 16 + 12};
    Canvas part(32, 32);
    part.rendition = whole.rendition;
    part.rendition.set_clip_rectangle(clip);
    part.polyline(path);
    for (std::int32_t y = 0; y < 32; ++y) {
      for (std::int32_t x = 0; x < 32; ++x) {
        const LM_RGB32 expected =
            clip.contains({x, y, 0}) ? whole.picture.pixel(x, y) : text_art::white;
        ASSERT_EQ(part.picture.pixel(x, y), expected) << i << ": " << x << "," << y;
      }
    }
  }
}

TEST(Stroke, AClosedPolylineThatIsCutHasNoEndsEither) {
  const Points far_square =
      points({{10, 10}, {40'000, 10}, {40'000, 40'000}, {10, 40'000}, {10, 10}});
  Canvas cut(20, 20);
  cut.rendition.set_line_weight(7);
  cut.polyline(far_square);
  Canvas joined(20, 20);
  joined.rendition.set_line_weight(7);
  joined.polyline(points({{10, 100}, {10, 10}, {100, 10}}));
  EXPECT_EQ(cut.rows(), joined.rows());
}

TEST(Stroke, ExtremeCoordinatesAndWeightsAreNoHarm) {
  const std::int32_t extremes[] = {INT32_MIN, -1, 9, INT32_MAX};
  for (const bool antialiased : {false, true}) {
    for (const std::int32_t weight : {INT32_MIN, 0, 2, 1000, INT32_MAX}) {
      for (const std::int32_t x : extremes) {
        for (const std::int32_t y : extremes) {
          Canvas canvas(16, 16);
          canvas.device.set_antialiased(antialiased);
          canvas.rendition.set_line_weight(weight);
          canvas.rendition.set_end_styles(LM_END_ROUND, LM_END_SQUARE);
          canvas.polyline(points({{8, 8}, {x, y}, {y, x}}));
          ASSERT_NE(canvas.picture.pixel(8, 8), text_art::white);
        }
      }
    }
  }
}

}  // namespace
