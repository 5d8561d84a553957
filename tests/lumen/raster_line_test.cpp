#include <gtest/gtest.h>

#include <random>

#include "tests/lumen/text_art.h"

using text_art::Canvas;
using text_art::Points;
using text_art::points;
using text_art::Rows;

namespace {

TEST(ThinLine, CoversOnePixelAStep) {
  Canvas canvas(8, 4);
  canvas.polyline(points({{0, 0}, {7, 3}}));
  EXPECT_EQ(canvas.rows(), (Rows{
                               "##......",
                               "..##....",
                               "....##..",
                               "......##",
                           }));
}

TEST(ThinLine, RunsInAllDirections) {
  Canvas canvas(9, 9);
  for (const auto& end : points({{8, 4}, {4, 8}, {0, 4}, {4, 0}, {8, 8}, {0, 0}, {8, 0}, {0, 8}})) {
    canvas.polyline({{4, 4, 0}, end});
  }
  EXPECT_EQ(canvas.rows(), (Rows{
                               "#...#...#",
                               ".#..#..#.",
                               "..#.#.#..",
                               "...###...",
                               "#########",
                               "...###...",
                               "..#.#.#..",
                               ".#..#..#.",
                               "#...#...#",
                           }));
}

TEST(ThinLine, CoversTheSamePixelsBothWays) {
  for (std::int32_t x = 0; x < 12; ++x) {
    for (std::int32_t y = 0; y < 12; ++y) {
      Canvas there(12, 12);
      Canvas back(12, 12);
      there.polyline(points({{3, 5}, {x, y}}));
      back.polyline(points({{x, y}, {3, 5}}));
      EXPECT_EQ(there.rows(), back.rows()) << x << "," << y;
    }
  }
}

TEST(ThinLine, APolylineIncludesItsEnd) {
  Canvas canvas(6, 4);
  canvas.polyline(points({{0, 0}, {5, 0}, {5, 3}, {3, 3}}));
  EXPECT_EQ(canvas.rows(), (Rows{
                               "######",
                               ".....#",
                               ".....#",
                               "...###",
                           }));
}

TEST(ThinLine, WithoutLengthIsADot) {
  Canvas canvas(3, 1);
  canvas.polyline(points({{0, 0}}));
  canvas.polyline(points({{2, 0}, {2, 0}, {2, 0}}));
  EXPECT_EQ(canvas.rows(), Rows{"#.#"});
  canvas.device.actions.polyline_clipped(&canvas.rendition, 0, nullptr);
  EXPECT_EQ(canvas.rows(), Rows{"#.#"});
}

TEST(ThinLine, PatternsCountPixels) {
  const std::pair<std::int32_t, std::string> expected[] = {
      {LM_PATTERN_SOLID, "##############################"},
      {LM_PATTERN_DASH, "########....########....######"},
      {LM_PATTERN_DOT, "##....##....##....##....##...."},
      {LM_PATTERN_DASH_DOT, "########....##....########...."},
      {LM_PATTERN_DASH_DOT_DOT, "########....##....##....######"},
      {99, "##############################"},
  };
  for (const auto& [pattern, row] : expected) {
    Canvas canvas(30, 1);
    canvas.rendition.set_line_pattern(pattern);
    canvas.polyline(points({{0, 0}, {29, 0}}));
    EXPECT_EQ(canvas.rows(), Rows{row}) << pattern;
  }
}

TEST(ThinLine, APatternGoesOnAroundCorners) {
  Canvas canvas(6, 9);
  canvas.rendition.set_line_pattern(LM_PATTERN_DASH);
  canvas.polyline(points({{0, 0}, {5, 0}, {5, 8}}));
  EXPECT_EQ(canvas.rows(), (Rows{
                               "######",
                               ".....#",
                               ".....#",
                               "......",
                               "......",
                               "......",
                               "......",
                               ".....#",
                               ".....#",
                           }));
}

TEST(ThinLine, TransparentJointsAreBlendedOnce) {
  Canvas canvas(3, 3);
  canvas.rendition.set_color({0x80000000}, true);
  canvas.polyline(points({{0, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}}));
  EXPECT_EQ(canvas.rows(), (Rows{
                               "444",
                               "4.4",
                               "444",
                           }));
}

TEST(ThinLine, InvisibleInkDrawsNothing) {
  Canvas canvas(3, 1);
  canvas.rendition.set_color({0xFF000000}, true);
  canvas.polyline(points({{0, 0}, {2, 0}}));
  canvas.rendition.set_line_weight(3);
  canvas.polyline(points({{0, 0}, {2, 0}}));
  EXPECT_EQ(canvas.rows(), Rows{"..."});
}

TEST(ThinLine, APointerColorBelongsToTheDotAlone) {
  Canvas canvas(3, 1);
  const LM_DCI_Point left{0, 0, 0};
  const LM_DCI_Point right{2, 0, 0};
  const LM_RGB32 red{0x00FF0000};
  canvas.device.actions.dot_clipped(&canvas.rendition, &left, &red);
  canvas.device.actions.dot_unclipped(&canvas.rendition, &right, nullptr);
  EXPECT_EQ(canvas.picture.pixel(0, 0), red);
  EXPECT_EQ(canvas.picture.pixel(1, 0), text_art::white);
  EXPECT_EQ(canvas.picture.pixel(2, 0), text_art::black);
}

__extension__ using Wide = __int128;

Wide floor_quotient(Wide numerator, Wide denominator) {
  const Wide quotient = numerator / denominator;
  return numerator % denominator < 0 ? quotient - 1 : quotient;
}

/// The pixels of a line by its definition: at every whole step of the longer
/// axis the nearest pixel of the other one, ties to the larger coordinate.
Rows defined_line(std::int32_t size, const LM_DCI_Point& from, const LM_DCI_Point& to) {
  Rows rows(static_cast<std::size_t>(size), std::string(static_cast<std::size_t>(size), '.'));
  const Wide dx = Wide{to.x} - from.x;
  const Wide dy = Wide{to.y} - from.y;
  const bool x_is_major = (dx < 0 ? -dx : dx) >= (dy < 0 ? -dy : dy);
  const Wide major = x_is_major ? dx : dy;
  const Wide minor = x_is_major ? dy : dx;
  const Wide start = x_is_major ? from.x : from.y;
  const Wide end = x_is_major ? to.x : to.y;
  const Wide across = x_is_major ? from.y : from.x;
  for (std::int32_t at = 0; at < size; ++at) {
    if (at < std::min(start, end) || at > std::max(start, end)) continue;
    const Wide sign = major < 0 ? -1 : 1;
    const Wide numerator = 2 * (at - start) * minor * sign + major * sign;
    const Wide other = across + (major == 0 ? 0 : floor_quotient(numerator, 2 * major * sign));
    if (other < 0 || other >= size) continue;
    const auto row = static_cast<std::size_t>(x_is_major ? other : at);
    const auto column = static_cast<std::size_t>(x_is_major ? at : other);
    rows[row][column] = '#';
  }
  return rows;
}

TEST(ThinLine, IsExactHoweverFarItsEndsLie) {
  std::mt19937 random(20);
  constexpr std::int32_t size = 24;
  int touching = 0;
  for (int i = 0; i < 20000; ++i) {
    // Through a point of the window, as far out as a random power of two.
    const auto far = [&random](int bits) {
      const std::int64_t limit = std::int64_t{1} << bits;
      return std::uniform_int_distribution<std::int64_t>(-limit, limit - 1)(random);
    };
    const int bits = 4 + i % 28;
    const auto coordinate = [](std::int64_t value) {
      return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
    };
    const std::int64_t dx = far(bits);
    const std::int64_t dy = far(bits);
    const LM_DCI_Point from{coordinate(12 + dx), coordinate(12 + dy), 0};
    const LM_DCI_Point to = i % 2 == 0
                                ? LM_DCI_Point{coordinate(10 - dx), coordinate(13 - dy), 0}
                                : LM_DCI_Point{coordinate(far(bits)), coordinate(far(bits)), 0};
    Canvas canvas(size, size);
    canvas.polyline({from, to});
    const Rows expected = defined_line(size, from, to);
    ASSERT_EQ(canvas.rows(), expected) << from.x << "," << from.y << " to " << to.x << "," << to.y;
    touching += expected != Rows(size, std::string(size, '.')) ? 1 : 0;
  }
  EXPECT_GT(touching, 10000);
}

TEST(ThinLine, CornersOfTheCoordinatePlaneAreNoHarm) {
  const std::int32_t extremes[] = {INT32_MIN, INT32_MIN + 1, -1, 0, 7, INT32_MAX - 1, INT32_MAX};
  for (const std::int32_t x1 : extremes) {
    for (const std::int32_t y1 : extremes) {
      for (const std::int32_t x2 : extremes) {
        for (const std::int32_t y2 : extremes) {
          Canvas canvas(8, 8);
          canvas.device.actions.polyline_unclipped(&canvas.rendition, 2,
                                                   points({{x1, y1}, {x2, y2}}).data());
          ASSERT_EQ(canvas.rows(), defined_line(8, {x1, y1, 0}, {x2, y2, 0}));
        }
      }
    }
  }
}

TEST(ThinLine, AClipRectangleOnlyHides) {
  const Points path = points({{-40, 3}, {35, 28}, {12, -9}, {12, 50}, {-3, -3}, {31, 31}});
  for (const std::int32_t pattern : {LM_PATTERN_SOLID, LM_PATTERN_DASH_DOT}) {
    Canvas whole(32, 32);
    whole.rendition.set_line_pattern(pattern);
    whole.polyline(path);
    for (std::int32_t y = 0; y < 32; y += 5) {
      const LM_Clip_Rectangle clip{4, 20, y, y + 9};
      Canvas part(32, 32);
      part.rendition = whole.rendition;
      part.rendition.set_clip_rectangle(clip);
      part.polyline(path);
      for (std::int32_t row = 0; row < 32; ++row) {
        for (std::int32_t x = 0; x < 32; ++x) {
          const LM_RGB32 expected =
              clip.contains({x, row, 0}) ? whole.picture.pixel(x, row) : text_art::white;
          ASSERT_EQ(part.picture.pixel(x, row), expected) << x << "," << row;
        }
      }
    }
  }
}

TEST(ThinLine, AnEmptyClipRectangleHidesAll) {
  Canvas canvas(4, 1);
  canvas.rendition.set_clip_rectangle({3, 1, 0, 0});
  canvas.polyline(points({{0, 0}, {3, 0}}));
  canvas.polygon(points({{0, 0}, {3, 0}, {3, 3}}));
  canvas.rendition.set_clip_rectangle({INT32_MAX, INT32_MAX, INT32_MIN, INT32_MAX});
  canvas.polyline(points({{0, 0}, {INT32_MAX, 0}}));
  EXPECT_EQ(canvas.rows(), Rows{"...."});
}

TEST(ThinLine, AnEmptyPictureTakesEverything) {
  lumen::Picture nothing;
  lumen::RasterDevice device(nothing);
  LM_Rendition rendition;
  const Points path = points({{0, 0}, {9, 9}, {0, 9}});
  for (const bool antialiased : {false, true}) {
    device.set_antialiased(antialiased);
    device.actions.dot_clipped(&rendition, path.data(), nullptr);
    device.actions.polyline_clipped(&rendition, 3, path.data());
    device.actions.polygon_clipped(&rendition, 3, path.data(), 0);
  }
  EXPECT_TRUE(nothing.is_empty());
}

}  // namespace
