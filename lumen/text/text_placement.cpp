#include <cmath>

#include "lumen/text/text_run_p.h"

namespace lumen {

TextPlacement::TextPlacement(const LM_Text_Attributes& attributes, const LM_DCI_Point& start)
    : start_x(start.x), start_y(start.y), along_x(0), along_y(0), up_x(0), up_y(0) {
  const double size = std::abs(double{attributes.size});
  const double angle = attributes.size < 0 ? -attributes.rotation : attributes.rotation;
  const double stretch = std::abs(double{attributes.width_scale});
  if (!std::isfinite(size) || !std::isfinite(angle) || !std::isfinite(stretch)) return;
  const double x = std::cos(angle) * size;
  const double y = std::sin(angle) * size;
  along_x = x * stretch;
  along_y = y * stretch;
  // The left as one sees it, where y runs down.
  up_x = y;
  up_y = -x;
}

void TextPlacement::sit_on_pixels() {
  const double height = std::hypot(up_x, up_y);
  if (height == 0) return;
  start_x -= up_x / height / 2;
  start_y -= up_y / height / 2;
}

}  // namespace lumen
