#include "scenes/chart.h"

#include <array>
#include <cmath>

#include "scenes/random.h"

namespace scenes {

namespace {

using Point = DL::PointTemplate<long>;

constexpr std::int32_t kUnit = 16;  ///< logical units of a pixel
constexpr std::int32_t kLeft = 60 * kUnit;
constexpr std::int32_t kRight = (kChartWidth - 40) * kUnit;
constexpr std::int32_t kBottom = 60 * kUnit;
constexpr std::int32_t kTop = (kChartHeight - 40) * kUnit;
constexpr std::int32_t kTick = 100 * kUnit;

constexpr LM_RGB32 kPaper{0x00FBFAF6};
constexpr LM_RGB32 kGrid{0x00B9B3A4};
constexpr LM_RGB32 kAxis{0x00554F44};

/// One series: a curve a + b x + c sin(d x + e) over x from 0 to 1, in parts of
/// the chart's height, and how far its measurements spread.
struct Series {
  LM_RGB32 color;
  LM_Marker marker;
  double level, slope, swing, waves, phase, spread;

  [[nodiscard]] double at(double x) const {
    return level + slope * x + swing * std::sin(waves * x + phase);
  }
};

constexpr std::array<Series, 5> kSeries{{
    {{0x002F5D8A}, {LM_MARKER_CIRCLE, 11}, 0.15, 0.55, 0.05, 9.0, 0.0, 0.050},
    {{0x00B5452C}, {LM_MARKER_SQUARE, 10}, 0.85, -0.60, 0.07, 6.0, 1.0, 0.035},
    {{0x003E7A4E}, {LM_MARKER_TRIANGLE, 12}, 0.40, 0.10, 0.12, 5.0, 2.5, 0.045},
    {{0x007A4B8C}, {LM_MARKER_DIAMOND, 12}, 0.70, 0.15, 0.06, 11.0, 4.0, 0.030},
    {{0x00B07A1E}, {LM_MARKER_STAR, 12}, 0.12, 0.05, 0.05, 8.0, 5.0, 0.025},
}};

LM_RGB32 transparent(LM_RGB32 color, std::uint32_t transparency) {
  return {color.word | transparency << 24};
}

/// A place of the chart, from its lower left (0, 0) to its upper right (1, 1).
Point place(double x, double y) {
  return {kLeft + static_cast<std::int32_t>(std::lround(x * (kRight - kLeft))),
          kBottom + static_cast<std::int32_t>(std::lround(y * (kTop - kBottom)))};
}

/// About normally distributed with deviation 1: the sum of twelve even ones.
double normal(Random& random) {
  double sum = 0.0;
  for (int i = 0; i < 12; ++i) sum += random.between(0, 1 << 20);
  return sum / (1 << 20) - 6.0;
}

void add_ground(Sheet& sheet) {
  DL::DisplayList& list = sheet.add_layer();
  const DL::BoundsTemplate<long>& page = sheet.bounds();
  const Point corners[] = {{page.min.x - kUnit, page.min.y - kUnit},
                           {page.max.x + kUnit, page.min.y - kUnit},
                           {page.max.x + kUnit, page.max.y + kUnit},
                           {page.min.x - kUnit, page.max.y + kUnit}};
  list.add(new DL::DLPolygon(kPaper, 4, corners));
  constexpr std::int32_t dot_step = 4 * kUnit;
  for (std::int32_t y = kBottom + kTick; y < kTop; y += kTick) {
    list.add(new DL::DLRowOfDots(kGrid, {kLeft, y}, {dot_step, 0}, (kRight - kLeft) / dot_step));
  }
  for (std::int32_t x = kLeft + kTick; x < kRight; x += kTick) {
    list.add(new DL::DLRowOfDots(kGrid, {x, kBottom}, {0, dot_step}, (kTop - kBottom) / dot_step));
  }
}

void add_axes(Sheet& sheet) {
  DL::DisplayList& list = sheet.add_layer();
  list.m_rendition.set_line_weight(2);
  const Point axes[] = {{kLeft, kTop}, {kLeft, kBottom}, {kRight, kBottom}};
  list.add(new DL::DLPolyline(kAxis, 3, axes));
  std::vector<Point> ticks;
  for (std::int32_t y = kBottom; y < kTop; y += kTick) {
    ticks.insert(ticks.end(), {{kLeft - 6 * kUnit, y}, {kLeft, y}});
  }
  for (std::int32_t x = kLeft; x < kRight; x += kTick) {
    ticks.insert(ticks.end(), {{x, kBottom - 6 * kUnit}, {x, kBottom}});
  }
  list.add(new DL::DLPolysegment(kAxis, static_cast<std::int32_t>(ticks.size()), ticks.data()));
}

void add_clouds(Sheet& sheet, std::size_t polydots, Random& random) {
  constexpr std::size_t dots = 6;
  DL::DisplayList& list = sheet.add_layer();
  for (std::size_t i = 0; i < polydots; ++i) {
    const Series& series = kSeries.at(i % kSeries.size());
    const double x = random.between(0, 1 << 20) / double{1 << 20};
    const double y = series.at(x) + series.spread * normal(random);
    std::array<Point, dots> cloud;
    for (Point& dot : cloud) dot = place(x + 0.003 * normal(random), y + 0.005 * normal(random));
    list.add(new DL::DLPolydot(transparent(series.color, 0xB0), dots, cloud.data()));
  }
}

void add_curve(Sheet& sheet, const Series& series) {
  constexpr std::int32_t steps = 256;
  constexpr std::int32_t steps_of_marker = 12;
  DL::DisplayList& list = sheet.add_layer();
  list.m_rendition.set_line_weight(2);
  list.m_rendition.set_marker(series.marker);
  std::vector<Point> curve;
  std::vector<Point> marked;
  for (std::int32_t i = 0; i <= steps; ++i) {
    const double x = double{1} * i / steps;
    curve.push_back(place(x, series.at(x)));
    if (i % steps_of_marker == steps_of_marker / 2) marked.push_back(curve.back());
  }
  const LM_RGB32 dark{(series.color.word >> 1) & 0x007F7F7FU};
  list.add(new DL::DLPolyline(dark, static_cast<std::int32_t>(curve.size()), curve.data()));
  list.add(new DL::DLPolymarker(dark, static_cast<std::int32_t>(marked.size()), marked.data()));
}

}  // namespace

std::unique_ptr<Sheet> make_chart(std::size_t polydots, std::uint64_t seed) {
  auto sheet = std::make_unique<Sheet>(
      DL::BoundsTemplate<long>{0, 0, kChartWidth * kUnit - 1, kChartHeight * kUnit - 1});
  Random random(seed);
  add_ground(*sheet);
  add_clouds(*sheet, polydots, random);
  for (const Series& series : kSeries) add_curve(*sheet, series);
  add_axes(*sheet);
  return sheet;
}

}  // namespace scenes
