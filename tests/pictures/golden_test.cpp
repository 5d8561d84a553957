// A few whole pictures, stored: what a person would see of it.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "displaylist/displaylist.h"
#include "lumen/raster_device.h"
#include "scenes/scene.h"
#include "tests/pictures/golden.h"

namespace {

using Point = DL::PointTemplate<long>;

/// A list seen through a picture, y upwards.
class Stage {
 public:
  Stage(int width, int height, const DL::BoundsTemplate<long>& window)
      : m_picture(width, height), m_device(LM_Create<lumen::RasterDevice>(m_picture)) {
    m_device->set_antialiased(true);
    list.m_pRenderer = m_device;
    list.m_rendition.set_clip_rectangle({0, width - 1, 0, height - 1});
    list.m_logicalBounds = window;
    list.set_screen_bounds({0, height - 1, width - 1, 0});
  }

  const lumen::Picture& draw() {
    list.m_pRootGroup->draw_unclipped(list);
    return m_picture;
  }

  DL::DisplayList list;

 private:
  lumen::Picture m_picture;
  LM_Handle<lumen::RasterDevice> m_device;
};

std::vector<Point> star(Point center, int radius, int corners, double inner) {
  std::vector<Point> points;
  for (int i = 0; i < 2 * corners; ++i) {
    const double r = i % 2 == 0 ? radius : radius * inner;
    const double angle = std::numbers::pi * i / corners;
    points.push_back({center.x + static_cast<int>(r * std::sin(angle)),
                      center.y + static_cast<int>(r * std::cos(angle))});
  }
  return points;
}

void add_polygon(DL::DisplayList& list, const std::vector<Point>& points, LM_RGB32 color) {
  list.add(new DL::DLPolygon(color, static_cast<int>(points.size()), points.data()));
}

}  // namespace

TEST(GoldenPicture, TransparentStarsOverEachOther) {
  Stage stage(240, 180, {0, 0, 2400, 1800});
  add_polygon(stage.list, star({900, 900}, 800, 5, 0.4), {0x00D04040});
  add_polygon(stage.list, star({1300, 1000}, 700, 7, 0.6), {0x804060C0});
  add_polygon(stage.list, star({1700, 700}, 600, 12, 0.8), {0xA030A050});
  expect_golden(stage.draw(), "stars", {});
}

TEST(GoldenPicture, LineWeightsPatternsAndEnds) {
  Stage stage(240, 180, {0, 0, 240, 180});
  std::array<LM_Rendition, 10> renditions;
  for (int i = 0; i < 10; ++i) {
    LM_Rendition& rendition = renditions.at(static_cast<std::size_t>(i));
    rendition.set_clip_rectangle({0, 239, 0, 179});
    rendition.set_color({0x00203060}, true);
    rendition.set_line_weight(i < 5 ? i + 1 : 5);
    rendition.set_line_pattern(i < 5 ? i : i % 2);
    rendition.set_end_styles(i < 5 ? LM_END_FLAT : i % 3);
    const Point zigzag[] = {
        {15, 170 - 17 * i}, {90, 155 - 17 * i}, {150, 172 - 17 * i}, {225, 160 - 17 * i}};
    stage.list.add(new DL::PalettizedDrawable<DL::DLPolyline>(&rendition, 4, zigzag));
  }
  expect_golden(stage.draw(), "lines", {});
}

TEST(GoldenPicture, WalksOfOneNeighbourhood) {
  const scenes::Polylines walks = scenes::find("coherent")->generate(5000, 1);
  constexpr int extent = 3 << 18;
  const Point center = walks.polyline(0).front();
  Stage stage(320, 240,
              {center.x - extent, center.y - extent, center.x + extent, center.y + extent});
  scenes::add_to(stage.list, walks);
  expect_golden(stage.draw(), "walks", {});
}
