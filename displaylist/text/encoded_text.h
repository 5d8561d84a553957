#pragma once

#include <cstddef>
#include <cstdint>

#include "displaylist/platform/export.h"

class ZtFsStream;

namespace DL {

/// A string in one of two encodings: wide, UTF-16 with one code unit per
/// element whatever the size of wchar_t, or multibyte, in the encoding of the
/// process's locale (LC_CTYPE). What the caller hands in is converted when the
/// object is made; the locale must not change while multibyte texts are used.
///
/// `length` counts characters as the caller counted them: code units of a wide
/// string, characters, not bytes, of a multibyte one. A conversion never
/// changes it, even where the converted string has another number of elements.
///
/// Nothing is null-checked but where it says so; no operation reports an error.
class DISPLAYLIST_API EncodedText {
 public:
  /// No characters; to be filled by serialize_in.
  EncodedText() = default;
  /// Copies `length` characters, of which the last may be the terminator, and
  /// keeps them wide if `unicode`, else multibyte, with "?" for those that the
  /// locale does not have. A length below 1 or a null text gives no characters.
  EncodedText(const wchar_t* text, std::int32_t length, bool unicode);
  EncodedText(const char* text, std::int32_t length, bool unicode);
  EncodedText(const EncodedText& other);
  EncodedText& operator=(const EncodedText&) = delete;
  virtual ~EncodedText();

  /// Writes the encoding, the length and `length` elements: of a multibyte text
  /// the first `length` bytes, so that one with double-byte characters is cut.
  virtual void serialize_out(ZtFsStream* stream);
  /// Fills a new object with what serialize_out wrote. A stream that ends early
  /// gives the characters that it held.
  virtual void serialize_in(ZtFsStream* stream);

  /// 1 when encodings, lengths and characters, up to a terminator, are the same.
  int operator==(const EncodedText& other) const;

  /// The characters, null when there are none; which of the two, isUnicode
  /// tells. They belong to the text. One that was read from a stream has no
  /// terminator: only `length` elements may be looked at.
  [[nodiscard]] const wchar_t* unicodeString() const { return m_wide; }
  [[nodiscard]] const unsigned char* multiByteString() const { return m_multibyte; }

  /// The code unit at an index, which is not checked.
  [[nodiscard]] wchar_t unicodeCharacter(std::int32_t index) const { return m_wide[index]; }
  /// The value of the multibyte character at a position: its code point in
  /// UTF-8, else its bytes, the first one highest; the low 16 bits of it.
  [[nodiscard]] wchar_t multiByteCharacter(std::int32_t position) const;
  /// Copies the multibyte character at a position as a string of its low byte,
  /// also where it is a double-byte one. `out` has room for 3 bytes.
  void getMultiByteCharacter(std::int32_t position, char* out) const;

  [[nodiscard]] std::int32_t length() const { return m_length; }
  [[nodiscard]] bool isUnicode() const { return m_bUnicode; }

  /// Null when memory is exhausted.
  static void* operator new(std::size_t size) noexcept;
  static void operator delete(void* memory) noexcept;

 private:
  void keep_wide(const wchar_t* text);
  void keep_multibyte(const unsigned char* text);
  void convert_to_wide(const unsigned char* text);
  void convert_to_multibyte(const wchar_t* text);

  bool m_bUnicode = false;
  std::int32_t m_length = 0;
  union {
    wchar_t* m_wide = nullptr;
    unsigned char* m_multibyte;
  };
};
static_assert(sizeof(void*) != 8 || sizeof(EncodedText) == 24);

}  // namespace DL
