#include <gtest/gtest.h>

#include "lumen/raster_device.h"

namespace {

TEST(RasterDevice, DrawsEveryAction) {
  lumen::Picture picture(1, 1);
  const lumen::RasterDevice device(picture);
#define EXPECT_DRAWN(name, type) EXPECT_EQ(device.actions.name.context, &device) << #name;
  LM_DEVICE_ACTIONS(EXPECT_DRAWN)
#undef EXPECT_DRAWN
}

}  // namespace
