#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "displaylist/platform/points.h"

namespace DL {

/// How many points a drawable may have to be drawn without an allocation.
inline constexpr std::int32_t kPointsWithoutAllocation = 256;

template <std::uint32_t Extra, class Draw>
[[gnu::noinline]] void with_allocated_device_buffer(std::int32_t count, const Draw& draw) {
  const std::size_t room = static_cast<std::size_t>(count) + std::size_t{Extra};
  draw(std::make_unique_for_overwrite<LM_DCI_Point[]>(room).get());
}

/// Calls `draw` with room for the device points of a drawable: on the stack for
/// one of up to 256 points, else from the general allocator. `Extra` is how many
/// points more than the drawable has there is room for.
template <std::uint32_t Extra, class Draw>
[[gnu::always_inline]] inline void with_device_buffer(std::int32_t count, const Draw& draw) {
  if (count <= kPointsWithoutAllocation) {
    LM_DCI_Point points[kPointsWithoutAllocation + Extra];  // not initialised: hot
    draw(points);
  } else {
    with_allocated_device_buffer<Extra>(count, draw);
  }
}

}  // namespace DL
