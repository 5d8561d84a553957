#include "displaylist/polythings/polysegment.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <memory>

#include "tests/polythings/allocation_counter.h"
#include "tests/support/drawable_answers.h"
#include "tests/support/point_printing.h"
#include "tests/support/random_view.h"
#include "tests/support/recorded_list.h"

// How segments that are not points are drawn, and polysegments in general.

namespace {

using answers::clipped;
using answers::Lines;
using answers::text;
using answers::unclipped;
using DL::DLPolysegment;
using Vector = DL::VectorTemplate<long>;

constexpr LogicalPoint kPoints[] = {{0, 1}, {2, 3},   {4, 5},   {6, 7},
                                    {8, 9}, {10, 11}, {12, 13}, {14, 15}};

DLPolysegment segments(std::initializer_list<LogicalPoint> points) {
  return {{0x10}, static_cast<int>(points.size()), points.begin()};
}

TEST(Polysegment, DrawsASegmentACallInOrder) {
  RecordedList recorded;
  DLPolysegment two = segments({{1, 2}, {3, 4}, {5, 6}, {7, 8}});
  EXPECT_EQ(unclipped(recorded, two), (Lines{"polyline_unclipped color=00000010 (1,2) (3,4)",
                                             "polyline_unclipped color=00000010 (5,6) (7,8)"}));
  EXPECT_EQ(clipped(recorded, two), (Lines{"polyline_clipped color=00000010 (1,2) (3,4)",
                                           "polyline_clipped color=00000010 (5,6) (7,8)"}));
}

TEST(Polysegment, NeverDrawsAnOddLastPoint) {
  RecordedList recorded;
  DLPolysegment five = segments({{1, 2}, {3, 4}, {5, 6}, {7, 8}, {9, 10}});
  EXPECT_EQ(five.get_vector_count(), 2);
  EXPECT_EQ(unclipped(recorded, five), (Lines{"polyline_unclipped color=00000010 (1,2) (3,4)",
                                              "polyline_unclipped color=00000010 (5,6) (7,8)"}));
  DLPolysegment one = segments({{1, 2}});
  EXPECT_EQ(one.get_vector_count(), 0);
  EXPECT_TRUE(answers::all_ways(recorded, one).empty());
}

TEST(Polysegment, TestsEachSegmentAgainstTheClipRectangle) {
  RecordedList recorded;
  recorded.list.m_rendition.set_clip_rectangle(answers::kClip);
  for (const LogicalPoint inside : answers::kOnTheBorder) {
    for (const LogicalPoint outside : answers::kOneUnitOutside) {
      DLPolysegment three = segments({outside, {1, 1}, inside, {1, 1}, {1, 1}, outside});
      EXPECT_EQ(unclipped(recorded, three),
                (Lines{"polyline_clipped color=00000010 " + text(outside) + " (1,1)",
                       "polyline_unclipped color=00000010 " + text(inside) + " (1,1)",
                       "polyline_clipped color=00000010 (1,1) " + text(outside)}));
    }
  }
}

TEST(Polysegment, TakesNoNoticeOfATurnedViewInItsChoice) {
  RecordedList recorded;
  recorded.list.m_bRotationSecondary = true;
  DLPolysegment two = segments({{1, 2}, {3, 4}, {5, 6}, {5, 6}});
  EXPECT_EQ(unclipped(recorded, two), (Lines{"polyline_unclipped color=00000010 (1,2) (3,4)",
                                             "dot_unclipped color=00000010 (5,6)"}));
}

TEST(Polysegment, FollowsTheRotation) {
  RecordedList recorded;
  answers::turn_by_a_quarter(recorded.list);
  DLPolysegment two = segments({{1, 2}, {3, 4}, {1, 2}, {1, 2}});
  EXPECT_EQ(clipped(recorded, two), (Lines{"polyline_clipped color=00000010 (98,201) (96,203)",
                                           "dot_clipped color=00000010 (98,201)"}));
}

TEST(Polysegment, IsNeverCheckedForOverflow) {
  RecordedList recorded;
  recorded.list.m_bCheckOverflow = true;
  recorded.list.m_scale = {4.0, 1.0};
  DLPolysegment one = segments({{INT32_MAX, 1}, {1, 2}});
  EXPECT_EQ(clipped(recorded, one), Lines{"polyline_clipped color=00000010 (-2147483648,1) (4,2)"});
}

TEST(Polysegment, WithoutPointsDrawsNothing) {
  RecordedList recorded;
  const LogicalPoint points[2] = {};
  const std::unique_ptr<DLPolysegment> cases[] = {
      std::make_unique<DLPolysegment>(LM_RGB32{}, 0, points),
      std::make_unique<DLPolysegment>(LM_RGB32{}, -2, points),
      std::make_unique<DLPolysegment>(LM_RGB32{}, INT32_MIN, points),
      std::make_unique<DLPolysegment>(LM_RGB32{}, 2, nullptr)};
  for (const auto& none : cases) {
    EXPECT_TRUE(answers::all_ways(recorded, *none).empty());
    EXPECT_TRUE(bounds_of(*none).is_empty());
    EXPECT_LE(none->get_vector_count(), 0);
    EXPECT_FALSE(none->supports_fast_vector_iterator());
  }
}

RC_GTEST_PROP(Polysegment, IsDrawnAsThePlainWayHasIt, ()) {
  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  random_view::set_any_view(list);
  const std::vector<LogicalPoint> points = random_view::any_points(0);
  DLPolysegment polysegment({0x77}, static_cast<int>(points.size()), points.data());
  const std::vector<LM_DCI_Point> device = random_view::to_device(list, points);
  const bool clipped_draw = *rc::gen::arbitrary<bool>();
  if (clipped_draw) {
    polysegment.draw_clipped(list);
  } else {
    polysegment.draw_unclipped(list);
  }
  RC_ASSERT(recorded.recorder->calls().size() == points.size() / 2);
  for (std::size_t i = 0; i < points.size() / 2; ++i) {
    const lumen::RecordedCall& call = recorded.recorder->calls()[i];
    std::vector<LM_DCI_Point> segment = {device[2 * i], device[2 * i + 1]};
    const bool is_point = segment[0] == segment[1];
    const bool unclipped = !clipped_draw && (is_point || random_view::all_inside(list, segment));
    if (is_point) segment.pop_back();
    RC_ASSERT(call.action ==
              std::string(is_point ? "dot" : "polyline") + (unclipped ? "_unclipped" : "_clipped"));
    RC_ASSERT(call.points == segment);
  }
}

TEST(Polysegment, AllocatesNothingToDraw) {
  DL::DisplayList list;
  for (const int count : {256, 257, 5000}) {
    const std::vector<LogicalPoint> points(static_cast<std::size_t>(count), LogicalPoint{1, 2});
    DLPolysegment many({1}, count, points.data());
    many.rendition(list);  // the working rendition has the colour now
    AllocationCounter counter;
    many.draw_unclipped(list);
    many.draw_clipped(list);
    EXPECT_EQ(counter.sizes(), std::vector<std::size_t>{});
  }
}

TEST(Polysegment, DrawsEverySegmentOfMany) {
  RecordedList recorded;
  for (const int count : {256, 257, 1000}) {
    std::vector<LogicalPoint> points;
    for (int i = 0; i < count; ++i) points.push_back({i, 0});
    DLPolysegment many({1}, count, points.data());
    many.draw_unclipped(recorded.list);
    ASSERT_EQ(recorded.recorder->calls().size(), points.size() / 2);
    EXPECT_EQ(recorded.recorder->calls().back().points.back().x, count / 2 * 2 - 1);
    recorded.recorder->clear();
  }
}

TEST(Polysegment, MatchesEverySearch) {
  DLPolysegment polysegment({1}, 8, kPoints);
  DL::Search nothing;
  EXPECT_TRUE(polysegment.remove(nothing));
  DL::DLDot dot({}, {100, 100});
  EXPECT_TRUE(answers::finds(dot, polysegment));
  DLPolysegment other({1}, 2, kPoints);
  EXPECT_TRUE(answers::finds(other, polysegment));
  LM_Rendition rendition;
  DL::PalettizedDrawable<DLPolysegment> palettized(&rendition, 8, kPoints);
  EXPECT_TRUE(answers::finds(dot, palettized));
}

TEST(Polysegment, HasAVectorForEachSegmentWhileItsIteratorWalksTheGapsToo) {
  DLPolysegment polysegment({1}, 4, kPoints);
  ASSERT_EQ(polysegment.get_vector_count(), 2);
  for (int i = 0; i < 2; ++i) {
    Vector vector{};
    EXPECT_TRUE(polysegment.get_vector(i, vector));
    EXPECT_EQ(vector, (Vector{kPoints[2 * i], kPoints[2 * i + 1]}));
  }
  for (const bool flag : {false, true}) {
    const std::unique_ptr<DL::DrawableVectorIterator> iterator(
        polysegment.create_vector_iterator(flag));
    EXPECT_EQ(iterator->m_vector, (Vector{kPoints[0], kPoints[1]}));
    for (int i = 1; i < 3; ++i) {
      ASSERT_NE(iterator->next(), nullptr);
      EXPECT_EQ(iterator->m_vector, (Vector{kPoints[i], kPoints[i + 1]}));
    }
    EXPECT_EQ(iterator->next(), nullptr);
    ASSERT_NE(iterator->prev(), nullptr);
    EXPECT_EQ(iterator->m_vector, (Vector{kPoints[1], kPoints[2]}));
  }
}

}  // namespace
