#include "displaylist/drawables/variants.h"

#include <gtest/gtest.h>

#include <typeinfo>

#include "displaylist/text/encoded_text.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/probe_info.h"
#include "tests/text/texts.h"

// Hidden and palettized texts, and copies of all.

namespace {

using namespace texts;
using Hidden = DL::HiddenDrawable<DL::DLText>;
using Palettized = DL::PalettizedDrawable<DL::DLText>;
using HiddenPalettized = DL::HiddenDrawable<Palettized>;

/// What a text is, asked of the object.
template <class Class>
bool is_a(const DL::Drawable& drawable) {
  return typeid(drawable) == typeid(Class);
}

struct TextVariants : testing::Test, FakeList {
  std::vector<std::string> drawn(DL::Drawable& drawable) {
    drawable.draw_unclipped(list);
    drawable.draw_clipped(list);
    return renderer->take_operations();
  }
};

const std::vector<std::string> kDrawn = {"resolve", "draw", "resolve", "draw"};

// --- Made and asked in one function, so that the optimiser sees all of it -----

TEST_F(TextVariants, TextMadeOfARenditionIsPalettizedFromTheStart) {
  const Setting s;
  LM_Rendition own;
  auto* wide =
      new DL::DLText(&own, s.font, s.position, L"ab", 2, 12.0, 0.0, s.bounds, nullptr, true);
  EXPECT_TRUE(wide->is_palettized());
  EXPECT_FALSE(wide->is_hidden());
  EXPECT_EQ(wide->rendition(list), &own);
  EXPECT_TRUE(is_a<Palettized>(*wide));
  delete wide;
  auto* multibyte =
      new DL::DLText(&own, s.font, s.position, "ab", 2, 12.0, 0.0, s.bounds, nullptr, false);
  EXPECT_TRUE(multibyte->is_palettized());
  EXPECT_EQ(multibyte->rendition(list), &own);
  EXPECT_TRUE(is_a<Palettized>(*multibyte));
  delete multibyte;
  auto* empty = new DL::DLText(&own);
  EXPECT_TRUE(empty->is_palettized());
  EXPECT_EQ(empty->rendition(list), &own);
  EXPECT_TRUE(is_a<Palettized>(*empty));
  delete empty;
}

TEST_F(TextVariants, TextMadeOfARenditionIsHiddenAsAPalettizedOne) {
  const Setting s;
  LM_Rendition own;
  auto* text =
      new DL::DLText(&own, s.font, s.position, L"ab", 2, 12.0, 0.0, s.bounds, nullptr, true);
  text->hide();
  EXPECT_TRUE(text->is_hidden());
  EXPECT_TRUE(text->is_palettized());
  text->unhide();
  EXPECT_FALSE(text->is_hidden());
  EXPECT_TRUE(text->is_palettized());
  auto* copy = text->clone();
  EXPECT_TRUE(copy->is_palettized());
  EXPECT_EQ(copy->rendition(list), &own);
  delete copy;
  delete text;
}

TEST_F(TextVariants, PlainTextIsSeenToBeHidden) {
  const Setting s;
  auto* text =
      new DL::DLText(kColor, s.font, s.position, L"ab", 2, 12.0, 0.0, s.bounds, nullptr, true);
  EXPECT_FALSE(text->is_palettized());
  EXPECT_EQ(text->rendition(list), &list.m_rendition);
  text->hide();
  EXPECT_TRUE(text->is_hidden());
  EXPECT_TRUE(drawn(*text).empty());
  text->unhide();
  EXPECT_FALSE(text->is_hidden());
  EXPECT_EQ(drawn(*text), kDrawn);
  delete text;
}

TEST_F(TextVariants, TextMadeAsItsVariantIsThat) {
  const Setting s;
  LM_Rendition own;
  const std::unique_ptr<Palettized> text(
      new Palettized(&own, s.font, s.position, L"ab", 2, 12.0, 0.0, s.bounds, s.list, true));
  EXPECT_TRUE(text->is_palettized());
  EXPECT_EQ(text->rendition(list), &own);
  EXPECT_EQ(text->text()->length(), 2);
}

// --- Hidden -----------------------------------------------------------------------

TEST_F(TextVariants, HiddenDrawsNothingButItsSelection) {
  const auto text = wide_text(L"ab");
  text->hide();
  EXPECT_TRUE(drawn(*text).empty());
  text->draw_unclipped_selection(list);
  text->draw_clipped_selection(list);
  EXPECT_EQ(renderer->take_operations(),
            (std::vector<std::string>{"polygon_unclipped", "polygon_clipped"}));
}

TEST_F(TextVariants, HidingKeepsTheFieldsAndTheOtherOperations) {
  const auto text = wide_text(L"ab", {.rotation = 0.5});
  const DL::EncodedText* string = text->text();
  const LM_Font* font = text->get_font();
  ProbeInfo info(true);
  text->set_drawable_info(&info);
  DL::DLText* const hidden = text.get();
  hidden->hide();
  EXPECT_TRUE(is_a<Hidden>(*hidden));
  EXPECT_EQ(hidden->text(), string);
  EXPECT_EQ(hidden->get_font(), font);
  EXPECT_EQ(hidden->get_position(), (Position{10, 20}));
  EXPECT_EQ(hidden->rotation(), 0.5);
  EXPECT_EQ(hidden->bounds(), (LogicalBounds{10, 20, 60, 40}));
  EXPECT_EQ(hidden->drawable_info(), &info);
  EXPECT_EQ(hidden->type(), DL::DLText::my_type());
  EXPECT_EQ(hidden->height(list), 12);
  EXPECT_TRUE(hidden->set_text_attributes(list));
  EXPECT_EQ(attributes().size, 12.0F);
  hidden->set_text_string(L"other", 5, true);
  EXPECT_EQ(hidden->text()->length(), 5);
  hidden->unhide();
  EXPECT_TRUE(is_a<DL::DLText>(*hidden));
  EXPECT_EQ(drawn(*hidden), kDrawn);
}

TEST_F(TextVariants, HiddenPalettizedBecomesPalettizedAgain) {
  LM_Rendition own;
  const auto text = palettized_text(&own, L"ab");
  text->hide();
  EXPECT_TRUE(is_a<HiddenPalettized>(*text));
  EXPECT_TRUE(drawn(*text).empty());
  EXPECT_EQ(text->rendition(list), &own);
  text->unhide();
  EXPECT_TRUE(is_a<Palettized>(*text));
  EXPECT_EQ(drawn(*text), kDrawn);
}

// --- Copies -----------------------------------------------------------------------

TEST_F(TextVariants, CloneIsOfTheSameVariant) {
  LM_Rendition own;
  const auto plain = wide_text(L"ab");
  const auto palettized = palettized_text(&own, L"ab");
  const auto copy_of = [](DL::Drawable& text) {
    return std::unique_ptr<DL::Drawable>(text.clone());
  };
  EXPECT_TRUE(is_a<DL::DLText>(*copy_of(*plain)));
  EXPECT_TRUE(is_a<Palettized>(*copy_of(*palettized)));
  EXPECT_EQ(copy_of(*palettized)->rendition(list), &own);
  plain->hide();
  palettized->hide();
  EXPECT_TRUE(is_a<Hidden>(*copy_of(*plain)));
  EXPECT_TRUE(is_a<HiddenPalettized>(*copy_of(*palettized)));
  EXPECT_EQ(copy_of(*palettized)->rendition(list), &own);
}

TEST_F(TextVariants, CloneHasTheSameFieldsAStringOfItsOwnAndTheSameFont) {
  FakeList other;
  const auto text = wide_text(L"ab", {.height = 7.0, .rotation = 0.5, .list = &other.list});
  DL::DLDot neighbour({1}, {1, 2});
  ProbeInfo info(true);
  text->m_pNext = &neighbour;
  text->set_drawable_info(&info);
  const std::unique_ptr<DL::DLText> copy(static_cast<DL::DLText*>(text->clone()));
  EXPECT_EQ(copy->m_pNext, nullptr);
  EXPECT_EQ(copy->drawable_info(), nullptr);
  EXPECT_TRUE(copy->m_colorData == text->m_colorData);
  EXPECT_EQ(copy->get_position(), text->get_position());
  EXPECT_EQ(copy->height(list), 7);
  EXPECT_EQ(copy->rotation(), 0.5);
  EXPECT_EQ(copy->bounds(), text->bounds());
  EXPECT_NE(copy->get_font(), text->get_font());
  EXPECT_EQ(*copy->get_font(), *text->get_font());
  EXPECT_NE(copy->text(), text->text());
  EXPECT_EQ(*copy->text() == *text->text(), 1);
  Position box[4];
  copy->get_text_bbox(box);
  EXPECT_EQ(other.renderer->calls.size(), 1U) << "measured through the same list";
}

TEST_F(TextVariants, CloneOutlivesTheText) {
  auto text = wide_text(L"ab");
  const std::unique_ptr<DL::Drawable> copy(text->clone());
  text.reset();
  EXPECT_EQ(drawn(*copy), kDrawn);
}

TEST_F(TextVariants, CloneOfABareTextIsBare) {
  DL::DLText bare(kColor);
  const std::unique_ptr<DL::DLText> copy(static_cast<DL::DLText*>(bare.clone()));
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->get_font(), nullptr);
  EXPECT_EQ(copy->text(), nullptr);
  EXPECT_EQ(copy->bounds(), LogicalBounds{});
}

TEST_F(TextVariants, CloneKeepsAll64BitsOfTheColorData) {
  const auto text = wide_text(L"ab");
  text->m_colorData.m_pRendition =
      reinterpret_cast<LM_Rendition*>(std::uintptr_t{0x123456789ABCDEF0});
  const std::unique_ptr<DL::Drawable> copy(text->clone());
  EXPECT_TRUE(copy->m_colorData == text->m_colorData);
}

TEST_F(TextVariants, CloneSharesTheFontByCount) {
  const LM_Font font = font_named(L"Abc");
  auto text = wide_text(L"ab", {.font = font});
  std::unique_ptr<DL::Drawable> copy(text->clone());
  text.reset();
  EXPECT_TRUE(font.data()->is_shared());
  copy.reset();
  EXPECT_FALSE(font.data()->is_shared());
}

TEST_F(TextVariants, CloneIsNullWhereverMemoryRunsOut) {
  LM_Rendition own;
  const LM_Font font = font_named(L"Abc");
  for (const bool hidden : {false, true}) {
    for (const bool palettized : {false, true}) {
      const auto text = palettized ? palettized_text(&own, L"ab", {.font = font})
                                   : wide_text(L"ab", {.font = font});
      if (hidden) text->hide();
      for (std::int64_t good_requests = 0; good_requests < 4; ++good_requests) {
        const FailingDefaultHeap failing(good_requests);
        EXPECT_EQ(text->clone(), nullptr) << good_requests;
      }
      const FailingDefaultHeap failing(4);
      const std::unique_ptr<DL::Drawable> copy(text->clone());
      EXPECT_NE(copy, nullptr);
    }
  }
  EXPECT_FALSE(font.data()->is_shared()) << "no half copy is left";
}

TEST_F(TextVariants, CloneOfATextWithoutAStringIsNullWithoutMemoryForTheFont) {
  const LM_Font font = font_named(L"Abc");
  std::unique_ptr<DL::DLText> text;
  {
    const FailingDefaultHeap failing(2);  // for the text and its font
    text = wide_text(L"ab", {.font = font});
  }
  ASSERT_EQ(text->text(), nullptr);
  {
    const FailingDefaultHeap failing(1);
    EXPECT_EQ(text->clone(), nullptr);
  }
  const std::unique_ptr<DL::Drawable> copy(text->clone());
  EXPECT_NE(copy, nullptr);
}

TEST_F(TextVariants, CannotBeSplit) {
  LM_Rendition own;
  EXPECT_EQ(wide_text(L"ab")->partial_clone(0, 1), nullptr);
  EXPECT_EQ(palettized_text(&own, L"ab")->partial_clone(0, 1), nullptr);
}

TEST_F(TextVariants, PalettizedGivesItsFontBackToo) {
  LM_Rendition own;
  const LM_Font font = font_named(L"Abc");
  palettized_text(&own, L"ab", {.font = font}).reset();
  EXPECT_FALSE(font.data()->is_shared());
}

}  // namespace
