#pragma once

#include <cstdint>

#include "displaylist/core/geometry.h"
#include "displaylist/platform/points.h"

namespace DL {

class DisplayList;

/// The points center + R(rotation) (major cos t, minor sin t) for t from start
/// to end, in logical coordinates.
struct LogicalEllipse {
  PointTemplate<long> center;
  std::int32_t major;
  std::int32_t minor;
  float rotation;
  float start;
  float end;
};

/// The same points on the device, as the elliptical actions take them: the
/// radii are those of the principal axes, the angles lie in [0, 2 pi), and t
/// runs from start up to end. A whole ellipse has the angles 0 and 2 pi.
struct DeviceEllipse {
  LM_DCI_Point center;
  LM_DCI_Point radii;  ///< negative where the ellipse has numbers that are none
  float start;
  float end;
  float rotation;
};

/// The ellipse through the list's transform, its rotation included. Centre and
/// radii are rounded to nearest; radii saturate at the 32-bit limit, the centre
/// as the list's other points do.
[[nodiscard]] DeviceEllipse to_device(const DisplayList& list, const LogicalEllipse& ellipse);

}  // namespace DL
