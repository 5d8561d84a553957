#include <gtest/gtest.h>

#include <random>

#include "tests/lumen/raster_checks.h"
#include "tests/lumen/text_art.h"

using raster_checks::expect_halves_make_the_whole;
using raster_checks::half_gray;
using raster_checks::ink_of;
using text_art::Canvas;
using text_art::Points;
using text_art::points;
using text_art::Rows;

namespace {

void strip(Canvas& canvas, const Points& path) {
  canvas.device.actions.triangle_strip_clipped(&canvas.rendition,
                                               static_cast<std::int32_t>(path.size()), path.data());
}

/// Whether the centre of the pixel is in the triangle, by the edges that cross
/// its row at its column or before.
bool triangle_holds(const LM_DCI_Point* corners, std::int64_t x, std::int64_t y) {
  bool inside = false;
  for (int i = 0; i < 3; ++i) {
    const LM_DCI_Point& a = corners[i];
    const LM_DCI_Point& b = corners[(i + 1) % 3];
    if ((a.y <= y) == (b.y <= y)) continue;
    const LM_DCI_Point& low = a.y < b.y ? a : b;
    const LM_DCI_Point& high = a.y < b.y ? b : a;
    const std::int64_t dy = std::int64_t{high.y} - low.y;
    if ((x - low.x) * dy >= (y - low.y) * (std::int64_t{high.x} - low.x)) inside = !inside;
  }
  return inside;
}

bool strip_holds(const Points& path, std::int32_t x, std::int32_t y) {
  for (std::size_t i = 0; i + 2 < path.size(); ++i) {
    if (triangle_holds(&path[i], x, y)) return true;
  }
  return false;
}

TEST(Strip, IsMadeOfTheTrianglesOfThreePointsInTurn) {
  Canvas canvas(10, 6);
  strip(canvas, points({{1, 5}, {1, 1}, {5, 5}, {5, 1}, {9, 5}}));
  EXPECT_EQ(canvas.rows(), (Rows{
                               "..........",
                               ".####.....",
                               ".#####....",
                               ".######...",
                               ".#######..",
                               "..........",
                           }));
}

TEST(Strip, IsExactlyTheUnionOfItsTriangles) {
  std::mt19937 random(4);
  for (int i = 0; i < 2000; ++i) {
    const int reach = i % 5 == 0 ? 1'000'000 : 30;
    std::uniform_int_distribution<std::int32_t> any(-reach, 24 + reach);
    Points path;
    for (int k = 0; k < 3 + i % 9; ++k) path.push_back({any(random), any(random), 0});
    Canvas canvas(24, 24);
    canvas.rendition.set_color({0x80000000}, true);
    const LM_Clip_Rectangle clip{2, 21, 1, 19};
    canvas.rendition.set_clip_rectangle(clip);
    strip(canvas, path);
    for (std::int32_t y = 0; y < 24; ++y) {
      for (std::int32_t x = 0; x < 24; ++x) {
        const bool expected = clip.contains({x, y, 0}) && strip_holds(path, x, y);
        ASSERT_EQ(canvas.picture.pixel(x, y).word, expected ? half_gray : 0x00FFFFFFU)
            << i << ": " << x << "," << y;
      }
    }
  }
}

TEST(Strip, AntialiasedHasNoSeams) {
  std::mt19937 random(14);
  std::uniform_int_distribution<std::int32_t> any(3, 37);
  for (int i = 0; i < 50; ++i) {
    Points path = points({{0, 0}, {0, 40}});
    for (std::int32_t x = 5; x < 40; x += 5) path.push_back({x, any(random) % 2 == 0 ? 0 : 40, 0});
    // Upper and lower points in turn: the square is covered whole.
    for (std::size_t k = 2; k < path.size(); ++k) path[k].y = k % 2 == 0 ? 0 : 40;
    path.push_back({40, path.back().y == 0 ? 40 : 0, 0});
    path.push_back({40, path.back().y == 0 ? 40 : 0, 0});
    for (std::size_t k = 2; k + 2 < path.size(); ++k) path[k].x += any(random) % 3;
    Canvas canvas(41, 41);
    canvas.device.set_antialiased(true);
    canvas.rendition.set_color({0x80000000}, true);
    strip(canvas, path);
    for (std::int32_t y = 1; y < 40; ++y) {
      for (std::int32_t x = 1; x < 40; ++x) {
        ASSERT_EQ(canvas.picture.pixel(x, y).word, half_gray) << i << ": " << x << "," << y;
      }
    }
  }
}

TEST(Strip, AntialiasedInkIsItsArea) {
  Canvas canvas(100, 100);
  canvas.device.set_antialiased(true);
  strip(canvas, points({{10, 10}, {10, 80}, {60, 20}, {70, 90}}));
  EXPECT_NEAR(ink_of(canvas.picture), 70 * 50 / 2.0 + (50 * 70 + 60 * 10) / 2.0, 10);
}

TEST(Strip, FoldedOverItselfCoversOnce) {
  Canvas canvas(12, 6);
  canvas.rendition.set_color({0x80000000}, true);
  strip(canvas, points({{0, 0}, {0, 6}, {12, 0}, {12, 6}, {0, 0}, {0, 6}}));
  EXPECT_EQ(canvas.rows(), Rows(6, "444444444444"));
}

TEST(Strip, WithoutAreaDrawsNothing) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(8, 8);
    canvas.device.set_antialiased(antialiased);
    canvas.device.actions.triangle_strip_clipped(&canvas.rendition, 0, nullptr);
    canvas.device.actions.triangle_strip_unclipped(&canvas.rendition, -7, nullptr);
    strip(canvas, points({{1, 1}}));
    strip(canvas, points({{1, 1}, {6, 6}}));
    strip(canvas, points({{1, 1}, {6, 6}, {3, 3}, {3, 3}, {1, 1}}));
    canvas.rendition.set_color({0xFF000000}, true);
    strip(canvas, points({{1, 1}, {6, 6}, {1, 6}}));
    EXPECT_EQ(ink_of(canvas.picture), 0);
  }
}

TEST(Strip, ExtremeCoordinatesAreCutRight) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(8, 8);
    canvas.device.set_antialiased(antialiased);
    canvas.rendition.set_color({0x80000000}, true);
    canvas.device.actions.triangle_strip_unclipped(&canvas.rendition, 4,
                                                   points({{INT32_MIN, INT32_MIN},
                                                           {INT32_MIN, INT32_MAX},
                                                           {INT32_MAX, INT32_MIN},
                                                           {INT32_MAX, INT32_MAX}})
                                                       .data());
    EXPECT_EQ(canvas.rows(), Rows(8, "44444444"));
  }
}

TEST(Strip, AComplexClipHidesPartOfIt) {
  auto clip = LM_Create<LM_Contour_Set_Data>();
  const LM_Point corners[] = {{2, 1, 0}, {5, 1, 0}, {5, 3, 0}, {2, 3, 0}};
  clip->add_contour(corners, 4);
  Canvas canvas(8, 4);
  canvas.rendition.set_complex_clip(clip, true);
  strip(canvas, points({{0, 0}, {0, 4}, {8, 0}, {8, 4}}));
  EXPECT_EQ(canvas.rows(), (Rows{
                               "........",
                               "..###...",
                               "..###...",
                               "........",
                           }));
}

TEST(Strip, HalvesDrawnByTwoThreadsAreTheWhole) {
  expect_halves_make_the_whole([](const lumen::RasterDevice& device, LM_Rendition& rendition) {
    std::mt19937 random(3);
    std::uniform_int_distribution<std::int32_t> any(-50, 250);
    for (int i = 0; i < 200; ++i) {
      Points path;
      for (int k = 0; k < 8; ++k) path.push_back({any(random), any(random), 0});
      rendition.set_color({static_cast<std::uint32_t>(random())}, true);
      device.actions.triangle_strip_clipped(&rendition, 8, path.data());
    }
  });
}

}  // namespace
