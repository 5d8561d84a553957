#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <random>
#include <sstream>

#include "tests/polythings/device_arcs.h"
#include "tests/support/point_printing.h"

// The ellipse that a device action gets is the image of the logical one, point
// by point, in every view.

namespace {

using namespace ellipses;

/// How far an angle on the device may be from the one that it stands for: it is
/// a float, brought into the turn in float arithmetic with a turn of 6.2831855.
double angle_error(double angle) {
  return 8e-7 + 1.2e-7 * std::abs(angle);
}

/// How far a point on the device may be from where its logical point belongs:
/// half a unit in each coordinate of the rounded centre, half a unit for the
/// rounded radii together (both errors lie along the axes), and what the errors
/// of rotation and angle move the far end of the longer axis by.
double allowed(const DeviceArc& arc, double turned) {
  return std::sqrt(0.5) + 0.5 + turned * std::max(arc.radii.x, arc.radii.y) + 1e-6;
}

/// The same for a point of the outline at whatever angle; the rotation comes
/// from an arc tangent.
double allowed_off_outline(const DeviceArc& arc) {
  return allowed(arc, angle_error(0.0));
}

/// Random views and ellipses in them.
class EllipseTransform : public testing::Test {
 protected:
  double any(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
  }
  int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random); }
  /// Between the two, as likely in every decade.
  double any_size(double low, double high) { return std::exp(any(std::log(low), std::log(high))); }
  double any_sign() { return pick(2) == 0 ? -1.0 : 1.0; }

  void set_scale() {
    recorded.list.m_bRotated = false;
    recorded.list.m_scale = {any_sign() * any_size(0.01, 100), any_sign() * any_size(0.01, 100)};
    if (pick(4) == 0) recorded.list.m_scale.y = recorded.list.m_scale.x;
    recorded.list.m_offset = {any(-1e4, 1e4), any(-1e4, 1e4)};
  }
  void set_rotation() {
    recorded.list.m_bRotated = true;
    double* r = recorded.list.m_rotation;
    for (const int i : {0, 1, 4, 5}) r[i] = any(-4, 4);
    r[2] = any(-1e4, 1e4);
    r[3] = any(-1e4, 1e4);
    if (pick(3) != 0) return;
    const double angle = any(0, 7);  // a turn, and now and then its mirror image
    r[4] = std::cos(angle);
    r[0] = std::sin(angle);
    r[5] = pick(2) == 0 ? r[4] : -r[4];
    r[1] = r[5] == r[4] ? -r[0] : r[0];
  }
  std::int32_t any_radius() {
    const int kind = pick(12);
    if (kind == 0) return 0;
    return static_cast<std::int32_t>(any_size(1, kind < 3 ? 10 : 1e6));
  }
  Geometry any_ellipse() {
    Geometry g;
    g.center = {static_cast<std::int32_t>(any(-1e5, 1e5)),
                static_cast<std::int32_t>(any(-1e5, 1e5))};
    g.major = any_radius();
    g.minor = pick(6) == 0 ? g.major : any_radius();
    g.rotation = pick(5) == 0 ? kQuarterTurn * static_cast<float>(pick(5))
                              : static_cast<float>(any(-10, 10));
    g.start = static_cast<float>(any(-10, 10));
    g.end = g.start + static_cast<float>(any(0.02, 6.26));
    return g;
  }

  DeviceArc on_device(DL::Drawable& drawable) {
    const auto calls = drawn(recorded, drawable);
    EXPECT_EQ(calls.size(), 1U);
    return DeviceArc(calls.at(0));
  }

  /// Every point of the whole ellipse lies on the outline that the device got,
  /// and centre and radii are the nearest integers.
  void check_outline(const Geometry& g) {
    DL::DLEllipse drawable = ellipse(g);
    const DeviceArc got = on_device(drawable);
    const Place center = to_device(recorded.list, {double(g.center.x), double(g.center.y)});
    ASSERT_LE(std::abs(got.center.x - center.x), 0.5 + 1e-6);
    ASSERT_LE(std::abs(got.center.y - center.y), 0.5 + 1e-6);
    const Place axes = half_axes(recorded.list, g);
    ASSERT_LE(std::abs(std::max(got.radii.x, got.radii.y) - axes.x), 0.5 + 1e-9 * axes.x);
    ASSERT_LE(std::abs(std::min(got.radii.x, got.radii.y) - axes.y), 0.5 + 1e-9 * axes.x);
    for (int i = 0; i < 12; ++i) {
      const Place place = point_at(recorded.list, g, kTwoPi * i / 12);
      ASSERT_LE(distance_to_outline(got, place), allowed_off_outline(got))
          << "angle " << i << " of 12";
    }
  }

  /// Start, end and middle are where they belong; the device walks the other
  /// way round where the view is mirrored, or one radius is negative. A flat
  /// ellipse may be walked either way.
  void check_arc(const Geometry& g) {
    DL::DLEllipticalArc drawable = arc(g);
    const DeviceArc got = on_device(drawable);
    for (const double angle : {got.start, got.end, got.rotation}) {
      ASSERT_GE(angle, 0.0);
      ASSERT_LE(angle, static_cast<double>(kTurn));
    }
    const double sweep = static_cast<double>(g.end) - g.start;
    // The principal axes are a quarter of a turn off at most.
    const double error = angle_error(std::max(std::abs(g.start), std::abs(g.end)) + 1.6);
    ASSERT_NEAR(got.sweep(), sweep, 2 * error);
    const double most = allowed(got, error + angle_error(0.0));
    const Place start = point_at(recorded.list, g, g.start);
    const Place end = point_at(recorded.list, g, g.end);
    const Place middle = point_at(recorded.list, g, g.start + sweep / 2);
    const bool has_mirrored_axes = (g.major < 0) != (g.minor < 0);
    const bool turned_round = is_mirrored(recorded.list) != has_mirrored_axes;
    const double off = std::max(distance(got.at(got.start), turned_round ? end : start),
                                distance(got.at(got.end), turned_round ? start : end));
    const double off_other = std::max(distance(got.at(got.start), turned_round ? start : end),
                                      distance(got.at(got.end), turned_round ? end : start));
    const bool is_flat = g.major == 0 || g.minor == 0;
    ASSERT_LE(is_flat ? std::min(off, off_other) : off, most);
    ASSERT_LE(distance(got.at(got.start + got.sweep() / 2), middle), most);
  }

  void check(const Geometry& g) {
    std::ostringstream what;
    const DL::DisplayList& list = recorded.list;
    what.precision(17);
    what << "center " << g.center << " radii " << g.major << ' ' << g.minor << " rotation "
         << g.rotation << " from " << g.start << " to " << g.end << " scale " << list.m_scale
         << " offset " << list.m_offset << " rotated " << list.m_bRotated;
    for (const double r : list.m_rotation) what << ' ' << r;
    SCOPED_TRACE(what.str());
    check_outline(g);
    if (!HasFatalFailure()) check_arc(g);
  }

  RecordedList recorded;
  std::mt19937 random{11};
};

TEST_F(EllipseTransform, KeepsPointsAtEveryScaleAndMirrored) {
  for (int i = 0; i < 2500 && !HasFatalFailure(); ++i) {
    set_scale();
    check(any_ellipse());
  }
}

TEST_F(EllipseTransform, KeepsPointsInTurnedAndShearedViews) {
  for (int i = 0; i < 2500 && !HasFatalFailure(); ++i) {
    set_rotation();
    check(any_ellipse());
  }
}

TEST_F(EllipseTransform, KeepsThinEllipsesThin) {
  for (int i = 0; i < 500 && !HasFatalFailure(); ++i) {
    set_scale();
    Geometry g = any_ellipse();
    g.major = 1000000;
    g.minor = pick(3);
    check(g);
    std::swap(g.major, g.minor);
    check(g);
  }
}

TEST_F(EllipseTransform, KeepsNearlyRoundEllipses) {
  for (int i = 0; i < 500 && !HasFatalFailure(); ++i) {
    set_rotation();
    Geometry g = any_ellipse();
    g.major = 1000000;
    g.minor = 1000000 - pick(3);
    check(g);
    // What is not round becomes round on the device.
    recorded.list.m_bRotated = false;
    recorded.list.m_scale = {1.0, 2.0 * any_sign()};
    g.major = 200000;
    g.minor = 100000 + pick(2);
    g.rotation = 0.0F;
    check(g);
  }
}

TEST_F(EllipseTransform, KeepsPointsWhereAnAxisIsLost) {
  for (int i = 0; i < 200 && !HasFatalFailure(); ++i) {
    set_rotation();
    double* r = recorded.list.m_rotation;
    const double factor = any(-2, 2);
    r[0] = factor * r[4];  // both columns of the matrix on one line
    r[5] = factor * r[1];
    check_outline(any_ellipse());
  }
}

TEST_F(EllipseTransform, OfNegativeRadiiKeepsPoints) {
  for (int i = 0; i < 500 && !HasFatalFailure(); ++i) {
    set_scale();
    Geometry g = any_ellipse();
    g.major = static_cast<std::int32_t>(any_sign()) * g.major;
    g.minor = -g.minor;
    check(g);
  }
}

TEST_F(EllipseTransform, AnEndBelowTheStartRunsThroughAWholeTurn) {
  for (int i = 0; i < 500 && !HasFatalFailure(); ++i) {
    set_rotation();
    Geometry g = any_ellipse();
    g.start = static_cast<float>(any(3, 6));
    g.end = static_cast<float>(any(0.1, 2.9));
    DL::DLEllipticalArc part = arc(g);
    const DeviceArc below = on_device(part);
    g.end += kTurn;
    DL::DLEllipticalArc same = arc(g);
    const DeviceArc above = on_device(same);
    ASSERT_NEAR(below.start, above.start, 2 * angle_error(11));
    ASSERT_NEAR(below.end, above.end, 2 * angle_error(11));
    ASSERT_EQ(below.radii, above.radii);
  }
}

TEST_F(EllipseTransform, OfAHalfTurnOfAMirrorKeepsItsSide) {
  recorded.list.m_scale = {1.0, -1.0};
  DL::DLEllipticalArc upper = arc({.start = 0.0F, .end = kHalfTurn});
  const DeviceArc got = on_device(upper);
  EXPECT_NEAR(got.at(got.start + got.sweep() / 2).y, -50.0, 1e-3);
  EXPECT_NEAR(got.at(got.start).x, -100.0, 1e-3);
  EXPECT_NEAR(got.at(got.end).x, 100.0, 1e-3);
}

TEST_F(EllipseTransform, AQuarterTurnOfTheViewTurnsTheEllipse) {
  recorded.list.m_bRotated = true;
  std::copy_n(std::initializer_list<double>{1.0, -1.0, 7.0, 8.0, 0.0, 0.0}.begin(), 6,
              recorded.list.m_rotation);
  DL::DLEllipse drawable = ellipse({.center = {10, 20}, .major = 100, .minor = 50});
  const DeviceArc got = on_device(drawable);
  EXPECT_EQ(got.center, (LM_DCI_Point{-13, 18, 0}));
  EXPECT_LE(distance_to_outline(got, {-13, 118}), 1e-4);
  EXPECT_LE(distance_to_outline(got, {-63, 18}), 1e-4);
}

TEST_F(EllipseTransform, TheRotationOfAListCountsOnlyWhenItIsSwitchedOn) {
  std::copy_n(std::initializer_list<double>{1.0, -1.0, 7.0, 8.0, 0.0, 0.0}.begin(), 6,
              recorded.list.m_rotation);
  recorded.list.m_bRotationSecondary = true;
  DL::DLEllipse drawable = ellipse({.center = {10, 20}, .major = 100, .minor = 50});
  const DeviceArc got = on_device(drawable);
  EXPECT_EQ(got.center, (LM_DCI_Point{10, 20, 0}));
  EXPECT_LE(distance_to_outline(got, {110, 20}), 1e-4);
}

TEST_F(EllipseTransform, OfAnyNumbersIsDefined) {
  const auto odd = [&](double plain) {
    constexpr double kOdd[] = {0.0, 1e-320, 1e300, -1e300, 1e9, HUGE_VAL, -HUGE_VAL};
    const int i = pick(14);
    return i < 7 ? kOdd[i] : i == 7 ? std::nan("") : plain;
  };
  const auto odd_angle = [&](float plain) {
    constexpr float kOdd[] = {0.0F, 1e-40F, 3e38F, -3e38F, 1e9F, kInfinity, -kInfinity, kNan};
    const int i = pick(16);
    return i < 8 ? kOdd[i] : plain;
  };
  for (int i = 0; i < 5000; ++i) {
    set_rotation();
    recorded.list.m_bRotated = pick(2) == 0;
    recorded.list.m_bCheckOverflow = pick(2) == 0;
    for (double& r : recorded.list.m_rotation) r = odd(r);
    recorded.list.m_scale = {odd(2.0), odd(-0.5)};
    Geometry g = any_ellipse();
    const std::int32_t radii[] = {kHighest, kLowest, -1, 0, 1, g.major};
    g.major = radii[pick(6)];
    g.minor = radii[pick(6)];
    g.rotation = odd_angle(g.rotation);
    g.start = odd_angle(g.start);
    g.end = odd_angle(g.end);
    g.use_arc = pick(2) == 0;
    DL::DLEllipse whole = ellipse(g);
    DL::DLEllipticalArc part = arc(g);
    DL::DLColorizedEllipse filled = colorized(g);
    for (DL::Drawable* drawable : std::initializer_list<DL::Drawable*>{&whole, &part, &filled}) {
      ASSERT_LE(drawn(recorded, *drawable).size(), 1U);
    }
  }
}

}  // namespace
