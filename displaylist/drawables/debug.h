#pragma once

#include <cstdint>

namespace DL {

/// Counts of a dump; the caller zeroes them before the walk.
struct DisplayListDebug {
  std::uint32_t m_cGroups = 0;
  std::uint32_t m_cDrawables = 0;
  std::uint32_t m_cGroupBytes = 0;
  std::uint32_t m_cDrawableBytes = 0;
  std::uint32_t m_cEntryBytes = 0;
};

}  // namespace DL
