#pragma once

#include <cstddef>
#include <vector>

/// While one exists, notes the size of every request to the general allocator
/// from this thread. The program replaces the general allocator for it.
class AllocationCounter {
 public:
  static constexpr std::size_t kMost = 64;

  AllocationCounter() { s_watching = this; }
  AllocationCounter(const AllocationCounter&) = delete;
  AllocationCounter& operator=(const AllocationCounter&) = delete;
  ~AllocationCounter() { s_watching = nullptr; }

  /// The sizes asked for so far, the first kMost of them.
  [[nodiscard]] std::vector<std::size_t> sizes() {
    s_watching = nullptr;
    std::vector<std::size_t> result(m_sizes, m_sizes + m_count);
    s_watching = this;
    return result;
  }

  static void note(std::size_t size) {
    if (s_watching == nullptr || s_watching->m_count == kMost) return;
    s_watching->m_sizes[s_watching->m_count++] = size;
  }

 private:
  static inline thread_local AllocationCounter* s_watching = nullptr;

  std::size_t m_sizes[kMost] = {};
  std::size_t m_count = 0;
};
