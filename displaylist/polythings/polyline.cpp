#include "displaylist/polythings/polyline.h"

#include <ostream>

#include "displaylist/core/coding.h"
#include "displaylist/core/device_buffer_p.h"
#include "displaylist/core/display_list.h"
#include "displaylist/core/transform_p.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/manifest.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/copy_p.h"
#include "displaylist/polythings/inside_p.h"
#include "displaylist/polythings/polyline_device_p.h"

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
  with_device_buffer<1>(count, [&](LM_DCI_Point* device) {
    InsideTest test(list.m_rendition.clip_rectangle());
    const std::int32_t kept = transform::distinct_with_rotation(list, points, count, device, test);
    polyline::draw_device(list, *rendition(list), device, kept, !clip && test.all_inside());
  });
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
