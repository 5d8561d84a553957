#include "displaylist/text/encoded_text.h"

#include <algorithm>
#include <cstring>

#include "displaylist/core/coding.h"
#include "displaylist/platform/memory.h"
#include "displaylist/platform/multibyte.h"
#include "displaylist/platform/utf16.h"

namespace DL {

namespace {

/// Room for `count` elements, all zero; null when memory is exhausted.
template <class Element>
Element* allocate_zeros(std::size_t count) {
  void* memory = LD_AllocateMemory(count * sizeof(Element), nullptr);
  if (memory != nullptr) std::memset(memory, 0, count * sizeof(Element));
  return static_cast<Element*>(memory);
}

/// Room for a string and its terminator. A string may end before the length
/// that its caller told; the record holds that many elements all the same.
template <class Element>
Element* allocate_string(std::size_t count, std::int32_t length) {
  return allocate_zeros<Element>(std::max(count, static_cast<std::size_t>(length)) + 1);
}

/// The length without a trailing terminator.
template <class Character>
std::int32_t length_of(const Character* text, std::int32_t length) {
  if (text == nullptr || length < 1) return 0;
  return text[length - 1] == 0 ? length - 1 : length;
}

const unsigned char* as_bytes(const char* text) {
  return reinterpret_cast<const unsigned char*>(text);
}

/// Converts character by character, with "?" for each unit of what the locale
/// does not have. Zeros stay where they are.
void convert_each(unsigned char* out, std::size_t size, const wchar_t* text, std::size_t count) {
  std::size_t written = 0;
  for (std::size_t i = 0; i < count;) {
    const std::size_t units = LM_Multibyte::unit_count(text + i, count - i);
    std::size_t bytes = 1;
    if (text[i] != 0) {
      bytes = LM_Multibyte::from_wide(out + written, size - written, text + i, units);
    }
    if (bytes == LM_Multibyte::kFailed) {
      std::fill_n(out + written, units, static_cast<unsigned char>('?'));
      bytes = units;
    }
    written += bytes;
    i += units;
  }
}

/// Writes `length` elements, zeros for a string that a conversion left empty.
template <class Stored, class Element>
void write_string(ZtFsStream& stream, const Element* string, std::int32_t length) {
  for (std::int32_t i = 0; i < length; ++i) {
    coding::write(stream, static_cast<Stored>(string == nullptr ? 0 : string[i]));
  }
}

/// How many elements are read before a string grows for the first time: a
/// damaged length must not ask for memory that the stream cannot fill.
constexpr std::int32_t kFirstReadElements = 256;

/// The string with room for `capacity` elements; null when memory is exhausted.
template <class Element>
Element* grown(Element* string, std::int32_t count, std::int32_t capacity) {
  auto* copy = allocate_zeros<Element>(static_cast<std::size_t>(capacity) + 1);
  if (copy != nullptr) std::copy_n(string, count, copy);
  LD_ReleaseMemory(string);
  return copy;
}

/// Reads up to `length` elements of `Stored`'s size into `string` and returns
/// how many there were. What memory there is none for is read and dropped, so
/// that what follows the string is still found. The zero after the last element
/// is no terminator, but keeps a character that was cut from being read on.
template <class Stored, class Element>
std::int32_t read_string(ZtFsStream& stream, std::int32_t length, Element*& string) {
  std::int32_t capacity = std::min(length, kFirstReadElements);
  string = allocate_zeros<Element>(static_cast<std::size_t>(capacity) + 1);
  for (std::int32_t i = 0; i < length; ++i) {
    Stored element = 0;
    if (!coding::read(stream, element)) return i;
    if (string != nullptr && i == capacity) {
      capacity = capacity > length / 2 ? length : capacity * 2;
      string = grown(string, i, capacity);
    }
    if (string != nullptr) string[i] = element;
  }
  return length;
}

/// Every wide string has a zero behind its elements, read ones too.
bool equal_to_terminator(const wchar_t* a, const wchar_t* b) {
  while (*a == *b && *a != 0) {
    ++a;
    ++b;
  }
  return *a == *b;
}

}  // namespace

EncodedText::EncodedText(const wchar_t* text, std::int32_t length, bool unicode)
    : m_bUnicode(unicode), m_length(length_of(text, length)) {
  if (m_length == 0) return;
  unicode ? keep_wide(text) : convert_to_multibyte(text);
}

EncodedText::EncodedText(const char* text, std::int32_t length, bool unicode)
    : m_bUnicode(unicode), m_length(length_of(text, length)) {
  if (m_length == 0) return;
  unicode ? convert_to_wide(as_bytes(text)) : keep_multibyte(as_bytes(text));
}

EncodedText::EncodedText(const EncodedText& other)
    : m_bUnicode(other.m_bUnicode), m_length(other.m_length) {
  if (other.m_wide == nullptr) return;
  m_bUnicode ? keep_wide(other.m_wide) : keep_multibyte(other.m_multibyte);
}

EncodedText::~EncodedText() {
  LD_ReleaseMemory(m_wide);
}

void* EncodedText::operator new(std::size_t size) noexcept {
  return LD_AllocateMemory(size, nullptr);
}

void EncodedText::operator delete(void* memory) noexcept {
  LD_ReleaseMemory(memory);
}

void EncodedText::keep_wide(const wchar_t* text) {
  m_wide = allocate_string<wchar_t>(0, m_length);
  if (m_wide == nullptr) return;
  for (std::int32_t i = 0; i < m_length && text[i] != 0; ++i) m_wide[i] = text[i];
}

void EncodedText::keep_multibyte(const unsigned char* text) {
  const std::size_t bytes = LM_Multibyte::byte_count(text, m_length);
  m_multibyte = allocate_string<unsigned char>(bytes, m_length);
  if (m_multibyte != nullptr) LM_Multibyte::copy(m_multibyte, bytes + 1, text, m_length);
}

void EncodedText::convert_to_wide(const unsigned char* text) {
  const std::size_t count = LM_Multibyte::to_wide(nullptr, 0, text, m_length);
  if (count == 0 || count == LM_Multibyte::kFailed) return;
  m_wide = allocate_string<wchar_t>(count, m_length);
  if (m_wide != nullptr) LM_Multibyte::to_wide(m_wide, count, text, m_length);
}

void EncodedText::convert_to_multibyte(const wchar_t* text) {
  const auto count = static_cast<std::size_t>(m_length);
  const std::size_t size = LM_Multibyte::longest_character() * count;
  m_multibyte = allocate_string<unsigned char>(size, m_length);
  if (m_multibyte == nullptr) return;
  const std::size_t converted = LM_Multibyte::from_wide(m_multibyte, size, text, count);
  if (converted == LM_Multibyte::kFailed) {
    convert_each(m_multibyte, size, text, count);
  } else if (converted == 0) {
    LD_ReleaseMemory(m_multibyte);
    m_multibyte = nullptr;
  } else {
    m_multibyte[converted] = 0;
  }
}

int EncodedText::operator==(const EncodedText& other) const {
  if (m_length != other.m_length || m_bUnicode != other.m_bUnicode) return 0;
  if (m_wide == nullptr || other.m_wide == nullptr) return m_wide == other.m_wide ? 1 : 0;
  const bool equal = m_bUnicode ? equal_to_terminator(m_wide, other.m_wide)
                                : LM_Multibyte::compare(m_multibyte, other.m_multibyte) == 0;
  return equal ? 1 : 0;
}

wchar_t EncodedText::multiByteCharacter(std::int32_t position) const {
  const unsigned char* character = LM_Multibyte::advanced(m_multibyte, std::max(position, 0));
  return static_cast<wchar_t>(LM_Multibyte::character_value(character) & 0xFFFFU);
}

void EncodedText::getMultiByteCharacter(std::int32_t position, char* out) const {
  const std::uint32_t character = LM_Utf16::value_of(multiByteCharacter(position));
  // Asked of 0 or 1, which start no double-byte character of any usual
  // encoding: readers of this string count on its low byte alone.
  const std::uint32_t high = (character & 0xFF00U) != 0 ? 1 : 0;
  if (LM_Multibyte::is_lead_byte(high)) *out++ = static_cast<char>(high);
  *out++ = static_cast<char>(character & 0xFFU);
  *out = 0;
}

// --- The record -------------------------------------------------------------

void EncodedText::serialize_out(ZtFsStream* stream) {
  coding::write<std::uint8_t>(*stream, m_bUnicode ? 1 : 0);
  coding::write(*stream, m_length);
  m_bUnicode ? write_string<std::uint16_t>(*stream, m_wide, m_length)
             : write_string<std::uint8_t>(*stream, m_multibyte, m_length);
}

void EncodedText::serialize_in(ZtFsStream* stream) {
  std::uint8_t unicode = 0;
  m_wide = nullptr;
  m_length = 0;
  std::int32_t length = 0;
  if (!coding::read(*stream, unicode)) return;
  m_bUnicode = unicode != 0;
  if (!coding::read(*stream, length)) return;
  if (length < 1) {
    m_length = length;
    return;
  }
  if (m_bUnicode) {
    m_length = read_string<std::uint16_t>(*stream, length, m_wide);
  } else {
    m_length = read_string<std::uint8_t>(*stream, length, m_multibyte);
  }
}

}  // namespace DL
