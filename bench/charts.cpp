// Draws the charts of docs/performance.md from the numbers of bench_compare.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "bench/chart_canvas.h"
#include "bench/contestant.h"
#include "bench/csv.h"

namespace bench {
namespace {

constexpr LM_RGB32 kGrid{0x00DDD8CC};
constexpr LM_RGB32 kFaint{0x00807A6C};
constexpr LM_RGB32 kOwn{0x00B5452C};
constexpr LM_RGB32 kPeer{0x009AA7B4};
constexpr LM_RGB32 kBand{0x00F3E6DC};
constexpr double kRow = 34.0;

constexpr std::string_view kNames[] = {kOurs,
                                       kReordered,
                                       "blocked array",
                                       "flat array",
                                       "packed R-tree of ids",
                                       "R*-tree of ids",
                                       "Qt graphics scene",
                                       "Cairo recording"};
using Names = std::vector<std::string_view>;

/// The three sizes of windows, from the largest to the smallest.
struct Size {
  std::string_view name;
  LM_RGB32 color;
  double radius;
};
constexpr Size kSizes[] = {
    {"whole", {0x002F5D8A}, 8.0}, {"1 %", {0x00B07A1E}, 6.5}, {"0.01 %", {0x003E7A4E}, 5.0}};

Lettering title() {
  return {.size = 16.0, .is_bold = true};
}
Lettering small(Anchor anchor) {
  return {.color = kFaint, .size = 11.5, .anchor = anchor};
}

/// Ratios from one 1, 2 or 5 of a power of ten to another.
struct Range {
  double smallest = 1.0;
  double largest = 10.0;
};

/// One panel of dots on a logarithmic axis of ratios: a row for each contestant.
class RatioPanel {
 public:
  RatioPanel(Canvas& canvas, Place corner, double width, const Names& names, const Range& range)
      : m_canvas(canvas), m_corner(corner), m_width(width), m_names(names), m_range(range) {}

  void draw_axis(std::string_view name) const {
    m_canvas.text({m_corner.x, m_corner.y - 18.0}, name, {.size = 13.0, .is_bold = true});
    const double bottom = m_corner.y + kRow * static_cast<double>(m_names.size());
    for (double tick = 0.001; tick <= m_range.largest; tick *= 10.0) {
      for (const double step : {1.0, 2.0, 5.0}) {
        if (tick * step < 0.99 * m_range.smallest || tick * step > m_range.largest) continue;
        m_canvas.line({x(tick * step), m_corner.y}, {x(tick * step), bottom}, kGrid);
        m_canvas.text({x(tick * step), bottom + 12.0}, three_digits_short(tick * step),
                      small(Anchor::middle));
      }
    }
  }

  void draw_row(const Results& results, std::string_view scene, std::string_view target,
                std::size_t row) const {
    const double y = m_corner.y + kRow * (static_cast<double>(row) + 0.5);
    bool is_there = false;
    for (const Size& size : kSizes) {
      const std::string measure = std::string(size.name) + " " + std::string(target);
      const double ratio = results.ratio(scene, measure, m_names[row]);
      if (ratio <= 0.0) continue;
      is_there = true;
      m_canvas.disc({x(ratio), y}, size.radius, size.color);
    }
    if (!is_there) m_canvas.text({m_corner.x + 4.0, y}, "no such device", small(Anchor::start));
  }

 private:
  static std::string three_digits_short(double value) {
    char text[16];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
  }
  /// The axis starts a little below the smallest.
  [[nodiscard]] double x(double ratio) const {
    const double start = m_range.smallest / 1.3;
    const double part = std::log(ratio / start) / std::log(m_range.largest / start);
    return m_corner.x + m_width * part;
  }

  Canvas& m_canvas;
  Place m_corner;
  double m_width;
  const Names& m_names;
  Range m_range;
};

/// The ratios of somebody in a scene.
std::vector<double> ratios_of(const Results& results, std::string_view scene,
                              std::string_view name) {
  std::vector<double> ratios;
  for (const Size& size : kSizes) {
    for (const char* target : {" null", " raster"}) {
      const double ratio = results.ratio(scene, std::string(size.name) + target, name);
      if (ratio > 0.0) ratios.push_back(ratio);
    }
  }
  return ratios;
}

/// The 1, 2 or 5 of a power of ten that is next to the value, not above it.
double rounded_down(double value) {
  const double power = std::pow(10.0, std::floor(std::log10(value)));
  return power * (value >= 5.0 * power ? 5.0 : value >= 2.0 * power ? 2.0 : 1.0);
}

Range range_of(const Results& results, std::string_view scene, const Names& names) {
  Range range;
  for (const std::string_view name : names) {
    for (const double ratio : ratios_of(results, scene, name)) {
      // A little less than 1 needs no axis of its own.
      if (ratio < 0.5) range.smallest = std::min(range.smallest, rounded_down(ratio));
      range.largest = std::max(range.largest, 1.0 / rounded_down(1.0 / ratio));
    }
  }
  return range;
}

void draw_legend(Canvas& canvas, double y, double right) {
  double x = right;
  for (std::size_t i = std::size(kSizes); i-- > 0;) {
    const Size& size = kSizes[i];
    canvas.text({x, y}, size.name, {.size = 12.0, .anchor = Anchor::end});
    x -= 12.0 + 7.4 * static_cast<double>(size.name.size());
    canvas.disc({x, y}, size.radius, size.color);
    x -= 20.0;
  }
}

std::string draw_ratios(const Results& results, std::string_view scene, const std::string& path) {
  constexpr double left = 170.0;
  constexpr double top = 86.0;
  constexpr double width = 370.0;
  constexpr double gap = 50.0;
  Names names;
  for (const std::string_view name : kNames) {
    if (!ratios_of(results, scene, name).empty()) names.push_back(name);
  }
  const double height = top + kRow * static_cast<double>(names.size()) + 48.0;
  const double right = left + 2 * width + gap;
  Canvas canvas(static_cast<std::int32_t>(right + 30.0), static_cast<std::int32_t>(height));
  canvas.text({20.0, 26.0}, "Redrawing \"" + std::string(scene) + "\": times the lower bound",
              title());
  draw_legend(canvas, 26.0, right);
  canvas.area({12.0, top}, {right + 12.0, top + kRow}, kBand);
  const Range range = range_of(results, scene, names);
  const RatioPanel null(canvas, {left, top}, width, names, range);
  const RatioPanel raster(canvas, {left + width + gap, top}, width, names, range);
  null.draw_axis("nothing drawn");
  raster.draw_axis("into pixels");
  for (std::size_t row = 0; row < names.size(); ++row) {
    canvas.text({20.0, top + kRow * (static_cast<double>(row) + 0.5)}, names[row],
                {.is_bold = row == 0});
    null.draw_row(results, scene, "null", row);
    raster.draw_row(results, scene, "raster", row);
  }
  canvas.text({left, height - 14.0}, "logarithmic; further left is faster", small(Anchor::start));
  return canvas.write(path);
}

struct Bar {
  std::string name;
  double value;
  bool is_own;
};

void draw_bars(Canvas& canvas, Place corner, double width, const std::string& name,
               const std::vector<Bar>& bars) {
  double largest = 1e-9;
  for (const Bar& bar : bars) largest = std::max(largest, bar.value);
  canvas.text({corner.x, corner.y - 18.0}, name, {.size = 13.0, .is_bold = true});
  for (std::size_t i = 0; i < bars.size(); ++i) {
    const double y = corner.y + 28.0 * (static_cast<double>(i) + 0.5);
    const double end = corner.x + (width - 50.0) * bars[i].value / largest;
    canvas.area({corner.x, y - 9.0}, {end, y + 9.0}, bars[i].is_own ? kOwn : kPeer);
    canvas.text({end + 6.0, y}, three_digits(bars[i].value), {.size = 12.0});
  }
}

std::vector<Bar> bars_of(const Results& results, std::string_view measure) {
  std::vector<Bar> bars;
  for (const std::string_view name : kNames) {
    const Row* row = results.find("coherent", measure, name);
    if (row != nullptr) bars.push_back({std::string(name), row->value, name == kOurs});
  }
  return bars;
}

std::string draw_building(const Results& results, const std::string& path) {
  constexpr double left = 170.0;
  constexpr double top = 84.0;
  constexpr double width = 370.0;
  const std::vector<Bar> bytes = bars_of(results, "bytes");
  const double height = top + 28.0 * static_cast<double>(bytes.size()) + 20.0;
  Canvas canvas(980, static_cast<std::int32_t>(height));
  canvas.text({20.0, 26.0}, "Building \"coherent\", for each polyline of four points", title());
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    canvas.text({20.0, top + 28.0 * (static_cast<double>(i) + 0.5)}, bytes[i].name,
                {.is_bold = i == 0});
  }
  draw_bars(canvas, {left, top}, width, "nanoseconds", bars_of(results, "build"));
  draw_bars(canvas, {left + width + 50.0, top}, width, "bytes, after the first redraw", bytes);
  return canvas.write(path);
}

constexpr const char* kTeams[] = {"2 threads", "4 threads", "two drawings at once"};

/// How many times as fast as alone; two drawings are twice the work.
std::vector<Bar> speedups(const Results& results, std::string_view scene) {
  std::vector<Bar> bars;
  for (const std::string style : {"whole thin ", "whole smooth "}) {
    const Row* alone = results.find(scene, style + "alone", kOurs);
    for (const std::string team : kTeams) {
      const Row* row = results.find(scene, style + team, kOurs);
      if (row == nullptr || alone == nullptr || row->value <= 0.0) continue;
      const bool is_ours = team != kTeams[2];
      bars.push_back({style + team, (is_ours ? 1 : 2) * alone->value / row->value, is_ours});
    }
  }
  return bars;
}

std::string draw_threads(const Results& results, const std::string& path) {
  constexpr double top = 84.0;
  const std::vector<Bar> coherent = speedups(results, "coherent");
  Canvas canvas(
      980, static_cast<std::int32_t>(top + 28.0 * static_cast<double>(coherent.size()) + 20.0));
  canvas.text({20.0, 26.0}, "Worker threads: times as fast as without", title());
  for (std::size_t i = 0; i < coherent.size(); ++i) {
    canvas.text({20.0, top + 28.0 * (static_cast<double>(i) + 0.5)}, coherent[i].name,
                {.is_bold = coherent[i].is_own});
  }
  draw_bars(canvas, {270.0, top}, 320.0, "coherent, into pixels", coherent);
  draw_bars(canvas, {640.0, top}, 320.0, "rivers, into pixels", speedups(results, "rivers"));
  return canvas.write(path);
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("Usage: bench_charts CSV FOLDER\n", stderr);
    return 2;
  }
  const bench::Results results(argv[1]);
  if (results.is_empty()) {
    std::fprintf(stderr, "bench_charts: there are no numbers in %s\n", argv[1]);
    return 1;
  }
  const std::string folder = argv[2];
  std::string problems;
  for (const char* scene : {"coherent", "scattered", "world"}) {
    problems += bench::draw_ratios(results, scene, folder + "/redraw-" + scene + ".svg");
  }
  problems += bench::draw_building(results, folder + "/building.svg");
  problems += bench::draw_threads(results, folder + "/threads.svg");
  if (!problems.empty()) std::fprintf(stderr, "%s\n", problems.c_str());
  return problems.empty() ? 0 : 1;
}
