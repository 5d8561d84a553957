// Redrawing with worker threads.

#include <array>
#include <memory>
#include <thread>

#include "bench/measure.h"
#include "bench/own_list.h"
#include "bench/own_measures.h"

namespace bench {

namespace {

/// A drawing, ready to be drawn whole into pixels.
struct Ready {
  OwnList own;
  View whole;

  Ready(const scenes::Polylines& lines, bool antialiased)
      : whole(view_sets(scenes::bounds_of(lines), 0).front().views.front()) {
    own.build(lines);
    own.set_antialiased(antialiased);
  }
  void draw() { own.draw(whole, Target::raster); }
};

class ThreadMeasure {
 public:
  ThreadMeasure(const scenes::Scene& scene, bool antialiased, const Settings& settings,
                Report& report)
      : m_scene(scene.name),
        m_name(antialiased ? "whole smooth " : "whole thin "),
        m_settings(settings),
        m_report(report),
        m_lines(scene.generate(settings.count(scene.usual_count), 1)),
        m_ready(m_lines, antialiased),
        m_other(m_lines, antialiased) {}

  void run() {
    add_team("alone", -1);
    for (int threads = 1; threads <= DL::DisplayListMultithread::kMaxThreads; ++threads) {
      add_team(std::to_string(threads) + (threads == 1 ? " thread" : " threads"), threads);
    }
    m_names.emplace_back("two drawings at once");
    m_works.push_back({[this] { draw_both(); }, [this] { use(nullptr); }});

    const std::vector<double> seconds = medians(m_settings.rounds(), m_works, Clock::wall);
    use(nullptr);
    for (std::size_t i = 0; i < seconds.size(); ++i) {
      m_report.add(m_scene, m_name + m_names[i], kOurs, seconds[i] * 1e3, "ms");
    }
    // What the machine's processors have to give: drawings that share nothing.
    m_report.add(m_scene, m_name + "speed-up of two drawings", kOurs,
                 2 * seconds.front() / seconds.back(), "x");
    m_report.add(m_scene, m_name + "speed-up of 2 threads", kOurs, seconds.front() / seconds[2],
                 "x");
  }

 private:
  void add_team(const std::string& name, int threads) {
    m_teams.push_back(std::make_unique<DL::DisplayListMultithread>(threads));
    DL::DisplayListMultithread* team = m_teams.back().get();
    team->m_pDisplayList = &m_ready.own.list();
    m_names.push_back(name);
    m_works.push_back({[this] { m_ready.draw(); }, [this, team] { use(team); }});
  }
  void use(DL::DisplayListMultithread* team) { m_ready.own.list().m_pMultithread = team; }
  void draw_both() {
    std::thread other([this] { m_other.draw(); });
    m_ready.draw();
    other.join();
  }

  std::string_view m_scene;
  std::string m_name;
  const Settings& m_settings;
  Report& m_report;
  scenes::Polylines m_lines;
  Ready m_ready;
  Ready m_other;
  std::vector<std::unique_ptr<DL::DisplayListMultithread>> m_teams;
  std::vector<std::string> m_names;
  std::vector<Work> m_works;
};

}  // namespace

void measure_threads(const Settings& settings, Report& report) {
  for (const char* name : {"coherent", "rivers"}) {
    for (const bool antialiased : {false, true}) {
      ThreadMeasure(*scenes::find(name), antialiased, settings, report).run();
    }
  }
}

}  // namespace bench
