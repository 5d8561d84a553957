#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <memory>

#include "tests/polythings/allocation_counter.h"
#include "tests/polythings/strips.h"
#include "tests/support/drawable_answers.h"
#include "tests/support/point_printing.h"
#include "tests/support/random_view.h"
#include "tests/support/test_heap.h"

// How triangle strips of all classes are drawn.

namespace {

template <class T>
struct TriangleStrips : testing::Test {
  /// The name of the one action of a draw.
  std::string action_of(DL::Drawable& strip, bool clipped) {
    recorded.recorder->clear();
    if (clipped) {
      strip.draw_clipped(list);
    } else {
      strip.draw_unclipped(list);
    }
    EXPECT_EQ(recorded.recorder->calls().size(), 1U);
    return recorded.recorder->calls().empty() ? "" : recorded.recorder->calls()[0].action;
  }
  std::vector<LM_DCI_Point> device_points() { return recorded.recorder->calls().at(0).points; }

  const std::string clipped_action = std::string(strips::fill_action<T>()) + "_clipped";
  const std::string inside_action = strips::kTestsItsPoints<T>
                                        ? std::string(strips::fill_action<T>()) + "_unclipped"
                                        : clipped_action;
  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
};

using Classes = testing::Types<DL::DLPolytriangleWithNoBorder, DL::DLPolytriangle,
                               DL::DLGouraudPolytriangle, DL::DLTexturedPolytriangle>;
TYPED_TEST_SUITE(TriangleStrips, Classes);

TYPED_TEST(TriangleStrips, AreUnclippedOnTheBorderOnlyWhereTheyTestTheirPoints) {
  this->list.m_rendition.set_clip_rectangle(answers::kClip);
  const auto strip = strips::make<TypeParam>({{-5, -7}, {20, -7}, {20, 30}, {-5, 30}});
  EXPECT_EQ(this->action_of(*strip, false), this->inside_action);
  EXPECT_EQ(this->action_of(*strip, true), this->clipped_action);
}

TYPED_TEST(TriangleStrips, AreClippedWithOnePointOneUnitOutside) {
  this->list.m_rendition.set_clip_rectangle(answers::kClip);
  for (const LogicalPoint p : answers::kOneUnitOutside) {
    for (std::size_t i = 0; i < 4; ++i) {
      std::vector<LogicalPoint> points = {{0, 0}, {1, 0}, {1, 1}, {2, 1}};
      points[i] = p;
      const auto strip = strips::make<TypeParam>(points);
      EXPECT_EQ(this->action_of(*strip, false), this->clipped_action);
      EXPECT_EQ(this->device_points()[i], (LM_DCI_Point{p.x, p.y, 0}));
    }
  }
}

TYPED_TEST(TriangleStrips, TakeNoNoticeOfATurnedViewInTheirChoice) {
  this->list.m_bRotationSecondary = true;
  const auto strip = strips::make<TypeParam>(strips::kCount, strips::kPoints);
  EXPECT_EQ(this->action_of(*strip, false), this->inside_action);
}

TYPED_TEST(TriangleStrips, KeepRepeatedPoints) {
  const auto strip = strips::make<TypeParam>({{1, 2}, {1, 2}, {1, 2}, {1, 2}});
  this->action_of(*strip, false);
  EXPECT_EQ(this->device_points(), std::vector<LM_DCI_Point>(4, {1, 2, 0}));
}

TYPED_TEST(TriangleStrips, FollowTheRotationUnchecked) {
  answers::turn_by_a_quarter(this->list);
  const auto strip = strips::make<TypeParam>({{1, 2}, {3, 4}, {5, 6}});
  this->action_of(*strip, true);
  EXPECT_EQ(this->device_points(),
            (std::vector<LM_DCI_Point>{{98, 201, 0}, {96, 203, 0}, {94, 205, 0}}));
  this->list.m_bRotated = false;
  this->list.m_bCheckOverflow = true;
  const auto far = strips::make<TypeParam>({{INT32_MAX, 1}, {1, 2}, {3, 4}});
  this->action_of(*far, true);
  EXPECT_EQ(this->device_points()[0], (LM_DCI_Point{INT32_MIN, 7, 0}));
}

TYPED_TEST(TriangleStrips, WithoutPointsDrawNothing) {
  this->list.m_rendition.set_edge_mode(LM_EDGE_MODE_OUTLINE);
  const std::unique_ptr<DL::Polything> none[] = {
      strips::make<TypeParam>(0, strips::kPoints), strips::make<TypeParam>(-1, strips::kPoints),
      strips::make<TypeParam>(INT32_MIN, strips::kPoints), strips::make<TypeParam>(0, nullptr),
      strips::make<TypeParam>(4, nullptr)};
  for (const auto& strip : none) {
    EXPECT_TRUE(answers::all_ways(this->recorded, *strip).empty());
    EXPECT_TRUE(bounds_of(*strip).is_empty());
    EXPECT_LE(strip->get_vector_count(), 0);
    const std::unique_ptr<DL::Drawable> copy(strip->clone());
    EXPECT_TRUE(answers::all_ways(this->recorded, *copy).empty());
  }
}

TYPED_TEST(TriangleStrips, OfFewerThanThreePointsAreHandedOverAsTheyAre) {
  for (const int count : {1, 2}) {
    const auto strip = strips::make<TypeParam>(count, strips::kPoints);
    EXPECT_EQ(this->action_of(*strip, true), this->clipped_action);
    EXPECT_EQ(this->device_points().size(), static_cast<std::size_t>(count));
  }
}

TYPED_TEST(TriangleStrips, WithoutMemoryForTheirArraysDrawNothing) {
  for (const std::int64_t good_requests : {0, 1}) {
    TestHeap heap(good_requests);
    const auto strip = strips::make<TypeParam>(4, strips::kPoints, {}, &heap);
    if (heap.requests() <= good_requests) break;  // it got all it asked for
    EXPECT_EQ(strip->count, 0);
    EXPECT_TRUE(answers::all_ways(this->recorded, *strip).empty());
  }
}

TYPED_TEST(TriangleStrips, AllocateABufferToDrawFromPoint257On) {
  DL::DisplayList silent;
  const auto sizes_for = [&](int count) {
    const auto strip = strips::make<TypeParam>(strips::numbered_points(count));
    strip->rendition(silent);  // the working rendition has the colour now
    AllocationCounter counter;
    strip->draw_unclipped(silent);
    strip->draw_clipped(silent);
    return counter.sizes();
  };
  EXPECT_EQ(sizes_for(3), std::vector<std::size_t>{});
  EXPECT_EQ(sizes_for(256), std::vector<std::size_t>{});
  EXPECT_EQ(sizes_for(257), std::vector<std::size_t>(2, 257 * sizeof(LM_DCI_Point)));
}

TYPED_TEST(TriangleStrips, HandOverEveryPointFromEitherBuffer) {
  for (const int count : {3, 256, 257, 1000}) {
    const auto strip = strips::make<TypeParam>(strips::numbered_points(count));
    for (const bool clipped : {false, true}) {
      EXPECT_EQ(this->action_of(*strip, clipped),
                clipped ? this->clipped_action : this->inside_action);
      const auto device = this->device_points();
      ASSERT_EQ(device.size(), static_cast<std::size_t>(count));
      for (int i = 0; i < count; ++i) ASSERT_EQ(device[static_cast<std::size_t>(i)].x, i);
    }
  }
}

template <class T>
void expect_drawn_as_the_plain_way_has_it() {
  RecordedList recorded;
  random_view::set_any_view(recorded.list);
  const std::vector<LogicalPoint> points = random_view::any_points(1);
  const auto strip = strips::make<T>(points, {0x77});
  const std::vector<LM_DCI_Point> device = random_view::to_device(recorded.list, points);
  const bool clipped_draw = *rc::gen::arbitrary<bool>();
  const bool unclipped =
      strips::kTestsItsPoints<T> && !clipped_draw && random_view::all_inside(recorded.list, device);
  if (clipped_draw) {
    strip->draw_clipped(recorded.list);
  } else {
    strip->draw_unclipped(recorded.list);
  }
  RC_ASSERT(recorded.recorder->calls().size() == 1U);
  const lumen::RecordedCall& call = recorded.recorder->calls()[0];
  RC_ASSERT(call.action ==
            std::string(strips::fill_action<T>()) + (unclipped ? "_unclipped" : "_clipped"));
  RC_ASSERT(call.points == device);
  RC_ASSERT(call.color.word == 0x77U);
}

RC_GTEST_PROP(TriangleStrip, WithNoBorderIsDrawnAsThePlainWayHasIt, ()) {
  expect_drawn_as_the_plain_way_has_it<DL::DLPolytriangleWithNoBorder>();
}

RC_GTEST_PROP(TriangleStrip, IsDrawnAsThePlainWayHasIt, ()) {
  expect_drawn_as_the_plain_way_has_it<DL::DLPolytriangle>();
}

RC_GTEST_PROP(TriangleStrip, OfGouraudIsDrawnAsThePlainWayHasIt, ()) {
  expect_drawn_as_the_plain_way_has_it<DL::DLGouraudPolytriangle>();
}

RC_GTEST_PROP(TriangleStrip, WithTexturesIsDrawnAsThePlainWayHasIt, ()) {
  expect_drawn_as_the_plain_way_has_it<DL::DLTexturedPolytriangle>();
}

}  // namespace
