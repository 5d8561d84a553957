#include "displaylist/polythings/polytriangle.h"

#include "displaylist/core/coding.h"
#include "displaylist/core/device_buffer_p.h"
#include "displaylist/core/display_list.h"
#include "displaylist/core/transform_p.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/manifest.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/copy_p.h"

namespace DL {

namespace {

/// The outline as a closed loop of `count` + 1 points: the first point, the odd
/// ones forward, the even ones backward to the first again.
void collect_outline(const LM_DCI_Point* strip, std::int32_t count, LM_DCI_Point* loop) {
  loop[0] = strip[0];
  loop[1] = strip[1];
  for (std::int32_t i = count - 1; i >= 2; --i) {
    loop[i % 2 == 1 ? i / 2 + 1 : count - i / 2] = strip[i];
  }
  loop[count] = strip[0];
}

}  // namespace

void* DLPolytriangle::_parent_type = &DLPolytriangleWithNoBorder::_parent_type;

DLPolytriangle::DLPolytriangle(LM_RGB32 color, std::int32_t n, const PointTemplate<long>* source,
                               LumenHeap* heap)
    : DLPolytriangleWithNoBorder(color, n, source, heap) {}

void* DLPolytriangle::my_type() {
  return &_parent_type;
}

void* DLPolytriangle::type() const {
  return my_type();
}

void DLPolytriangle::draw_unclipped(DisplayList& list) {
  draw_clipped(list);
}

void DLPolytriangle::draw_clipped(DisplayList& list) {
  if (count < 1) return;
  with_device_buffer<0>(count, [&](LM_DCI_Point* device) {
    transform::all_with_rotation(list, points, count, device);
    LM_Rendition* rendition = this->rendition(list);
    list.m_pRenderer->actions.triangle_strip_clipped(rendition, count, device);
    const bool has_outline = rendition->edge_mode() == LM_EDGE_MODE_OUTLINE && count >= 3;
    if (has_outline) draw_outline(list, device);
  });
}

void DLPolytriangle::draw_outline(DisplayList& list, const LM_DCI_Point* device) {
  with_device_buffer<1>(count, [&](LM_DCI_Point* outline) {
    collect_outline(device, count, outline);
    LM_Rendition& changed = list.changeable(*rendition(list));
    const std::int32_t weight = changed.line_style().weight;
    changed.set_line_weight(1);
    list.m_pRenderer->actions.polyline_clipped(&changed, count + 1, outline);
    changed.set_line_weight(weight);
  });
}

bool DLPolytriangle::remove(Search& search) {
  return search.type == DLPolytriangle::my_type() &&
         has_same_points(*static_cast<const Polything*>(search.prototype));
}

Drawable* DLPolytriangle::clone() {
  return with_color_of(*this,
                       complete_or_null(new DLPolytriangle(m_colorData.m_color, count, points)));
}

void DLPolytriangle::hide() {
  class_change::become<HiddenDrawable<DLPolytriangle>>(this);
}

void DLPolytriangle::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  dump_line::write_points(os, level, "DLPolytriangle", count, this);
  count_memory(statistics);
}

void DLPolytriangle::serialize_out(ZtFsStream* stream, DisplayList& list) {
  coding::write(*stream, tag::kDLPolytriangle);
  DLPolytriangleWithNoBorder::serialize_out(stream, list);
}

void DLPolytriangle::serialize_in(ZtFsStream* stream, DisplayList& list) {
  // The parent's tag, whatever it is; without it there are no points either.
  std::uint32_t parent_tag = 0;
  static_cast<void>(coding::read(*stream, parent_tag));
  Polything::serialize_in(stream, list);
}

}  // namespace DL
