#include "displaylist/polythings/colorized_ellipse.h"

#include "displaylist/core/display_list.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/copy_p.h"
#include "displaylist/polythings/device_ellipse_p.h"

namespace DL {

void* DLColorizedEllipse::_parent_type = &DLEllipticalArc::_parent_type;

DLColorizedEllipse::DLColorizedEllipse(LM_RGB32 color, PointTemplate<long> middle,
                                       std::int32_t first_radius, std::int32_t second_radius,
                                       float turned, float from, float to, LM_RGB32 fill,
                                       bool is_arc, DisplayList* list)
    : DLEllipticalArc(color, middle, first_radius, second_radius, turned, from, to, list),
      fill_color(fill),
      use_arc(is_arc) {}

void* DLColorizedEllipse::my_type() {
  return &_parent_type;
}

void* DLColorizedEllipse::type() const {
  return my_type();
}

void DLColorizedEllipse::draw_clipped(DisplayList& list) {
  if (use_arc) return draw_arc(list, &fill_color);
  if (!has_center()) return;
  const DeviceEllipse device = to_device(list, {center, major, minor, rotation, start, end});
  list.m_pRenderer->actions.elliptical_arc_colored(rendition(list), &device.center, &device.radii,
                                                   start, end, device.rotation, &fill_color);
}

bool DLColorizedEllipse::remove(Search& search) {
  if (search.type != DLColorizedEllipse::my_type()) return false;
  const auto* wanted = static_cast<const DLColorizedEllipse*>(search.prototype);
  return has_same_axes(*wanted) && rotation == wanted->rotation && start == wanted->start &&
         end == wanted->end && use_arc == wanted->use_arc && fill_color == wanted->fill_color;
}

Drawable* DLColorizedEllipse::clone() {
  return with_color_of(
      *this, new DLColorizedEllipse(m_colorData.m_color, center, major, minor, rotation, start, end,
                                    fill_color, use_arc, display_list));
}

void DLColorizedEllipse::hide() {
  class_change::become<HiddenDrawable<DLColorizedEllipse>>(this);
}

void DLColorizedEllipse::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  constexpr std::uint32_t object_bytes = 80;
  dump_line::write(os, level, "DLColorizedEllipse", this);
  dump_line::count(statistics, object_bytes);
}

void DLColorizedEllipse::serialize_out(ZtFsStream*, DisplayList&) {}

void DLColorizedEllipse::serialize_in(ZtFsStream*, DisplayList&) {}

}  // namespace DL
