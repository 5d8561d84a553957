#include "bench/world.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "scenes/random.h"
#if defined(BENCH_HAS_IMPORTERS)
#include "importers/loader.h"
#endif

namespace bench {

namespace {

using scenes::Point;
using Border = std::vector<Point>;

#if defined(BENCH_HAS_IMPORTERS)
std::vector<Border> borders() {
  importers::Drawing drawing;
  importers::ReadOptions options;
  options.fill = false;
  const std::string problem = importers::read_drawing(world_file(), options, drawing);
  if (!problem.empty()) std::fprintf(stderr, "%s\n", problem.c_str());
  std::vector<Border> borders;
  if (!problem.empty()) return borders;
  DL::DisplayListIterator at(drawing.list.get());
  for (DL::Drawable* d = at.current(); d != nullptr; d = at.next()) {
    const auto* line = dynamic_cast<const DL::DLPolyline*>(d);
    if (line != nullptr) borders.emplace_back(line->points, line->points + line->count);
  }
  return borders;
}
#else
std::vector<Border> borders() {
  return {};
}
#endif

/// Halves each segment, with its middle moved aside by up to a fifth of its length.
Border refined(const Border& border, scenes::Random& random) {
  Border fine;
  for (std::size_t i = 0; i + 1 < border.size(); ++i) {
    const Point& from = border[i];
    const Point& to = border[i + 1];
    const double aside = random.between(-200, 200) / 1000.0;
    const double width = static_cast<double>(to.x) - from.x;
    const double height = static_cast<double>(to.y) - from.y;
    fine.push_back(from);
    fine.push_back({static_cast<std::int32_t>(from.x + width / 2 - height * aside),
                    static_cast<std::int32_t>(from.y + height / 2 + width * aside)});
  }
  if (!border.empty()) fine.push_back(border.back());
  return fine;
}

std::size_t points_of(const std::vector<Border>& borders) {
  std::size_t points = 0;
  for (const Border& border : borders) points += border.size();
  return points;
}

void append_in_pieces(scenes::Polylines& lines, const Border& border, LM_RGB32 color) {
  constexpr std::size_t longest = 64;
  for (std::size_t first = 0; first + 1 < border.size(); first += longest - 1) {
    const std::size_t count = std::min(longest, border.size() - first);
    lines.append(std::span(border).subspan(first, count), color);
  }
}

}  // namespace

std::string world_file() {
  return DISPLAYLIST_SOURCE_DIR "/examples/data/world-110m.json";
}

scenes::Polylines world_lines(std::size_t points, std::uint64_t seed) {
  std::vector<Border> all = borders();
  scenes::Random random(seed);
  while (!all.empty() && points_of(all) * 3 < points * 2) {
    for (Border& border : all) border = refined(border, random);
  }
  scenes::Polylines lines;
  for (std::size_t i = 0; i < all.size(); ++i) {
    append_in_pieces(lines, all[i], {scenes::Random(i).next() & 0x00BFBFBFU});
  }
  return lines;
}

}  // namespace bench
