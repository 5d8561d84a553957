#include <gtest/gtest.h>

#include "lumen/picture_image.h"
#include "tests/lumen/raster_checks.h"
#include "tests/lumen/text_art.h"

using raster_checks::expect_halves_make_the_whole;
using text_art::Canvas;
using text_art::Rows;

namespace {

using ImageHandle = LM_Handle<lumen::PictureImage>;

/// An image of one colour.
ImageHandle plain(std::int32_t width, std::int32_t height, LM_RGB32 color) {
  return LM_Create<lumen::PictureImage>(lumen::Picture(width, height, color));
}

/// An image whose pixels tell where they are: green x, blue y.
ImageHandle map(std::int32_t width, std::int32_t height) {
  lumen::Picture picture(width, height);
  for (std::int32_t y = 0; y < height; ++y) {
    for (std::int32_t x = 0; x < width; ++x) {
      picture.row(y)[x] = static_cast<std::uint32_t>(x << 8 | y);
    }
  }
  return LM_Create<lumen::PictureImage>(std::move(picture));
}

void draw(Canvas& canvas, const ImageHandle& image, LM_DCI_Point corner) {
  LM_Image* const cell = image.get();
  canvas.device.actions.image_clipped(&canvas.rendition, &corner, &cell);
}

TEST(Image, TakesADevicePixelForEachOfItsOwnFromItsCornerOn) {
  for (const bool antialiased : {false, true}) {
    Canvas canvas(7, 5);
    canvas.device.set_antialiased(antialiased);
    canvas.rendition.set_color({0xFFFF0000}, true);
    draw(canvas, plain(3, 2, text_art::black), {2, 1, 0});
    EXPECT_EQ(canvas.rows(), (Rows{
                                 ".......",
                                 "..###..",
                                 "..###..",
                                 ".......",
                                 ".......",
                             }));
  }
}

TEST(Image, KeepsItsPixelsWhereverItLies) {
  for (std::int32_t y = -12; y <= 12; y += 3) {
    for (std::int32_t x = -12; x <= 12; x += 3) {
      Canvas canvas(9, 9);
      const LM_Clip_Rectangle clip{1, 7, 2, 6};
      canvas.rendition.set_clip_rectangle(clip);
      draw(canvas, map(8, 10), {x, y, 0});
      for (std::int32_t py = 0; py < 9; ++py) {
        for (std::int32_t px = 0; px < 9; ++px) {
          const bool is_of_image = px >= x && px < x + 8 && py >= y && py < y + 10;
          const std::uint32_t expected = is_of_image && clip.contains({px, py, 0})
                                             ? static_cast<std::uint32_t>((px - x) << 8 | (py - y))
                                             : text_art::white.word;
          ASSERT_EQ(canvas.picture.pixel(px, py).word, expected) << x << "," << y;
        }
      }
    }
  }
}

TEST(Image, EachPixelIsAsTransparentAsItIs) {
  lumen::Picture picture(3, 1);
  picture.row(0)[0] = 0x00102030;
  picture.row(0)[1] = 0x80000000;
  picture.row(0)[2] = 0xFF000000;
  Canvas canvas(3, 1);
  draw(canvas, LM_Create<lumen::PictureImage>(picture), {0, 0, 0});
  EXPECT_EQ(canvas.picture.pixel(0, 0).word, 0x00102030U);
  EXPECT_EQ(canvas.picture.pixel(1, 0).word, 0x00808080U);
  EXPECT_EQ(canvas.picture.pixel(2, 0).word, 0x00FFFFFFU);

  // On a picture that is transparent itself nothing else shows through.
  lumen::Picture glass(3, 1, {0xFF000000});
  lumen::RasterDevice device(glass);
  const LM_DCI_Point corner{0, 0, 0};
  const auto image = LM_Create<lumen::PictureImage>(picture);
  LM_Image* const cell = image.get();
  device.actions.image_unclipped(&canvas.rendition, &corner, &cell);
  EXPECT_EQ(glass.pixel(0, 0).word, 0x00102030U);
  EXPECT_EQ(glass.pixel(1, 0).word, 0x80000000U);
  EXPECT_EQ(glass.pixel(2, 0).word, 0xFF000000U);
}

TEST(Image, AComplexClipHidesPartOfIt) {
  auto clip = LM_Create<LM_Contour_Set_Data>();
  const LM_Point corners[] = {{1, 1, 0}, {4, 1, 0}, {4, 3, 0}, {1, 3, 0}};
  clip->add_contour(corners, 4);
  Canvas canvas(6, 4);
  canvas.rendition.set_complex_clip(clip, true);
  draw(canvas, plain(6, 4, text_art::black), {0, 0, 0});
  EXPECT_EQ(canvas.rows(), (Rows{
                               "......",
                               ".###..",
                               ".###..",
                               "......",
                           }));
}

TEST(Image, WithoutPixelsDrawsNothing) {
  Canvas canvas(4, 4);
  const LM_DCI_Point corner{0, 0, 0};
  LM_Image* const empty_cell = nullptr;
  canvas.device.actions.image_clipped(&canvas.rendition, &corner, &empty_cell);
  canvas.device.actions.image_unclipped(&canvas.rendition, &corner, nullptr);
  draw(canvas, LM_Create<lumen::PictureImage>(lumen::Picture()), corner);
  EXPECT_EQ(canvas.rows(), Rows(4, "...."));
}

TEST(Image, FarCornersAreNoHarm) {
  const std::int32_t places[] = {INT32_MIN, INT32_MIN + 5, -65000, 1, INT32_MAX - 5, INT32_MAX};
  const ImageHandle image = plain(65005, 3, text_art::black);
  for (const std::int32_t x : places) {
    for (const std::int32_t y : places) {
      Canvas canvas(8, 4);
      draw(canvas, image, {x, y, 0});
      Rows expected(4, "........");
      if (y == 1 && x == 1) expected[1] = expected[2] = expected[3] = ".#######";
      if (y == 1 && x == -65000) expected[1] = expected[2] = expected[3] = "#####...";
      EXPECT_EQ(canvas.rows(), expected) << x << "," << y;
    }
  }
}

TEST(Image, HalvesDrawnByTwoThreadsAreTheWhole) {
  const ImageHandle image = map(50, 40);
  LM_Image* const cell = image.get();
  expect_halves_make_the_whole([&](const lumen::RasterDevice& device, LM_Rendition& rendition) {
    for (std::int32_t i = 0; i < 60; ++i) {
      const LM_DCI_Point corner{i * 7 % 220 - 20, i * 11 % 230 - 20, 0};
      device.actions.image_clipped(&rendition, &corner, &cell);
    }
  });
}

}  // namespace
