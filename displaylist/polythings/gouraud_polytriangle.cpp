#include "displaylist/polythings/gouraud_polytriangle.h"

#include "displaylist/core/array_p.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/copy_p.h"
#include "displaylist/polythings/draw_points_p.h"

namespace DL {

void* DLGouraudPolytriangle::_parent_type = &DLPolytriangle::_parent_type;

DLGouraudPolytriangle::DLGouraudPolytriangle(LM_RGB32 color, std::int32_t n,
                                             const PointTemplate<long>* source,
                                             const LM_RGB32* source_colors, LumenHeap* heap)
    : DLPolytriangle(color, n, source, heap), colors(copy_array(source_colors, count, heap)) {
  if (colors == nullptr) discard_points();
}

DLGouraudPolytriangle::~DLGouraudPolytriangle() {
  LD_ReleaseMemory(colors);
}

void* DLGouraudPolytriangle::my_type() {
  return &_parent_type;
}

void* DLGouraudPolytriangle::type() const {
  return my_type();
}

void DLGouraudPolytriangle::draw_clipped(DisplayList& list) {
  const LM_Colored_Points_Action& fill = list.m_pRenderer->actions.gouraud_triangle_strip_clipped;
  draw_points(*this, list, true, fill, fill, colors);
}

bool DLGouraudPolytriangle::remove(Search& search) {
  return search.type == DLGouraudPolytriangle::my_type() &&
         has_same_points(*static_cast<const Polything*>(search.prototype));
}

Drawable* DLGouraudPolytriangle::clone() {
  return with_color_of(*this, complete_or_null(new DLGouraudPolytriangle(m_colorData.m_color, count,
                                                                         points, colors)));
}

void DLGouraudPolytriangle::hide() {
  class_change::become<HiddenDrawable<DLGouraudPolytriangle>>(this);
}

void DLGouraudPolytriangle::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  constexpr std::uint32_t object_bytes = 56;
  constexpr std::uint32_t vertex_bytes = 12;
  dump_line::write_points(os, level, "GouraudPolytriange", count, this);
  dump_line::count(statistics, vertex_bytes * static_cast<std::uint32_t>(count) + object_bytes);
}

void DLGouraudPolytriangle::serialize_out(ZtFsStream*, DisplayList&) {}

void DLGouraudPolytriangle::serialize_in(ZtFsStream*, DisplayList&) {}

}  // namespace DL
