#include "displaylist/polythings/polygon.h"

#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/copy_p.h"
#include "displaylist/polythings/draw_points_p.h"

namespace DL {

void* DLPolygon::_parent_type = &Polything::_parent_type;

DLPolygon::DLPolygon(LM_RGB32 color, std::int32_t n, const PointTemplate<long>* source,
                     LumenHeap* heap)
    : Polything(color, n, source, heap) {}

void* DLPolygon::my_type() {
  return &_parent_type;
}

void* DLPolygon::type() const {
  return my_type();
}

void DLPolygon::draw_unclipped(DisplayList& list) {
  draw(list, false);
}

void DLPolygon::draw_clipped(DisplayList& list) {
  draw(list, true);
}

void DLPolygon::draw(DisplayList& list, bool clip) {
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  draw_points(*this, list, clip, actions.polygon_unclipped, actions.polygon_clipped, 0);
}

bool DLPolygon::remove(Search& search) {
  if (search.type != DLPolygon::my_type()) return false;
  const auto* wanted = static_cast<const DLPolygon*>(search.prototype);
  return has_same_points(*wanted) && m_colorData == wanted->m_colorData;
}

Drawable* DLPolygon::clone() {
  return with_color_of(*this, complete_or_null(new DLPolygon(m_colorData.m_color, count, points)));
}

void DLPolygon::hide() {
  class_change::become<HiddenDrawable<DLPolygon>>(this);
}

int DLPolygon::get_vector_count() const {
  return count;
}

bool DLPolygon::get_vector(int index, VectorTemplate<long>& vector) const {
  vector = {points[index], points[index + 1 == count ? 0 : index + 1]};
  return true;
}

DrawableVectorIterator* DLPolygon::create_vector_iterator(bool flag) {
  return Drawable::create_vector_iterator(flag);
}

void DLPolygon::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  dump_line::write_points(os, level, "DLPolygon", count, this);
  count_memory(statistics);
}

void DLPolygon::serialize_out(ZtFsStream*, DisplayList&) {}

void DLPolygon::serialize_in(ZtFsStream*, DisplayList&) {}

}  // namespace DL
