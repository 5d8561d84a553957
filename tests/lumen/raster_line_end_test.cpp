#include <gtest/gtest.h>

#include <algorithm>

#include "tests/lumen/text_art.h"

using text_art::Canvas;
using text_art::Points;
using text_art::points;
using text_art::Rows;

namespace {

struct Style {
  std::int32_t weight;
  std::int32_t ends = LM_END_FLAT;
  std::int32_t pattern = LM_PATTERN_SOLID;
};

Rows stroke(const Style& style, bool antialiased, const Points& path) {
  Canvas canvas(12, 10);
  canvas.device.set_antialiased(antialiased);
  canvas.rendition.set_line_weight(style.weight);
  canvas.rendition.set_end_styles(style.ends);
  canvas.rendition.set_line_pattern(style.pattern);
  canvas.polyline(path);
  return canvas.rows();
}

/// All dark from one pixel to the other, both included; the rest is white.
Rows block(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
  Rows rows(10, std::string(12, '.'));
  for (std::int32_t y = top; y <= bottom; ++y) {
    auto& row = rows[static_cast<std::size_t>(y)];
    std::fill(row.begin() + left, row.begin() + right + 1, '#');
  }
  return rows;
}

class LineEnd : public testing::TestWithParam<bool> {};

INSTANTIATE_TEST_SUITE_P(Edges, LineEnd, testing::Values(false, true),
                         [](const auto& edges) { return edges.param ? "Smooth" : "Hard"; });

TEST_P(LineEnd, FlatLinesAsLongAsTheirWeightAreSquares) {
  for (std::int32_t weight = 1; weight <= 8; ++weight) {
    const std::int32_t before = (weight - 1) / 2;
    const std::int32_t left = 5 - before;
    const std::int32_t right = left + weight - 1;
    // Of an even weight one row more lies above than below.
    const std::int32_t top = 5 - weight / 2;
    const Rows square = block(left, top, right, top + weight - 1);
    EXPECT_EQ(stroke({weight}, GetParam(), points({{left, 5}, {right, 5}})), square) << weight;
    EXPECT_EQ(stroke({weight}, GetParam(), points({{right, 5}, {left, 5}})), square) << weight;
  }
}

TEST_P(LineEnd, FlatLinesDownAColumnAreNoWiderAndCoverBothEndPixels) {
  for (std::int32_t weight = 2; weight <= 8; ++weight) {
    const std::int32_t left = 5 - weight / 2;
    const Rows bar = block(left, 2, left + weight - 1, 7);
    EXPECT_EQ(stroke({weight}, GetParam(), points({{5, 2}, {5, 7}})), bar) << weight;
    EXPECT_EQ(stroke({weight}, GetParam(), points({{5, 7}, {5, 2}})), bar) << weight;
  }
}

TEST_P(LineEnd, SquareEndsReachHalfAWeightFurther) {
  for (std::int32_t weight = 2; weight <= 6; ++weight) {
    const std::int32_t before = weight / 2;
    const std::int32_t after = (weight - 1) / 2;
    const Rows bar = block(4 - before, 5 - before, 7 + after, 5 + after);
    EXPECT_EQ(stroke({weight, LM_END_SQUARE}, GetParam(), points({{4, 5}, {7, 5}})), bar);
  }
}

TEST_P(LineEnd, WithoutLengthIsASquareOfTheWeight) {
  for (std::int32_t weight = 2; weight <= 8; ++weight) {
    const std::int32_t before = weight / 2;
    const std::int32_t after = (weight - 1) / 2;
    EXPECT_EQ(stroke({weight}, GetParam(), points({{5, 5}, {5, 5}})),
              block(5 - before, 5 - before, 5 + after, 5 + after));
  }
}

TEST(LineEndStyle, JointsOfEvenWeightFillTheirCorners) {
  const Rows frame = {
      "............",  //
      ".#########..",  //
      ".#########..",  //
      ".##.....##..",  //
      ".##.....##..",  //
      ".##.....##..",  //
      ".#########..",  //
      ".#########..",  //
      "............",  //
      "............",
  };
  const Points path = points({{2, 2}, {9, 2}, {9, 7}, {2, 7}, {2, 2}});
  EXPECT_EQ(stroke({2}, false, path), frame);
  // Round, they cover more of their pixels than the half that a cut leaves.
  Rows smooth = stroke({2}, true, path);
  for (const std::size_t y : {1U, 7U}) {
    for (const std::size_t x : {1U, 9U}) {
      EXPECT_GE(smooth[y][x], '6');
      EXPECT_LE(smooth[y][x], '8');
      smooth[y][x] = '#';
    }
  }
  EXPECT_EQ(smooth, frame);
}

TEST(LineEndStyle, DiagonalsCoverTheirEndPixelsAndGrowNoFurther) {
  const Rows odd = {
      "............",  //
      "............",  //
      "....#.......",  //
      "...###......",  //
      "..#####.....",  //
      "...#####....",  //
      "....#####...",  //
      ".....###....",  //
      "......#.....",  //
      "............",
  };
  EXPECT_EQ(stroke({3}, false, points({{3, 3}, {7, 7}})), odd);
  EXPECT_EQ(stroke({3}, false, points({{7, 7}, {3, 3}})), odd);
  const Rows even = {
      "............",  //
      "............",  //
      "............",  //
      "...##.......",  //
      "...###......",  //
      "....###.....",  //
      ".....###....",  //
      "......##....",  //
      "............",  //
      "............",
  };
  EXPECT_EQ(stroke({2}, false, points({{3, 3}, {7, 7}})), even);
  EXPECT_EQ(stroke({2}, false, points({{7, 7}, {3, 3}})), even);
}

TEST(LineEndStyle, DiagonalsOfEvenWeightLieFurtherLeftAndUp) {
  const Rows rising = {
      "............",  //
      "............",  //
      "......#.....",  //
      ".....###....",  //
      "....###.....",  //
      "...###......",  //
      "..###.......",  //
      "...#........",  //
      "............",  //
      "............",
  };
  EXPECT_EQ(stroke({2}, false, points({{3, 7}, {7, 3}})), rising);
  EXPECT_EQ(stroke({2}, false, points({{7, 3}, {3, 7}})), rising);
}

TEST(LineEndStyle, FlatEndsOfDashesWithinTheLineEndWhereTheyAre) {
  // Dots of 4 with gaps of 8: the first from the half pixel before its start
  // to the centre of pixel 5, where the dash ends.
  const Rows smooth = stroke({2, LM_END_FLAT, LM_PATTERN_DOT}, true, points({{1, 5}, {30, 5}}));
  EXPECT_EQ(smooth[5], ".####.......");
  const Rows odd = stroke({3, LM_END_FLAT, LM_PATTERN_DOT}, true, points({{1, 5}, {30, 5}}));
  EXPECT_EQ(odd[5], ".######5....");
  const Rows hard = stroke({3, LM_END_FLAT, LM_PATTERN_DOT}, false, points({{1, 5}, {30, 5}}));
  EXPECT_EQ(hard[5], ".######.....");
}

TEST(LineEndStyle, ADashThatTheLineEndsInCoversTheLastPixel) {
  for (const bool antialiased : {false, true}) {
    EXPECT_EQ(stroke({3, LM_END_FLAT, LM_PATTERN_DASH}, antialiased, points({{2, 5}, {9, 5}})),
              block(2, 4, 9, 6));
    // Dots of 4 start every 12 from -8 on: the line ends in the one from 4 to 8.
    EXPECT_EQ(stroke({2, LM_END_FLAT, LM_PATTERN_DOT}, antialiased, points({{-8, 5}, {7, 5}}))[5],
              "....####....");
  }
}

}  // namespace
