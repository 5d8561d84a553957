#include "displaylist/drawables/dot.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <memory>

#include "tests/support/failing_default_heap.h"
#include "tests/support/memory_stream.h"
#include "tests/support/point_printing.h"
#include "tests/support/recorded_list.h"

namespace {

using DL::DLColorizedDot;
using DL::DLDot;
using Lines = std::vector<std::string>;

constexpr std::int32_t kMinimum = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMaximum = std::numeric_limits<std::int32_t>::max();

Lines draw_unclipped_at(RecordedList& recorded, LogicalPoint point) {
  DLDot dot({0x10}, point);
  dot.draw_unclipped(recorded.list);
  return recorded.take_lines();
}

DL::Search search_for(DL::Drawable& prototype) {
  DL::Search search;
  search.prototype = &prototype;
  search.type = prototype.type();
  search.m_bounds = bounds_of(prototype);
  return search;
}

TEST(Dot, OnTheEdgeOfTheClipRectangleIsDrawnUnclipped) {
  RecordedList recorded;
  recorded.list.m_rendition.set_clip_rectangle({-5, 20, -7, 30});  // x from, x to, y from, y to
  for (const LogicalPoint p : {LogicalPoint{20, 0}, {-5, 0}, {0, 30}, {0, -7}, {20, 30}}) {
    EXPECT_EQ(draw_unclipped_at(recorded, p),
              Lines{"dot_unclipped color=00000010 (" + std::to_string(p.x) + "," +
                    std::to_string(p.y) + ")"});
  }
}

TEST(Dot, OnePixelOutsideTheClipRectangleIsDrawnClipped) {
  RecordedList recorded;
  recorded.list.m_rendition.set_clip_rectangle({-5, 20, -7, 30});
  for (const LogicalPoint p : {LogicalPoint{21, 0}, {-6, 0}, {0, 31}, {0, -8}}) {
    EXPECT_EQ(draw_unclipped_at(recorded, p),
              Lines{"dot_clipped color=00000010 (" + std::to_string(p.x) + "," +
                    std::to_string(p.y) + ")"});
  }
}

TEST(Dot, ClippedDrawingNeverTests) {
  RecordedList recorded;
  DLDot dot({0x10}, {1, 2});
  dot.draw_clipped(recorded.list);
  EXPECT_EQ(recorded.take_lines(), Lines{"dot_clipped color=00000010 (1,2)"});
}

TEST(ColorizedDot, HandsItsOwnColorOverBesideTheRendition) {
  RecordedList recorded;
  DLColorizedDot dot({0x10}, {1, 2}, {0x20});
  dot.draw_unclipped(recorded.list);
  dot.draw_clipped(recorded.list);
  recorded.list.m_rendition.set_clip_rectangle({0, 0, 0, 0});
  dot.draw_unclipped(recorded.list);
  EXPECT_EQ(recorded.take_lines(), (Lines{"dot_unclipped color=00000010 (1,2) own_color=00000020",
                                          "dot_clipped color=00000010 (1,2) own_color=00000020",
                                          "dot_clipped color=00000010 (1,2) own_color=00000020"}));
}

TEST(Dot, BeyondTheDeviceSaturatesOrWrapsAsTheListSays) {
  RecordedList recorded;
  recorded.list.m_scale = {4.0, -4.0};
  recorded.list.m_rendition.set_clip_rectangle({-100, 100, -100, 100});
  EXPECT_EQ(draw_unclipped_at(recorded, {kMaximum, kMaximum}),
            Lines{"dot_clipped color=00000010 (-2147483648,-2147483648)"});
  recorded.list.m_bCheckOverflow = true;
  EXPECT_EQ(draw_unclipped_at(recorded, {kMaximum, kMaximum}),
            Lines{"dot_clipped color=00000010 (2147483647,-2147483648)"});
}

TEST(Dot, IsNotTurnedWithTheView) {
  RecordedList recorded;
  recorded.list.m_bRotated = true;
  recorded.list.m_bRotationSecondary = true;
  recorded.list.m_rotation[2] = 1000.0;
  EXPECT_EQ(draw_unclipped_at(recorded, {3, 4}), Lines{"dot_unclipped color=00000010 (3,4)"});
}

RC_GTEST_PROP(Dot, IsDrawnWhereTheListPutsItsPoint, ()) {
  RecordedList recorded;
  recorded.list.m_scale = {*rc::gen::inRange(-400, 400) / 64.0,
                           *rc::gen::inRange(-400, 400) / 64.0};
  recorded.list.m_offset = {*rc::gen::inRange(-4000, 4000) / 8.0, 0.5};
  recorded.list.m_bCheckOverflow = *rc::gen::arbitrary<bool>();
  recorded.list.m_rendition.set_clip_rectangle({-200, 300, -400, 500});
  const LogicalPoint point{*rc::gen::arbitrary<std::int32_t>(), *rc::gen::inRange(-500, 500)};
  DLDot dot({}, point);
  dot.draw_unclipped(recorded.list);
  LM_DCI_Point device;
  recorded.list.transform_point(point, device);
  const bool inside = device.x >= -200 && device.x <= 300 && device.y >= -400 && device.y <= 500;
  RC_ASSERT(recorded.recorder->calls().size() == 1U);
  const lumen::RecordedCall& call = recorded.recorder->calls()[0];
  RC_ASSERT(call.action == (inside ? "dot_unclipped" : "dot_clipped"));
  RC_ASSERT(call.points == std::vector<LM_DCI_Point>{device});
  RC_ASSERT(!call.own_color.has_value());
}

TEST(Dot, WidensBoundsToItsPoint) {
  const DLDot dot({}, {kMinimum, kMaximum});
  EXPECT_EQ(bounds_of(dot), LogicalBounds(kMinimum, kMaximum, kMinimum, kMaximum));
  LogicalBounds bounds(0, 0, 5, 5);
  DLDot({}, {7, -2}).add_bounds(bounds);
  EXPECT_EQ(bounds, LogicalBounds(0, -2, 7, 5));
}

TEST(Dot, IsFoundByASearchForADotAtTheSamePlace) {
  DLDot wanted({1}, {4, 5});
  DL::Search search = search_for(wanted);
  LM_Rendition rendition;
  EXPECT_TRUE(DLDot({2}, {4, 5}).remove(search));
  EXPECT_TRUE(DL::PalettizedDrawable<DLDot>(&rendition, LogicalPoint{4, 5}).remove(search));
  EXPECT_FALSE(DLDot({1}, {4, 6}).remove(search));
  EXPECT_FALSE(DLDot({1}, {5, 5}).remove(search));
  EXPECT_FALSE(DLColorizedDot({1}, {4, 5}, {}).remove(search));
}

TEST(ColorizedDot, IsFoundByASearchForItsPlaceAndOwnColor) {
  DLColorizedDot wanted({1}, {4, 5}, {9});
  DL::Search search = search_for(wanted);
  EXPECT_TRUE(DLColorizedDot({2}, {4, 5}, {9}).remove(search));
  EXPECT_FALSE(DLColorizedDot({1}, {4, 5}, {8}).remove(search));
  EXPECT_FALSE(DLColorizedDot({1}, {3, 5}, {9}).remove(search));
  EXPECT_FALSE(DLColorizedDot({1}, {4, 6}, {9}).remove(search));
  EXPECT_FALSE(DLDot({1}, {4, 5}).remove(search));
}

TEST(Dot, IsOneVectorOfBothEndsAtItsPoint) {
  const DLDot dot({}, {4, 5});
  EXPECT_EQ(dot.get_vector_count(), 1);
  EXPECT_TRUE(dot.supports_fast_vector_iterator());
  for (const int index : {0, 5, -1}) {
    DL::VectorTemplate<long> vector{};
    EXPECT_TRUE(dot.get_vector(index, vector));
    EXPECT_EQ(vector, (DL::VectorTemplate<long>{{4, 5}, {4, 5}}));
  }
}

TEST(Dot, CloneCopiesTheColorWordAlone) {
  DLDot dot({}, {4, 5});
  dot.m_colorData.m_pRendition =
      reinterpret_cast<LM_Rendition*>(std::uintptr_t{0x123456789ABCDEF0});
  const std::unique_ptr<DL::Drawable> copy(dot.clone());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->m_colorData.m_color.word, 0x9ABCDEF0U);
  EXPECT_EQ(copy->type(), DLDot::my_type());
  EXPECT_EQ(bounds_of(*copy), bounds_of(dot));
}

TEST(ColorizedDot, CloneKeepsItsOwnColor) {
  DLColorizedDot dot({1}, {4, 5}, {0x00FEDCBA});
  const std::unique_ptr<DL::Drawable> copy(dot.clone());
  ASSERT_NE(copy, nullptr);
  ASSERT_EQ(copy->type(), DLColorizedDot::my_type());
  EXPECT_EQ(static_cast<DLColorizedDot*>(copy.get())->m_color.word, 0x00FEDCBAU);
}

TEST(Dot, CloneIsNullWithoutMemory) {
  LM_Rendition rendition;
  DLDot dot({}, {4, 5});
  DLColorizedDot colorized({1}, {4, 5}, {2});
  DL::PalettizedDrawable<DLDot> palettized(&rendition, LogicalPoint{4, 5});
  const std::unique_ptr<DLDot> hidden(new DLDot({}, {4, 5}));
  hidden->hide();
  const std::unique_ptr<DL::Drawable> hidden_palettized(palettized.clone());
  hidden_palettized->hide();
  const FailingDefaultHeap no_memory;
  EXPECT_EQ(dot.clone(), nullptr);
  EXPECT_EQ(colorized.clone(), nullptr);
  EXPECT_EQ(palettized.clone(), nullptr);
  EXPECT_EQ(palettized.partial_clone(0, 1), nullptr);
  DL::Drawable* hidden_dot = hidden.get();
  EXPECT_EQ(hidden_dot->clone(), nullptr);
  EXPECT_EQ(hidden_palettized->clone(), nullptr);
  EXPECT_EQ(dot.create_vector_iterator(false), nullptr);
}

TEST(ColorizedDot, IsNotStored) {
  RecordedList recorded;
  DLColorizedDot dot({1}, {4, 5}, {9});
  DLDot successor({2}, {6, 7});
  dot.m_pNext = &successor;
  MemoryStream stream;
  dot.serialize_out(&stream, recorded.list);
  EXPECT_EQ(stream.size(), 0U);
  MemoryStream input(std::vector<std::uint32_t>{1, 2, 3});
  dot.serialize_in(&input, recorded.list);
  EXPECT_EQ(dot.m_pNext, &successor);
  EXPECT_EQ(bounds_of(dot), LogicalBounds(4, 5, 4, 5));
  EXPECT_EQ(input.position(), 0U);
}

}  // namespace
