#pragma once

#include <cstddef>

#include "displaylist/platform/export.h"

/// A heap that memory can be asked from by name. Implementations may keep
/// blocks of one list close together, count, or refuse.
///
/// Whatever `allocate` returns is given back through LD_ReleaseMemory, which
/// gets the pointer alone: an implementation of one's own takes its blocks
/// from LD_AllocateMemory with another heap (or null). A heap outlives every
/// block that came from it. Any thread may call.
class LUMEN_API LumenHeap {
 public:
  LumenHeap() = default;
  LumenHeap(const LumenHeap&) = delete;
  LumenHeap& operator=(const LumenHeap&) = delete;
  virtual ~LumenHeap();

  /// `size` bytes aligned for a pointer (8 bytes), not initialised, or null
  /// when there are none. Never throws.
  virtual void* allocate(std::size_t size) noexcept = 0;
};

/// `size` bytes from `heap`, or from the default heap when `heap` is null.
/// Aligned to 8 bytes, not initialised; null when memory is exhausted.
/// Any thread may call.
LUMEN_API void* LD_AllocateMemory(std::size_t size, LumenHeap* heap) noexcept;

/// Gives back a block of LD_AllocateMemory, whichever heap it came from.
/// Null is allowed and does nothing. Any thread may call.
LUMEN_API void LD_ReleaseMemory(void* memory) noexcept;
