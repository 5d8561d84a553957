#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace lumen {

/// A number as XML and CSS have it, whatever the locale; about eight digits.
inline void append_number(std::string& text, double value) {
  std::array<char, 40> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                 std::chars_format::general, 8);
  text.append(digits.data(), end.ptr);
}

/// Text as XML has it, in elements and between quotes of attributes.
inline void append_escaped(std::string& xml, std::string_view text) {
  for (const char character : text) {
    switch (character) {
      case '&':
        xml += "&amp;";
        break;
      case '<':
        xml += "&lt;";
        break;
      case '>':
        xml += "&gt;";
        break;
      case '"':
        xml += "&quot;";
        break;
      default:
        xml += character;
    }
  }
}

inline void append_base64(std::string& text, std::string_view bytes) {
  constexpr std::string_view digits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(bytes.size() - i, 3);
    std::uint32_t word = 0;
    for (std::size_t j = 0; j < 3; ++j) {
      word = word << 8 | (j < count ? static_cast<unsigned char>(bytes[i + j]) : 0U);
    }
    for (std::size_t j = 0; j < 4; ++j) {
      text += j <= count ? digits[word >> (18 - 6 * j) & 63] : '=';
    }
  }
}

}  // namespace lumen
