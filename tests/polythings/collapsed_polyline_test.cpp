#include <gtest/gtest.h>

#include <memory>

#include "tests/support/recorded_list.h"

// Polylines whose points all fall on one device point.

namespace {

using Lines = std::vector<std::string>;
constexpr std::int32_t kMaximum = INT32_MAX;

struct CollapsedPolyline : testing::Test {
  CollapsedPolyline() {
    list.m_scale = {0.01, 0.01};
    list.m_offset = {40.0, 50.0};
  }
  Lines draw_unclipped() {
    polyline->draw_unclipped(list);
    return recorded.take_lines();
  }
  Lines draw_clipped() {
    polyline->draw_clipped(list);
    return recorded.take_lines();
  }

  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  std::unique_ptr<DL::Drawable> polyline{make_polyline({{0, 0}, {10, 10}, {-10, 20}}, {0x10})};
};

TEST_F(CollapsedPolyline, IsADot) {
  EXPECT_EQ(draw_unclipped(), Lines{"dot_unclipped color=00000010 (40,50)"});
  EXPECT_EQ(draw_clipped(), Lines{"dot_clipped color=00000010 (40,50)"});
}

TEST_F(CollapsedPolyline, OnTheEdgeOfTheClipRectangleIsAnUnclippedDotAndOutsideAClippedOne) {
  list.m_rendition.set_clip_rectangle({40, 40, 50, 50});
  EXPECT_EQ(draw_unclipped(), Lines{"dot_unclipped color=00000010 (40,50)"});
  for (const LM_Clip_Rectangle outside :
       {LM_Clip_Rectangle{41, 90, 0, 90}, {0, 39, 0, 90}, {0, 90, 51, 90}, {0, 90, 0, 49}}) {
    list.m_rendition.set_clip_rectangle(outside);
    EXPECT_EQ(draw_unclipped(), Lines{"dot_clipped color=00000010 (40,50)"});
  }
}

TEST_F(CollapsedPolyline, IsADotWhileDotsAreNotWideOrTheLineIsThin) {
  list.m_rendition.set_line_weight(9);
  EXPECT_EQ(draw_unclipped(), Lines{"dot_unclipped color=00000010 weight=9 (40,50)"});
  list.m_bWideDots = true;
  for (const std::int32_t weight : {1, 0, -4}) {
    list.m_rendition.set_line_weight(weight);
    ASSERT_EQ(recorded.recorder->calls().size(), 0U);
    polyline->draw_unclipped(list);
    ASSERT_EQ(recorded.recorder->calls().size(), 1U);
    EXPECT_EQ(recorded.recorder->calls()[0].action, "dot_unclipped");
    recorded.recorder->clear();
  }
}

TEST_F(CollapsedPolyline, IsAStrokeOfExactlyTheLineWeightWhereDotsAreWide) {
  list.m_bWideDots = true;
  const struct {
    std::int32_t weight, from, to;
  } cases[] = {{2, 40, 41}, {3, 39, 41}, {4, 39, 42}, {5, 38, 42}, {8, 37, 44}, {9, 36, 44}};
  for (const auto& [weight, from, to] : cases) {
    list.m_rendition.set_line_weight(weight);
    const std::string points = " weight=" + std::to_string(weight) + " (" + std::to_string(from) +
                               ",50) (" + std::to_string(to) + ",50)";
    EXPECT_EQ(to - from + 1, weight);
    EXPECT_EQ(draw_unclipped(), Lines{"polyline_clipped color=00000010" + points});
    EXPECT_EQ(draw_clipped(), Lines{"polyline_clipped color=00000010" + points});
  }
}

TEST_F(CollapsedPolyline, WrapsAroundAtTheEndsOfTheDevicePlane) {
  list.m_bWideDots = true;
  list.m_offset = {2147483647.0, 0.0};
  list.m_scale = {0.0, 0.0};
  list.m_rendition.set_line_weight(4);
  EXPECT_EQ(draw_unclipped(),
            Lines{"polyline_clipped color=00000010 weight=4 (2147483646,0) (-2147483647,0)"});
  list.m_rendition.set_line_weight(kMaximum);
  list.m_offset = {-2147483648.0, 0.0};
  EXPECT_EQ(draw_unclipped(), Lines{"polyline_clipped color=00000010 weight=2147483647 "
                                    "(1073741825,0) (-1073741825,0)"});
}

TEST_F(CollapsedPolyline, IsStrokedWithFlatEndsAndGivesEqualEndsBack) {
  list.m_bWideDots = true;
  list.m_rendition.set_line_weight(2);
  list.m_rendition.set_end_styles(LM_END_ROUND, LM_END_ROUND);
  EXPECT_EQ(draw_unclipped(), Lines{"polyline_clipped color=00000010 weight=2 (40,50) (41,50)"});
  EXPECT_EQ(list.m_rendition.line_style().start_style, LM_END_ROUND);
  EXPECT_EQ(list.m_rendition.line_style().end_style, LM_END_ROUND);
}

TEST_F(CollapsedPolyline, LeavesDifferentEndsAtMinusOne) {
  list.m_bWideDots = true;
  list.m_rendition.set_line_weight(2);
  list.m_rendition.set_end_styles(LM_END_ROUND, LM_END_SQUARE);
  EXPECT_EQ(draw_clipped(), Lines{"polyline_clipped color=00000010 weight=2 (40,50) (41,50)"});
  EXPECT_EQ(list.m_rendition.line_style().start_style, -1);
  EXPECT_EQ(list.m_rendition.line_style().end_style, -1);
}

TEST_F(CollapsedPolyline, TakesWeightAndEndsFromItsOwnRenditionWhenPalettized) {
  LM_Rendition own;
  own.set_color({0x20}, true);
  own.set_line_weight(3);
  own.set_end_styles(LM_END_SQUARE, LM_END_SQUARE);
  list.m_rendition.set_line_weight(8);
  list.m_bWideDots = true;
  const LogicalPoint points[2] = {};
  DL::PalettizedDrawable<DL::DLPolyline> palettized(&own, 2, points);
  palettized.draw_unclipped(list);
  EXPECT_EQ(recorded.take_lines(),
            Lines{"polyline_clipped color=00000020 weight=3 (39,50) (41,50)"});
  EXPECT_EQ(own.line_style().start_style, LM_END_SQUARE);
  own.set_line_weight(1);
  palettized.draw_unclipped(list);
  EXPECT_EQ(recorded.take_lines(), Lines{"dot_unclipped color=00000020 ends=2,2 (40,50)"});
}

TEST_F(CollapsedPolyline, OfOnePointIsADotToo) {
  polyline.reset(make_polyline({{0, 0}}, {0x10}));
  EXPECT_EQ(draw_unclipped(), Lines{"dot_unclipped color=00000010 (40,50)"});
}

}  // namespace
