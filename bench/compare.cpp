// Measures the display list beside what programs use instead of it.

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "bench/contest.h"
#include "bench/contestant.h"
#include "bench/own_measures.h"

namespace {

constexpr const char* kUsage =
    "Usage: bench_compare [--quick] [--light] [--rounds N] [--only SCENE or PART] [--csv FILE]\n"
    "  --quick   scenes of a tenth of the size, to see that it works\n"
    "  --light   without the peers that take minutes\n"
    "  --rounds  of which the median is told; 5 without it\n"
    "  --only    one scene of polylines, world, or a part: editing, storing,\n"
    "            interrupts, threads, classes\n"
    "  --csv     write the numbers to FILE, too\n";

struct Options {
  bench::Settings settings;
  std::string_view bytes_scene;  ///< with the next one: only its bytes are wanted
  std::string_view bytes_contestant;
};

/// The argument that makes no sense, or null.
const char* read_arguments(int argc, char** argv, Options& options) {
  bench::Settings& settings = options.settings;
  for (int i = 1; i < argc; ++i) {
    const std::string_view option = argv[i];
    if (option == "--quick") {
      settings.is_quick = true;
    } else if (option == "--light") {
      settings.is_light = true;
    } else if (option == "--rounds" && i + 1 < argc) {
      settings.rounds_wanted = std::atoi(argv[++i]);
    } else if (option == "--only" && i + 1 < argc) {
      settings.only = argv[++i];
    } else if (option == "--csv" && i + 1 < argc) {
      settings.csv = argv[++i];
    } else if (option == "--bytes" && i + 2 < argc) {
      options.bytes_scene = argv[++i];
      options.bytes_contestant = argv[++i];
    } else {
      return argv[i];
    }
  }
  return nullptr;
}

int measure(const bench::Settings& settings) {
  const std::string_view missing = bench::left_out();
  if (!missing.empty()) {
    std::fprintf(stderr, "Not in this build: %.*s\n", static_cast<int>(missing.size()),
                 missing.data());
  }
  bench::Report report;
  bench::run_contests(settings, report);
  bench::run_own_measures(settings, report);
  if (report.rows().empty()) {
    std::fprintf(stderr, "There is no scene or part '%s'.\n", settings.only.c_str());
    return 2;
  }
  report.print();
  if (settings.csv.empty()) return 0;
  const std::string problem = report.write_csv(settings.csv);
  if (!problem.empty()) std::fprintf(stderr, "%s\n", problem.c_str());
  return problem.empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  const char* wrong = read_arguments(argc, argv, options);
  if (wrong != nullptr) {
    const bool asks_for_help = std::string_view(wrong) == "--help";
    std::fputs(kUsage, asks_for_help ? stdout : stderr);
    return asks_for_help ? 0 : 2;
  }
  if (options.bytes_scene.empty()) return measure(options.settings);
  return bench::print_bytes(options.bytes_scene, options.bytes_contestant, options.settings);
}
