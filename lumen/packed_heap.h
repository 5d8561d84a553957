#pragma once

#include <cstddef>
#include <memory>

#include "displaylist/platform/memory.h"

namespace lumen {

/// A heap that lays blocks densely side by side in the order in which they are
/// asked for: no header per block, sizes up to 256 bytes rounded to 8. Destroying
/// it gives all its memory back to the system at once. Any thread may allocate and
/// release.
///
/// With LUMEN_PLAIN_HEAP every block is a malloc of its own, so that the
/// sanitizers watch each one; blocks not released are then left to them.
class LUMEN_API PackedHeap final : public LumenHeap {
 public:
  PackedHeap();
  ~PackedHeap() override;

  void* allocate(std::size_t size) noexcept override;

  /// Bytes of the blocks handed out, rounded to their size classes.
  [[nodiscard]] std::size_t bytes_in_use() const;
  /// Bytes taken from the system, a kept empty slab included.
  [[nodiscard]] std::size_t bytes_reserved() const;

  /// Gives a block back to whichever PackedHeap it came from; not null.
  static void release(void* memory) noexcept;

  /// The heap behind a null heap pointer. Never destroyed, so that objects of
  /// static lifetime may still release while the process ends.
  static PackedHeap& process_heap();

 private:
  class Core;
  std::unique_ptr<Core> m_core;
};

}  // namespace lumen
