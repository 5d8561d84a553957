#pragma once

#include <atomic>
#include <thread>

namespace lumen {

/// A lock that is held for some dozen instructions and seldom waited for.
class SpinLock {
 public:
  void lock() noexcept {
    while (m_held.test_and_set(std::memory_order_acquire)) std::this_thread::yield();
  }
  void unlock() noexcept { m_held.clear(std::memory_order_release); }

 private:
  std::atomic_flag m_held;
};

}  // namespace lumen
