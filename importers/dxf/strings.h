#pragma once

#include <string>
#include <string_view>

namespace importers::dxf {

/// The strings of a file: bytes in one encoding, made wide (UTF-16, one code
/// unit per element). What the encoding does not have becomes U+FFFD.
class StringDecoder {
 public:
  /// Latin letters until something else is known.
  StringDecoder() = default;

  /// What $ACADVER and $DWGCODEPAGE say, in any order: files from AC1021 on are
  /// in UTF-8, older ones in their code page. An unknown page counts as the
  /// Western one.
  void set_version(std::string_view version);
  void set_code_page(std::string_view name);

  [[nodiscard]] std::wstring wide(std::string_view bytes) const;
  /// A name as UTF-8, its escapes replaced.
  [[nodiscard]] std::string name(std::string_view bytes) const;

 private:
  bool m_is_utf8 = false;
  std::string m_page = "CP1252";
};

/// The text with its control characters shown as question marks.
[[nodiscard]] std::string in_one_line(std::string text);

/// The UTF-16 code units of a code point; U+FFFD for what is none.
void append_character(std::wstring& text, char32_t character);

/// Replaces \U+XXXX and \M+NXXXX by their characters.
[[nodiscard]] std::wstring with_escapes(std::wstring_view text);
/// And the percent codes of single-line texts: %%c, %%d, %%p, %%%, %%nnn; those
/// that switch lines over and under the text on and off are left out.
[[nodiscard]] std::wstring with_percent_codes(std::wstring_view text);

}  // namespace importers::dxf
