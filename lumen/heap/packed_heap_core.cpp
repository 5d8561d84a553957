#ifndef LUMEN_PLAIN_HEAP

#include "lumen/heap/packed_heap_core_p.h"

#include <algorithm>
#include <bit>
#include <new>
#include <utility>

namespace lumen {

PackedHeap::Core::~Core() {
  while (m_all != nullptr) return_region(m_all);
  if (fresh_bytes() != 0) return_pages(m_fresh, fresh_bytes());
}

void* PackedHeap::Core::allocate(std::size_t size) noexcept {
  const std::lock_guard lock(m_lock);
  return size <= largest_class_size ? allocate_block(size) : allocate_large(size);
}

void PackedHeap::Core::release(void* memory) noexcept {
  const auto address = reinterpret_cast<std::uintptr_t>(memory);
  auto* slab = reinterpret_cast<Slab*>(address & ~(std::uintptr_t{slab_size} - 1));
  Core* owner = slab->owner;
  const std::lock_guard lock(owner->m_lock);
  owner->release_from(slab, memory);
}

std::size_t PackedHeap::Core::bytes_in_use() const {
  const std::lock_guard lock(m_lock);
  return m_inUse;
}

std::size_t PackedHeap::Core::bytes_reserved() const {
  const std::lock_guard lock(m_lock);
  return m_reserved + fresh_bytes();
}

void PackedHeap::Core::BlockSlab::start_anew() {
  starts.fill(0);
  carved = sizeof(BlockSlab);
  set_start(carved);
}

void* PackedHeap::Core::BlockSlab::carve(std::size_t block_size) {
  // The bit of the end needs a place within the slab.
  if (carved + block_size >= slab_size) return nullptr;
  char* block = at(carved);
  carved += static_cast<std::uint32_t>(block_size);
  set_start(carved);
  return block;
}

std::size_t PackedHeap::Core::BlockSlab::block_size_at(std::size_t offset) const {
  const std::size_t behind = offset / kGranule + 1;
  std::size_t word = behind / kWordBits;
  std::uint64_t bits = starts[word] >> (behind % kWordBits) << (behind % kWordBits);
  while (bits == 0) bits = starts[++word];
  const std::size_t end = word * kWordBits + static_cast<std::size_t>(std::countr_zero(bits));
  return end * kGranule - offset;
}

void* PackedHeap::Core::allocate_block(std::size_t size) noexcept {
  const std::size_t class_index = size_class(std::max(size, kSmallestBlock));
  const std::size_t block_size = class_block_size(class_index);
  void* memory = m_free[class_index];
  if (memory != nullptr) {
    unlink_free(class_index, m_free[class_index]);
  } else {
    memory = carve(block_size <= largest_dense_size ? small : medium, block_size);
    if (memory == nullptr) return nullptr;
  }
  const auto address = reinterpret_cast<std::uintptr_t>(memory);
  reinterpret_cast<Slab*>(address & ~(std::uintptr_t{slab_size} - 1))->live += 1;
  m_inUse += block_size;
  return memory;
}

void* PackedHeap::Core::carve(Kind kind, std::size_t block_size) noexcept {
  BlockSlab*& carved = m_carved[kind];
  void* memory = carved == nullptr ? nullptr : carved->carve(block_size);
  if (memory != nullptr) return memory;
  auto* slab = static_cast<BlockSlab*>(take_slab());
  if (slab == nullptr) return nullptr;
  slab->start_anew();
  // One without live blocks starts anew, and so has room.
  carved = slab;
  return slab->carve(block_size);
}

void* PackedHeap::Core::allocate_large(std::size_t size) noexcept {
  // Whole slabs, of which the system backs only the pages that are touched:
  // neighbouring regions stay one mapping, of which a process has few.
  if (size > PTRDIFF_MAX - sizeof(Slab) - slab_size) return nullptr;
  const std::size_t region_size = (size + sizeof(Slab) + slab_size - 1) / slab_size * slab_size;
  Slab* slab = take_region(region_size);
  if (slab == nullptr) return nullptr;
  slab->live = 1;
  m_inUse += region_size - sizeof(Slab);
  return slab->at(sizeof(Slab));
}

void PackedHeap::Core::release_from(Slab* slab, void* memory) noexcept {
  // Only a large region has a block right behind the header.
  if (memory != slab->at(sizeof(Slab))) return release_block(static_cast<BlockSlab*>(slab), memory);
  m_inUse -= slab->region_size - sizeof(Slab);
  return_region(slab);
}

void PackedHeap::Core::release_block(BlockSlab* slab, void* memory) noexcept {
  const auto offset = static_cast<std::size_t>(static_cast<char*>(memory) - slab->at(0));
  const std::size_t block_size = slab->block_size_at(offset);
  m_inUse -= block_size;
  link_free(size_class(block_size), memory);
  if (--slab->live == 0) retire(slab);
}

void PackedHeap::Core::retire(BlockSlab* slab) noexcept {
  for (std::size_t offset = sizeof(BlockSlab); offset < slab->carved;) {
    const std::size_t block_size = slab->block_size_at(offset);
    unlink_free(size_class(block_size), reinterpret_cast<FreeBlock*>(slab->at(offset)));
    offset += block_size;
  }
  if (slab == m_carved[small] || slab == m_carved[medium]) {
    slab->start_anew();
  } else {
    return_region(slab);
  }
}

void PackedHeap::Core::link_free(std::size_t class_index, void* memory) noexcept {
  FreeBlock*& first = m_free[class_index];
  auto* block = new (memory) FreeBlock{first, nullptr};
  if (first != nullptr) first->previous = block;
  first = block;
}

void PackedHeap::Core::unlink_free(std::size_t class_index, FreeBlock* block) noexcept {
  if (block->next != nullptr) block->next->previous = block->previous;
  (block->previous != nullptr ? block->previous->next : m_free[class_index]) = block->next;
}

PackedHeap::Core::Slab* PackedHeap::Core::take_slab() noexcept {
  // A heap that has grown large goes on growing. Huge pages come at once, and
  // whoever reads along the heap misses fewer addresses.
  constexpr std::size_t large_heap = 8 * huge_page_size;
  if (fresh_bytes() == 0 && m_reserved >= large_heap) {
    m_fresh = static_cast<char*>(take_huge_page());
    m_freshEnd = m_fresh == nullptr ? nullptr : m_fresh + huge_page_size;
  }
  if (fresh_bytes() == 0) return take_region(slab_size);
  return start_region(std::exchange(m_fresh, m_fresh + slab_size), slab_size);
}

PackedHeap::Core::Slab* PackedHeap::Core::take_region(std::size_t region_size) noexcept {
  void* pages = take_pages(region_size);
  return pages == nullptr ? nullptr : start_region(pages, region_size);
}

PackedHeap::Core::Slab* PackedHeap::Core::start_region(void* pages,
                                                       std::size_t region_size) noexcept {
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

}  // namespace lumen

#endif
