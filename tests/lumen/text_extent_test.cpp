#include <gtest/gtest.h>

#include <limits>

#include "tests/lumen/reference_text.h"

using reference_text::Face;
using reference_text::length;

namespace {

struct Box {
  LM_Point corners[4];
};

Box box_of(const LM_Rendition& rendition, const LM_DCI_Point& start, const std::wstring& text) {
  Box box{};
  LM_Rendition copy = rendition;
  LM_Text_Extent extent;
  lumen::TextRenderer().text_extent(&copy, start, text.data(), length(text), box.corners, true,
                                    extent);
  return box;
}

void expect_point(const LM_Point& point, double x, double y) {
  EXPECT_NEAR(point.x, x, 1e-3);
  EXPECT_NEAR(point.y, y, 1e-3);
  EXPECT_EQ(point.z, 0);
}

TEST(TextExtent, IsTheBoxFromDescentToAscent) {
  Face face;
  LM_Rendition rendition;
  rendition.set_text_size(20);
  const Box box = box_of(rendition, {100, 50, 0}, L"mm");
  const double end = 100 + 2 * face.advance('m') * 20;
  expect_point(box.corners[0], 100, 50 + face.descent() * 20);
  expect_point(box.corners[1], end, 50 + face.descent() * 20);
  expect_point(box.corners[2], end, 50 - face.ascent() * 20);
  expect_point(box.corners[3], 100, 50 - face.ascent() * 20);
}

TEST(TextExtent, TurnsWithTheTextDownwardsForPositiveSizes) {
  Face face;
  const double advance = face.advance('m') * 20;
  for (const float size : {20.0F, -20.0F}) {
    for (const float angle : {0.4F, 1.5707964F, 3.0F, 5.0F}) {
      LM_Rendition rendition;
      rendition.set_text_size(size);
      rendition.set_text_rotation(angle);
      const Box box = box_of(rendition, {7, -9, 0}, L"m");
      const double x = std::cos(angle);
      const double y = size > 0 ? std::sin(angle) : -std::sin(angle);
      const double up = face.ascent() * 20;
      const double down = face.descent() * 20;
      // Up is the left of the direction where y runs down.
      expect_point(box.corners[0], 7 - y * down, -9 + x * down);
      expect_point(box.corners[1], 7 + x * advance - y * down, -9 + y * advance + x * down);
      expect_point(box.corners[2], 7 + x * advance + y * up, -9 + y * advance - x * up);
      expect_point(box.corners[3], 7 + y * up, -9 - x * up);
    }
  }
}

TEST(TextExtent, WidthScaleStretchesAlongTheTextOnly) {
  LM_Rendition rendition;
  rendition.set_text_size(20);
  const Box plain = box_of(rendition, {0, 0, 0}, L"wide");
  rendition.set_text_width_scale(2);
  const Box wide = box_of(rendition, {0, 0, 0}, L"wide");
  EXPECT_FLOAT_EQ(wide.corners[2].x, 2 * plain.corners[2].x);
  EXPECT_EQ(wide.corners[2].y, plain.corners[2].y);
  float widths[4];
  LM_Text_Extent extent{widths};
  LM_Point corners[4];
  lumen::TextRenderer().text_extent(&rendition, {0, 0, 0}, L"wide", 4, corners, true, extent);
  EXPECT_NEAR(widths[0] + widths[1] + widths[2] + widths[3], wide.corners[1].x, 1e-3);
}

TEST(TextExtent, OfNoTextIsALineOfNoLength) {
  Face face;
  LM_Rendition rendition;
  rendition.set_text_size(10);
  const Box box = box_of(rendition, {3, 4, 0}, L"");
  expect_point(box.corners[1], 3, 4 + face.descent() * 10);
  EXPECT_EQ(box.corners[0], box.corners[1]);
  EXPECT_EQ(box.corners[2], box.corners[3]);
}

TEST(TextExtent, WhatIsNotFiniteIsOnTheStart) {
  constexpr float nan = std::numeric_limits<float>::quiet_NaN();
  constexpr float infinity = std::numeric_limits<float>::infinity();
  const LM_DCI_Point start{INT32_MIN, INT32_MAX, 0};
  for (const auto& [size, scale] : {std::pair{nan, 1.0F},
                                    {infinity, 1.0F},
                                    {-infinity, 1.0F},
                                    {10.0F, nan},
                                    {10.0F, infinity}}) {
    LM_Rendition rendition;
    rendition.set_text_size(size);
    rendition.set_text_width_scale(scale);
    const Box box = box_of(rendition, start, L"text");
    for (const LM_Point& corner : box.corners) {
      EXPECT_EQ(corner.x, -2147483648.0F);
      EXPECT_EQ(corner.y, 2147483648.0F);
    }
  }
}

TEST(TextExtent, StaysFiniteAtAnySize) {
  LM_Rendition rendition;
  rendition.set_text_size(-std::numeric_limits<float>::max());
  rendition.set_text_width_scale(std::numeric_limits<float>::max());
  rendition.set_text_rotation(1);
  for (const LM_Point& corner : box_of(rendition, {0, 0, 0}, L"text").corners) {
    EXPECT_TRUE(std::isfinite(corner.x) && std::isfinite(corner.y));
  }
}

TEST(GlyphOutline, HoldsTheInkOfTheCharacterInItsPlace) {
  Face face;
  LM_Rendition rendition;
  rendition.set_text_size(50);
  rendition.set_text_rotation(0.3F);
  rendition.set_text_width_scale(1.5F);
  for (const char32_t character : {U'&', U'\u0639', U'\U0001D538'}) {
    LM_Contour_Set outline;
    float advance = 0;
    lumen::TextRenderer().glyph_outline(character, &rendition, outline, advance);
    ASSERT_TRUE(outline);
    EXPECT_EQ(outline->fill_rule(), LM_Fill_Rule::non_zero);
    EXPECT_NEAR(advance, face.advance(character) * 75, 1e-3);
    const double x = std::cos(0.3F) * 50;
    const double y = std::sin(0.3F) * 50;
    const auto place = [&](double along, double up) -> LM_Point {
      return {static_cast<float>(along * 1.5 * x + up * y),
              static_cast<float>(along * 1.5 * y - up * x), 0.0F};
    };
    const LM_Contour_Set expected = face.outlines(face.shape({character}), place);
    int differences = 0;
    int inside = 0;
    for (double down = -70; down < 70; down += 0.5) {
      for (double right = -40; right < 110; right += 0.5) {
        inside += expected->point_inside(right, down) ? 1 : 0;
        differences += expected->point_inside(right, down) != outline->point_inside(right, down);
      }
    }
    EXPECT_GT(inside, 500);
    EXPECT_LT(differences, inside / 50);
  }
}

TEST(GlyphOutline, OfWhatLeavesNoInkIsNull) {
  constexpr float nan = std::numeric_limits<float>::quiet_NaN();
  LM_Rendition rendition;
  rendition.set_text_size(10);
  auto outline = LM_Create<LM_Contour_Set_Data>();
  float advance = -1;
  lumen::TextRenderer().glyph_outline(' ', &rendition, outline, advance);
  EXPECT_FALSE(outline);
  EXPECT_NEAR(advance, Face().advance(' ') * 10, 1e-4);
  for (const float size : {0.0F, nan}) {
    rendition.set_text_size(size);
    outline = LM_Create<LM_Contour_Set_Data>();
    lumen::TextRenderer().glyph_outline('x', &rendition, outline, advance);
    EXPECT_FALSE(outline);
    EXPECT_EQ(advance, 0);
  }
}

TEST(GlyphOutline, IsFiniteAndBoundedAtAnySize) {
  LM_Rendition rendition;
  for (const float size : {1e-30F, 3e4F, 3e38F}) {
    rendition.set_text_size(size);
    rendition.set_text_width_scale(size);
    for (const std::uint32_t character : {0x40U, 0xD800U, 0x10FFFFU, 0xFFFFFFFFU}) {
      LM_Contour_Set outline;
      float advance = 0;
      lumen::TextRenderer().glyph_outline(character, &rendition, outline, advance);
      EXPECT_TRUE(std::isfinite(advance));
      if (!outline) continue;
      std::int64_t points = 0;
      for (std::int32_t i = 0; i < outline->contour_count(); ++i) {
        const LM_Contour contour = outline->contour(i);
        points += contour.count;
        for (std::int32_t k = 0; k < contour.count; ++k) {
          ASSERT_TRUE(std::isfinite(contour.points[k].x) && std::isfinite(contour.points[k].y));
        }
      }
      EXPECT_LT(points, 100'000);
    }
  }
}

}  // namespace
