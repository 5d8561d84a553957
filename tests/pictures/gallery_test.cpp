// The sheets that the demo draws.

#include "scenes/gallery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string_view>
#include <vector>

#include "displaylist/displaylist.h"
#include "lumen/picture_image.h"
#include "lumen/png_file.h"
#include "lumen/raster_device.h"
#include "lumen/recorder.h"
#include "scenes/chart.h"
#include "tests/pictures/golden.h"
#include "tests/support/tree_walk.h"

namespace {

LM_Handle<LM_Image> compass() {
  const std::string path = std::string(DISPLAYLIST_SOURCE_DIR) + "/examples/data/compass.png";
  return LM_Create<lumen::PictureImage>(lumen::read_png(path));
}

lumen::Picture drawn(scenes::Sheet& sheet, std::int32_t width, std::int32_t height) {
  lumen::Picture picture(width, height);
  const auto device = LM_Create<lumen::RasterDevice>(picture);
  device->set_antialiased(true);
  sheet.draw(device, width, height);
  return picture;
}

}  // namespace

TEST(Gallery, HasEveryClassOfTheLibraryOnce) {
  std::vector<std::string_view> classes;
#define DL_NAME(Class) classes.emplace_back(#Class);
  DL_PALETTIZED_CLASSES(DL_NAME)
  DL_PLAIN_ONLY_CLASSES(DL_NAME)
#undef DL_NAME
  EXPECT_THAT(scenes::gallery_classes(), testing::UnorderedElementsAreArray(classes));
}

TEST(Gallery, CallsEveryKindOfDeviceAction) {
  const auto recorder = LM_Create<lumen::Recorder>();
  scenes::make_gallery(compass())->draw(recorder, scenes::kGalleryWidth, scenes::kGalleryHeight);
  for (const char* kind :
       {"dot_unclipped", "dot_clipped", "polyline_unclipped", "polyline_clipped",
        "gouraud_polyline_unclipped", "gouraud_polyline_clipped", "polygon_unclipped",
        "polygon_clipped", "triangle_strip_unclipped", "triangle_strip_clipped",
        "gouraud_triangle_strip_clipped", "textured_triangle_strip_unclipped",
        "textured_triangle_strip_clipped", "marker_unclipped", "marker_clipped", "image_unclipped",
        "image_clipped", "elliptical_arc", "elliptical_arc_colored"}) {
    EXPECT_THAT(recorder->calls(),
                testing::Contains(testing::Field(&lumen::RecordedCall::action, kind)));
  }
}

TEST(Gallery, KeepsWhatWorkerThreadsMayNotDrawOffThem) {
  const std::unique_ptr<scenes::Sheet> sheet = scenes::make_gallery(compass());
  std::size_t count = 0;
  for (const auto& layer : sheet->layers()) {
    for (const DL::Group* leaf : leaves_of(*layer)) {
      for (const DL::Drawable* d = leaf->m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
        if (scenes::add_flags(*d) == 0) continue;
        EXPECT_NE(leaf->m_flags & 1, 0U);
        ++count;
      }
    }
  }
  EXPECT_GE(count, 4U + 3U) << "palettized texts and nested lists";
}

TEST(GoldenPicture, GalleryOfAllClasses) {
  const auto sheet = scenes::make_gallery(compass());
  expect_golden(drawn(*sheet, scenes::kGalleryWidth, scenes::kGalleryHeight), "gallery",
                {.channel = 24, .pixels = 20});
}

TEST(GoldenPicture, ChartOfPolydotsAndMarkers) {
  const auto sheet = scenes::make_chart(2000, 1);
  expect_golden(drawn(*sheet, scenes::kChartWidth / 4, scenes::kChartHeight / 4), "chart",
                {.channel = 24, .pixels = 20});
}
