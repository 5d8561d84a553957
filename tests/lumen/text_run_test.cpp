#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <numeric>

#include "lumen/fonts.h"
#include "tests/lumen/reference_text.h"

using reference_text::Extent;
using reference_text::Face;
using reference_text::utf16;
using testing::Each;
using testing::FloatNear;

namespace {

constexpr float close = 1e-6F;

TEST(TextRun, LettersAreAsWideAsTheFontSays) {
  Face face;
  for (const char32_t letter : std::u32string(U"iMx0\u00C4\u0416\u03A9\u2260")) {
    const Extent extent(utf16({letter}));
    EXPECT_THAT(extent.widths, Each(FloatNear(static_cast<float>(face.advance(letter)), close)));
  }
}

TEST(TextRun, KerningBringsLettersTogether) {
  Face face;
  const Extent extent(L"AVAToTe");
  EXPECT_NEAR(extent.advance(), total(face.shape(U"AVAToTe")), close);
  double apart = 0;
  for (const char32_t letter : std::u32string(U"AVAToTe")) apart += face.advance(letter);
  EXPECT_LT(extent.advance(), apart - 0.1);
  EXPECT_NEAR(std::accumulate(extent.widths.begin(), extent.widths.end(), 0.0), extent.advance(),
              1e-5);
}

TEST(TextRun, LettersOfALigatureShareItsWidth) {
  Face face;
  const auto glyphs = face.shape(U"ffi");
  ASSERT_EQ(glyphs.size(), 1U);
  const Extent extent(L"ffi");
  EXPECT_THAT(extent.widths, Each(FloatNear(static_cast<float>(glyphs[0].advance / 3), close)));
}

TEST(TextRun, MarksShareTheWidthOfTheirLetter) {
  Face face;
  const Extent extent(L"xq\u0323\u030Bx");
  const auto third = static_cast<float>(face.advance('q') / 3);
  EXPECT_NEAR(extent.widths[0], face.advance('x'), close);
  for (const std::size_t i : {1U, 2U, 3U}) EXPECT_NEAR(extent.widths[i], third, close);
  EXPECT_NEAR(extent.widths[4], face.advance('x'), close);
}

TEST(TextRun, UnitsOfASurrogatePairShareItsWidth) {
  Face face;
  const Extent extent(utf16(U"a\U0001D538"));
  ASSERT_EQ(extent.widths.size(), 3U);
  EXPECT_NEAR(extent.widths[1], face.advance(0x1D538) / 2, close);
  EXPECT_EQ(extent.widths[1], extent.widths[2]);
}

TEST(TextRun, WhatIsNoCharacterIsAReplacementCharacter) {
  Face face;
  const auto mark = static_cast<float>(face.advance(0xFFFD));
  for (const wchar_t unit : {0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x110000, -1}) {
    const Extent extent({L'i', unit, L'i'});
    EXPECT_NEAR(extent.widths[1], mark, close) << static_cast<int>(unit);
    EXPECT_NEAR(extent.widths[2], face.advance('i'), close) << static_cast<int>(unit);
  }
  EXPECT_THAT(Extent({wchar_t{0xDC00}, wchar_t{0xD800}}).widths, Each(FloatNear(mark, close)));
}

TEST(TextRun, ControlCharactersTakeNoRoomAndATabIsABlank) {
  Face face;
  const Extent extent(L"i\n\r\x01\x7F\u0085\u2028\u2029\ti");
  for (std::size_t i = 1; i < 8; ++i) EXPECT_EQ(extent.widths[i], 0) << i;
  EXPECT_NEAR(extent.widths[8], face.advance(' '), close);
  EXPECT_NEAR(extent.advance(), 2 * face.advance('i') + face.advance(' '), close);
}

TEST(TextRun, WidthsAreInTheOrderOfTheString) {
  Face face;
  const std::u32string hebrew = U"\u05D5\u05E9\u05D9";  // a narrow, a wide and a narrower one
  const Extent extent(utf16(hebrew));
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(extent.widths[i], face.advance(hebrew[i]), close);
  EXPECT_GT(extent.widths[1], extent.widths[0]);
}

TEST(TextRun, ArabicLettersJoin) {
  Face face;
  const std::u32string word = U"\u0639\u0639\u0639";
  const double joined = total(face.shape(word, true));
  EXPECT_GT(std::abs(joined - 3 * face.advance(0x639)), 0.05);
  EXPECT_NEAR(Extent(utf16(word)).advance(), joined, close);
}

TEST(TextRun, NumbersWithinRightToLeftTextKeepTheirWidths) {
  Face face;
  const std::u32string text = U"a \u05E9\u05DC 12 \u05DD";
  const Extent extent(utf16(text));
  for (std::size_t i = 0; i < text.size(); ++i) {
    EXPECT_NEAR(extent.widths[i], face.advance(text[i]), close) << i;
  }
}

TEST(TextRun, EndsAtAZeroOrAtItsCount) {
  EXPECT_EQ(Extent({L'a', 0, L'b'}).advance(), Extent(L"a").advance());
  EXPECT_EQ(lumen::measure_text({}, L"ab", 1).advance, Extent(L"a").advance());
  for (const std::int32_t count : {0, -1, INT32_MIN}) {
    EXPECT_EQ(lumen::measure_text({}, L"ab", count).advance, 0) << count;
  }
  EXPECT_EQ(lumen::measure_text({}, L"ab", INT32_MAX).advance, Extent(L"ab").advance());
  EXPECT_EQ(lumen::measure_text({}, nullptr, 5).advance, 0);
}

TEST(TextRun, WidthsPastTheEndAreLeftAlone) {
  const wchar_t text[] = {L'a', 0, L'b'};
  float widths[3] = {-1, -1, -1};
  LM_Text_Extent extent{widths};
  LM_Rendition rendition;
  rendition.set_text_size(10);
  LM_Point corners[4];
  lumen::TextRenderer().text_extent(&rendition, {0, 0, 0}, text, 3, corners, true, extent);
  EXPECT_GT(widths[0], 0);
  EXPECT_EQ(widths[1], -1);
  EXPECT_EQ(widths[2], -1);
}

TEST(TextRun, MultibyteTextHasAWidthPerCharacter) {
  Face face;
  const std::string before = std::setlocale(LC_CTYPE, nullptr);
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  const auto* text = reinterpret_cast<const unsigned char*>("a\xC3\xA9\xF0\x9D\x94\xB8\xFFi");
  std::vector<float> widths(6, -1.0F);
  LM_Text_Extent extent{widths.data()};
  LM_Rendition rendition;
  rendition.set_text_size(1);
  LM_Point corners[4];
  lumen::TextRenderer().text_extent(&rendition, {0, 0, 0}, text, 6, corners, true, extent);
  std::setlocale(LC_CTYPE, before.c_str());

  std::size_t i = 0;
  for (const char32_t character : {U'a', U'\u00E9', U'\U0001D538', U'\uFFFD', U'i'}) {
    EXPECT_NEAR(widths[i++], face.advance(character), close) << i;
  }
  EXPECT_EQ(widths[5], -1);
}

TEST(TextRun, ManyTextsAreEachMeasuredRight) {
  // More than are kept from one use to the next, long ones among them.
  Face face;
  const double digit = face.advance('0');
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < 12'000; ++i) {
      const std::wstring text = std::to_wstring(1'000'000 + i);
      ASSERT_NEAR(lumen::measure_text({}, text.data(), 7).advance, 7 * digit, 1e-5);
    }
    const std::wstring longer(100'000, L'7');
    ASSERT_NEAR(lumen::measure_text({}, longer.data(), 100'000).advance, 100'000 * digit, 0.1);
  }
}

TEST(TextRun, MeasuresAreThoseOfTheFont) {
  Face face;
  const lumen::TextMeasure measure = lumen::measure_text({}, L"x", 1);
  EXPECT_NEAR(measure.ascent, face.ascent(), close);
  EXPECT_NEAR(measure.descent, face.descent(), close);
  EXPECT_NEAR(measure.cap_height, face.height('H'), close);
}

}  // namespace
