#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cmath>
#include <optional>
#include <random>

#include "tests/lumen/gouraud.h"

using gouraud::blue;
using gouraud::channel;
using gouraud::Colors;
using gouraud::difference;
using gouraud::green;
using gouraud::half_black;
using gouraud::line;
using gouraud::red;
using gouraud::strip;
using text_art::Canvas;
using text_art::Points;
using text_art::points;
using text_art::Rows;

namespace {

std::int64_t cross(const LM_DCI_Point& a, const LM_DCI_Point& b, std::int64_t x, std::int64_t y) {
  return (std::int64_t{b.x} - a.x) * (y - a.y) - (std::int64_t{b.y} - a.y) * (x - a.x);
}

/// Whether the centre of the pixel is inside: on the inner side of each edge,
/// or on one that is a left or upper edge.
bool covers(const std::array<LM_DCI_Point, 3>& corner, std::int32_t x, std::int32_t y) {
  for (std::size_t i = 0; i < 3; ++i) {
    const LM_DCI_Point& a = corner[i];
    const LM_DCI_Point& b = corner[(i + 1) % 3];
    const std::int64_t side = cross(a, b, x, y);
    const bool is_left_or_upper = b.y < a.y || (a.y == b.y && b.x > a.x);
    if (side < 0 || (side == 0 && !is_left_or_upper)) return false;
  }
  return true;
}

/// What the triangle has at the pixel, by areas; nothing where it is not.
std::optional<LM_RGB32> color_at(const LM_DCI_Point* points, const LM_RGB32* colors, std::int32_t x,
                                 std::int32_t y) {
  std::array<LM_DCI_Point, 3> corner{points[0], points[1], points[2]};
  std::array<LM_RGB32, 3> color{colors[0], colors[1], colors[2]};
  const std::int64_t area = cross(corner[0], corner[1], corner[2].x, corner[2].y);
  if (area == 0) return {};
  if (area < 0) {
    std::swap(corner[1], corner[2]);
    std::swap(color[1], color[2]);
  }
  if (!covers(corner, x, y)) return {};
  std::uint32_t word = 0;
  for (int i = 0; i < 4; ++i) {
    double sum = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      sum += static_cast<double>(cross(corner[(k + 1) % 3], corner[(k + 2) % 3], x, y)) *
             channel(color[k].word, i);
    }
    word |= static_cast<std::uint32_t>(std::lround(sum / std::abs(static_cast<double>(area))))
            << (8 * i);
  }
  return LM_RGB32{word};
}

/// `over` on a white pixel.
LM_RGB32 on_white(LM_RGB32 over) {
  const double opacity = (255 - channel(over.word, 3)) / 255.0;
  std::uint32_t word = 0;
  for (int i = 0; i < 3; ++i) {
    const double mixed = channel(over.word, i) * opacity + 255 * (1 - opacity);
    word |= static_cast<std::uint32_t>(std::lround(mixed)) << (8 * i);
  }
  return {word};
}

TEST(GouraudStrip, HasTheColorsOfItsVertices) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(40, 40);
    canvas.device.set_antialiased(antialiased);
    // A pixel away from each vertex: 1 of 39 of the way to the next ones.
    strip(canvas, points({{0, 0}, {39, 0}, {0, 39}, {39, 39}}), {red, green, blue, {0x00FFFF00}});
    EXPECT_LE(difference(canvas.picture.pixel(1, 1), {0x00F20707}), 1);
    EXPECT_LE(difference(canvas.picture.pixel(38, 1), {0x0000F807}), 1);
    EXPECT_LE(difference(canvas.picture.pixel(1, 38), {0x000007F8}), 1);
    EXPECT_LE(difference(canvas.picture.pixel(38, 38), {0x00F2F807}), 1);
  }
}

TEST(GouraudStrip, MixesAtTheCentersOfPixels) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(64, 64);
    canvas.device.set_antialiased(antialiased);
    strip(canvas, points({{0, 0}, {60, 0}, {0, 60}}), {red, green, blue});
    EXPECT_EQ(canvas.picture.pixel(20, 20).word, 0x00555555U);
    EXPECT_EQ(canvas.picture.pixel(15, 15).word, 0x00804040U);
    EXPECT_EQ(canvas.picture.pixel(30, 15).word, 0x00408040U);
    EXPECT_EQ(canvas.picture.pixel(15, 30).word, 0x00404080U);
  }
}

TEST(GouraudStrip, MixesTransparencyToo) {
  Canvas canvas(5, 2);
  canvas.picture.clear({0xFF000000});
  strip(canvas, points({{0, 0}, {4, 0}, {0, 4}}), {{0x00404040}, {0x80404040}, {0x00404040}});
  EXPECT_EQ(canvas.picture.pixel(0, 0).word, 0x00404040U);
  EXPECT_EQ(canvas.picture.pixel(1, 0).word, 0x20404040U);
  EXPECT_EQ(canvas.picture.pixel(2, 0).word, 0x40404040U);
  EXPECT_EQ(canvas.picture.pixel(1, 1).word, 0x20404040U);
}

TEST(GouraudStrip, CoversThePixelsOfAPolygon) {
  Canvas canvas(8, 5);
  strip(canvas, points({{0, 0}, {8, 0}, {0, 4}}), Colors(3, text_art::black));
  EXPECT_EQ(canvas.rows(), (Rows{
                               "########",
                               "######..",
                               "####....",
                               "##......",
                               "........",
                           }));
  Canvas smooth(6, 5);
  smooth.device.set_antialiased(true);
  strip(smooth, points({{1, 1}, {4, 1}, {1, 3}, {4, 3}}), Colors(4, text_art::black));
  EXPECT_EQ(smooth.rows(), (Rows{
                               "......",
                               ".2552.",
                               ".5##5.",
                               ".2552.",
                               "......",
                           }));
}

TEST(GouraudStrip, EqualsTheColorsOfItsLastTriangles) {
  std::mt19937 random(11);
  for (int i = 0; i < 400; ++i) {
    const int reach = i % 5 == 0 ? 1'000'000 : 30;
    std::uniform_int_distribution<std::int32_t> any(-reach, 24 + reach);
    std::uniform_int_distribution<std::uint32_t> word(0, i % 2 == 0 ? 0x00FFFFFF : 0xFFFFFFFF);
    Points path;
    Colors colors;
    for (int k = 0; k < 3 + i % 6; ++k) {
      path.push_back({any(random), any(random), 0});
      colors.push_back({word(random)});
    }
    Canvas canvas(24, 24);
    strip(canvas, path, colors);
    for (std::int32_t y = 0; y < 24; ++y) {
      for (std::int32_t x = 0; x < 24; ++x) {
        LM_RGB32 expected = text_art::white;
        for (std::size_t k = 0; k + 2 < path.size(); ++k) {
          const auto color = color_at(&path[k], &colors[k], x, y);
          if (color.has_value()) expected = on_white(*color);
        }
        ASSERT_LE(difference(canvas.picture.pixel(x, y), expected), 2)
            << i << ": " << x << "," << y;
      }
    }
  }
}

/// A ribbon between two ragged edges.
Points ribbon(std::uint32_t seed) {
  std::mt19937 random(seed);
  std::uniform_int_distribution<std::int32_t> any(0, 9);
  Points path;
  for (std::int32_t x = -20; x < 120; x += 1 + any(random)) {
    path.push_back({x, 10 + any(random), 0});
    path.push_back({x + any(random), 80 + any(random), 0});
  }
  return path;
}

TEST(GouraudStrip, HasNoSeamsWithAntialiasing) {
  for (std::uint32_t seed = 0; seed < 50; ++seed) {
    Canvas canvas(100, 100);
    canvas.device.set_antialiased(true);
    const Points path = ribbon(seed);
    strip(canvas, path, Colors(path.size(), text_art::black));
    for (std::int32_t y = 21; y < 79; ++y) {
      for (std::int32_t x = 0; x < 100; ++x) {
        ASSERT_EQ(canvas.picture.pixel(x, y), text_art::black) << seed << ": " << x << "," << y;
      }
    }
  }
}

TEST(GouraudStrip, TransparentPixelsAreBlendedOnce) {
  for (const bool antialiased : {false, true}) {
    for (std::uint32_t seed = 0; seed < 50; ++seed) {
      Canvas canvas(100, 100);
      canvas.device.set_antialiased(antialiased);
      const Points path = ribbon(seed);
      strip(canvas, path, Colors(path.size(), half_black));
      for (std::int32_t y = 21; y < 79; ++y) {
        ASSERT_EQ(canvas.rows()[static_cast<std::size_t>(y)], std::string(100, '4')) << seed;
      }
    }
  }
}

TEST(GouraudStrip, FoldedTrianglesAreBlendedOnce) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(10, 10);
    canvas.device.set_antialiased(antialiased);
    strip(canvas, points({{0, 0}, {9, 0}, {0, 9}, {1, 0}, {0, 8}}), Colors(5, half_black));
    EXPECT_EQ(canvas.rows()[1].substr(1, 6), "444444");
    EXPECT_EQ(canvas.rows()[5].substr(1, 2), "44");
  }
}

TEST(GouraudStrip, EdgesOfSliversHaveTheirColor) {
  Canvas canvas(60, 12);
  canvas.device.set_antialiased(true);
  canvas.picture.clear({0xFF000000});
  strip(canvas, points({{2, 2}, {57, 5}, {57, 6}}), Colors(3, {0x00123456}));
  int touched = 0;
  for (std::int32_t y = 0; y < 12; ++y) {
    for (std::int32_t x = 0; x < 60; ++x) {
      const std::uint32_t word = canvas.picture.pixel(x, y).word;
      if (word >> 24 == 0xFF) continue;
      EXPECT_EQ(word & 0x00FFFFFF, 0x00123456U) << x << "," << y;
      ++touched;
    }
  }
  EXPECT_GT(touched, 60);
}

TEST(GouraudStrip, WithoutAreaDrawsNothing) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(8, 8);
    canvas.device.set_antialiased(antialiased);
    const Colors colors(6, text_art::black);
    const Points path = points({{0, 0}, {7, 0}, {0, 7}});
    for (const std::int32_t count : {-5, 0, 1, 2, INT_MIN}) {
      canvas.device.actions.gouraud_triangle_strip_clipped(&canvas.rendition, count, path.data(),
                                                           colors.data());
    }
    canvas.device.actions.gouraud_triangle_strip_clipped(&canvas.rendition, 0, nullptr, nullptr);
    canvas.device.actions.gouraud_triangle_strip_clipped(&canvas.rendition, 3, path.data(),
                                                         nullptr);
    strip(canvas, points({{1, 1}, {1, 1}, {1, 1}, {1, 1}}), colors);
    strip(canvas, points({{0, 0}, {3, 3}, {7, 7}, {5, 5}, {2, 2}}), colors);
    strip(canvas, points({{0, 2}, {7, 2}, {3, 2}}), colors);
    strip(canvas, points({{INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}, {0, 0}}), colors);
    EXPECT_EQ(canvas.rows(), Rows(8, "........"));
  }
}

TEST(GouraudStrip, TrianglesWithoutAreaLeaveTheirNeighboursAlone) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(20, 10);
    canvas.device.set_antialiased(antialiased);
    // Two squares, joined by triangles without area.
    const Points path = points(
        {{1, 1}, {1, 7}, {6, 1}, {6, 7}, {6, 7}, {11, 1}, {11, 1}, {11, 7}, {17, 1}, {17, 7}});
    Colors colors(4, red);
    colors.insert(colors.end(), 6, blue);
    strip(canvas, path, colors);
    EXPECT_EQ(canvas.picture.pixel(3, 4), red);
    EXPECT_EQ(canvas.picture.pixel(5, 6), red);
    EXPECT_EQ(canvas.picture.pixel(8, 4), text_art::white);
    EXPECT_EQ(canvas.picture.pixel(12, 2), blue);
    EXPECT_EQ(canvas.picture.pixel(16, 4), blue);
  }
}

TEST(GouraudStrip, ExtremeCoordinatesHaveTheRightColors) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(16, 16);
    canvas.device.set_antialiased(antialiased);
    strip(canvas,
          points({{INT_MIN, INT_MIN}, {INT_MAX, INT_MIN}, {INT_MIN, INT_MAX}, {INT_MAX, INT_MAX}}),
          {red, green, blue, {0x00FFFF00}});
    for (std::int32_t y = 0; y < 16; ++y) {
      for (std::int32_t x = 0; x < 16; ++x) {
        ASSERT_LE(difference(canvas.picture.pixel(x, y), {0x00008080}), 1) << x << "," << y;
      }
    }
    Canvas slope(64, 4);
    slope.device.set_antialiased(antialiased);
    strip(slope, points({{0, INT_MIN}, {64, INT_MIN}, {0, INT_MAX}, {64, INT_MAX}}),
          {{0x00000000}, {0x000000FF}, {0x00000000}, {0x000000FF}});
    for (std::int32_t x = 1; x < 64; ++x) {
      EXPECT_NEAR(channel(slope.picture.pixel(x, 2).word, 0), x * 255.0 / 64, 1) << x;
    }
  }
}

/// A strip over all of the picture and a wide polyline, drawn through a clip.
void draw_all_over(Canvas& canvas) {
  strip(canvas, points({{-9, -9}, {40, -9}, {-9, 40}, {40, 40}}), Colors(4, half_black));
  canvas.rendition.set_line_weight(7);
  line(canvas, points({{-9, 3}, {40, 5}}), {half_black, half_black});
  canvas.rendition.set_line_weight(1);
  line(canvas, points({{-9, 8}, {40, 8}}), {half_black, half_black});
}

TEST(Gouraud, ClipRectangleIsNeverLeft) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(16, 12);
    canvas.device.set_antialiased(antialiased);
    canvas.rendition.set_clip_rectangle({4, 9, 2, 10});
    draw_all_over(canvas);
    for (std::int32_t y = 0; y < 12; ++y) {
      for (std::int32_t x = 0; x < 16; ++x) {
        const bool inside = canvas.rendition.clip_rectangle().contains({x, y, 0});
        EXPECT_EQ(canvas.picture.pixel(x, y) != text_art::white, inside) << x << "," << y;
      }
    }
  }
}

TEST(Gouraud, ClipRectangleChangesNoPixelInside) {
  std::mt19937 random(7);
  std::uniform_int_distribution<std::int32_t> any(-20, 60);
  std::uniform_int_distribution<std::uint32_t> word(0, 0x00FFFFFF);
  for (int i = 0; i < 200; ++i) {
    Points path;
    Colors colors;
    for (int k = 0; k < 5; ++k) {
      path.push_back({any(random), any(random), 0});
      colors.push_back({word(random) | 0x40000000});
    }
    Canvas whole(40, 40);
    Canvas part(40, 40);
    part.rendition.set_clip_rectangle({11, 31, 9, 33});
    for (Canvas* canvas : {&whole, &part}) {
      canvas->device.set_antialiased(i % 2 == 0);
      canvas->rendition.set_line_weight(i % 3 == 0 ? 1 : 5);
      strip(*canvas, path, colors);
      line(*canvas, path, colors);
    }
    for (std::int32_t y = 9; y <= 33; ++y) {
      for (std::int32_t x = 11; x <= 31; ++x) {
        ASSERT_LE(difference(whole.picture.pixel(x, y), part.picture.pixel(x, y)), 2)
            << i << ": " << x << "," << y;
      }
    }
  }
}

TEST(Gouraud, ComplexClipHidesWhatIsOutside) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(16, 12);
    canvas.device.set_antialiased(antialiased);
    auto clip = LM_Create<LM_Contour_Set_Data>();
    const LM_Point box[] = {{2.5F, 1.5F, 0}, {12.5F, 1.5F, 0}, {12.5F, 9.5F, 0}, {2.5F, 9.5F, 0}};
    clip->add_contour(box, 4);
    canvas.rendition.set_complex_clip(clip, true);
    draw_all_over(canvas);
    for (std::int32_t y = 0; y < 12; ++y) {
      for (std::int32_t x = 0; x < 16; ++x) {
        const bool inside = x >= 3 && x <= 12 && y >= 2 && y <= 9;
        EXPECT_EQ(canvas.picture.pixel(x, y) != text_art::white, inside) << x << "," << y;
      }
    }
  }
}

TEST(Gouraud, LargePicturesAreDrawnInFull) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(1500, 1500);
    canvas.device.set_antialiased(antialiased);
    strip(canvas, points({{-1, -1}, {1501, -1}, {-1, 1501}, {1501, 1501}}), Colors(4, half_black));
    const lumen::Picture even(1500, 1500, canvas.picture.pixel(0, 0));
    EXPECT_EQ(even.pixel(0, 0).word, 0x00808080U);
    EXPECT_EQ(difference(canvas.picture, even), 0);
    canvas.picture.clear(text_art::white);
    canvas.rendition.set_line_weight(2200);
    line(canvas, points({{-9, -9}, {1600, 1600}}), {half_black, half_black});
    EXPECT_EQ(difference(canvas.picture, even), 0);
  }
}

}  // namespace
