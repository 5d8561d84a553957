#pragma once

#include <cstddef>
#include <cstdint>

#include "lumen/geometry/line_run_p.h"
#include "lumen/picture.h"

namespace lumen {

/// The index of a pixel of the picture, counted row after row.
inline std::ptrdiff_t index_of(const Picture& picture, std::int32_t x, std::int32_t y) {
  return static_cast<std::ptrdiff_t>(y) * picture.width() + x;
}

/// Calls `put(index)` for every pixel of the run. The steps are arithmetic
/// instead of a branch that nobody can predict.
template <class Put>
void walk(const LineRun& run, const Picture& picture, const Put& put) {
  const std::ptrdiff_t along_y = run.step_y * static_cast<std::ptrdiff_t>(picture.width());
  const std::ptrdiff_t major = run.x_is_major ? run.step_x : along_y;
  const std::ptrdiff_t minor = run.x_is_major ? along_y : run.step_x;
  std::ptrdiff_t index = index_of(picture, run.x, run.y);
  std::int64_t error = run.error - run.error_limit;
  const std::int64_t wrap = run.error_step - run.error_limit;
  const std::ptrdiff_t diagonal = major + minor;
  for (std::int64_t i = run.count; i > 0; --i) {
    put(index);
    const std::int64_t straight = error + run.error_step;
    const std::int64_t wrapped = error + wrap;
    index += straight < 0 ? major : diagonal;
    error = straight < 0 ? straight : wrapped;
  }
}

}  // namespace lumen
