#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>

#include "displaylist/platform/memory.h"

/// A stack of plain values on the default heap, which doubles its capacity when
/// it is full. Used by one thread at a time.
template <class T>
class LM_Stack {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  LM_Stack() = default;
  LM_Stack(const LM_Stack&) = delete;
  LM_Stack& operator=(const LM_Stack&) = delete;
  ~LM_Stack() { LD_ReleaseMemory(m_values); }

  [[nodiscard]] bool is_empty() const { return m_size == 0; }
  /// False, with nothing changed, when memory is exhausted.
  [[nodiscard]] bool push(const T& value) {
    if (m_size == m_capacity && !grow()) return false;
    m_values[m_size++] = value;
    return true;
  }
  /// Takes the value off that was pushed last; there is one.
  T pop() { return m_values[--m_size]; }
  /// Drops all values and keeps their room.
  void clear() { m_size = 0; }

 private:
  bool grow() {
    constexpr std::size_t first_capacity = 16;
    const std::size_t capacity = m_capacity == 0 ? first_capacity : 2 * m_capacity;
    auto* values = static_cast<T*>(LD_AllocateMemory(capacity * sizeof(T), nullptr));
    if (values == nullptr) return false;
    if (m_size != 0) std::memcpy(values, m_values, m_size * sizeof(T));
    LD_ReleaseMemory(std::exchange(m_values, values));
    m_capacity = capacity;
    return true;
  }

  T* m_values = nullptr;
  std::size_t m_size = 0;
  std::size_t m_capacity = 0;
};
