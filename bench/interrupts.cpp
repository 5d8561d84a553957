// How soon a redraw notices that it is to stop.

#include <algorithm>
#include <chrono>

#include "bench/own_list.h"
#include "bench/own_measures.h"

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

/// The context of an interrupt test: notes the time between polls, and stops at
/// one of them.
struct Poller {
  Clock::time_point last = Clock::now();
  double longest = 0.0;  ///< seconds from one poll to the next
  std::size_t polls = 0;
  std::size_t stop_at = 0;  ///< 0: never
  std::size_t drawn = 0;    ///< drawables since the last poll, which the renderer counts
  std::size_t most_drawn = 0;

  bool may_go_on() {
    const Clock::time_point now = Clock::now();
    longest = std::max(longest, std::chrono::duration<double>(now - last).count());
    most_drawn = std::max(most_drawn, drawn);
    drawn = 0;
    last = Clock::now();
    return ++polls != stop_at;
  }
};

/// Counts drawables into a poller; polylines that fall on a point come as dots.
LM_Handle<LM_Renderer> new_counter(Poller& poller) {
  const LM_Handle<LM_Renderer> renderer = LM_Create<LM_Renderer>();
  const auto count_points = [](void* context, LM_Rendition*, std::int32_t, const LM_DCI_Point*) {
    ++static_cast<Poller*>(context)->drawn;
  };
  const auto count_dot = [](void* context, LM_Rendition*, const LM_DCI_Point*, const LM_RGB32*) {
    ++static_cast<Poller*>(context)->drawn;
  };
  LM_Device_Actions& actions = renderer->actions;
  actions.polyline_clipped = actions.polyline_unclipped = {&poller, count_points};
  actions.dot_clipped = actions.dot_unclipped = {&poller, count_dot};
  return renderer;
}

/// Draws the window until the poller stops it; returns the seconds from there to
/// the return.
double draw(DL::DisplayList& list, const scenes::Bounds& window, Poller& poller) {
  look_at(list, window);
  list.m_pfnInterrupt = [](void* context, DL::DisplayList*) {
    return static_cast<Poller*>(context)->may_go_on();
  };
  list.m_pInterruptContext = &poller;
  poller.last = Clock::now();
  list.m_pRootGroup->draw_bounded_interrupt(list, window, window);
  const double since = std::chrono::duration<double>(Clock::now() - poller.last).count();
  list.m_pfnInterrupt = nullptr;
  return since;
}

void measure(const scenes::Scene& scene, const Settings& settings, Report& report) {
  OwnList own;
  const scenes::Polylines lines = scene.generate(settings.count(scene.usual_count), 1);
  own.build(lines);
  const scenes::Bounds whole = scenes::bounds_of(lines);

  Poller counting;
  own.list().m_pRenderer = new_counter(counting);
  draw(own.list(), whole, counting);
  report.add(scene.name, "polls of a redraw", kOurs, static_cast<double>(counting.polls), "");
  report.add(scene.name, "drawables between polls", kOurs, static_cast<double>(counting.most_drawn),
             "");

  lumen::Picture picture(kWidth, kHeight);
  own.list().m_pRenderer = LM_Create<lumen::RasterDevice>(picture);
  std::vector<double> longest;
  double slowest_return = 0.0;
  for (int round = 0; round < settings.rounds(); ++round) {
    Poller timing;
    draw(own.list(), whole, timing);
    longest.push_back(timing.longest);
    Poller stopped;
    stopped.stop_at = 1 + counting.polls / 2;
    slowest_return = std::max(slowest_return, draw(own.list(), whole, stopped));
  }
  // Of the worst of each round the best: what the list does, not the machine.
  report.add(scene.name, "longest between polls", kOurs, std::ranges::min(longest) * 1e6, "us");
  report.add(scene.name, "return after stop", kOurs, slowest_return * 1e6, "us");
}

}  // namespace

void measure_interrupts(const Settings& settings, Report& report) {
  for (const char* name : {"coherent", "rivers"}) measure(*scenes::find(name), settings, report);
}

}  // namespace bench
