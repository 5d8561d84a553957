#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "displaylist/platform/points.h"

namespace DL {

/// How many points a drawable may have to be drawn without an allocation.
inline constexpr std::int32_t kPointsWithoutAllocation = 256;

/// Device points for one draw: on the stack for a drawable of up to 256 points,
/// else from the general allocator. `Extra` is how many points more than the
/// drawable has there is room for.
template <std::uint32_t Extra>
class DeviceBuffer {
 public:
  explicit DeviceBuffer(std::int32_t count) {
    if (count <= kPointsWithoutAllocation) return;
    const std::size_t room = static_cast<std::size_t>(count) + std::size_t{Extra};
    m_allocated = std::make_unique_for_overwrite<LM_DCI_Point[]>(room);
    m_points = m_allocated.get();
  }
  DeviceBuffer(const DeviceBuffer&) = delete;
  DeviceBuffer& operator=(const DeviceBuffer&) = delete;

  [[nodiscard]] LM_DCI_Point* points() { return m_points; }

 private:
  LM_DCI_Point m_fixed[kPointsWithoutAllocation + Extra];  // not initialised: hot
  std::unique_ptr<LM_DCI_Point[]> m_allocated;
  LM_DCI_Point* m_points = m_fixed;
};

}  // namespace DL
