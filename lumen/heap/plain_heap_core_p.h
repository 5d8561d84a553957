#pragma once

#include <atomic>
#include <cstdint>
#include <cstdlib>

#include "lumen/packed_heap.h"

namespace lumen {

/// A malloc per block, for builds that are watched by sanitizers.
class PackedHeap::Core {
 public:
  void* allocate(std::size_t size) noexcept {
    if (size > PTRDIFF_MAX - sizeof(Header)) return nullptr;
    auto* header = static_cast<Header*>(std::malloc(sizeof(Header) + size));
    if (header == nullptr) return nullptr;
    *header = {this, size};
    m_in_use += size;
    return header + 1;
  }

  static void release(void* memory) noexcept {
    Header* header = static_cast<Header*>(memory) - 1;
    header->owner->m_in_use -= header->size;
    std::free(header);
  }

  [[nodiscard]] std::size_t bytes_in_use() const { return m_in_use; }
  [[nodiscard]] std::size_t bytes_reserved() const { return m_in_use; }

 private:
  struct Header {
    Core* owner;
    std::size_t size;
  };
  std::atomic<std::size_t> m_in_use{0};
};

}  // namespace lumen
