#pragma once

#include <atomic>
#include <concepts>
#include <cstdint>
#include <utility>

/// Base of the shared objects of the rendering library: a reference count that
/// any thread may change. Whoever takes the count from 1 to 0 deletes the object.
class LM_Counted {
 public:
  LM_Counted() = default;
  /// A copy is a new object: it starts with no references of its own.
  LM_Counted(const LM_Counted&) noexcept {}
  LM_Counted& operator=(const LM_Counted&) noexcept { return *this; }
  virtual ~LM_Counted() = default;

  void add_reference() const noexcept { m_references.fetch_add(1, std::memory_order_relaxed); }
  void release_reference() const noexcept {
    if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
  }
  /// Whether more than one handle holds the object.
  [[nodiscard]] bool is_shared() const noexcept {
    return m_references.load(std::memory_order_acquire) > 1;
  }

 private:
  mutable std::atomic<std::int32_t> m_references{0};
};

/// A counted pointer to an LM_Counted object; may be null. One handle is used
/// by one thread at a time, the object behind it may be held from many.
template <class T>
class LM_Handle {
 public:
  LM_Handle() noexcept = default;
  LM_Handle(std::nullptr_t) noexcept {}
  explicit LM_Handle(T* object) noexcept : m_object(object) {
    if (m_object != nullptr) m_object->add_reference();
  }
  LM_Handle(const LM_Handle& other) noexcept : LM_Handle(other.m_object) {}
  template <class Derived>
  requires std::derived_from<Derived, T> LM_Handle(const LM_Handle<Derived>& other)
  noexcept : LM_Handle(other.get()) {}
  LM_Handle(LM_Handle&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
  LM_Handle& operator=(LM_Handle other) noexcept {
    std::swap(m_object, other.m_object);
    return *this;
  }
  ~LM_Handle() {
    if (m_object != nullptr) m_object->release_reference();
  }

  [[nodiscard]] T* get() const noexcept { return m_object; }
  T* operator->() const noexcept { return m_object; }
  T& operator*() const noexcept { return *m_object; }
  explicit operator bool() const noexcept { return m_object != nullptr; }
  friend bool operator==(const LM_Handle&, const LM_Handle&) = default;

 private:
  T* m_object = nullptr;
};

/// Creates a counted object, held by the returned handle.
template <class T, class... Arguments>
LM_Handle<T> LM_Create(Arguments&&... arguments) {
  return LM_Handle<T>(new T(std::forward<Arguments>(arguments)...));
}
