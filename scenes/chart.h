#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "scenes/sheet.h"

namespace scenes {

/// The size at which a picture of the chart shows a unit as a pixel.
inline constexpr std::int32_t kChartWidth = 1600;
inline constexpr std::int32_t kChartHeight = 900;

/// A chart of measurements: `polydots` clouds of six dots around five curves,
/// which markers of a shape each stand on, over a grid of rows of dots. The same
/// numbers give the same chart on every machine.
std::unique_ptr<Sheet> make_chart(std::size_t polydots, std::uint64_t seed);

}  // namespace scenes
