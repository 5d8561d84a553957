#include "importers/coloring.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace {

using importers::Sketch;
using importers::Vertex;
using testing::ElementsAre;

void add_square(Sketch& sketch, double x, double y) {
  const Vertex square[] = {{x, y}, {x + 1, y}, {x + 1, y + 1}, {x, y + 1}};
  sketch.begin_area();
  sketch.add_ring(square);
  sketch.end_area();
}

void add_square_feature(Sketch& sketch, double x, double y) {
  sketch.begin_feature();
  add_square(sketch, x, y);
  sketch.end_feature();
}

Sketch field_of_squares(int side) {
  Sketch sketch;
  sketch.begin_layer("squares", false);
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) add_square_feature(sketch, x, y);
  }
  return sketch;
}

TEST(Coloring, GivesSquaresThatTouchDifferentColors) {
  constexpr int side = 20;
  const Sketch sketch = field_of_squares(side);
  const std::vector<std::uint32_t> colors = color_areas(sketch, sketch.layers()[0], 8);
  ASSERT_EQ(colors.size(), std::size_t{side * side});
  const auto at = [&](int x, int y) { return colors[static_cast<std::size_t>(y * side + x)]; };
  for (int y = 1; y < side; ++y) {
    for (int x = 1; x < side; ++x) {
      const std::set<std::uint32_t> around{at(x, y), at(x - 1, y), at(x, y - 1), at(x - 1, y - 1)};
      EXPECT_EQ(around.size(), 4U) << "around " << x << "," << y;
    }
  }
}

TEST(Coloring, IsTheSameEveryTime) {
  const Sketch sketch = field_of_squares(5);
  EXPECT_EQ(color_areas(sketch, sketch.layers()[0], 8), color_areas(sketch, sketch.layers()[0], 8));
}

TEST(Coloring, GivesTheAreasOfAFeatureOneColor) {
  Sketch sketch;
  sketch.begin_layer("islands", false);
  add_square_feature(sketch, 0, 0);
  sketch.begin_feature();
  add_square(sketch, 1, 0);
  add_square(sketch, 5, 5);
  sketch.end_feature();
  const std::vector<std::uint32_t> colors = color_areas(sketch, sketch.layers()[0], 8);
  ASSERT_EQ(colors.size(), 3U);
  EXPECT_EQ(colors[1], colors[2]);
  EXPECT_NE(colors[0], colors[1]);
}

TEST(Coloring, StaysWithinTheColorsThereAre) {
  const Sketch sketch = field_of_squares(4);
  for (const std::uint32_t color : color_areas(sketch, sketch.layers()[0], 2)) EXPECT_LT(color, 2U);
}

}  // namespace
