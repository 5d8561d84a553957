#include "displaylist/polythings/polymarker.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <memory>

#include "lumen/packed_heap.h"
#include "tests/polythings/allocation_counter.h"
#include "tests/support/drawable_answers.h"
#include "tests/support/drawable_chain.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/point_printing.h"
#include "tests/support/random_view.h"

namespace {

using answers::clipped;
using answers::Lines;
using answers::text;
using answers::unclipped;
using DL::DLPolymarker;
using Vector = DL::VectorTemplate<long>;

constexpr LogicalPoint kPoints[] = {{1, 2}, {3, 4}, {5, 6}};

DLPolymarker markers(std::initializer_list<LogicalPoint> points) {
  return {{0x10}, static_cast<int>(points.size()), points.begin()};
}

TEST(Polymarker, OnTheBorderOfTheClipRectangleIsDrawnUnclippedInOneCall) {
  RecordedList recorded;
  recorded.list.m_rendition.set_clip_rectangle(answers::kClip);
  DLPolymarker four = markers({{-5, -7}, {20, -7}, {20, 30}, {-5, 30}});
  EXPECT_EQ(unclipped(recorded, four),
            Lines{"marker_unclipped color=00000010 (-5,-7) (20,-7) (20,30) (-5,30)"});
  EXPECT_EQ(clipped(recorded, four),
            Lines{"marker_clipped color=00000010 (-5,-7) (20,-7) (20,30) (-5,30)"});
}

TEST(Polymarker, WithOnePointOneUnitOutsideTheClipRectangleIsDrawnClipped) {
  RecordedList recorded;
  recorded.list.m_rendition.set_clip_rectangle(answers::kClip);
  for (const LogicalPoint outside : answers::kOneUnitOutside) {
    DLPolymarker last = markers({{1, 1}, outside});
    EXPECT_EQ(unclipped(recorded, last),
              Lines{"marker_clipped color=00000010 (1,1) " + text(outside)});
    DLPolymarker first = markers({outside, {1, 1}});
    EXPECT_EQ(unclipped(recorded, first),
              Lines{"marker_clipped color=00000010 " + text(outside) + " (1,1)"});
  }
}

TEST(Polymarker, TakesNoNoticeOfATurnedViewInItsChoice) {
  RecordedList recorded;
  recorded.list.m_bRotationSecondary = true;
  DLPolymarker one = markers({{1, 2}});
  EXPECT_EQ(unclipped(recorded, one), Lines{"marker_unclipped color=00000010 (1,2)"});
}

TEST(Polymarker, FollowsTheRotationUnchecked) {
  RecordedList recorded;
  DLPolymarker far = markers({{INT32_MAX, 1}});
  recorded.list.m_bCheckOverflow = true;
  recorded.list.m_scale = {4.0, 1.0};
  EXPECT_EQ(clipped(recorded, far), Lines{"marker_clipped color=00000010 (-2147483648,1)"});
  answers::turn_by_a_quarter(recorded.list);
  DLPolymarker two = markers({{1, 2}, {3, 4}});
  EXPECT_EQ(clipped(recorded, two), Lines{"marker_clipped color=00000010 (98,201) (96,203)"});
}

TEST(Polymarker, KeepsRepeatedPoints) {
  RecordedList recorded;
  DLPolymarker three = markers({{1, 2}, {1, 2}, {1, 2}});
  EXPECT_EQ(unclipped(recorded, three), Lines{"marker_unclipped color=00000010 (1,2) (1,2) (1,2)"});
}

TEST(Polymarker, IsDrawnWithTheMarkerOfTheRendition) {
  RecordedList recorded;
  recorded.list.m_rendition.set_marker({LM_MARKER_CIRCLE, 5});
  DLPolymarker one = markers({{1, 2}});
  EXPECT_EQ(clipped(recorded, one), Lines{"marker_clipped color=00000010 marker=4,5 (1,2)"});
}

TEST(Polymarker, WithoutPointsDrawsNothing) {
  RecordedList recorded;
  const std::unique_ptr<DLPolymarker> cases[] = {
      std::make_unique<DLPolymarker>(LM_RGB32{}, 0, kPoints),
      std::make_unique<DLPolymarker>(LM_RGB32{}, -1, kPoints),
      std::make_unique<DLPolymarker>(LM_RGB32{}, INT32_MIN, kPoints),
      std::make_unique<DLPolymarker>(LM_RGB32{}, 3, nullptr)};
  for (const auto& none : cases) {
    EXPECT_TRUE(answers::all_ways(recorded, *none).empty());
    EXPECT_TRUE(bounds_of(*none).is_empty());
  }
}

RC_GTEST_PROP(Polymarker, IsDrawnAsThePlainWayHasIt, ()) {
  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  random_view::set_any_view(list);
  const std::vector<LogicalPoint> points = random_view::any_points(1);
  DLPolymarker polymarker({0x77}, static_cast<int>(points.size()), points.data());
  const std::vector<LM_DCI_Point> device = random_view::to_device(list, points);
  const bool clipped_draw = *rc::gen::arbitrary<bool>();
  const bool unclipped = !clipped_draw && random_view::all_inside(list, device);
  if (clipped_draw) {
    polymarker.draw_clipped(list);
  } else {
    polymarker.draw_unclipped(list);
  }
  RC_ASSERT(recorded.recorder->calls().size() == 1U);
  const lumen::RecordedCall& call = recorded.recorder->calls()[0];
  RC_ASSERT(call.action == (unclipped ? "marker_unclipped" : "marker_clipped"));
  RC_ASSERT(call.points == device);
}

TEST(Polymarker, TakesABufferFromTheGeneralAllocatorFromPoint257On) {
  DL::DisplayList list;
  const auto sizes_for = [&](int count) {
    const std::vector<LogicalPoint> points(static_cast<std::size_t>(count));
    DLPolymarker many({1}, count, points.data());
    many.rendition(list);  // the working rendition has the colour now
    AllocationCounter counter;
    many.draw_unclipped(list);
    many.draw_clipped(list);
    return counter.sizes();
  };
  EXPECT_EQ(sizes_for(256), std::vector<std::size_t>{});
  EXPECT_EQ(sizes_for(257), std::vector<std::size_t>(2, 257 * sizeof(LM_DCI_Point)));
}

TEST(Polymarker, HandsOverEveryPointFromEitherBuffer) {
  RecordedList recorded;
  for (const int count : {256, 257, 1000}) {
    std::vector<LogicalPoint> points;
    for (int i = 0; i < count; ++i) points.push_back({i, -i});
    DLPolymarker many({1}, count, points.data());
    many.draw_clipped(recorded.list);
    const std::vector<LM_DCI_Point> device = recorded.recorder->calls().at(0).points;
    EXPECT_EQ(device, random_view::to_device(recorded.list, points));
    recorded.recorder->clear();
  }
}

TEST(Polymarker, IsFoundByASearchForTheSamePointsAndColor) {
  DLPolymarker wanted({7}, 3, kPoints);
  const auto is_found = [&](std::initializer_list<LogicalPoint> points, LM_RGB32 color) {
    DLPolymarker other(color, static_cast<int>(points.size()), points.begin());
    return answers::finds(wanted, other);
  };
  EXPECT_TRUE(is_found({{1, 2}, {3, 4}, {5, 6}}, {7}));
  EXPECT_FALSE(is_found({{1, 2}, {3, 4}, {5, 6}}, {8}));
  EXPECT_FALSE(is_found({{1, 2}, {3, 4}, {5, 7}}, {7}));
  EXPECT_FALSE(is_found({{1, 2}, {3, 4}, {6, 6}}, {7}));
  EXPECT_FALSE(is_found({{3, 4}, {1, 2}, {5, 6}}, {7}));
  EXPECT_FALSE(is_found({{1, 2}, {3, 4}}, {7}));
  EXPECT_FALSE(is_found({{1, 2}, {3, 4}, {5, 6}, {5, 6}}, {7}));
}

TEST(Polymarker, IsNotFoundByASearchForAPolygonOfTheSamePoints) {
  DL::DLPolygon polygon({7}, 3, kPoints);
  DLPolymarker polymarker({7}, 3, kPoints);
  EXPECT_FALSE(answers::finds(polygon, polymarker));
}

TEST(Polymarker, CloneHasPointsOfItsOwnAndNoNeighbour) {
  DLPolymarker polymarker({0x123456}, 3, kPoints);
  polymarker.m_pNext = &polymarker;
  polymarker.set_drawable_info(reinterpret_cast<DL::Extra_Drawable_Info*>(&polymarker));
  const std::unique_ptr<DL::Drawable> copy(polymarker.clone());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->type(), DLPolymarker::my_type());
  EXPECT_EQ(copy->m_pNext, nullptr);
  EXPECT_EQ(copy->drawable_info(), nullptr);
  EXPECT_NE(static_cast<DLPolymarker*>(copy.get())->points, polymarker.points);
  EXPECT_TRUE(answers::finds(polymarker, *copy));
  EXPECT_EQ(polymarker.partial_clone(0, 1), nullptr);
}

TEST(Polymarker, CloneKeepsAll64BitsOfTheColorData) {
  DLPolymarker original({}, 3, kPoints);
  original.m_colorData.m_pRendition =
      reinterpret_cast<LM_Rendition*>(std::uintptr_t{0x123456789ABCDEF0});
  const std::unique_ptr<DL::Drawable> copy(original.clone());
  EXPECT_TRUE(copy->m_colorData == original.m_colorData);
}

TEST(Polymarker, CloneIsNullAndLeavesNothingWhereverMemoryRunsOut) {
  DLPolymarker visible({1}, 3, kPoints);
  const std::unique_ptr<DL::Drawable> hidden(visible.clone());
  hidden->hide();
  const std::size_t in_use = lumen::PackedHeap::process_heap().bytes_in_use();
  for (DL::Drawable* original : {static_cast<DL::Drawable*>(&visible), hidden.get()}) {
    for (const std::int64_t good_requests : {0, 1}) {
      const FailingDefaultHeap failing(good_requests);
      EXPECT_EQ(original->clone(), nullptr);
    }
    EXPECT_EQ(lumen::PackedHeap::process_heap().bytes_in_use(), in_use);
  }
}

TEST(Polymarker, HiddenDrawsNothingAndClonesHidden) {
  RecordedList recorded;
  const std::unique_ptr<DL::Drawable> hidden =
      std::make_unique<DLPolymarker>(LM_RGB32{1}, 3, kPoints);
  hidden->hide();
  EXPECT_TRUE(answers::all_ways(recorded, *hidden).empty());
  EXPECT_TRUE(std::unique_ptr<DL::Drawable>(hidden->clone())->is_hidden());
}

TEST(Polymarker, HasAVectorForEveryPairOfNeighbours) {
  DLPolymarker polymarker({}, 3, kPoints);
  ASSERT_EQ(polymarker.get_vector_count(), 2);
  const std::unique_ptr<DL::DrawableVectorIterator> iterator(
      polymarker.create_vector_iterator(true));
  for (int i = 0; i < 2; ++i) {
    Vector vector{};
    EXPECT_TRUE(polymarker.get_vector(i, vector));
    EXPECT_EQ(vector, (Vector{kPoints[i], kPoints[i + 1]}));
    EXPECT_EQ(iterator->m_vector, vector);
    EXPECT_EQ(iterator->next() != nullptr, i == 0);
  }
}

TEST(Polymarker, IsNotStoredAndLeftOutOfAChain) {
  DLPolymarker polymarker({}, 3, kPoints);
  answers::expect_not_stored(polymarker);
  const DrawableChain chain{new DL::DLDot({1}, {1, 1}), new DLPolymarker({}, 3, kPoints)};
  DL::DisplayList list;
  EXPECT_EQ(answers::record_of(*chain.first(), list),
            (answers::Words{0x80000010, 1, 1, 0x20000002, 1, 0x10000002}));
}

TEST(Polymarker, DumpLineTellsLevelAndCount) {
  const DLPolymarker polymarker({}, 3, kPoints);
  answers::expect_dump(polymarker, 2, "        DLPolymarker: level  2, points = 3", 3 * 8 + 48);
}

}  // namespace
