#include "displaylist/drawables/polydot.h"

#include "displaylist/core/coding.h"
#include "displaylist/core/device_buffer_p.h"
#include "displaylist/core/display_list.h"
#include "displaylist/core/transform_p.h"
#include "displaylist/drawables/manifest.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/wide_dot_p.h"

namespace DL {

namespace {

void draw_stroke(const LM_Points_Action& polyline, LM_Rendition& rendition,
                 const LM_DCI_Point& point, std::int32_t weight) {
  const std::array<LM_DCI_Point, 2> stroke = wide_dot_stroke(point, weight);
  const std::int32_t pattern = rendition.line_style().pattern;
  rendition.set_line_pattern(LM_PATTERN_SOLID);
  polyline(&rendition, 2, stroke.data());
  rendition.set_line_pattern(pattern);
}

}  // namespace

void* DLPolydot::_parent_type = &Polything::_parent_type;

DLPolydot::DLPolydot(LM_RGB32 color, std::int32_t n, const PointTemplate<long>* source,
                     LumenHeap* heap)
    : Polything(color, n, source, heap) {}

void* DLPolydot::my_type() {
  return &_parent_type;
}

void* DLPolydot::type() const {
  return my_type();
}

void DLPolydot::draw_unclipped(DisplayList& list) {
  draw(list, false);
}

void DLPolydot::draw_clipped(DisplayList& list) {
  draw(list, true);
}

void DLPolydot::draw(DisplayList& list, bool clip) {
  if (count <= kPointsWithoutAllocation) {
    LM_DCI_Point device[kPointsWithoutAllocation + 1];
    if (count > 0) draw_device_points(list, clip, device);
    return;
  }
  void* memory =
      Drawable::operator new((static_cast<std::size_t>(count) + 1) * sizeof(LM_DCI_Point));
  if (memory == nullptr) return;
  draw_device_points(list, clip, static_cast<LM_DCI_Point*>(memory));
  Drawable::operator delete(memory);
}

void DLPolydot::draw_device_points(DisplayList& list, bool clip, LM_DCI_Point* device) {
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  const std::int32_t kept = transform::distinct_with_rotation(list, points, count, device);
  LM_Rendition* rendition = this->rendition(list);
  const std::int32_t weight = rendition->line_style().weight;
  if (list.m_bWideDots && weight > 1) {
    LM_Rendition& changed = list.changeable(*rendition);
    for (std::int32_t i = kept; i-- > 0;) {
      draw_stroke(actions.polyline_clipped, changed, device[i], weight);
    }
    return;
  }
  const LM_Clip_Rectangle inside = list.m_rendition.clip_rectangle();
  for (std::int32_t i = kept; i-- > 0;) {
    const bool unclipped = !clip && inside.contains(device[i]);
    (unclipped ? actions.dot_unclipped : actions.dot_clipped)(rendition, &device[i], nullptr);
  }
}

bool DLPolydot::remove(Search&) {
  return true;
}

Drawable* DLPolydot::clone() {
  return DLPolydot::partial_clone(0, count);
}

Drawable* DLPolydot::partial_clone(int first, int n) {
  return complete_or_null(new DLPolydot(m_colorData.m_color, n, points + first));
}

void DLPolydot::hide() {
  class_change::become<HiddenDrawable<DLPolydot>>(this);
}

int DLPolydot::get_vector_count() const {
  return count;
}

bool DLPolydot::get_vector(int index, VectorTemplate<long>& vector) const {
  vector = {points[index], points[index]};
  return true;
}

void DLPolydot::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  dump_colored(os, level, "DLPolydot", statistics);
}

void DLPolydot::serialize_out(ZtFsStream* stream, DisplayList& list) {
  coding::write(*stream, tag::kDLPolydot);
  Polything::serialize_out(stream, list);
}

}  // namespace DL
