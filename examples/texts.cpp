// A room with a table, which is a drawing of its own, in three sizes, and labels.

#include <cmath>
#include <cstdio>
#include <numbers>
#include <string>
#include <string_view>

#include "displaylist/displaylist.h"
#include "lumen/fonts.h"
#include "lumen/png_file.h"
#include "lumen/raster_device.h"

namespace {

constexpr LM_RGB32 wood{0x008A5A2B};
constexpr LM_RGB32 ink{0x00203040};

/// A table around (0, 0), in millimetres.
DL::DisplayList* new_table() {
  auto* table = new DL::DisplayList;
  const DL::PointTemplate<long> top[] = {{-800, -400}, {800, -400}, {800, 400}, {-800, 400}};
  table->add(new DL::DLPolygon({0x00E8D4B0}, 4, top));
  for (const int side : {-1, 1}) {
    for (const int place : {-400, 400}) {
      table->add(new DL::DLEllipse(wood, {place, side * 650}, 180, 180, 0.0F, table));
    }
  }
  return table;
}

void add_table(DL::DisplayList& room, DL::PointTemplate<double> place, double scale) {
  auto* nested = new DL::DrawableDisplayList(nullptr, new_table(), nullptr);
  nested->set_scale({scale, scale});
  nested->set_offset(place);
  room.add(nested);
}

/// Adds a text whose em square is `height` high, with bounds that hold it
/// however it is turned.
void add_label(DL::DisplayList& room, std::wstring_view text, DL::PointTemplate<double> start,
               double height, double rotation) {
  const LM_Font font(
      LM_Font_Description{.name = L"DejaVu Sans", .given = LM_Font_Description::NAME});
  const auto length = static_cast<int>(text.size());
  const lumen::TextMeasure measure = lumen::measure_text(font, text.data(), length);
  const auto reach = static_cast<int>(height * std::hypot(measure.advance, measure.ascent)) + 1;
  const auto x = static_cast<int>(start.x);
  const auto y = static_cast<int>(start.y);
  room.add(new DL::DLText(ink, font, start, text.data(), length, height, rotation,
                          {x - reach, y - reach, x + reach, y + reach}, &room, true));
}

}  // namespace

int main() {
  DL::DisplayList room;
  lumen::Picture picture(900, 600);
  const auto device = LM_Create<lumen::RasterDevice>(picture);
  device->set_antialiased(true);
  room.m_pRenderer = device;
  room.m_rendition.set_clip_rectangle({0, 899, 0, 599});
  room.m_logicalBounds = {0, 0, 9000, 6000};
  room.set_screen_bounds({0, 599, 899, 0});

  add_table(room, {2500, 3500}, 2.0);
  add_table(room, {5600, 3500}, 1.0);
  add_table(room, {7600, 3500}, 0.5);
  add_label(room, L"Three tables", {900, 5400}, 420, 0.0);
  add_label(room, L"one of them drawn at half its size", {900, 900}, 250, 0.0);
  add_label(room, L"6.00 m", {500, 2300}, 250, std::numbers::pi / 2);

  room.m_pRootGroup->draw_unclipped(room);
  const std::string problem = lumen::write_png(picture, "tables.png");
  if (!problem.empty()) std::fprintf(stderr, "%s\n", problem.c_str());
  return problem.empty() ? 0 : 1;
}
