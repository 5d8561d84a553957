#include <cmath>
#include <cstdio>

#include "displaylist/displaylist.h"
#include "lumen/picture.h"
#include "lumen/png_file.h"
#include "lumen/raster_device.h"

int main() {
  DL::DisplayList list;
  for (int i = 0; i < 360; ++i) {  // logical coordinates: any 32-bit integers
    const double a = i * 0.0174533;
    const DL::PointTemplate<long> ray[] = {
        {static_cast<int>(20000 * std::cos(a)), static_cast<int>(20000 * std::sin(a))},
        {static_cast<int>(90000 * std::cos(7 * a)), static_cast<int>(90000 * std::sin(7 * a))}};
    list.add(new DL::DLPolyline({0x00204080U + static_cast<unsigned>(i)}, 2, ray));
  }

  lumen::Picture picture(800, 800, {0x00FFFFFF});
  const auto device = LM_Create<lumen::RasterDevice>(picture);
  device->set_antialiased(true);
  list.m_pRenderer = device;
  list.m_rendition.set_clip_rectangle({0, 799, 0, 799});  // min x, max x, min y, max y
  list.m_logicalBounds = {-100000, -100000, 100000, 100000};
  list.set_screen_bounds({0, 799, 799, 0});  // y grows upwards: minimum y is the last row

  list.m_pRootGroup->draw_unclipped(list);
  const std::string error = lumen::write_png(picture, "first_picture.png");
  if (!error.empty()) std::fprintf(stderr, "%s\n", error.c_str());
  return error.empty() ? 0 : 1;
}
