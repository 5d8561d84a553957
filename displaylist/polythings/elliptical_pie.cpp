#include "displaylist/polythings/elliptical_pie.h"

#include "displaylist/core/coding.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/manifest.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/copy_p.h"

namespace DL {

void* DLEllipticalPie::_parent_type = &DLEllipticalArc::_parent_type;

void* DLEllipticalPie::my_type() {
  return &_parent_type;
}

void* DLEllipticalPie::type() const {
  return my_type();
}

bool DLEllipticalPie::remove(Search& search) {
  if (search.type != DLEllipticalPie::my_type()) return false;
  const auto* wanted = static_cast<const DLEllipticalPie*>(search.prototype);
  return has_same_axes(*wanted) && rotation == wanted->rotation && wanted->has_angles();
}

Drawable* DLEllipticalPie::clone() {
  return with_color_of(*this, new DLEllipticalPie(m_colorData.m_color, center, major, minor,
                                                  rotation, start, end, display_list));
}

void DLEllipticalPie::hide() {
  class_change::become<HiddenDrawable<DLEllipticalPie>>(this);
}

void DLEllipticalPie::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  constexpr std::uint32_t object_bytes = 72;
  dump_line::write(os, level, "DLEllipticalPie", this);
  dump_line::count(statistics, object_bytes);
}

void DLEllipticalPie::serialize_out(ZtFsStream* stream, DisplayList& list) {
  coding::write(*stream, tag::kDLEllipticalPie);
  DLEllipticalArc::serialize_out(stream, list);
}

void DLEllipticalPie::serialize_in(ZtFsStream* stream, DisplayList& list) {
  // The parent's tag, whatever it is; without it there is nothing else either.
  std::uint32_t parent_tag = 0;
  static_cast<void>(coding::read(*stream, parent_tag));
  DLEllipticalArc::serialize_in(stream, list);
}

}  // namespace DL
