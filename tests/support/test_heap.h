#pragma once

#include <cstddef>
#include <cstdint>

#include "displaylist/platform/memory.h"

/// A heap that counts what it is asked for and refuses from a given request on.
class TestHeap final : public LumenHeap {
 public:
  static constexpr std::int64_t kNever = INT64_MAX;

  explicit TestHeap(std::int64_t fail_at_request = kNever) : m_fail_at(fail_at_request) {}

  void* allocate(std::size_t size) noexcept override {
    if (m_requests++ >= m_fail_at) return nullptr;
    m_bytes += size;
    return LD_AllocateMemory(size, nullptr);
  }

  [[nodiscard]] std::int64_t requests() const { return m_requests; }
  [[nodiscard]] std::size_t bytes() const { return m_bytes; }
  /// The requests counted from now on are refused from the n-th on.
  void fail_after(std::int64_t n) { m_fail_at = m_requests + n; }

 private:
  std::int64_t m_fail_at;
  std::int64_t m_requests = 0;
  std::size_t m_bytes = 0;
};
