#include "displaylist/drawables/polydot.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <memory>

#include "tests/support/drawable_answers.h"
#include "tests/support/point_printing.h"
#include "tests/support/random_view.h"
#include "tests/support/recorded_list.h"

// How polydots are drawn.

namespace {

using answers::clipped;
using answers::Lines;
using answers::text;
using answers::unclipped;
using DL::DLPolydot;

DLPolydot polydot(std::initializer_list<LogicalPoint> points) {
  return {{0x10}, static_cast<int>(points.size()), points.begin()};
}

TEST(Polydot, IssuesItsDotsLastPointFirst) {
  RecordedList recorded;
  DLPolydot dots = polydot({{1, 2}, {3, 4}, {5, 6}});
  EXPECT_EQ(unclipped(recorded, dots),
            (Lines{"dot_unclipped color=00000010 (5,6)", "dot_unclipped color=00000010 (3,4)",
                   "dot_unclipped color=00000010 (1,2)"}));
  EXPECT_EQ(clipped(recorded, dots),
            (Lines{"dot_clipped color=00000010 (5,6)", "dot_clipped color=00000010 (3,4)",
                   "dot_clipped color=00000010 (1,2)"}));
}

TEST(Polydot, TestsEachDotAgainstTheClipRectangle) {
  RecordedList recorded;
  recorded.list.m_rendition.set_clip_rectangle(answers::kClip);
  for (const LogicalPoint inside : answers::kOnTheBorder) {
    for (const LogicalPoint outside : answers::kOneUnitOutside) {
      DLPolydot dots = polydot({inside, outside, inside});
      EXPECT_EQ(unclipped(recorded, dots), (Lines{"dot_unclipped color=00000010 " + text(inside),
                                                  "dot_clipped color=00000010 " + text(outside),
                                                  "dot_unclipped color=00000010 " + text(inside)}));
    }
  }
}

TEST(Polydot, OfOnePointIsADot) {
  RecordedList recorded;
  recorded.list.m_rendition.set_clip_rectangle(answers::kClip);
  DLPolydot inside = polydot({{20, 30}});
  EXPECT_EQ(unclipped(recorded, inside), Lines{"dot_unclipped color=00000010 (20,30)"});
  EXPECT_EQ(clipped(recorded, inside), Lines{"dot_clipped color=00000010 (20,30)"});
  DLPolydot outside = polydot({{21, 30}});
  EXPECT_EQ(unclipped(recorded, outside), Lines{"dot_clipped color=00000010 (21,30)"});
}

TEST(Polydot, DrawsADevicePointOnceWhereItFollowsItselfAndAgainWhereItIsReachedAgain) {
  RecordedList recorded;
  recorded.list.m_scale = {0.1, 0.1};
  DLPolydot dots = polydot({{0, 0}, {1, 1}, {-2, 2}, {20, 0}, {0, 2}, {20, 1}, {21, 2}});
  EXPECT_EQ(unclipped(recorded, dots),
            (Lines{"dot_unclipped color=00000010 (2,0)", "dot_unclipped color=00000010 (0,0)",
                   "dot_unclipped color=00000010 (2,0)", "dot_unclipped color=00000010 (0,0)"}));
}

TEST(Polydot, DropsNoPointThatDiffersInOneCoordinate) {
  RecordedList recorded;
  DLPolydot dots = polydot({{0, 0}, {0, 1}, {1, 1}});
  EXPECT_EQ(clipped(recorded, dots),
            (Lines{"dot_clipped color=00000010 (1,1)", "dot_clipped color=00000010 (0,1)",
                   "dot_clipped color=00000010 (0,0)"}));
}

TEST(Polydot, OfEqualPointsIsOneDot) {
  RecordedList recorded;
  DLPolydot dots = polydot({{4, 4}, {4, 4}, {4, 4}});
  EXPECT_EQ(unclipped(recorded, dots), Lines{"dot_unclipped color=00000010 (4,4)"});
}

TEST(Polydot, FollowsTheRotation) {
  RecordedList recorded;
  answers::turn_by_a_quarter(recorded.list);
  DLPolydot one = polydot({{1, 2}});
  DLPolydot two = polydot({{1, 2}, {3, 4}});
  EXPECT_EQ(clipped(recorded, one), Lines{"dot_clipped color=00000010 (98,201)"});
  EXPECT_EQ(clipped(recorded, two),
            (Lines{"dot_clipped color=00000010 (96,203)", "dot_clipped color=00000010 (98,201)"}));
}

TEST(Polydot, TakesNoNoticeOfATurnedViewInItsChoice) {
  RecordedList recorded;
  recorded.list.m_bRotationSecondary = true;
  DLPolydot dots = polydot({{1, 2}});
  EXPECT_EQ(unclipped(recorded, dots), Lines{"dot_unclipped color=00000010 (1,2)"});
}

TEST(Polydot, IsNeverCheckedForOverflow) {
  RecordedList recorded;
  recorded.list.m_bCheckOverflow = true;
  recorded.list.m_scale = {4.0, 1.0};
  DLPolydot one = polydot({{INT32_MAX, 1}});
  DLPolydot two = polydot({{INT32_MAX, 1}, {0, 0}});
  EXPECT_EQ(clipped(recorded, one), Lines{"dot_clipped color=00000010 (-2147483648,1)"});
  EXPECT_EQ(clipped(recorded, two), (Lines{"dot_clipped color=00000010 (0,0)",
                                           "dot_clipped color=00000010 (-2147483648,1)"}));
}

TEST(Polydot, WithoutPointsDrawsNothing) {
  RecordedList recorded;
  const LogicalPoint point{1, 2};
  for (const bool wide : {false, true}) {
    recorded.list.m_bWideDots = wide;
    recorded.list.m_rendition.set_line_weight(4);
    const std::unique_ptr<DLPolydot> none[] = {
        std::make_unique<DLPolydot>(LM_RGB32{}, 0, &point),
        std::make_unique<DLPolydot>(LM_RGB32{}, -3, &point),
        std::make_unique<DLPolydot>(LM_RGB32{}, INT32_MIN, &point),
        std::make_unique<DLPolydot>(LM_RGB32{}, 2, nullptr)};
    for (const auto& dots : none) {
      EXPECT_TRUE(answers::all_ways(recorded, *dots).empty());
      EXPECT_TRUE(bounds_of(*dots).is_empty());
      EXPECT_LE(dots->get_vector_count(), 0);
    }
  }
}

RC_GTEST_PROP(Polydot, IsDrawnAsThePlainWayHasIt, ()) {
  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  random_view::set_any_view(list);
  list.m_bWideDots = *rc::gen::arbitrary<bool>();
  list.m_rendition.set_line_weight(*rc::gen::inRange(-1, 6));
  const std::int32_t weight = list.m_rendition.line_style().weight;
  const std::vector<LogicalPoint> points = random_view::any_points(1);
  DLPolydot dots({0x77}, static_cast<int>(points.size()), points.data());
  std::vector<LM_DCI_Point> kept;
  for (const LM_DCI_Point& p : random_view::to_device(list, points)) {
    if (kept.empty() || p != kept.back()) kept.push_back(p);
  }
  std::reverse(kept.begin(), kept.end());
  const bool clipped_draw = *rc::gen::arbitrary<bool>();
  if (clipped_draw) {
    dots.draw_clipped(list);
  } else {
    dots.draw_unclipped(list);
  }
  const bool wide = list.m_bWideDots && weight > 1;
  RC_ASSERT(recorded.recorder->calls().size() == kept.size());
  for (std::size_t i = 0; i < kept.size(); ++i) {
    const lumen::RecordedCall& call = recorded.recorder->calls()[i];
    const bool inside = !clipped_draw && random_view::all_inside(list, {kept[i]});
    RC_ASSERT(call.action == (wide     ? "polyline_clipped"
                              : inside ? "dot_unclipped"
                                       : "dot_clipped"));
    RC_ASSERT(call.points.size() == (wide ? 2U : 1U));
    RC_ASSERT(call.points.front().y == kept[i].y && call.points.back().y == kept[i].y);
    RC_ASSERT(!call.own_color.has_value());
    if (!wide) RC_ASSERT(call.points[0] == kept[i]);
  }
}

/// Polydots whose dots are as wide as the line.
struct WidePolydot : testing::Test {
  WidePolydot() { list.m_bWideDots = true; }

  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  DLPolydot dots = polydot({{10, 50}});
};

TEST_F(WidePolydot, IsAStrokeOfExactlyTheLineWeight) {
  const struct {
    std::int32_t weight, from, to;
  } cases[] = {{2, 10, 11}, {3, 9, 11}, {4, 9, 12}, {5, 8, 12}, {8, 7, 14}, {9, 6, 14}};
  for (const auto& [weight, from, to] : cases) {
    list.m_rendition.set_line_weight(weight);
    const Lines stroke = {"polyline_clipped color=00000010 weight=" + std::to_string(weight) + " " +
                          text(LogicalPoint{from, 50}) + " " + text(LogicalPoint{to, 50})};
    EXPECT_EQ(to - from + 1, weight);
    EXPECT_EQ(unclipped(recorded, dots), stroke);
    EXPECT_EQ(clipped(recorded, dots), stroke);
  }
}

TEST_F(WidePolydot, StrokesEachKeptPointLastPointFirst) {
  list.m_rendition.set_line_weight(3);
  list.m_rendition.set_clip_rectangle({0, 5, 0, 5});
  DLPolydot many = polydot({{1, 2}, {1, 2}, {90, 4}, {1, 2}});
  EXPECT_EQ(unclipped(recorded, many),
            (Lines{"polyline_clipped color=00000010 weight=3 (0,2) (2,2)",
                   "polyline_clipped color=00000010 weight=3 (89,4) (91,4)",
                   "polyline_clipped color=00000010 weight=3 (0,2) (2,2)"}));
}

TEST_F(WidePolydot, IsADotWhereTheLineIsThinOrDotsAreNotWide) {
  for (const std::int32_t weight : {1, 0, -4, INT32_MIN}) {
    list.m_rendition.set_line_weight(weight);
    dots.draw_unclipped(list);
    ASSERT_EQ(recorded.recorder->calls().size(), 1U);
    EXPECT_EQ(recorded.recorder->calls()[0].action, "dot_unclipped");
    recorded.recorder->clear();
  }
  list.m_bWideDots = false;
  list.m_rendition.set_line_weight(4);
  EXPECT_EQ(unclipped(recorded, dots), Lines{"dot_unclipped color=00000010 weight=4 (10,50)"});
}

TEST_F(WidePolydot, IsStrokedSolidAndGivesThePatternBack) {
  list.m_rendition.set_line_weight(3);
  list.m_rendition.set_line_pattern(LM_PATTERN_DASH_DOT);
  DLPolydot two = polydot({{10, 50}, {20, 60}});
  const Lines solid = {"polyline_clipped color=00000010 weight=3 (19,60) (21,60)",
                       "polyline_clipped color=00000010 weight=3 (9,50) (11,50)"};
  EXPECT_EQ(unclipped(recorded, two), solid);
  EXPECT_EQ(list.m_rendition.line_style().pattern, LM_PATTERN_DASH_DOT);
  EXPECT_EQ(clipped(recorded, two), solid);
  EXPECT_EQ(list.m_rendition.line_style().pattern, LM_PATTERN_DASH_DOT);
}

TEST_F(WidePolydot, ChangesASolidRenditionNeverAndAnotherToFreshSerials) {
  list.m_rendition.set_line_weight(3);
  dots.rendition(list);
  const std::uint64_t solid = list.m_rendition.change_serial();
  dots.draw_clipped(list);
  EXPECT_EQ(list.m_rendition.change_serial(), solid);
  list.m_rendition.set_line_pattern(LM_PATTERN_DOT);
  const std::uint64_t dotted = list.m_rendition.line_style().change_serial;
  recorded.recorder->clear();
  dots.draw_clipped(list);
  const std::uint64_t drawn = recorded.recorder->calls()[0].line_style.change_serial;
  EXPECT_GT(drawn, dotted);
  EXPECT_GT(list.m_rendition.line_style().change_serial, drawn);
}

TEST_F(WidePolydot, LeavesThePatternOfDotsAndTheEndsOfStrokesAlone) {
  list.m_rendition.set_line_pattern(LM_PATTERN_DASH);
  EXPECT_EQ(clipped(recorded, dots), Lines{"dot_clipped color=00000010 pattern=1 (10,50)"});
  list.m_rendition.set_line_pattern(LM_PATTERN_SOLID);
  list.m_rendition.set_line_weight(2);
  list.m_rendition.set_end_styles(LM_END_ROUND, LM_END_SQUARE);
  EXPECT_EQ(clipped(recorded, dots),
            Lines{"polyline_clipped color=00000010 weight=2 ends=1,2 (10,50) (11,50)"});
}

TEST_F(WidePolydot, TakesWeightAndPatternFromItsOwnRenditionWhenPalettized) {
  LM_Rendition own;
  own.set_color({0x20}, true);
  own.set_line_weight(3);
  own.set_line_pattern(LM_PATTERN_DASH);
  list.m_rendition.set_line_weight(8);
  const LogicalPoint point{10, 50};
  DL::PalettizedDrawable<DLPolydot> palettized(&own, 1, &point);
  EXPECT_EQ(unclipped(recorded, palettized),
            Lines{"polyline_clipped color=00000020 weight=3 (9,50) (11,50)"});
  EXPECT_EQ(own.line_style().pattern, LM_PATTERN_DASH);
  own.set_line_weight(1);
  EXPECT_EQ(unclipped(recorded, palettized),
            Lines{"dot_unclipped color=00000020 pattern=1 (10,50)"});
}

TEST_F(WidePolydot, WrapsAroundAtTheEndsOfTheDevicePlane) {
  DLPolydot far = polydot({{INT32_MAX, 0}, {INT32_MIN, 0}});
  list.m_rendition.set_line_weight(4);
  EXPECT_EQ(clipped(recorded, far),
            (Lines{"polyline_clipped color=00000010 weight=4 (2147483647,0) (-2147483646,0)",
                   "polyline_clipped color=00000010 weight=4 (2147483646,0) (-2147483647,0)"}));
}

}  // namespace
