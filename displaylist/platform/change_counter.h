#pragma once

#include <atomic>
#include <cstdint>

#include "displaylist/platform/export.h"

/// The rendering library's global object: the counter that change serials of
/// renditions, line styles and text attributes are taken from.
class LUMEN_API LM_Library {
 public:
  /// A serial that was never given out before. Any thread may call.
  std::uint64_t next_change_serial() noexcept {
    return m_changes.fetch_add(1, std::memory_order_relaxed) + 1;
  }

 private:
  std::atomic<std::uint64_t> m_changes{0};
};

extern LUMEN_API LM_Library LUMEN;
