#include "displaylist/text/text.h"

#include <gtest/gtest.h>

#include "displaylist/text/encoded_text.h"
#include "tests/text/texts.h"

// What a text is made of, its height on the device and its smallest one.

namespace {

using namespace texts;

std::wstring string_of(const DL::DLText& text) {
  return text.text()->unicodeString();
}

TEST(Text, HoldsWhatItWasConstructedWith) {
  const Setting setting{.rotation = 0.5};
  const auto text = wide_text(L"Hello", setting);
  EXPECT_EQ(text->get_position(), (Position{10.0, 20.0}));
  EXPECT_EQ(text->rotation(), 0.5);
  EXPECT_EQ(text->bounds(), (LogicalBounds{10, 20, 60, 40}));
  EXPECT_EQ(text->m_colorData.m_color, kColor);
  EXPECT_EQ(text->m_pNext, nullptr);
  EXPECT_EQ(text->drawable_info(), nullptr);
  ASSERT_NE(text->get_font(), nullptr);
  EXPECT_EQ(*text->get_font(), setting.font) << "the same font data";
  EXPECT_NE(text->get_font(), &setting.font) << "in a handle of its own";
  EXPECT_TRUE(text->text()->isUnicode());
  EXPECT_EQ(text->text()->length(), 5);
  EXPECT_EQ(string_of(*text), L"Hello");
}

TEST(Text, KeepsItsStringInTheEncodingThatIsAskedFor) {
  const Setting s;
  const DL::DLText narrow(kColor, s.font, s.position, L"Hello", 6, 1, 0, s.bounds, nullptr, false);
  EXPECT_FALSE(narrow.text()->isUnicode());
  EXPECT_EQ(narrow.text()->length(), 5) << "the terminator was counted";
  EXPECT_STREQ(reinterpret_cast<const char*>(narrow.text()->multiByteString()), "Hello");
  const DL::DLText wide(kColor, s.font, s.position, "Hello", 6, 1, 0, s.bounds, nullptr, true);
  EXPECT_TRUE(wide.text()->isUnicode());
  EXPECT_EQ(string_of(wide), L"Hello");
}

TEST(Text, WithoutAnythingHasNeitherFontNorStringAndEmptyBounds) {
  DL::DLText text(kColor);
  EXPECT_EQ(text.m_colorData.m_color, kColor);
  EXPECT_EQ(text.get_font(), nullptr);
  EXPECT_EQ(text.text(), nullptr);
  EXPECT_EQ(text.get_position(), (Position{0.0, 0.0}));
  EXPECT_EQ(text.rotation(), 0.0);
  EXPECT_EQ(text.bounds(), (LogicalBounds{INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN}));
  DL::DisplayList list;
  EXPECT_EQ(text.height(list), 0);
}

TEST(Text, SharesItsFontAndGivesItBack) {
  const LM_Font font = font_named(L"Abc");
  EXPECT_FALSE(font.data()->is_shared());
  auto text = wide_text(L"a", {.font = font});
  EXPECT_TRUE(font.data()->is_shared());
  text.reset();
  EXPECT_FALSE(font.data()->is_shared());
}

TEST(Text, OfAFontWithoutDataHasAHandleWithoutData) {
  const auto text = wide_text(L"a", {.font = LM_Font()});
  ASSERT_NE(text->get_font(), nullptr);
  EXPECT_EQ(text->get_font()->data(), nullptr);
}

TEST(Text, TakesAnotherStringAndKeepsEverythingElse) {
  const auto text = wide_text(L"Hello");
  LM_Font* font = text->get_font();
  text->set_text_string("other", 6, false);
  EXPECT_FALSE(text->text()->isUnicode());
  EXPECT_EQ(text->text()->length(), 5);
  EXPECT_STREQ(reinterpret_cast<const char*>(text->text()->multiByteString()), "other");
  text->set_text_string(L"wide", 4, true);
  EXPECT_EQ(string_of(*text), L"wide");
  text->set_text_string(L"narrow", 6, false);
  EXPECT_FALSE(text->text()->isUnicode());
  text->set_text_string("wide", 4, true);
  EXPECT_EQ(string_of(*text), L"wide");
  EXPECT_EQ(text->get_position(), (Position{10.0, 20.0}));
  EXPECT_EQ(text->bounds(), (LogicalBounds{10, 20, 60, 40}));
  EXPECT_EQ(text->get_font(), font);
}

TEST(Text, TakesAStringWhereItHadNone) {
  DL::DLText text(kColor);
  text.set_text_string(L"a", 1, true);
  EXPECT_EQ(string_of(text), L"a");
  text.set_text_string(static_cast<const char*>(nullptr), 7, true);
  ASSERT_NE(text.text(), nullptr);
  EXPECT_EQ(text.text()->length(), 0);
}

TEST(Text, RotationIsStoredAsItIs) {
  const auto text = wide_text(L"a");
  for (const double rotation : {1.5, -100.0, kInfinity, 0.0}) {
    text->set_rotation(rotation);
    EXPECT_EQ(text->rotation(), rotation);
  }
}

TEST(Text, IsTakenForADrawableWithVectors) {
  const auto text = wide_text(L"a");
  EXPECT_EQ(text->get_vector_count(), 1);
  EXPECT_TRUE(text->supports_fast_vector_iterator());
  DL::VectorTemplate<long> vector{{1, 2}, {3, 4}};
  EXPECT_FALSE(text->get_vector(0, vector));
  EXPECT_EQ(vector, (DL::VectorTemplate<long>{{1, 2}, {3, 4}}));
}

TEST(Text, HasATypeOfItsOwn) {
  const auto text = wide_text(L"a");
  EXPECT_EQ(text->type(), DL::DLText::my_type());
  EXPECT_EQ(DL::DLText::my_type(), &DL::DLText::_parent_type);
  EXPECT_EQ(DL::DLText::_parent_type, nullptr);
  EXPECT_TRUE(text->isKindOf(DL::DLText::my_type()));
  EXPECT_FALSE(text->isKindOf(DL::DLDot::my_type()));
}

// --- Height and greeking ------------------------------------------------------

TEST(Text, HeightIsInDeviceUnitsTowardZero) {
  DL::DisplayList list;
  list.m_scale = {1000.0, 0.499};
  EXPECT_EQ(wide_text(L"a", {.height = 10.0})->height(list), 4) << "4.99";
  EXPECT_EQ(wide_text(L"a", {.height = -10.0})->height(list), -4);
  EXPECT_EQ(wide_text(L"a", {.height = 0.0})->height(list), 0);
  list.m_scale.y = -0.499;
  EXPECT_EQ(wide_text(L"a", {.height = 10.0})->height(list), -4) << "upside down";
}

TEST(Text, HeightIsByTheScaleInForce) {
  DL::DisplayList list;
  list.m_scale = {2.0, 3.0};
  list.m_deviceScale = {20.0, 30.0};
  const auto text = wide_text(L"a", {.height = 10.0});
  EXPECT_EQ(text->height(list), 30);
  list.m_bAlternateScale = true;
  EXPECT_EQ(text->height(list), 300);
}

TEST(Text, HeightThatDoesNotFitIsTheLowestNumber) {
  DL::DisplayList list;
  for (const double height : {kNan, kInfinity, -kInfinity, 1e300, 2147483648.0, -2147483649.0}) {
    EXPECT_EQ(wide_text(L"a", {.height = height})->height(list), INT32_MIN) << height;
  }
  EXPECT_EQ(wide_text(L"a", {.height = 2147483647.9})->height(list), INT32_MAX);
}

TEST(Text, IsGreekedBelow5UnitsAndBelow75InTheAlternateScale) {
  const auto text = wide_text(L"a");
  EXPECT_EQ(text->greeking_height(false), 5);
  EXPECT_EQ(text->greeking_height(true), 75);
  EXPECT_TRUE(text->is_text_greeked(4, false));
  EXPECT_FALSE(text->is_text_greeked(5, false));
  EXPECT_TRUE(text->is_text_greeked(74, true));
  EXPECT_FALSE(text->is_text_greeked(75, true));
  EXPECT_TRUE(text->is_text_greeked(INT32_MIN, false));
}

TEST(Text, SubclassMayChangeTheGreekingHeight) {
  struct Small : DL::DLText {
    using DLText::DLText;
    std::int32_t greeking_height(bool alternate_scale) override { return alternate_scale ? 2 : 1; }
  };
  Small text(kColor);
  EXPECT_FALSE(text.is_text_greeked(1, false));
  EXPECT_TRUE(text.is_text_greeked(0, false));
  EXPECT_TRUE(text.is_text_greeked(1, true));
}

}  // namespace
