#include "displaylist/core/rounding_p.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <limits>
#include <vector>

#include "displaylist/core/transform_p.h"
#include "tests/support/bounds_generators.h"
#include "tests/support/point_printing.h"

namespace {

namespace rounding = DL::rounding;
namespace transform = DL::transform;
using DL::DisplayList;
using Logical = DL::PointTemplate<long>;

std::vector<double> boundary_values() {
  std::vector<double> values;
  for (const double limit : {0.0, 1.0, 2147483646.0, 2147483647.0, 2147483648.0, 4294967296.0,
                             9223372036854775807.0, 1e300}) {
    for (const double step : {0.0, 0.25, 0.5, 0.75, 1.0, 1.5}) {
      for (const double value : {limit + step, limit - step}) {
        for (const double signed_value : {value, -value}) {
          values.push_back(signed_value);
          values.push_back(std::nextafter(signed_value, 1e301));
          values.push_back(std::nextafter(signed_value, -1e301));
        }
      }
    }
  }
  values.insert(
      values.end(),
      {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
       std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::denorm_min()});
  return values;
}

/// Any bits as a double, or a value about as large as a 32-bit number.
double any_double() {
  if (*rc::gen::arbitrary<bool>()) {
    return std::bit_cast<double>(
        *rc::gen::resize(rc::kNominalSize, rc::gen::arbitrary<std::uint64_t>()));
  }
  return *any_coordinate() * 1.001 + *rc::gen::inRange(0, 5) * 0.25;
}

TEST(Rounding, AlmostHalfHasItsExactBits) {
  EXPECT_EQ(std::bit_cast<std::uint64_t>(rounding::kAlmostHalf), 0x3FDFFFFFFFFD4050U);
}

TEST(Rounding, ProcessorAndPortablePathsAgreeAtTheLimits) {
  for (const double value : boundary_values()) {
    EXPECT_EQ(rounding::nearest(value), rounding::portable::nearest(value)) << value;
  }
}

// Compilers work out conversions of constants for themselves.

TEST(Rounding, NearestOfAConstantIsWhatTheProcessorGives) {
  EXPECT_EQ(rounding::nearest(2.5), 2);
  EXPECT_EQ(rounding::nearest(2147483648.0), INT32_MIN);
  EXPECT_EQ(rounding::nearest(std::numeric_limits<double>::quiet_NaN()), INT32_MIN);
}

TEST(Rounding, TruncationGoesTowardZero) {
  EXPECT_EQ(rounding::truncate(2.9), 2);
  EXPECT_EQ(rounding::truncate(-2.9), -2);
  EXPECT_EQ(rounding::truncate(2147483647.9), INT32_MAX);
  EXPECT_EQ(rounding::truncate(2147483648.0), INT32_MIN);
  EXPECT_EQ(rounding::truncate(-2147483648.9), INT32_MIN);
  EXPECT_EQ(rounding::truncate(std::numeric_limits<double>::infinity()), INT32_MIN);
  EXPECT_EQ(rounding::truncate(std::numeric_limits<double>::quiet_NaN()), INT32_MIN);
}

TEST(Rounding, TruncationAtTheLimits) {
  for (const double value : boundary_values()) {
    const bool fits = value > -2147483649.0 && value < 2147483648.0;
    const double expected = fits ? std::trunc(value) : -2147483648.0;
    EXPECT_EQ(static_cast<double>(rounding::truncate(value)), expected) << value;
  }
}

RC_GTEST_PROP(Rounding, ProcessorAndPortablePathsAgree, ()) {
  const double value = any_double();
  RC_ASSERT(rounding::nearest(value) == rounding::portable::nearest(value));
}

RC_GTEST_PROP(Rounding, SaturationAgreesWithNearestWhereverThatFits, ()) {
  const double value = any_double();
  const std::int32_t saturated = rounding::nearest_saturated(value);
  if (value >= 2147483647.5) {
    RC_ASSERT(saturated == INT32_MAX);
  } else if (value <= -2147483648.0 || value != value) {
    RC_ASSERT(saturated == INT32_MIN);
  } else {
    RC_ASSERT(saturated == rounding::nearest(value));
  }
}

RC_GTEST_PROP(Rounding, AsymmetricIsMonotonicAndWithinAHalf, ()) {
  const double value = any_double();
  RC_PRE(value >= -2147483648.0 && value <= 2147483647.0);
  const double rounded = rounding::asymmetric(value);
  RC_ASSERT(std::abs(rounded - value) <= 0.500000001);
  RC_ASSERT(rounding::asymmetric(value + 0.25) >= rounded);
}

void set_any_transform(DisplayList& list) {
  const auto number = [] { return *rc::gen::inRange(-100000, 100001) / 128.0; };
  list.m_scale = {number(), number()};
  list.m_offset = {number(), number()};
  for (double& coefficient : list.m_rotation) coefficient = number();
}

RC_GTEST_PROP(TransformPaths, ProcessorAndPortableConversionsAgree, ()) {
  DisplayList list;
  set_any_transform(list);
  const Logical p{*any_coordinate(), *any_coordinate()};
  RC_ASSERT(transform::scaled(list, p) == transform::portable::scaled(list, p));
  RC_ASSERT(transform::rotated(list, p) == transform::portable::rotated(list, p));
}

TEST(TransformPaths, AgreeAtTheLimits) {
  DisplayList list;
  list.m_scale = {0.0, 0.0};
  for (const double value : boundary_values()) {
    list.m_offset = {value, -value};
    EXPECT_EQ(transform::scaled(list, {1, 1}), transform::portable::scaled(list, {1, 1})) << value;
    list.m_rotation[2] = value;
    list.m_rotation[3] = -value;
    EXPECT_EQ(transform::rotated(list, {1, 1}), transform::portable::rotated(list, {1, 1}))
        << value;
  }
}

RC_GTEST_PROP(TransformPaths, ArraysAreConvertedLikeSinglePoints, ()) {
  DisplayList list;
  set_any_transform(list);
  list.m_bRotated = *rc::gen::arbitrary<bool>();
  const auto coordinates = *rc::gen::arbitrary<std::vector<std::int8_t>>();
  std::vector<Logical> points;
  for (const std::int8_t c : coordinates) points.push_back({c / 64, c / 100});
  RC_PRE(!points.empty());
  const auto count = static_cast<std::int32_t>(points.size());

  std::vector<LM_DCI_Point> single;
  std::vector<LM_DCI_Point> distinct;
  for (const Logical& p : points) {
    LM_DCI_Point d;
    list.transform_point_with_rotation(p, d);
    single.push_back(d);
    if (distinct.empty() || distinct.back() != d) distinct.push_back(d);
  }
  std::vector<LM_DCI_Point> all(points.size());
  transform::all_with_rotation(list, points.data(), count, all.data());
  RC_ASSERT(all == single);
  std::vector<LM_DCI_Point> kept(points.size() + 1);
  const std::int32_t kept_count =
      transform::distinct_with_rotation(list, points.data(), count, kept.data());
  kept.resize(static_cast<std::size_t>(kept_count));
  RC_ASSERT(kept == distinct);
}

}  // namespace
