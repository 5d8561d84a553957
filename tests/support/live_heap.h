#pragma once

#include <dlfcn.h>

#include <cstddef>
#include <cstdint>
#include <unordered_set>

#include "lumen/packed_heap.h"

// A test program that includes this has an LD_ReleaseMemory of its own, which
// takes the place of the rendering library's and hands every block on to it.

/// A heap that knows which of its blocks are not given back yet, and refuses
/// requests from a given one on. One at a time, used by one thread.
class LiveHeap final : public LumenHeap {
 public:
  static constexpr std::int64_t kNever = INT64_MAX;

  explicit LiveHeap(std::int64_t good_requests = kNever) : m_left(good_requests) { s_only = this; }
  ~LiveHeap() override { s_only = nullptr; }

  void* allocate(std::size_t size) noexcept override {
    ++m_requests;
    if (m_left == 0) return nullptr;
    if (m_left != kNever) --m_left;
    void* block = m_memory.allocate(size);
    m_blocks.insert(block);
    return block;
  }

  /// How many blocks are not given back.
  [[nodiscard]] std::size_t alive() const { return m_blocks.size(); }
  [[nodiscard]] std::int64_t requests() const { return m_requests; }
  void allow(std::int64_t good_requests) { m_left = good_requests; }

  static void note_release(void* block) {
    if (s_only != nullptr) s_only->m_blocks.erase(block);
  }

 private:
  static inline LiveHeap* s_only = nullptr;

  lumen::PackedHeap m_memory;  // the default heap may be made to fail
  std::unordered_set<void*> m_blocks;
  std::int64_t m_requests = 0;
  std::int64_t m_left;
};

[[gnu::used]] inline void LD_ReleaseMemory(void* memory) noexcept {
  using Release = void (*)(void*);
  static const auto next = reinterpret_cast<Release>(dlsym(RTLD_NEXT, "_Z16LD_ReleaseMemoryPv"));
  LiveHeap::note_release(memory);
  next(memory);
}
