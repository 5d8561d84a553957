#include "displaylist/polythings/elliptical_arc.h"

#include <cmath>

#include "displaylist/core/coding.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/manifest.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/copy_p.h"

namespace DL {

void* DLEllipticalArc::_parent_type = &DLEllipse::_parent_type;

DLEllipticalArc::DLEllipticalArc(LM_RGB32 color, PointTemplate<long> middle,
                                 std::int32_t first_radius, std::int32_t second_radius,
                                 float turned, float from, float to, DisplayList* list)
    : DLEllipse(color, middle, first_radius, second_radius, turned, list), start(from), end(to) {}

void* DLEllipticalArc::my_type() {
  return &_parent_type;
}

void* DLEllipticalArc::type() const {
  return my_type();
}

float DLEllipticalArc::start_angle() const {
  return start;
}

float DLEllipticalArc::end_angle() const {
  return end;
}

bool DLEllipticalArc::has_angles() const {
  return !std::isnan(start) && !std::isnan(end);
}

bool DLEllipticalArc::remove(Search& search) {
  if (search.type != DLEllipticalArc::my_type()) return false;
  const auto* wanted = static_cast<const DLEllipticalArc*>(search.prototype);
  return has_same_axes(*wanted) && !std::isnan(wanted->rotation) && wanted->has_angles();
}

Drawable* DLEllipticalArc::clone() {
  return with_color_of(*this, new DLEllipticalArc(m_colorData.m_color, center, major, minor,
                                                  rotation, start, end, display_list));
}

void DLEllipticalArc::hide() {
  class_change::become<HiddenDrawable<DLEllipticalArc>>(this);
}

void DLEllipticalArc::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  constexpr std::uint32_t object_bytes = 72;
  dump_line::write(os, level, "EllipsticalArc", this);
  dump_line::count(statistics, object_bytes);
}

void DLEllipticalArc::serialize_out(ZtFsStream* stream, DisplayList& list) {
  coding::write(*stream, tag::kDLEllipticalArc);
  coding::write(*stream, start);
  coding::write(*stream, end);
  DLEllipse::serialize_out(stream, list);
}

void DLEllipticalArc::serialize_in(ZtFsStream* stream, DisplayList& list) {
  // A stream that ends here leaves zeros; the base record ends the reading.
  std::uint32_t parent_tag = 0;
  static_cast<void>(coding::read(*stream, start) && coding::read(*stream, end) &&
                    coding::read(*stream, parent_tag));
  DLEllipse::serialize_in(stream, list);
}

}  // namespace DL
