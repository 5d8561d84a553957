// Scenes of other drawables than polylines, which no peer keeps alike.

#include "bench/measure.h"
#include "bench/own_list.h"
#include "bench/own_measures.h"

namespace bench {

namespace {

void measure(const scenes::Scene& scene, const Settings& settings, Report& report) {
  OwnList own;
  const std::size_t count = settings.count(scene.usual_count);
  const double build = medians(settings.build_rounds(),
                               {{[&] { scenes::add_to(own.start(), scene, count, 1); }}})[0];
  report.add(scene.name, "build", kOurs, build * 1e9 / static_cast<double>(count), "ns");
  scenes::Bounds whole;
  own.list().m_pRootGroup->add_bounds(whole);
  for (const ViewSet& set : view_sets(whole, settings.windows())) {
    const auto draw = [&](Target target) {
      for (const View& view : set.views) own.draw(view, target);
    };
    const std::vector<double> seconds = medians(
        settings.build_rounds(), {{[&] { draw(Target::null); }}, {[&] { draw(Target::raster); }}});
    const auto per_window = [&](double s) {
      return s * 1e3 / static_cast<double>(set.views.size());
    };
    report.add(scene.name, set.name + " null", kOurs, per_window(seconds[0]), "ms");
    report.add(scene.name, set.name + " raster", kOurs, per_window(seconds[1]), "ms");
  }
}

}  // namespace

void measure_classes(const Settings& settings, Report& report) {
  for (const scenes::Scene& scene : scenes::all()) {
    if (scene.fill != nullptr) measure(scene, settings, report);
  }
}

}  // namespace bench
