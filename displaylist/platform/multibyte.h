#pragma once

#include <cstddef>
#include <cstdint>

#include "displaylist/platform/export.h"

/// Strings in the multibyte encoding of the process's current locale
/// (LC_CTYPE), single-byte, double-byte or UTF-8, and their conversion to wide
/// strings, whose elements are UTF-16 code units whatever the size of wchar_t.
///
/// Byte strings end at a zero byte, past which nothing is read. Bytes that are
/// no character, as those above 127 in the "C" locale, count as one character
/// each. Encodings with shift states are not supported. Any thread may call; the
/// locale must not change meanwhile.
namespace LM_Multibyte {

/// What a conversion returns when something cannot be converted.
inline constexpr std::size_t kFailed = SIZE_MAX;

/// The most bytes that a character of the locale takes.
LUMEN_API std::size_t longest_character();

/// How many bytes the first `characters` characters take, up to the end.
LUMEN_API std::size_t byte_count(const unsigned char* text, std::int32_t characters);

/// The text advanced by `characters` characters, or to its end.
LUMEN_API const unsigned char* advanced(const unsigned char* text, std::int32_t characters);

/// The value of the first character: its code point in UTF-8, else its bytes,
/// the first one highest. 0 at the end.
LUMEN_API std::uint32_t character_value(const unsigned char* text);

/// Compares byte by byte to the end; 0 when equal.
LUMEN_API int compare(const unsigned char* a, const unsigned char* b);

/// Whether a byte of this value starts a double-byte character; never in
/// single-byte locales and UTF-8.
LUMEN_API bool is_lead_byte(std::uint32_t byte);

/// Copies the first `characters` characters, whole ones only, and a zero byte
/// into `out`, which has room for `size` bytes, at least 1.
LUMEN_API void copy(unsigned char* out, std::size_t size, const unsigned char* text,
                    std::int32_t characters);

/// Converts the first `characters` characters, up to the end, to UTF-16 code
/// units. Writes at most `size` of them, whole characters only and without a
/// terminator; `out` may be null. Returns how many the text takes, or kFailed at
/// bytes that are no character.
LUMEN_API std::size_t to_wide(wchar_t* out, std::size_t size, const unsigned char* text,
                              std::int32_t characters);

/// Converts `count` code units, or up to a zero, to multibyte characters.
/// Writes at most `size` bytes, whole characters only and without a terminator,
/// and stops before the first one that does not fit. Returns how many were
/// written, or kFailed where the locale has no character; it has none for an
/// unpaired surrogate.
LUMEN_API std::size_t from_wide(unsigned char* out, std::size_t size, const wchar_t* text,
                                std::size_t count);

/// How many code units the character at the start of `text` takes: 2 for a
/// surrogate pair, else 1. `count` is how many there are, at least 1.
LUMEN_API std::size_t unit_count(const wchar_t* text, std::size_t count);

}  // namespace LM_Multibyte
