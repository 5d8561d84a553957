#include "displaylist/polythings/polything.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <memory>

#include "tests/support/drawable_chain.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/memory_stream.h"
#include "tests/support/point_printing.h"
#include "tests/support/recorded_list.h"
#include "tests/support/test_heap.h"

namespace {

using Vector = DL::VectorTemplate<long>;
using Words = std::vector<std::uint32_t>;
using Owned = std::unique_ptr<DL::DLPolyline>;

DL::DrawableVectorIteratorPolything* iterate(DL::Drawable& drawable, bool flag = false) {
  return dynamic_cast<DL::DrawableVectorIteratorPolything*>(drawable.create_vector_iterator(flag));
}
using Iterator = std::unique_ptr<DL::DrawableVectorIteratorPolything>;

TEST(Polything, CopiesThePointsItIsGiven) {
  LogicalPoint points[] = {{1, 2}, {3, 4}};
  const Owned polyline(new DL::DLPolyline({}, 2, points));
  points[0] = {9, 9};
  EXPECT_EQ(polyline->count, 2);
  EXPECT_EQ(polyline->points[0], (LogicalPoint{1, 2}));
  EXPECT_EQ(polyline->points[1], (LogicalPoint{3, 4}));
}

TEST(Polything, TakesItsPointsFromTheHeapThatIsNamed) {
  TestHeap heap;
  const LogicalPoint points[3] = {};
  const Owned polyline(new (&heap) DL::DLPolyline({}, 3, points, &heap));
  EXPECT_EQ(heap.requests(), 2);
  EXPECT_EQ(heap.bytes(), sizeof(DL::DLPolyline) + 3 * 8);
}

TEST(Polything, WithoutMemoryForItsPointsHasNoneAndDrawsNothing) {
  TestHeap heap(0);
  const LogicalPoint points[3] = {{1, 1}, {2, 2}, {3, 3}};
  RecordedList recorded;
  const LM_RGB32 colors[3] = {};
  const std::unique_ptr<DL::Polything> polythings[] = {
      std::make_unique<DL::DLPolyline>(LM_RGB32{}, 3, points, &heap),
      std::make_unique<DL::DLGouraudPolyline>(LM_RGB32{}, 3, points, colors, &heap),
      std::make_unique<DL::DLPolygon>(LM_RGB32{}, 3, points, &heap)};
  for (const auto& polything : polythings) {
    EXPECT_EQ(polything->count, 0);
    polything->draw_unclipped(recorded.list);
    polything->draw_clipped(recorded.list);
    EXPECT_TRUE(bounds_of(*polything).is_empty());
  }
  EXPECT_TRUE(recorded.take_lines().empty());
}

TEST(Polything, OfNoPointsLeavesBoundsAlone) {
  const Owned empty(make_polyline({}));
  LogicalBounds bounds(1, 2, 3, 4);
  empty->add_bounds(bounds);
  EXPECT_EQ(bounds, LogicalBounds(1, 2, 3, 4));
  EXPECT_TRUE(bounds_of(*empty).is_empty());
}

RC_GTEST_PROP(Polything, BoundsCoverEveryPointAndNeverShrink, (std::vector<std::int32_t> values)) {
  std::vector<LogicalPoint> points;
  for (std::size_t i = 0; i + 1 < values.size(); i += 2)
    points.push_back({values[i], values[i + 1]});
  const Owned polyline(new DL::DLPolyline({}, static_cast<int>(points.size()), points.data()));
  LogicalBounds expected(-3, -2, 4, 5);
  for (const LogicalPoint& p : points) {
    expected.min.x = std::min(expected.min.x, p.x);
    expected.min.y = std::min(expected.min.y, p.y);
    expected.max.x = std::max(expected.max.x, p.x);
    expected.max.y = std::max(expected.max.y, p.y);
  }
  LogicalBounds bounds(-3, -2, 4, 5);
  polyline->add_bounds(bounds);
  RC_ASSERT(bounds == expected);
}

TEST(Polything, HasAVectorForEveryPairOfNeighbours) {
  const Owned polyline(make_polyline({{0, 0}, {1, 0}, {1, 1}}));
  EXPECT_EQ(polyline->get_vector_count(), 2);
  EXPECT_TRUE(polyline->supports_fast_vector_iterator());
  Vector vector{};
  EXPECT_TRUE(polyline->get_vector(0, vector));
  EXPECT_EQ(vector, (Vector{{0, 0}, {1, 0}}));
  EXPECT_TRUE(polyline->get_vector(1, vector));
  EXPECT_EQ(vector, (Vector{{1, 0}, {1, 1}}));
}

TEST(Polything, WithFewerThanTwoPointsHasNoVector) {
  const Owned none(make_polyline({}));
  const Owned one(make_polyline({{1, 2}}));
  EXPECT_EQ(none->get_vector_count(), -1);
  EXPECT_EQ(one->get_vector_count(), 0);
  EXPECT_FALSE(none->supports_fast_vector_iterator());
  EXPECT_FALSE(one->supports_fast_vector_iterator());
}

TEST(PolythingIterator, OfTwoPointsHasOneVector) {
  const Owned polyline(make_polyline({{1, 2}, {3, 4}}));
  const Iterator iterator(iterate(*polyline));
  ASSERT_NE(iterator, nullptr);
  EXPECT_FALSE(iterator->m_bDone);
  EXPECT_EQ(iterator->m_vector, (Vector{{1, 2}, {3, 4}}));
  EXPECT_EQ(iterator->next(), nullptr);
  EXPECT_TRUE(iterator->m_bDone);
  EXPECT_EQ(iterator->prev(), nullptr);
  EXPECT_TRUE(iterator->m_bDone);
}

TEST(PolythingIterator, OfFourPointsStepsOverThreeVectorsAndBackFromTheEnd) {
  const Owned polyline(make_polyline({{0, 0}, {1, 0}, {2, 0}, {3, 0}}));
  const Iterator iterator(iterate(*polyline));
  EXPECT_EQ(iterator->m_count, 3);
  EXPECT_EQ(iterator->last, 3);
  EXPECT_EQ(iterator->m_vector, (Vector{{0, 0}, {1, 0}}));
  EXPECT_EQ(iterator->next(), &iterator->m_vector);
  EXPECT_EQ(iterator->m_vector, (Vector{{1, 0}, {2, 0}}));
  EXPECT_EQ(iterator->next(), &iterator->m_vector);
  EXPECT_EQ(iterator->m_vector, (Vector{{2, 0}, {3, 0}}));
  EXPECT_FALSE(iterator->m_bDone);
  EXPECT_EQ(iterator->next(), nullptr);
  EXPECT_TRUE(iterator->m_bDone);
  EXPECT_EQ(iterator->index, 2);
  EXPECT_EQ(iterator->prev(), &iterator->m_vector);
  EXPECT_EQ(iterator->m_vector, (Vector{{1, 0}, {2, 0}}));
}

TEST(PolythingIterator, ClearsItsDoneFlagOnASuccessfulStep) {
  const Owned polyline(make_polyline({{0, 0}, {1, 0}, {2, 0}}));
  const Iterator iterator(iterate(*polyline));
  EXPECT_EQ(iterator->prev(), nullptr);
  EXPECT_TRUE(iterator->m_bDone);
  EXPECT_EQ(iterator->index, 0);
  EXPECT_NE(iterator->next(), nullptr);
  EXPECT_FALSE(iterator->m_bDone);
  EXPECT_EQ(iterator->next(), nullptr);
  EXPECT_TRUE(iterator->m_bDone);
  EXPECT_NE(iterator->prev(), nullptr);
  EXPECT_FALSE(iterator->m_bDone);
}

TEST(PolythingIterator, LoadsAnyVector) {
  const Owned polyline(make_polyline({{0, 0}, {1, 0}, {2, 0}, {3, 0}}));
  const Iterator iterator(iterate(*polyline));
  iterator->get_vector(2);
  EXPECT_EQ(iterator->m_vector, (Vector{{2, 0}, {3, 0}}));
}

TEST(PolythingIterator, TakesNoNoticeOfItsFlag) {
  const Owned polyline(make_polyline({{0, 0}, {1, 0}, {2, 0}}));
  const Iterator with(iterate(*polyline, true));
  const Iterator without(iterate(*polyline, false));
  for (int steps = 0; steps < 4; ++steps) {
    EXPECT_EQ(with->m_vector, without->m_vector);
    EXPECT_EQ(with->m_bDone, without->m_bDone);
    EXPECT_EQ(with->next() == nullptr, without->next() == nullptr);
  }
}

TEST(PolythingIterator, IsNullWithoutMemory) {
  const Owned polyline(make_polyline({{0, 0}, {1, 0}}));
  const FailingDefaultHeap no_memory;
  EXPECT_EQ(polyline->create_vector_iterator(false), nullptr);
}

TEST(PolythingIterator, OfFewerThanTwoPointsStepsNowhere) {
  for (const auto* points : {"none", "one"}) {
    const Owned polyline(points == std::string("one") ? make_polyline({{1, 2}})
                                                      : make_polyline({}));
    const Iterator iterator(iterate(*polyline));
    for (int steps = 0; steps < 3; ++steps) EXPECT_EQ(iterator->next(), nullptr);
    for (int steps = 0; steps < 3; ++steps) EXPECT_EQ(iterator->prev(), nullptr);
    EXPECT_EQ(iterator->next(), nullptr);
  }
}

TEST(PolythingRecord, IsWrittenCoordinateByCoordinate) {
  const Owned polyline(make_polyline({{1, 2}, {3, -4}}, {9}));
  RecordedList recorded;
  MemoryStream stream;
  polyline->Polything::serialize_out(&stream, recorded.list);
  EXPECT_EQ(stream.words(), (Words{2, 1, 2, 3, 0xFFFFFFFC, 0x20000002, 9, 0x10000002}));
  EXPECT_EQ(stream.writes(), 8U);
}

TEST(PolythingRecord, OfCountZeroOrBelowHasNoArrayAndReadsNoCoordinates) {
  RecordedList recorded;
  for (const std::int32_t count : {0, -1, -1000, INT32_MIN}) {
    MemoryStream stream(Words{static_cast<std::uint32_t>(count), 0x20000002, 9, 0x10000002});
    const Owned polyline(new DL::DLPolyline(DL::class_change::kUnfilled));
    polyline->serialize_in(&stream, recorded.list);
    EXPECT_EQ(polyline->count, count);
    EXPECT_EQ(polyline->points, nullptr);
    EXPECT_TRUE(stream.at_end());
    EXPECT_FALSE(polyline->supports_fast_vector_iterator()) << count;
  }
}

TEST(PolythingRecord, IsReadIntoTheHeapOfTheList) {
  RecordedList recorded;
  TestHeap heap;
  recorded.list.m_heap = &heap;
  MemoryStream stream(Words{0x80000200, 2, 1, 2, 3, 4, 0x20000002, 9, 0x10000002});
  const DrawableChain chain(read_drawables(stream, recorded.list));
  EXPECT_EQ(heap.bytes(), sizeof(DL::DLPolyline) + 2 * 8);
}

TEST(PolythingRecord, ReplacesThePointsThatWereThere) {
  const LogicalPoint ten[10] = {};
  const Owned polyline(new DL::DLPolyline({}, 10, ten));
  RecordedList recorded;
  MemoryStream three(Words{3, 1, 2, 3, 4, 5, 6, 0x20000002, 9, 0x10000002});
  polyline->serialize_in(&three, recorded.list);
  ASSERT_EQ(polyline->count, 3);
  EXPECT_EQ(polyline->points[2], (LogicalPoint{5, 6}));
  MemoryStream none(Words{0, 0x20000002, 9, 0x10000002});
  polyline->serialize_in(&none, recorded.list);
  EXPECT_EQ(polyline->count, 0);
  EXPECT_EQ(polyline->points, nullptr);
}

TEST(PolythingRecord, WithoutMemoryForItsPointsIsReadPast) {
  RecordedList recorded;
  TestHeap heap(1);
  recorded.list.m_heap = &heap;
  MemoryStream stream(Words{0x80000200, 2, 1, 2, 3, 4, 0x20000002, 9, 0x10000002});
  const DrawableChain chain(read_drawables(stream, recorded.list));
  ASSERT_NE(chain.first(), nullptr);
  EXPECT_EQ(static_cast<DL::DLPolyline*>(chain.first())->count, 0);
  EXPECT_EQ(chain.first()->m_colorData.m_color.word, 9U);
  EXPECT_TRUE(stream.at_end());
}

TEST(PolythingRecord, OfManyPointsComesBackWhole) {
  std::vector<LogicalPoint> points;
  for (int i = 0; i < 200'001; ++i) points.push_back({i, -i});
  const Owned polyline(new DL::DLPolyline({}, static_cast<int>(points.size()), points.data()));
  RecordedList recorded;
  MemoryStream stream;
  polyline->serialize_out(&stream, recorded.list);
  const DrawableChain chain(read_drawables(stream, recorded.list));
  DL::Search search;
  search.prototype = polyline.get();
  search.type = polyline->type();
  EXPECT_TRUE(chain.first()->remove(search));
}

}  // namespace
