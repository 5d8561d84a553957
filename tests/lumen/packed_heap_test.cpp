#include "lumen/packed_heap.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <thread>
#include <vector>

using lumen::PackedHeap;

namespace {

void release_all(std::vector<void*>& blocks) {
  for (void* block : blocks) LD_ReleaseMemory(block);
  blocks.clear();
}

TEST(PackedHeap, LaysObjectsOfOneSizeDensely) {
  for (const std::size_t size : {40U, 48U, 72U, 104U}) {
    PackedHeap heap;
    std::vector<void*> blocks;
    const std::size_t first_slab = [&] {
      blocks.push_back(LD_AllocateMemory(size, &heap));
      return heap.bytes_reserved();
    }();
    while (blocks.size() < 1000) blocks.push_back(LD_AllocateMemory(size, &heap));
    EXPECT_EQ(heap.bytes_in_use(), 1000 * size);
    EXPECT_LE(heap.bytes_reserved() - first_slab, 1000 * (size + 8));
    release_all(blocks);
    EXPECT_EQ(heap.bytes_in_use(), 0U);
  }
}

#ifndef LUMEN_PLAIN_HEAP
// What is allocated together is used together: an object, then its points.
TEST(PackedHeap, BlocksOfAllSizesLieInTheOrderInWhichTheyAreAskedFor) {
  PackedHeap heap;
  const char* end = nullptr;
  int apart = 0;
  for (int i = 0; i < 3000; ++i) {
    for (const std::size_t size : {48U, 32U, 200U, 72U, 256U}) {
      const auto* block = static_cast<const char*>(LD_AllocateMemory(size, &heap));
      if (block != end) ++apart;
      end = block + size;
    }
  }
  EXPECT_LE(apart, static_cast<int>(heap.bytes_reserved() / 65536));
}

TEST(PackedHeap, AHeapThatWasEmptiedLaysOutAnew) {
  PackedHeap heap;
  std::vector<void*> blocks;
  const auto fill = [&] {
    for (int i = 0; i < 500; ++i) blocks.push_back(LD_AllocateMemory(i % 2 == 0 ? 48 : 32, &heap));
    return blocks;
  };
  const std::vector<void*> at_first = fill();
  release_all(blocks);
  EXPECT_EQ(fill(), at_first);
  release_all(blocks);
}
#endif

TEST(PackedHeap, SlabsWithLiveBlocksAmongReleasedOnesStay) {
  PackedHeap heap;
  std::vector<std::uint32_t*> kept;
  std::vector<void*> gone;
  for (std::uint32_t i = 0; i < 20000; ++i) {
    auto* block = static_cast<std::uint32_t*>(LD_AllocateMemory(8 + i % 700, &heap));
    *block = i;
    if (i % 97 == 0) {
      kept.push_back(block);
    } else {
      gone.push_back(block);
    }
  }
  release_all(gone);
  for (std::uint32_t i = 0; i < 20000; ++i) gone.push_back(LD_AllocateMemory(i % 700, &heap));
  for (void* block : gone) std::memset(block, 0xFF, 1);
  for (std::size_t i = 0; i < kept.size(); ++i) EXPECT_EQ(*kept[i], i * 97);
  release_all(gone);
  for (std::uint32_t* block : kept) LD_ReleaseMemory(block);
  EXPECT_EQ(heap.bytes_in_use(), 0U);
}

TEST(PackedHeap, BlocksAreAlignedAndDoNotOverlap) {
  PackedHeap heap;
  std::mt19937 random(7);
  std::uniform_int_distribution<std::size_t> any_size(0, 20000);
  struct Block {
    unsigned char* memory;
    std::size_t size;
    unsigned char mark;
  };
  std::vector<Block> blocks;
  for (int i = 0; i < 3000; ++i) {
    const std::size_t size = i % 3 == 0 ? any_size(random) : any_size(random) % 300;
    const auto mark = static_cast<unsigned char>(i);
    auto* memory = static_cast<unsigned char*>(LD_AllocateMemory(size, &heap));
    ASSERT_NE(memory, nullptr);
    ASSERT_EQ(reinterpret_cast<std::uintptr_t>(memory) % 8, 0U);
    std::memset(memory, mark, size);
    blocks.push_back({memory, size, mark});
    if (i % 4 != 0) continue;
    const std::size_t victim = random() % blocks.size();
    std::swap(blocks[victim], blocks.back());
    LD_ReleaseMemory(blocks.back().memory);
    blocks.pop_back();
  }
  for (const Block& block : blocks) {
    for (std::size_t i = 0; i < block.size; ++i) ASSERT_EQ(block.memory[i], block.mark);
    LD_ReleaseMemory(block.memory);
  }
  EXPECT_EQ(heap.bytes_in_use(), 0U);
}

TEST(PackedHeap, EmptySlabsGoBackButOne) {
  PackedHeap heap;
  std::vector<void*> blocks;
  blocks.push_back(LD_AllocateMemory(48, &heap));
  const std::size_t one = heap.bytes_reserved();
  while (blocks.size() < 20000) blocks.push_back(LD_AllocateMemory(48, &heap));
  EXPECT_GT(heap.bytes_reserved(), one);
  release_all(blocks);
  EXPECT_LE(heap.bytes_reserved(), one);
}

TEST(PackedHeap, AReleasedBlockIsHandedOutAgain) {
  PackedHeap heap;
  std::vector<void*> blocks;
  for (int i = 0; i < 5000; ++i) blocks.push_back(LD_AllocateMemory(72, &heap));
  const std::size_t reserved = heap.bytes_reserved();
  for (std::size_t i = 0; i < blocks.size(); i += 2) LD_ReleaseMemory(blocks[i]);
  for (std::size_t i = 0; i < blocks.size(); i += 2) blocks[i] = LD_AllocateMemory(72, &heap);
  EXPECT_EQ(heap.bytes_reserved(), reserved);
  release_all(blocks);
}

TEST(PackedHeap, LargeBlocksGoBackAtOnce) {
  PackedHeap heap;
  void* block = LD_AllocateMemory(10'000'000, &heap);
  ASSERT_NE(block, nullptr);
  std::memset(block, 1, 10'000'000);
  EXPECT_GE(heap.bytes_reserved(), 10'000'000U);
  LD_ReleaseMemory(block);
  EXPECT_EQ(heap.bytes_reserved(), 0U);
}

TEST(PackedHeap, SizesThatCannotBeGiveNull) {
  PackedHeap heap;
  for (std::size_t less = 0; less < 200000; less += 9973) {
    EXPECT_EQ(LD_AllocateMemory(SIZE_MAX - less, &heap), nullptr);
    EXPECT_EQ(LD_AllocateMemory(SIZE_MAX - less, nullptr), nullptr);
  }
  EXPECT_EQ(LD_AllocateMemory(SIZE_MAX / 2, &heap), nullptr);
  EXPECT_EQ(heap.bytes_in_use(), 0U);
  EXPECT_EQ(heap.bytes_reserved(), 0U);
}

TEST(PackedHeap, TheNullHeapServesAndCounts) {
  PackedHeap& heap = PackedHeap::process_heap();
  const std::size_t before = heap.bytes_in_use();
  void* block = LD_AllocateMemory(64, nullptr);
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(heap.bytes_in_use(), before + 64);
  LD_ReleaseMemory(block);
  EXPECT_EQ(heap.bytes_in_use(), before);
  LD_ReleaseMemory(nullptr);
  EXPECT_EQ(heap.bytes_in_use(), before);
}

TEST(PackedHeap, AClientsHeapIsAskedByName) {
  class Refusing final : public LumenHeap {
   public:
    void* allocate(std::size_t size) noexcept override {
      asked = size;
      return nullptr;
    }
    std::size_t asked = 0;
  } heap;
  EXPECT_EQ(LD_AllocateMemory(24, &heap), nullptr);
  EXPECT_EQ(heap.asked, 24U);
}

TEST(PackedHeap, AnyThreadMayRelease) {
  PackedHeap heap;
  std::vector<void*> blocks;
  for (int i = 0; i < 4000; ++i) blocks.push_back(LD_AllocateMemory(40, &heap));
  const auto work = [&heap, &blocks](std::size_t start) {
    for (std::size_t i = start; i < blocks.size(); i += 2) {
      void* other = LD_AllocateMemory(i % 500, &heap);
      LD_ReleaseMemory(blocks[i]);
      LD_ReleaseMemory(other);
    }
  };
  std::thread even(work, 0);
  std::thread odd(work, 1);
  even.join();
  odd.join();
  EXPECT_EQ(heap.bytes_in_use(), 0U);
}

}  // namespace
