#include <gtest/gtest.h>

#include <random>

#include "tests/lumen/raster_checks.h"
#include "tests/lumen/text_art.h"

using raster_checks::ink_of;
using text_art::Canvas;
using text_art::Points;
using text_art::points;
using text_art::Rows;

namespace {

TEST(Polygon, UpperAndLeftEdgesAreInsideLowerAndRightOnesNot) {
  Canvas canvas(8, 6);
  canvas.polygon(points({{2, 1}, {6, 1}, {6, 4}, {2, 4}}));
  EXPECT_EQ(canvas.rows(), (Rows{
                               "........",
                               "..####..",
                               "..####..",
                               "..####..",
                               "........",
                               "........",
                           }));
}

TEST(Polygon, SlantedEdgesGoThroughPixelCenters) {
  Canvas canvas(8, 5);
  canvas.polygon(points({{0, 0}, {8, 0}, {0, 4}}));
  EXPECT_EQ(canvas.rows(), (Rows{
                               "########",
                               "######..",
                               "####....",
                               "##......",
                               "........",
                           }));
}

TEST(Polygon, AntialiasedEdgesCoverInPart) {
  Canvas canvas(6, 5);
  canvas.device.set_antialiased(true);
  canvas.polygon(points({{1, 1}, {4, 1}, {4, 3}, {1, 3}}));
  EXPECT_EQ(canvas.rows(), (Rows{
                               "......",
                               ".2552.",
                               ".5##5.",
                               ".2552.",
                               "......",
                           }));
}

TEST(Polygon, IsFilledByTheEvenOddRule) {
  // A square with a square hole, joined by an edge that is walked both ways.
  Canvas canvas(9, 7);
  canvas.polygon(
      points({{0, 0}, {8, 0}, {8, 6}, {0, 6}, {0, 0}, {2, 2}, {2, 4}, {6, 4}, {6, 2}, {2, 2}}));
  EXPECT_EQ(canvas.rows(), (Rows{
                               "########.",
                               "########.",
                               "##....##.",
                               "##....##.",
                               "########.",
                               "########.",
                               ".........",
                           }));
}

TEST(Polygon, NeighboursShareNoPixelAndLeaveNoneOut) {
  std::mt19937 random(5);
  std::uniform_int_distribution<std::int32_t> any(1, 30);
  for (int i = 0; i < 200; ++i) {
    const LM_DCI_Point middle{any(random), any(random), 0};
    Canvas canvas(32, 32);
    canvas.rendition.set_color({0x80000000}, true);
    const Points corners = points({{0, 0}, {31, 0}, {31, 31}, {0, 31}});
    for (std::size_t k = 0; k < 4; ++k) {
      canvas.polygon({corners[k], corners[(k + 1) % 4], middle});
    }
    for (std::int32_t y = 0; y < 31; ++y) {
      ASSERT_EQ(canvas.rows()[static_cast<std::size_t>(y)], std::string(31, '4') + ".") << y;
    }
  }
}

TEST(Polygon, WithoutAreaDrawsNothing) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(8, 8);
    canvas.device.set_antialiased(antialiased);
    canvas.device.actions.polygon_clipped(&canvas.rendition, 0, nullptr, 0);
    canvas.device.actions.polygon_clipped(&canvas.rendition, -5, nullptr, 0);
    canvas.polygon(points({{3, 3}}));
    canvas.polygon(points({{0, 0}, {7, 7}}));
    canvas.polygon(points({{1, 1}, {1, 1}, {1, 1}}));
    canvas.polygon(points({{0, 2}, {7, 2}, {3, 2}}));
    canvas.polygon(points({{0, 0}, {7, 5}, {0, 0}, {7, 5}}));
    EXPECT_EQ(ink_of(canvas.picture), 0);
  }
}

/// Whether the centre of the pixel lies inside, by the even-odd rule over the
/// edges that cross its row at its column or before.
bool center_is_inside(const Points& polygon, std::int64_t x, std::int64_t y) {
  bool inside = false;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const LM_DCI_Point& a = polygon[i];
    const LM_DCI_Point& b = polygon[(i + 1) % polygon.size()];
    if ((a.y <= y) == (b.y <= y)) continue;
    const LM_DCI_Point& low = a.y < b.y ? a : b;
    const LM_DCI_Point& high = a.y < b.y ? b : a;
    const std::int64_t dy = std::int64_t{high.y} - low.y;
    if ((x - low.x) * dy >= (y - low.y) * (std::int64_t{high.x} - low.x)) inside = !inside;
  }
  return inside;
}

TEST(Polygon, ColorsExactlyThePixelsWithTheirCenterInside) {
  std::mt19937 random(3);
  for (int i = 0; i < 2000; ++i) {
    const int reach = i % 4 == 0 ? 1'000'000 : 40;
    std::uniform_int_distribution<std::int32_t> any(-reach, 24 + reach);
    Points polygon;
    for (int k = 0; k < 3 + i % 9; ++k) polygon.push_back({any(random), any(random), 0});
    Canvas canvas(24, 24);
    canvas.rendition.set_clip_rectangle({2, 21, 1, 19});
    canvas.polygon(polygon);
    for (std::int32_t y = 0; y < 24; ++y) {
      for (std::int32_t x = 0; x < 24; ++x) {
        const bool expected = canvas.rendition.clip_rectangle().contains({x, y, 0}) &&
                              center_is_inside(polygon, x, y);
        ASSERT_EQ(canvas.picture.pixel(x, y) == text_art::black, expected)
            << i << ": " << x << "," << y;
      }
    }
  }
}

TEST(Polygon, AntialiasedInkIsItsArea) {
  Canvas canvas(100, 100);
  canvas.device.set_antialiased(true);
  canvas.polygon(points({{10, 10}, {90, 25}, {70, 80}, {20, 60}}));
  EXPECT_NEAR(ink_of(canvas.picture), 3500, 10);
}

TEST(Polygon, ExtremeCoordinatesAreCutRight) {
  for (const bool antialiased : {false, true}) {
    Canvas whole(8, 8);
    whole.device.set_antialiased(antialiased);
    whole.polygon(points({{INT32_MIN, INT32_MIN},
                          {INT32_MAX, INT32_MIN},
                          {INT32_MAX, INT32_MAX},
                          {INT32_MIN, INT32_MAX}}));
    EXPECT_EQ(whole.rows(), Rows(8, "########"));

    Canvas half(8, 4);
    half.device.set_antialiased(antialiased);
    half.device.actions.polygon_unclipped(
        &half.rendition, 4,
        points({{INT32_MIN, INT32_MIN}, {4, INT32_MIN}, {4, INT32_MAX}, {INT32_MIN, INT32_MAX}})
            .data(),
        0);
    EXPECT_EQ(half.rows(), Rows(4, antialiased ? "####5..." : "####...."));

    Canvas slope(8, 4);
    slope.device.set_antialiased(antialiased);
    slope.polygon(points({{-2'000'000'000, -2'000'000'000},
                          {2'000'000'000, 2'000'000'000},
                          {-2'000'000'000, 2'000'000'000}}));
    EXPECT_EQ(slope.rows(), antialiased ? (Rows{"5.......", "#5......", "##5.....", "###5...."})
                                        : (Rows{"........", "#.......", "##......", "###....."}));
  }
}

TEST(Polygon, TransparentInkIsBlended) {
  Canvas canvas(2, 1);
  canvas.picture.row(0)[1] = 0xFF000000;
  canvas.rendition.set_color({0x40FF0000}, true);
  canvas.polygon(points({{0, 0}, {2, 0}, {2, 1}, {0, 1}}));
  EXPECT_EQ(canvas.picture.pixel(0, 0).word, 0x00FF4040U);
  EXPECT_EQ(canvas.picture.pixel(1, 0).word, 0x40FF0000U);
}

/// A comb: `teeth` slivers, each as high as the picture.
Points comb(std::int32_t teeth, std::int32_t height) {
  Points path;
  for (std::int32_t i = 0; i < teeth; ++i) {
    path.push_back({2 * i, height, 0});
    path.push_back({2 * i, 0, 0});
    path.push_back({2 * i + 1, 0, 0});
    path.push_back({2 * i + 1, height, 0});
  }
  return path;
}

TEST(Polygon, ThousandsOfSliversAreAllDrawn) {
  constexpr std::int32_t teeth = 6000;
  constexpr std::int32_t height = 1200;
  for (const bool antialiased : {false, true}) {
    Canvas canvas(2 * teeth, height);
    canvas.device.set_antialiased(antialiased);
    canvas.polygon(comb(teeth, height));
    for (const std::int32_t y : {1, height / 3, height / 2, height - 1}) {
      std::int32_t columns = 0;
      for (std::int32_t x = 0; x < 2 * teeth; ++x) {
        columns += canvas.picture.pixel(x, y) == text_art::white ? 0 : 1;
      }
      EXPECT_EQ(columns, antialiased ? 2 * teeth : teeth) << y;
    }
    EXPECT_NEAR(ink_of(canvas.picture), double{teeth} * height,
                antialiased ? 0.01 * teeth * height : 0);
  }
}

TEST(Polygon, APathAcrossAVeryWidePictureIsFilledOnce) {
  for (const bool antialiased : {false, true}) {
    for (const std::int32_t width : {30000, 60000}) {
      Canvas canvas(width, 40);
      canvas.device.set_antialiased(antialiased);
      canvas.polygon(points({{0, 0}, {width, 20}, {width, 39}, {0, 19}}));
      const double area = 19.0 * width;
      EXPECT_NEAR(ink_of(canvas.picture), area, area / 1000) << width;
    }
  }
}

TEST(Polygon, ManyCrossingEdgesAreSortedInTime) {
  std::mt19937 random(1);
  std::uniform_int_distribution<std::int32_t> any(0, 2000);
  Points path;
  for (int i = 0; i < 20000; ++i) path.push_back({any(random), i % 2 == 0 ? -5 : 70, 0});
  Canvas canvas(2001, 64);
  canvas.polygon(path);
  for (std::int32_t x = 0; x < 2001; x += 50) {
    EXPECT_EQ(canvas.picture.pixel(x, 20) == text_art::black, center_is_inside(path, x, 20)) << x;
  }
}

}  // namespace
