#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "displaylist/platform/matrix.h"
#include "displaylist/text/encoded_text.h"
#include "tests/support/temporary_locale.h"
#include "tests/text/texts.h"

// How a text measures itself: widths, boxes and outlines.

namespace {

using namespace texts;

struct TextMetrics : testing::Test, FakeList {
  std::unique_ptr<DL::DLText> text_of(const std::wstring& string, Setting setting = {}) {
    setting.list = &list;
    return wide_text(string, setting);
  }
  std::vector<float> widths_of(DL::DLText& text) {
    std::vector<float> widths(static_cast<std::size_t>(text.text()->length()), -1.0F);
    text.accumulated_normalized_widths(widths.data());
    return widths;
  }
  void use_alternate_scale() {
    list.m_bAlternateScale = true;
    list.m_deviceScale = {4.0, -8.0};
    list.m_deviceOffset = {1000.0, 2000.0};
  }
};

// --- Widths -------------------------------------------------------------------

TEST_F(TextMetrics, WidthsAccumulateToOne) {
  renderer->widths = {2.0F, 3.0F, 5.0F};
  const auto widths = widths_of(*text_of(L"abc"));
  ASSERT_EQ(widths.size(), 3U);
  EXPECT_FLOAT_EQ(widths[0], 0.2F);
  EXPECT_FLOAT_EQ(widths[1], 0.5F);
  EXPECT_EQ(widths[2], 1.0F);
}

TEST_F(TextMetrics, WidthOfOneCharacterIsOne) {
  renderer->widths = {8.0F};
  EXPECT_EQ(widths_of(*text_of(L"a")), std::vector<float>{1.0F});
}

TEST_F(TextMetrics, WidthsOfZeroStayZero) {
  renderer->widths = {0.0F, 0.0F, 0.0F};
  EXPECT_EQ(widths_of(*text_of(L"abc")), (std::vector<float>{0.0F, 0.0F, 0.0F}));
}

TEST_F(TextMetrics, CharactersBehindTheEndOfTheStringTakeNoRoom) {
  renderer->widths = {1.0F, 3.0F};  // of those that there are
  EXPECT_EQ(widths_of(*text_of(std::wstring(L"ab\0cd", 5))),
            (std::vector<float>{0.25F, 1.0F, 1.0F, 1.0F, 1.0F}));
}

TEST_F(TextMetrics, WidthsThatCancelOutAreNotDivided) {
  renderer->widths = {2.0F, -2.0F};
  EXPECT_EQ(widths_of(*text_of(L"ab")), (std::vector<float>{2.0F, 0.0F}));
}

TEST_F(TextMetrics, WidthsAreMultipliedByTheInverseInSinglePrecision) {
  renderer->widths = {1.0F, 2.0F, 46.0F};
  const float factor = 1.0F / 49.0F;
  EXPECT_EQ(widths_of(*text_of(L"abc")),
            (std::vector<float>{factor, 3.0F * factor, 49.0F * factor}));
}

TEST_F(TextMetrics, WidthsAreMeasuredAtTheRenderersSizeFromTheOrigin) {
  renderer->widths = {1.0F, 1.0F};
  list.m_rendition.set_text_size(7.0F);
  list.m_offset = {50.0, 60.0};
  const auto text = text_of(L"ab");
  widths_of(*text);
  const auto calls = renderer->take_calls();
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0].operation, "extent");
  EXPECT_EQ(calls[0].points, (std::vector<LM_DCI_Point>{{0, 0, 0}}));
  EXPECT_TRUE(calls[0].with_widths);
  EXPECT_EQ(calls[0].wide_text, L"ab");
  EXPECT_EQ(calls[0].count, 2);
  EXPECT_EQ(calls[0].attributes.size, 100.0F);
  EXPECT_EQ(calls[0].attributes.font, *text->get_font());
  EXPECT_EQ(calls[0].rendition, &list.m_rendition);
}

TEST_F(TextMetrics, WidthsOfMultibyteTextsAreMeasuredAsTheyAre) {
  renderer->widths = {1.0F, 3.0F};
  const auto text = multibyte_text("ab", {.list = &list});
  EXPECT_EQ(widths_of(*text), (std::vector<float>{0.25F, 1.0F}));
  EXPECT_FALSE(renderer->calls.at(0).wide);
  EXPECT_EQ(renderer->calls.at(0).multibyte_text, "ab");
}

TEST_F(TextMetrics, SizeIsAsBeforeWhenWidthsAreMeasured) {
  renderer->widths = {1.0F};
  list.m_rendition.set_text_size(7.0F);
  const LM_Rendition copy = list.m_rendition;
  const auto text = text_of(L"a");
  text->rendition(list);  // its colour, which clones
  const LM_Rendition shared = list.m_rendition;
  const std::uint64_t given_out = LUMEN.next_change_serial();
  widths_of(*text);
  EXPECT_EQ(attributes().size, 7.0F);
  EXPECT_GT(attributes().change_serial, given_out);
  EXPECT_GT(list.m_rendition.change_serial(), given_out);
  EXPECT_TRUE(list.m_rendition.shares_data_with(shared)) << "no clone was made";
  EXPECT_EQ(copy.text_attributes().size, 7.0F);
}

TEST_F(TextMetrics, WidthsAreMeasuredWithTheOwnRenditionOfAPalettizedText) {
  renderer->widths = {1.0F};
  LM_Rendition own;
  const auto text = palettized_text(&own, L"a", {.list = &list});
  widths_of(*text);
  EXPECT_EQ(renderer->calls.at(0).rendition, &own);
  EXPECT_EQ(own.text_attributes().font, *text->get_font());
  EXPECT_EQ(own.text_attributes().size, 0.0F);
}

// --- The box of a text ---------------------------------------------------------

TEST_F(TextMetrics, BoxHasTheRenderersCornersInLogicalUnits) {
  list.m_scale = {2.0, -4.0};
  list.m_offset = {100.0, 200.0};
  renderer->corners = {{{100, 200, 0}, {140, 200, 0}, {141, 192, 0}, {99, 192, 0}}};
  Position box[4];
  text_of(L"ab")->get_text_bbox(box);
  EXPECT_EQ(box[0], (Position{0.0, 0.0}));
  EXPECT_EQ(box[1], (Position{20.0, 0.0}));
  EXPECT_EQ(box[2], (Position{20.5, 2.0}));
  EXPECT_EQ(box[3], (Position{-0.5, 2.0}));
}

TEST_F(TextMetrics, BoxIsAskedForAtThePositionWithTheAttributesThatThereAre) {
  list.m_scale = {2.0, -3.0};
  list.m_offset = {0.9, -0.9};
  list.m_rendition.set_text_size(7.0F);
  list.m_rendition.set_text_rotation(1.0F);
  const auto text = text_of(L"ab");
  Position box[4];
  text->get_text_bbox(box);
  const auto calls = renderer->take_calls();
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0].operation, "extent");
  EXPECT_EQ(calls[0].points, (std::vector<LM_DCI_Point>{{20, -60, 0}})) << "truncated";
  EXPECT_FALSE(calls[0].with_widths);
  EXPECT_EQ(calls[0].wide_text, L"ab");
  EXPECT_EQ(calls[0].attributes.size, 7.0F);
  EXPECT_EQ(calls[0].attributes.rotation, 1.0F);
  EXPECT_EQ(calls[0].attributes.font, *text->get_font());
}

TEST_F(TextMetrics, BoxOfAMultibyteTextIsAskedForAsItIs) {
  Position box[4];
  multibyte_text("ab", {.list = &list})->get_text_bbox(box);
  EXPECT_EQ(renderer->calls.at(0).multibyte_text, "ab");
}

TEST_F(TextMetrics, BoxIsByTheAlternateScaleWhereItIsInForce) {
  use_alternate_scale();
  list.m_scale = {99.0, 99.0};
  list.m_deviceRatio = {99.0, 99.0};
  renderer->corners = {{{1000, 2000, 0}, {1004, 2000, 0}, {1004, 1992, 0}, {1000, 1992, 0}}};
  Position box[4];
  text_of(L"ab")->get_text_bbox(box);
  EXPECT_EQ(renderer->calls.at(0).points, (std::vector<LM_DCI_Point>{{1040, 1840, 0}}));
  EXPECT_EQ(box[2], (Position{1.0, 1.0}));
}

TEST_F(TextMetrics, BoxIsNotTurnedWithTheView) {
  list.m_bRotated = true;
  const double quarter_turn[6] = {1.0, -1.0, 100.0, 200.0, 0.0, 0.0};
  std::copy(quarter_turn, quarter_turn + 6, list.m_rotation);
  renderer->corners = {{{1, 2, 0}, {3, 4, 0}, {5, 6, 0}, {7, 8, 0}}};
  Position box[4];
  text_of(L"ab")->get_text_bbox(box);
  EXPECT_EQ(renderer->calls.at(0).points, (std::vector<LM_DCI_Point>{{10, 20, 0}}));
  EXPECT_EQ(box[3], (Position{7.0, 8.0}));
}

TEST_F(TextMetrics, StartOfABoxFarOutIsSaturatedToTheSideOfX) {
  Position box[4];
  text_of(L"a", {.position = {-3e9, 3e9}})->get_text_bbox(box);
  text_of(L"a", {.position = {5.0, -3e9}})->get_text_bbox(box);
  EXPECT_EQ(renderer->calls.at(0).points, (std::vector<LM_DCI_Point>{{INT32_MIN, INT32_MIN, 0}}));
  EXPECT_EQ(renderer->calls.at(1).points, (std::vector<LM_DCI_Point>{{5, INT32_MAX, 0}}));
}

// --- The box of a character -----------------------------------------------------

TEST_F(TextMetrics, CharacterBoxIsAPartOfTheTextsBox) {
  const auto text = text_of(L"abc");
  const float widths[] = {0.2F, 0.5F, 1.0F};
  const Position box[] = {{0, 0}, {10, 0}, {10, 2}, {0, 2}};
  Position corners[4];
  Position pen;
  text->get_character_bbox(1, widths, {100, 200}, box, corners, pen);
  EXPECT_NEAR(corners[0].x, 2.0, 1e-6);
  EXPECT_NEAR(corners[1].x, 5.0, 1e-6);
  EXPECT_NEAR(corners[2].x, 5.0, 1e-6);
  EXPECT_NEAR(corners[3].x, 2.0, 1e-6);
  EXPECT_EQ(corners[0].y, 0.0);
  EXPECT_EQ(corners[1].y, 0.0);
  EXPECT_EQ(corners[2].y, 2.0);
  EXPECT_EQ(corners[3].y, 2.0);
  EXPECT_NEAR(pen.x, 103.0, 1e-6);
  EXPECT_EQ(pen.y, 200.0);
  EXPECT_TRUE(renderer->calls.empty()) << "nothing is measured again";
}

TEST_F(TextMetrics, FirstCharacterBoxStartsWithTheText) {
  const float widths[] = {-1.0F, 0.25F, 1.0F};  // the first is before the array
  const Position box[] = {{0, 0}, {8, 0}, {8, 2}, {0, 2}};
  Position corners[4];
  Position pen;
  text_of(L"ab")->get_character_bbox(0, widths + 1, {0, 0}, box, corners, pen);
  EXPECT_EQ(corners[0], (Position{0, 0}));
  EXPECT_EQ(corners[1], (Position{2, 0}));
  EXPECT_EQ(corners[2], (Position{2, 2}));
  EXPECT_EQ(corners[3], (Position{0, 2}));
  EXPECT_EQ(pen, (Position{2, 0}));
}

TEST_F(TextMetrics, CharacterBoxesFollowARotatedBaseline) {
  const float widths[] = {0.25F, 0.5F, 1.0F};
  const Position box[] = {{1, 1}, {9, 9}, {7, 13}, {-1, 3}};
  Position corners[4];
  Position pen;
  text_of(L"abc")->get_character_bbox(2, widths, {5, 5}, box, corners, pen);
  EXPECT_EQ(corners[0], (Position{5, 5}));
  EXPECT_EQ(corners[1], (Position{9, 9}));
  EXPECT_EQ(corners[2], (Position{7, 13}));
  EXPECT_EQ(corners[3], (Position{3, 8}));
  EXPECT_EQ(pen, (Position{9, 9}));
}

TEST_F(TextMetrics, PenMayBeTheOriginItself) {
  const float widths[] = {0.5F, 1.0F};
  const Position box[] = {{0, 0}, {8, 0}, {8, 2}, {0, 2}};
  Position corners[4];
  Position pen{100, 50};
  text_of(L"ab")->get_character_bbox(1, widths, pen, box, corners, pen);
  EXPECT_EQ(pen, (Position{104, 50}));
}

// --- What cannot be measured ----------------------------------------------------

/// Every measuring operation answers with nothing.
void expect_nothing_to_measure(DL::DLText& text) {
  const std::int32_t length = text.text() == nullptr ? 0 : text.text()->length();
  std::vector<float> widths(static_cast<std::size_t>(std::max(length, 0)) + 1, -1.0F);
  text.accumulated_normalized_widths(widths.data());
  EXPECT_EQ(widths.back(), -1.0F) << "behind the last character";
  widths.pop_back();
  EXPECT_EQ(widths, std::vector<float>(widths.size(), 0.0F));
  Position box[4];
  text.get_text_bbox(box);
  for (const Position& corner : box) EXPECT_EQ(corner, text.get_position());
  Position pen;
  LM_Matrix matrix;
  matrix.translate(1.0F, 2.0F, 3.0F);
  EXPECT_FALSE(text.get_character_contour(0, widths.data(), {7, 8}, box, pen, matrix));
  EXPECT_EQ(pen, (Position{7, 8}));
  LM_Point point{1.0F, 2.0F, 3.0F};
  matrix.transform(&point, 1);
  EXPECT_EQ(point, (LM_Point{1.0F, 2.0F, 3.0F}));
}

TEST_F(TextMetrics, WithoutADisplayListOrARendererThereIsNothing) {
  expect_nothing_to_measure(*wide_text(L"abc"));
  list.m_pRenderer = nullptr;
  expect_nothing_to_measure(*text_of(L"abc"));
}

TEST_F(TextMetrics, WithoutFontOrCharactersThereIsNothing) {
  const SelectedLocale locale("C");
  DL::DLText bare(kColor);
  expect_nothing_to_measure(bare);
  expect_nothing_to_measure(*text_of(L""));
  const Setting s;
  DL::DLText unconverted(kColor, s.font, s.position, "\xC3\xBC", 2, 12, 0, s.bounds, &list, true);
  expect_nothing_to_measure(unconverted);
  EXPECT_TRUE(renderer->calls.empty());
}

TEST_F(TextMetrics, GoThroughTheListOfTheTextNotAnother) {
  FakeList other;
  renderer->widths = {1.0F};
  widths_of(*wide_text(L"a", {.list = &list}));
  EXPECT_EQ(renderer->calls.size(), 1U);
  EXPECT_TRUE(other.renderer->calls.empty());
}

}  // namespace
