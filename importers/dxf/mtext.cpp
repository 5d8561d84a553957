#include "importers/dxf/mtext.h"

#include <cwchar>

#include "importers/dxf/colors.h"
#include "importers/dxf/pairs.h"
#include "importers/dxf/strings.h"

namespace importers::dxf {

namespace {

std::string narrow(std::wstring_view text) {
  std::string result;
  for (const wchar_t c : text) result.push_back(c < 128 ? static_cast<char>(c) : '?');
  return result;
}

class Parser {
 public:
  Parser(std::wstring_view text, const PieceFormat& format) : m_rest(text), m_formats{format} {}

  std::vector<Piece> parse() {
    while (!m_rest.empty()) take();
    end_piece();
    return std::move(m_pieces);
  }

 private:
  PieceFormat& format() { return m_formats.back(); }

  void take() {
    const wchar_t c = m_rest.front();
    m_rest.remove_prefix(1);
    if (c == '\\' && !m_rest.empty()) return take_code();
    if (c == '^' && !m_rest.empty()) return take_control();
    if (c == '{') {
      end_piece();
      m_formats.push_back(format());
    } else if (c == '}') {
      end_piece();
      if (m_formats.size() > 1) m_formats.pop_back();
    } else if (c == '%' && m_rest.starts_with(L"%")) {
      take_percent_code();
    } else {
      m_text.push_back(c == '\t' ? L' ' : c);
    }
  }

  /// A control character, written as a letter.
  void take_control() {
    const wchar_t c = m_rest.front();
    if (c != 'I' && c != 'J' && c != 'M' && c != ' ') {
      m_text.push_back('^');
      return;
    }
    m_rest.remove_prefix(1);
    if (c == 'J') begin_line();
    if (c == 'I') m_text += L"    ";
    if (c == ' ') m_text.push_back('^');
  }

  void take_percent_code() {
    const std::size_t size = m_rest.size() > 1 && m_rest[1] >= '0' && m_rest[1] <= '9' ? 4 : 2;
    const std::wstring code = L"%" + std::wstring(m_rest.substr(0, size));
    m_text += with_percent_codes(code);
    m_rest.remove_prefix(std::min(size, m_rest.size()));
  }

  void take_code() {
    const wchar_t code = m_rest.front();
    m_rest.remove_prefix(1);
    switch (code) {
      case 'P':
      case 'N':
      case 'X':
        return begin_line();
      case '~':
        m_text.push_back(0x00A0);
        return;
      case 'S':
        return take_stack();
      case 'f':
      case 'F':
        return set_font(argument());
      case 'H':
        return set_height(argument());
      case 'W':
        return set_width(argument());
      case 'C':
        return set_color(argument());
      case 'c':
        return set_true_color(argument());
      case 'A':
      case 'Q':
      case 'T':
      case 'p':
        argument();
        return;
      case 'L':
      case 'l':
      case 'O':
      case 'o':
      case 'K':
      case 'k':
        return;
      // Characters by their numbers have been replaced before; these are themselves.
      default:
        m_text.push_back(code);
    }
  }

  /// What stands before the next semicolon, which is taken as well.
  std::wstring_view argument() {
    const std::size_t end = m_rest.find(';');
    const std::wstring_view result = m_rest.substr(0, end);
    m_rest.remove_prefix(end == std::wstring_view::npos ? m_rest.size() : end + 1);
    return result;
  }

  void take_stack() {
    std::wstring above;
    std::wstring below;
    bool is_below = false;
    while (!m_rest.empty() && m_rest.front() != ';') {
      const wchar_t c = m_rest.front();
      m_rest.remove_prefix(1);
      if (c == '\\' && !m_rest.empty()) {
        (is_below ? below : above).push_back(m_rest.front());
        m_rest.remove_prefix(1);
      } else if (!is_below && (c == '/' || c == '#' || c == '^')) {
        is_below = true;
      } else if (c != ' ') {
        (is_below ? below : above).push_back(c);
      }
    }
    if (!m_rest.empty()) m_rest.remove_prefix(1);
    m_text += above;
    if (!above.empty() && !below.empty()) m_text.push_back('/');
    m_text += below;
  }

  void set_font(std::wstring_view argument) {
    end_piece();
    std::wstring name(argument.substr(0, argument.find('|')));
    const bool is_stroke_font =
        name.find('.') != std::wstring::npos || argument.find('|') == std::wstring_view::npos;
    const bool is_bold = argument.find(L"|b1") != std::wstring_view::npos;
    const bool is_italic = argument.find(L"|i1") != std::wstring_view::npos;
    format().font = is_stroke_font ? FontChoice{} : FontChoice{name, is_bold, is_italic};
  }

  void set_height(std::wstring_view argument) {
    end_piece();
    const bool is_factor = argument.ends_with('x') || argument.ends_with('X');
    const double value = to_real(narrow(argument)).value_or(0);
    if (value > 0) format().height = is_factor ? value * format().height : value;
  }

  void set_width(std::wstring_view argument) {
    end_piece();
    const double value = to_real(narrow(argument)).value_or(0);
    if (value > 0) format().width_factor = value;
  }

  void set_color(std::wstring_view argument) {
    end_piece();
    const int index = to_integer(narrow(argument)).value_or(0);
    format().color.reset();
    if (index > 0 && index < 256) format().color = index_color(index);
  }

  /// Blue is the highest byte.
  void set_true_color(std::wstring_view argument) {
    end_piece();
    const auto word = static_cast<std::uint32_t>(to_integer(narrow(argument)).value_or(0));
    format().color = LM_RGB32{(word & 0xFF) << 16 | (word & 0xFF00) | (word >> 16 & 0xFF)};
  }

  void begin_line() {
    end_piece();
    // An empty line is one, too.
    if (m_begins_line) m_pieces.push_back({L"", format(), true});
    m_begins_line = true;
  }

  void end_piece() {
    if (m_text.empty()) return;
    m_pieces.push_back({std::move(m_text), format(), m_begins_line});
    m_text.clear();
    m_begins_line = false;
  }

  std::wstring_view m_rest;
  std::vector<PieceFormat> m_formats;  ///< of the groups that are open
  std::vector<Piece> m_pieces;
  std::wstring m_text;
  bool m_begins_line = false;
};

}  // namespace

std::vector<Piece> pieces_of(std::wstring_view text, const PieceFormat& format) {
  const std::wstring escaped = with_escapes(text);
  return Parser(escaped, format).parse();
}

}  // namespace importers::dxf
