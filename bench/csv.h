#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "bench/report.h"

namespace bench {

/// The numbers of a file that Report::write_csv wrote.
class Results {
 public:
  /// Without any when the file cannot be read.
  explicit Results(const std::string& path);

  [[nodiscard]] bool is_empty() const { return m_rows.empty(); }
  /// Null when it was not measured.
  [[nodiscard]] const Row* find(std::string_view scene, std::string_view measure,
                                std::string_view contestant) const;
  /// The ratio to the lower bound; 0 where there is none.
  [[nodiscard]] double ratio(std::string_view scene, std::string_view measure,
                             std::string_view contestant) const;

 private:
  std::vector<Row> m_rows;
};

}  // namespace bench
