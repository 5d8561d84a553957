#pragma once

#include <cstddef>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace importers::dxf {

/// What a file consists of: a group code and its value, as the file has it but
/// for the end of its line.
struct Pair {
  int code = 0;
  std::string value;
};

/// Reads the pairs of a file one by one. A value beyond the longest one is cut, and
/// bytes of 0 count as blanks.
class PairReader {
 public:
  static constexpr std::size_t longest_value = 1 << 16;

  explicit PairReader(std::istream& stream);

  /// False at the end, which is a problem when it comes within a pair, and
  /// where a group code should be and is none.
  bool next(Pair& pair);
  /// What is wrong with the pairs, in words; empty when nothing is.
  [[nodiscard]] const std::string& problem() const { return m_problem; }
  [[nodiscard]] std::size_t line_number() const { return m_line; }
  /// How many lines were cut.
  [[nodiscard]] std::size_t cut_lines() const { return m_cut_lines; }

 private:
  bool next_line(std::string& line);

  std::istream& m_stream;
  std::string m_text;  ///< of the group code
  std::string m_problem;
  std::size_t m_line = 0;
  std::size_t m_cut_lines = 0;
};

/// The pairs from one of code 0, whose value is the name, up to the next.
struct Record {
  std::string name;
  std::vector<Pair> pairs;  ///< without the one of code 0

  /// The value of the first pair of a code; null when there is none.
  [[nodiscard]] const std::string* find(int code) const;
  [[nodiscard]] std::size_t count(int code) const;
  [[nodiscard]] int integer(int code, int otherwise) const;
  [[nodiscard]] double real(int code, double otherwise) const;
};

/// The text without blanks and tabs around it.
[[nodiscard]] std::string_view trimmed(std::string_view text);
[[nodiscard]] std::string upper_case(std::string_view text);
/// The number that the text starts with, whatever the locale; none for what is
/// no number or not finite.
[[nodiscard]] std::optional<double> to_real(std::string_view text);
[[nodiscard]] std::optional<int> to_integer(std::string_view text);

/// Whether values of the code are coordinates, lengths, angles or factors.
[[nodiscard]] bool is_real_code(int code);

}  // namespace importers::dxf
