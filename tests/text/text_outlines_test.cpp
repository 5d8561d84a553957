#include <gtest/gtest.h>

#include <cmath>

#include "displaylist/platform/matrix.h"
#include "tests/support/temporary_locale.h"
#include "tests/text/texts.h"

// The outlines of single characters, where they are put, and how the pen moves.

namespace {

using namespace texts;

const Position kBox[] = {{0, 0}, {10, 0}, {10, 2}, {0, 2}};

/// One contour: a triangle.
LM_Contour_Set triangle() {
  const LM_Contour_Set set = LM_Create<LM_Contour_Set_Data>();
  const LM_Point points[] = {{0, 0, 0}, {4, 0, 0}, {0, 8, 0}};
  set->add_contour(points, 3);
  return set;
}

struct TextOutlines : testing::Test, FakeList {
  std::unique_ptr<DL::DLText> text_of(const std::wstring& string, Setting setting = {}) {
    setting.list = &list;
    return wide_text(string, setting);
  }
  void use_alternate_scale() {
    list.m_bAlternateScale = true;
    list.m_deviceScale = {4.0, -8.0};
    list.m_deviceOffset = {1000.0, 2000.0};
  }
  LM_Contour_Set contour_of(DL::DLText& text, std::int32_t index, const Position& origin = {0, 0}) {
    return text.get_character_contour(index, nullptr, origin, kBox, pen, matrix);
  }
  /// Where the matrix puts a point of the outline.
  [[nodiscard]] LM_Point placed(float x, float y) const {
    LM_Point point{x, y, 0.0F};
    matrix.transform(&point, 1);
    return point;
  }
  /// The characters that were asked for since the last call.
  std::vector<std::uint32_t> asked() {
    std::vector<std::uint32_t> characters;
    for (const TextCall& call : renderer->take_calls()) characters.push_back(call.character);
    return characters;
  }

  Position pen{-1, -1};
  LM_Matrix matrix;
};

TEST_F(TextOutlines, AreTheRenderersForTheCharacter) {
  renderer->outlines['b'] = triangle();
  const auto text = text_of(L"abc");
  EXPECT_EQ(contour_of(*text, 1), renderer->outlines['b']);
  EXPECT_FALSE(contour_of(*text, 2)) << "one that leaves no ink";
  EXPECT_EQ(asked(), (std::vector<std::uint32_t>{'b', 'c'}));
}

TEST_F(TextOutlines, OfMultibyteTextsAreByTheirCharacters) {
  const SelectedLocale locale("C.UTF-8");
  ASSERT_TRUE(locale.is_selected());
  const Setting s;
  DL::DLText text(kColor, s.font, s.position, "a\u3042z", 3, 12, 0, s.bounds, &list, false);
  for (const std::int32_t i : {0, 1, 2}) contour_of(text, i);
  EXPECT_EQ(asked(), (std::vector<std::uint32_t>{'a', 0x3042, 'z'}));
}

TEST_F(TextOutlines, OfASurrogatePairIsOneAtItsFirstHalf) {
  renderer->outlines[0x1F600] = triangle();
  renderer->advances[0x1F600] = 5.0F;
  const auto text = text_of({'a', wchar_t{0xD83D}, wchar_t{0xDE00}});
  EXPECT_TRUE(contour_of(*text, 1));
  EXPECT_EQ(pen, (Position{5, 0}));
  EXPECT_FALSE(contour_of(*text, 2, pen));
  EXPECT_EQ(pen, (Position{5, 0})) << "the second half takes no room";
  EXPECT_EQ(asked(), (std::vector<std::uint32_t>{0x1F600}));
}

TEST_F(TextOutlines, OfUnpairedSurrogatesAreAskedForAsTheyAre) {
  const auto text = text_of(
      {wchar_t{0xDE00}, wchar_t{0xD83D}, wchar_t{0xD83D}, 'a', wchar_t{0xDE00}, wchar_t{0xD83D}});
  for (std::int32_t i = 0; i < 6; ++i) contour_of(*text, i);
  EXPECT_EQ(asked(), (std::vector<std::uint32_t>{0xDE00, 0xD83D, 0xD83D, 'a', 0xDE00, 0xD83D}));
}

TEST_F(TextOutlines, AreUprightAndLeaveTheRotationAsItWas) {
  list.m_rendition.set_text_size(7.0F);
  list.m_rendition.set_text_rotation(1.5F);
  const auto text = text_of(L"a");
  text->rendition(list);
  const LM_Rendition shared = list.m_rendition;
  const std::uint64_t given_out = LUMEN.next_change_serial();
  contour_of(*text, 0);
  const TextCall& call = renderer->calls.at(0);
  EXPECT_EQ(call.attributes.rotation, 0.0F);
  EXPECT_EQ(call.attributes.size, 7.0F);
  EXPECT_EQ(call.attributes.font, *text->get_font());
  EXPECT_EQ(attributes().rotation, 1.5F);
  EXPECT_GT(attributes().change_serial, given_out);
  EXPECT_TRUE(list.m_rendition.shares_data_with(shared)) << "no clone was made";
}

TEST_F(TextOutlines, OfAnUprightTextLeaveTheAttributesAlone) {
  const auto text = text_of(L"a");
  contour_of(*text, 0);  // sets the font
  const std::uint64_t before = attributes().change_serial;
  const std::uint64_t data_before = list.m_rendition.change_serial();
  contour_of(*text, 0);
  EXPECT_EQ(attributes().change_serial, before);
  EXPECT_EQ(list.m_rendition.change_serial(), data_before);
}

TEST_F(TextOutlines, ArePlacedAtTheOriginOnTheDevice) {
  list.m_scale = {2.0, 3.0};
  list.m_offset = {100.5, 200.5};
  contour_of(*text_of(L"a"), 0, {10, 20});
  EXPECT_EQ(placed(0, 0), (LM_Point{120.5F, 260.5F, 0.0F})) << "not in whole units";
  EXPECT_EQ(placed(4, 8), (LM_Point{124.5F, 268.5F, 0.0F})) << "the outline is not scaled";
}

TEST_F(TextOutlines, ArePlacedByTheAlternateScaleWhereItIsInForce) {
  use_alternate_scale();
  contour_of(*text_of(L"a"), 0, {10, 20});
  EXPECT_EQ(placed(0, 0), (LM_Point{1040.0F, 1840.0F, 0.0F}));
}

TEST_F(TextOutlines, AreNotTurnedWithTheView) {
  list.m_bRotated = true;
  const double quarter_turn[6] = {1.0, -1.0, 100.0, 200.0, 0.0, 0.0};
  std::copy(quarter_turn, quarter_turn + 6, list.m_rotation);
  contour_of(*text_of(L"a"), 0, {10, 20});
  EXPECT_EQ(placed(1, 0), (LM_Point{11.0F, 20.0F, 0.0F}));
}

TEST_F(TextOutlines, AreTurnedByTheRotationOfTheText) {
  contour_of(*text_of(L"a", {.rotation = M_PI / 2}), 0, {10, 20});
  EXPECT_NEAR(placed(4, 0).x, 10.0F, 1e-5F);
  EXPECT_NEAR(placed(4, 0).y, 24.0F, 1e-5F);
  EXPECT_NEAR(placed(0, 8).x, 2.0F, 1e-5F);
  EXPECT_NEAR(placed(0, 8).y, 20.0F, 1e-5F);
}

TEST_F(TextOutlines, AreTurnedTheOtherWayInAnUpsideDownView) {
  list.m_scale.y = -1.0;
  contour_of(*text_of(L"a", {.rotation = M_PI / 2}), 0, {10, 20});
  EXPECT_NEAR(placed(4, 0).x, 10.0F, 1e-5F);
  EXPECT_NEAR(placed(4, 0).y, -24.0F, 1e-5F);
}

TEST_F(TextOutlines, FarOutAreClampedToTheSideOfX) {
  const auto text = text_of(L"a");
  const auto place_of = [&](const Position& origin) {
    contour_of(*text, 0, origin);
    return placed(0, 0);
  };
  EXPECT_EQ(place_of({2e15, -2e15}), (LM_Point{1e15F, 1e15F, 0.0F}));
  EXPECT_EQ(place_of({-2e15, 2e15}), (LM_Point{-1e15F, -1e15F, 0.0F}));
  EXPECT_EQ(place_of({5, -2e15}), (LM_Point{5.0F, 1e15F, 0.0F}));
  EXPECT_EQ(place_of({-5, 2e15}), (LM_Point{-5.0F, -1e15F, 0.0F}));
  EXPECT_EQ(place_of({0, 2e15}), (LM_Point{0.0F, -1e15F, 0.0F}));
  EXPECT_EQ(place_of({3e9, -3e9}), (LM_Point{3e9F, -3e9F, 0.0F})) << "beyond 32 bits";
}

TEST_F(TextOutlines, PenMovesAlongTheTextByTheLogicalAdvance) {
  renderer->advances['a'] = 6.0F;
  list.m_scale = {2.0, 3.0};
  list.m_offset = {1000.0, 2000.0};
  const auto text = text_of(L"a");
  contour_of(*text, 0, {10, 20});
  EXPECT_NEAR(pen.x, 13.0, 1e-5);
  EXPECT_EQ(pen.y, 20.0);
  const Position slanted[] = {{0, 0}, {3, 4}, {2, 5}, {-1, 1}};
  text->get_character_contour(0, nullptr, {10, 20}, slanted, pen, matrix);
  EXPECT_NEAR(pen.x, 10.0 + 3.0 * 0.6, 1e-5);
  EXPECT_NEAR(pen.y, 20.0 + 3.0 * 0.8, 1e-5);
}

TEST_F(TextOutlines, PenMovesByTheAdvanceAsItLiesOnTheDevice) {
  renderer->advances['a'] = 6.0F;
  list.m_scale = {2.0, 3.0};
  const double angle = 0.7;
  contour_of(*text_of(L"a", {.rotation = angle}), 0, {10, 20});
  const double length = std::hypot(6.0 * std::cos(angle) / 2.0, 6.0 * std::sin(angle) / 3.0);
  EXPECT_NEAR(pen.x, 10.0 + length, 1e-5);
  EXPECT_NEAR(pen.y, 20.0, 1e-5);
}

TEST_F(TextOutlines, PenMovesByTheAlternateScaleWhereItIsInForce) {
  use_alternate_scale();
  renderer->advances['a'] = 6.0F;
  contour_of(*text_of(L"a"), 0, {10, 20});
  EXPECT_NEAR(pen.x, 11.5, 1e-5);
}

TEST_F(TextOutlines, PenStaysWhereTheTextHasNoLength) {
  renderer->advances['a'] = 6.0F;
  const Position collapsed[4] = {{5, 5}, {5, 5}, {5, 5}, {5, 5}};
  text_of(L"a")->get_character_contour(0, nullptr, {10, 20}, collapsed, pen, matrix);
  EXPECT_EQ(pen, (Position{10, 20}));
}

TEST_F(TextOutlines, PenMayBeTheOriginItself) {
  renderer->advances['a'] = 6.0F;
  pen = {10, 20};
  text_of(L"a")->get_character_contour(0, nullptr, pen, kBox, pen, matrix);
  EXPECT_NEAR(pen.x, 16.0, 1e-5);
  EXPECT_EQ(placed(0, 0), (LM_Point{10.0F, 20.0F, 0.0F}));
}

TEST_F(TextOutlines, MatrixThatWasUsedBeforeStartsAnew) {
  matrix.rotate_z(1.0F);
  matrix.translate(7.0F, 8.0F, 9.0F);
  contour_of(*text_of(L"a"), 0, {10, 20});
  EXPECT_EQ(placed(1, 2), (LM_Point{11.0F, 22.0F, 0.0F}));
}

}  // namespace
