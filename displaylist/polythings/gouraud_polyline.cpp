#include "displaylist/core/array_p.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/copy_p.h"
#include "displaylist/polythings/draw_points_p.h"
#include "displaylist/polythings/polyline.h"

namespace DL {

void* DLGouraudPolyline::_parent_type = &DLPolyline::_parent_type;

DLGouraudPolyline::DLGouraudPolyline(LM_RGB32 color, std::int32_t n,
                                     const PointTemplate<long>* source,
                                     const LM_RGB32* source_colors, LumenHeap* heap)
    : DLPolyline(color, n, source, heap), colors(copy_array(source_colors, n, heap)) {
  if (colors == nullptr) discard_points();
}

DLGouraudPolyline::~DLGouraudPolyline() {
  LD_ReleaseMemory(colors);
}

void* DLGouraudPolyline::my_type() {
  return &_parent_type;
}

void* DLGouraudPolyline::type() const {
  return my_type();
}

void DLGouraudPolyline::draw_unclipped(DisplayList& list) {
  draw_gouraud(list, list.m_bRotationSecondary);
}

void DLGouraudPolyline::draw_clipped(DisplayList& list) {
  draw_gouraud(list, true);
}

void DLGouraudPolyline::draw_gouraud(DisplayList& list, bool clip) {
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  draw_points(*this, list, clip, actions.gouraud_polyline_unclipped,
              actions.gouraud_polyline_clipped, colors);
}

bool DLGouraudPolyline::remove(Search& search) {
  return search.type == DLGouraudPolyline::my_type() &&
         has_same_points(*static_cast<const Polything*>(search.prototype));
}

Drawable* DLGouraudPolyline::clone() {
  return with_color_of(
      *this, complete_or_null(new DLGouraudPolyline(m_colorData.m_color, count, points, colors)));
}

void DLGouraudPolyline::hide() {
  class_change::become<HiddenDrawable<DLGouraudPolyline>>(this);
}

void DLGouraudPolyline::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  dump_line::write_points(os, level, "GoraudPolyline", count, this);
  constexpr std::uint32_t object_bytes = 56;
  constexpr std::uint32_t vertex_bytes = 12;
  dump_line::count(statistics, vertex_bytes * static_cast<std::uint32_t>(count) + object_bytes);
}

void DLGouraudPolyline::serialize_out(ZtFsStream*, DisplayList&) {}

void DLGouraudPolyline::serialize_in(ZtFsStream*, DisplayList&) {}

}  // namespace DL
