#include "displaylist/polythings/row_of_dots.h"

#include "displaylist/core/display_list.h"
#include "displaylist/core/transform_p.h"
#include "displaylist/core/wrapping_p.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/copy_p.h"

namespace DL {

void* DLRowOfDots::_parent_type = nullptr;

DLRowOfDots::DLRowOfDots(LM_RGB32 color, PointTemplate<long> first, PointTemplate<long> offset,
                         std::int32_t n)
    : Drawable(color), origin(first), step(offset), dot_count(n) {}

void* DLRowOfDots::my_type() {
  return &_parent_type;
}

void* DLRowOfDots::type() const {
  return my_type();
}

void DLRowOfDots::draw_unclipped(DisplayList& list) {
  draw(list, false);
}

void DLRowOfDots::draw_clipped(DisplayList& list) {
  draw(list, true);
}

void DLRowOfDots::draw(DisplayList& list, bool clip) {
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  PointTemplate<long> dot = origin;
  for (std::int32_t i = 0; i < dot_count; ++i) {
    const LM_DCI_Point device = transform::point(list, dot);
    const bool inside = !clip && list.m_rendition.clip_rectangle().contains(device);
    (inside ? actions.dot_unclipped : actions.dot_clipped)(rendition(list), &device, nullptr);
    dot = {wrapping_add(dot.x, step.x), wrapping_add(dot.y, step.y)};
  }
}

void DLRowOfDots::add_bounds(BoundsTemplate<long>& bounds) const {
  if (dot_count < 1) return;
  bounds.widen(origin);
  const std::int32_t steps = dot_count - 1;
  bounds.widen({wrapping_add(origin.x, wrapping_multiply(step.x, steps)),
                wrapping_add(origin.y, wrapping_multiply(step.y, steps))});
}

bool DLRowOfDots::remove(Search& search) {
  if (search.type != DLRowOfDots::my_type()) return false;
  const auto* wanted = static_cast<const DLRowOfDots*>(search.prototype);
  return dot_count == wanted->dot_count && origin == wanted->origin && step == wanted->step;
}

Drawable* DLRowOfDots::clone() {
  return with_color_of(*this, new DLRowOfDots(m_colorData.m_color, origin, step, dot_count));
}

void DLRowOfDots::hide() {
  class_change::become<HiddenDrawable<DLRowOfDots>>(this);
}

void DLRowOfDots::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  constexpr std::uint32_t object_bytes = 56;
  dump_line::write(os, level, "DLRowOfDots", this);
  dump_line::count(statistics, object_bytes);
}

void DLRowOfDots::serialize_out(ZtFsStream*, DisplayList&) {}

void DLRowOfDots::serialize_in(ZtFsStream*, DisplayList&) {}

}  // namespace DL
