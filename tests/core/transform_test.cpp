#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>

#include "displaylist/core/display_list.h"
#include "tests/support/point_printing.h"

namespace {

using DL::DisplayList;
using Logical = DL::PointTemplate<long>;
using Fractional = DL::PointTemplate<double>;
using Screen = DL::PointTemplate<int>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr LM_DCI_Point kDirty{77, 77, 77};

/// A list whose transform takes every point to (x, y).
struct ConstantList : DisplayList {
  ConstantList(double x, double y) {
    m_scale = {0.0, 0.0};
    m_offset = {x, y};
  }
};

/// A list that scales and shifts.
struct MappedList : DisplayList {
  MappedList(Fractional scale, Fractional offset) {
    m_scale = scale;
    m_offset = offset;
  }
};

LM_DCI_Point device(const DisplayList& list, const Logical& p) {
  LM_DCI_Point result = kDirty;
  list.transform_point(p, result);
  return result;
}
LM_DCI_Point checked(const DisplayList& list, const Logical& p) {
  LM_DCI_Point result = kDirty;
  list.transform_point_checking_overflow(p, result);
  return result;
}
LM_DCI_Point device_of(const DisplayList& list, const Fractional& p) {
  LM_DCI_Point result = kDirty;
  list.transform_point(p, result);
  return result;
}
Logical logical(const DisplayList& list, const Screen& p) {
  Logical result{77, 77};
  list.transform_point(p, result);
  return result;
}

/// What one number becomes on the way to device integers.
struct Conversion {
  double value;
  std::int32_t unchecked, saturated, asymmetric;
};

constexpr Conversion kConversions[] = {
    {0.0, 0, 0, 0},
    {-0.0, 0, 0, 0},
    {0.5, 0, 0, 1},
    {1.5, 2, 2, 2},
    {2.5, 2, 2, 3},
    {-0.5, 0, 0, 0},
    {-1.5, -2, -2, -1},
    {-2.5, -2, -2, -2},
    {-3.5, -4, -4, -3},
    {-2.6, -3, -3, -3},
    {-2.5000000001, -3, -3, -3},
    {-2.500000000001, -3, -3, -2},
    {2.49999, 2, 2, 2},
    {0.49999999999999994, 0, 0, 1},
    {2147483646.5, 2147483646, 2147483646, INT32_MAX},
    {2147483646.75, INT32_MAX, INT32_MAX, INT32_MAX},
    {2147483647.0, INT32_MAX, INT32_MAX, INT32_MAX},
    {2147483647.25, INT32_MAX, INT32_MAX, INT32_MAX},
    {2147483647.5, INT32_MIN, INT32_MAX, INT32_MAX},
    {2147483648.0, INT32_MIN, INT32_MAX, INT32_MAX},
    {3.0e9, INT32_MIN, INT32_MAX, INT32_MAX},
    {1.0e12, INT32_MIN, INT32_MAX, INT32_MAX},
    {9.3e18, INT32_MIN, INT32_MAX, INT32_MAX},
    {1.0e300, INT32_MIN, INT32_MAX, INT32_MAX},
    {kInfinity, INT32_MIN, INT32_MAX, INT32_MAX},
    // Too large for the difference between a half and almost a half.
    {-2147483647.5, INT32_MIN, INT32_MIN, INT32_MIN},
    {-1048576.5, -1048576, -1048576, -1048577},
    {-32768.5, -32768, -32768, -32768},
    {-2147483648.0, INT32_MIN, INT32_MIN, INT32_MIN},
    {-2147483648.5, INT32_MIN, INT32_MIN, INT32_MIN},
    {-2147483649.0, INT32_MIN, INT32_MIN, INT32_MIN},
    {-3.0e9, INT32_MIN, INT32_MIN, INT32_MIN},
    {-9.3e18, INT32_MIN, INT32_MIN, INT32_MIN},
    {-kInfinity, INT32_MIN, INT32_MIN, INT32_MIN},
    {kNan, INT32_MIN, INT32_MIN, INT32_MIN},
};

TEST(Transform, ConvertsEachAxisByItsOwnRoundingAtEveryLimit) {
  for (const Conversion& c : kConversions) {
    SCOPED_TRACE(testing::Message() << std::hexfloat << c.value);
    ConstantList in_x(c.value, 7.0);
    ConstantList in_y(7.0, c.value);
    EXPECT_EQ(device(in_x, {1, 1}), (LM_DCI_Point{c.unchecked, 7, 0}));
    EXPECT_EQ(device(in_y, {1, 1}), (LM_DCI_Point{7, c.unchecked, 0}));
    EXPECT_EQ(checked(in_x, {1, 1}), (LM_DCI_Point{c.saturated, 7, 0}));
    EXPECT_EQ(checked(in_y, {1, 1}), (LM_DCI_Point{7, c.saturated, 0}));
    EXPECT_EQ(device_of(in_x, {1.0, 1.0}), (LM_DCI_Point{c.asymmetric, 7, 0}));
    EXPECT_EQ(device_of(in_y, {1.0, 1.0}), (LM_DCI_Point{7, c.asymmetric, 0}));
    in_x.m_bCheckOverflow = true;
    in_y.m_bCheckOverflow = true;
    EXPECT_EQ(device(in_x, {1, 1}), (LM_DCI_Point{c.saturated, 7, 0}));
    EXPECT_EQ(device(in_y, {1, 1}), (LM_DCI_Point{7, c.saturated, 0}));
    EXPECT_EQ(device_of(in_x, {1.0, 1.0}), (LM_DCI_Point{c.asymmetric, 7, 0}));
  }
}

TEST(Transform, ScalesAndShiftsInDoublePrecision) {
  const MappedList list({2.0, -0.25}, {10.0, 100.5});
  EXPECT_EQ(device(list, {3, 8}), (LM_DCI_Point{16, 98, 0}));
  EXPECT_EQ(device(list, {-3, -8}), (LM_DCI_Point{4, 102, 0}));
  const MappedList fine({1.0 / 3.0, 1.0 / 3.0}, {0.0, 0.0});
  EXPECT_EQ(device(fine, {INT32_MAX, INT32_MIN}), (LM_DCI_Point{715827882, -715827883, 0}));
}

TEST(Transform, PointBeyondTheDeviceRangeSaturatesOnlyWhenChecked) {
  MappedList list({2.0, 2.0}, {0.0, 0.0});
  const Logical far{1500000000, -1500000000};
  EXPECT_EQ(device(list, far), (LM_DCI_Point{INT32_MIN, INT32_MIN, 0}));
  EXPECT_EQ(checked(list, far), (LM_DCI_Point{INT32_MAX, INT32_MIN, 0}));
  list.m_bCheckOverflow = true;
  EXPECT_EQ(device(list, far), (LM_DCI_Point{INT32_MAX, INT32_MIN, 0}));
}

struct FloatConversion {
  double value;
  float plain, clamped;
};

TEST(Transform, FloatsAreClampedToPositiveNormalValuesWhenChecked) {
  const float infinity = std::numeric_limits<float>::infinity();
  const FloatConversion conversions[] = {
      {5.0, 5.0F, 5.0F},
      {0.1, 0.1F, 0.1F},
      {16777217.0, 16777216.0F, 16777216.0F},
      {-5.0, -5.0F, FLT_MIN},
      {0.0, 0.0F, FLT_MIN},
      {1.0e-39, 1.0e-39F, FLT_MIN},
      {1.1754943508222875e-38, FLT_MIN, FLT_MIN},
      {3.4028234663852886e38, FLT_MAX, FLT_MAX},
      {1.0e39, infinity, FLT_MAX},
      {-1.0e39, -infinity, FLT_MIN},
      {kInfinity, infinity, FLT_MAX},
  };
  for (const FloatConversion& c : conversions) {
    SCOPED_TRACE(c.value);
    ConstantList list(c.value, 2.0);
    LM_Point p{9, 9, 9};
    list.transform_point(Logical{1, 1}, p);
    EXPECT_EQ(p, (LM_Point{c.plain, 2.0F, 0.0F}));
    p = {9, 9, 9};
    list.transform_point_checking_overflow(Logical{1, 1}, p);
    EXPECT_EQ(p, (LM_Point{c.clamped, 2.0F, 0.0F}));
    list.m_bCheckOverflow = true;
    p = {9, 9, 9};
    list.transform_point(Logical{1, 1}, p);
    EXPECT_EQ(p, (LM_Point{c.clamped, 2.0F, 0.0F}));
  }
}

TEST(Transform, NanStaysNanAmongFloats) {
  LM_Point p{9, 9, 9};
  ConstantList(kNan, -1.0).transform_point_checking_overflow(Logical{1, 1}, p);
  EXPECT_TRUE(std::isnan(p.x));
  EXPECT_EQ(p.y, FLT_MIN);
}

TEST(Transform, FractionalPointsAreScaledFirst) {
  const MappedList list({10.0, -10.0}, {0.25, 0.25});
  EXPECT_EQ(device_of(list, {0.125, 0.275}), (LM_DCI_Point{2, -2, 0}));
}

TEST(Transform, ScreenToLogicalRoundsToNearestEven) {
  const MappedList list({2.0, -4.0}, {1.0, 2.0});
  EXPECT_EQ(logical(list, {2, 0}), (Logical{0, 0}));
  EXPECT_EQ(logical(list, {4, 4}), (Logical{2, 0}));
  EXPECT_EQ(logical(list, {-2, -4}), (Logical{-2, 2}));
}

TEST(Transform, ScreenToLogicalSaturates) {
  EXPECT_EQ(logical(MappedList({1e-3, 1e-3}, {0, 0}), {INT32_MAX, INT32_MIN}),
            (Logical{INT32_MAX, INT32_MIN}));
  EXPECT_EQ(logical(MappedList({1e-300, 1e-300}, {0, 0}), {1, -1}),
            (Logical{INT32_MAX, INT32_MIN}));
  EXPECT_EQ(logical(MappedList({1.0, 1.0}, {-1.0, 1.0}), {INT32_MAX, INT32_MIN}),
            (Logical{INT32_MAX, INT32_MIN}));
  EXPECT_EQ(logical(MappedList({0.0, 0.0}, {0, 0}), {5, -5}), (Logical{INT32_MAX, INT32_MIN}));
  EXPECT_EQ(logical(MappedList({0.0, kInfinity}, {0, 0}), {0, 5}), (Logical{INT32_MIN, 0}));
}

TEST(Transform, LengthsAreScaledWithoutOffsetOrCheck) {
  MappedList list({0.5, -2.0}, {1000.0, 1000.0});
  list.m_bCheckOverflow = true;
  LM_DCI_Point d = kDirty;
  list.scale_point(Logical{5, 3}, d);
  EXPECT_EQ(d, (LM_DCI_Point{2, -6, 0}));
  list.scale_point(Logical{7, 1500000000}, d);
  EXPECT_EQ(d, (LM_DCI_Point{4, INT32_MIN, 0}));
  LM_Point f{9, 9, 9};
  list.scale_point(Logical{5, 3}, f);
  EXPECT_EQ(f, (LM_Point{2.5F, -6.0F, 0.0F}));
}

TEST(DisplayListObject, GrayscaleIsStoredAndTold) {
  DisplayList list;
  EXPECT_FALSE(list.is_grayscale());
  list.set_grayscale(true);
  EXPECT_TRUE(list.m_bGrayscale);
  EXPECT_TRUE(list.is_grayscale());
  list.set_grayscale(false);
  EXPECT_FALSE(list.is_grayscale());
}

TEST(DisplayListObject, PollsEveryTwentyVisitsByDefault) {
  EXPECT_EQ(DisplayList::m_cInterruptCount, 20);
  EXPECT_EQ(DisplayList::m_cSelInterruptCount, 20);
}

}  // namespace
