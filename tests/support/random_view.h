#pragma once

#include <rapidcheck.h>

#include <vector>

#include "displaylist/core/display_list.h"
#include "tests/support/recorded_list.h"

/// Random views and points, and the plain way to a device, as an oracle.
namespace random_view {

inline double any_factor() {
  return *rc::gen::inRange(-256, 257) / 64.0;
}

/// Gives the list any scale, offset, rotation and clip rectangle.
inline void set_any_view(DL::DisplayList& list) {
  list.m_scale = {any_factor(), any_factor()};
  list.m_offset = {8 * any_factor(), 8 * any_factor()};
  list.m_bRotated = *rc::gen::arbitrary<bool>();
  list.m_bRotationSecondary = *rc::gen::arbitrary<bool>();
  list.m_bCheckOverflow = *rc::gen::arbitrary<bool>();
  for (double& r : list.m_rotation) r = any_factor();
  const auto low = [] { return *rc::gen::inRange(-60, 0); };
  const auto high = [] { return *rc::gen::inRange(0, 60); };
  const std::int32_t min_x = low();
  const std::int32_t max_x = high();
  list.m_rendition.set_clip_rectangle({min_x, max_x, low(), high()});
}

/// At least `least` points, close together or anywhere.
inline std::vector<LogicalPoint> any_points(std::size_t least) {
  const auto coordinate = rc::gen::weightedOneOf<std::int32_t>(
      {{8, rc::gen::inRange<std::int32_t>(-8, 9)}, {1, rc::gen::arbitrary<std::int32_t>()}});
  std::vector<LogicalPoint> points;
  const std::size_t count =
      least + *rc::gen::weightedOneOf<std::size_t>({{9, rc::gen::inRange<std::size_t>(0, 12)},
                                                    {1, rc::gen::inRange<std::size_t>(250, 262)}});
  for (std::size_t i = 0; i < count; ++i) points.push_back({*coordinate, *coordinate});
  return points;
}

/// Every point through the list's own transform.
inline std::vector<LM_DCI_Point> to_device(const DL::DisplayList& list,
                                           const std::vector<LogicalPoint>& points) {
  std::vector<LM_DCI_Point> device;
  for (const LogicalPoint& point : points) {
    device.emplace_back();
    list.transform_point_with_rotation(point, device.back());
  }
  return device;
}

inline bool all_inside(const DL::DisplayList& list, const std::vector<LM_DCI_Point>& points) {
  const LM_Clip_Rectangle clip = list.m_rendition.clip_rectangle();
  for (const LM_DCI_Point& p : points) {
    if (p.x < clip.min_x || p.x > clip.max_x || p.y < clip.min_y || p.y > clip.max_y) return false;
  }
  return true;
}

}  // namespace random_view
