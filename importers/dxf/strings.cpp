#include "importers/dxf/strings.h"

#include <iconv.h>

#include <array>
#include <cwctype>
#include <optional>

#include "importers/dxf/pairs.h"

namespace importers::dxf {

namespace {

constexpr wchar_t replacement = 0xFFFD;

/// From one encoding to another.
class Converter {
 public:
  Converter(const char* to, const std::string& from) : m_state(iconv_open(to, from.c_str())) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() {
    if (is_open()) iconv_close(m_state);
  }
  // NOLINTNEXTLINE(performance-no-int-to-ptr): what iconv_open returns on failure
  [[nodiscard]] bool is_open() const { return m_state != reinterpret_cast<iconv_t>(-1); }

  /// The code units of the bytes, little-endian in pairs of bytes.
  [[nodiscard]] std::wstring wide(std::string_view bytes) {
    std::wstring result;
    std::string input(bytes);
    char* in = input.data();
    std::size_t in_left = input.size();
    while (in_left > 0) {
      if (append(result, &in, &in_left)) continue;
      result.push_back(replacement);
      ++in;
      --in_left;
    }
    // Where letters are composed, the last one waits for what may follow it.
    append(result, nullptr, nullptr);
    return result;
  }

 private:
  /// Converts some of the input, or what is held back where there is none. False
  /// when it starts with what cannot be converted.
  bool append(std::wstring& result, char** in, std::size_t* in_left) {
    std::array<char, 256> buffer{};
    char* out = buffer.data();
    std::size_t out_left = buffer.size();
    const std::size_t status = iconv(m_state, in, in_left, &out, &out_left);
    const std::size_t written = buffer.size() - out_left;
    for (std::size_t i = 0; i + 1 < written; i += 2) result.push_back(unit(&buffer[i]));
    return status != static_cast<std::size_t>(-1) || written > 0;
  }

  static wchar_t unit(const char* bytes) {
    return static_cast<wchar_t>(static_cast<unsigned char>(bytes[0]) |
                                static_cast<unsigned char>(bytes[1]) << 8);
  }

  iconv_t m_state;
};

std::wstring converted(std::string_view bytes, const std::string& page) {
  Converter converter("UTF-16LE", page);
  return converter.is_open() ? converter.wide(bytes) : std::wstring(bytes.begin(), bytes.end());
}

/// The value of hexadecimal digits at the start of the text.
std::optional<char32_t> hexadecimal(std::wstring_view text, std::size_t digits) {
  if (text.size() < digits) return {};
  char32_t value = 0;
  for (const wchar_t c : text.substr(0, digits)) {
    const bool is_digit = c >= '0' && c <= '9';
    const wchar_t letter = c | 0x20;
    if (!is_digit && (letter < 'a' || letter > 'f')) return {};
    value = value * 16 + static_cast<char32_t>(is_digit ? c - '0' : letter - 'a' + 10);
  }
  return value;
}

/// The character of two bytes in one of the five numbered code pages.
std::wstring of_numbered_page(wchar_t number, char32_t bytes) {
  constexpr std::array<const char*, 5> pages{"CP932", "CP950", "CP949", "JOHAB", "CP936"};
  if (number < '1' || number > '5') return {replacement};
  const std::array<char, 2> text{static_cast<char>(bytes >> 8), static_cast<char>(bytes)};
  return converted({text.data(), text.size()}, pages[static_cast<std::size_t>(number - '1')]);
}

/// Appends what the escape at the start of the text stands for and returns its
/// length; 0 when there is none.
std::size_t append_escape(std::wstring& result, std::wstring_view text) {
  if (text.starts_with(L"\\U+")) {
    const std::optional<char32_t> character = hexadecimal(text.substr(3), 4);
    if (!character) return 0;
    // Two of them may be a surrogate pair, which stays one.
    result.push_back(static_cast<wchar_t>(*character));
    return 7;
  }
  if (text.starts_with(L"\\M+") && text.size() > 4) {
    const std::optional<char32_t> bytes = hexadecimal(text.substr(4), 4);
    if (!bytes) return 0;
    result += of_numbered_page(text[3], *bytes);
    return 8;
  }
  return 0;
}

std::optional<char32_t> decimal(std::wstring_view text) {
  char32_t value = 0;
  if (text.size() < 3) return {};
  for (const wchar_t c : text.substr(0, 3)) {
    if (c < '0' || c > '9') return {};
    value = value * 10 + static_cast<char32_t>(c - '0');
  }
  return value;
}

/// The same for a percent code.
std::size_t append_percent_code(std::wstring& result, std::wstring_view text) {
  if (!text.starts_with(L"%%") || text.size() < 3) return 0;
  if (const std::optional<char32_t> number = decimal(text.substr(2))) {
    append_character(result, *number);
    return 5;
  }
  switch (text[2]) {
    case 'c':
    case 'C':
      result.push_back(0x00D8);
      return 3;
    case 'd':
    case 'D':
      result.push_back(0x00B0);
      return 3;
    case 'p':
    case 'P':
      result.push_back(0x00B1);
      return 3;
    case '%':
      result.push_back('%');
      return 3;
    case 'u':
    case 'U':
    case 'o':
    case 'O':
    case 'k':
    case 'K':
      return 3;
    default:
      return 0;
  }
}

template <class Append>
std::wstring with_codes(std::wstring_view text, Append append) {
  std::wstring result;
  while (!text.empty()) {
    std::size_t used = append(result, text);
    if (used == 0) {
      result.push_back(text.front());
      used = 1;
    }
    text.remove_prefix(used);
  }
  return result;
}

}  // namespace

void StringDecoder::set_version(std::string_view version) {
  m_is_utf8 = upper_case(trimmed(version)) >= "AC1021";
}

void StringDecoder::set_code_page(std::string_view name) {
  std::string page = upper_case(trimmed(name));
  for (const char* prefix : {"ANSI_", "DOS", "DOS_"}) {
    if (page.starts_with(prefix)) page.replace(0, std::string_view(prefix).size(), "CP");
  }
  if (page == "UTF-8" || page == "UTF8") page = "UTF-8";
  m_page = Converter("UTF-16LE", page).is_open() && !page.empty() ? page : "CP1252";
}

std::wstring StringDecoder::wide(std::string_view bytes) const {
  return converted(bytes, m_is_utf8 ? "UTF-8" : m_page);
}

std::string StringDecoder::name(std::string_view bytes) const {
  std::string result;
  const std::wstring units = with_escapes(wide(bytes));
  for (std::size_t i = 0; i < units.size(); ++i) {
    auto c = static_cast<char32_t>(units[i]);
    const char32_t next = i + 1 < units.size() ? static_cast<char32_t>(units[i + 1]) : 0;
    if (c >= 0xD800 && c < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10) + (next - 0xDC00);
      ++i;
    } else if (c >= 0xD800 && c < 0xE000) {
      c = replacement;
    }
    if (c < 0x80) {
      result.push_back(static_cast<char>(c));
      continue;
    }
    const unsigned more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    constexpr std::array<char32_t, 4> marks{0, 0xC0, 0xE0, 0xF0};
    result.push_back(static_cast<char>(marks[more] | c >> (6 * more)));
    for (unsigned k = more; k-- > 0;) {
      result.push_back(static_cast<char>(0x80 | (c >> (6 * k) & 0x3F)));
    }
  }
  return result;
}

std::string in_one_line(std::string text) {
  for (char& c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < ' ' || byte == 0x7F) c = '?';
  }
  return text;
}

void append_character(std::wstring& text, char32_t character) {
  if (character > 0x10FFFF || (character >= 0xD800 && character < 0xE000)) character = replacement;
  if (character < 0x10000) {
    text.push_back(static_cast<wchar_t>(character));
    return;
  }
  text.push_back(static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10)));
  text.push_back(static_cast<wchar_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
}

std::wstring with_escapes(std::wstring_view text) {
  return with_codes(text, append_escape);
}

std::wstring with_percent_codes(std::wstring_view text) {
  return with_codes(with_escapes(text), append_percent_code);
}

}  // namespace importers::dxf
