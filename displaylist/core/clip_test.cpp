#include "displaylist/core/clip_test_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "displaylist/core/display_list.h"
#include "displaylist/core/transform_p.h"

namespace DL {

namespace {

/// A device rectangle with sorted corners, inclusive.
struct DeviceBox {
  double min_x, min_y, max_x, max_y;
};

/// Holds all four corners: in a turned view each may be the outermost.
DeviceBox device_box(const DisplayList& list, const BoundsTemplate<long>& bounds) {
  BoundsTemplate<int> box;
  for (const PointTemplate<long>& corner :
       {bounds.min, {bounds.max.x, bounds.min.y}, bounds.max, {bounds.min.x, bounds.max.y}}) {
    const LM_DCI_Point device = transform::with_rotation_saturated(list, corner);
    box.widen({device.x, device.y});
  }
  return {static_cast<double>(box.min.x), static_cast<double>(box.min.y),
          static_cast<double>(box.max.x), static_cast<double>(box.max.y)};
}

/// Narrows the part [first, last] of an edge to what lies in [low, high] along
/// one axis; false when nothing does.
bool narrow(double from, double delta, double low, double high, double& first, double& last) {
  if (delta == 0.0) return from >= low && from <= high;
  const double at_low = (low - from) / delta;
  const double at_high = (high - from) / delta;
  first = std::max(first, std::min(at_low, at_high));
  last = std::min(last, std::max(at_low, at_high));
  return first <= last;
}

/// Whether the edge shares a point with the box, border included.
bool edge_touches(const LM_Point& from, const LM_Point& to, const DeviceBox& box) {
  if (std::max(from.x, to.x) < box.min_x || std::min(from.x, to.x) > box.max_x) return false;
  if (std::max(from.y, to.y) < box.min_y || std::min(from.y, to.y) > box.max_y) return false;
  double first = 0.0;
  double last = 1.0;
  return narrow(from.x, static_cast<double>(to.x) - from.x, box.min_x, box.max_x, first, last) &&
         narrow(from.y, static_cast<double>(to.y) - from.y, box.min_y, box.max_y, first, last);
}

bool any_edge_touches(const LM_Contour& contour, const DeviceBox& box) {
  for (std::int32_t i = 0; i < contour.count; ++i) {
    const LM_Point& previous = contour.points[i == 0 ? contour.count - 1 : i - 1];
    if (edge_touches(previous, contour.points[i], box)) return true;
  }
  return false;
}

double squared_distance(double x, double y, double from_x, double from_y) {
  return (x - from_x) * (x - from_x) + (y - from_y) * (y - from_y);
}

/// The squared distances of a contour from a centre.
struct DistanceRange {
  double smallest = std::numeric_limits<double>::max();
  double largest = 0.0;

  [[nodiscard]] bool is_wider_than(double tolerance) const {
    return std::sqrt(largest) - std::sqrt(smallest) > tolerance;
  }
};

struct Center {
  double x, y;
};

Center center_of(const LM_Contour& contour) {
  constexpr float largest = std::numeric_limits<float>::max();
  float min_x = largest;
  float min_y = largest;
  float max_x = -largest;
  float max_y = -largest;
  for (std::int32_t i = 0; i < contour.count; ++i) {
    min_x = std::min(min_x, contour.points[i].x);
    max_x = std::max(max_x, contour.points[i].x);
    min_y = std::min(min_y, contour.points[i].y);
    max_y = std::max(max_y, contour.points[i].y);
  }
  return {(static_cast<double>(min_x) + max_x) * 0.5, (static_cast<double>(min_y) + max_y) * 0.5};
}

DistanceRange vertex_distances(const LM_Contour& contour, const Center& center) {
  DistanceRange range;
  for (std::int32_t i = 0; i < contour.count; ++i) {
    const double squared =
        squared_distance(contour.points[i].x, contour.points[i].y, center.x, center.y);
    range.smallest = std::min(range.smallest, squared);
    range.largest = std::max(range.largest, squared);
  }
  return range;
}

/// The smallest squared distance that the middle of an edge has.
double nearest_edge_middle(const LM_Contour& contour, const Center& center) {
  double smallest = std::numeric_limits<double>::max();
  for (std::int32_t i = 0; i < contour.count; ++i) {
    const LM_Point& a = contour.points[i == 0 ? contour.count - 1 : i - 1];
    const LM_Point& b = contour.points[i];
    const double x = (static_cast<double>(a.x) + b.x) * 0.5;
    const double y = (static_cast<double>(a.y) + b.y) * 0.5;
    smallest = std::min(smallest, squared_distance(x, y, center.x, center.y));
  }
  return smallest;
}

}  // namespace

ClipAnswer test_complex_clip(DisplayList& list, const BoundsTemplate<long>& bounds) {
  LM_Rendition& rendition = list.m_rendition;
  if (!rendition.hard_complex_clip_validated()) rendition.validate_hard_complex_clip();
  const LM_Contour_Set_Data* clip = rendition.hard_complex_clip();
  if (clip == nullptr || bounds == BoundsTemplate<long>::plane()) return ClipAnswer::crossing;

  const DeviceBox box = device_box(list, bounds);
  for (std::int32_t i = 0; i < clip->contour_count(); ++i) {
    if (any_edge_touches(clip->contour(i), box)) return ClipAnswer::crossing;
  }
  // No edge touches the box: any point of it tells for the whole.
  return clip->point_inside(box.min_x, box.min_y) ? ClipAnswer::crossing : ClipAnswer::outside;
}

bool DisplayList::circular_complex_clip() {
  // How far apart vertices, and then edges too, may lie in device units.
  constexpr double vertex_tolerance = 2.0;
  constexpr double edge_tolerance = 5.0;

  const LM_Contour_Set clip = m_rendition.complex_clip();
  if (!clip || clip->contour_count() != 1) return false;
  const LM_Contour contour = clip->contour(0);
  if (contour.points == nullptr) return false;

  const Center center = center_of(contour);
  m_circleCenter = {static_cast<float>(center.x), static_cast<float>(center.y)};
  m_circleReserved = 0;

  DistanceRange range = vertex_distances(contour, center);
  if (range.is_wider_than(vertex_tolerance)) return false;
  range.smallest = std::min(range.smallest, nearest_edge_middle(contour, center));
  if (range.is_wider_than(edge_tolerance)) return false;
  m_circleRadiusSquared = static_cast<float>(range.smallest);
  return true;
}

}  // namespace DL
