#include "lumen/geometry/line_run_p.h"

#include <algorithm>

namespace lumen {
namespace {

/// A line seen along its longer axis: after i steps the minor axis has made
/// floor((2 i minor + major - bias) / (2 major)) steps. Lengths are below
/// 2^32, so that their products fit 64 bits unsigned.
struct Slope {
  std::uint64_t major;
  std::uint64_t minor;
  std::int64_t bias;  ///< 0 when ties step, 1 when they do not

  /// The first step at which `steps` (1 to `minor`) minor steps are made.
  [[nodiscard]] std::int64_t first_with(std::uint64_t steps) const {
    const std::uint64_t product = steps * major;
    const auto rest = static_cast<std::int64_t>(product % minor);
    const std::int64_t numerator = 2 * rest - static_cast<std::int64_t>(major) + bias;
    const auto denominator = static_cast<std::int64_t>(2 * minor);
    const std::int64_t quotient = numerator / denominator;
    const bool rounds_up = numerator > 0 && numerator % denominator != 0;
    return static_cast<std::int64_t>(product / minor) + quotient + (rounds_up ? 1 : 0);
  }
};

/// Steps i for which a coordinate that starts at `start` and goes by `step`
/// lies in [low, high]: from `first` to `last`, none when first > last.
struct StepRange {
  std::int64_t first;
  std::int64_t last;
};

StepRange steps_inside(std::int64_t start, std::int32_t step, std::int64_t low, std::int64_t high) {
  if (step > 0) return {low - start, high - start};
  return {start - high, start - low};
}

/// The major steps whose pixels have made between `range.first` and
/// `range.last` minor steps.
StepRange major_steps(const Slope& slope, StepRange range, std::int64_t count) {
  const auto minor = static_cast<std::int64_t>(slope.minor);
  if (range.last < 0 || range.first > minor) return {0, -1};
  StepRange result{0, count - 1};
  if (range.first > 0) result.first = slope.first_with(static_cast<std::uint64_t>(range.first));
  if (range.last < minor) {
    const auto beyond = static_cast<std::uint64_t>(range.last + 1);
    result.last = std::min(result.last, slope.first_with(beyond) - 1);
  }
  return result;
}

/// Moves the start of the run `steps` pixels along.
void advance(LineRun& run, const Slope& slope, std::int64_t steps) {
  const std::uint64_t product = static_cast<std::uint64_t>(steps) * slope.minor;
  auto minor_steps = static_cast<std::int64_t>(product / slope.major);
  run.error = 2 * static_cast<std::int64_t>(product % slope.major) + run.error;
  if (run.error >= run.error_limit) {
    run.error -= run.error_limit;
    ++minor_steps;
  }
  run.skipped = steps;
  const std::int64_t steps_x = run.x_is_major ? steps : minor_steps;
  const std::int64_t steps_y = run.x_is_major ? minor_steps : steps;
  run.x = static_cast<std::int32_t>(run.x + run.step_x * steps_x);
  run.y = static_cast<std::int32_t>(run.y + run.step_y * steps_y);
}

}  // namespace

void clip_line_run(LineRun& run, const PixelRectangle& inside) {
  const Slope slope{static_cast<std::uint64_t>(run.error_limit / 2),
                    static_cast<std::uint64_t>(run.error_step / 2),
                    run.error_limit / 2 - run.error};
  const StepRange x = steps_inside(run.x, run.step_x, inside.min_x, inside.max_x);
  const StepRange y = steps_inside(run.y, run.step_y, inside.min_y, inside.max_y);
  const StepRange along = run.x_is_major ? x : y;
  const StepRange across = major_steps(slope, run.x_is_major ? y : x, run.count);
  const std::int64_t first = std::max({std::int64_t{0}, along.first, across.first});
  const std::int64_t last = std::min({run.count - 1, along.last, across.last});
  run.count = std::max(last - first + 1, std::int64_t{0});
  if (run.count > 0 && first > 0) advance(run, slope, first);
}

}  // namespace lumen
