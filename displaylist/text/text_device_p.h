#pragma once

#include <cmath>

#include "displaylist/core/display_list.h"
#include "displaylist/core/rounding_p.h"

/// How texts lie on the device.
namespace DL::text_device {

/// A scale pair with its offsets.
struct Mapping {
  PointTemplate<double> scale;
  PointTemplate<double> offset;

  [[nodiscard]] PointTemplate<double> to_device(const PointTemplate<double>& logical) const {
    return {logical.x * scale.x + offset.x, logical.y * scale.y + offset.y};
  }
  [[nodiscard]] PointTemplate<double> to_logical(const PointTemplate<double>& device) const {
    return {(device.x - offset.x) / scale.x, (device.y - offset.y) / scale.y};
  }
};

/// The mapping that text is sized and measured by.
inline Mapping mapping_in_force(const DisplayList& list) {
  if (list.m_bAlternateScale) return {list.m_deviceScale, list.m_deviceOffset};
  return {list.m_scale, list.m_offset};
}

/// The coordinate, or where it lies beyond `limit` that limit: the upper one when
/// `sign` is positive, else the lower one.
inline double limited(double value, double limit, double lower_limit, double sign) {
  if (!(std::fabs(value) > limit)) return value;
  return sign > 0 ? limit : lower_limit;
}

/// Where text starts on the device: truncated, and saturated to the side on
/// which x lies, for y too.
inline LM_DCI_Point start_point(const PointTemplate<double>& device) {
  constexpr double largest = 2147483647.0;
  constexpr double smallest = -2147483648.0;
  return {rounding::truncate(limited(device.x, largest, smallest, device.x)),
          rounding::truncate(limited(device.y, largest, smallest, device.x)), 0};
}

}  // namespace DL::text_device
