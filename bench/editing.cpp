// Removing and walking.

#include <algorithm>

#include "bench/measure.h"
#include "bench/own_list.h"
#include "bench/own_measures.h"
#include "scenes/random.h"

namespace bench {

namespace {

constexpr std::string_view kScene = "coherent";

/// Removes polylines of the scene, which were chosen at random, each by its
/// geometry.
double seconds_to_remove(const Settings& settings, const scenes::Polylines& lines,
                         std::size_t count) {
  OwnList own;
  scenes::Random random(3);
  std::vector<std::uint32_t> ids;
  for (std::size_t i = 0; i < count; ++i) {
    ids.push_back(random.next() % static_cast<std::uint32_t>(lines.count()));
  }
  const auto remove = [&] {
    for (const std::uint32_t id : ids) {
      own.remove(lines.polyline(id));
    }
  };
  return medians(settings.build_rounds(), {{remove, [&] { own.build(lines); }}})[0];
}

/// Removes what lies in the windows; gives the seconds for each drawable removed.
double seconds_to_remove(const Settings& settings, const scenes::Polylines& lines,
                         const ViewSet& windows) {
  OwnList own;
  const auto remove = [&] {
    for (const View& view : windows.views) own.list().m_pRootGroup->remove_bounded(view.window);
  };
  const double seconds = medians(settings.build_rounds(), {{remove, [&] { own.build(lines); }}})[0];
  std::size_t left = 0;
  DL::DisplayListIterator at(&own.list());
  for (DL::Drawable* d = at.current(); d != nullptr; d = at.next()) ++left;
  return seconds / static_cast<double>(std::max<std::size_t>(lines.count() - left, 1));
}

/// Walks an iterator to its end; returns how many drawables there were.
std::size_t walk(DL::DisplayListIterator& at) {
  std::size_t count = 0;
  for (DL::Drawable* d = at.current(); d != nullptr; d = at.next()) ++count;
  return count;
}

void measure_walking(const Settings& settings, Report& report, const scenes::Polylines& lines,
                     const ViewSet& windows) {
  OwnList own;
  own.build(lines);
  std::size_t walked = 0;
  const auto walk_all = [&] {
    DL::DisplayListIterator at(&own.list());
    walked = walk(at);
  };
  std::size_t walked_in_windows = 0;
  const auto walk_windows = [&] {
    walked_in_windows = 0;
    for (const View& view : windows.views) {
      DL::DisplayListBoundedIterator at(&own.list(), view.window);
      walked_in_windows += walk(at);
    }
  };
  const std::vector<double> seconds = medians(settings.rounds(), {{walk_all}, {walk_windows}});
  const auto each = [](double s, std::size_t count) {
    return s * 1e9 / static_cast<double>(std::max<std::size_t>(count, 1));
  };
  report.add(kScene, "iterate", kOurs, each(seconds[0], walked), "ns");
  report.add(kScene, "iterate in 1 % windows", kOurs, each(seconds[1], walked_in_windows), "ns");
}

}  // namespace

void measure_editing(const Settings& settings, Report& report) {
  const scenes::Scene& scene = *scenes::find(kScene);
  const scenes::Polylines lines = scene.generate(settings.count(scene.usual_count), 1);
  const ViewSet windows = view_sets(scenes::bounds_of(lines), settings.windows())[1];
  constexpr std::size_t searched = 1000;
  report.add(kScene, "remove by search", kOurs,
             seconds_to_remove(settings, lines, searched) * 1e9 / searched, "ns");
  report.add(kScene, "remove by area", kOurs, seconds_to_remove(settings, lines, windows) * 1e9,
             "ns");
  measure_walking(settings, report, lines, windows);
}

}  // namespace bench
