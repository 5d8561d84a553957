#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>

#include "displaylist/displaylist.h"
#include "lumen/raster_device.h"
#include "tests/support/hand_made_tree.h"
#include "tests/support/scribble.h"

/// Lists of scribbles, drawn by any number of threads.
namespace scribbled {

using DL::DisplayListMultithread;

inline constexpr LM_RGB32 kPaper{0x00FFFFFF};
inline constexpr int kAllWorkers[] = {-1, 1, 2, 3, 4};
inline constexpr DL::BoundsTemplate<long> kBox{0, 0, 100, 100};

/// What the root's leaves are: closed groups for workers, for the calling thread,
/// for the first worker, and so on.
using FlagsOf = std::uint32_t (*)(int leaf);

inline std::uint32_t for_workers(int) {
  return 0;
}
inline std::uint32_t mixed(int leaf) {
  return static_cast<std::uint32_t>(leaf * 7 / 3) & 3;
}

/// Scribbles in closed leaves, drawn into a picture.
struct Page {
  explicit Page(int leaves, unsigned seed = 1, FlagsOf flags = &for_workers) {
    list.m_pRenderer = device;
    list.m_rendition.set_clip_rectangle({3, Scribble::width - 4, 2, Scribble::height - 6});
    hand_made::plant(list, hand_made::inner(0, kBox, 0, {}));
    for (int i = 0; i < leaves; ++i) {
      const unsigned first = seed * 100'000 + static_cast<unsigned>(i) * 3;
      add_leaf({new Scribble(material, first), new Scribble(material, first + 1),
                new Scribble(material, first + 2)},
               flags(i));
    }
  }

  void add_leaf(std::initializer_list<DL::Drawable*> drawables, std::uint32_t flags) {
    DL::Group* leaf = hand_made::leaf(1, kBox, flags, drawables);
    list.m_pRootGroup->append_child(leaf);
    leaf->m_pParent = list.m_pRootGroup;
  }

  /// The picture of what `draw` draws with these workers.
  template <class Draw>
  lumen::Picture drawn(int workers, const Draw& draw) {
    picture.clear(kPaper);
    DisplayListMultithread threads(workers);
    threads.m_pDisplayList = &list;
    list.m_pMultithread = &threads;
    draw(threads);
    threads.WaitForAllThreads();
    list.m_pMultithread = nullptr;
    EXPECT_EQ(list.m_pRenderer, device);
    return picture;
  }
  lumen::Picture drawn(int workers) {
    return drawn(workers, [this](auto&) { list.m_pRootGroup->draw_unclipped(list); });
  }

  Scribble::Material material = Scribble::make_material();
  lumen::Picture picture{Scribble::width, Scribble::height};
  LM_Handle<lumen::RasterDevice> device = LM_Create<lumen::RasterDevice>(picture);
  DL::DisplayList list;
};

/// Whether the pictures of all numbers of workers are that of none.
template <class Draw>
void expect_one_picture(Page& page, const Draw& draw) {
  const lumen::Picture expected = page.drawn(-1, draw);
  EXPECT_FALSE(expected == lumen::Picture(Scribble::width, Scribble::height, kPaper));
  for (const int workers : kAllWorkers) {
    ASSERT_TRUE(page.drawn(workers, draw) == expected) << workers << " workers";
  }
}
inline void expect_one_picture(Page& page) {
  expect_one_picture(page, [&page](auto&) { page.list.m_pRootGroup->draw_unclipped(page.list); });
}

}  // namespace scribbled
