#include "displaylist/polythings/polysegment.h"

#include "displaylist/core/coding.h"
#include "displaylist/core/display_list.h"
#include "displaylist/core/transform_p.h"
#include "displaylist/core/wrapping_p.h"
#include "displaylist/drawables/manifest.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/copy_p.h"
#include "displaylist/polythings/inside_p.h"
#include "displaylist/polythings/wide_dot_p.h"

namespace DL {

namespace {

/// What is the same for every segment of one draw.
struct SegmentPen {
  DisplayList& list;
  const LM_Device_Actions& actions;
  LM_Rendition* rendition;
  LM_Clip_Rectangle clip_rectangle;
  std::int32_t weight;
  bool wide_dots;
  bool clip;

  void draw_line(const LM_DCI_Point* ends) const {
    const bool inside = !clip && all_inside(clip_rectangle, ends, 2);
    (inside ? actions.polyline_unclipped : actions.polyline_clipped)(rendition, 2, ends);
  }

  /// A segment without length. The dot is not tested against the clip rectangle.
  void draw_collapsed(const LM_DCI_Point& point) const {
    if (wide_dots && weight >= 2) {
      draw_wide_dot(list, *rendition, point, weight);
    } else if (weight > 2) {
      draw_disc(point);
    } else {
      (clip ? actions.dot_clipped : actions.dot_unclipped)(rendition, &point, nullptr);
    }
  }

  void draw_disc(const LM_DCI_Point& center) const {
    constexpr double whole_turn = 6.2831854820251465;  // 2 pi in single precision
    const std::int32_t radius = (weight - 1) / 2;
    const LM_DCI_Point radii{radius, radius, 0};
    actions.elliptical_area(rendition, &center, &radii, 0.0, whole_turn, 0.0, nullptr);
  }
};

}  // namespace

void* DLPolysegment::_parent_type = &Polything::_parent_type;

DLPolysegment::DLPolysegment(LM_RGB32 color, std::int32_t n, const PointTemplate<long>* source,
                             LumenHeap* heap)
    : Polything(color, n, source, heap) {}

void* DLPolysegment::my_type() {
  return &_parent_type;
}

void* DLPolysegment::type() const {
  return my_type();
}

void DLPolysegment::draw_unclipped(DisplayList& list) {
  draw(list, false);
}

void DLPolysegment::draw_clipped(DisplayList& list) {
  draw(list, true);
}

void DLPolysegment::draw(DisplayList& list, bool clip) {
  if (count < 2) return;
  LM_Rendition* rendition = this->rendition(list);
  const SegmentPen pen{list,
                       list.m_pRenderer->actions,
                       rendition,
                       list.m_rendition.clip_rectangle(),
                       rendition->line_style().weight,
                       list.m_bWideDots,
                       clip};
  for (std::int32_t i = 0; i + 1 < count; i += 2) {
    const LM_DCI_Point ends[2] = {transform::with_rotation(list, points[i]),
                                  transform::with_rotation(list, points[i + 1])};
    if (ends[0] == ends[1]) {
      pen.draw_collapsed(ends[0]);
    } else {
      pen.draw_line(ends);
    }
  }
}

bool DLPolysegment::remove(Search&) {
  return true;
}

Drawable* DLPolysegment::clone() {
  return with_color_of(*this,
                       complete_or_null(new DLPolysegment(m_colorData.m_color, count, points)));
}

Drawable* DLPolysegment::partial_clone(int first, int n) {
  return with_color_of(
      *this, complete_or_null(new DLPolysegment(m_colorData.m_color, wrapping_multiply(2, n),
                                                points + std::ptrdiff_t{2} * first)));
}

void DLPolysegment::hide() {
  class_change::become<HiddenDrawable<DLPolysegment>>(this);
}

int DLPolysegment::get_vector_count() const {
  return count / 2;
}

bool DLPolysegment::get_vector(int index, VectorTemplate<long>& vector) const {
  const PointTemplate<long>* from = points + std::ptrdiff_t{2} * index;
  vector = {from[0], from[1]};
  return true;
}

void DLPolysegment::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  dump_colored(os, level, "DLPolysegment", statistics);
}

void DLPolysegment::serialize_out(ZtFsStream* stream, DisplayList& list) {
  coding::write(*stream, tag::kDLPolysegment);
  Polything::serialize_out(stream, list);
}

}  // namespace DL
