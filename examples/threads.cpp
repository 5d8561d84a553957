// Draws a picture on all processors.

#include <cstdio>
#include <memory>

#include "displaylist/displaylist.h"
#include "lumen/raster_device.h"

namespace {

constexpr int size = 1000;  // of the picture, in pixels

/// A field of tiles that do not overlap.
void add_tiles(DL::DisplayList& list) {
  for (std::int32_t i = 0; i < 40'000; ++i) {
    const std::int32_t x = i % 200 * 50;
    const std::int32_t y = i / 200 * 50;
    const DL::PointTemplate<long> corners[] = {{x, y}, {x + 30, y}, {x + 30, y + 30}, {x, y + 30}};
    const auto shade = static_cast<std::uint32_t>(i) * 977;
    list.add(new DL::DLPolygon({shade & 0x00FFFFFF}, 4, corners));
  }
}

lumen::Picture draw(DL::DisplayList& list) {
  lumen::Picture picture(size, size);
  list.m_pRenderer = LM_Create<lumen::RasterDevice>(picture);
  list.m_pRootGroup->draw_bounded(list, list.m_visibleBounds, list.m_visibleBounds);
  // Until here the tree must not change, nor the picture be looked at.
  if (list.m_pMultithread != nullptr) list.m_pMultithread->WaitForAllThreads();
  return picture;
}

}  // namespace

int main() {
  DL::DisplayList list;
  list.m_rendition.set_clip_rectangle({0, size - 1, 0, size - 1});
  list.m_logicalBounds = {0, 0, 10'000, 10'000};
  list.set_screen_bounds({0, size - 1, size - 1, 0});
  add_tiles(list);
  const lumen::Picture alone = draw(list);

  const auto threads = std::make_unique<DL::DisplayListMultithread>(0);
  threads->m_pDisplayList = &list;
  list.m_pMultithread = threads.get();
  const lumen::Picture together = draw(list);
  list.m_pMultithread = nullptr;

  std::printf("%d threads draw %s picture\n", threads->m_cThreads,
              together == alone ? "the same" : "another");
  return together == alone ? 0 : 1;
}
