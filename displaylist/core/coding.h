#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "displaylist/core/geometry.h"
#include "displaylist/core/tags.h"
#include "displaylist/platform/stream.h"

/// How values become bytes: as the machine holds them. For the library and for
/// clients' own drawables. Into memory that the stream lends they are copied;
/// else each number is one call of the stream.
namespace DL::coding {

static_assert(std::endian::native == std::endian::little,
              "streams hold the machine's own values, which are little-endian");

/// Numbers of 1, 2, 4 or 8 bytes.
template <class T>
inline constexpr bool is_number = std::is_arithmetic_v<T> && !std::is_same_v<T, bool>;

/// Writes the bytes of a number by a call.
template <class T>
void write_by_call(ZtFsStream& stream, T value) {
  static_assert(is_number<T>);
  stream.write_through(&value, sizeof value);
}

/// Reads the bytes of a number by a call; false, with the number 0, when the
/// stream has ended.
template <class T>
[[nodiscard]] bool read_by_call(ZtFsStream& stream, T& value) {
  static_assert(is_number<T>);
  std::int32_t size = sizeof value;
  stream.read(&value, &size);
  if (size == static_cast<std::int32_t>(sizeof value)) return true;
  value = 0;
  return false;
}

template <class T>
void write(ZtFsStream& stream, T value) {
  // Whoever writes a chain of records is to see its end.
  if constexpr (std::is_integral_v<T> && sizeof(T) == sizeof(tag::kEnd)) {
    if (static_cast<std::uint32_t>(value) == tag::kEnd) return stream.write(&value, sizeof value);
  }
  if (!stream.put(&value, sizeof value)) write_by_call(stream, value);
}

template <class T>
void write(ZtFsStream& stream, const PointTemplate<T>& point) {
  if (stream.put(&point, sizeof point)) return;
  write_by_call(stream, point.x);
  write_by_call(stream, point.y);
}

template <class T>
void write(ZtFsStream& stream, const BoundsTemplate<T>& bounds) {
  write(stream, bounds.min);
  write(stream, bounds.max);
}

/// Writes `count` numbers or points; null when there are none.
template <class T>
void write_array(ZtFsStream& stream, const T* values, std::size_t count) {
  if (stream.put(values, count * sizeof *values)) return;
  for (std::size_t i = 0; i < count; ++i) write(stream, values[i]);
}

/// The reads are false when the stream has ended; the number that was to come is
/// then 0.
template <class T>
[[nodiscard]] bool read(ZtFsStream& stream, T& value) {
  return stream.take(&value, sizeof value) || read_by_call(stream, value);
}

template <class T>
[[nodiscard]] bool read(ZtFsStream& stream, PointTemplate<T>& point) {
  return stream.take(&point, sizeof point) ||
         (read_by_call(stream, point.x) && read_by_call(stream, point.y));
}

template <class T>
[[nodiscard]] bool read(ZtFsStream& stream, BoundsTemplate<T>& bounds) {
  return read(stream, bounds.min) && read(stream, bounds.max);
}

}  // namespace DL::coding
