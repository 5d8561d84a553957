#pragma once

#include <bit>
#include <cstdint>
#include <type_traits>

#include "displaylist/platform/stream.h"

/// How values become bytes: as the machine holds them, one call of the stream
/// for each value.
namespace DL::coding {

static_assert(std::endian::native == std::endian::little,
              "streams hold the machine's own values, which are little-endian");

/// Writes the bytes of a number: 1, 2, 4 or 8 of them, as its type has.
template <class T>
void write(ZtFsStream& stream, T value) {
  static_assert(std::is_arithmetic_v<T> && !std::is_same_v<T, bool>);
  stream.write(&value, sizeof value);
}

/// Reads the bytes of a number; false, with the number 0, when the stream has
/// ended.
template <class T>
[[nodiscard]] bool read(ZtFsStream& stream, T& value) {
  static_assert(std::is_arithmetic_v<T> && !std::is_same_v<T, bool>);
  std::int32_t size = sizeof value;
  stream.read(&value, &size);
  if (size == static_cast<std::int32_t>(sizeof value)) return true;
  value = 0;
  return false;
}

}  // namespace DL::coding
