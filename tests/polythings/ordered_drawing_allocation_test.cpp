#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "displaylist/displaylist.h"
#include "lumen/raster_device.h"
#include "tests/polythings/allocation_counter.h"
#include "tests/support/client_drawables.h"
#include "tests/support/hand_made_tree.h"

// Threads that draw in order keep their room from one redraw to the next.

namespace {

constexpr DL::BoundsTemplate<long> kBox{0, 0, 100, 100};

/// Counts what the thread that draws it asks for until it is drawn again.
class Watch final : public client::Mark {
 public:
  void draw_unclipped(DL::DisplayList&) override {
    if (m_counter) found = m_counter->sizes();
    m_counter.reset();
    m_counter.emplace();
  }

  std::vector<std::size_t> found;

 private:
  std::optional<AllocationCounter> m_counter;
};

template <class T>
DL::Drawable* make(std::int32_t number) {
  const std::int32_t x = number * 37 % 90;
  const std::int32_t y = number * 53 % 90;
  const DL::PointTemplate<long> points[] = {{x, y}, {x + 40, y + 7}, {x + 9, y + 50}};
  return new T(LM_RGB32{static_cast<std::uint32_t>(number) * 9}, 3, points);
}

TEST(OrderedDrawingAllocation, IsNoneAfterTheFirstRedraw) {
  constexpr int workers = 3;
  lumen::Picture picture(100, 100);
  DL::DisplayList list;
  list.m_pRenderer = LM_Create<lumen::RasterDevice>(picture);
  list.m_rendition.set_clip_rectangle({0, 99, 0, 99});
  hand_made::plant(list, hand_made::inner(0, kBox, 0, {}));
  std::vector<Watch*> watches;
  for (std::int32_t i = 0; i < 200; ++i) {
    // The first leaf of each worker's queue, and one of the calling thread.
    watches.push_back(i <= workers ? new Watch : nullptr);
    DL::Group* leaf = hand_made::leaf(
        1, kBox, i % 40 == workers ? 1 : 0,
        {i <= workers ? static_cast<DL::Drawable*>(watches.back()) : make<DL::DLPolydot>(i),
         make<DL::DLPolyline>(i), make<DL::DLPolygon>(i), make<DL::DLPolydot>(i)});
    list.m_pRootGroup->append_child(leaf);
    leaf->m_pParent = list.m_pRootGroup;
  }
  DL::DisplayListMultithread threads(workers);
  threads.m_pDisplayList = &list;
  list.m_pMultithread = &threads;
  for (int round = 0; round < 5; ++round) {
    list.m_pRootGroup->draw_unclipped(list);
    threads.WaitForAllThreads();
    for (int i = 0; i <= workers && round >= 2; ++i) {
      EXPECT_EQ(watches[static_cast<std::size_t>(i)]->found, std::vector<std::size_t>{}) << i;
    }
  }
}

}  // namespace
