#include "bench/contest.h"

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "bench/contestant.h"
#include "bench/machine.h"
#include "bench/measure.h"
#include "bench/world.h"

namespace bench {

namespace {

constexpr std::string_view kWorld = "world";

struct Player {
  std::string_view name;
  std::unique_ptr<Contestant> contestant;
};

scenes::Polylines lines_of(std::string_view scene, const Settings& settings) {
  if (scene == kWorld) return world_lines(settings.count(540'000), 1);
  const scenes::Scene& found = *scenes::find(scene);
  return found.generate(settings.count(found.usual_count), 1);
}

/// Those for everybody are first; a quick run is content with these three.
std::vector<std::string_view> scene_names(const Settings& settings) {
  std::vector<std::string_view> names{"coherent", "scattered", kWorld};
  for (const scenes::Scene& scene : scenes::all()) {
    const bool is_there = std::ranges::find(names, scene.name) != names.end();
    const bool is_wanted = !settings.is_quick || settings.only == scene.name;
    if (scene.generate != nullptr && !is_there && is_wanted) names.push_back(scene.name);
  }
  return names;
}

/// The heavy ones have no part in scenes that would take them minutes.
bool takes_part(const Entry& entry, std::string_view scene) {
  if (entry.name == kReordered) return scene == "scattered";
  constexpr std::string_view for_light_ones[] = {"rows", "towns", "many"};
  // Cairo's pens have one width for a recording, which a zoom does not bear.
  if (scene == "deep" && entry.name == "Cairo recording") return false;
  return entry.is_light || std::ranges::find(for_light_ones, scene) == std::end(for_light_ones);
}

/// One contest: everybody on one scene.
class Contest {
 public:
  Contest(std::string_view scene, const Settings& settings, Report& report)
      : m_scene(scene), m_settings(settings), m_report(report), m_lines(lines_of(scene, settings)) {
    for (const Entry& entry : contestants()) {
      if (!takes_part(entry, scene) || (settings.is_light && !entry.is_light)) continue;
      m_players.push_back({entry.name, entry.make()});
    }
  }

  void run() {
    if (m_lines.count() == 0) return;
    measure_bytes();
    measure_build();
    const scenes::Bounds whole = scenes::bounds_of(m_lines);
    std::vector<ViewSet> sets = view_sets(whole, m_settings.windows());
    if (m_scene == "deep") sets.push_back(zoom_set(whole, m_settings.windows()));
    for (ViewSet& set : sets) {
      find_visible(m_lines, set);
      m_report.add(m_scene, "visible " + set.name, "everybody",
                   static_cast<double>(set.visible()) / static_cast<double>(set.views.size()), "");
      for (Player& player : m_players) player.contestant->prepare(set.views.front());
      check_pictures(set);
      for (const Target target : {Target::null, Target::raster}) measure_draw(set, target);
    }
  }

 private:
  /// In a process of its own, whose memory nobody has used before.
  void measure_bytes() {
    for (const Player& player : m_players) {
      if (player.name == kLowerBound) continue;
      const std::string command = "/proc/" + std::to_string(getpid()) + "/exe --bytes '" +
                                  std::string(m_scene) + "' '" + std::string(player.name) + "'" +
                                  (m_settings.is_quick ? " --quick" : "");
      const std::string told = output_of(command);
      if (!told.empty()) m_report.add(m_scene, "bytes", player.name, std::atof(told.c_str()), "B");
    }
  }

  void measure_build() {
    std::vector<Work> works;
    for (Player& player : m_players) {
      works.push_back(
          {[&] { player.contestant->build(m_lines); }, [&] { player.contestant->clear(); }});
    }
    const std::vector<double> seconds = medians(m_settings.build_rounds(), works);
    for (std::size_t i = 0; i < m_players.size(); ++i) {
      if (m_players[i].name == kLowerBound) continue;
      m_report.add(m_scene, "build", m_players[i].name,
                   seconds[i] * 1e9 / static_cast<double>(m_lines.count()), "ns");
    }
  }

  void measure_draw(const ViewSet& set, Target target) {
    std::vector<Player*> players;
    std::vector<Work> works;
    for (Player& player : m_players) {
      if (!player.contestant->can_draw(target)) continue;
      players.push_back(&player);
      works.push_back({[&] {
        for (const View& view : set.views) player.contestant->draw(view, target);
      }});
    }
    const std::vector<double> seconds = medians(m_settings.rounds(), works);
    const std::string measure = set.name + (target == Target::null ? " null" : " raster");
    for (std::size_t i = 0; i < players.size(); ++i) {
      m_report.add(m_scene, measure, players[i]->name,
                   seconds[i] * 1e3 / static_cast<double>(set.views.size()), "ms");
    }
  }

  /// Everybody draws the same: about as many pixels as the lower bound. (Qt leaves
  /// out some polylines shorter than a pixel, and Cairo, whose lines are areas,
  /// where no pixel's middle is covered.)
  void check_pictures(const ViewSet& set) {
    double expected = 0.0;
    for (Player& player : m_players) {
      const std::span<std::uint32_t> pixels = player.contestant->pixels();
      std::ranges::fill(pixels, 0x00FFFFFF);
      player.contestant->draw(set.views.front(), Target::raster);
      const auto inked = static_cast<double>(std::ranges::count_if(
          pixels, [](std::uint32_t pixel) { return (pixel & 0x00FFFFFF) != 0x00FFFFFF; }));
      if (player.name == kLowerBound) expected = inked;
      if (std::abs(inked - expected) <= 0.35 * expected + 100.0) continue;
      std::fprintf(stderr, "%.*s inks %.0f pixels of %s where the lower bound inks %.0f\n",
                   static_cast<int>(player.name.size()), player.name.data(), inked,
                   set.name.c_str(), expected);
    }
  }

  std::string_view m_scene;
  const Settings& m_settings;
  Report& m_report;
  scenes::Polylines m_lines;
  std::vector<Player> m_players;
};

}  // namespace

void run_contests(const Settings& settings, Report& report) {
  for (const std::string_view scene : scene_names(settings)) {
    if (settings.wants(scene)) Contest(scene, settings, report).run();
  }
}

int print_bytes(std::string_view scene, std::string_view contestant, const Settings& settings) {
  const auto entries = contestants();
  const auto entry = std::ranges::find(entries, contestant, &Entry::name);
  if (entry == entries.end()) return 1;
  const scenes::Polylines lines = lines_of(scene, settings);
  const View whole = view_sets(scenes::bounds_of(lines), 0).front().views.front();
  const std::unique_ptr<Contestant> player = entry->make();
  const auto draw = [&] {
    for (const Target target : {Target::null, Target::raster}) {
      if (player->can_draw(target)) player->draw(whole, target);
    }
  };
  // What does not grow with the scene is there before.
  player->build(scenes::find("coherent")->generate(100, 1));
  draw();
  player->clear();
  malloc_trim(0);
  const std::size_t before = resident_bytes();
  player->build(lines);
  draw();
  malloc_trim(0);  // what growing left behind is no part of what is kept
  std::printf("%.1f\n",
              static_cast<double>(resident_bytes() - before) / static_cast<double>(lines.count()));
  return 0;
}

}  // namespace bench
