// The transform of a display list: where it comes from and the conversions.

#include <limits>

#include "displaylist/core/display_list.h"
#include "displaylist/core/rounding_p.h"
#include "displaylist/core/transform_p.h"

namespace DL {

namespace {

struct Mapping {
  PointTemplate<double> scale;
  PointTemplate<double> offset;
};

double distance(std::int32_t from, std::int32_t to) {
  return static_cast<double>(to) - static_cast<double>(from);
}

/// Maps the logical bounds onto the target rectangle, corner to corner.
Mapping map_onto(const BoundsTemplate<long>& logical, const BoundsTemplate<int>& target,
                 double y_aspect) {
  Mapping m;
  m.scale.x = distance(target.min.x, target.max.x) / distance(logical.min.x, logical.max.x);
  m.scale.y =
      distance(target.min.y, target.max.y) * y_aspect / distance(logical.min.y, logical.max.y);
  m.offset.x = target.min.x - m.scale.x * logical.min.x;
  m.offset.y = target.min.y - m.scale.y * logical.min.y;
  return m;
}

std::int32_t one_less(std::int32_t value) {
  return value == INT32_MIN ? value : value - 1;
}

std::int32_t one_more(std::int32_t value) {
  return value == INT32_MAX ? value : value + 1;
}

PointTemplate<double> scaled_exactly(const DisplayList& list, const PointTemplate<long>& p) {
  return {p.x * list.m_scale.x + list.m_offset.x, p.y * list.m_scale.y + list.m_offset.y};
}

PointTemplate<long> to_logical(const DisplayList& list, const PointTemplate<int>& screen) {
  return {rounding::nearest_saturated((screen.x - list.m_offset.x) / list.m_scale.x),
          rounding::nearest_saturated((screen.y - list.m_offset.y) / list.m_scale.y)};
}

/// Between the smallest positive normal float and the largest one: the lower
/// limit takes negative values with it.
float clamp_to_positive_float(double value) {
  constexpr double largest = std::numeric_limits<float>::max();
  constexpr double smallest = std::numeric_limits<float>::min();
  if (value > largest) return std::numeric_limits<float>::max();
  if (value < smallest) return std::numeric_limits<float>::min();
  return static_cast<float>(value);
}

}  // namespace

void DisplayList::transform_point(const PointTemplate<long>& logical, LM_DCI_Point& device) const {
  device = transform::point(*this, logical);
}

void DisplayList::transform_point_checking_overflow(const PointTemplate<long>& logical,
                                                    LM_DCI_Point& device) const {
  device = transform::scaled_saturated(*this, logical);
}

void DisplayList::transform_point(const PointTemplate<long>& logical, LM_Point& device) const {
  if (m_bCheckOverflow) {
    transform_point_checking_overflow(logical, device);
    return;
  }
  const PointTemplate<double> exact = scaled_exactly(*this, logical);
  device = {static_cast<float>(exact.x), static_cast<float>(exact.y), 0.0F};
}

void DisplayList::transform_point_checking_overflow(const PointTemplate<long>& logical,
                                                    LM_Point& device) const {
  const PointTemplate<double> exact = scaled_exactly(*this, logical);
  device = {clamp_to_positive_float(exact.x), clamp_to_positive_float(exact.y), 0.0F};
}

void DisplayList::transform_point(const PointTemplate<double>& logical,
                                  LM_DCI_Point& device) const {
  device = {rounding::asymmetric(logical.x * m_scale.x + m_offset.x),
            rounding::asymmetric(logical.y * m_scale.y + m_offset.y), 0};
}

void DisplayList::transform_point(const PointTemplate<int>& screen,
                                  PointTemplate<long>& logical) const {
  logical = to_logical(*this, screen);
}

void DisplayList::scale_point(const PointTemplate<long>& length, LM_DCI_Point& device) const {
  device = {rounding::nearest(length.x * m_scale.x), rounding::nearest(length.y * m_scale.y), 0};
}

void DisplayList::scale_point(const PointTemplate<long>& length, LM_Point& device) const {
  device = {static_cast<float>(length.x * m_scale.x), static_cast<float>(length.y * m_scale.y),
            0.0F};
}

void DisplayList::transform_point_with_rotation(const PointTemplate<long>& logical,
                                                LM_DCI_Point& device) const {
  device = transform::with_rotation(*this, logical);
}

void DisplayList::transform_point_with_rotation(const PointTemplate<int>& screen,
                                                PointTemplate<long>& logical) const {
  double x;
  double y;
  if (m_bRotated) {
    const double* r = m_rotation;
    y = (r[0] * screen.x - r[4] * screen.y - r[0] * r[2] + r[4] * r[3]) /
        (r[0] * r[1] - r[4] * r[5]);
    x = (screen.x - r[2] - y * r[1]) / r[4];
  } else {
    x = (screen.x - (m_offset.x + 0.5)) / m_scale.x;
    y = (screen.y - (m_offset.y + 0.5)) / m_scale.y;
  }
  logical = {rounding::truncate(x), rounding::truncate(y)};
}

void DisplayList::set_screen_bounds(const BoundsTemplate<int>& bounds) {
  if (bounds == m_screenBounds) return;
  m_screenBounds = bounds;
  m_deviceBounds = {rounding::truncate(bounds.min.x * m_deviceRatio.x),
                    rounding::truncate(bounds.min.y * m_deviceRatio.y),
                    rounding::truncate(bounds.max.x * m_deviceRatio.x),
                    rounding::truncate(bounds.max.y * m_deviceRatio.y)};
  recompute_transform();
}

void DisplayList::recompute_transform() {
  // A screen upside down (minimum y above maximum y) is wanted: only x is looked at.
  if (m_screenBounds.min.x > m_screenBounds.max.x || m_logicalBounds.is_empty()) return;

  const Mapping screen = map_onto(m_logicalBounds, m_screenBounds, m_yAspect);
  m_scale = screen.scale;
  m_offset = screen.offset;
  const Mapping device = map_onto(m_logicalBounds, m_deviceBounds, m_yAspect);
  m_deviceScale = device.scale;
  m_deviceOffset = device.offset;

  m_visibleBounds.min =
      to_logical(*this, {one_less(m_screenBounds.min.x), one_less(m_screenBounds.min.y)});
  m_visibleBounds.max =
      to_logical(*this, {one_more(m_screenBounds.max.x), one_more(m_screenBounds.max.y)});
}

}  // namespace DL
