#include "importers/dxf/hatch_lines.h"

#include <algorithm>
#include <cmath>

namespace importers::dxf {

namespace {

constexpr double most_lines = 5000;
constexpr std::size_t most_points = 200000;

/// The loops of a hatch, turned so that a family of lines is level.
class LevelLoops {
 public:
  LevelLoops(const Hatch& hatch, double angle) {
    const Affine turn = Affine::turning(-angle);
    for (const std::vector<Vertex>& loop : hatch.loops) {
      std::vector<Vertex>& turned = m_loops.emplace_back();
      for (const Vertex& v : loop) {
        turned.push_back(turn.point(v));
        m_extent.widen(turned.back().x, turned.back().y);
      }
    }
  }

  [[nodiscard]] const Extent& extent() const { return m_extent; }

  /// Where the level enters and leaves the area, in turn.
  [[nodiscard]] std::vector<double> crossings(double level) const {
    std::vector<double> result;
    for (const std::vector<Vertex>& loop : m_loops) {
      for (std::size_t i = 0; i < loop.size(); ++i) {
        const Vertex& a = loop[i];
        const Vertex& b = loop[(i + 1) % loop.size()];
        if ((a.y > level) == (b.y > level)) continue;
        result.push_back(a.x + (level - a.y) / (b.y - a.y) * (b.x - a.x));
      }
    }
    std::sort(result.begin(), result.end());
    return result;
  }

 private:
  std::vector<std::vector<Vertex>> m_loops;
  Extent m_extent;
};

/// Appends the dashes between two places on a level line; they are counted
/// from `origin`.
void add_dashes(const std::vector<double>& dashes, double from, double to, double origin,
                double level, std::vector<Vertex>& points) {
  double period = 0;
  for (const double dash : dashes) period += std::fabs(dash);
  if (dashes.empty() || period <= 0 || (to - from) / period > most_lines) {
    points.push_back({from, level});
    points.push_back({to, level});
    return;
  }
  const double start = origin + std::floor((from - origin) / period) * period;
  const int periods = static_cast<int>(std::ceil((to - start) / period));
  for (int i = 0; i < periods; ++i) {
    double at = start + i * period;
    for (const double dash : dashes) {
      const double end = at + std::fabs(dash);
      if (dash >= 0 && end >= from && at <= to) {
        points.push_back({std::max(at, from), level});
        points.push_back({std::min(end, to), level});
      }
      at = end;
    }
  }
}

/// Appends the dashes of a family. False when they are too many.
bool add_family(const Hatch& hatch, const HatchLines& lines, std::vector<Vertex>& points) {
  const LevelLoops loops(hatch, lines.angle);
  const Affine turn = Affine::turning(-lines.angle);
  const Vertex base = turn.point(lines.base);
  Vertex step = turn.direction(lines.step);
  const Extent& extent = loops.extent();
  if (extent.is_empty()) return true;
  // Of lines that are too dense to be told apart, every so manieth one.
  const double thinning = std::ceil(extent.height() / std::fabs(step.y) / most_lines);
  // Lines that only follow each other on the same level have no distance.
  const bool has_distance = std::fabs(step.y) > 1e-9 * length(step);
  if (!has_distance || !std::isfinite(thinning)) return false;
  if (thinning > 1) step = thinning * step;
  double first = std::ceil((extent.min_y - base.y) / step.y);
  double last = std::floor((extent.max_y - base.y) / step.y);
  if (step.y < 0) {
    first = std::ceil((extent.max_y - base.y) / step.y);
    last = std::floor((extent.min_y - base.y) / step.y);
  }
  const Affine back = Affine::turning(lines.angle);
  const int count = static_cast<int>(last - first) + 1;
  for (int line = 0; line < count; ++line) {
    const double k = first + line;
    const double level = base.y + k * step.y;
    const std::vector<double> at = loops.crossings(level);
    const std::size_t known = points.size();
    for (std::size_t i = 0; i + 1 < at.size(); i += 2) {
      add_dashes(lines.dashes, at[i], at[i + 1], base.x + k * step.x, level, points);
    }
    for (std::size_t i = known; i < points.size(); ++i) points[i] = back.point(points[i]);
    if (points.size() > most_points) return false;
  }
  return true;
}

}  // namespace

std::vector<Vertex> hatch_segments(const Hatch& hatch) {
  std::vector<Vertex> points;
  for (const HatchLines& lines : hatch.lines) {
    if (!add_family(hatch, lines, points)) return {};
  }
  return points;
}

}  // namespace importers::dxf
