#include "lumen/text/text_characters_p.h"

#include "displaylist/platform/multibyte.h"
#include "lumen/text/unicode_p.h"

namespace lumen {
namespace {

/// What is shown for a character.
char32_t shown(char32_t value) {
  if (value == U'\t') return U' ';
  const bool controls = value < 0x20 || (value >= 0x7F && value < 0xA0);
  const bool ends_line = value == 0x2028 || value == 0x2029;
  return controls || ends_line ? TextCharacters::no_room : value;
}

}  // namespace

void TextCharacters::clear() {
  m_values.clear();
  m_places.clear();
}

void TextCharacters::add(char32_t value, std::int32_t place) {
  m_values.push_back(shown(value));
  m_places.push_back(place);
}

void TextCharacters::assign(const wchar_t* text, std::int32_t count) {
  clear();
  std::int32_t end = 0;
  while (text != nullptr && end < count && text[end] != 0) {
    const auto [value, length] = first_character(text + end, std::int64_t{count} - end);
    add(value, end);
    end += length;
  }
  m_places.push_back(end);
}

void TextCharacters::assign(const unsigned char* text, std::int32_t count) {
  clear();
  std::int32_t end = 0;
  for (; text != nullptr && end < count && *text != 0; ++end) {
    wchar_t units[2];
    const std::size_t size = LM_Multibyte::to_wide(units, 2, text, 1);
    const bool is_character = size == 1 || size == 2;
    add(is_character ? first_character(units, static_cast<std::int64_t>(size)).value
                     : replacement_character,
        end);
    text = LM_Multibyte::advanced(text, 1);
  }
  m_places.push_back(end);
}

}  // namespace lumen
