#include "bench/report.h"

#include <algorithm>
#include <cstdio>
#include <fstream>

#include "bench/contestant.h"
#include "bench/machine.h"

namespace bench {

namespace {

/// The values of a field of the rows of a scene, each once, in their order.
std::vector<std::string> distinct(const std::vector<Row>& rows, std::string Row::*field,
                                  std::string_view scene) {
  std::vector<std::string> values;
  for (const Row& row : rows) {
    if (!scene.empty() && row.scene != scene) continue;
    if (std::ranges::find(values, row.*field) == values.end()) values.push_back(row.*field);
  }
  return values;
}

std::string ratio_of(const Report& report, const Row& row) {
  const double ratio = report.ratio(row);
  return ratio == 0.0 ? "" : three_digits(ratio);
}

std::string value_of(const Report& /*report*/, const Row& row) {
  return three_digits(row.value) + " " + row.unit;
}

}  // namespace

std::string three_digits(double value) {
  char text[32];
  if (value < 1.0) {
    std::snprintf(text, sizeof text, "%.3g", value);
  } else {
    std::snprintf(text, sizeof text, "%.*f", value < 10.0 ? 2 : value < 100.0 ? 1 : 0, value);
  }
  return text;
}

void Report::add(std::string_view scene, std::string_view measure, std::string_view contestant,
                 double value, std::string_view unit) {
  m_rows.push_back({std::string(scene), std::string(measure), std::string(contestant), value,
                    std::string(unit)});
  const std::string told = value_of(*this, m_rows.back());
  std::fprintf(stderr, "%-10s %-24s %-22s %12s", m_rows.back().scene.c_str(),
               m_rows.back().measure.c_str(), m_rows.back().contestant.c_str(), told.c_str());
  const double of_bound = ratio(m_rows.back());
  if (of_bound != 0.0) std::fprintf(stderr, "  %8s x", three_digits(of_bound).c_str());
  std::fprintf(stderr, "\n");
}

double Report::ratio(const Row& row) const {
  const auto is_bound = [&](const Row& other) {
    return other.contestant == kLowerBound && other.scene == row.scene &&
           other.measure == row.measure;
  };
  const auto bound = std::ranges::find_if(m_rows, is_bound);
  return bound == m_rows.end() || bound->value == 0.0 ? 0.0 : row.value / bound->value;
}

void Report::print() const {
  print_tables("Ratios to the lower bound", &ratio_of);
  print_tables("As measured", &value_of);
}

void Report::print_tables(std::string_view title, Value value) const {
  std::printf("\n%.*s\n", static_cast<int>(title.size()), title.data());
  for (const std::string& scene : distinct(m_rows, &Row::scene, "")) print_table(scene, value);
}

void Report::print_table(std::string_view scene, Value value) const {
  const std::vector<std::string> across = distinct(m_rows, &Row::contestant, scene);
  std::printf("\n| %.*s |", static_cast<int>(scene.size()), scene.data());
  for (const std::string& name : across) std::printf(" %s |", name.c_str());
  std::printf("\n|---|");
  for (std::size_t i = 0; i < across.size(); ++i) std::printf("---:|");
  std::printf("\n");
  for (const std::string& measure : distinct(m_rows, &Row::measure, scene)) {
    std::string line;
    bool is_told = false;
    for (const std::string& name : across) {
      const auto row = std::ranges::find_if(m_rows, [&](const Row& candidate) {
        return candidate.scene == scene && candidate.measure == measure &&
               candidate.contestant == name;
      });
      const std::string text = row == m_rows.end() ? "" : value(*this, *row);
      is_told = is_told || !text.empty();
      line += " " + text + " |";
    }
    if (is_told) std::printf("| %s |%s\n", measure.c_str(), line.c_str());
  }
}

std::string Report::write_csv(const std::string& path) const {
  std::ofstream file(path);
  for (const auto& [key, value] : machine()) file << "# " << key << ": " << value << "\n";
  file << "scene,measure,contestant,value,unit,ratio\n";
  for (const Row& row : m_rows) {
    file << row.scene << "," << row.measure << "," << row.contestant << ","
         << three_digits(row.value) << "," << row.unit << "," << ratio_of(*this, row) << "\n";
  }
  file.close();
  return file ? "" : "The file " + path + " could not be written.";
}

}  // namespace bench
