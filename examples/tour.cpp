// What a viewer does all day: hide and show, share a rendition, stop a redraw,
// draw through a renderer of its own.

#include <cassert>
#include <cstdio>

#include "displaylist/displaylist.h"

namespace {

/// A renderer is a table of device actions; the ones left alone do nothing.
struct CountingRenderer : LM_Renderer {
  CountingRenderer() {
    actions.polyline_unclipped = {this, &count};
    actions.polyline_clipped = {this, &count};
  }
  static void count(void* self, LM_Rendition* rendition, std::int32_t points,
                    const LM_DCI_Point* device) {
    CountingRenderer& renderer = *static_cast<CountingRenderer*>(self);
    renderer.lines += 1;
    renderer.last_weight = rendition->line_style().weight;
    std::printf("%d points from (%d,%d)\n", points, device[0].x, device[0].y);
  }
  int lines = 0;
  int last_weight = 0;
};

/// Asked every so many visits; false stops the redraw.
bool goes_on(void* visits_left, DL::DisplayList*) {
  return --*static_cast<int*>(visits_left) > 0;
}

}  // namespace

int main() {
  DL::DisplayList list;
  const auto renderer = LM_Create<CountingRenderer>();
  list.m_pRenderer = renderer;
  list.m_rendition.set_clip_rectangle({0, 99, 0, 99});
  list.m_logicalBounds = {0, 0, 99, 99};
  list.set_screen_bounds({0, 0, 99, 99});

  // A drawable with a colour of its own, and one that shares a rendition with
  // others: change the rendition, and all of them change.
  const DL::PointTemplate<long> points[] = {{10, 10}, {90, 20}, {50, 80}};
  DL::Drawable* red = new DL::DLPolyline({0x00FF0000}, 3, points);
  LM_Rendition thick;
  thick.set_clip_rectangle({0, 99, 0, 99});
  thick.set_line_weight(4);
  list.add(red);
  list.add(new DL::PalettizedDrawable<DL::DLPolyline>(&thick, 3, points));

  list.m_pRootGroup->draw_unclipped(list);
  assert(renderer->lines == 2 && renderer->last_weight == 4);

  // A hidden drawable keeps its place in the drawing order.
  red->hide();
  list.m_pRootGroup->draw_unclipped(list);
  assert(renderer->lines == 3);
  red->unhide();

  // The interruptible forms tell whether they came to the end.
  int visits_left = 100;
  list.m_pfnInterrupt = &goes_on;
  list.m_pInterruptContext = &visits_left;
  const DL::BoundsTemplate<long> window{0, 0, 99, 99};
  const bool complete = list.m_pRootGroup->draw_bounded_interrupt(list, window, window);
  std::printf("%s, %d lines in all\n", complete ? "complete" : "stopped", renderer->lines);
  return complete && renderer->lines == 5 ? 0 : 1;
}
