#include "lumen/packed_heap.h"

#include <new>

#ifdef LUMEN_PLAIN_HEAP
#include "lumen/heap/plain_heap_core_p.h"
#else
#include "lumen/heap/packed_heap_core_p.h"
#endif

namespace lumen {

PackedHeap::PackedHeap() : m_core(std::make_unique<Core>()) {}
PackedHeap::~PackedHeap() = default;

void* PackedHeap::allocate(std::size_t size) noexcept {
  return m_core->allocate(size);
}

std::size_t PackedHeap::bytes_in_use() const {
  return m_core->bytes_in_use();
}

std::size_t PackedHeap::bytes_reserved() const {
  return m_core->bytes_reserved();
}

void PackedHeap::release(void* memory) noexcept {
  Core::release(memory);
}

PackedHeap& PackedHeap::process_heap() {
  alignas(PackedHeap) static unsigned char storage[sizeof(PackedHeap)];
  static auto* const heap = new (storage) PackedHeap;
  return *heap;
}

}  // namespace lumen
