#pragma once

#include <cstdint>

/// Code units of UTF-16 and the pairs of them that make a character.
namespace LM_Utf16 {

/// The number of a wide character, whose type may be a signed one.
[[nodiscard]] constexpr std::uint32_t value_of(wchar_t character) {
  return static_cast<std::uint32_t>(character);
}

[[nodiscard]] constexpr bool is_high_surrogate(std::uint32_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
[[nodiscard]] constexpr bool is_low_surrogate(std::uint32_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}
/// The character of a pair.
[[nodiscard]] constexpr std::uint32_t joined(std::uint32_t high, std::uint32_t low) {
  return 0x10000 + ((high - 0xD800) << 10U) + (low - 0xDC00);
}

}  // namespace LM_Utf16
