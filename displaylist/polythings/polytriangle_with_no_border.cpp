#include "displaylist/core/coding.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/manifest.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/copy_p.h"
#include "displaylist/polythings/draw_points_p.h"
#include "displaylist/polythings/polytriangle.h"

namespace DL {

namespace {

/// The strip's point at place `place` of its outline, of `count` points.
std::int32_t outline_point(std::int32_t place, std::int32_t count) {
  const std::int32_t even_points = count / 2 + count % 2;
  return place < even_points ? 2 * place : 2 * (count - place) - 1;
}

}  // namespace

void* DLPolytriangleWithNoBorder::_parent_type = &Polything::_parent_type;

DLPolytriangleWithNoBorder::DLPolytriangleWithNoBorder(LM_RGB32 color, std::int32_t n,
                                                       const PointTemplate<long>* source,
                                                       LumenHeap* heap)
    : Polything(color, n, source, heap) {}

void* DLPolytriangleWithNoBorder::my_type() {
  return &_parent_type;
}

void* DLPolytriangleWithNoBorder::type() const {
  return my_type();
}

void DLPolytriangleWithNoBorder::draw_unclipped(DisplayList& list) {
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  draw_points(*this, list, false, actions.triangle_strip_unclipped, actions.triangle_strip_clipped);
}

void DLPolytriangleWithNoBorder::draw_clipped(DisplayList& list) {
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  draw_points(*this, list, true, actions.triangle_strip_unclipped, actions.triangle_strip_clipped);
}

bool DLPolytriangleWithNoBorder::remove(Search& search) {
  return search.type == DLPolytriangleWithNoBorder::my_type() &&
         has_same_points(*static_cast<const Polything*>(search.prototype));
}

Drawable* DLPolytriangleWithNoBorder::clone() {
  return with_color_of(
      *this, complete_or_null(new DLPolytriangleWithNoBorder(m_colorData.m_color, count, points)));
}

void DLPolytriangleWithNoBorder::hide() {
  class_change::become<HiddenDrawable<DLPolytriangleWithNoBorder>>(this);
}

int DLPolytriangleWithNoBorder::get_vector_count() const {
  return count;
}

bool DLPolytriangleWithNoBorder::get_vector(int index, VectorTemplate<long>& vector) const {
  const std::int32_t next = index + 1 == count ? 0 : index + 1;
  vector = {points[outline_point(index, count)], points[outline_point(next, count)]};
  return true;
}

DrawableVectorIterator* DLPolytriangleWithNoBorder::create_vector_iterator(bool flag) {
  return Drawable::create_vector_iterator(flag);
}

void DLPolytriangleWithNoBorder::dump(std::ostream& os, int level,
                                      DisplayListDebug& statistics) const {
  dump_line::write_points(os, level, "DLPolytriangleWithNoBorder", count, this);
  count_memory(statistics);
}

void DLPolytriangleWithNoBorder::serialize_out(ZtFsStream* stream, DisplayList& list) {
  coding::write(*stream, tag::kDLPolytriangleWithNoBorder);
  Polything::serialize_out(stream, list);
}

}  // namespace DL
