#pragma once

#include <array>
#include <cstdint>
#include <mutex>

#include "lumen/heap/size_class_p.h"
#include "lumen/heap/system_pages_p.h"
#include "lumen/packed_heap.h"

namespace lumen {

/// The slabs of one heap.
///
/// 1. Every slab and every large region starts at a multiple of `slab_size`
///    with a Slab header; a block begins within the first `slab_size` bytes,
///    so that masking its pointer finds the header and through it the heap.
/// 2. A slab of a size class is in its class's list exactly when it has a
///    block to give: one on its free list, or room that was never carved.
/// 3. At most one slab without live blocks is kept, as `m_spare`, in no list.
/// 4. All slabs and large regions of the heap are chained in `m_all`.
///
/// `m_mutex` guards everything.
class PackedHeap::Core {
 public:
  Core() = default;
  Core(const Core&) = delete;
  Core& operator=(const Core&) = delete;
  ~Core();

  void* allocate(std::size_t size) noexcept;
  static void release(void* memory) noexcept;

  [[nodiscard]] std::size_t bytes_in_use() const;
  [[nodiscard]] std::size_t bytes_reserved() const;

 private:
  struct FreeBlock {
    FreeBlock* next;
  };

  struct Slab {
    Core* owner;
    Slab* next;  ///< in m_all
    Slab* previous;
    Slab* next_usable;  ///< in the list of its class
    Slab* previous_usable;
    FreeBlock* free_blocks;
    std::size_t region_size;
    std::size_t block_size;  ///< of a large region: all but the header
    std::uint32_t class_index;
    std::uint32_t live;
    std::uint32_t carved;
    std::uint32_t capacity;

    [[nodiscard]] char* block(std::size_t index) {
      return reinterpret_cast<char*>(this) + sizeof(Slab) + index * block_size;
    }
    [[nodiscard]] bool has_room() const { return free_blocks != nullptr || carved < capacity; }
  };
  static constexpr std::uint32_t large_class = UINT32_MAX;

  void* allocate_small(std::size_t size) noexcept;
  void* allocate_large(std::size_t size) noexcept;
  void release_from(Slab* slab, void* memory) noexcept;
  void retire(Slab* slab) noexcept;
  Slab* new_slab(std::size_t class_index) noexcept;
  Slab* take_region(std::size_t region_size) noexcept;
  void return_region(Slab* slab) noexcept;
  void link_usable(Slab* slab) noexcept;
  void unlink_usable(Slab* slab) noexcept;

  mutable std::mutex m_mutex;
  std::array<Slab*, size_class_count> m_usable{};
  Slab* m_all = nullptr;
  Slab* m_spare = nullptr;
  std::size_t m_in_use = 0;
  std::size_t m_reserved = 0;
};

}  // namespace lumen
