#pragma once

#include <bit>
#include <cstdint>
#include <type_traits>

#include "displaylist/core/geometry.h"
#include "displaylist/platform/stream.h"

/// How values become bytes: as the machine holds them, little-endian.
namespace files::coding {

static_assert(std::endian::native == std::endian::little);

template <class T>
void put(ZtFsStream& stream, T value) {
  static_assert(std::is_arithmetic_v<T> && !std::is_same_v<T, bool>);
  stream.write(&value, sizeof value);
}

inline void put(ZtFsStream& stream, const DL::PointTemplate<long>& point) {
  put(stream, point.x);
  put(stream, point.y);
}

inline void put(ZtFsStream& stream, const DL::PointTemplate<double>& point) {
  put(stream, point.x);
  put(stream, point.y);
}

inline void put(ZtFsStream& stream, const DL::BoundsTemplate<long>& bounds) {
  put(stream, bounds.min);
  put(stream, bounds.max);
}

/// False, with the number 0, when the stream has ended.
template <class T>
[[nodiscard]] bool get(ZtFsStream& stream, T& value) {
  static_assert(std::is_arithmetic_v<T> && !std::is_same_v<T, bool>);
  std::int32_t size = sizeof value;
  stream.read(&value, &size);
  if (size == static_cast<std::int32_t>(sizeof value)) return true;
  value = 0;
  return false;
}

[[nodiscard]] inline bool get(ZtFsStream& stream, DL::PointTemplate<long>& point) {
  return get(stream, point.x) && get(stream, point.y);
}

[[nodiscard]] inline bool get(ZtFsStream& stream, DL::PointTemplate<double>& point) {
  return get(stream, point.x) && get(stream, point.y);
}

[[nodiscard]] inline bool get(ZtFsStream& stream, DL::BoundsTemplate<long>& bounds) {
  return get(stream, bounds.min) && get(stream, bounds.max);
}

}  // namespace files::coding
