#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "displaylist/platform/memory.h"

namespace DL {

/// Room for `count` elements, for one at least; null when there is no memory.
/// Given back with LD_ReleaseMemory.
template <class T>
[[nodiscard]] T* allocate_array(std::int32_t count, LumenHeap* heap) {
  static_assert(std::is_trivially_copyable_v<T>);
  constexpr std::size_t largest = std::numeric_limits<std::size_t>::max();
  const auto elements = static_cast<std::size_t>(std::max(count, 1));
  const std::size_t bytes = elements > largest / sizeof(T) ? largest : elements * sizeof(T);
  return static_cast<T*>(LD_AllocateMemory(bytes, heap));
}

/// A copy of `count` elements of `source`, of none when `count` is below 1. Null
/// when there is no memory, or no source to take elements from.
template <class T>
[[nodiscard]] T* copy_array(const T* source, std::int32_t count, LumenHeap* heap) {
  if (source == nullptr && count > 0) return nullptr;
  T* copy = allocate_array<T>(count, heap);
  if (copy != nullptr && count > 0) std::copy_n(source, count, copy);
  return copy;
}

}  // namespace DL
