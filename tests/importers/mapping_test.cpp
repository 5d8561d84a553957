#include "importers/mapping.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/point_printing.h"

namespace {

using importers::Extent;
using importers::Mapping;
using Point = DL::PointTemplate<long>;

constexpr std::int32_t half = 1 << 30;

TEST(Mapping, PutsTheLongerSideBetweenTheHalfSides) {
  const Mapping mapping = Mapping::fitting({-180, -90, 180, 90});
  EXPECT_EQ(mapping.to_logical(-180, -90), (Point{-half, -half / 2}));
  EXPECT_EQ(mapping.to_logical(180, 90), (Point{half, half / 2}));
  EXPECT_EQ(mapping.to_logical(0, 0), (Point{0, 0}));
}

TEST(Mapping, CentresATallExtentFarFromTheOrigin) {
  const Mapping mapping = Mapping::fitting({1000, 2000, 1010, 2400});
  EXPECT_EQ(mapping.to_logical(1005, 2000), (Point{0, -half}));
  EXPECT_EQ(mapping.to_logical(1005, 2400), (Point{0, half}));
}

TEST(Mapping, MapsASinglePointToTheMiddle) {
  const Mapping mapping = Mapping::fitting({7, 8, 7, 8});
  EXPECT_EQ(mapping.to_logical(7, 8), (Point{0, 0}));
  EXPECT_EQ(mapping.to_logical(8, 9), (Point{half, half}));
}

TEST(Mapping, HoldsForTheLargestNumbers) {
  const double huge = std::numeric_limits<double>::max();
  const Mapping mapping = Mapping::fitting({-huge, -huge, huge, huge});
  EXPECT_EQ(mapping.to_logical(-huge, huge), (Point{-half, half}));
}

TEST(Mapping, HoldsForTheSmallestExtent) {
  const double tiny = std::numeric_limits<double>::denorm_min();
  const Mapping mapping = Mapping::fitting({0, 0, tiny, 0});
  EXPECT_TRUE(std::isfinite(mapping.scale));
  EXPECT_GE(mapping.scale, 1.0);
}

TEST(Mapping, SaturatesFarOutside) {
  const Mapping mapping = Mapping::fitting({0, 0, 1, 1});
  EXPECT_EQ(mapping.to_logical(1e6, -1e6), (Point{INT32_MAX, INT32_MIN}));
}

TEST(NearestLogical, RoundsAndSaturates) {
  EXPECT_EQ(importers::nearest_logical(2.6), 3);
  EXPECT_EQ(importers::nearest_logical(-2.6), -3);
  EXPECT_EQ(importers::nearest_logical(3e9), INT32_MAX);
  EXPECT_EQ(importers::nearest_logical(-1e300), INT32_MIN);
}

TEST(Extent, IsEmptyUntilItIsWidened) {
  Extent extent;
  EXPECT_TRUE(extent.is_empty());
  extent.widen(5, 6);
  EXPECT_EQ(extent, (Extent{5, 6, 5, 6}));
  extent.widen(4, 9);
  EXPECT_EQ(extent, (Extent{4, 6, 5, 9}));
}

TEST(Extent, MeetsWhatSharesABorderPointOnly) {
  const Extent extent{0, 0, 1, 1};
  EXPECT_TRUE(extent.meets({1, 1, 2, 2}));
  EXPECT_FALSE(extent.meets({1.001, 0, 2, 1}));
  EXPECT_FALSE(extent.meets({0, -2, 1, -0.001}));
}

}  // namespace
