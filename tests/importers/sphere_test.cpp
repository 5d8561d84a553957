#include "importers/sphere.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using importers::Vertex;
using importers::sphere::is_seam;
using importers::sphere::line_on_map;
using importers::sphere::ring_on_map;
using importers::sphere::Rings;
using importers::sphere::Vertices;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

/// The area that rings enclose, holes and all counted as positive.
double area(const std::vector<Vertices>& rings) {
  double sum = 0.0;
  for (const Vertices& ring : rings) {
    double twice = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const Vertex& a = ring[i];
      const Vertex& b = ring[(i + 1) % ring.size()];
      twice += a.x * b.y - b.x * a.y;
    }
    sum += std::fabs(twice) / 2;
  }
  return sum;
}

TEST(RingOnMap, LeavesAnOrdinaryRingAlone) {
  const Vertices ring{{0, 0}, {10, 0}, {10, 10}};
  const Rings rings = ring_on_map(ring);
  EXPECT_THAT(rings.pieces, ElementsAre(ring));
  EXPECT_FALSE(rings.is_cut);
}

TEST(RingOnMap, DropsTheClosingVertex) {
  const Vertices ring{{0, 0}, {10, 0}, {10, 10}, {0, 0}};
  EXPECT_THAT(ring_on_map(ring).pieces, ElementsAre(Vertices{{0, 0}, {10, 0}, {10, 10}}));
}

TEST(RingOnMap, CutsASquareAtTheAntimeridian) {
  const Vertices square{{170, 0}, {-170, 0}, {-170, 10}, {170, 10}};
  const std::vector<Vertices> pieces = ring_on_map(square).pieces;
  ASSERT_EQ(pieces.size(), 2U);
  EXPECT_THAT(pieces[0], UnorderedElementsAre(Vertex{170, 0}, Vertex{180, 0}, Vertex{180, 10},
                                              Vertex{170, 10}));
  EXPECT_THAT(pieces[1], UnorderedElementsAre(Vertex{-180, 0}, Vertex{-170, 0}, Vertex{-170, 10},
                                              Vertex{-180, 10}));
}

TEST(RingOnMap, KeepsTheAreaOfASquareThatStartsInTheWest) {
  const Vertices square{{-170, 0}, {-170, 10}, {170, 10}, {170, 0}};
  const std::vector<Vertices> pieces = ring_on_map(square).pieces;
  EXPECT_EQ(pieces.size(), 2U);
  EXPECT_DOUBLE_EQ(area(pieces), 200.0);
}

TEST(RingOnMap, ClosesARingAroundTheSouthPole) {
  const Vertices coast{{-120, -70}, {0, -70}, {120, -70}};
  const std::vector<Vertices> pieces = ring_on_map(coast).pieces;
  EXPECT_DOUBLE_EQ(area(pieces), 360.0 * 20.0);
  for (const Vertices& piece : pieces) {
    for (const Vertex& v : piece) {
      EXPECT_LE(std::fabs(v.x), 180.0);
      EXPECT_TRUE(v.y == -70.0 || v.y == -90.0);
    }
  }
}

TEST(RingOnMap, ClosesARingAroundTheNorthPoleGoingWest) {
  const Vertices coast{{120, 80}, {0, 80}, {-120, 80}};
  EXPECT_DOUBLE_EQ(area(ring_on_map(coast).pieces), 360.0 * 10.0);
}

TEST(RingOnMap, TellsWhatWasCut) {
  EXPECT_TRUE(ring_on_map(Vertices{{170, 0}, {-170, 0}, {-170, 10}, {170, 10}}).is_cut);
  EXPECT_TRUE(ring_on_map(Vertices{{-120, -70}, {0, -70}, {120, -70}}).is_cut);
  EXPECT_TRUE(ring_on_map(Vertices{{180, -70}, {60, -70}, {-60, -70}}).is_cut)
      << "around a pole and yet in one piece";
  EXPECT_FALSE(ring_on_map(Vertices{{180, 0}, {180, 10}, {170, 10}}).is_cut)
      << "an edge of its own on the border";
}

TEST(RingOnMap, GivesBackWhatIsNotInDegrees) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(ring_on_map(Vertices{{0, 0}, {500000, 0}, {0, 500000}}).pieces[0].size(), 3U);
  EXPECT_EQ(ring_on_map(Vertices{{0, 0}, {nan, 0}, {170, 0}, {-170, 0}}).pieces[0].size(), 4U);
  EXPECT_EQ(ring_on_map(Vertices{{0, 0}, {infinity, 0}, {0, 1}}).pieces[0].size(), 3U);
}

TEST(LineOnMap, BreaksAtTheAntimeridianInBothDirections) {
  const Vertices there{{170, 0}, {-170, 20}};
  EXPECT_THAT(line_on_map(there),
              ElementsAre(Vertices{{170, 0}, {180, 10}}, Vertices{{-180, 10}, {-170, 20}}));
  const Vertices back{{-170, 20}, {170, 0}};
  EXPECT_THAT(line_on_map(back),
              ElementsAre(Vertices{{-170, 20}, {-180, 10}}, Vertices{{180, 10}, {170, 0}}));
}

TEST(LineOnMap, LeavesOtherLinesAlone) {
  const Vertices line{{-170, 0}, {0, 5}, {170, 0}};
  EXPECT_THAT(line_on_map(line), ElementsAre(line));
}

TEST(Seam, IsAnEdgeOnTheBorderOfTheMap) {
  EXPECT_TRUE(is_seam({180, 10}, {180, 20}));
  EXPECT_TRUE(is_seam({-180, -90}, {180, -90}));
  EXPECT_FALSE(is_seam({180, 10}, {179, 20}));
  EXPECT_FALSE(is_seam({-180, 10}, {180, 20}));
}

}  // namespace
