#include "bench/csv.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "bench/contestant.h"

namespace bench {

Results::Results(const std::string& path) {
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with('#') || line.starts_with("scene,")) continue;
    std::istringstream fields(line);
    Row row;
    std::string value;
    std::getline(fields, row.scene, ',');
    std::getline(fields, row.measure, ',');
    std::getline(fields, row.contestant, ',');
    std::getline(fields, value, ',');
    std::getline(fields, row.unit, ',');
    row.value = std::atof(value.c_str());
    m_rows.push_back(row);
  }
}

const Row* Results::find(std::string_view scene, std::string_view measure,
                         std::string_view contestant) const {
  const auto row = std::ranges::find_if(m_rows, [&](const Row& candidate) {
    return candidate.scene == scene && candidate.measure == measure &&
           candidate.contestant == contestant;
  });
  return row == m_rows.end() ? nullptr : &*row;
}

double Results::ratio(std::string_view scene, std::string_view measure,
                      std::string_view contestant) const {
  const Row* row = find(scene, measure, contestant);
  const Row* bound = find(scene, measure, kLowerBound);
  return row == nullptr || bound == nullptr || bound->value == 0.0 ? 0.0
                                                                   : row->value / bound->value;
}

}  // namespace bench
