#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cmath>
#include <limits>
#include <random>

#include "lumen/picture_image.h"
#include "tests/lumen/text_art.h"

using text_art::Canvas;
using text_art::Points;
using text_art::points;
using text_art::Rows;

namespace {

using Places = std::vector<LM_Vertex_Triple>;
using Image = LM_Handle<const LM_Image>;

constexpr std::uint32_t black = 0x00000000;
constexpr std::uint32_t white = 0x00FFFFFF;
constexpr std::uint32_t gray = 0x00808080;
constexpr std::uint32_t red = 0x00FF0000;
constexpr std::uint32_t green = 0x0000FF00;
constexpr std::uint32_t blue = 0x000000FF;
constexpr std::uint32_t invisible = 0xFF000000;

/// An image of rows of words.
Image image(const std::vector<std::vector<std::uint32_t>>& rows) {
  const auto height = static_cast<std::int32_t>(rows.size());
  const auto width = static_cast<std::int32_t>(rows.empty() ? 0 : rows[0].size());
  lumen::Picture picture(width, height);
  for (std::int32_t y = 0; y < height; ++y) {
    const auto& row = rows[static_cast<std::size_t>(y)];
    std::copy(row.begin(), row.end(), picture.row(y));
  }
  return LM_Create<lumen::PictureImage>(std::move(picture));
}

Image checkerboard() {
  return image({{black, white}, {white, black}});
}

Image plain(std::uint32_t color) {
  return image({{color}});
}

/// Everything of one textured strip; what is empty is passed as null.
struct Strip {
  Points path;
  std::vector<LM_RGB32> colors;
  Places first;
  std::int32_t wrap = LM_TEXTURE_CLAMP;
  std::vector<std::uint32_t> modulation;
  Places second;
};

template <class T>
const T* data_or_null(const std::vector<T>& list) {
  return list.empty() ? nullptr : list.data();
}

void draw(Canvas& canvas, const Strip& strip) {
  canvas.device.actions.textured_triangle_strip_clipped(
      &canvas.rendition, static_cast<std::int32_t>(strip.path.size()), data_or_null(strip.path),
      data_or_null(strip.colors), data_or_null(strip.first), strip.wrap,
      data_or_null(strip.modulation), data_or_null(strip.second));
}

void set_pages(Canvas& canvas, std::vector<Image> pages) {
  canvas.rendition.set_texture_pages(LM_Create<LM_Texture_Pages>(std::move(pages)));
}

/// The four corners from `from` to `to` on a page, both ways.
Places corners(float from, float to, std::uint32_t page = 0) {
  return {LM_Vertex_Triple::at(from, from, page), LM_Vertex_Triple::at(to, from, page),
          LM_Vertex_Triple::at(from, to, page), LM_Vertex_Triple::at(to, to, page)};
}

/// A square with its left upper corner on the first pixel, on a gray ground.
Strip square(std::int32_t side, const Places& first) {
  return {points({{0, 0}, {side, 0}, {0, side}, {side, side}}),
          std::vector<LM_RGB32>(4, {gray}),
          first,
          LM_TEXTURE_CLAMP,
          {},
          {}};
}

/// The colour of a square strip a few pixels wide, in its middle.
std::uint32_t color_of(const Strip& strip, std::vector<Image> pages, bool antialiased = false) {
  Canvas canvas(8, 8);
  canvas.device.set_antialiased(antialiased);
  set_pages(canvas, std::move(pages));
  draw(canvas, strip);
  return canvas.picture.pixel(4, 4).word;
}

TEST(TexturedStrip, HasTheTexelThatAPixelLiesOn) {
  Canvas canvas(9, 9);
  set_pages(canvas, {checkerboard()});
  draw(canvas, square(8, corners(0, 1)));
  EXPECT_EQ(canvas.rows(), (Rows{
                               "####.....",
                               "####.....",
                               "####.....",
                               "####.....",
                               "....####.",
                               "....####.",
                               "....####.",
                               "....####.",
                               ".........",
                           }));
}

TEST(TexturedStrip, BothFormsDrawTheSame) {
  Canvas canvas(9, 9);
  set_pages(canvas, {checkerboard()});
  const Strip strip = square(8, corners(0, 1));
  canvas.device.actions.textured_triangle_strip_unclipped(&canvas.rendition, 4, strip.path.data(),
                                                          strip.colors.data(), strip.first.data(),
                                                          0, nullptr, nullptr);
  EXPECT_EQ(canvas.rows()[0], "####.....");
  EXPECT_EQ(canvas.rows()[7], "....####.");
}

TEST(TexturedStrip, RepeatsThePageBeyondItsEdges) {
  Canvas canvas(9, 9);
  set_pages(canvas, {checkerboard()});
  Strip strip = square(8, corners(-0.5F, 1.5F));
  strip.wrap = LM_TEXTURE_REPEAT;
  draw(canvas, strip);
  EXPECT_EQ(canvas.rows(), (Rows{
                               "##..##...",
                               "##..##...",
                               "..##..##.",
                               "..##..##.",
                               "##..##...",
                               "##..##...",
                               "..##..##.",
                               "..##..##.",
                               ".........",
                           }));
}

TEST(TexturedStrip, ClampsToTheTexelsOfTheEdge) {
  for (const std::int32_t wrap : {std::int32_t{LM_TEXTURE_CLAMP}, 7, -1, INT_MIN}) {
    Canvas canvas(9, 9);
    set_pages(canvas, {checkerboard()});
    Strip strip = square(8, corners(-0.5F, 1.5F));
    strip.wrap = wrap;
    draw(canvas, strip);
    EXPECT_EQ(canvas.rows()[0], "####.....");
    EXPECT_EQ(canvas.rows()[3], "####.....");
    EXPECT_EQ(canvas.rows()[4], "....####.");
    EXPECT_EQ(canvas.rows()[7], "....####.");
  }
}

TEST(TexturedStrip, ANativeSizeKeepsEveryTexel) {
  std::mt19937 random(3);
  for (const std::int32_t side : {3, 7, 13, 64, 100}) {
    lumen::Picture texels(side, side);
    for (std::int32_t y = 0; y < side; ++y) {
      for (std::int32_t x = 0; x < side; ++x) texels.row(y)[x] = random() & 0x00FFFFFF;
    }
    Canvas canvas(side, side);
    set_pages(canvas, {LM_Create<lumen::PictureImage>(texels)});
    draw(canvas, square(side, corners(0, 1)));
    EXPECT_EQ(canvas.picture, texels) << side;
  }
}

TEST(TexturedStrip, IsTurnedWithItsPlaces) {
  Canvas canvas(4, 4);
  set_pages(canvas, {image({{black, white}, {black, white}})});
  Strip strip = square(4, {LM_Vertex_Triple::at(0, 1, 0), LM_Vertex_Triple::at(0, 0, 0),
                           LM_Vertex_Triple::at(1, 1, 0), LM_Vertex_Triple::at(1, 0, 0)});
  draw(canvas, strip);
  EXPECT_EQ(canvas.rows(), (Rows{"####", "####", "....", "...."}));
}

TEST(TexturedStrip, AntialiasedTexelsAreMixed) {
  Canvas canvas(9, 9);
  canvas.device.set_antialiased(true);
  set_pages(canvas, {checkerboard()});
  draw(canvas, square(8, corners(0, 1)));
  // Texels are 4 pixels wide, their centres 2 and 6 pixels from the edge.
  EXPECT_EQ(canvas.picture.pixel(1, 1).word, black);
  EXPECT_EQ(canvas.picture.pixel(2, 2).word, black);
  EXPECT_EQ(canvas.picture.pixel(3, 2).word, 0x00404040U);
  EXPECT_EQ(canvas.picture.pixel(4, 2).word, gray);
  EXPECT_EQ(canvas.picture.pixel(5, 2).word, 0x00BFBFBFU);
  EXPECT_EQ(canvas.picture.pixel(6, 2).word, white);
  EXPECT_EQ(canvas.picture.pixel(4, 4).word, gray);
  EXPECT_EQ(canvas.picture.pixel(3, 3).word, 0x00606060U);
}

TEST(TexturedStrip, AntialiasedTexelsAreMixedAcrossTheSeamOfARepeatedPage) {
  for (const std::int32_t wrap : {LM_TEXTURE_CLAMP, LM_TEXTURE_REPEAT}) {
    Canvas canvas(16, 16);
    canvas.device.set_antialiased(true);
    set_pages(canvas, {image({{black, white}})});
    Strip strip = square(16, corners(0, 2));
    strip.wrap = wrap;
    draw(canvas, strip);
    const bool repeats = wrap == LM_TEXTURE_REPEAT;
    EXPECT_EQ(canvas.picture.pixel(6, 9).word, white);
    EXPECT_EQ(canvas.picture.pixel(8, 9).word, repeats ? gray : white);
    EXPECT_EQ(canvas.picture.pixel(10, 9).word, repeats ? black : white);
    EXPECT_EQ(canvas.picture.pixel(12, 9).word, repeats ? gray : white);
  }
}

TEST(TexturedStrip, InvisibleTexelsLendNoColor) {
  Canvas canvas(9, 9);
  canvas.device.set_antialiased(true);
  canvas.picture.clear({invisible});
  set_pages(canvas, {image({{red, invisible | green}})});
  Strip strip = square(8, corners(0, 1));
  strip.colors.clear();
  draw(canvas, strip);
  EXPECT_EQ(canvas.picture.pixel(2, 4).word, red);
  EXPECT_EQ(canvas.picture.pixel(4, 4).word, 0x7F000000 | red);
  EXPECT_EQ(canvas.picture.pixel(6, 4).word >> 24, 0xFFU);
}

TEST(TexturedStrip, LiesOnItsGroundColors) {
  Strip strip = square(8, corners(0, 1));
  EXPECT_EQ(color_of(strip, {plain(invisible)}), gray);
  EXPECT_EQ(color_of(strip, {plain(red)}), red);
  EXPECT_EQ(color_of(strip, {plain(0x7F000000 | red)}), 0x00C04040U);
  strip.colors = {{black}, {0x00FF0000}, {0x000000FF}, {0x00FF00FF}};
  EXPECT_EQ(color_of(strip, {plain(invisible)}), 0x00800080U);
  strip.colors.assign(4, {invisible});
  EXPECT_EQ(color_of(strip, {plain(invisible)}), white);
  EXPECT_EQ(color_of(strip, {plain(0x80000000)}), gray);
  strip.colors.clear();
  EXPECT_EQ(color_of(strip, {plain(invisible)}), white);
  EXPECT_EQ(color_of(strip, {plain(green)}), green);
}

TEST(TexturedStrip, ModulationMultipliesTheFirstTexel) {
  Strip strip = square(8, corners(0, 1));
  strip.modulation.assign(4, 0x00804020);
  EXPECT_EQ(color_of(strip, {plain(white)}), 0x00804020U);
  EXPECT_EQ(color_of(strip, {plain(gray)}), 0x00402010U);
  strip.modulation.assign(4, 0x00FFFFFF);
  EXPECT_EQ(color_of(strip, {plain(0x00123456)}), 0x00123456U);
  strip.modulation.assign(4, 0xFFFFFFFF);
  EXPECT_EQ(color_of(strip, {plain(red)}), gray);
  strip.modulation.assign(4, 0x7FFFFFFF);
  EXPECT_EQ(color_of(strip, {plain(red)}), 0x00C04040U);
  // From vertex to vertex: half at half way.
  strip.modulation = {0x00FFFFFF, 0x00000000, 0x00FFFFFF, 0x00000000};
  EXPECT_EQ(color_of(strip, {plain(white)}), gray);
}

TEST(TexturedStrip, TheSecondPageLiesOnTheFirst) {
  Strip strip = square(8, corners(0, 1, 1));
  strip.second = corners(0, 1, 2);
  strip.modulation.assign(4, 0x00FFFFFF);
  EXPECT_EQ(color_of(strip, {nullptr, plain(red), plain(blue)}), blue);
  EXPECT_EQ(color_of(strip, {nullptr, plain(red), plain(0x80000000 | blue)}), 0x0080007FU);
  EXPECT_EQ(color_of(strip, {nullptr, plain(red), plain(invisible)}), red);
  // The modulation is that of the first texel alone.
  strip.modulation.assign(4, 0xFF000000);
  EXPECT_EQ(color_of(strip, {nullptr, plain(red), plain(blue)}), blue);
}

TEST(TexturedStrip, MissingPagesCoverNothing) {
  for (const bool antialiased : {false, true}) {
    Strip strip = square(8, corners(0, 1, 1));
    strip.second = corners(0, 1, 2);
    EXPECT_EQ(color_of(strip, {}, antialiased), gray);
    EXPECT_EQ(color_of(strip, {plain(red)}, antialiased), gray);
    EXPECT_EQ(color_of(strip, {plain(red), nullptr, nullptr}, antialiased), gray);
    EXPECT_EQ(color_of(strip, {plain(red), image({}), plain(blue)}, antialiased), blue);
    EXPECT_EQ(color_of(strip, {plain(red), plain(green)}, antialiased), green);
    strip.first = corners(0, 1, UINT32_MAX);
    EXPECT_EQ(color_of(strip, {plain(red), plain(green)}, antialiased), gray);
    strip.first.clear();
    EXPECT_EQ(color_of(strip, {plain(red), plain(green)}, antialiased), gray);

    Canvas canvas(8, 8);
    canvas.device.set_antialiased(antialiased);
    draw(canvas, strip);
    EXPECT_EQ(canvas.picture.pixel(4, 4).word, gray);
  }
}

TEST(TexturedStrip, ATriangleTakesThePageOfItsFirstVertex) {
  Canvas canvas(9, 9);
  set_pages(canvas, {plain(red), plain(green), plain(blue)});
  Strip strip = square(8, corners(0, 1));
  strip.first[0] = LM_Vertex_Triple::at(0, 0, 2);
  strip.first[1] = LM_Vertex_Triple::at(1, 0, 1);
  draw(canvas, strip);
  EXPECT_EQ(canvas.picture.pixel(2, 2).word, blue);
  EXPECT_EQ(canvas.picture.pixel(6, 6).word, green);
}

TEST(TexturedStrip, PlacesThatAreNotFiniteCoverNothing) {
  constexpr float nan = std::numeric_limits<float>::quiet_NaN();
  constexpr float infinity = std::numeric_limits<float>::infinity();
  for (const bool antialiased : {false, true}) {
    for (const float bad : {nan, infinity, -infinity}) {
      for (const bool is_u : {false, true}) {
        Canvas canvas(9, 9);
        canvas.device.set_antialiased(antialiased);
        set_pages(canvas, {plain(red)});
        Strip strip = square(8, corners(0, 1));
        // Of the second triangle alone.
        strip.first[3] = LM_Vertex_Triple::at(is_u ? bad : 1, is_u ? 1 : bad, 0);
        draw(canvas, strip);
        EXPECT_EQ(canvas.picture.pixel(2, 2).word, red);
        EXPECT_EQ(canvas.picture.pixel(6, 6).word, gray);
      }
    }
  }
}

TEST(TexturedStrip, HugePlacesAreNoHarm) {
  constexpr float huge = std::numeric_limits<float>::max();
  for (const bool antialiased : {false, true}) {
    for (const std::int32_t wrap : {LM_TEXTURE_CLAMP, LM_TEXTURE_REPEAT}) {
      Canvas canvas(9, 9);
      canvas.device.set_antialiased(antialiased);
      set_pages(canvas, {checkerboard()});
      Strip strip = square(8, corners(-huge, huge));
      strip.wrap = wrap;
      draw(canvas, strip);
      strip.first = corners(1e10F, 1e20F);
      draw(canvas, strip);
      if (wrap == LM_TEXTURE_CLAMP) {
        EXPECT_EQ(canvas.picture.pixel(5, 5).word, black);
      }
    }
  }
}

TEST(TexturedStrip, HasNoSeamsWithAntialiasing) {
  std::mt19937 random(9);
  std::uniform_int_distribution<std::int32_t> any(0, 9);
  for (int i = 0; i < 30; ++i) {
    Canvas canvas(60, 60);
    canvas.device.set_antialiased(true);
    set_pages(canvas, {plain(red)});
    Strip strip;
    for (std::int32_t x = -15; x < 80; x += 1 + any(random)) {
      strip.path.push_back({x, any(random), 0});
      strip.path.push_back({x + any(random), 50 + any(random), 0});
    }
    strip.colors.assign(strip.path.size(), {black});
    strip.first.assign(strip.path.size(), LM_Vertex_Triple::at(0.3F, 0.3F, 0));
    draw(canvas, strip);
    for (std::int32_t y = 11; y < 49; ++y) {
      for (std::int32_t x = 0; x < 60; ++x) {
        ASSERT_EQ(canvas.picture.pixel(x, y).word, red) << i << ": " << x << "," << y;
      }
    }
  }
}

TEST(TexturedStrip, ExtremeCoordinatesHaveTheRightTexels) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(8, 8);
    canvas.device.set_antialiased(antialiased);
    set_pages(canvas, {image({{red, green, blue}, {red, green, blue}})});
    Strip strip = square(8, corners(0, 1));
    strip.path =
        points({{INT_MIN, INT_MIN}, {INT_MAX, INT_MIN}, {INT_MIN, INT_MAX}, {INT_MAX, INT_MAX}});
    draw(canvas, strip);
    for (std::int32_t y = 0; y < 8; ++y) {
      for (std::int32_t x = 0; x < 8; ++x) {
        ASSERT_EQ(canvas.picture.pixel(x, y).word, green) << x << "," << y;
      }
    }
  }
}

TEST(TexturedStrip, StaysInsideItsClips) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(12, 12);
    canvas.device.set_antialiased(antialiased);
    canvas.rendition.set_clip_rectangle({2, 9, 3, 11});
    auto clip = LM_Create<LM_Contour_Set_Data>();
    const LM_Point box[] = {{-0.5F, -0.5F, 0}, {6.5F, -0.5F, 0}, {6.5F, 20, 0}, {-0.5F, 20, 0}};
    clip->add_contour(box, 4);
    canvas.rendition.set_complex_clip(clip, true);
    set_pages(canvas, {plain(black)});
    Strip strip = square(8, corners(0, 1));
    strip.path = points({{-5, -5}, {40, -5}, {-5, 40}, {40, 40}});
    draw(canvas, strip);
    for (std::size_t y = 0; y < 12; ++y) {
      EXPECT_EQ(canvas.rows()[y], y < 3 ? "............" : "..#####.....") << y;
    }
  }
}

TEST(TexturedStrip, BadCountsDrawNothing) {
  Canvas canvas(4, 4);
  set_pages(canvas, {plain(black)});
  const Strip strip = square(4, corners(0, 1));
  for (const std::int32_t count : {INT_MIN, -1, 0, 1, 2}) {
    canvas.device.actions.textured_triangle_strip_clipped(&canvas.rendition, count,
                                                          strip.path.data(), strip.colors.data(),
                                                          strip.first.data(), 0, nullptr, nullptr);
  }
  draw(canvas, {});
  EXPECT_EQ(canvas.rows(), Rows(4, "...."));
}

}  // namespace
