#include "displaylist/displaylist.h"
#include "lumen/png_file.h"
#include "lumen/raster_device.h"

int main() {
  DL::DisplayList list;
  for (int i = 0; i <= 60; ++i) {  // logical coordinates: any 32-bit integers
    const DL::PointTemplate<long> square[] = {{i, 0}, {60, i}, {60 - i, 60}, {0, 60 - i}, {i, 0}};
    list.add(new DL::DLPolyline({0x00204080}, 5, square));  // the list owns it now
  }
  lumen::Picture picture(600, 600);
  const auto device = LM_Create<lumen::RasterDevice>(picture);
  device->set_antialiased(true);
  list.m_pRenderer = device;
  list.m_rendition.set_clip_rectangle({0, 599, 0, 599});  // min x, max x, min y, max y
  list.m_logicalBounds = {-2, -2, 62, 62};
  list.set_screen_bounds({0, 599, 599, 0});  // y grows upwards: minimum y is the last row
  list.m_pRootGroup->draw_unclipped(list);
  return lumen::write_png(picture, "first_picture.png").empty() ? 0 : 1;
}
