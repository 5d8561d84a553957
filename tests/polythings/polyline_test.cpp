#include "displaylist/polythings/polyline.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <memory>

#include "tests/support/point_printing.h"
#include "tests/support/random_view.h"
#include "tests/support/recorded_list.h"

namespace {

using Lines = std::vector<std::string>;
using Owned = std::unique_ptr<DL::DLPolyline>;

Lines drawn_unclipped(RecordedList& recorded, std::initializer_list<LogicalPoint> points) {
  const Owned polyline(make_polyline(points, {0x10}));
  polyline->draw_unclipped(recorded.list);
  return recorded.take_lines();
}

DL::Search search_for(DL::Drawable& prototype) {
  DL::Search search;
  search.prototype = &prototype;
  search.type = prototype.type();
  search.m_bounds = bounds_of(prototype);
  return search;
}

TEST(Polyline, InsideOrOnTheEdgeOfTheClipRectangleIsDrawnUnclipped) {
  RecordedList recorded;
  recorded.list.m_rendition.set_clip_rectangle({-5, 20, -7, 30});
  EXPECT_EQ(drawn_unclipped(recorded, {{-5, -7}, {20, 30}, {-5, 30}, {20, -7}}),
            Lines{"polyline_unclipped color=00000010 (-5,-7) (20,30) (-5,30) (20,-7)"});
}

TEST(Polyline, WithOnePointOutsideTheClipRectangleIsDrawnClipped) {
  RecordedList recorded;
  recorded.list.m_rendition.set_clip_rectangle({-5, 20, -7, 30});
  for (const LogicalPoint p : {LogicalPoint{21, 0}, {-6, 0}, {0, 31}, {0, -8}}) {
    const std::string at = "(" + std::to_string(p.x) + "," + std::to_string(p.y) + ")";
    EXPECT_EQ(drawn_unclipped(recorded, {{0, 1}, p}),
              Lines{"polyline_clipped color=00000010 (0,1) " + at});
    EXPECT_EQ(drawn_unclipped(recorded, {p, {0, 1}}),
              Lines{"polyline_clipped color=00000010 " + at + " (0,1)"});
  }
}

TEST(Polyline, IsAlwaysClippedByClippedDrawing) {
  RecordedList recorded;
  const Owned polyline(make_polyline({{1, 2}, {3, 4}}, {0x10}));
  polyline->draw_clipped(recorded.list);
  EXPECT_EQ(recorded.take_lines(), Lines{"polyline_clipped color=00000010 (1,2) (3,4)"});
}

TEST(Polyline, IsAlwaysClippedInATurnedView) {
  RecordedList recorded;
  recorded.list.m_bRotationSecondary = true;
  EXPECT_EQ(drawn_unclipped(recorded, {{1, 2}, {3, 4}}),
            Lines{"polyline_clipped color=00000010 (1,2) (3,4)"});
  EXPECT_EQ(drawn_unclipped(recorded, {{1, 2}, {1, 2}}), Lines{"dot_clipped color=00000010 (1,2)"});
}

TEST(Polyline, IsTurnedByTheRotationAlone) {
  RecordedList recorded;
  recorded.list.m_bRotated = true;
  const double quarter_turn[6] = {1.0, -1.0, 100.0, 200.0, 0.0, 0.0};
  std::copy_n(quarter_turn, 6, recorded.list.m_rotation);
  EXPECT_EQ(drawn_unclipped(recorded, {{1, 2}, {3, 4}}),
            Lines{"polyline_unclipped color=00000010 (98,201) (96,203)"});
}

TEST(Polyline, DropsRepeatedDevicePointsAndKeepsReturns) {
  RecordedList recorded;
  recorded.list.m_scale = {0.1, 0.1};
  EXPECT_EQ(drawn_unclipped(recorded, {{0, 0}, {1, 1}, {20, 0}, {21, 2}, {0, 0}, {2, 2}}),
            Lines{"polyline_unclipped color=00000010 (0,0) (2,0) (0,0)"});
}

TEST(Polyline, DropsNoPointThatDiffersInOneCoordinate) {
  RecordedList recorded;
  EXPECT_EQ(drawn_unclipped(recorded, {{0, 0}, {0, 1}, {1, 1}, {1, 1}, {1, 0}}),
            Lines{"polyline_unclipped color=00000010 (0,0) (0,1) (1,1) (1,0)"});
}

TEST(Polyline, OfNoPointsDrawsNothing) {
  RecordedList recorded;
  EXPECT_TRUE(drawn_unclipped(recorded, {}).empty());
  const Owned none(make_polyline({}));
  none->draw_clipped(recorded.list);
  EXPECT_TRUE(recorded.take_lines().empty());
}

RC_GTEST_PROP(Polyline, IsDrawnAsThePlainWayHasIt, ()) {
  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  random_view::set_any_view(list);
  const std::vector<LogicalPoint> points = random_view::any_points(1);
  DL::DLPolyline polyline({0x77}, static_cast<int>(points.size()), points.data());
  std::vector<LM_DCI_Point> kept;
  for (const LM_DCI_Point& p : random_view::to_device(list, points)) {
    if (kept.empty() || p.x != kept.back().x || p.y != kept.back().y) kept.push_back(p);
  }
  const bool clipped_draw = *rc::gen::arbitrary<bool>();
  const bool unclipped =
      !clipped_draw && !list.m_bRotationSecondary && random_view::all_inside(list, kept);
  if (clipped_draw) {
    polyline.draw_clipped(list);
  } else {
    polyline.draw_unclipped(list);
  }
  RC_ASSERT(recorded.recorder->calls().size() == 1U);
  const lumen::RecordedCall& call = recorded.recorder->calls()[0];
  RC_ASSERT(call.action == std::string(kept.size() == 1 ? "dot" : "polyline") +
                               (unclipped ? "_unclipped" : "_clipped"));
  RC_ASSERT(call.points == kept);
  RC_ASSERT(call.color.word == 0x77U);
}

TEST(Polyline, IsFoundByASearchForTheSamePointsWhateverTheColor) {
  const Owned wanted(make_polyline({{1, 2}, {3, 4}}, {1}));
  DL::Search search = search_for(*wanted);
  EXPECT_TRUE(Owned(make_polyline({{1, 2}, {3, 4}}, {2}))->remove(search));
  EXPECT_FALSE(Owned(make_polyline({{1, 2}, {3, 5}}, {1}))->remove(search));
  EXPECT_FALSE(Owned(make_polyline({{1, 2}, {4, 4}}, {1}))->remove(search));
  EXPECT_FALSE(Owned(make_polyline({{3, 4}, {1, 2}}, {1}))->remove(search));
  EXPECT_FALSE(Owned(make_polyline({{1, 2}, {3, 4}, {3, 4}}, {1}))->remove(search));
}

TEST(Polyline, OfNoPointsIsFoundByASearchForOne) {
  const Owned wanted(make_polyline({}));
  DL::Search search = search_for(*wanted);
  EXPECT_TRUE(Owned(make_polyline({}))->remove(search));
  EXPECT_FALSE(Owned(make_polyline({{0, 0}, {0, 0}}))->remove(search));
}

TEST(Polyline, IsNotFoundByASearchForAnotherClassOfTheSamePoints) {
  const LogicalPoint points[] = {{1, 2}, {3, 4}, {5, 6}};
  const LM_RGB32 colors[] = {{1}, {2}, {3}};
  DL::DLGouraudPolyline gouraud({}, 3, points, colors);
  DL::DLPolygon polygon({}, 3, points);
  DL::DLPolyline polyline({}, 3, points);
  DL::Search for_gouraud = search_for(gouraud);
  DL::Search for_polygon = search_for(polygon);
  EXPECT_FALSE(polyline.remove(for_gouraud));
  EXPECT_FALSE(polyline.remove(for_polygon));
}

TEST(Polyline, PartialCloneIsTheRunOfSegments) {
  std::vector<LogicalPoint> points;
  for (int i = 0; i < 10; ++i) points.push_back({i, 10 * i});
  DL::DLPolyline polyline({0x123}, 10, points.data());
  polyline.m_pNext = &polyline;
  const std::unique_ptr<DL::Drawable> part(polyline.partial_clone(2, 3));
  ASSERT_NE(part, nullptr);
  EXPECT_EQ(part->type(), DL::DLPolyline::my_type());
  EXPECT_EQ(part->m_pNext, nullptr);
  EXPECT_EQ(part->m_colorData.m_color.word, 0x123U);
  const auto* run = static_cast<DL::DLPolyline*>(part.get());
  ASSERT_EQ(run->count, 4);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(run->points[i], points[static_cast<std::size_t>(i + 2)]);
}

TEST(Polyline, PartialCloneOfTheWholeIsTheWhole) {
  const Owned polyline(make_polyline({{1, 2}, {3, 4}, {5, 6}}));
  const std::unique_ptr<DL::Drawable> whole(polyline->partial_clone(0, 2));
  DL::Search search = search_for(*polyline);
  EXPECT_TRUE(whole->remove(search));
}

TEST(Polyline, PartialCloneOfAHiddenOneIsVisible) {
  const Owned polyline(make_polyline({{1, 2}, {3, 4}, {5, 6}}));
  polyline->hide();
  DL::Drawable* hidden = polyline.get();
  const std::unique_ptr<DL::Drawable> part(hidden->partial_clone(0, 1));
  EXPECT_TRUE(hidden->is_hidden());
  EXPECT_FALSE(part->is_hidden());
}

}  // namespace
