// The floor plan that the demo draws.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "displaylist/displaylist.h"
#include "importers/loader.h"
#include "lumen/picture.h"
#include "lumen/raster_device.h"
#include "tests/pictures/golden.h"

namespace {

importers::Drawing house() {
  importers::Drawing drawing;
  importers::ReadOptions options;
  options.importer = "dxf";
  const std::string path = std::string(DISPLAYLIST_SOURCE_DIR) + "/examples/data/house.dxf";
  EXPECT_EQ(importers::read_drawing(path, options, drawing), "");
  return drawing;
}

lumen::Picture drawn(importers::Drawing& drawing, std::int32_t width, std::int32_t height) {
  lumen::Picture picture(width, height, {0x00FFFFFF});
  DL::DisplayList& list = *drawing.list;
  const auto device = LM_Create<lumen::RasterDevice>(picture);
  device->set_antialiased(true);
  list.m_pRenderer = device;
  const LM_Clip_Rectangle clip{0, width - 1, 0, height - 1};
  list.m_rendition.set_clip_rectangle(clip);
  for (const auto& rendition : drawing.renditions) rendition->set_clip_rectangle(clip);
  const std::int32_t half_width = 1110000000;  // with a margin
  const std::int32_t half_height = half_width / width * height;
  list.m_logicalBounds = {-half_width, -half_height, half_width, half_height};
  list.set_screen_bounds({0, height - 1, width - 1, 0});
  list.recompute_transform();
  list.m_pRootGroup->draw_unclipped(list);
  list.m_pRenderer = nullptr;
  return picture;
}

}  // namespace

TEST(House, LeavesOutTheLayerThatIsOff) {
  const importers::Drawing drawing = house();
  EXPECT_THAT(drawing.layers, testing::Not(testing::Contains("REVIEW")));
  EXPECT_THAT(drawing.layers, testing::IsSupersetOf({"WALLS", "FURNITURE", "DIMENSIONS", "ROOMS"}));
  EXPECT_EQ(drawing.remarks, "");
}

TEST(GoldenPicture, HouseOfBlocksAndTexts) {
  importers::Drawing drawing = house();
  ASSERT_NE(drawing.list, nullptr);
  expect_golden(drawn(drawing, 960, 540), "dxf-house", {.channel = 24, .pixels = 20});
}
