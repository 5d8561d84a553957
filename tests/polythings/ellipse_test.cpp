#include "displaylist/polythings/ellipse.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "tests/polythings/ellipses.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/point_printing.h"

namespace {

using namespace ellipses;
using Lines = std::vector<std::string>;

/// Nothing reaches the device but what the device itself leaves undrawn.
bool draws_nothing(RecordedList& recorded, DL::Drawable& drawable) {
  const auto calls = drawn(recorded, drawable);
  return std::none_of(calls.begin(), calls.end(), is_drawn_by_device);
}

TEST(Ellipse, ReachesTheDeviceInOneCallAsAWholeTurnWithoutAFill) {
  RecordedList recorded;
  DL::DLEllipse circle = ellipse({.center = {10, 20}, .major = 30, .minor = 30});
  circle.draw_clipped(recorded.list);
  const auto& calls = recorded.recorder->calls();
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0].action, "elliptical_arc");
  EXPECT_EQ(calls[0].color, kRed);
  EXPECT_EQ(calls[0].points, (std::vector<LM_DCI_Point>{{10, 20, 0}, {30, 30, 0}}));
  EXPECT_EQ(calls[0].angles[0], 0.0);
  EXPECT_EQ(calls[0].angles[1], static_cast<double>(6.2831855F));
  EXPECT_EQ(calls[0].rendition, &recorded.list.m_rendition);
  EXPECT_FALSE(calls[0].own_color.has_value());
  EXPECT_EQ(recorded.take_lines(),
            Lines{"elliptical_arc color=00FF0000 (10,20) (30,30) 0 6.28318548 0"});
}

TEST(Ellipse, ReachesTheDeviceAsAWholeTurnInEveryView) {
  DL::DLEllipse turned = ellipse({.center = {10, 20}, .rotation = 0.7F});
  for (const bool is_rotated : {false, true}) {
    for (const double x : {-3.0, 0.5, 1.0, 2.0}) {
      RecordedList recorded;
      recorded.list.m_scale = {x, 1.5};
      recorded.list.m_bRotated = is_rotated;
      std::copy_n(std::initializer_list<double>{0.3, -0.8, 5, 7, x, 1.0}.begin(), 6,
                  recorded.list.m_rotation);
      const auto calls = drawn(recorded, turned);
      ASSERT_EQ(calls.size(), 1U);
      EXPECT_EQ(calls[0].angles[0], 0.0);
      EXPECT_EQ(calls[0].angles[1], static_cast<double>(6.2831855F));
    }
  }
}

TEST(Ellipse, IsDrawnAlikeClippedAndUnclippedWhereverItLies) {
  RecordedList recorded;
  DL::DLEllipse drawable = ellipse({.center = {10, 20}, .rotation = 0.3F});
  for (const std::int32_t size : {1000, 50, 1}) {
    recorded.list.m_rendition.set_clip_rectangle({-size, size, -size, size});
    drawable.draw_clipped(recorded.list);
    const Lines clipped = recorded.take_lines();
    EXPECT_EQ(clipped.size(), 1U);
    drawable.draw_unclipped(recorded.list);
    EXPECT_EQ(recorded.take_lines(), clipped);
  }
}

TEST(Ellipse, AroundACoordinateSentinelIsNotDrawn) {
  RecordedList recorded;
  for (const LogicalPoint center : {LogicalPoint{kLowest, 0},
                                    {kHighest, 0},
                                    {0, kLowest},
                                    {0, kHighest},
                                    {kLowest, kHighest}}) {
    const Geometry g{.center = center, .start = 1.0F, .end = 2.0F};
    DL::DLEllipse whole = ellipse(g);
    DL::DLEllipticalArc part = arc(g);
    DL::DLEllipticalPie sector = pie(g);
    DL::DLColorizedEllipse chord = colorized({.center = center, .use_arc = true});
    DL::DLColorizedEllipse area = colorized({.center = center, .use_arc = false});
    for (DL::Drawable* drawable :
         std::initializer_list<DL::Drawable*>{&whole, &part, &sector, &chord, &area}) {
      drawable->draw_clipped(recorded.list);
      drawable->draw_unclipped(recorded.list);
      EXPECT_TRUE(recorded.take_lines().empty());
    }
  }
}

TEST(Ellipse, AroundAPointNextToASentinelIsDrawn) {
  RecordedList recorded;
  for (const LogicalPoint center :
       {LogicalPoint{kLowest + 1, kLowest + 1}, {kHighest - 1, kHighest - 1}}) {
    DL::DLEllipse drawable = ellipse({.center = center, .major = 10, .minor = 10});
    const auto calls = drawn(recorded, drawable);
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].points[0], (LM_DCI_Point{center.x, center.y, 0}));
  }
}

TEST(Ellipse, OfRadiiOfZeroIsDrawnFlat) {
  RecordedList recorded;
  DL::DLEllipse dot = ellipse({.center = {5, 6}, .major = 0, .minor = 0, .rotation = 2.0F});
  const auto calls = drawn(recorded, dot);
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0].points, (std::vector<LM_DCI_Point>{{5, 6, 0}, {0, 0, 0}}));
  for (const double angle : calls[0].angles) EXPECT_TRUE(std::isfinite(angle));
}

TEST(Ellipse, OfNegativeRadiiIsTheSameAsOfPositiveOnes) {
  RecordedList recorded;
  for (const auto& [major, minor] : {std::pair{-100, 50}, {100, -50}, {-100, -50}, {-50, -100}}) {
    DL::DLEllipse drawable = ellipse({.major = major, .minor = minor});
    const auto calls = drawn(recorded, drawable);
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(std::max(calls[0].points[1].x, calls[0].points[1].y), 100);
    EXPECT_EQ(std::min(calls[0].points[1].x, calls[0].points[1].y), 50);
  }
}

TEST(Ellipse, OfARotationThatIsNotFiniteDrawsNothing) {
  RecordedList recorded;
  for (const float bad : {kNan, kInfinity, -kInfinity}) {
    DL::DLEllipse drawable = ellipse({.rotation = bad});
    EXPECT_TRUE(draws_nothing(recorded, drawable));
  }
}

TEST(Ellipse, InAViewThatIsNotFiniteDrawsNothing) {
  for (const double bad :
       {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    RecordedList recorded;
    recorded.list.m_scale = {bad, 1.0};
    DL::DLEllipse drawable = ellipse({.rotation = 0.5F});
    EXPECT_TRUE(draws_nothing(recorded, drawable));
  }
}

TEST(Ellipse, OfTheLargestRadiiSaturatesOnTheDevice) {
  RecordedList recorded;
  recorded.list.m_scale = {8.0, 8.0};
  for (const std::int32_t radius : {kHighest, kLowest}) {
    DL::DLEllipse drawable = ellipse({.major = radius, .minor = radius});
    const auto calls = drawn(recorded, drawable);
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].points[1], (LM_DCI_Point{kHighest, kHighest, 0}));
  }
}

TEST(Ellipse, BoundsAreTheSquareAroundTheCircleOfTheLargerRadius) {
  for (const float rotation : {0.0F, 1.0F, kQuarterTurn, kNan}) {
    EXPECT_EQ(bounds_of(ellipse({.major = 10, .minor = 30, .rotation = rotation})),
              LogicalBounds(-30, -30, 30, 30));
    EXPECT_EQ(
        bounds_of(ellipse({.center = {7, -9}, .major = 40, .minor = 30, .rotation = rotation})),
        LogicalBounds(-33, -49, 47, 31));
  }
}

TEST(Ellipse, BoundsOfAnArcAreThoseOfTheWholeEllipse) {
  const Geometry g{.center = {7, -9}, .major = 40, .minor = 30, .start = 1.0F, .end = 1.1F};
  EXPECT_EQ(bounds_of(arc(g)), LogicalBounds(-33, -49, 47, 31));
  EXPECT_EQ(bounds_of(pie(g)), LogicalBounds(-33, -49, 47, 31));
  EXPECT_EQ(bounds_of(colorized(g)), LogicalBounds(-33, -49, 47, 31));
}

TEST(Ellipse, BoundsSaturate) {
  EXPECT_EQ(bounds_of(ellipse({.center = {5, -5}, .major = kHighest, .minor = 0})),
            LogicalBounds(5 - kHighest, kLowest, kHighest, kHighest - 5));
  EXPECT_EQ(bounds_of(ellipse({.center = {kHighest, kLowest}, .major = 10, .minor = 3})),
            LogicalBounds(kHighest - 10, kLowest, kHighest, kLowest + 10));
  EXPECT_EQ(bounds_of(ellipse({.center = {-2, 1}, .major = kHighest, .minor = kHighest})),
            LogicalBounds(kLowest, kLowest + 2, kHighest - 2, kHighest));
}

TEST(Ellipse, BoundsAreWidenedNotReplaced) {
  LogicalBounds bounds(-1000, 5, 0, 6);
  ellipse({.major = 10, .minor = 30}).add_bounds(bounds);
  EXPECT_EQ(bounds, LogicalBounds(-1000, -30, 30, 30));
}

TEST(Ellipse, IsFoundByASearchForTheSameGeometryWhateverTheColor) {
  const Geometry g{.center = {1, 2}, .rotation = 0.5F};
  DL::DLEllipse wanted = ellipse(g);
  DL::DLEllipse there = ellipse(g);
  there.m_colorData.m_color = {0x77};
  there.reserved = 5;
  EXPECT_TRUE(finds(wanted, there));
  for (const Geometry& other : {Geometry{.center = {0, 2}, .rotation = 0.5F},
                                {.center = {1, 3}, .rotation = 0.5F},
                                {.center = {1, 2}, .major = 99, .rotation = 0.5F},
                                {.center = {1, 2}, .minor = 51, .rotation = 0.5F},
                                {.center = {1, 2}, .rotation = 0.50001F},
                                {.center = {1, 2}, .rotation = 0.5F + kTurn},
                                {.center = {1, 2}, .rotation = kNan}}) {
    DL::DLEllipse different = ellipse(other);
    EXPECT_FALSE(finds(wanted, different));
    EXPECT_FALSE(finds(different, there));
  }
}

TEST(Ellipse, OfARotationThatIsNoNumberIsNotEvenFoundByItself) {
  DL::DLEllipse odd = ellipse({.rotation = kNan});
  EXPECT_FALSE(finds(odd, odd));
}

TEST(Ellipse, IsNotFoundByASearchForAnotherClass) {
  const Geometry g;
  DL::DLEllipse whole = ellipse(g);
  DL::DLEllipticalArc part = arc(g);
  DL::DLEllipticalPie sector = pie(g);
  DL::DLColorizedEllipse colored = colorized(g);
  const std::initializer_list<DL::Drawable*> all{&whole, &part, &sector, &colored};
  for (DL::Drawable* wanted : all) {
    for (DL::Drawable* there : all) EXPECT_EQ(finds(*wanted, *there), wanted == there);
  }
}

TEST(Ellipse, CloneKeepsTheGeometryAndTheListAndClearsWhatIsReserved) {
  RecordedList recorded;
  DL::DLEllipse original =
      ellipse({.center = {1, 2}, .major = 3, .minor = 4, .rotation = 0.5F, .list = &recorded.list});
  original.reserved = 77;
  original.m_pNext = &original;
  original.set_drawable_info(reinterpret_cast<DL::Extra_Drawable_Info*>(&recorded));
  const std::unique_ptr<DL::Drawable> copy(original.clone());
  ASSERT_EQ(copy->type(), DL::DLEllipse::my_type());
  const auto& clone = static_cast<DL::DLEllipse&>(*copy);
  EXPECT_EQ(clone.center, (LogicalPoint{1, 2}));
  EXPECT_EQ(clone.major, 3);
  EXPECT_EQ(clone.minor, 4);
  EXPECT_EQ(clone.rotation, 0.5F);
  EXPECT_EQ(clone.reserved, 0U);
  EXPECT_EQ(clone.display_list, &recorded.list);
  EXPECT_TRUE(clone.m_colorData == original.m_colorData);
  EXPECT_EQ(clone.m_pNext, nullptr);
  EXPECT_EQ(copy->drawable_info(), nullptr);
  EXPECT_EQ(original.reserved, 77U);
}

TEST(Ellipse, CloneAndIteratorAreNullWithoutMemory) {
  const Geometry g;
  DL::DLEllipse whole = ellipse(g);
  DL::DLEllipticalArc part = arc(g);
  DL::DLEllipticalPie sector = pie(g);
  DL::DLColorizedEllipse colored = colorized(g);
  const FailingDefaultHeap failing;
  for (DL::Drawable* drawable :
       std::initializer_list<DL::Drawable*>{&whole, &part, &sector, &colored}) {
    EXPECT_EQ(drawable->clone(), nullptr);
    EXPECT_EQ(drawable->create_vector_iterator(true), nullptr);
  }
}

TEST(Ellipse, CannotBeSplitNorAskedByIndex) {
  const Geometry g;
  DL::DLEllipse whole = ellipse(g);
  DL::DLEllipticalArc part = arc(g);
  DL::DLEllipticalPie sector = pie(g);
  DL::DLColorizedEllipse colored = colorized(g);
  for (DL::Drawable* drawable :
       std::initializer_list<DL::Drawable*>{&whole, &part, &sector, &colored}) {
    EXPECT_EQ(drawable->partial_clone(0, 1), nullptr);
    EXPECT_FALSE(drawable->has_fixed_representation());
    EXPECT_FALSE(drawable->supports_fast_vector_iterator());
    DL::VectorTemplate<long> vector{{1, 2}, {3, 4}};
    EXPECT_FALSE(drawable->get_vector(0, vector));
    EXPECT_EQ(vector, (DL::VectorTemplate<long>{{1, 2}, {3, 4}}));
  }
}

TEST(Ellipse, AnglesAreAWholeTurn) {
  EXPECT_EQ(ellipse({}).start_angle(), 0.0F);
  EXPECT_EQ(ellipse({}).end_angle(), 6.2831855F);
}

}  // namespace
