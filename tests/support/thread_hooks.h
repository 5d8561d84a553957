#pragma once

#include <dlfcn.h>
#include <pthread.h>
#include <sys/resource.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <iterator>
#include <mutex>
#include <thread>

// A test program that includes this has a setpriority of its own, which takes
// the place of the system's and hands every call on to it.

/// Called with the priority that each new worker thread asks for, on that
/// thread, for its own lifetime. One at a time.
class PriorityHook {
 public:
  explicit PriorityHook(std::function<void(int priority)> hook) { set(std::move(hook)); }
  PriorityHook(const PriorityHook&) = delete;
  PriorityHook& operator=(const PriorityHook&) = delete;
  ~PriorityHook() { set(nullptr); }

  static void call(int priority) {
    const std::lock_guard lock(s_mutex);
    if (s_hook) s_hook(priority);
  }

 private:
  static void set(std::function<void(int)> hook) {
    const std::lock_guard lock(s_mutex);
    s_hook = std::move(hook);
  }

  static inline std::mutex s_mutex;
  static inline std::function<void(int)> s_hook;
};

extern "C" [[gnu::used, gnu::visibility("default")]] inline int setpriority(
    __priority_which_t which, id_t who, int priority) noexcept {
  using SetPriority = int (*)(__priority_which_t, id_t, int);
  static const auto next = reinterpret_cast<SetPriority>(dlsym(RTLD_NEXT, "setpriority"));
  PriorityHook::call(priority);
  return next(which, who, priority);
}

/// While one exists, no thread can be started: its stack would not fit the
/// address space.
class NoMoreThreads {
 public:
  NoMoreThreads() {
    pthread_getattr_default_np(&m_usual);
    pthread_attr_t huge;
    pthread_attr_init(&huge);
    pthread_attr_setstacksize(&huge, std::size_t{1} << 60);
    pthread_setattr_default_np(&huge);
    pthread_attr_destroy(&huge);
  }
  NoMoreThreads(const NoMoreThreads&) = delete;
  NoMoreThreads& operator=(const NoMoreThreads&) = delete;
  ~NoMoreThreads() {
    pthread_setattr_default_np(&m_usual);
    pthread_attr_destroy(&m_usual);
  }

 private:
  pthread_attr_t m_usual;
};

/// How many threads this process has.
inline std::ptrdiff_t running_threads() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/task"),
                       std::filesystem::directory_iterator());
}

/// The same before a test starts any: a sanitizer keeps a thread of its own from
/// the first one on.
inline std::ptrdiff_t threads_at_rest() {
  std::thread([] {}).join();
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  return running_threads();
}

/// Waits until there are as many threads, for a thread that was joined goes a
/// moment later; false when there never are.
inline bool becomes_running_threads(std::ptrdiff_t count) {
  for (int i = 0; i < 5000 && running_threads() != count; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return running_threads() == count;
}
