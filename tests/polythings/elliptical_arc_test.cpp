#include "displaylist/polythings/elliptical_arc.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <random>

#include "tests/polythings/ellipses.h"
#include "tests/support/point_printing.h"

// What arcs and pies have of their own: their angles.

namespace {

using namespace ellipses;
using Lines = std::vector<std::string>;

LM_Vector toward(double angle) {
  return {static_cast<float>(10 * std::cos(angle)), static_cast<float>(10 * std::sin(angle)), 0};
}

TEST(EllipticalArc, ReachesTheDeviceWithItsAngles) {
  RecordedList recorded;
  DL::DLEllipticalArc circle =
      arc({.center = {10, 20}, .major = 30, .minor = 30, .start = 0.5F, .end = 2.25F});
  circle.draw_clipped(recorded.list);
  EXPECT_EQ(recorded.take_lines(),
            Lines{"elliptical_arc color=00FF0000 (10,20) (30,30) 0.5 2.25 0"});
}

TEST(EllipticalArc, OfACircleKeepsRotationAndAnglesAtEqualScales) {
  for (const double scale : {0.25, 1.0, 3.0}) {
    RecordedList recorded;
    recorded.list.m_scale = {scale, scale};
    recorded.list.m_offset = {7.0, -7.0};
    DL::DLEllipticalArc circle = arc({.center = {4, 8},
                                      .major = 400,
                                      .minor = 400,
                                      .rotation = 0.7F,
                                      .start = 1.0F,
                                      .end = 2.5F});
    const auto calls = drawn(recorded, circle);
    ASSERT_EQ(calls.size(), 1U);
    const auto radius = static_cast<std::int32_t>(400 * scale);
    EXPECT_EQ(calls[0].points[1], (LM_DCI_Point{radius, radius, 0}));
    EXPECT_NEAR(calls[0].angles[0], 1.0, 1e-6);
    EXPECT_NEAR(calls[0].angles[1], 2.5, 1e-6);
    EXPECT_NEAR(calls[0].angles[2], 0.7, 1e-6);
  }
}

TEST(EllipticalArc, APieIsDrawnExactlyLikeTheArc) {
  RecordedList recorded;
  recorded.list.m_scale = {2.0, -3.0};
  for (const float end : {0.5F, 2.0F, 6.0F, 9.0F}) {
    const Geometry g{.center = {1, 2}, .rotation = 0.3F, .start = 1.0F, .end = end};
    DL::DLEllipticalArc part = arc(g);
    DL::DLEllipticalPie sector = pie(g);
    part.draw_clipped(recorded.list);
    const Lines lines = recorded.take_lines();
    ASSERT_EQ(lines.size(), 1U);
    sector.draw_clipped(recorded.list);
    EXPECT_EQ(recorded.take_lines(), lines);
    sector.draw_unclipped(recorded.list);
    EXPECT_EQ(recorded.take_lines(), lines);
  }
}

TEST(EllipticalArc, OfAWholeTurnOrMoreIsDrawnAsTheWholeEllipse) {
  RecordedList recorded;
  recorded.list.m_scale = {1.0, 2.0};
  for (const float sweep : {6.2735F, kTurn, 7.0F, 100.0F, 1e10F, 3e38F}) {
    for (const float start : {0.0F, 1.5F, -20.0F}) {
      DL::DLEllipticalArc turn = arc({.rotation = 0.3F, .start = start, .end = start + sweep});
      const auto calls = drawn(recorded, turn);
      ASSERT_EQ(calls.size(), 1U);
      EXPECT_EQ(calls[0].angles[0], 0.0) << start << ' ' << sweep;
      EXPECT_EQ(calls[0].angles[1], static_cast<double>(kTurn)) << start << ' ' << sweep;
    }
  }
}

TEST(EllipticalArc, AnglesAreNormalizedOnTheDevice) {
  RecordedList recorded;
  for (const float turns : {-30.0F, -1.0F, 1.0F, 2.0F, 50.0F}) {
    DL::DLEllipticalArc circle = arc(
        {.major = 100, .minor = 100, .start = 1.0F + turns * kTurn, .end = 2.0F + turns * kTurn});
    const auto calls = drawn(recorded, circle);
    ASSERT_EQ(calls.size(), 1U);
    // A float of 50 turns is exact to 3e-5.
    EXPECT_NEAR(calls[0].angles[0], 1.0, 1e-4);
    EXPECT_NEAR(calls[0].angles[1], 2.0, 1e-4);
  }
}

TEST(EllipticalArc, WithAnAngleThatIsNoNumberDrawsNothing) {
  RecordedList recorded;
  for (const Geometry& g : {Geometry{.start = kNan, .end = 1.0F},
                            {.start = 1.0F, .end = kNan},
                            {.start = kNan, .end = kNan},
                            {.rotation = kNan, .start = 1.0F, .end = 2.0F},
                            {.rotation = kInfinity, .start = 1.0F, .end = 2.0F},
                            {.rotation = -kInfinity, .start = 1.0F, .end = 2.0F}}) {
    DL::DLEllipticalArc part = arc(g);
    for (const auto& call : drawn(recorded, part)) {
      EXPECT_FALSE(is_drawn_by_device(call)) << lumen::to_string(call);
    }
  }
}

TEST(EllipticalArc, AnglesAreItsOwn) {
  const Geometry g{.start = -1.5F, .end = 9.0F};
  EXPECT_EQ(arc(g).start_angle(), -1.5F);
  EXPECT_EQ(arc(g).end_angle(), 9.0F);
  EXPECT_EQ(pie(g).start_angle(), -1.5F);
  EXPECT_EQ(pie(g).end_angle(), 9.0F);
  EXPECT_EQ(colorized(g).start_angle(), -1.5F);
  EXPECT_EQ(colorized(g).end_angle(), 9.0F);
}

TEST(EllipticalArc, ThroughAngleZeroHasDirectionsOnBothSidesOfIt) {
  const DL::DLEllipticalArc through = arc({.start = 5.5F, .end = 7.0F});
  EXPECT_TRUE(through.isWithinBounds(toward(0.2)));
  EXPECT_TRUE(through.isWithinBounds(toward(0.0)));
  EXPECT_TRUE(through.isWithinBounds(toward(6.0)));
  EXPECT_FALSE(through.isWithinBounds(toward(3.0)));
  EXPECT_FALSE(through.isWithinBounds(toward(1.0)));
  EXPECT_FALSE(through.isWithinBounds(toward(5.4)));
}

TEST(EllipticalArc, OfASweepAboveTheLimitHasEveryDirection) {
  constexpr float kLimit = 6.2731853F;
  const LM_Vector between = toward(-0.005);
  EXPECT_FALSE(arc({.start = 0.0F, .end = kLimit}).isWithinBounds(between));
  EXPECT_TRUE(arc({.start = 0.0F, .end = std::nextafter(kLimit, 7.0F)}).isWithinBounds(between));
  EXPECT_TRUE(ellipse({}).isWithinBounds(between));
  for (double angle = -4.0; angle < 4.0; angle += 0.1) {
    EXPECT_TRUE(ellipse({.rotation = 1.0F}).isWithinBounds(toward(angle)));
    EXPECT_TRUE(arc({.start = 2.0F, .end = 30.0F}).isWithinBounds(toward(angle)));
  }
}

TEST(EllipticalArc, DirectionsAreTurnedByTheRotation) {
  const DL::DLEllipticalArc turned = arc({.rotation = 1.0F, .start = 0.5F, .end = 1.0F});
  EXPECT_FALSE(turned.isWithinBounds(toward(0.75)));
  EXPECT_TRUE(turned.isWithinBounds(toward(1.75)));
  EXPECT_FALSE(turned.isWithinBounds(toward(2.1)));
}

TEST(EllipticalArc, DirectionsEndAtItsAngles) {
  const DL::DLEllipticalArc quarter = arc({.start = 0.0F, .end = 1.5707964F});
  EXPECT_TRUE(quarter.isWithinBounds({1.0F, 0.0F, 0.0F}));
  EXPECT_TRUE(quarter.isWithinBounds({0.0F, 1.0F, 0.0F}));
  EXPECT_TRUE(quarter.isWithinBounds({0.0F, 1.0F, -5.0F}));
  EXPECT_FALSE(quarter.isWithinBounds({1.0F, -0.001F, 0.0F}));
  EXPECT_FALSE(quarter.isWithinBounds({-0.001F, 1.0F, 0.0F}));
  EXPECT_TRUE(arc({.start = 0.0F, .end = 0.0F}).isWithinBounds({5.0F, 0.0F, 0.0F}));
}

TEST(EllipticalArc, AnglesTooLargeForATurnAreTakenAsZero) {
  for (const float huge : {1e30F, -1e30F, kInfinity, -kInfinity}) {
    const DL::DLEllipticalArc lost = arc({.rotation = huge, .start = 1.0F, .end = 2.0F});
    EXPECT_TRUE(lost.isWithinBounds({1.0F, 0.0F, 0.0F})) << huge;
    EXPECT_FALSE(lost.isWithinBounds({0.0F, 1.0F, 0.0F})) << huge;
    EXPECT_FALSE(lost.isWithinBounds({0.0F, -1.0F, 0.0F})) << huge;
  }
}

TEST(EllipticalArc, DirectionsOfNumbersThatAreNoneAreOutside) {
  const LM_Vector direction{1.0F, 2.0F, 0.0F};
  for (const float odd : {kNan, kInfinity, 3e38F}) {
    EXPECT_FALSE(arc({.start = odd, .end = 1.0F}).isWithinBounds(direction)) << odd;
    EXPECT_FALSE(arc({.start = odd, .end = odd}).isWithinBounds(direction)) << odd;
  }
  EXPECT_FALSE(arc({.start = 1.0F, .end = kNan}).isWithinBounds(direction));
  EXPECT_FALSE(arc({.rotation = kNan, .start = 1.0F, .end = 2.0F}).isWithinBounds(direction));
  EXPECT_FALSE(arc({.start = 1.0F, .end = 2.0F}).isWithinBounds({kNan, kNan, 0.0F}));
  EXPECT_TRUE(arc({.start = -kInfinity, .end = 2.0F}).isWithinBounds(direction));
  EXPECT_TRUE(ellipse({.rotation = kNan}).isWithinBounds({kNan, kNan, kNan}));
}

/// The angle in [0, 2 pi).
double normalized(double angle) {
  const double rest = std::fmod(angle, 2 * std::numbers::pi);
  return rest < 0 ? rest + 2 * std::numbers::pi : rest;
}

TEST(EllipticalArc, DirectionsAreThoseFromTheStartUpToTheEnd) {
  std::mt19937 random(9);
  std::uniform_real_distribution<float> any(-20.0F, 20.0F);
  std::uniform_real_distribution<float> part(0.0F, 6.27F);
  int inside = 0;
  for (int i = 0; i < 20000; ++i) {
    const float start = any(random);
    const DL::DLEllipticalArc drawable =
        arc({.rotation = any(random), .start = start, .end = start + part(random)});
    const double angle = any(random);
    const double from_start = normalized(angle - drawable.rotation - drawable.start);
    const double sweep = static_cast<double>(drawable.end) - drawable.start;
    // Angles are floats: next to an end both answers hold.
    if (std::abs(from_start - sweep) < 1e-4 || from_start < 1e-4 || from_start > 6.2830) continue;
    ASSERT_EQ(drawable.isWithinBounds(toward(angle)), from_start < sweep)
        << drawable.start << ' ' << drawable.end << ' ' << drawable.rotation << ' ' << angle;
    inside += from_start < sweep ? 1 : 0;
  }
  EXPECT_GT(inside, 5000);
}

TEST(EllipticalArc, IsFoundWhateverItsAnglesAndRotation) {
  const Geometry g{.center = {1, 2}, .rotation = 0.5F, .start = 1.0F, .end = 2.0F};
  DL::DLEllipticalArc wanted = arc(g);
  for (const float other : {0.0F, 0.5F, kNan, kInfinity}) {
    DL::DLEllipticalArc there =
        arc({.center = {1, 2}, .rotation = other, .start = other, .end = other});
    EXPECT_TRUE(finds(wanted, there));
  }
}

TEST(EllipticalArc, IsNotFoundElsewhereOrOfAnotherSize) {
  DL::DLEllipticalArc wanted = arc({});
  for (const Geometry& g : {Geometry{.center = {1, 0}},
                            {.center = {0, 1}},
                            {.major = 101},
                            {.minor = 51},
                            {.major = 50, .minor = 100}}) {
    DL::DLEllipticalArc there = arc(g);
    EXPECT_FALSE(finds(wanted, there));
  }
}

TEST(EllipticalArc, WithANaNIsNeverFound) {
  DL::DLEllipticalArc there = arc({});
  DL::DLEllipticalPie sector = pie({});
  for (const Geometry& g : {Geometry{.rotation = kNan}, {.start = kNan}, {.end = kNan}}) {
    DL::DLEllipticalArc odd = arc(g);
    EXPECT_FALSE(finds(odd, there));
    EXPECT_FALSE(finds(odd, odd));
    EXPECT_TRUE(finds(there, odd));  // only those of the wanted arc are looked at
    DL::DLEllipticalPie odd_sector = pie(g);
    EXPECT_FALSE(finds(odd_sector, sector));
  }
}

TEST(EllipticalPie, IsFoundWhateverItsAnglesButNotOfAnotherRotation) {
  DL::DLEllipticalPie wanted = pie({.rotation = 0.5F, .start = 1.0F, .end = 2.0F});
  for (const float other : {0.0F, kNan, kInfinity}) {
    DL::DLEllipticalPie there = pie({.rotation = 0.5F, .start = other, .end = other});
    EXPECT_TRUE(finds(wanted, there));
    DL::DLEllipticalPie turned = pie({.rotation = other, .start = 1.0F, .end = 2.0F});
    EXPECT_FALSE(finds(wanted, turned));
  }
  for (const Geometry& g : {Geometry{.center = {1, 0}, .rotation = 0.5F},
                            {.major = 101, .rotation = 0.5F},
                            {.minor = 51, .rotation = 0.5F}}) {
    DL::DLEllipticalPie there = pie(g);
    EXPECT_FALSE(finds(wanted, there));
  }
}

template <class Class>
void expect_clone_keeps_the_angles(Class original) {
  original.reserved = 3;
  const std::unique_ptr<DL::Drawable> copy(original.clone());
  ASSERT_EQ(copy->type(), Class::my_type());
  const auto& clone = static_cast<Class&>(*copy);
  EXPECT_EQ(clone.center, original.center);
  EXPECT_EQ(clone.major, original.major);
  EXPECT_EQ(clone.minor, original.minor);
  EXPECT_EQ(clone.rotation, original.rotation);
  EXPECT_EQ(clone.start, original.start);
  EXPECT_EQ(clone.end, original.end);
  EXPECT_EQ(clone.display_list, original.display_list);
  EXPECT_EQ(clone.reserved, 0U);
}

TEST(EllipticalArc, CloneKeepsItsAngles) {
  DL::DisplayList list;
  const Geometry g{.center = {1, 2}, .rotation = 0.5F, .start = 1.25F, .end = -2.5F, .list = &list};
  expect_clone_keeps_the_angles(arc(g));
  expect_clone_keeps_the_angles(pie(g));
}

}  // namespace
