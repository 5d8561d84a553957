// Writing and reading.

#include <cstddef>
#include <cstdio>
#include <cstring>

#include "bench/measure.h"
#include "bench/memory_stream.h"
#include "bench/own_list.h"
#include "bench/own_measures.h"
#include "bench/world.h"
#include "files/drawing_file.h"
#if defined(BENCH_HAS_IMPORTERS)
#include "importers/loader.h"
#endif

namespace bench {

namespace {

constexpr std::string_view kScene = "coherent";

/// Tells a time in both units: how fast the bytes go, and for each drawable.
struct Told {
  Report& report;
  double count;

  void operator()(const std::string& what, double seconds, std::size_t bytes) const {
    report.add(kScene, what, kOurs, static_cast<double>(bytes) / seconds / 1e6, "MB/s");
    report.add(kScene, what + " (each)", kOurs, seconds * 1e9 / count, "ns");
  }
};

void measure_stream(const Settings& settings, DL::DisplayList& list, const Told& told) {
  ZtFsMemoryStream stream;
  std::unique_ptr<BuiltList> copy;
  const auto write = [&] { write_stream(list, stream); };
  const auto read = [&] { read_stream(copy->list, stream); };
  const std::vector<double> seconds =
      medians(settings.build_rounds(),
              {{write, [&] { stream.clear(); }}, {read, [&] {
                                                    stream.rewind();
                                                    copy = std::make_unique<BuiltList>();
                                                  }}});
  told("write the stream", seconds[0], stream.size());
  told("read the stream", seconds[1], stream.size());
}

void measure_file(const Settings& settings, DL::DisplayList& list, const Told& told,
                  std::size_t stream_bytes) {
  std::vector<std::byte> bytes;
  files::Contents contents;
  std::string problem;
  const auto write = [&] { problem += files::write_bytes(bytes, list); };
  const auto read = [&] { problem += files::read_bytes(bytes, {}, contents); };
  const std::vector<double> seconds =
      medians(settings.build_rounds(),
              {{write, [&] { bytes.clear(); }}, {read, [&] { contents = files::Contents(); }}});
  if (!problem.empty()) std::fprintf(stderr, "%s\n", problem.c_str());
  told("write .dlf", seconds[0], stream_bytes);
  told("read .dlf", seconds[1], stream_bytes);
  told.report.add(kScene, "size of .dlf", kOurs, static_cast<double>(bytes.size()) / told.count,
                  "B");
}

void measure_opening([[maybe_unused]] const Settings& settings, [[maybe_unused]] Report& report) {
#if defined(BENCH_HAS_IMPORTERS)
  const auto open = [] {
    importers::Drawing drawing;
    const std::string problem = importers::read_drawing(world_file(), {}, drawing);
    if (!problem.empty()) std::fprintf(stderr, "%s\n", problem.c_str());
  };
  report.add("world", "open the map", kOurs, medians(settings.rounds(), {{open}})[0] * 1e3, "ms");
#endif
}

}  // namespace

void measure_storing(const Settings& settings, Report& report) {
  const scenes::Scene& scene = *scenes::find(kScene);
  OwnList own;
  own.build(scene.generate(settings.count(scene.usual_count), 1));
  const Told told{report, static_cast<double>(settings.count(scene.usual_count))};
  measure_stream(settings, own.list(), told);
  ZtFsMemoryStream stream;
  write_stream(own.list(), stream);
  measure_file(settings, own.list(), told, stream.size());
  measure_opening(settings, report);
}

}  // namespace bench
