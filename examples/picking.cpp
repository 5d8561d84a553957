// Finds what is under the cursor, by what can be seen there.

#include <cstdio>
#include <utility>

#include "displaylist/displaylist.h"
#include "lumen/selector_device.h"

namespace {

constexpr int tolerance = 2;     // pixels around the cursor
constexpr int widest_line = 10;  // of the drawing, in pixels

/// The topmost drawable near a device pixel, or null.
const DL::Drawable* drawable_at(DL::DisplayList& list, lumen::SelectorDevice& selector, int x,
                                int y) {
  selector.set_pick_box({x - tolerance, x + tolerance, y - tolerance, y + tolerance});

  // Groups know their points, not how wide lines are: look at some more.
  constexpr int reach = tolerance + widest_line;
  DL::BoundsTemplate<long> region;
  for (const int side : {-reach, reach}) {
    DL::PointTemplate<long> corner;
    list.transform_point(DL::PointTemplate<int>{x + side, y + side}, corner);
    region.widen(corner);
  }

  auto screen = std::exchange(list.m_pRenderer, LM_Handle<LM_Renderer>(&selector));
  list.m_pRootGroup->draw_bounded_selection(list, region, region);
  list.m_pRenderer = std::move(screen);

  // Hits come in drawing order: the last one is on top.
  if (!selector.touched()) return nullptr;
  return static_cast<const DL::Drawable*>(selector.hits().back().key);
}

}  // namespace

int main() {
  DL::DisplayList list;
  list.m_rendition.set_clip_rectangle({0, 399, 0, 399});
  list.m_rendition.set_selector_data(LM_Create<LM_Selector_Data>());
  list.m_logicalBounds = {0, 0, 40000, 40000};
  list.set_screen_bounds({0, 399, 399, 0});

  // The copy shares the selector data; without it, what is drawn with a
  // rendition of its own would be hit without a name.
  LM_Rendition wide = list.m_rendition;
  wide.set_line_weight(widest_line);

  const DL::PointTemplate<long> corners[] = {{5000, 5000}, {35000, 5000}, {20000, 35000}};
  const DL::PointTemplate<long> ends[] = {{0, 20000}, {40000, 20000}};
  DL::Drawable* field = new DL::DLPolygon({0x00C8E0B0}, 3, corners);
  DL::Drawable* road = new DL::PalettizedDrawable<DL::DLPolyline>(&wide, 2, ends);
  list.add(field);
  list.add(road);

  const auto selector = LM_Create<lumen::SelectorDevice>();
  const auto found = [&](int x, int y) {
    const DL::Drawable* drawable = drawable_at(list, *selector, x, y);
    std::printf("(%d,%d): %s\n", x, y,
                drawable == road    ? "road"
                : drawable == field ? "field"
                                    : "nothing");
    return drawable;
  };
  const bool as_seen = found(200, 300) == field && found(200, 204) == road &&
                       found(20, 195) == road && found(20, 300) == nullptr;
  return as_seen ? 0 : 1;
}
