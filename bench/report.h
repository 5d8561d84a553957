#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bench {

/// One number that was measured.
struct Row {
  std::string scene;
  std::string measure;
  std::string contestant;
  double value = 0.0;
  std::string unit;
};

/// What was measured, in that order.
class Report {
 public:
  /// Keeps the row, and tells it on standard error so that one sees it grow.
  void add(std::string_view scene, std::string_view measure, std::string_view contestant,
           double value, std::string_view unit);

  /// The ratio to the lower bound of the same scene and measure, 0 without one.
  [[nodiscard]] double ratio(const Row& row) const;
  [[nodiscard]] const std::vector<Row>& rows() const { return m_rows; }

  /// Tables on standard output: the ratios first, then everything as it is.
  void print() const;
  /// Empty on success, else what is wrong. The file starts with lines about the
  /// machine, each with a # before it.
  [[nodiscard]] std::string write_csv(const std::string& path) const;

 private:
  using Value = std::string (*)(const Report& report, const Row& row);

  /// A table for each scene: measures down, contestants across.
  void print_tables(std::string_view title, Value value) const;
  void print_table(std::string_view scene, Value value) const;

  std::vector<Row> m_rows;
};

/// The text with as many digits as tell something.
std::string three_digits(double value);

}  // namespace bench
