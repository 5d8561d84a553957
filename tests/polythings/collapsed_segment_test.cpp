#include <gtest/gtest.h>

#include <memory>

#include "tests/support/drawable_answers.h"
#include "tests/support/recorded_list.h"

// Segments of a polysegment that fall on one device point.

namespace {

using answers::clipped;
using answers::Lines;
using answers::unclipped;
using DL::DLPolysegment;

struct CollapsedSegment : testing::Test {
  CollapsedSegment() {
    list.m_scale = {0.01, 0.01};
    list.m_offset = {40.0, 50.0};
  }

  static constexpr LogicalPoint kPoints[] = {{0, 0}, {10, 10}};
  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  DLPolysegment segment{{0x10}, 2, kPoints};
};

/// Lines with the weight of the list's line style, as the recorder tells them.
std::string weighted(const char* action, std::int32_t weight, const std::string& arguments) {
  return std::string(action) + " color=00000010 weight=" + std::to_string(weight) + " " + arguments;
}

TEST_F(CollapsedSegment, IsADotWhileTheLineIsThin) {
  for (const bool wide : {false, true}) {
    list.m_bWideDots = wide;
    list.m_rendition.set_line_weight(1);
    EXPECT_EQ(unclipped(recorded, segment), Lines{"dot_unclipped color=00000010 (40,50)"});
    EXPECT_EQ(clipped(recorded, segment), Lines{"dot_clipped color=00000010 (40,50)"});
    for (const std::int32_t weight : {0, -4, INT32_MIN}) {
      list.m_rendition.set_line_weight(weight);
      EXPECT_EQ(unclipped(recorded, segment), Lines{weighted("dot_unclipped", weight, "(40,50)")});
      EXPECT_EQ(clipped(recorded, segment), Lines{weighted("dot_clipped", weight, "(40,50)")});
    }
  }
}

TEST_F(CollapsedSegment, OfWeightTwoIsADotWhileDotsAreNotWide) {
  list.m_rendition.set_line_weight(2);
  EXPECT_EQ(unclipped(recorded, segment), Lines{weighted("dot_unclipped", 2, "(40,50)")});
  EXPECT_EQ(clipped(recorded, segment), Lines{weighted("dot_clipped", 2, "(40,50)")});
}

TEST_F(CollapsedSegment, OutsideTheClipRectangleIsDrawnUntestedByUnclippedDrawing) {
  list.m_rendition.set_clip_rectangle({0, 10, 0, 10});
  EXPECT_EQ(unclipped(recorded, segment), Lines{"dot_unclipped color=00000010 (40,50)"});
}

TEST_F(CollapsedSegment, OfMoreWeightIsADiscWhileDotsAreNotWide) {
  list.m_rendition.set_clip_rectangle({0, 10, 0, 10});
  const struct {
    std::int32_t weight, radius;
  } cases[] = {{3, 1}, {4, 1}, {5, 2}, {6, 2}, {9, 4}, {INT32_MAX, 1073741823}};
  for (const auto& [weight, radius] : cases) {
    list.m_rendition.set_line_weight(weight);
    const std::string radii = "(" + std::to_string(radius) + "," + std::to_string(radius) + ")";
    const Lines disc = {
        weighted("elliptical_area", weight, "(40,50) " + radii + " 0 6.28318548 0")};
    EXPECT_EQ(unclipped(recorded, segment), disc);
    EXPECT_EQ(clipped(recorded, segment), disc);
  }
}

TEST_F(CollapsedSegment, DiscIsAFullTurnOfSinglePrecisionInTheRenditionsColor) {
  list.m_rendition.set_line_weight(5);
  segment.draw_clipped(list);
  ASSERT_EQ(recorded.recorder->calls().size(), 1U);
  const lumen::RecordedCall& call = recorded.recorder->calls()[0];
  EXPECT_EQ(call.points, (std::vector<LM_DCI_Point>{{40, 50, 0}, {2, 2, 0}}));
  EXPECT_EQ(call.angles, (std::vector<double>{0.0, 6.2831854820251465, 0.0}));
  EXPECT_FALSE(call.own_color.has_value());
  EXPECT_EQ(call.rendition, &list.m_rendition);
}

TEST_F(CollapsedSegment, IsAStrokeOfExactlyTheLineWeightWhereDotsAreWide) {
  list.m_bWideDots = true;
  const struct {
    std::int32_t weight, from, to;
  } cases[] = {{2, 40, 41}, {3, 39, 41}, {4, 39, 42}, {5, 38, 42}, {8, 37, 44}, {9, 36, 44}};
  for (const auto& [weight, from, to] : cases) {
    list.m_rendition.set_line_weight(weight);
    EXPECT_EQ(to - from + 1, weight);
    const std::string ends = "(" + std::to_string(from) + ",50) (" + std::to_string(to) + ",50)";
    const Lines stroke = {weighted("polyline_clipped", weight, ends)};
    EXPECT_EQ(unclipped(recorded, segment), stroke);
    EXPECT_EQ(clipped(recorded, segment), stroke);
  }
}

TEST_F(CollapsedSegment, WrapsAroundAtTheEndsOfTheDevicePlane) {
  list.m_bWideDots = true;
  list.m_scale = {0.0, 0.0};
  list.m_offset = {2147483647.0, 0.0};
  list.m_rendition.set_line_weight(4);
  EXPECT_EQ(unclipped(recorded, segment),
            Lines{weighted("polyline_clipped", 4, "(2147483646,0) (-2147483647,0)")});
}

TEST_F(CollapsedSegment, IsStrokedWithFlatEndsAndGivesEqualEndsBack) {
  list.m_bWideDots = true;
  list.m_rendition.set_line_weight(2);
  list.m_rendition.set_end_styles(LM_END_ROUND, LM_END_ROUND);
  EXPECT_EQ(unclipped(recorded, segment),
            Lines{weighted("polyline_clipped", 2, "(40,50) (41,50)")});
  EXPECT_EQ(list.m_rendition.line_style().start_style, LM_END_ROUND);
  EXPECT_EQ(list.m_rendition.line_style().end_style, LM_END_ROUND);
}

TEST_F(CollapsedSegment, LeavesDifferentEndsAtMinusOneForTheSegmentsAfterIt) {
  list.m_bWideDots = true;
  list.m_rendition.set_line_weight(2);
  list.m_rendition.set_end_styles(LM_END_ROUND, LM_END_SQUARE);
  const LogicalPoint points[] = {{0, 0},   {900, 0}, {0, 0}, {0, 1}, {0, 0},
                                 {0, 900}, {0, 0},   {1, 0}, {0, 0}, {900, 900}};
  DLPolysegment five({0x10}, 10, points);
  EXPECT_EQ(clipped(recorded, five),
            (Lines{weighted("polyline_clipped", 2, "ends=1,2 (40,50) (49,50)"),
                   weighted("polyline_clipped", 2, "(40,50) (41,50)"),
                   weighted("polyline_clipped", 2, "ends=-1,-1 (40,50) (40,59)"),
                   weighted("polyline_clipped", 2, "(40,50) (41,50)"),
                   weighted("polyline_clipped", 2, "ends=-1,-1 (40,50) (49,59)")}));
  EXPECT_EQ(list.m_rendition.line_style().start_style, -1);
  EXPECT_EQ(list.m_rendition.line_style().end_style, -1);
}

TEST_F(CollapsedSegment, LeavesEndsAloneWhereItIsADotOrADisc) {
  list.m_rendition.set_end_styles(LM_END_ROUND, LM_END_SQUARE);
  EXPECT_EQ(clipped(recorded, segment), Lines{"dot_clipped color=00000010 ends=1,2 (40,50)"});
  list.m_rendition.set_line_weight(3);
  EXPECT_EQ(clipped(recorded, segment),
            Lines{weighted("elliptical_area", 3, "ends=1,2 (40,50) (1,1) 0 6.28318548 0")});
  EXPECT_EQ(list.m_rendition.line_style().start_style, LM_END_ROUND);
  EXPECT_EQ(list.m_rendition.line_style().end_style, LM_END_SQUARE);
}

TEST_F(CollapsedSegment, WithFlatEndsLeavesTheRenditionUnchanged) {
  list.m_bWideDots = true;
  list.m_rendition.set_line_weight(4);
  segment.rendition(list);
  const std::uint64_t serial = list.m_rendition.change_serial();
  segment.draw_clipped(list);
  EXPECT_EQ(list.m_rendition.change_serial(), serial);
}

TEST_F(CollapsedSegment, KeepsTheLinePattern) {
  list.m_bWideDots = true;
  list.m_rendition.set_line_weight(2);
  list.m_rendition.set_line_pattern(LM_PATTERN_DASH);
  EXPECT_EQ(clipped(recorded, segment),
            Lines{weighted("polyline_clipped", 2, "pattern=1 (40,50) (41,50)")});
}

TEST_F(CollapsedSegment, TakesWeightAndEndsFromItsOwnRenditionWhenPalettized) {
  LM_Rendition own;
  own.set_color({0x20}, true);
  own.set_line_weight(3);
  own.set_end_styles(LM_END_SQUARE, LM_END_ROUND);
  list.m_rendition.set_line_weight(8);
  DL::PalettizedDrawable<DLPolysegment> palettized(&own, 2, kPoints);
  EXPECT_EQ(unclipped(recorded, palettized),
            Lines{"elliptical_area color=00000020 weight=3 ends=2,1 (40,50) (1,1) 0 6.28318548 0"});
  list.m_bWideDots = true;
  EXPECT_EQ(unclipped(recorded, palettized),
            Lines{"polyline_clipped color=00000020 weight=3 (39,50) (41,50)"});
  EXPECT_EQ(own.line_style().start_style, -1);
  EXPECT_EQ(own.line_style().end_style, -1);
  EXPECT_EQ(list.m_rendition.line_style().start_style, LM_END_FLAT);
}

}  // namespace
