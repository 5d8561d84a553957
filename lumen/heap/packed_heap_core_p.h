#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>

#include "lumen/heap/size_class_p.h"
#include "lumen/heap/spin_lock_p.h"
#include "lumen/heap/system_pages_p.h"
#include "lumen/packed_heap.h"

namespace lumen {

/// The slabs of one heap. Blocks are carved off one slab one after the other, so
/// that what is allocated together lies together: an object, its points, the next
/// object.
///
/// 1. Every slab and every large region starts at a multiple of `slab_size`
///    with a Slab header; a block begins within the first `slab_size` bytes,
///    so that masking its pointer finds the header and through it the heap.
/// 2. In a slab a bit is set for each place where a block begins and for the end
///    of the last one: a block is as long as it is to the next bit.
/// 3. A released block is in the list of its size class until it is handed out
///    again or its slab goes.
/// 4. A slab without live blocks goes back to the system, but the two that are
///    carved from, one for small blocks and one for others: they start anew.
/// 5. All slabs and large regions of the heap are chained in `m_all`.
///
/// `m_lock` guards everything.
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
  /// What a released block holds.
  struct FreeBlock {
    FreeBlock* next;
    FreeBlock* previous;
  };
  static constexpr std::size_t kSmallestBlock = sizeof(FreeBlock);
  static constexpr std::size_t kGranule = 8;

  struct Slab {
    Core* owner;
    Slab* next;  ///< in m_all
    Slab* previous;
    std::size_t region_size;
    std::uint32_t live;    ///< blocks handed out
    std::uint32_t carved;  ///< offset of the first byte that is in no block

    [[nodiscard]] char* at(std::size_t offset) { return reinterpret_cast<char*>(this) + offset; }
  };
  /// A slab of blocks; a large region has no more than a Slab.
  struct BlockSlab : Slab {
    static constexpr std::size_t kWordBits = 64;
    std::array<std::uint64_t, slab_size / kGranule / kWordBits> starts;

    void start_anew();
    /// Null when there is no room.
    void* carve(std::size_t block_size);
    [[nodiscard]] std::size_t block_size_at(std::size_t offset) const;

   private:
    void set_start(std::size_t offset) {
      const std::size_t granule = offset / kGranule;
      starts[granule / kWordBits] |= std::uint64_t{1} << (granule % kWordBits);
    }
  };

  /// The blocks that are carved from the same slab.
  enum Kind : std::uint8_t { small, medium };

  void* allocate_block(std::size_t size) noexcept;
  void* carve(Kind kind, std::size_t block_size) noexcept;
  void* allocate_large(std::size_t size) noexcept;
  void release_from(Slab* slab, void* memory) noexcept;
  void release_block(BlockSlab* slab, void* memory) noexcept;
  void retire(BlockSlab* slab) noexcept;
  void link_free(std::size_t class_index, void* memory) noexcept;
  void unlink_free(std::size_t class_index, FreeBlock* block) noexcept;
  [[nodiscard]] std::size_t fresh_bytes() const {
    return static_cast<std::size_t>(m_freshEnd - m_fresh);
  }
  Slab* take_slab() noexcept;
  Slab* take_region(std::size_t region_size) noexcept;
  Slab* start_region(void* pages, std::size_t region_size) noexcept;
  void return_region(Slab* slab) noexcept;

  mutable SpinLock m_lock;
  std::array<FreeBlock*, size_class_count> m_free{};
  std::array<BlockSlab*, 2> m_carved{};  ///< by kind
  Slab* m_all = nullptr;
  // The rest of a huge page, which slabs are taken from.
  char* m_fresh = nullptr;
  char* m_freshEnd = nullptr;
  std::size_t m_inUse = 0;
  std::size_t m_reserved = 0;
};

}  // namespace lumen
