#include "displaylist/polythings/polygon.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <memory>
#include <typeinfo>

#include "tests/support/memory_stream.h"
#include "tests/support/point_printing.h"
#include "tests/support/random_view.h"
#include "tests/support/recorded_list.h"

namespace {

using Lines = std::vector<std::string>;
using Owned = std::unique_ptr<DL::DLPolygon>;
using Vector = DL::VectorTemplate<long>;

Lines drawn_unclipped(RecordedList& recorded, std::initializer_list<LogicalPoint> points) {
  const Owned polygon(make_polygon(points, {0x10}));
  polygon->draw_unclipped(recorded.list);
  return recorded.take_lines();
}

TEST(Polygon, OnTheEdgeOfTheClipRectangleIsDrawnUnclipped) {
  RecordedList recorded;
  recorded.list.m_rendition.set_clip_rectangle({-5, 20, -7, 30});
  EXPECT_EQ(drawn_unclipped(recorded, {{-5, -7}, {20, -7}, {20, 30}, {-5, 30}}),
            Lines{"polygon_unclipped color=00000010 (-5,-7) (20,-7) (20,30) (-5,30) integer=0"});
}

TEST(Polygon, WithOneVertexOneUnitOutsideTheClipRectangleIsDrawnClipped) {
  RecordedList recorded;
  recorded.list.m_rendition.set_clip_rectangle({-5, 20, -7, 30});
  ASSERT_FALSE(recorded.list.m_bRotationSecondary);
  for (const LogicalPoint p : {LogicalPoint{21, 0}, {-6, 0}, {0, 31}, {0, -8}}) {
    EXPECT_EQ(drawn_unclipped(recorded, {{0, 0}, {5, 5}, p}),
              Lines{"polygon_clipped color=00000010 (0,0) (5,5) (" + std::to_string(p.x) + "," +
                    std::to_string(p.y) + ") integer=0"});
  }
}

TEST(Polygon, IsClippedByClippedDrawing) {
  RecordedList recorded;
  const Owned polygon(make_polygon({{1, 2}, {3, 4}, {5, 6}}, {0x10}));
  polygon->draw_clipped(recorded.list);
  EXPECT_EQ(recorded.take_lines(),
            Lines{"polygon_clipped color=00000010 (1,2) (3,4) (5,6) integer=0"});
}

TEST(Polygon, TakesNoNoticeOfATurnedViewInItsChoice) {
  RecordedList recorded;
  recorded.list.m_bRotationSecondary = true;
  EXPECT_EQ(drawn_unclipped(recorded, {{1, 2}, {3, 4}, {5, 6}}),
            Lines{"polygon_unclipped color=00000010 (1,2) (3,4) (5,6) integer=0"});
}

TEST(Polygon, KeepsRepeatedPoints) {
  RecordedList recorded;
  EXPECT_EQ(drawn_unclipped(recorded, {{1, 2}, {1, 2}, {1, 2}}),
            Lines{"polygon_unclipped color=00000010 (1,2) (1,2) (1,2) integer=0"});
}

TEST(Polygon, OfNoPointsDrawsNothing) {
  RecordedList recorded;
  EXPECT_TRUE(drawn_unclipped(recorded, {}).empty());
}

RC_GTEST_PROP(Polygon, IsDrawnAsThePlainWayHasIt, ()) {
  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  random_view::set_any_view(list);
  const std::vector<LogicalPoint> points = random_view::any_points(1);
  DL::DLPolygon polygon({0x77}, static_cast<int>(points.size()), points.data());
  const std::vector<LM_DCI_Point> device = random_view::to_device(list, points);
  const bool clipped_draw = *rc::gen::arbitrary<bool>();
  const bool unclipped = !clipped_draw && random_view::all_inside(list, device);
  if (clipped_draw) {
    polygon.draw_clipped(list);
  } else {
    polygon.draw_unclipped(list);
  }
  RC_ASSERT(recorded.recorder->calls().size() == 1U);
  const lumen::RecordedCall& call = recorded.recorder->calls()[0];
  RC_ASSERT(call.action == std::string("polygon") + (unclipped ? "_unclipped" : "_clipped"));
  RC_ASSERT(call.points == device);
  RC_ASSERT(call.integer == std::optional<std::int32_t>(0));
}

TEST(Polygon, HasAVectorForEveryEdgeTheClosingOneLast) {
  const Owned square(make_polygon({{0, 0}, {4, 0}, {4, 4}, {0, 4}}));
  ASSERT_EQ(square->get_vector_count(), 4);
  EXPECT_TRUE(square->supports_fast_vector_iterator());
  const Vector edges[] = {{{0, 0}, {4, 0}}, {{4, 0}, {4, 4}}, {{4, 4}, {0, 4}}, {{0, 4}, {0, 0}}};
  for (int i = 0; i < 4; ++i) {
    Vector vector{};
    EXPECT_TRUE(square->get_vector(i, vector));
    EXPECT_EQ(vector, edges[i]);
  }
  for (const bool flag : {false, true}) {
    const std::unique_ptr<DL::DrawableVectorIterator> iterator(
        square->create_vector_iterator(flag));
    const DL::DrawableVectorIterator& indexed = *iterator;
    EXPECT_EQ(typeid(indexed), typeid(DL::DrawableVectorIterator));
    EXPECT_EQ(iterator->m_vector, edges[0]);
    for (int i = 1; i < 4; ++i) {
      ASSERT_NE(iterator->next(), nullptr);
      EXPECT_EQ(iterator->m_vector, edges[i]);
    }
    EXPECT_EQ(iterator->next(), nullptr);
    ASSERT_NE(iterator->prev(), nullptr);
    EXPECT_EQ(iterator->m_vector, edges[3]);
  }
}

TEST(Polygon, IsFoundByASearchForTheSamePointsAndColor) {
  const Owned wanted(make_polygon({{1, 2}, {3, 4}, {5, 6}}, {7}));
  DL::Search search;
  search.prototype = wanted.get();
  search.type = DL::DLPolygon::my_type();
  EXPECT_TRUE(Owned(make_polygon({{1, 2}, {3, 4}, {5, 6}}, {7}))->remove(search));
  EXPECT_FALSE(Owned(make_polygon({{1, 2}, {3, 4}, {5, 6}}, {8}))->remove(search));
  EXPECT_FALSE(Owned(make_polygon({{1, 2}, {3, 4}, {5, 7}}, {7}))->remove(search));
  EXPECT_FALSE(Owned(make_polygon({{3, 4}, {5, 6}, {1, 2}}, {7}))->remove(search));
  EXPECT_FALSE(Owned(make_polygon({{1, 2}, {3, 4}, {5, 6}, {5, 6}}, {7}))->remove(search));
}

TEST(Polygon, IsNotFoundByASearchForAPolylineOfTheSamePoints) {
  const std::unique_ptr<DL::DLPolyline> wanted(make_polyline({{1, 2}, {3, 4}, {5, 6}}));
  DL::Search search;
  search.prototype = wanted.get();
  search.type = DL::DLPolyline::my_type();
  EXPECT_FALSE(Owned(make_polygon({{1, 2}, {3, 4}, {5, 6}}))->remove(search));
}

TEST(Polygon, HasNoPartialClone) {
  const Owned polygon(make_polygon({{1, 2}, {3, 4}, {5, 6}}));
  EXPECT_EQ(polygon->partial_clone(0, 1), nullptr);
}

TEST(Polygon, IsNotStored) {
  RecordedList recorded;
  const Owned polygon(make_polygon({{1, 2}, {3, 4}, {5, 6}}));
  MemoryStream stream;
  polygon->serialize_out(&stream, recorded.list);
  EXPECT_EQ(stream.size(), 0U);
  MemoryStream input(std::vector<std::uint32_t>{1, 2, 3, 4});
  polygon->serialize_in(&input, recorded.list);
  EXPECT_EQ(input.position(), 0U);
  EXPECT_EQ(polygon->count, 3);
}

}  // namespace
