#include <gtest/gtest.h>

#include <limits>

#include "tests/lumen/raster_checks.h"
#include "tests/lumen/reference_text.h"
#include "tests/lumen/text_art.h"

using raster_checks::darkness;
using raster_checks::ink_of;
using reference_text::Face;
using reference_text::Glyph;
using reference_text::length;
using reference_text::utf16;
using text_art::Canvas;

namespace {

void draw(Canvas& canvas, const std::wstring& text, const LM_DCI_Point& start) {
  canvas.device.draw_text(&canvas.rendition, start, text.data(), length(text));
}

/// How text is set.
struct Setting {
  float size = 20;
  float rotation = 0;
  float width_scale = 1;
};

void apply(const Setting& setting, LM_Rendition& rendition) {
  rendition.set_text_size(setting.size);
  rendition.set_text_rotation(setting.rotation);
  rendition.set_text_width_scale(setting.width_scale);
}

/// The part of the pixel that is inside, by looking at `parts` times `parts`
/// places of it.
double cover_of(const LM_Contour_Set& ink, std::int32_t x, std::int32_t y, int parts) {
  int inside = 0;
  for (int i = 0; i < parts * parts; ++i) {
    inside += ink->point_inside(x - 0.5 + (i % parts + 0.5) / parts,
                                y - 0.5 + (static_cast<double>(i / parts) + 0.5) / parts);
  }
  return static_cast<double>(inside) / (parts * parts);
}

/// That the text looks like these glyphs of the face. Edges that cross within a
/// pixel are each counted there, so that letters that join may differ more.
void expect_glyphs(const std::u32string& text, Face& face, const std::vector<Glyph>& glyphs,
                   const Setting& setting, double tolerance = 0.13) {
  const LM_DCI_Point start{45, 45, 0};
  Canvas canvas(90, 90);
  apply(setting, canvas.rendition);
  draw(canvas, utf16(text), start);

  const double angle = setting.size < 0 ? -setting.rotation : setting.rotation;
  const double x = std::cos(angle) * std::abs(setting.size);
  const double y = std::sin(angle) * std::abs(setting.size);
  const LM_Contour_Set ink = face.outlines(glyphs, [&](double along, double up) -> LM_Point {
    along *= setting.width_scale;
    up -= 0.5 / std::abs(setting.size);  // the baseline is the lower edge of its pixels
    return {static_cast<float>(start.x + along * x + up * y),
            static_cast<float>(start.y + along * y - up * x), 0.0F};
  });
  double difference = 0;
  for (std::int32_t row = 0; row < 90; ++row) {
    for (std::int32_t column = 0; column < 90; ++column) {
      const double dark = darkness(canvas.picture, column, row);
      const double expected = cover_of(ink, column, row, dark > 0 ? 8 : 2);
      ASSERT_NEAR(dark, expected, tolerance) << column << "," << row;
      difference += std::abs(dark - expected);
    }
  }
  EXPECT_GT(ink_of(canvas.picture), 20);
  EXPECT_LT(difference, 0.1 * ink_of(canvas.picture));
}

TEST(RasterText, CoversPixelsAsFarAsLettersDo) {
  Face face;
  for (const Setting& setting :
       {Setting{20}, Setting{8}, Setting{30, 1.5707964F}, Setting{20, 2.5F}, Setting{-20, 0.7F},
        Setting{-20}, Setting{15, 0.2F, 2}, Setting{24, 4, 0.5F}}) {
    expect_glyphs(U"Ag&", face, face.shape(U"Ag&"), setting);
  }
}

TEST(RasterText, KernsAndJoinsLetters) {
  Face face;
  expect_glyphs(U"AVfi", face, face.shape(U"AVfi"), {});
  expect_glyphs(U"q\u0323\u030B", face, face.shape(U"q\u0323\u030B"), {});
}

TEST(RasterText, RunsFromRightToLeftWhereTheScriptDoes) {
  Face face;
  expect_glyphs(U"\u05D0\u05E9\u05D5", face, face.shape(U"\u05D0\u05E9\u05D5", true), {});
  const std::u32string word = U"\u0639\u0631\u0628";
  expect_glyphs(word, face, face.shape(word, true), {}, 0.35);
}

TEST(RasterText, OrdersPiecesOfBothDirections) {
  Face face;
  // The number stands to the left of the word before it.
  auto glyphs = face.shape(U"a ");
  const auto add = [&](const std::u32string& text, bool right_to_left) {
    const auto more = face.shape(text, right_to_left, total(glyphs));
    glyphs.insert(glyphs.end(), more.begin(), more.end());
  };
  add(U"12", false);
  add(U"\u05D0\u05E9 ", true);
  expect_glyphs(U"a \u05D0\u05E9 12", face, glyphs, {15});
}

TEST(RasterText, IsSmoothOnAnyDevice) {
  Canvas rough(60, 30);
  Canvas smooth(60, 30);
  smooth.device.set_antialiased(true);
  for (Canvas* canvas : {&rough, &smooth}) {
    apply({}, canvas->rendition);
    draw(*canvas, L"Sog", {5, 20, 0});
  }
  EXPECT_TRUE(rough.picture == smooth.picture);
}

TEST(RasterText, LettersThatOverlapCoverAPixelOnce) {
  Canvas canvas(60, 60);
  apply({60}, canvas.rendition);
  canvas.rendition.set_color({0x80000000}, true);
  draw(canvas, L"O\u0338\u0336l", {2, 50, 0});
  bool is_any_full = false;
  for (std::int32_t y = 0; y < 60; ++y) {
    for (std::int32_t x = 0; x < 60; ++x) {
      const std::uint32_t pixel = canvas.picture.pixel(x, y).word;
      EXPECT_GE(pixel, raster_checks::half_gray) << x << "," << y;
      is_any_full = is_any_full || pixel == raster_checks::half_gray;
    }
  }
  EXPECT_TRUE(is_any_full);
}

/// Smooth covers may differ in their last bits.
void expect_alike(double one, double other) {
  EXPECT_NEAR(one, other, 2.0 / 255);
}

TEST(RasterText, DrawsOnlyInsideTheClips) {
  const LM_Clip_Rectangle clip{20, 50, 15, 25};
  auto contours = LM_Create<LM_Contour_Set_Data>();
  const LM_Point corners[] = {{20, 15, 0}, {51, 15, 0}, {51, 26, 0}, {20, 26, 0}};
  contours->add_contour(corners, 4);
  Canvas whole(80, 40);
  Canvas part(80, 40);
  part.rendition.set_clip_rectangle(clip);
  Canvas masked(80, 40);
  masked.rendition.set_complex_clip(contours, true);
  for (Canvas* canvas : {&whole, &part, &masked}) {
    apply({24, 0.2F}, canvas->rendition);
    draw(*canvas, L"Clipped", {3, 20, 0});
  }
  for (std::int32_t y = 0; y < 40; ++y) {
    for (std::int32_t x = 0; x < 80; ++x) {
      const bool is_inside = clip.contains({x, y, 0});
      const double expected = is_inside ? darkness(whole.picture, x, y) : 0;
      expect_alike(darkness(part.picture, x, y), expected);
      expect_alike(darkness(masked.picture, x, y), expected);
      if (!is_inside) {
        EXPECT_EQ(part.picture.pixel(x, y), text_art::white);
        EXPECT_EQ(masked.picture.pixel(x, y), text_art::white);
      }
    }
  }
}

TEST(RasterText, OfLessThanFiveUnitsIsABar) {
  Face face;
  for (const float size : {4.99F, -4.99F, 3.0F}) {
    Canvas canvas(60, 20);
    apply({size}, canvas.rendition);
    const std::wstring text = L"mmmmmmmm";
    draw(canvas, text, {5, 10, 0});
    const double area = 8 * face.advance('m') * face.height('x') * size * size;
    EXPECT_NEAR(ink_of(canvas.picture), area * 102 / 255, area * 0.02);
    for (std::int32_t x = 0; x < 60; ++x) EXPECT_EQ(darkness(canvas.picture, x, 11), 0);
    EXPECT_NEAR(darkness(canvas.picture, 12, 10), 0.4, 0.01);
  }
  Canvas canvas(60, 20);
  apply({5}, canvas.rendition);
  draw(canvas, L"l l", {5, 10, 0});
  EXPECT_EQ(darkness(canvas.picture, 7, 8), 0);
}

TEST(RasterText, BlanksHaveNoBar) {
  Canvas canvas(60, 20);
  apply({4}, canvas.rendition);
  draw(canvas, L"   \u00A0 ", {5, 10, 0});
  EXPECT_EQ(ink_of(canvas.picture), 0);
}

TEST(RasterText, BarsAreAsTransparentAsTheInk) {
  Canvas canvas(40, 20);
  apply({4.9F}, canvas.rendition);
  canvas.rendition.set_color({0x80000000}, true);
  draw(canvas, L"mmmmm", {5, 10, 0});
  EXPECT_NEAR(darkness(canvas.picture, 12, 9), 0.2, 0.01);
  Canvas invisible(40, 20);
  apply({4.9F}, invisible.rendition);
  invisible.rendition.set_color({0xFF000000}, true);
  draw(invisible, L"mmmmm", {5, 10, 0});
  EXPECT_EQ(ink_of(invisible.picture), 0);
}

TEST(RasterText, HugeLettersAreDrawnRight) {
  // An l is one upright bar; its middle and what is beside it, seen closely.
  Face face;
  const auto glyphs = face.shape(U"l");
  const auto size = 32767.0F;
  const LM_Contour_Set stem = face.outlines(glyphs, [&](double x, double y) -> LM_Point {
    return {static_cast<float>(x * size), static_cast<float>(-y * size), 0.0F};
  });
  const auto left = static_cast<std::int32_t>(stem->contour(0).points[0].x);
  Canvas canvas(40, 40);
  apply({size}, canvas.rendition);
  draw(canvas, L"l", {20 - left, 5000, 0});
  for (std::int32_t y = 0; y < 40; ++y) {
    EXPECT_EQ(darkness(canvas.picture, 10, y), 0);
    EXPECT_EQ(darkness(canvas.picture, 30, y), 1);
  }
}

TEST(RasterText, ExtremeNumbersAreNoHarm) {
  constexpr float infinity = std::numeric_limits<float>::infinity();
  constexpr float nan = std::numeric_limits<float>::quiet_NaN();
  const float numbers[] = {0, 1e-30F, 7, -7, 32767, -32767, 1e10F, 3e38F, infinity, -infinity, nan};
  const std::int32_t places[] = {INT32_MIN, -3, 10, INT32_MAX};
  for (const float size : numbers) {
    for (const float scale : numbers) {
      for (int i = 0; i < 16; ++i) {
        Canvas canvas(20, 20);
        apply({size, static_cast<float>(i), scale}, canvas.rendition);
        draw(canvas, L"@g", {places[i % 4], places[i / 4], 0});
        if (!std::isfinite(size) || !std::isfinite(scale)) {
          EXPECT_EQ(ink_of(canvas.picture), 0);
        }
      }
    }
  }
  Canvas empty(0, 0);
  apply({}, empty.rendition);
  draw(empty, L"nothing", {0, 0, 0});
  Canvas canvas(20, 20);
  apply({}, canvas.rendition);
  canvas.device.draw_text(&canvas.rendition, {0, 10, 0}, L"x", INT32_MIN);
  EXPECT_EQ(ink_of(canvas.picture), 0);
}

TEST(RasterText, OfOneByteEachIsTheSameText) {
  Canvas wide(60, 30);
  Canvas narrow(60, 30);
  apply({}, wide.rendition);
  apply({}, narrow.rendition);
  draw(wide, L"Text", {3, 20, 0});
  narrow.device.draw_text(&narrow.rendition, {3, 20, 0},
                          reinterpret_cast<const unsigned char*>("Text"), 4);
  EXPECT_TRUE(wide.picture == narrow.picture);
  EXPECT_GT(ink_of(wide.picture), 0);
}

}  // namespace
