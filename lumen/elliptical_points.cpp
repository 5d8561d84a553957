#include "displaylist/platform/elliptical_points.h"

#include <algorithm>
#include <cmath>

namespace {

std::int32_t nearest(double value) {
  return static_cast<std::int32_t>(std::nearbyint(std::clamp(value, -2147483648.0, 2147483647.0)));
}

}  // namespace

void LD_Generate_Elliptical_Points(const LM_DCI_Point& center, const LM_DCI_Point& radii,
                                   float start, float end, float rotation, std::int32_t count,
                                   LM_DCI_Point* out) {
  if (count < 1) return;
  if (!std::isfinite(start) || !std::isfinite(end) || !std::isfinite(rotation)) {
    std::fill_n(out, count, LM_DCI_Point{center.x, center.y, 0});
    return;
  }
  const double cos_rotation = std::cos(double{rotation});
  const double sin_rotation = std::sin(double{rotation});
  const double step = count == 1 ? 0.0 : (double{end} - double{start}) / (count - 1);
  for (std::int32_t i = 0; i < count; ++i) {
    const double angle = start + step * i;
    const double along = radii.x * std::cos(angle);
    const double across = radii.y * std::sin(angle);
    out[i] = {nearest(center.x + along * cos_rotation - across * sin_rotation),
              nearest(center.y + along * sin_rotation + across * cos_rotation), 0};
  }
}
