// Redrawing with worker threads.

#include <memory>

#include "bench/measure.h"
#include "bench/own_list.h"
#include "bench/own_measures.h"

namespace bench {

namespace {

void measure(const scenes::Scene& scene, const Settings& settings, Report& report) {
  OwnList own;
  const scenes::Polylines lines = scene.generate(settings.count(scene.usual_count), 1);
  own.build(lines);
  const View whole = view_sets(scenes::bounds_of(lines), 0).front().views.front();

  std::vector<std::unique_ptr<DL::DisplayListMultithread>> teams;
  std::vector<Work> works;
  for (int threads = 0; threads <= DL::DisplayListMultithread::kMaxThreads; ++threads) {
    teams.push_back(std::make_unique<DL::DisplayListMultithread>(threads == 0 ? -1 : threads));
    DL::DisplayListMultithread* team = teams.back().get();
    team->m_pDisplayList = &own.list();
    works.push_back({[&own, &whole] { own.draw(whole, Target::raster); },
                     [&own, team] { own.list().m_pMultithread = team; }});
  }
  const std::vector<double> seconds = medians(settings.rounds(), works, Clock::wall);
  own.list().m_pMultithread = nullptr;
  for (std::size_t threads = 0; threads < seconds.size(); ++threads) {
    const std::string name = threads == 0   ? "alone"
                             : threads == 1 ? "1 thread"
                                            : std::to_string(threads) + " threads";
    report.add(scene.name, "whole raster " + name, kOurs, seconds[threads] * 1e3, "ms");
  }
}

}  // namespace

void measure_threads(const Settings& settings, Report& report) {
  for (const char* name : {"coherent", "rivers"}) measure(*scenes::find(name), settings, report);
}

}  // namespace bench
