#pragma once

#include <bit>
#include <cstdint>

#include "displaylist/platform/stream.h"

/// How values become bytes: every one is a 32-bit little-endian word.
namespace DL::coding {

static_assert(std::endian::native == std::endian::little,
              "streams hold the machine's own words, which are little-endian");

inline constexpr std::int32_t kWordSize = 4;

inline void write_word(ZtFsStream& stream, std::uint32_t word) {
  stream.write(&word, kWordSize);
}
inline void write_word(ZtFsStream& stream, std::int32_t word) {
  stream.write(&word, kWordSize);
}

/// The bits of the number as a word.
inline void write_float(ZtFsStream& stream, float value) {
  write_word(stream, std::bit_cast<std::uint32_t>(value));
}

/// Reads one word; false, with the word 0, when the stream has ended.
template <class Word>
[[nodiscard]] bool read_word(ZtFsStream& stream, Word& word) {
  static_assert(sizeof(Word) == kWordSize);
  std::int32_t size = kWordSize;
  stream.read(&word, &size);
  if (size == kWordSize) return true;
  word = 0;
  return false;
}

/// Reads the bits of a number; false, with the number 0, when the stream has
/// ended.
[[nodiscard]] inline bool read_float(ZtFsStream& stream, float& value) {
  std::uint32_t bits = 0;
  const bool complete = read_word(stream, bits);
  value = std::bit_cast<float>(bits);
  return complete;
}

}  // namespace DL::coding
