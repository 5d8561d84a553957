#include <cmath>
#include <numbers>

#include "displaylist/core/rounding_p.h"
#include "displaylist/core/transform_p.h"
#include "displaylist/platform/trig_equation.h"
#include "displaylist/polythings/angle_p.h"
#include "displaylist/polythings/device_ellipse_p.h"

namespace DL {

namespace {

using Vector = PointTemplate<double>;

constexpr double kTolerance = 1e-12;

double dot(const Vector& a, const Vector& b) {
  return a.x * b.x + a.y * b.y;
}

/// a cos t + b sin t
Vector combine(const Vector& a, const Vector& b, double t) {
  return {a.x * std::cos(t) + b.x * std::sin(t), a.y * std::cos(t) + b.y * std::sin(t)};
}

/// A logical direction on the device.
Vector transformed(const DisplayList& list, const Vector& v) {
  if (!list.m_bRotated) return {list.m_scale.x * v.x, list.m_scale.y * v.y};
  const double* r = list.m_rotation;
  return {r[4] * v.x + r[1] * v.y, r[0] * v.x + r[5] * v.y};
}

LM_DCI_Point device_center(const DisplayList& list, const PointTemplate<long>& center) {
  return list.m_bCheckOverflow ? transform::with_rotation_saturated(list, center)
                               : transform::with_rotation(list, center);
}

/// The angle of least size at which p cos t + q sin t is on a principal axis.
///
/// There its length is extremal, and the derivative of its square is 0:
/// (|q|^2 - |p|^2) sin 2t + 2 p.q cos 2t = 0. A circle has axes everywhere.
double principal_angle(const Vector& p, const Vector& q) {
  const double size = dot(p, p) + dot(q, q);
  if (size == 0.0) return 0.0;
  double doubled[2];
  const int count = solveTrigEquation(2.0 * dot(p, q) / size, (dot(q, q) - dot(p, p)) / size, 0.0,
                                      kTolerance, doubled);
  double least = count > 0 ? std::numbers::pi : 0.0;
  for (int i = 0; i < count; ++i) {
    const double t = doubled[i] / 2.0;
    if (std::abs(t) < std::abs(least)) least = t;
    if (std::abs(t - std::numbers::pi) < std::abs(least)) least = t - std::numbers::pi;
  }
  return least;
}

/// The direction of the first axis, taken from the longer of the two: that of
/// an axis which the view has lost is noise.
double axis_rotation(const Vector& first, const Vector& second, bool mirrored) {
  if (dot(first, first) >= dot(second, second)) return std::atan2(first.y, first.x);
  return mirrored ? std::atan2(second.x, -second.y) : std::atan2(-second.x, second.y);
}

void set_angles(DeviceEllipse& device, const LogicalEllipse& ellipse, double shift, bool mirrored) {
  if (ellipse.end - ellipse.start > angle::kAlmostTurn) {
    device.start = 0.0F;
    device.end = angle::kTurn;
    return;
  }
  // A mirror turns the sense in which t runs.
  const double start = mirrored ? shift - ellipse.end : ellipse.start - shift;
  const double end = mirrored ? shift - ellipse.start : ellipse.end - shift;
  device.start = angle::normalized(static_cast<float>(start));
  device.end = angle::normalized(static_cast<float>(end));
}

}  // namespace

DeviceEllipse to_device(const DisplayList& list, const LogicalEllipse& ellipse) {
  const double cosine = std::cos(double{ellipse.rotation});
  const double sine = std::sin(double{ellipse.rotation});
  const Vector p = transformed(list, {ellipse.major * cosine, ellipse.major * sine});
  const Vector q = transformed(list, {ellipse.minor * -sine, ellipse.minor * cosine});
  const double shift = principal_angle(p, q);
  const Vector first = combine(p, q, shift);
  const Vector second = combine(q, {-p.x, -p.y}, shift);
  const bool mirrored = p.x * q.y < p.y * q.x;

  DeviceEllipse device{};
  device.center = device_center(list, ellipse.center);
  device.radii = {rounding::nearest_saturated(std::hypot(first.x, first.y)),
                  rounding::nearest_saturated(std::hypot(second.x, second.y)), 0};
  device.rotation = angle::normalized(static_cast<float>(axis_rotation(first, second, mirrored)));
  set_angles(device, ellipse, shift, mirrored);
  return device;
}

}  // namespace DL
