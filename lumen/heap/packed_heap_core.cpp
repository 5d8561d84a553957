#ifndef LUMEN_PLAIN_HEAP

#include "lumen/heap/packed_heap_core_p.h"

#include <new>

namespace lumen {

PackedHeap::Core::~Core() {
  while (m_all != nullptr) return_region(m_all);
}

void* PackedHeap::Core::allocate(std::size_t size) noexcept {
  const std::lock_guard lock(m_mutex);
  return size <= largest_class_size ? allocate_small(size) : allocate_large(size);
}

void PackedHeap::Core::release(void* memory) noexcept {
  const auto address = reinterpret_cast<std::uintptr_t>(memory);
  auto* slab = reinterpret_cast<Slab*>(address & ~(std::uintptr_t{slab_size} - 1));
  Core* owner = slab->owner;
  const std::lock_guard lock(owner->m_mutex);
  owner->release_from(slab, memory);
}

std::size_t PackedHeap::Core::bytes_in_use() const {
  const std::lock_guard lock(m_mutex);
  return m_in_use;
}

std::size_t PackedHeap::Core::bytes_reserved() const {
  const std::lock_guard lock(m_mutex);
  return m_reserved;
}

void* PackedHeap::Core::allocate_small(std::size_t size) noexcept {
  const std::size_t class_index = size_class(size);
  Slab* slab = m_usable[class_index];
  if (slab == nullptr) slab = new_slab(class_index);
  if (slab == nullptr) return nullptr;

  void* memory = slab->free_blocks;
  if (memory != nullptr) {
    slab->free_blocks = slab->free_blocks->next;
  } else {
    memory = slab->block(slab->carved++);
  }
  ++slab->live;
  m_in_use += slab->block_size;
  if (!slab->has_room()) unlink_usable(slab);
  return memory;
}

void* PackedHeap::Core::allocate_large(std::size_t size) noexcept {
  // Whole slabs, of which the system backs only the pages that are touched:
  // neighbouring regions stay one mapping, of which a process has few.
  if (size > PTRDIFF_MAX - sizeof(Slab) - slab_size) return nullptr;
  const std::size_t region_size = (size + sizeof(Slab) + slab_size - 1) / slab_size * slab_size;
  Slab* slab = take_region(region_size);
  if (slab == nullptr) return nullptr;
  slab->class_index = large_class;
  slab->block_size = region_size - sizeof(Slab);
  slab->live = 1;
  m_in_use += slab->block_size;
  return slab->block(0);
}

void PackedHeap::Core::release_from(Slab* slab, void* memory) noexcept {
  m_in_use -= slab->block_size;
  if (slab->class_index == large_class) return return_region(slab);
  if (!slab->has_room()) link_usable(slab);
  slab->free_blocks = new (memory) FreeBlock{slab->free_blocks};
  if (--slab->live == 0) retire(slab);
}

void PackedHeap::Core::retire(Slab* slab) noexcept {
  unlink_usable(slab);
  if (m_spare == nullptr) {
    m_spare = slab;
  } else {
    return_region(slab);
  }
}

PackedHeap::Core::Slab* PackedHeap::Core::new_slab(std::size_t class_index) noexcept {
  Slab* slab = m_spare;
  m_spare = nullptr;
  if (slab == nullptr) slab = take_region(slab_size);
  if (slab == nullptr) return nullptr;
  slab->class_index = static_cast<std::uint32_t>(class_index);
  slab->block_size = class_block_size(class_index);
  slab->capacity = static_cast<std::uint32_t>((slab_size - sizeof(Slab)) / slab->block_size);
  slab->carved = 0;
  slab->free_blocks = nullptr;
  link_usable(slab);
  return slab;
}

PackedHeap::Core::Slab* PackedHeap::Core::take_region(std::size_t region_size) noexcept {
  void* pages = take_pages(region_size);
  if (pages == nullptr) return nullptr;
  auto* slab = new (pages) Slab{};
  slab->owner = this;
  slab->region_size = region_size;
  slab->next = m_all;
  if (m_all != nullptr) m_all->previous = slab;
  m_all = slab;
  m_reserved += region_size;
  return slab;
}

void PackedHeap::Core::return_region(Slab* slab) noexcept {
  if (slab->next != nullptr) slab->next->previous = slab->previous;
  (slab->previous != nullptr ? slab->previous->next : m_all) = slab->next;
  m_reserved -= slab->region_size;
  return_pages(slab, slab->region_size);
}

void PackedHeap::Core::link_usable(Slab* slab) noexcept {
  Slab*& first = m_usable[slab->class_index];
  slab->previous_usable = nullptr;
  slab->next_usable = first;
  if (first != nullptr) first->previous_usable = slab;
  first = slab;
}

void PackedHeap::Core::unlink_usable(Slab* slab) noexcept {
  if (slab->next_usable != nullptr) slab->next_usable->previous_usable = slab->previous_usable;
  (slab->previous_usable != nullptr ? slab->previous_usable->next_usable
                                    : m_usable[slab->class_index]) = slab->next_usable;
}

}  // namespace lumen

#endif
