// Whole drawings look the same whoever draws them.

#include <gtest/gtest.h>

#include "lumen/picture_image.h"
#include "lumen/raster_device.h"
#include "scenes/gallery.h"
#include "scenes/scene.h"

namespace {

constexpr int kAllWorkers[] = {-1, 1, 2, 3, 4};
constexpr LM_RGB32 kPaper{0x00FFFFFF};

/// Draws a list with so many workers over what is there.
void draw(DL::DisplayList& list, int workers) {
  DL::DisplayListMultithread threads(workers);
  threads.m_pDisplayList = &list;
  list.m_pMultithread = &threads;
  list.m_pRootGroup->draw_unclipped(list);
  threads.WaitForAllThreads();
  list.m_pMultithread = nullptr;
}

TEST(OrderedPictures, OfTheGalleryAreTheSameForAnyNumberOfThreads) {
  const auto image = LM_Create<lumen::PictureImage>(lumen::Picture(40, 30, {0x20AA6622}));
  const auto sheet = scenes::make_gallery(image);
  for (const bool antialiased : {false, true}) {
    lumen::Picture picture(scenes::kGalleryWidth, scenes::kGalleryHeight, kPaper);
    const auto device = LM_Create<lumen::RasterDevice>(picture);
    device->set_antialiased(antialiased);
    sheet->draw(device, picture.width(), picture.height());
    for (const auto& layer : sheet->layers()) layer->m_pRootGroup->close();
    const lumen::Picture expected = picture;
    for (const int workers : kAllWorkers) {
      picture.clear(kPaper);
      for (const auto& layer : sheet->layers()) draw(*layer, workers);
      EXPECT_TRUE(picture == expected) << workers << " workers, antialiased " << antialiased;
    }
  }
}

TEST(OrderedPictures, OfEverySceneAreTheSameForAnyNumberOfThreads) {
  constexpr std::int64_t half = scenes::kExtent * 5 / 4;
  for (const scenes::Scene& scene : scenes::all()) {
    DL::DisplayList list;
    scenes::add_to(list, scene, 6'000, 3);
    lumen::Picture picture(400, 300, kPaper);
    list.m_pRenderer = LM_Create<lumen::RasterDevice>(picture);
    list.m_rendition.set_clip_rectangle({0, 399, 0, 299});
    list.m_logicalBounds = {-half, -half, half, half};
    list.set_screen_bounds({0, 299, 399, 0});
    draw(list, -1);
    const lumen::Picture expected = picture;
    for (const int workers : kAllWorkers) {
      picture.clear(kPaper);
      draw(list, workers);
      EXPECT_TRUE(picture == expected) << scene.name << ", " << workers << " workers";
    }
  }
}

}  // namespace
