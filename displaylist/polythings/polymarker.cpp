#include "displaylist/polythings/polymarker.h"

#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/copy_p.h"
#include "displaylist/polythings/draw_points_p.h"

namespace DL {

void* DLPolymarker::_parent_type = &Polything::_parent_type;

DLPolymarker::DLPolymarker(LM_RGB32 color, std::int32_t n, const PointTemplate<long>* source,
                           LumenHeap* heap)
    : Polything(color, n, source, heap) {}

void* DLPolymarker::my_type() {
  return &_parent_type;
}

void* DLPolymarker::type() const {
  return my_type();
}

void DLPolymarker::draw_unclipped(DisplayList& list) {
  draw(list, false);
}

void DLPolymarker::draw_clipped(DisplayList& list) {
  draw(list, true);
}

void DLPolymarker::draw(DisplayList& list, bool clip) {
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  draw_points(*this, list, clip, actions.marker_unclipped, actions.marker_clipped);
}

bool DLPolymarker::remove(Search& search) {
  if (search.type != DLPolymarker::my_type()) return false;
  const auto* wanted = static_cast<const DLPolymarker*>(search.prototype);
  return has_same_points(*wanted) && m_colorData == wanted->m_colorData;
}

Drawable* DLPolymarker::clone() {
  return with_color_of(*this,
                       complete_or_null(new DLPolymarker(m_colorData.m_color, count, points)));
}

void DLPolymarker::hide() {
  class_change::become<HiddenDrawable<DLPolymarker>>(this);
}

void DLPolymarker::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  dump_line::write_points(os, level, "DLPolymarker", count, this);
  count_memory(statistics);
}

void DLPolymarker::serialize_out(ZtFsStream*, DisplayList&) {}

void DLPolymarker::serialize_in(ZtFsStream*, DisplayList&) {}

}  // namespace DL
