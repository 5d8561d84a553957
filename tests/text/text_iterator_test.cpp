#include "displaylist/text/text_iterator.h"

#include <gtest/gtest.h>

#include "tests/support/failing_default_heap.h"
#include "tests/text/text_walks.h"

// Texts as segments: their bounds and their boxes, and where a walk starts and
// ends.

namespace {

using namespace text_walks;

// --- The bounds -----------------------------------------------------------------

TEST(TextBoxWalk, GoesAroundTheBoundsThenOverTheMiddleLinesAndDiagonals) {
  EXPECT_EQ(walk(*wide_text(L"ab"), true), (Segments{{{10, 20}, {60, 20}},
                                                     {{60, 20}, {60, 40}},
                                                     {{60, 40}, {10, 40}},
                                                     {{10, 40}, {10, 20}},
                                                     {{35, 20}, {35, 40}},
                                                     {{10, 30}, {60, 30}},
                                                     {{10, 20}, {60, 40}},
                                                     {{10, 40}, {60, 20}}}));
}

TEST(TextBoxWalk, HasTheFirstSegmentAtOnceAndSevenMoreSteps) {
  const auto text = wide_text(L"ab");
  DL::DrawableVectorIteratorText iterator(*text, true);
  EXPECT_FALSE(iterator.m_bDone);
  EXPECT_EQ(iterator.m_vector, (Segment{{10, 20}, {60, 20}}));
  for (int i = 0; i < 7; ++i) EXPECT_EQ(iterator.next(), &iterator.m_vector) << i;
  EXPECT_FALSE(iterator.m_bDone);
  EXPECT_EQ(iterator.next(), nullptr);
  EXPECT_TRUE(iterator.m_bDone);
}

TEST(TextBoxWalk, HalvesSumsThatWrapAt32BitsTowardZero) {
  const auto middles = [](const LogicalBounds& bounds) {
    const Segments segments = walk(*wide_text(L"ab", {.bounds = bounds}), true);
    EXPECT_EQ(segments.size(), 8U);
    return LogicalPoint{segments[4].from.x, segments[5].from.y};
  };
  EXPECT_EQ(middles({-5, -4, 2, 1}), (LogicalPoint{-1, -1}));
  EXPECT_EQ(middles({5, 4, 2, 1}), (LogicalPoint{3, 2})) << "inverted";
  EXPECT_EQ(middles({INT32_MAX, INT32_MAX - 2, INT32_MAX, INT32_MAX}), (LogicalPoint{-1, -2}));
  EXPECT_EQ(middles({INT32_MIN, INT32_MIN, INT32_MIN, -1}), (LogicalPoint{0, 1073741823}));
  EXPECT_EQ(middles({INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN}), (LogicalPoint{0, 0}));
}

TEST(TextBoxWalk, NeedsNeitherListNorFontNorString) {
  DL::DLText bare(kColor);
  EXPECT_EQ(walk(bare, true).size(), 8U);
}

TEST(TextBoxWalk, AsksNothingOfTheRenderer) {
  FakeList fake;
  walk(*wide_text(L"ab", {.list = &fake.list}), true);
  EXPECT_TRUE(fake.renderer->calls.empty());
}

TEST(TextBoxWalk, HasNoWayBack) {
  const auto text = wide_text(L"ab");
  DL::DrawableVectorIteratorText iterator(*text, true);
  iterator.next();
  EXPECT_EQ(iterator.prev(), nullptr);
}

// --- The text -------------------------------------------------------------------

const Segments kCharacterSides = together({around({{10, 18}, {20, 18}, {20, 30}, {10, 30}}),
                                           around({{20, 18}, {40, 18}, {40, 30}, {20, 30}})});

TEST_F(TextWalk, OfAGreekedTextIsItsBox) {
  EXPECT_EQ(walk(*text_of(L"ab", {.height = 4.9}), false), kBoxSides);
}

TEST_F(TextWalk, OfAReadableTextIsItsOutlines) {
  renderer->outlines['a'] = contours({{{0, 0, 0}, {4, 0, 0}, {0, 8, 0}}});
  renderer->outlines['b'] = contours({{{1, 1, 0}, {3, 1, 0}, {3, 3, 0}, {1, 3, 0}}});
  renderer->advances['a'] = 6.0F;
  EXPECT_EQ(walk(*text_of(L"ab", {.height = 5.0}), false),
            together({around({{10, 20}, {14, 20}, {10, 28}}),
                      around({{17, 21}, {19, 21}, {19, 23}, {17, 23}})}));
}

TEST_F(TextWalk, IsPreparedBeforeItIsMeasured) {
  const auto text = text_of(L"ab", {.rotation = 1.5});
  walk(*text, false);
  const auto calls = renderer->take_calls();
  ASSERT_EQ(calls.size(), 5U);
  EXPECT_EQ(calls[0].operation, "resolve");
  EXPECT_EQ(calls[0].font_name, L"Abc");
  EXPECT_EQ(calls[1].operation, "extent");
  EXPECT_TRUE(calls[1].with_widths);
  EXPECT_EQ(calls[2].operation, "extent");
  EXPECT_FALSE(calls[2].with_widths);
  EXPECT_EQ(calls[2].attributes.size, 12.0F);
  EXPECT_EQ(calls[2].attributes.rotation, 1.5F);
  EXPECT_EQ(calls[3].operation, "outline");
  EXPECT_EQ(calls[3].attributes.size, 12.0F);
  EXPECT_EQ(calls[3].attributes.rotation, 0.0F);
  EXPECT_EQ(calls[4].character, std::uint32_t{'b'});
  EXPECT_EQ(attributes().rotation, 1.5F);
}

TEST_F(TextWalk, FirstSegmentIsThereAtOnce) {
  const auto text = text_of(L"ab", {.height = 1.0});
  const DL::DrawableVectorIteratorText iterator(*text, false);
  EXPECT_FALSE(iterator.m_bDone);
  EXPECT_EQ(iterator.m_vector, kBoxSides[0]);
}

TEST_F(TextWalk, FromTheTextsBoxGoesOverTheCharactersToTheOutlines) {
  renderer->outlines['b'] = contours({{{0, 0, 0}, {4, 0, 0}, {0, 8, 0}}});
  EXPECT_EQ(walk_from(*text_of(L"ab"), Start::text_box),
            together({kBoxSides, kCharacterSides, around({{10, 20}, {14, 20}, {10, 28}})}));
}

TEST_F(TextWalk, FromTheCharactersBoxesGoesToTheOutlines) {
  renderer->outlines['a'] = contours({{{0, 0, 0}, {4, 0, 0}, {0, 8, 0}}});
  EXPECT_EQ(walk_from(*text_of(L"ab"), Start::character_boxes),
            together({kCharacterSides, around({{10, 20}, {14, 20}, {10, 28}})}));
}

TEST_F(TextWalk, OfAGreekedTextEndsWithItsBoxOrBoxes) {
  renderer->outlines['a'] = contours({{{0, 0, 0}, {4, 0, 0}, {0, 8, 0}}});
  const auto text = text_of(L"ab", {.height = 1.0});
  EXPECT_EQ(walk_from(*text, Start::text_box), kBoxSides);
  EXPECT_EQ(walk_from(*text, Start::character_boxes), kCharacterSides);
  EXPECT_EQ(walk_from(*text, Start::usual), kBoxSides);
}

TEST_F(TextWalk, PenIsCarriedFromCharacterBoxToCharacterBox) {
  struct Noting : DL::DLText {
    using DLText::DLText;
    void get_character_bbox(std::int32_t index, const float* widths, const Position& origin,
                            const Position* text_corners, Position* corners,
                            Position& pen) override {
      origins.push_back(origin);
      DLText::get_character_bbox(index, widths, origin, text_corners, corners, pen);
    }
    std::vector<Position> origins;
  };
  const Setting s;
  Noting text(kColor, s.font, s.position, L"ab", 2, 1.0, 0.0, s.bounds, &list, true);
  walk_from(text, Start::character_boxes);
  ASSERT_EQ(text.origins.size(), 2U);
  EXPECT_EQ(text.origins[0], (Position{10, 20}));
  EXPECT_NEAR(text.origins[1].x, 20.0, 1e-5);
  EXPECT_NEAR(text.origins[1].y, 20.0, 1e-5);
}

TEST_F(TextWalk, IsGreekedByTheScaleInForce) {
  const auto text = text_of(L"ab", {.height = 74.0});
  renderer->outlines['a'] = contours({{{0, 0, 0}, {1, 0, 0}}});
  EXPECT_EQ(walk(*text, false).size(), 2U);
  list.m_bAlternateScale = true;
  EXPECT_EQ(walk(*text, false), kBoxSides) << "below 75";
  list.m_deviceScale.y = 2.0;
  EXPECT_EQ(walk(*text, false).size(), 2U);
  list.m_bAlternateScale = false;
  list.m_scale.y = 0.06;
  EXPECT_EQ(walk(*text, false).size(), 4U) << "4.44";
}

TEST_F(TextWalk, OfAnUpsideDownViewIsGreekedByTheAbsoluteHeight) {
  list.m_scale.y = -1.0;
  renderer->outlines['a'] = contours({{{0, 0, 0}, {1, 0, 0}}});
  EXPECT_EQ(walk(*text_of(L"ab", {.height = 12.0}), false).size(), 2U);
  EXPECT_EQ(walk(*text_of(L"ab", {.height = 4.0}), false).size(), 4U);
}

TEST_F(TextWalk, FollowsAGreekingHeightOfASubclass) {
  struct NeverGreeked : DL::DLText {
    using DLText::DLText;
    std::int32_t greeking_height(bool) override { return INT32_MIN; }
  };
  const Setting s;
  NeverGreeked text(kColor, s.font, s.position, L"ab", 2, 1.0, 0.0, s.bounds, &list, true);
  EXPECT_TRUE(walk(text, false).empty()) << "no box, and no outlines either";
}

// --- Nothing to walk over --------------------------------------------------------

TEST_F(TextWalk, WithoutADisplayListOrARendererIsOverAtOnce) {
  EXPECT_TRUE(walk(*wide_text(L"ab"), false).empty());
  list.m_pRenderer = nullptr;
  EXPECT_TRUE(walk(*text_of(L"ab"), false).empty());
}

TEST_F(TextWalk, OfARefusedSizeIsOverAtOnce) {
  EXPECT_TRUE(walk(*text_of(L"ab", {.height = 2e15}), false).empty());
  EXPECT_TRUE(renderer->calls.empty());
}

TEST_F(TextWalk, WithoutFontOrCharactersIsOverAtOnce) {
  DL::DLText bare(kColor);
  EXPECT_TRUE(walk(bare, false).empty());
  EXPECT_TRUE(walk(*text_of(L""), false).empty());
  EXPECT_TRUE(walk_from(*text_of(L""), Start::text_box).empty());
}

TEST_F(TextWalk, OfOddNumbersEnds) {
  renderer->outlines['a'] = contours({{{0, 0, 0}, {4, 0, 0}}});
  renderer->advances['a'] = std::numeric_limits<float>::infinity();
  for (const double odd : {kNan, kInfinity, -kInfinity, 1e300, -1e300, 0.0}) {
    EXPECT_LE(walk(*text_of(L"aa", {.height = odd}), false).size(), 4U);
    EXPECT_EQ(walk(*text_of(L"aa", {.rotation = odd}), false).size(), 4U);
    EXPECT_EQ(walk(*text_of(L"aa", {.position = {odd, -odd}}), false).size(), 4U);
  }
  list.m_scale = {0.0, 0.0};
  EXPECT_EQ(walk(*text_of(L"aa"), false).size(), 4U);
}

TEST_F(TextWalk, WhereMemoryRunsOutIsOverAtOnceOrThereIsNoIterator) {
  const auto text = text_of(L"ab", {.height = 1.0});
  std::vector<std::size_t> lengths;
  for (std::int64_t good_requests = 0; good_requests < 3; ++good_requests) {
    const FailingDefaultHeap failing(good_requests);
    const std::unique_ptr<DL::DrawableVectorIterator> iterator(text->create_vector_iterator(false));
    if (iterator != nullptr) lengths.push_back(walk(*iterator).size());
  }
  EXPECT_EQ(lengths, (std::vector<std::size_t>{0, 4}));
}

TEST_F(TextWalk, OfAHiddenOrAPalettizedTextIsTheSame) {
  const auto hidden = text_of(L"ab", {.height = 1.0});
  hidden->hide();
  EXPECT_EQ(walk(*hidden, false), kBoxSides);
  LM_Rendition own;
  const auto palettized = palettized_text(&own, L"ab", {.height = 1.0, .list = &list});
  EXPECT_EQ(walk(*palettized, false), kBoxSides);
  EXPECT_EQ(own.text_attributes().size, 1.0F);
  EXPECT_EQ(list.m_rendition.text_attributes().size, 1.0F) << "of the hidden one";
}

}  // namespace
