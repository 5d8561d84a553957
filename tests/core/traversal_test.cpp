#include <gtest/gtest.h>

#include "tests/support/contours.h"
#include "tests/support/point_printing.h"
#include "tests/support/probe_scene.h"

namespace {

using DL::Group;
using Bounds = DL::BoundsTemplate<long>;

constexpr Bounds kRight{10, 10, 20, 20};
constexpr Bounds kLeft{-20, 10, -10, 20};
constexpr Bounds kNowhere{1000, 1000, 1001, 1001};

/// A root over the leaves 1 (right), 2 (left) and 3 (right, open).
struct ThreeLeaves : ProbeScene {
  ThreeLeaves() : ProbeScene(1, 5) {
    for (const Bounds& b : {kRight, kLeft, kRight}) add(b);
  }
};

/// One closed leaf over kRight with probe 1.
struct OneLeaf : ProbeScene {
  OneLeaf() {
    add(kRight);
    root().close();
  }
  DrawSlot only_slot() {
    const ProbeCalls calls = log.take();
    EXPECT_EQ(calls.size(), 1U);
    return calls.at(0).slot;
  }
};

TEST(DrawUnclipped, DrawsInTheOrderOfInsertion) {
  ThreeLeaves scene;
  scene.root().draw_unclipped(scene.list);
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::unclipped, {1, 2, 3}));
}

TEST(DrawBounded, GroupInsideInnerDrawsUnclippedWithoutFurtherTests) {
  ThreeLeaves scene;
  scene.root().m_bounds = kRight;
  for (int i = 0; i < 3; ++i) scene.child(scene.root(), i)->m_bounds = kNowhere;
  scene.root().draw_bounded(scene.list, kRight, kRight);
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::unclipped, {1, 2, 3}));
  scene.root().draw_bounded_selection(scene.list, kRight, kRight);
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::unclipped_selection, {1, 2, 3}));
}

TEST(DrawBounded, GroupNeitherInsideInnerNorMeetingOuterDrawsNothing) {
  ThreeLeaves scene;
  scene.root().m_bounds = kNowhere;
  scene.root().draw_bounded(scene.list, kRight, kRight);
  EXPECT_EQ(scene.log.take(), ProbeCalls());
}

TEST(DrawBounded, EachGroupIsTestedByItself) {
  ThreeLeaves scene;
  scene.root().draw_bounded(scene.list, {0, 0, 100, 100}, {-15, 0, 100, 100});
  EXPECT_EQ(scene.log.take(),
            (ProbeCalls{{1, DrawSlot::unclipped}, {2, DrawSlot::clipped}, {3, DrawSlot::clipped}}));
  scene.root().draw_bounded(scene.list, {0, 0, 100, 100}, {0, 0, 100, 100});
  EXPECT_EQ(scene.log.take(), (ProbeCalls{{1, DrawSlot::unclipped}, {3, DrawSlot::clipped}}));
}

TEST(DrawBounded, InnerIsAskedBeforeOuter) {
  OneLeaf scene;
  scene.root().draw_bounded(scene.list, kRight, kNowhere);
  EXPECT_EQ(scene.only_slot(), DrawSlot::unclipped);
}

TEST(DrawBounded, InnerIsInclusiveOnEverySide) {
  OneLeaf scene;
  scene.root().draw_bounded(scene.list, kRight, kRight);
  EXPECT_EQ(scene.only_slot(), DrawSlot::unclipped);
  const Bounds narrower[] = {
      {11, 10, 20, 20}, {10, 11, 20, 20}, {10, 10, 19, 20}, {10, 10, 20, 19}};
  for (const Bounds& inner : narrower) {
    scene.root().draw_bounded(scene.list, inner, kRight);
    EXPECT_EQ(scene.only_slot(), DrawSlot::clipped) << inner;
  }
}

TEST(DrawBounded, OuterIsInclusiveOnEverySide) {
  OneLeaf scene;
  const Bounds touching[] = {{20, 20, 30, 30}, {0, 0, 10, 10}, {20, 0, 30, 10}, {0, 20, 10, 30}};
  for (const Bounds& outer : touching) {
    scene.root().draw_bounded(scene.list, Bounds(), outer);
    EXPECT_EQ(scene.only_slot(), DrawSlot::clipped) << outer;
  }
  const Bounds apart[] = {{21, 0, 30, 30}, {0, 21, 30, 30}, {0, 0, 9, 30}, {0, 0, 30, 9}};
  for (const Bounds& outer : apart) {
    scene.root().draw_bounded(scene.list, Bounds(), outer);
    EXPECT_EQ(scene.log.take(), ProbeCalls()) << outer;
  }
}

TEST(DrawBounded, EmptyRegionDrawsNothing) {
  ThreeLeaves scene;
  scene.root().draw_bounded(scene.list, Bounds(), Bounds());
  EXPECT_EQ(scene.log.take(), ProbeCalls());
}

TEST(DrawCircled, NeverLiftsTheClipWhereverTheGroupLies) {
  OneLeaf scene;
  const LM_Contour_Set circle = contour_set({regular_polygon(64, 100, 100, 0, 0)});
  scene.list.m_rendition.set_complex_clip(circle, true);
  ASSERT_TRUE(scene.list.circular_complex_clip());
  const Bounds places[] = {{-5, -5, 5, 5}, {90, 0, 110, 10}, {500, 500, 600, 600}};
  for (const Bounds& place : places) {
    scene.root().m_bounds = place;
    scene.log.on_draw = [&](int, DL::DisplayList& list) {
      EXPECT_EQ(list.m_rendition.complex_clip(), circle);
    };
    scene.root().draw_circled(scene.list);
    EXPECT_EQ(scene.only_slot(), DrawSlot::unclipped) << place;
    scene.root().draw_circled_bounded(scene.list, Bounds(), Bounds::plane());
    EXPECT_EQ(scene.only_slot(), DrawSlot::clipped) << place;
  }
}

TEST(DrawCircledBounded, TheOpenGroupGoesByTheComplexClip) {
  ThreeLeaves scene;
  scene.list.m_rendition.set_complex_clip(contour_set({rectangle(-900, -900, -800, -800)}), true);
  scene.list.m_pOpenGroup->m_bounds = kRight;
  scene.root().draw_circled_bounded(scene.list, Bounds(), Bounds::plane());
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::clipped, {1, 2}));
  // Inside the inner rectangle the circled form goes on, which the open group has too.
  scene.root().draw_circled_bounded(scene.list, Bounds::plane(), Bounds::plane());
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::unclipped, {1, 2, 3}));
}

TEST(DrawComplex, SkipsWholeGroupsOutsideTheClip) {
  ThreeLeaves scene;
  scene.list.m_rendition.set_complex_clip(contour_set({rectangle(0, 0, 50, 50)}), true);
  scene.root().draw_complex(scene.list);
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::unclipped, {1, 3}));
  scene.root().m_bounds = {-100, -100, -1, 100};
  scene.root().draw_complex(scene.list);
  EXPECT_EQ(scene.log.take(), ProbeCalls());
}

TEST(DrawComplexBounded, BelowInnerTheClipIsStillTested) {
  ThreeLeaves scene;
  scene.list.m_rendition.set_complex_clip(contour_set({rectangle(0, 0, 50, 50)}), true);
  scene.root().draw_complex_bounded(scene.list, Bounds::plane(), Bounds::plane());
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::unclipped, {1, 3}));
  scene.root().draw_complex_bounded(scene.list, Bounds(), Bounds::plane());
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::clipped, {1, 3}));
}

}  // namespace
