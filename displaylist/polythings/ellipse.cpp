#include "displaylist/polythings/ellipse.h"

#include <algorithm>
#include <bit>

#include "displaylist/core/coding.h"
#include "displaylist/core/display_list.h"
#include "displaylist/drawables/dump_p.h"
#include "displaylist/drawables/manifest.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/angle_p.h"
#include "displaylist/polythings/copy_p.h"
#include "displaylist/polythings/device_ellipse_p.h"

namespace DL {

namespace {

bool is_limit(std::int32_t coordinate) {
  return coordinate == PointTemplate<long>::scalarMinimum ||
         coordinate == PointTemplate<long>::scalarMaximum;
}

std::int32_t saturated(std::int64_t value) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(
      value, PointTemplate<long>::scalarMinimum, PointTemplate<long>::scalarMaximum));
}

}  // namespace

void* DLEllipse::_parent_type = nullptr;

DLEllipse::DLEllipse(LM_RGB32 color, PointTemplate<long> middle, std::int32_t first_radius,
                     std::int32_t second_radius, float turned, DisplayList* list)
    : Drawable(color),
      center(middle),
      major(first_radius),
      minor(second_radius),
      rotation(turned),
      display_list(list) {}

void* DLEllipse::my_type() {
  return &_parent_type;
}

void* DLEllipse::type() const {
  return my_type();
}

float DLEllipse::start_angle() const {
  return 0.0F;
}

float DLEllipse::end_angle() const {
  return angle::kTurn;
}

bool DLEllipse::has_center() const {
  return !is_limit(center.x) && !is_limit(center.y);
}

void DLEllipse::draw_unclipped(DisplayList& list) {
  draw_clipped(list);
}

void DLEllipse::draw_clipped(DisplayList& list) {
  draw_arc(list, nullptr);
}

void DLEllipse::draw_arc(DisplayList& list, const LM_RGB32* fill) {
  if (!has_center()) return;
  const DeviceEllipse device =
      to_device(list, {center, major, minor, rotation, start_angle(), end_angle()});
  list.m_pRenderer->actions.elliptical_arc(rendition(list), &device.center, &device.radii,
                                           device.start, device.end, device.rotation, fill);
}

void DLEllipse::add_bounds(BoundsTemplate<long>& bounds) const {
  const std::int64_t radius = std::max(major, minor);
  bounds.widen({saturated(center.x - radius), saturated(center.y - radius)});
  bounds.widen({saturated(center.x + radius), saturated(center.y + radius)});
}

bool DLEllipse::has_same_axes(const DLEllipse& other) const {
  return center == other.center && major == other.major && minor == other.minor;
}

bool DLEllipse::remove(Search& search) {
  if (search.type != DLEllipse::my_type()) return false;
  const auto* wanted = static_cast<const DLEllipse*>(search.prototype);
  return has_same_axes(*wanted) && rotation == wanted->rotation;
}

Drawable* DLEllipse::clone() {
  return with_color_of(
      *this, new DLEllipse(m_colorData.m_color, center, major, minor, rotation, display_list));
}

void DLEllipse::hide() {
  class_change::become<HiddenDrawable<DLEllipse>>(this);
}

bool DLEllipse::has_fixed_representation() const {
  return false;
}

bool DLEllipse::supports_fast_vector_iterator() const {
  return false;
}

void DLEllipse::dump(std::ostream& os, int level, DisplayListDebug& statistics) const {
  constexpr std::uint32_t object_bytes = 64;
  dump_line::write(os, level, "DLEllipse", this);
  dump_line::count(statistics, object_bytes);
}

void DLEllipse::serialize_out(ZtFsStream* stream, DisplayList& list) {
  coding::write(*stream, tag::kDLEllipse);
  coding::write(*stream, center);
  coding::write(*stream, major);
  coding::write(*stream, minor);
  coding::write(*stream, rotation);
  coding::write(*stream, reserved);
  Drawable::serialize_out(stream, list);
}

void DLEllipse::serialize_in(ZtFsStream* stream, DisplayList& list) {
  display_list = &list;
  // A stream that ends here leaves zeros; the base record ends the reading.
  static_cast<void>(coding::read(*stream, center) && coding::read(*stream, major) &&
                    coding::read(*stream, minor) && coding::read(*stream, rotation) &&
                    coding::read(*stream, reserved));
  Drawable::serialize_in(stream, list);
}

}  // namespace DL
