#pragma once

#include <algorithm>
#include <cstdint>

#include "displaylist/platform/points.h"
#include "lumen/geometry/pixel_rectangle_p.h"

namespace lumen {

/// The pixels of a one-pixel line between two pixels: `count` steps along the
/// longer axis, each with a step along the shorter one when the error says so.
/// Ties go to the larger coordinate whichever way the line runs, so that both
/// directions cover the same pixels.
struct LineRun {
  std::int32_t x;  ///< first pixel
  std::int32_t y;
  bool x_is_major;
  std::int32_t step_x;  ///< -1 or 1
  std::int32_t step_y;
  std::int64_t count;    ///< pixels; 0 for none
  std::int64_t skipped;  ///< pixels of the line before the first one of the run
  /// Each step adds `error_step`; from `error_limit` on it is reduced by the
  /// limit and the minor axis is stepped.
  std::int64_t error;
  std::int64_t error_step;
  std::int64_t error_limit;
};

/// Leaves of a whole line's run what is inside the rectangle.
void clip_line_run(LineRun& run, const PixelRectangle& inside);

/// The pixels from `from` to `to`, the last one excluded, inside the
/// rectangle: exactly those of the whole line, whatever the coordinates.
inline LineRun line_run(const LM_DCI_Point& from, const LM_DCI_Point& to,
                        const PixelRectangle& inside) {
  const std::int64_t delta_x = std::int64_t{to.x} - from.x;
  const std::int64_t delta_y = std::int64_t{to.y} - from.y;
  const std::int64_t length_x = delta_x < 0 ? -delta_x : delta_x;
  const std::int64_t length_y = delta_y < 0 ? -delta_y : delta_y;
  const bool x_is_major = length_x >= length_y;
  const std::int64_t major = x_is_major ? length_x : length_y;
  const std::int64_t minor = x_is_major ? length_y : length_x;
  const std::int64_t bias = (x_is_major ? delta_y : delta_x) < 0 ? 1 : 0;

  LineRun run{
      from.x,       from.y,    x_is_major, delta_x < 0 ? -1 : 1, delta_y < 0 ? -1 : 1, major, 0,
      major - bias, 2 * minor, 2 * major};
  if (!inside.contains(from) || !inside.contains(to)) clip_line_run(run, inside);
  return run;
}

/// How many pixels the line has without its last one.
inline std::int64_t line_length(const LM_DCI_Point& from, const LM_DCI_Point& to) {
  const std::int64_t x = std::int64_t{to.x} - from.x;
  const std::int64_t y = std::int64_t{to.y} - from.y;
  return std::max(x < 0 ? -x : x, y < 0 ? -y : y);
}

}  // namespace lumen
