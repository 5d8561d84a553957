#include "displaylist/polythings/polyline.h"

#include <ostream>

#include "displaylist/core/coding_p.h"
#include "displaylist/core/device_buffer_p.h"
#include "displaylist/core/display_list.h"
#include "displaylist/core/transform_p.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/manifest.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/copy_p.h"
#include "displaylist/polythings/inside_p.h"
#include "displaylist/polythings/wide_dot_p.h"

namespace DL {

void* DLPolyline::_parent_type = &Polything::_parent_type;

DLPolyline::DLPolyline(LM_RGB32 color, std::int32_t n, const PointTemplate<long>* source,
                       LumenHeap* heap)
    : Polything(color, n, source, heap) {}

void* DLPolyline::my_type() {
  return &_parent_type;
}

void* DLPolyline::type() const {
  return my_type();
}

void DLPolyline::draw_unclipped(DisplayList& list) {
  draw(list, list.m_bRotationSecondary);
}

void DLPolyline::draw_clipped(DisplayList& list) {
  draw(list, true);
}

void DLPolyline::draw(DisplayList& list, bool clip) {
  if (count < 1) return;
  DeviceBuffer<1> buffer(count);
  LM_DCI_Point* device = buffer.points();
  const std::int32_t kept = transform::distinct_with_rotation(list, points, count, device);
  if (kept == 1) {
    draw_collapsed(list, device[0], clip);
    return;
  }
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  const bool inside = !clip && all_inside(list.m_rendition.clip_rectangle(), device, kept);
  (inside ? actions.polyline_unclipped : actions.polyline_clipped)(rendition(list), kept, device);
}

void DLPolyline::draw_collapsed(DisplayList& list, const LM_DCI_Point& point, bool clip) {
  LM_Rendition* rendition = this->rendition(list);
  const std::int32_t weight = rendition->line_style().weight;
  if (weight >= 2 && list.m_bWideDots) {
    draw_wide_dot(list, *rendition, point, weight);
    return;
  }
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  const bool inside = !clip && list.m_rendition.clip_rectangle().contains(point);
  (inside ? actions.dot_unclipped : actions.dot_clipped)(rendition, &point, nullptr);
}

bool DLPolyline::remove(Search& search) {
  return search.type == DLPolyline::my_type() &&
         has_same_points(*static_cast<const Polything*>(search.prototype));
}

Drawable* DLPolyline::clone() {
  return with_color_of(*this, complete_or_null(new DLPolyline(m_colorData.m_color, count, points)));
}

Drawable* DLPolyline::partial_clone(int first, int n) {
  return with_color_of(
      *this, complete_or_null(new DLPolyline(m_colorData.m_color, n + 1, points + first)));
}

void DLPolyline::hide() {
  class_change::become<HiddenDrawable<DLPolyline>>(this);
}

void DLPolyline::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  dump_line::indent(os, level);
  if (is_palettized()) {
    os << "Palettized DLPolyline: rendition = "
       << static_cast<const void*>(m_colorData.m_pRendition);
  } else {
    os << "DLPolyline: color = " << static_cast<std::int32_t>(m_colorData.m_color.word);
  }
  os << ", points = " << count;
  if (count > 0) {
    const PointTemplate<long>& first = points[0];
    const PointTemplate<long>& last = points[count - 1];
    os << ", (" << first.x << "," << first.y << ")x(" << last.x << "," << last.y << ")";
  }
  dump_line::end(os, this);
  count_memory(statistics);
}

void DLPolyline::serialize_out(ZtFsStream* stream, DisplayList& list) {
  coding::write(*stream, tag::kDLPolyline);
  Polything::serialize_out(stream, list);
}

}  // namespace DL
