// Runs the hot paths, each between two requests to valgrind's callgrind, which
// counts their instructions. scripts/bench/counts runs it and compares.

#include <valgrind/callgrind.h>

#include <cstdio>
#include <functional>

#include "bench/memory_stream.h"
#include "bench/own_list.h"
#include "scenes/random.h"

namespace bench {
namespace {

constexpr std::size_t kCount = 20'000;
constexpr std::size_t kWindows = 20;

/// Has what `run` does counted under this name, and prints how many operations
/// that are.
void count(const char* name, std::size_t operations, const std::function<void()>& run) {
  CALLGRIND_TOGGLE_COLLECT;
  run();
  CALLGRIND_TOGGLE_COLLECT;
  CALLGRIND_DUMP_STATS_AT(name);
  std::printf("%s,%zu\n", name, operations);
}

/// Drawn once before: only the first redraw allocates.
void count_redraw(const char* name, OwnList& own, const ViewSet& set, Target target) {
  const auto draw = [&] {
    for (const View& view : set.views) own.draw(view, target);
  };
  draw();
  count(name, set.visible(), draw);
}

void count_redraws(OwnList& own, const scenes::Polylines& lines) {
  std::vector<ViewSet> sets = view_sets(scenes::bounds_of(lines), kWindows);
  for (ViewSet& set : sets) find_visible(lines, set);
  count_redraw("redraw whole null", own, sets[0], Target::null);
  count_redraw("redraw windows null", own, sets[1], Target::null);
  count_redraw("redraw whole raster", own, sets[0], Target::raster);
  count_redraw("redraw windows raster", own, sets[1], Target::raster);
}

void count_walking(OwnList& own) {
  count("iterate", kCount, [&] {
    DL::DisplayListIterator at(&own.list());
    while (at.next() != nullptr) continue;
  });
}

void count_storing(OwnList& own) {
  ZtFsMemoryStream stream;
  write_stream(own.list(), stream);  // the stream has its memory then
  stream.clear();
  count("write", kCount, [&] { write_stream(own.list(), stream); });
  OwnList copy;
  DL::DisplayList& list = copy.start();
  count("read", kCount, [&] { read_stream(list, stream); });
}

void count_removal(OwnList& own, const scenes::Polylines& lines) {
  constexpr std::size_t removed = 500;
  scenes::Random random(3);
  count("remove", removed, [&] {
    for (std::size_t i = 0; i < removed; ++i) {
      own.remove(lines.polyline(random.next() % kCount));
    }
  });
}

void count_all() {
  const scenes::Polylines lines = scenes::find("coherent")->generate(kCount, 1);
  OwnList own;
  DL::DisplayList& list = own.start();
  count("insert", kCount, [&] { scenes::add_to(list, lines); });
  count_redraws(own, lines);
  count_walking(own);
  count_storing(own);
  count_removal(own, lines);
}

}  // namespace
}  // namespace bench

int main() {
  bench::count_all();
  return 0;
}
