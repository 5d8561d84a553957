#include "importers/dxf/pairs.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace importers::dxf {

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string upper_case(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return result;
}

namespace {

std::string_view without_plus(std::string_view text) {
  text = trimmed(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  return text;
}

template <class Number>
std::optional<Number> to_number(std::string_view text) {
  text = without_plus(text);
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return {};
  return number;
}

bool is_between(int code, int first, int last) {
  return code >= first && code <= last;
}

}  // namespace

std::optional<double> to_real(std::string_view text) {
  const std::optional<double> number = to_number<double>(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<int> to_integer(std::string_view text) {
  return to_number<int>(text);
}

bool is_real_code(int code) {
  return is_between(code, 10, 59) || is_between(code, 110, 149) || is_between(code, 210, 239);
}

PairReader::PairReader(std::istream& stream) : m_stream(stream) {
  constexpr int byte_order_mark[3] = {0xEF, 0xBB, 0xBF};
  if (m_stream.peek() != byte_order_mark[0]) return;
  for (const int byte : byte_order_mark) {
    if (m_stream.peek() == byte) m_stream.get();
  }
}

bool PairReader::next_line(std::string& line) {
  line.clear();
  std::streambuf* buffer = m_stream.rdbuf();
  constexpr int end = std::char_traits<char>::eof();
  int byte = buffer->sbumpc();
  if (byte == end) return false;
  bool is_cut = false;
  for (; byte != end && byte != '\n'; byte = buffer->sbumpc()) {
    is_cut = is_cut || (line.size() == longest_value && byte != '\r');
    if (line.size() < longest_value) line.push_back(byte == 0 ? ' ' : static_cast<char>(byte));
  }
  if (is_cut) ++m_cut_lines;
  while (!line.empty() && line.back() == '\r') line.pop_back();
  ++m_line;
  return true;
}

bool PairReader::next(Pair& pair) {
  if (!next_line(m_text)) return false;
  const std::optional<int> code = to_integer(m_text);
  if (!code) {
    // Blank lines after the last pair are no harm.
    if (trimmed(m_text).empty() && m_stream.rdbuf()->sgetc() == std::char_traits<char>::eof()) {
      return false;
    }
    m_problem = "line " + std::to_string(m_line) + " is no group code";
    return false;
  }
  pair.code = *code;
  if (next_line(pair.value)) return true;
  m_problem = "it ends within a pair of lines, at line " + std::to_string(m_line);
  return false;
}

const std::string* Record::find(int code) const {
  const auto found = std::find_if(pairs.begin(), pairs.end(),
                                  [code](const Pair& pair) { return pair.code == code; });
  return found == pairs.end() ? nullptr : &found->value;
}

std::size_t Record::count(int code) const {
  return static_cast<std::size_t>(std::count_if(
      pairs.begin(), pairs.end(), [code](const Pair& pair) { return pair.code == code; }));
}

int Record::integer(int code, int otherwise) const {
  const std::string* value = find(code);
  return value == nullptr ? otherwise : to_integer(*value).value_or(otherwise);
}

double Record::real(int code, double otherwise) const {
  const std::string* value = find(code);
  return value == nullptr ? otherwise : to_real(*value).value_or(otherwise);
}

}  // namespace importers::dxf
