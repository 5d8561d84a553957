#include <gtest/gtest.h>

#include <limits>

#include "tests/support/point_printing.h"
#include "tests/text/nested_lists.h"

// The transform of a child, and what of it is visible in its parent.

namespace {

using namespace nested;

/// What push_transform answers.
struct Pushed {
  bool visible;
  ScreenBounds clip{11, 22, 33, 44};
};

Pushed push(Nested& nested, DL::DisplayList& parent) {
  Pushed pushed{};
  pushed.visible = nested.push_transform(parent, pushed.clip);
  return pushed;
}

struct NestedTransform : testing::Test, Parent {
  /// A child of the given bounds in the parent, whose units are pixels from 0 to 100.
  Nested& place(LogicalBounds bounds, Factors scale = {1, 1}, Factors offset = {0, 0}) {
    nested = nest(new DL::DisplayList, scale, offset, bounds);
    return *nested;
  }
  DL::DisplayList& child() { return *nested->display_list(); }

  std::unique_ptr<Nested> nested;
};

// --- The composed transform ---------------------------------------------------

TEST_F(NestedTransform, TransformsAreComposedPerAxis) {
  list.m_scale = {0.5, -3};
  list.m_offset = {7, 90};
  place({0, 0, 10, 10}, {4, -2}, {10, 20});
  push(*nested, list);
  EXPECT_EQ(child().m_scale, (Factors{2, 6}));
  EXPECT_EQ(child().m_offset, (Factors{12, 30}));
}

TEST_F(NestedTransform, ComposedTransformStaysWhereTheWindowWouldGiveAnother) {
  place({-50, 10, 50, 30}, {3, 0.5}, {20, 1});
  child().m_yAspect = 2;
  ASSERT_TRUE(push(*nested, list).visible);
  EXPECT_EQ(child().m_scale, (Factors{3, 0.5}));
  EXPECT_EQ(child().m_offset, (Factors{20, 1}));
}

TEST_F(NestedTransform, RotationIsTheParentsAsItStands) {
  const double rotation[6] = {0.6, -0.6, 3, 4, 0.8, 0.8};
  list.m_bRotated = true;
  std::copy_n(rotation, 6, list.m_rotation);
  place({0, 0, 10, 10}, {4, 5}, {6, 7});
  push(*nested, list);
  EXPECT_TRUE(child().m_bRotated);
  EXPECT_TRUE(child().m_bRotationSecondary);
  EXPECT_TRUE(std::equal(rotation, rotation + 6, child().m_rotation));
}

TEST_F(NestedTransform, RotationFlagsFollowTheParentAtEachPush) {
  place({0, 0, 10, 10});
  list.m_bRotated = true;
  for (const double turn : {0.5, -0.5, 1.1e-10, -1.1e-10}) {
    list.m_rotation[0] = turn;
    push(*nested, list);
    EXPECT_TRUE(child().m_bRotationSecondary) << turn;
  }
  for (const double turn : {0.0, 0.9e-10, -0.9e-10}) {
    list.m_rotation[0] = turn;
    push(*nested, list);
    EXPECT_TRUE(child().m_bRotated);
    EXPECT_FALSE(child().m_bRotationSecondary) << turn;
  }
  list.m_rotation[0] = 0.5;
  push(*nested, list);
  list.m_bRotated = false;
  push(*nested, list);
  EXPECT_FALSE(child().m_bRotated);
  EXPECT_FALSE(child().m_bRotationSecondary);
}

// --- The visible part ---------------------------------------------------------

TEST_F(NestedTransform, WhollyVisibleChildKeepsItsBoundsAsWindow) {
  place({0, 0, 30, 20}, {2, 3}, {10, 20});
  const Pushed pushed = push(*nested, list);
  EXPECT_TRUE(pushed.visible);
  EXPECT_EQ(pushed.clip, (ScreenBounds{10, 20, 70, 80}));
  EXPECT_EQ(child().m_screenBounds, (ScreenBounds{10, 20, 70, 80}));
  EXPECT_EQ(child().m_logicalBounds, (LogicalBounds{0, 0, 30, 20}));
}

TEST_F(NestedTransform, DeviceUnitsAndVisibleBoundsAreThoseOfTheNewWindow) {
  place({0, 0, 30, 20}, {2, 3}, {10, 20});
  child().m_deviceRatio = {4, 5};
  ASSERT_TRUE(push(*nested, list).visible);
  EXPECT_EQ(child().m_deviceScale, (Factors{8, 15}));
  EXPECT_EQ(child().m_deviceOffset, (Factors{40, 100}));
  EXPECT_EQ(child().m_visibleBounds, (LogicalBounds{0, 0, 30, 20}));
}

TEST_F(NestedTransform, ChildThatFillsTheScreenIsWhollyVisible) {
  place({0, 0, 100, 100});
  EXPECT_EQ(push(*nested, list).clip, (ScreenBounds{0, 0, 100, 100}));
  EXPECT_EQ(child().m_logicalBounds, (LogicalBounds{0, 0, 100, 100}));
}

TEST_F(NestedTransform, WindowShrinksByAUnitWhereItsImageCrossesTheScreen) {
  place({0, 0, 100, 100}, {3, 3}, {-50, -50});
  const Pushed pushed = push(*nested, list);
  EXPECT_TRUE(pushed.visible);
  EXPECT_EQ(child().m_logicalBounds, (LogicalBounds{17, 17, 50, 50}));
  EXPECT_EQ(pushed.clip, (ScreenBounds{1, 1, 100, 100}));
  EXPECT_EQ(child().m_screenBounds, pushed.clip);
}

TEST_F(NestedTransform, EachSideShrinksByItself) {
  struct Case {
    Factors offset;
    LogicalBounds window;
  };
  // Without a crossing the far sides keep the unit that is added to them.
  for (const Case& c : {Case{{-50, 10}, {17, 0, 26, 21}}, Case{{10, -50}, {0, 17, 26, 21}},
                        Case{{80, 10}, {0, 0, 6, 21}}, Case{{10, 80}, {0, 0, 26, 6}}}) {
    place({0, 0, 25, 20}, {3, 3}, c.offset);
    ASSERT_TRUE(push(*nested, list).visible);
    EXPECT_EQ(child().m_logicalBounds, c.window) << c.offset;
  }
}

TEST_F(NestedTransform, WindowIsTruncatedTowardZero) {
  place({-100, -100, 100, 100}, {3, 3}, {50, 50});
  push(*nested, list);
  // 16.7 units to either side: -16 lies at 2, 16.7 + 1 at 101, which crosses.
  EXPECT_EQ(child().m_logicalBounds, (LogicalBounds{-16, -16, 16, 16}));
}

TEST_F(NestedTransform, MirroredChildIsSeenFromItsFarEnd) {
  place({-50, 0, 50, 50}, {-1, 1}, {100, 0});
  const Pushed pushed = push(*nested, list);
  EXPECT_TRUE(pushed.visible);
  EXPECT_EQ(child().m_logicalBounds, (LogicalBounds{0, 0, 51, 51}));
  EXPECT_EQ(pushed.clip, (ScreenBounds{49, 0, 100, 51}));
  EXPECT_EQ(child().m_screenBounds, pushed.clip);
  EXPECT_EQ(child().m_scale, (Factors{-1, 1}));
}

TEST_F(NestedTransform, MirroredWindowShrinksAtTheSidesThatCross) {
  place({0, 0, 100, 100}, {-3, -3}, {150, 150});
  const Pushed pushed = push(*nested, list);
  EXPECT_EQ(child().m_logicalBounds, (LogicalBounds{17, 17, 50, 50}));
  EXPECT_EQ(pushed.clip, (ScreenBounds{0, 0, 99, 99}));
  EXPECT_EQ(child().m_screenBounds, (ScreenBounds{0, 99, 99, 0})) << "upside down";
}

TEST_F(NestedTransform, ViewUpsideDownGivesAChildUpsideDown) {
  Parent turned({0, 0, 100, 100}, {0, 100, 100, 0});
  place({10, 10, 20, 30});
  const Pushed pushed = push(*nested, turned.list);
  EXPECT_TRUE(pushed.visible);
  EXPECT_EQ(pushed.clip, (ScreenBounds{10, 70, 20, 90}));
  EXPECT_EQ(child().m_screenBounds, (ScreenBounds{10, 90, 20, 70}));
  EXPECT_EQ(child().m_logicalBounds, (LogicalBounds{10, 10, 20, 30}));
  EXPECT_EQ(child().m_scale, (Factors{1, -1}));
  EXPECT_EQ(child().m_offset, (Factors{0, 100}));
  child().recompute_transform();
  EXPECT_EQ(child().m_scale, (Factors{1, -1})) << "the window and the screen agree with it";
}

TEST_F(NestedTransform, ViewUpsideDownClipsAtTheRightSides) {
  Parent turned({0, 0, 100, 100}, {0, 100, 100, 0});
  place({0, -60, 100, 40}, {1, 3}, {0, 0});
  const Pushed pushed = push(*nested, turned.list);
  EXPECT_TRUE(pushed.visible);
  // Logical 0 to 33.3 is on the screen, from its lower to its upper edge.
  EXPECT_EQ(child().m_logicalBounds, (LogicalBounds{0, 0, 100, 33}));
  EXPECT_EQ(pushed.clip, (ScreenBounds{0, 1, 100, 100}));
}

TEST_F(NestedTransform, BordersThatTouchAreVisible) {
  for (const Factors& offset :
       {Factors{100, 0}, Factors{-100, 0}, Factors{0, 100}, Factors{0, -100}}) {
    place({0, 0, 100, 100}, {1, 1}, offset);
    EXPECT_TRUE(push(*nested, list).visible) << offset;
  }
}

// --- Nothing to be seen -------------------------------------------------------

TEST_F(NestedTransform, FailedPushKeepsScreenAndWindowButStoresTheTransform) {
  place({0, 0, 10, 10});
  ASSERT_TRUE(push(*nested, list).visible);
  for (const Factors& away :
       {Factors{101, 0}, Factors{-111, 0}, Factors{0, 101}, Factors{0, -111}}) {
    nested->set_offset(away);
    const Pushed pushed = push(*nested, list);
    EXPECT_FALSE(pushed.visible) << away;
    EXPECT_EQ(pushed.clip, ScreenBounds());
    EXPECT_EQ(child().m_screenBounds, (ScreenBounds{0, 0, 10, 10}));
    EXPECT_EQ(child().m_logicalBounds, (LogicalBounds{0, 0, 10, 10}));
    EXPECT_EQ(child().m_scale, (Factors{1, 1}));
    EXPECT_EQ(child().m_offset, away);
  }
}

TEST_F(NestedTransform, WindowBetweenTwoUnitsShowsNothing) {
  place({0, 0, 10, 10}, {1, 1000}, {0, -500});
  const Pushed pushed = push(*nested, list);
  EXPECT_FALSE(pushed.visible);
  EXPECT_EQ(pushed.clip, (ScreenBounds{0, 0, 10, 100})) << "the part that it lies in";
  EXPECT_TRUE(child().m_logicalBounds.is_empty());
  EXPECT_EQ(child().m_scale, (Factors{1, 1000}));
}

TEST_F(NestedTransform, EmptyBoundsShowNothing) {
  nested = nest(new DL::DisplayList);
  const Pushed pushed = push(*nested, list);
  EXPECT_FALSE(pushed.visible);
  EXPECT_EQ(pushed.clip, ScreenBounds());
}

TEST_F(NestedTransform, FurthestViewsAreAnsweredWithoutHarm) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const bool checked : {false, true}) {
    for (const double scale : {0.0, -0.0, 1e-300, 1e9, -1e9, 1e300, infinity, -infinity, nan}) {
      for (const double offset : {0.0, 1e10, -1e300, infinity, nan}) {
        place(LogicalBounds::plane(), {scale, 1}, {offset, 0});
        child().m_bCheckOverflow = checked;
        const Pushed pushed = push(*nested, list);
        EXPECT_FALSE(pushed.visible && pushed.clip.is_empty()) << scale << ' ' << offset;
      }
    }
  }
}

TEST_F(NestedTransform, CloseViewsNeedTheChildsOverflowCheck) {
  place({-10, -10, 10, 10}, {1e9, 1e9});
  child().m_bCheckOverflow = true;
  EXPECT_TRUE(push(*nested, list).visible);
  EXPECT_EQ(child().m_logicalBounds, (LogicalBounds{0, 0, 0, 0}));
}

}  // namespace
