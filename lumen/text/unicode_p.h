#pragma once

#include <cstdint>
#include <string>

#include "displaylist/platform/utf16.h"

namespace lumen {

/// Stands for what is no character.
inline constexpr char32_t replacement_character = 0xFFFD;

/// A character of a wide string and how many elements it takes.
struct WideCharacter {
  char32_t value;
  std::int32_t length;
};

/// The first character of `count` UTF-16 code units, at least 1.
inline WideCharacter first_character(const wchar_t* text, std::int64_t count) {
  const auto unit = [text](std::int64_t i) { return LM_Utf16::value_of(text[i]); };
  using LM_Utf16::is_high_surrogate;
  using LM_Utf16::is_low_surrogate;
  const std::uint32_t first = unit(0);
  if (is_high_surrogate(first) && count > 1 && is_low_surrogate(unit(1))) {
    return {LM_Utf16::joined(first, unit(1)), 2};
  }
  const bool is_character =
      first < 0x10000 && !is_high_surrogate(first) && !is_low_surrogate(first);
  return {is_character ? first : replacement_character, 1};
}

inline void append_utf8(std::string& bytes, char32_t value) {
  const auto put = [&bytes](char32_t byte) { bytes += static_cast<char>(byte); };
  if (value < 0x80) {
    put(value);
  } else if (value < 0x800) {
    put(0xC0 | value >> 6);
  } else if (value < 0x10000) {
    put(0xE0 | value >> 12);
    put(0x80 | (value >> 6 & 0x3F));
  } else {
    put(0xF0 | value >> 18);
    put(0x80 | (value >> 12 & 0x3F));
    put(0x80 | (value >> 6 & 0x3F));
  }
  if (value >= 0x80) put(0x80 | (value & 0x3F));
}

inline std::string utf8_of(const std::wstring& text) {
  std::string bytes;
  const auto size = static_cast<std::int64_t>(text.size());
  for (std::int64_t i = 0; i < size;) {
    const auto [value, length] = first_character(text.data() + i, size - i);
    append_utf8(bytes, value);
    i += length;
  }
  return bytes;
}

}  // namespace lumen
