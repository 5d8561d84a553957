#include <gtest/gtest.h>

#include "tests/support/failing_default_heap.h"
#include "tests/text/texts.h"

// What a text draws in a selection pass, its bounds, and which searches it
// answers.

namespace {

using namespace texts;
using Points = std::vector<LM_DCI_Point>;

struct TextSelection : testing::Test, FakeList {
  TextCall unclipped(DL::Drawable& text) {
    text.draw_unclipped_selection(list);
    return only_call();
  }
  TextCall clipped(DL::Drawable& text) {
    text.draw_clipped_selection(list);
    return only_call();
  }
  TextCall only_call() {
    const auto calls = renderer->take_calls();
    EXPECT_EQ(calls.size(), 1U);
    return calls.empty() ? TextCall{} : calls[0];
  }
};

const Points kCorners = {{10, 20, 0}, {60, 20, 0}, {60, 40, 0}, {10, 40, 0}};

TEST_F(TextSelection, IsTheBoundsAsAnAreaInTheTextsColor) {
  const auto text = wide_text(L"ab");
  for (const TextCall& call : {unclipped(*text), clipped(*text)}) {
    EXPECT_EQ(call.points, kCorners);
    EXPECT_EQ(call.integer, 0);
    EXPECT_EQ(call.rendition, &list.m_rendition);
    EXPECT_EQ(call.color, kColor);
  }
}

TEST_F(TextSelection, IsUnclippedWithCornersOnTheEdgesOfTheClipRectangle) {
  list.m_rendition.set_clip_rectangle({10, 60, 20, 40});
  EXPECT_EQ(unclipped(*wide_text(L"ab")).operation, "polygon_unclipped");
}

TEST_F(TextSelection, IsClippedWithACornerOneUnitOutside) {
  const auto text = wide_text(L"ab");
  for (const LM_Clip_Rectangle& clip :
       {LM_Clip_Rectangle{11, 60, 20, 40}, {10, 59, 20, 40}, {10, 60, 21, 40}, {10, 60, 20, 39}}) {
    list.m_rendition.set_clip_rectangle(clip);
    const TextCall call = unclipped(*text);
    EXPECT_EQ(call.operation, "polygon_clipped");
    EXPECT_EQ(call.points, kCorners);
  }
}

TEST_F(TextSelection, IsClippedWithASingleCornerOutside) {
  // A turned view leaves one corner at a time on each side.
  list.m_bRotated = true;
  const double rotation[6] = {1.0, -1.0, 0.0, 0.0, 1.0, 1.0};  // (x - y, x + y)
  std::copy(rotation, rotation + 6, list.m_rotation);
  const auto text = wide_text(L"ab", {.bounds = {0, 0, 10, 10}});
  list.m_rendition.set_clip_rectangle({-10, 10, 0, 20});
  EXPECT_EQ(unclipped(*text).operation, "polygon_unclipped");
  for (const LM_Clip_Rectangle& clip :
       {LM_Clip_Rectangle{-9, 10, 0, 20}, {-10, 9, 0, 20}, {-10, 10, 1, 20}, {-10, 10, 0, 19}}) {
    list.m_rendition.set_clip_rectangle(clip);
    EXPECT_EQ(unclipped(*text).operation, "polygon_clipped");
  }
}

TEST_F(TextSelection, ClippedIsClippedWithoutATest) {
  EXPECT_EQ(clipped(*wide_text(L"ab")).operation, "polygon_clipped");
}

TEST_F(TextSelection, IsMappedToTheDevice) {
  list.m_scale = {2.0, -3.0};
  list.m_offset = {100.0, 200.0};
  EXPECT_EQ(clipped(*wide_text(L"ab")).points,
            (Points{{120, 140, 0}, {220, 140, 0}, {220, 80, 0}, {120, 80, 0}}));
  list.m_bRotated = true;
  const double quarter_turn[6] = {1.0, -1.0, 100.0, 200.0, 0.0, 0.0};
  std::copy(quarter_turn, quarter_turn + 6, list.m_rotation);
  EXPECT_EQ(clipped(*wide_text(L"ab")).points,
            (Points{{80, 210, 0}, {80, 260, 0}, {60, 260, 0}, {60, 210, 0}}));
}

TEST_F(TextSelection, OfEmptyBoundsIsNothing) {
  for (const LogicalBounds& bounds : {LogicalBounds{}, {10, 20, 9, 40}, {10, 20, 60, 19}}) {
    const auto text = wide_text(L"ab", {.bounds = bounds});
    text->draw_unclipped_selection(list);
    text->draw_clipped_selection(list);
    EXPECT_TRUE(renderer->calls.empty());
  }
}

TEST_F(TextSelection, OfAPointOrOfTheWholePlaneIsDrawn) {
  const auto point = wide_text(L"ab", {.bounds = {5, 6, 5, 6}});
  EXPECT_EQ(unclipped(*point).points, Points(4, {5, 6, 0}));
  const auto plane = wide_text(L"ab", {.bounds = LogicalBounds::plane()});
  EXPECT_EQ(unclipped(*plane).points, (Points{{INT32_MIN, INT32_MIN, 0},
                                              {INT32_MAX, INT32_MIN, 0},
                                              {INT32_MAX, INT32_MAX, 0},
                                              {INT32_MIN, INT32_MAX, 0}}));
}

TEST_F(TextSelection, NeedsNeitherFontNorStringNorASizeThatIsDrawn) {
  DL::DLText bare(kColor);
  bare.draw_clipped_selection(list);
  EXPECT_TRUE(renderer->take_calls().empty()) << "its bounds are empty";
  EXPECT_EQ(unclipped(*wide_text(L"", {.height = 2e15})).points, kCorners);
}

TEST_F(TextSelection, OfAPalettizedTextIsInItsOwnRenditionByTheListsClipRectangle) {
  LM_Rendition own;
  own.set_clip_rectangle({0, 1, 0, 1});
  const auto text = palettized_text(&own, L"ab");
  EXPECT_EQ(unclipped(*text).operation, "polygon_unclipped");
  EXPECT_EQ(unclipped(*text).rendition, &own);
  list.m_rendition.set_clip_rectangle({0, 1, 0, 1});
  own.set_clip_rectangle({});
  EXPECT_EQ(unclipped(*text).operation, "polygon_clipped");
  EXPECT_EQ(clipped(*text).rendition, &own);
}

TEST_F(TextSelection, IsDrawnByItsDisplayList) {
  list.add(wide_text(L"ab").release());
  list.m_pRootGroup->draw_unclipped_selection(list);
  EXPECT_EQ(only_call().operation, "polygon_unclipped");
}

// --- Bounds -------------------------------------------------------------------

TEST(TextBounds, AreThoseOfTheCaller) {
  EXPECT_EQ(bounds_of(*wide_text(L"ab")), (LogicalBounds{10, 20, 60, 40}));
  const LogicalBounds inverted{5, 6, -7, -8};
  EXPECT_EQ(wide_text(L"ab", {.bounds = inverted})->bounds(), inverted);
  const auto text = wide_text(L"ab");
  text->set_text_string(L"a much longer string", 20, true);
  text->set_rotation(1.0);
  EXPECT_EQ(bounds_of(*text), (LogicalBounds{10, 20, 60, 40}));
}

TEST(TextBounds, WidenEachSideByItself) {
  const auto text = wide_text(L"ab");
  const auto widened = [&](LogicalBounds bounds) {
    text->add_bounds(bounds);
    return bounds;
  };
  EXPECT_EQ(widened({0, 0, 100, 100}), (LogicalBounds{0, 0, 100, 100}));
  EXPECT_EQ(widened({11, 0, 100, 100}), (LogicalBounds{10, 0, 100, 100}));
  EXPECT_EQ(widened({0, 21, 100, 100}), (LogicalBounds{0, 20, 100, 100}));
  EXPECT_EQ(widened({0, 0, 59, 100}), (LogicalBounds{0, 0, 60, 100}));
  EXPECT_EQ(widened({0, 0, 100, 39}), (LogicalBounds{0, 0, 100, 40}));
  EXPECT_EQ(widened({}), (LogicalBounds{10, 20, 60, 40}));
}

TEST(TextBounds, OfInvertedOnesAreUsedAsTheyAre) {
  LogicalBounds bounds{0, 0, 0, 0};
  wide_text(L"ab", {.bounds = {-5, 7, -9, 3}})->add_bounds(bounds);
  EXPECT_EQ(bounds, (LogicalBounds{-5, 0, 0, 3}));
}

// --- Searches -----------------------------------------------------------------

bool finds(DL::Drawable& wanted, DL::Drawable& text, void* type) {
  DL::Search search;
  search.prototype = &wanted;
  search.type = type;
  search.m_bounds = bounds_of(wanted);
  const bool found = text.remove(search);
  EXPECT_FALSE(search.handled);
  return found;
}

TEST(TextSearch, FindsTheTextItself) {
  const auto text = wide_text(L"ab");
  EXPECT_TRUE(finds(*text, *text, DL::DLText::my_type()));
  LM_Rendition own;
  const auto palettized = palettized_text(&own, L"ab");
  EXPECT_TRUE(finds(*palettized, *palettized, DL::DLText::my_type()));
  palettized->hide();
  EXPECT_TRUE(finds(*palettized, *palettized, DL::DLText::my_type()));
}

TEST(TextSearch, DoesNotFindACopyNorAnEqualText) {
  const auto text = wide_text(L"ab");
  const std::unique_ptr<DL::Drawable> copy(text->clone());
  const auto equal = wide_text(L"ab");
  EXPECT_FALSE(finds(*copy, *text, DL::DLText::my_type()));
  EXPECT_FALSE(finds(*text, *copy, DL::DLText::my_type()));
  EXPECT_FALSE(finds(*equal, *text, DL::DLText::my_type()));
}

TEST(TextSearch, OfAnotherTypeFindsNothing) {
  const auto text = wide_text(L"ab");
  DL::DLDot dot({1}, {1, 2});
  EXPECT_FALSE(finds(dot, *text, DL::DLDot::my_type()));
  EXPECT_FALSE(finds(*text, *text, nullptr));
  EXPECT_FALSE(finds(*text, *text, DL::DLDot::my_type()));
}

/// A text for whose string there was no memory: all of these have the same one.
std::unique_ptr<DL::DLText> text_without_string(const LogicalBounds& bounds) {
  const Setting s;
  const FailingDefaultHeap failing(2);  // for the text and its font
  return std::unique_ptr<DL::DLText>(
      new DL::DLText(kColor, s.font, s.position, L"ab", 2, 12.0, 0.0, bounds, nullptr, true));
}

TEST(TextSearch, ComparesTheBoundsOfTheTexts) {
  const auto text = text_without_string({10, 20, 60, 40});
  ASSERT_EQ(text->text(), nullptr);
  EXPECT_TRUE(finds(*text_without_string({10, 20, 60, 40}), *text, DL::DLText::my_type()));
  for (const LogicalBounds& bounds :
       {LogicalBounds{11, 20, 60, 40}, {10, 21, 60, 40}, {10, 20, 61, 40}, {10, 20, 60, 41}}) {
    EXPECT_FALSE(finds(*text_without_string(bounds), *text, DL::DLText::my_type())) << bounds;
  }
}

}  // namespace
