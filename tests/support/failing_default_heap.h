#pragma once

#include <dlfcn.h>

#include <cstdint>

#include "displaylist/platform/memory.h"

// A test program that includes this has an LD_AllocateMemory of its own, which
// takes the place of the rendering library's and hands every request on to it.

/// While one exists, the default heap refuses every request but the first ones.
/// Heaps named in a request are left alone.
class FailingDefaultHeap {
 public:
  explicit FailingDefaultHeap(std::int64_t good_requests = 0) { s_left = good_requests; }
  FailingDefaultHeap(const FailingDefaultHeap&) = delete;
  FailingDefaultHeap& operator=(const FailingDefaultHeap&) = delete;
  ~FailingDefaultHeap() { s_left = INT64_MAX; }

  static bool refuses() {
    if (s_left == 0) return true;
    if (s_left != INT64_MAX) --s_left;
    return false;
  }

 private:
  static inline std::int64_t s_left = INT64_MAX;
};

[[gnu::used]] inline void* LD_AllocateMemory(std::size_t size, LumenHeap* heap) noexcept {
  using Allocate = void* (*)(std::size_t, LumenHeap*);
  static const auto next =
      reinterpret_cast<Allocate>(dlsym(RTLD_NEXT, "_Z17LD_AllocateMemorymP9LumenHeap"));
  if (heap == nullptr && FailingDefaultHeap::refuses()) return nullptr;
  return next(size, heap);
}
