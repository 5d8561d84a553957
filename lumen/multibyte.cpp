#include "displaylist/platform/multibyte.h"

#include <langinfo.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <optional>

#include "displaylist/platform/utf16.h"

namespace LM_Multibyte {
namespace {

/// What is no UTF-16 code unit, and no character.
constexpr std::uint32_t kPastUnits = 0x10000;
constexpr std::uint32_t kPastCharacters = 0x110000;

bool is_utf_8() {
  return std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0;
}

/// A character of a byte string, or the end, or a byte that is none.
struct Character {
  std::size_t length;  ///< in bytes, 0 at the end
  std::uint32_t code_point;
  bool is_valid;
};

Character first_character(const unsigned char* text) {
  if (*text == 0) return {0, 0, true};
  const char* bytes = reinterpret_cast<const char*>(text);
  wchar_t code_point = 0;
  std::mbstate_t state{};
  // No more than there is, so that nobody looks past the end.
  const std::size_t length = std::mbrtowc(&code_point, bytes, strnlen(bytes, MB_CUR_MAX), &state);
  const std::uint32_t value = LM_Utf16::value_of(code_point);
  if (length > MB_LEN_MAX || value >= kPastCharacters || LM_Utf16::is_high_surrogate(value) ||
      LM_Utf16::is_low_surrogate(value)) {
    return {1, 0, false};
  }
  return {length, value, true};
}

/// The character at the start of a wide string, if it is one.
std::optional<wchar_t> first_character(const wchar_t* text, std::size_t count) {
  const std::uint32_t unit = LM_Utf16::value_of(text[0]);
  if (unit >= kPastUnits || LM_Utf16::is_low_surrogate(unit)) return std::nullopt;
  if (!LM_Utf16::is_high_surrogate(unit)) return text[0];
  if (unit_count(text, count) < 2) return std::nullopt;
  const std::uint32_t low = LM_Utf16::value_of(text[1]) - 0xDC00;
  return static_cast<wchar_t>(kPastUnits + ((unit - 0xD800) << 10) + low);
}

std::size_t units_of(std::uint32_t code_point) {
  return code_point < kPastUnits ? 1 : 2;
}

void write_units(wchar_t* out, std::uint32_t code_point) {
  if (units_of(code_point) == 1) {
    out[0] = static_cast<wchar_t>(code_point);
    return;
  }
  const std::uint32_t offset = code_point - kPastUnits;
  out[0] = static_cast<wchar_t>(0xD800 + (offset >> 10));
  out[1] = static_cast<wchar_t>(0xDC00 + (offset & 0x3FF));
}

}  // namespace

std::size_t longest_character() {
  return MB_CUR_MAX;
}

std::size_t byte_count(const unsigned char* text, std::int32_t characters) {
  return static_cast<std::size_t>(advanced(text, characters) - text);
}

const unsigned char* advanced(const unsigned char* text, std::int32_t characters) {
  for (std::int32_t i = 0; i < characters && *text != 0; ++i) text += first_character(text).length;
  return text;
}

std::uint32_t character_value(const unsigned char* text) {
  const Character character = first_character(text);
  if (character.is_valid && is_utf_8()) return character.code_point;
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < character.length; ++i) value = (value << 8) | text[i];
  return value;
}

int compare(const unsigned char* a, const unsigned char* b) {
  return std::strcmp(reinterpret_cast<const char*>(a), reinterpret_cast<const char*>(b));
}

bool is_lead_byte(std::uint32_t byte) {
  constexpr std::size_t incomplete = SIZE_MAX - 1;
  if (byte > 0xFF || MB_CUR_MAX < 2 || is_utf_8()) return false;
  const char first = static_cast<char>(byte);
  std::mbstate_t state{};
  return std::mbrlen(&first, 1, &state) == incomplete;
}

void copy(unsigned char* out, std::size_t size, const unsigned char* text,
          std::int32_t characters) {
  std::size_t used = 0;
  for (std::int32_t i = 0; i < characters; ++i) {
    const std::size_t length = first_character(text + used).length;
    if (length == 0 || length >= size - used) break;
    used += length;
  }
  std::memcpy(out, text, used);
  out[used] = 0;
}

std::size_t to_wide(wchar_t* out, std::size_t size, const unsigned char* text,
                    std::int32_t characters) {
  std::size_t needed = 0;
  for (std::int32_t i = 0; i < characters && *text != 0; ++i) {
    const Character character = first_character(text);
    if (!character.is_valid) return kFailed;
    const std::size_t units = units_of(character.code_point);
    if (out != nullptr && needed + units <= size) write_units(out + needed, character.code_point);
    needed += units;
    text += character.length;
  }
  return needed;
}

std::size_t from_wide(unsigned char* out, std::size_t size, const wchar_t* text,
                      std::size_t count) {
  std::size_t written = 0;
  while (count > 0 && *text != 0) {
    const std::optional<wchar_t> character = first_character(text, count);
    if (!character) return kFailed;
    char bytes[MB_LEN_MAX];
    std::mbstate_t state{};
    const std::size_t length = std::wcrtomb(bytes, *character, &state);
    if (length > MB_LEN_MAX) return kFailed;
    if (length > size - written) break;
    std::memcpy(out + written, bytes, length);
    written += length;
    const std::size_t units = unit_count(text, count);
    text += units;
    count -= units;
  }
  return written;
}

std::size_t unit_count(const wchar_t* text, std::size_t count) {
  const bool is_pair = count > 1 && LM_Utf16::is_high_surrogate(LM_Utf16::value_of(text[0])) &&
                       LM_Utf16::is_low_surrogate(LM_Utf16::value_of(text[1]));
  return is_pair ? 2 : 1;
}

}  // namespace LM_Multibyte
