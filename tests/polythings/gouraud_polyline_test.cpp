#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <memory>

#include "tests/support/memory_stream.h"
#include "tests/support/point_printing.h"
#include "tests/support/random_view.h"
#include "tests/support/recorded_list.h"

namespace {

using Lines = std::vector<std::string>;
using DL::DLGouraudPolyline;

constexpr LM_RGB32 kColors[] = {{0xA}, {0xB}, {0xC}, {0xD}};

std::unique_ptr<DLGouraudPolyline> make(std::initializer_list<LogicalPoint> points) {
  return std::make_unique<DLGouraudPolyline>(LM_RGB32{0x10}, static_cast<int>(points.size()),
                                             points.begin(), kColors);
}

Lines drawn_unclipped(RecordedList& recorded, std::initializer_list<LogicalPoint> points) {
  make(points)->draw_unclipped(recorded.list);
  return recorded.take_lines();
}

TEST(GouraudPolyline, InsideOrOnTheEdgeOfTheClipRectangleIsDrawnUnclipped) {
  RecordedList recorded;
  recorded.list.m_rendition.set_clip_rectangle({-5, 20, -7, 30});
  EXPECT_EQ(drawn_unclipped(recorded, {{-5, -7}, {20, 30}}),
            Lines{"gouraud_polyline_unclipped color=00000010 (-5,-7) (20,30) #0000000A #0000000B"});
}

TEST(GouraudPolyline, WithOnePointOutsideTheClipRectangleIsDrawnClipped) {
  RecordedList recorded;
  recorded.list.m_rendition.set_clip_rectangle({-5, 20, -7, 30});
  for (const LogicalPoint p : {LogicalPoint{21, 0}, {-6, 0}, {0, 31}, {0, -8}}) {
    EXPECT_EQ(drawn_unclipped(recorded, {{0, 1}, p}),
              Lines{"gouraud_polyline_clipped color=00000010 (0,1) (" + std::to_string(p.x) + "," +
                    std::to_string(p.y) + ") #0000000A #0000000B"});
  }
}

TEST(GouraudPolyline, IsAlwaysClippedByClippedDrawingAndInATurnedView) {
  RecordedList recorded;
  const auto polyline = make({{1, 2}, {3, 4}});
  polyline->draw_clipped(recorded.list);
  recorded.list.m_bRotationSecondary = true;
  polyline->draw_unclipped(recorded.list);
  const std::string line =
      "gouraud_polyline_clipped color=00000010 (1,2) (3,4) #0000000A #0000000B";
  EXPECT_EQ(recorded.take_lines(), (Lines{line, line}));
}

TEST(GouraudPolyline, KeepsRepeatedPointsBesideTheirColors) {
  RecordedList recorded;
  EXPECT_EQ(drawn_unclipped(recorded, {{1, 2}, {1, 2}, {1, 2}}),
            Lines{"gouraud_polyline_unclipped color=00000010 (1,2) (1,2) (1,2) #0000000A #0000000B "
                  "#0000000C"});
}

TEST(GouraudPolyline, OfNoPointsDrawsNothing) {
  RecordedList recorded;
  const auto none = make({});
  none->draw_unclipped(recorded.list);
  none->draw_clipped(recorded.list);
  EXPECT_TRUE(recorded.take_lines().empty());
}

RC_GTEST_PROP(GouraudPolyline, IsDrawnAsThePlainWayHasIt, ()) {
  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  random_view::set_any_view(list);
  const std::vector<LogicalPoint> points = random_view::any_points(1);
  std::vector<LM_RGB32> colors;
  for (std::uint32_t i = 0; i < points.size(); ++i) colors.push_back({i});
  DLGouraudPolyline polyline({0x77}, static_cast<int>(points.size()), points.data(), colors.data());
  const std::vector<LM_DCI_Point> device = random_view::to_device(list, points);
  const bool clipped_draw = *rc::gen::arbitrary<bool>();
  const bool unclipped =
      !clipped_draw && !list.m_bRotationSecondary && random_view::all_inside(list, device);
  if (clipped_draw) {
    polyline.draw_clipped(list);
  } else {
    polyline.draw_unclipped(list);
  }
  RC_ASSERT(recorded.recorder->calls().size() == 1U);
  const lumen::RecordedCall& call = recorded.recorder->calls()[0];
  RC_ASSERT(call.action ==
            std::string("gouraud_polyline") + (unclipped ? "_unclipped" : "_clipped"));
  RC_ASSERT(call.points == device);
  RC_ASSERT(call.vertex_colors == colors);
}

TEST(GouraudPolyline, IsFoundByASearchForItsPointsWhateverTheColors) {
  const LogicalPoint points[] = {{1, 2}, {3, 4}};
  const LM_RGB32 other_colors[] = {{7}, {8}};
  DLGouraudPolyline wanted({1}, 2, points, other_colors);
  DL::Search search;
  search.prototype = &wanted;
  search.type = DLGouraudPolyline::my_type();
  EXPECT_TRUE(make({{1, 2}, {3, 4}})->remove(search));
  EXPECT_FALSE(make({{1, 2}, {3, 5}})->remove(search));
  EXPECT_FALSE(make({{1, 2}, {3, 4}, {3, 4}})->remove(search));
}

TEST(GouraudPolyline, IsNotFoundByASearchForAPolylineOfTheSamePoints) {
  const std::unique_ptr<DL::DLPolyline> wanted(make_polyline({{1, 2}, {3, 4}}));
  DL::Search search;
  search.prototype = wanted.get();
  search.type = DL::DLPolyline::my_type();
  EXPECT_FALSE(make({{1, 2}, {3, 4}})->remove(search));
}

TEST(GouraudPolyline, CloneHasColorsOfItsOwn) {
  const auto polyline = make({{1, 2}, {3, 4}});
  const std::unique_ptr<DL::Drawable> copy(polyline->clone());
  ASSERT_EQ(copy->type(), DLGouraudPolyline::my_type());
  const auto* gouraud = static_cast<DLGouraudPolyline*>(copy.get());
  EXPECT_NE(gouraud->colors, polyline->colors);
  EXPECT_NE(gouraud->points, polyline->points);
  EXPECT_EQ(gouraud->colors[0], kColors[0]);
  EXPECT_EQ(gouraud->colors[1], kColors[1]);
}

TEST(GouraudPolyline, PartialCloneIsAPolylineWithoutVertexColors) {
  const auto polyline = make({{1, 2}, {3, 4}, {5, 6}, {7, 8}});
  const std::unique_ptr<DL::Drawable> part(polyline->partial_clone(1, 2));
  ASSERT_NE(part, nullptr);
  EXPECT_EQ(part->type(), DL::DLPolyline::my_type());
  EXPECT_EQ(part->m_colorData.m_color.word, 0x10U);
  const auto* run = static_cast<DL::DLPolyline*>(part.get());
  ASSERT_EQ(run->count, 3);
  EXPECT_EQ(run->points[0], (LogicalPoint{3, 4}));
  EXPECT_EQ(run->points[2], (LogicalPoint{7, 8}));
}

TEST(GouraudPolyline, IsNotStored) {
  RecordedList recorded;
  const auto polyline = make({{1, 2}, {3, 4}});
  MemoryStream stream;
  polyline->serialize_out(&stream, recorded.list);
  EXPECT_EQ(stream.size(), 0U);
  MemoryStream input(std::vector<std::uint32_t>{1, 2, 3, 4});
  polyline->serialize_in(&input, recorded.list);
  EXPECT_EQ(input.position(), 0U);
  EXPECT_EQ(polyline->count, 2);
}

TEST(GouraudPolyline, IsSteppedThroughLikeAPolyline) {
  const auto polyline = make({{1, 2}, {3, 4}, {5, 6}});
  EXPECT_EQ(polyline->get_vector_count(), 2);
  const std::unique_ptr<DL::DrawableVectorIterator> iterator(
      polyline->create_vector_iterator(true));
  EXPECT_EQ(iterator->m_vector, (DL::VectorTemplate<long>{{1, 2}, {3, 4}}));
  ASSERT_NE(iterator->next(), nullptr);
  EXPECT_EQ(iterator->m_vector, (DL::VectorTemplate<long>{{3, 4}, {5, 6}}));
  EXPECT_EQ(iterator->next(), nullptr);
}

}  // namespace
