#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tests/polythings/allocation_counter.h"
#include "tests/support/recorded_list.h"
#include "tests/support/silent_renderer.h"

// Drawing takes nothing from the general allocator up to 256 points.

namespace {

using Sizes = std::vector<std::size_t>;

/// The sizes asked for while a drawable of class T and `count` points is drawn.
template <class T>
Sizes sizes_for(int count) {
  const auto renderer = LM_Create<SilentRenderer>();
  DL::DisplayList list;
  list.m_pRenderer = renderer;
  const auto size = static_cast<std::size_t>(count);
  std::vector<LogicalPoint> points(size);
  for (std::size_t i = 0; i < size; ++i) points[i].x = static_cast<int>(i);
  const std::vector<LM_RGB32> colors(size);
  std::unique_ptr<T> drawable;
  if constexpr (std::is_same_v<T, DL::DLGouraudPolyline>) {
    drawable.reset(new T(LM_RGB32{1}, count, points.data(), colors.data()));
  } else {
    drawable.reset(new T(LM_RGB32{1}, count, points.data()));
  }
  drawable->rendition(list);  // the working rendition has the colour now
  AllocationCounter counter;
  drawable->draw_unclipped(list);
  const Sizes sizes = counter.sizes();
  EXPECT_EQ(renderer->points, count);
  return sizes;
}

TEST(DrawAllocation, IsNoneForUpTo256Points) {
  EXPECT_EQ(sizes_for<DL::DLPolyline>(256), Sizes{});
  EXPECT_EQ(sizes_for<DL::DLGouraudPolyline>(256), Sizes{});
  EXPECT_EQ(sizes_for<DL::DLPolygon>(256), Sizes{});
}

TEST(DrawAllocation, OfAPolylineIsOnePointMoreThanItHas) {
  EXPECT_EQ(sizes_for<DL::DLPolyline>(257), Sizes{258 * sizeof(LM_DCI_Point)});
}

TEST(DrawAllocation, OfOthersIsAsManyPointsAsTheyHave) {
  EXPECT_EQ(sizes_for<DL::DLGouraudPolyline>(257), Sizes{257 * sizeof(LM_DCI_Point)});
  EXPECT_EQ(sizes_for<DL::DLPolygon>(257), Sizes{257 * sizeof(LM_DCI_Point)});
}

}  // namespace
