#include "displaylist/drawables/dot.h"

#include "displaylist/core/coding.h"
#include "displaylist/core/display_list.h"
#include "displaylist/core/transform_p.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/manifest.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"

namespace DL {

namespace {

constexpr std::uint32_t kDotBytes = 40;
constexpr std::uint32_t kColorizedDotBytes = 48;

}  // namespace

void* DLDot::_parent_type = nullptr;
void* DLColorizedDot::_parent_type = &DLDot::_parent_type;

DLDot::DLDot(LM_RGB32 color, PointTemplate<long> point) : Drawable(color), m_point(point) {}

DLDot::DLDot(class_change::Unfilled unfilled) : Drawable(unfilled), m_point{} {}

void* DLDot::my_type() {
  return &_parent_type;
}

void* DLDot::type() const {
  return my_type();
}

void DLDot::draw_unclipped_colored(DisplayList& list, const LM_RGB32* color) {
  const LM_DCI_Point device = transform::point(list, m_point);
  const LM_Device_Actions& actions = list.m_pRenderer->actions;
  const bool inside = list.m_rendition.clip_rectangle().contains(device);
  (inside ? actions.dot_unclipped : actions.dot_clipped)(rendition(list), &device, color);
}

void DLDot::draw_clipped_colored(DisplayList& list, const LM_RGB32* color) {
  const LM_DCI_Point device = transform::point(list, m_point);
  list.m_pRenderer->actions.dot_clipped(rendition(list), &device, color);
}

void DLDot::draw_unclipped(DisplayList& list) {
  draw_unclipped_colored(list, nullptr);
}

void DLDot::draw_clipped(DisplayList& list) {
  draw_clipped_colored(list, nullptr);
}

void DLDot::add_bounds(BoundsTemplate<long>& bounds) const {
  bounds.widen(m_point);
}

bool DLDot::remove(Search& search) {
  return search.type == DLDot::my_type() &&
         static_cast<const DLDot*>(search.prototype)->m_point == m_point;
}

Drawable* DLDot::clone() {
  return new DLDot(m_colorData.m_color, m_point);
}

void DLDot::hide() {
  class_change::become<HiddenDrawable<DLDot>>(this);
}

int DLDot::get_vector_count() const {
  return 1;
}

bool DLDot::get_vector(int, VectorTemplate<long>& vector) const {
  vector = {m_point, m_point};
  return true;
}

void DLDot::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  dump_line::write(os, level, "DLDot", this);
  dump_line::count(statistics, kDotBytes);
}

void DLDot::serialize_out(ZtFsStream* stream, DisplayList& list) {
  coding::write(*stream, tag::kDLDot);
  coding::write(*stream, m_point);
  Drawable::serialize_out(stream, list);
}

void DLDot::serialize_in(ZtFsStream* stream, DisplayList& list) {
  // A stream that ends here leaves zeros; the base record ends the reading.
  static_cast<void>(coding::read(*stream, m_point));
  Drawable::serialize_in(stream, list);
}

DLColorizedDot::DLColorizedDot(LM_RGB32 color, PointTemplate<long> point, LM_RGB32 own_color)
    : DLDot(color, point), m_color(own_color) {}

DLColorizedDot::DLColorizedDot(class_change::Unfilled unfilled) : DLDot(unfilled) {}

void* DLColorizedDot::my_type() {
  return &_parent_type;
}

void* DLColorizedDot::type() const {
  return my_type();
}

void DLColorizedDot::draw_unclipped(DisplayList& list) {
  draw_unclipped_colored(list, &m_color);
}

void DLColorizedDot::draw_clipped(DisplayList& list) {
  draw_clipped_colored(list, &m_color);
}

bool DLColorizedDot::remove(Search& search) {
  if (search.type != DLColorizedDot::my_type()) return false;
  const auto* wanted = static_cast<const DLColorizedDot*>(search.prototype);
  return wanted->m_point == m_point && wanted->m_color == m_color;
}

Drawable* DLColorizedDot::clone() {
  return new DLColorizedDot(m_colorData.m_color, m_point, m_color);
}

void DLColorizedDot::hide() {
  class_change::become<HiddenDrawable<DLColorizedDot>>(this);
}

void DLColorizedDot::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  dump_line::write(os, level, "DLColorizedDot", this);
  dump_line::count(statistics, kColorizedDotBytes);
}

void DLColorizedDot::serialize_out(ZtFsStream*, DisplayList&) {}

void DLColorizedDot::serialize_in(ZtFsStream*, DisplayList&) {}

}  // namespace DL
