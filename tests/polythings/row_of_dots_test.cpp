#include "displaylist/polythings/row_of_dots.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <memory>
#include <typeinfo>

#include "displaylist/drawables/variants.h"
#include "lumen/packed_heap.h"
#include "tests/polythings/allocation_counter.h"
#include "tests/support/drawable_answers.h"
#include "tests/support/drawable_chain.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/point_printing.h"

namespace {

using answers::clipped;
using answers::Lines;
using answers::text;
using answers::unclipped;
using DL::DLRowOfDots;

DLRowOfDots row(LogicalPoint origin, LogicalPoint step, std::int32_t dot_count) {
  return {{0x10}, origin, step, dot_count};
}

TEST(RowOfDots, IsACallForEachDotInOrder) {
  RecordedList recorded;
  recorded.list.m_scale = {2.0, -1.0};
  recorded.list.m_offset = {100.0, 50.0};
  DLRowOfDots three = row({10, 20}, {5, 0}, 3);
  EXPECT_EQ(unclipped(recorded, three),
            (Lines{"dot_unclipped color=00000010 (120,30)", "dot_unclipped color=00000010 (130,30)",
                   "dot_unclipped color=00000010 (140,30)"}));
  EXPECT_EQ(clipped(recorded, three),
            (Lines{"dot_clipped color=00000010 (120,30)", "dot_clipped color=00000010 (130,30)",
                   "dot_clipped color=00000010 (140,30)"}));
}

TEST(RowOfDots, TestsEachDotAgainstTheClipRectangle) {
  RecordedList recorded;
  recorded.list.m_rendition.set_clip_rectangle(answers::kClip);
  DLRowOfDots across = row({-6, 0}, {1, 0}, 28);
  DLRowOfDots upward = row({0, -8}, {0, 1}, 40);
  Lines expected;
  for (int x = -6; x <= 21; ++x) {
    const bool inside = x >= -5 && x <= 20;
    expected.push_back((inside ? "dot_unclipped" : "dot_clipped") +
                       std::string(" color=00000010 ") + text(LogicalPoint{x, 0}));
  }
  EXPECT_EQ(unclipped(recorded, across), expected);
  expected.clear();
  for (int y = -8; y <= 31; ++y) {
    const bool inside = y >= -7 && y <= 30;
    expected.push_back((inside ? "dot_unclipped" : "dot_clipped") +
                       std::string(" color=00000010 ") + text(LogicalPoint{0, y}));
  }
  EXPECT_EQ(unclipped(recorded, upward), expected);
}

TEST(RowOfDots, DrawsDotsThatFallOnOneDevicePointEachByItself) {
  RecordedList recorded;
  DLRowOfDots still = row({1, 2}, {0, 0}, 3);
  EXPECT_EQ(unclipped(recorded, still), Lines(3, "dot_unclipped color=00000010 (1,2)"));
}

TEST(RowOfDots, IsNeitherTurnedNorClippedForATurnedViewNorWide) {
  RecordedList recorded;
  answers::turn_by_a_quarter(recorded.list);
  recorded.list.m_bRotationSecondary = true;
  recorded.list.m_bWideDots = true;
  recorded.list.m_rendition.set_line_weight(4);
  DLRowOfDots two = row({1, 2}, {1, 1}, 2);
  EXPECT_EQ(unclipped(recorded, two), (Lines{"dot_unclipped color=00000010 weight=4 (7,14)",
                                             "dot_unclipped color=00000010 weight=4 (14,21)"}));
}

TEST(RowOfDots, BeyondTheDeviceSaturatesWhereTheListChecksForOverflow) {
  RecordedList recorded;
  recorded.list.m_scale = {4.0, -4.0};
  recorded.list.m_rendition.set_clip_rectangle({-100, 100, -100, 100});
  DLRowOfDots two = row({10, 10}, {INT32_MAX - 10, INT32_MAX - 10}, 2);
  EXPECT_EQ(unclipped(recorded, two),
            (Lines{"dot_unclipped color=00000010 (40,-40)",
                   "dot_clipped color=00000010 (-2147483648,-2147483648)"}));
  recorded.list.m_bCheckOverflow = true;
  EXPECT_EQ(unclipped(recorded, two),
            (Lines{"dot_unclipped color=00000010 (40,-40)",
                   "dot_clipped color=00000010 (2147483647,-2147483648)"}));
  EXPECT_EQ(clipped(recorded, two), (Lines{"dot_clipped color=00000010 (40,-40)",
                                           "dot_clipped color=00000010 (2147483647,-2147483648)"}));
}

TEST(RowOfDots, WrapsAroundAtTheEndsOfTheLogicalPlane) {
  RecordedList recorded;
  DLRowOfDots three = row({INT32_MAX - 1, INT32_MIN + 1}, {1, -2}, 3);
  EXPECT_EQ(clipped(recorded, three),
            (Lines{"dot_clipped color=00000010 (2147483646,-2147483647)",
                   "dot_clipped color=00000010 (2147483647,2147483647)",
                   "dot_clipped color=00000010 (-2147483648,2147483645)"}));
}

RC_GTEST_PROP(RowOfDots, IsDrawnWhereTheListPutsItsDots, ()) {
  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  list.m_scale = {*rc::gen::inRange(-400, 400) / 64.0, *rc::gen::inRange(-400, 400) / 64.0};
  list.m_offset = {*rc::gen::inRange(-4000, 4000) / 8.0, 0.5};
  list.m_bCheckOverflow = *rc::gen::arbitrary<bool>();
  list.m_rendition.set_clip_rectangle({-200, 300, -400, 500});
  const auto coordinate =
      rc::gen::oneOf(rc::gen::inRange<std::int32_t>(-90, 90), rc::gen::arbitrary<std::int32_t>());
  const LogicalPoint origin{*coordinate, *coordinate};
  const LogicalPoint step{*coordinate, *coordinate};
  const std::int32_t dot_count = *rc::gen::inRange(1, 20);
  const bool clipped_draw = *rc::gen::arbitrary<bool>();
  DLRowOfDots dots({}, origin, step, dot_count);
  if (clipped_draw) {
    dots.draw_clipped(list);
  } else {
    dots.draw_unclipped(list);
  }
  const auto& calls = recorded.recorder->calls();
  RC_ASSERT(calls.size() == static_cast<std::size_t>(dot_count));
  for (std::int64_t i = 0; i < dot_count; ++i) {
    const LogicalPoint point{static_cast<std::int32_t>(origin.x + i * step.x),
                             static_cast<std::int32_t>(origin.y + i * step.y)};
    LM_DCI_Point device;
    list.transform_point(point, device);
    const bool inside = device.x >= -200 && device.x <= 300 && device.y >= -400 && device.y <= 500;
    const lumen::RecordedCall& call = calls[static_cast<std::size_t>(i)];
    RC_ASSERT(call.points == std::vector<LM_DCI_Point>{device});
    RC_ASSERT(call.action == (inside && !clipped_draw ? "dot_unclipped" : "dot_clipped"));
    RC_ASSERT(!call.own_color.has_value());
  }
}

TEST(RowOfDots, OfNoDotsDrawsNothing) {
  RecordedList recorded;
  for (const std::int32_t dot_count : {0, -1, INT32_MIN}) {
    DLRowOfDots none = row({1, 2}, {3, 4}, dot_count);
    EXPECT_TRUE(answers::all_ways(recorded, none).empty());
    EXPECT_TRUE(bounds_of(none).is_empty());
  }
}

TEST(RowOfDots, AllocatesNothingToDraw) {
  DL::DisplayList list;
  DLRowOfDots many = row({1, 2}, {3, 4}, 5000);
  many.rendition(list);  // the working rendition has the colour now
  const FailingDefaultHeap no_memory;
  AllocationCounter counter;
  many.draw_unclipped(list);
  many.draw_clipped(list);
  EXPECT_EQ(counter.sizes(), std::vector<std::size_t>{});
}

TEST(RowOfDots, WidensBoundsByItsFirstAndItsLastDot) {
  EXPECT_EQ(bounds_of(row({10, 20}, {5, 0}, 3)), LogicalBounds(10, 20, 20, 20));
  EXPECT_EQ(bounds_of(row({10, 20}, {-5, 3}, 4)), LogicalBounds(-5, 20, 10, 29));
  EXPECT_EQ(bounds_of(row({10, 20}, {-5, 3}, 1)), LogicalBounds(10, 20, 10, 20));
  LogicalBounds bounds(0, 0, 5, 25);
  row({10, 20}, {5, 0}, 3).add_bounds(bounds);
  EXPECT_EQ(bounds, LogicalBounds(0, 0, 20, 25));
}

TEST(RowOfDots, LastDotOfItsBoundsWrapsAround) {
  EXPECT_EQ(bounds_of(row({INT32_MAX, 0}, {1, 0}, 2)), LogicalBounds(INT32_MIN, 0, INT32_MAX, 0));
  EXPECT_EQ(bounds_of(row({1, 2}, {1 << 30, INT32_MAX}, INT32_MAX)),
            LogicalBounds(INT32_MIN + 1, INT32_MIN + 4, 1, 2));
}

TEST(RowOfDots, IsFoundByASearchForTheSameRowWhateverTheColor) {
  DLRowOfDots wanted({1}, {10, 20}, {5, 6}, 3);
  DLRowOfDots same({2}, {10, 20}, {5, 6}, 3);
  EXPECT_TRUE(answers::finds(wanted, same));
  const struct {
    LogicalPoint origin, step;
    std::int32_t dot_count;
  } others[] = {{{11, 20}, {5, 6}, 3},
                {{10, 21}, {5, 6}, 3},
                {{10, 20}, {4, 6}, 3},
                {{10, 20}, {5, 7}, 3},
                {{10, 20}, {5, 6}, 4}};
  for (const auto& [origin, step, dot_count] : others) {
    DLRowOfDots other = row(origin, step, dot_count);
    EXPECT_FALSE(answers::finds(wanted, other));
  }
  DL::Search for_another_class;
  for_another_class.prototype = &wanted;
  for_another_class.type = DL::Polything::my_type();
  EXPECT_FALSE(same.remove(for_another_class));
}

TEST(RowOfDots, HasNoVector) {
  DLRowOfDots three = row({10, 20}, {5, 0}, 3);
  EXPECT_EQ(three.get_vector_count(), 0);
  EXPECT_FALSE(three.supports_fast_vector_iterator());
  DL::VectorTemplate<long> vector{{1, 2}, {3, 4}};
  EXPECT_FALSE(three.get_vector(0, vector));
  EXPECT_EQ(vector, (DL::VectorTemplate<long>{{1, 2}, {3, 4}}));
  const std::unique_ptr<DL::DrawableVectorIterator> iterator(three.create_vector_iterator(true));
  const DL::DrawableVectorIterator& indexed = *iterator;
  EXPECT_EQ(typeid(indexed), typeid(DL::DrawableVectorIterator));
  EXPECT_TRUE(iterator->m_bDone);
}

TEST(RowOfDots, CloneIsEqualAndHasNoNeighbour) {
  DLRowOfDots three({0x123456}, {10, 20}, {5, 6}, 3);
  three.m_pNext = &three;
  three.set_drawable_info(reinterpret_cast<DL::Extra_Drawable_Info*>(&three));
  const std::unique_ptr<DL::Drawable> copy(three.clone());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->type(), DLRowOfDots::my_type());
  EXPECT_EQ(copy->m_pNext, nullptr);
  EXPECT_EQ(copy->drawable_info(), nullptr);
  EXPECT_TRUE(copy->m_colorData == three.m_colorData);
  EXPECT_TRUE(answers::finds(three, *copy));
  EXPECT_EQ(three.partial_clone(0, 1), nullptr);
}

TEST(RowOfDots, CloneKeepsAll64BitsOfTheColorData) {
  DLRowOfDots original = row({10, 20}, {5, 6}, 3);
  original.m_colorData.m_pRendition =
      reinterpret_cast<LM_Rendition*>(std::uintptr_t{0x123456789ABCDEF0});
  const std::unique_ptr<DL::Drawable> copy(original.clone());
  EXPECT_TRUE(copy->m_colorData == original.m_colorData);
}

TEST(RowOfDots, CloneIsNullWithoutMemory) {
  DLRowOfDots visible = row({10, 20}, {5, 6}, 3);
  const std::unique_ptr<DL::Drawable> hidden(visible.clone());
  hidden->hide();
  const FailingDefaultHeap no_memory;
  EXPECT_EQ(visible.clone(), nullptr);
  EXPECT_EQ(hidden->clone(), nullptr);
}

TEST(RowOfDots, HiddenDrawsNothingKeepsItsBoundsAndClonesHidden) {
  RecordedList recorded;
  const std::unique_ptr<DL::Drawable> hidden(row({10, 20}, {5, 0}, 3).clone());
  hidden->hide();
  EXPECT_TRUE(answers::all_ways(recorded, *hidden).empty());
  EXPECT_EQ(bounds_of(*hidden), LogicalBounds(10, 20, 20, 20));
  EXPECT_TRUE(std::unique_ptr<DL::Drawable>(hidden->clone())->is_hidden());
}

TEST(RowOfDots, IsNotStoredAndLeftOutOfAChain) {
  DLRowOfDots three = row({10, 20}, {5, 0}, 3);
  answers::expect_not_stored(three);
  const DrawableChain chain{new DL::DLDot({1}, {1, 1}), new DLRowOfDots({}, {}, {}, 1),
                            new DL::DLDot({2}, {2, 2})};
  DL::DisplayList list;
  EXPECT_EQ(answers::record_of(*chain.first(), list),
            (answers::Words{0x80000010, 1, 1, 0x20000002, 1, 0x80000010, 2, 2, 0x20000002, 2,
                            0x10000002}));
}

TEST(RowOfDots, DumpLineTellsTheLevel) {
  const DLRowOfDots three = row({10, 20}, {5, 0}, 3);
  answers::expect_dump(three, 3, "            DLRowOfDots: level  3", 56);
  answers::expect_dump(three, 0, "DLRowOfDots: level  0", 56);
}

}  // namespace
