#include <gtest/gtest.h>

#include "displaylist/text/encoded_text.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/probe_info.h"
#include "tests/support/temporary_locale.h"
#include "tests/text/texts.h"

// How a text is handed to the renderer.

namespace {

using namespace texts;
using Operations = std::vector<std::string>;

struct TextDraw : testing::Test, FakeList {
  /// What was drawn: the calls of one draw, of which there are a look at the
  /// font and the text.
  TextCall draw(DL::Drawable& text) {
    renderer->take_calls();
    text.draw_clipped(list);
    const std::vector<TextCall> calls = renderer->take_calls();
    EXPECT_EQ(calls.size(), 2U);
    return calls.empty() ? TextCall{} : calls.back();
  }
  /// The device point of a text at a position.
  LM_DCI_Point start_of(const Position& position) {
    return draw(*wide_text(L"a", {.position = position})).points.at(0);
  }
  void turn(const double (&rotation)[6]) {
    list.m_bRotated = true;
    std::copy(rotation, rotation + 6, list.m_rotation);
  }
};

TEST_F(TextDraw, ResolvesTheFontAndDrawsTheWholeString) {
  const auto text = wide_text(L"Hello", {.rotation = 0.5});
  text->draw_clipped(list);
  const auto calls = renderer->take_calls();
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_EQ(calls[0].operation, "resolve");
  EXPECT_EQ(calls[0].font_name, L"Abc");
  EXPECT_EQ(calls[1].operation, "draw");
  EXPECT_EQ(calls[1].rendition, &list.m_rendition);
  EXPECT_EQ(calls[1].color, kColor);
  EXPECT_EQ(calls[1].points, (std::vector<LM_DCI_Point>{{10, 20, 0}}));
  EXPECT_TRUE(calls[1].wide);
  EXPECT_EQ(calls[1].wide_text, L"Hello");
  EXPECT_EQ(calls[1].count, 5);
  EXPECT_EQ(calls[1].attributes.size, 12.0F);
  EXPECT_EQ(calls[1].attributes.rotation, 0.5F);
  EXPECT_EQ(calls[1].attributes.width_scale, 1.0F);
  EXPECT_EQ(calls[1].attributes.font, *text->get_font());
}

TEST_F(TextDraw, DrawsMultibyteStringsAsTheyAre) {
  const TextCall call = draw(*multibyte_text("caf\xC3\xA9"));
  EXPECT_FALSE(call.wide);
  EXPECT_EQ(call.multibyte_text, "caf\xC3\xA9");
  EXPECT_EQ(call.count, 5);
}

TEST_F(TextDraw, CountsCharactersNotBytesNorUnits) {
  const SelectedLocale locale("C.UTF-8");
  ASSERT_TRUE(locale.is_selected());
  const Setting s;
  DL::DLText narrow(kColor, s.font, s.position, "\u3042z", 2, 12, 0, s.bounds, nullptr, false);
  EXPECT_EQ(draw(narrow).count, 2);
  DL::DLText wide(kColor, s.font, s.position, "\u3042z", 2, 12, 0, s.bounds, nullptr, true);
  EXPECT_EQ(draw(wide).count, 2);
}

TEST_F(TextDraw, UnclippedIsTheSameAsClipped) {
  list.m_rendition.set_clip_rectangle({0, 100, 0, 100});
  const auto inside = wide_text(L"ab", {.rotation = 1.0});
  const auto outside = wide_text(L"ab", {.position = {-500.0, 900.0}});
  for (const auto* text : {&inside, &outside}) {
    (*text)->draw_clipped(list);
    const auto clipped = renderer->take_calls();
    (*text)->draw_unclipped(list);
    const auto unclipped = renderer->take_calls();
    ASSERT_EQ(clipped.size(), 2U);
    ASSERT_EQ(unclipped.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
      EXPECT_EQ(unclipped[i].operation, clipped[i].operation);
      EXPECT_EQ(unclipped[i].rendition, clipped[i].rendition);
      EXPECT_EQ(unclipped[i].points, clipped[i].points);
      EXPECT_EQ(unclipped[i].wide_text, clipped[i].wide_text);
      EXPECT_EQ(unclipped[i].attributes.change_serial, i == 0 ? 0 : attributes().change_serial);
    }
  }
}

TEST_F(TextDraw, UnclippedIsTheClippedOneOfASubclass) {
  struct Noting : DL::DLText {
    using DLText::DLText;
    void draw_clipped(DL::DisplayList&) override { ++draws; }
    int draws = 0;
  };
  Noting text(kColor);
  text.draw_unclipped(list);
  EXPECT_EQ(text.draws, 1);
}

TEST_F(TextDraw, IsDrawnByItsDisplayList) {
  list.add(wide_text(L"ab").release());
  list.add(wide_text(L"cd").release());
  list.m_pRootGroup->draw_unclipped(list);
  const auto calls = renderer->take_calls();
  ASSERT_EQ(calls.size(), 4U);
  EXPECT_EQ(calls[1].wide_text, L"ab");
  EXPECT_EQ(calls[3].wide_text, L"cd");
}

TEST_F(TextDraw, IsNotDrawnWhileItsInfoForbidsIt) {
  auto* text = wide_text(L"ab").release();
  list.add(text);
  ProbeInfo info(false);
  text->set_drawable_info(&info);
  list.m_pRootGroup->draw_unclipped(list);
  EXPECT_TRUE(renderer->calls.empty());
  info.drawn = true;
  list.m_pRootGroup->draw_unclipped(list);
  EXPECT_EQ(renderer->take_operations(), (Operations{"resolve", "draw"}));
}

// --- Where it is drawn --------------------------------------------------------

TEST_F(TextDraw, PositionIsTruncatedTowardZero) {
  EXPECT_EQ(start_of({10.9, -10.9}), (LM_DCI_Point{10, -10, 0}));
  EXPECT_EQ(start_of({-0.9, 0.9}), (LM_DCI_Point{0, 0, 0}));
  EXPECT_EQ(start_of({-10.9, 10.9}), (LM_DCI_Point{-10, 10, 0}));
}

TEST_F(TextDraw, PositionIsScaledAndMovedByThePrimaryScale) {
  list.m_scale = {2.0, -3.0};
  list.m_offset = {100.5, 200.25};
  list.m_deviceScale = {7.0, 7.0};
  list.m_deviceOffset = {7.0, 7.0};
  list.m_deviceRatio = {7.0, 7.0};
  EXPECT_EQ(start_of({10.0, 20.0}), (LM_DCI_Point{120, 140, 0}));
}

TEST_F(TextDraw, PositionInTheAlternateScaleIsThePrimaryOneTimesTheRatio) {
  list.m_scale = {2.0, 3.0};
  list.m_offset = {1.0, 2.0};
  list.m_deviceScale = {99.0, 99.0};
  list.m_deviceOffset = {99.0, 99.0};
  list.m_deviceRatio = {10.0, 100.0};
  list.m_bAlternateScale = true;
  EXPECT_EQ(start_of({10.0, 20.0}), (LM_DCI_Point{210, 6200, 0}));
  EXPECT_EQ(start_of({10.03, 20.0}), (LM_DCI_Point{210, 6200, 0})) << "210.6";
}

TEST_F(TextDraw, PositionInATurnedViewGoesThroughTheWholeRotation) {
  turn({2.0, 3.0, 100.0, 200.0, 5.0, 7.0});
  list.m_scale = {99.0, 99.0};
  EXPECT_EQ(start_of({10.0, 20.0}), (LM_DCI_Point{50 + 60 + 100, 20 + 140 + 200, 0}));
  list.m_bAlternateScale = true;
  list.m_deviceRatio = {10.0, 100.0};
  EXPECT_EQ(start_of({10.0, 20.0}), (LM_DCI_Point{2100, 36000, 0}));
}

TEST_F(TextDraw, PositionFarOutIsSaturatedToTheSideOfXInBothCoordinates) {
  EXPECT_EQ(start_of({-3e9, 3e9}), (LM_DCI_Point{INT32_MIN, INT32_MIN, 0}));
  EXPECT_EQ(start_of({3e9, -3e9}), (LM_DCI_Point{INT32_MAX, INT32_MAX, 0}));
  EXPECT_EQ(start_of({3e9, 3e9}), (LM_DCI_Point{INT32_MAX, INT32_MAX, 0}));
  EXPECT_EQ(start_of({-3e9, -3e9}), (LM_DCI_Point{INT32_MIN, INT32_MIN, 0}));
  EXPECT_EQ(start_of({kInfinity, -kInfinity}), (LM_DCI_Point{INT32_MAX, INT32_MAX, 0}));
}

TEST_F(TextDraw, YFarOutIsSaturatedByTheSignOfAnXThatFits) {
  EXPECT_EQ(start_of({5.0, -3e9}), (LM_DCI_Point{5, INT32_MAX, 0}));
  EXPECT_EQ(start_of({-5.0, 3e9}), (LM_DCI_Point{-5, INT32_MIN, 0}));
  EXPECT_EQ(start_of({0.0, 3e9}), (LM_DCI_Point{0, INT32_MIN, 0})) << "0 is not above 0";
  EXPECT_EQ(start_of({3e9, 5.0}), (LM_DCI_Point{INT32_MAX, 5, 0}));
}

TEST_F(TextDraw, PositionAtTheLimitsIsKept) {
  EXPECT_EQ(start_of({2147483647.0, -2147483647.0}), (LM_DCI_Point{INT32_MAX, -INT32_MAX, 0}));
  EXPECT_EQ(start_of({-2147483648.0, 2147483647.0}), (LM_DCI_Point{INT32_MIN, INT32_MAX, 0}));
  EXPECT_EQ(start_of({-2147483647.5, 2147483646.5}), (LM_DCI_Point{INT32_MIN, INT32_MAX - 1, 0}));
}

TEST_F(TextDraw, PositionThatIsNoNumberIsTheLowestOne) {
  EXPECT_EQ(start_of({kNan, 5.0}), (LM_DCI_Point{INT32_MIN, 5, 0}));
  EXPECT_EQ(start_of({5.0, kNan}), (LM_DCI_Point{5, INT32_MIN, 0}));
  EXPECT_EQ(start_of({kNan, 3e9}), (LM_DCI_Point{INT32_MIN, INT32_MIN, 0}));
}

// --- What is not drawn --------------------------------------------------------

TEST_F(TextDraw, OfARefusedSizeOnlyLooksAtTheFont) {
  list.m_rendition.set_text_size(7.0F);
  for (const double height : {2e15, kInfinity}) {
    wide_text(L"ab", {.height = height})->draw_clipped(list);
    EXPECT_EQ(renderer->take_operations(), Operations{"resolve"});
    EXPECT_EQ(attributes().size, 7.0F);
    EXPECT_EQ(attributes().font.data(), nullptr);
  }
}

TEST_F(TextDraw, WhoseAttributesASubclassRefusesIsNotDrawn) {
  struct Refusing : DL::DLText {
    using DLText::DLText;
    bool set_text_attributes(DL::DisplayList&) override { return false; }
  };
  const Setting s;
  Refusing text(kColor, s.font, s.position, L"ab", 2, 12.0, 0.0, s.bounds, nullptr, true);
  text.draw_unclipped(list);
  EXPECT_EQ(renderer->take_operations(), Operations{"resolve"});
}

TEST_F(TextDraw, OfOddSizesAndRotationsIsDrawn) {
  for (const double odd : {0.0, -1.0, kNan, -kInfinity, 1e-320, 1e15}) {
    EXPECT_EQ(draw(*wide_text(L"a", {.height = odd})).operation, "draw") << odd;
    EXPECT_EQ(draw(*wide_text(L"a", {.rotation = odd})).operation, "draw") << odd;
  }
}

TEST_F(TextDraw, WithoutFontOrStringDrawsNothing) {
  DL::DLText(kColor).draw_clipped(list);
  EXPECT_TRUE(renderer->take_calls().empty());
  DL::DLText no_font(kColor);
  no_font.set_text_string(L"a", 1, true);
  no_font.draw_unclipped(list);
  EXPECT_TRUE(renderer->take_calls().empty());
}

TEST_F(TextDraw, WithoutCharactersDrawsNothing) {
  const SelectedLocale locale("C");
  const Setting s;
  const wchar_t* const none = nullptr;
  const auto draws = [&](const auto* string, std::int32_t length, bool unicode) {
    DL::DLText text(kColor, s.font, s.position, string, length, 12.0, 0.0, s.bounds, nullptr,
                    unicode);
    text.draw_clipped(list);
    const auto operations = renderer->take_operations();
    return std::count(operations.begin(), operations.end(), "draw");
  };
  EXPECT_EQ(draws(none, 5, true), 0);
  EXPECT_EQ(draws(L"abc", 0, true), 0);
  EXPECT_EQ(draws("abc", -1, false), 0);
  EXPECT_EQ(draws("\xC3\xBC", 2, true), 0) << "nothing came of the conversion";
}

TEST_F(TextDraw, MadeWhileMemoryRunsOutDrawsNothing) {
  int undrawn = 0;
  for (std::int64_t good_requests = 0; good_requests < 3; ++good_requests) {
    const Setting s;
    alignas(DL::DLText) std::byte storage[sizeof(DL::DLText)];
    DL::DLText* text = nullptr;
    {
      const FailingDefaultHeap failing(good_requests);
      text = ::new (static_cast<void*>(storage))
          DL::DLText(kColor, s.font, s.position, L"ab", 2, 12.0, 0.0, s.bounds, nullptr, true);
    }
    EXPECT_EQ(text->get_font() != nullptr, good_requests > 0);
    EXPECT_EQ(text->text() != nullptr, good_requests > 1);
    DL::Drawable* drawable = text;
    drawable->draw_clipped(list);
    drawable->draw_unclipped(list);
    if (renderer->take_calls().empty()) ++undrawn;
    text->~DLText();
  }
  EXPECT_EQ(undrawn, 3);
}

// --- The font of the rendition ------------------------------------------------

TEST_F(TextDraw, GivesItsFontToEveryHandleOfTheRendition) {
  const auto text = wide_text(L"ab");
  EXPECT_TRUE(text->set_text_attributes(list));
  const LM_Rendition copy = list.m_rendition;
  text->draw_clipped(list);
  EXPECT_TRUE(list.m_rendition.shares_data_with(copy)) << "no clone was made";
  EXPECT_EQ(copy.text_attributes().font, *text->get_font());
}

TEST_F(TextDraw, StampsRenditionAndAttributesWithAnotherFontOnly) {
  const auto text = wide_text(L"ab");
  EXPECT_TRUE(text->set_text_attributes(list));
  const std::uint64_t given_out = LUMEN.next_change_serial();
  text->draw_clipped(list);
  const std::uint64_t of_data = list.m_rendition.change_serial();
  const std::uint64_t of_attributes = attributes().change_serial;
  EXPECT_GT(of_data, given_out);
  EXPECT_GT(of_attributes, given_out);
  EXPECT_NE(of_data, of_attributes);
  text->draw_clipped(list);
  EXPECT_EQ(list.m_rendition.change_serial(), of_data);
  EXPECT_EQ(attributes().change_serial, of_attributes);
}

TEST_F(TextDraw, EqualDescriptionIsAnotherFont) {
  const auto one = wide_text(L"a", {.font = font_named(L"Abc")});
  const auto other = wide_text(L"a", {.font = font_named(L"Abc")});
  draw(*one);
  EXPECT_EQ(draw(*other).attributes.font, *other->get_font());
  EXPECT_NE(attributes().font, *one->get_font());
}

TEST_F(TextDraw, GivesBackTheFontThatTheRenditionHadBefore) {
  const LM_Font first = font_named(L"first");
  const LM_Font second = font_named(L"second");
  draw(*wide_text(L"a", {.font = first}));
  EXPECT_TRUE(first.data()->is_shared()) << "by the rendition";
  draw(*wide_text(L"a", {.font = second}));
  EXPECT_FALSE(first.data()->is_shared());
  EXPECT_TRUE(second.data()->is_shared());
  draw(*wide_text(L"a", {.font = LM_Font()}));
  EXPECT_FALSE(second.data()->is_shared());
}

// --- Whose rendition, whose renderer -------------------------------------------

TEST_F(TextDraw, PalettizedIsDrawnWithItsOwnRendition) {
  LM_Rendition own;
  own.set_color({0x99}, true);
  const LM_Rendition before = list.m_rendition;
  const auto text = palettized_text(&own, L"ab");
  const TextCall call = draw(*text);
  EXPECT_EQ(call.rendition, &own);
  EXPECT_EQ(call.color.word, 0x99U);
  EXPECT_EQ(call.attributes.font, *text->get_font());
  EXPECT_TRUE(list.m_rendition.shares_data_with(before));
}

TEST_F(TextDraw, GoesToTheRendererOfTheListThatDraws) {
  FakeList other;
  wide_text(L"ab", {.list = &other.list})->draw_clipped(list);
  EXPECT_EQ(renderer->take_operations(), (Operations{"resolve", "draw"}));
  EXPECT_TRUE(other.renderer->calls.empty());
}

TEST_F(TextDraw, HoldsTheRendererUntilTheCallEnds) {
  auto* given_away = renderer.get();
  bool was_shared = false;
  renderer->on_draw = [&] {
    list.m_pRenderer = nullptr;
    renderer = nullptr;
    was_shared = given_away->calls.size() == 2;  // still there
  };
  wide_text(L"ab")->draw_clipped(list);
  EXPECT_TRUE(was_shared);
}

}  // namespace
