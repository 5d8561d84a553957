#pragma once

#include <condition_variable>
#include <mutex>

namespace DL {

/// A signal from one thread to another, used up by who waited for it.
class Event {
 public:
  void set() {
    {
      const std::lock_guard lock(m_mutex);
      m_is_set = true;
    }
    m_changed.notify_one();
  }
  /// Returns once the event is set, which it is not any more then.
  void wait() {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_is_set; });
    m_is_set = false;
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
  bool m_is_set = false;
};

}  // namespace DL
