#include "displaylist/platform/memory.h"

#include "lumen/packed_heap.h"

LumenHeap::~LumenHeap() = default;

void* LD_AllocateMemory(std::size_t size, LumenHeap* heap) noexcept {
  if (heap != nullptr) return heap->allocate(size);
  return lumen::PackedHeap::process_heap().allocate(size);
}

void LD_ReleaseMemory(void* memory) noexcept {
  if (memory != nullptr) lumen::PackedHeap::release(memory);
}
