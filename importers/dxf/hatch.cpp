#include "importers/dxf/hatch.h"

#include <algorithm>

namespace importers::dxf {

namespace {

constexpr int loop_flags = 92;
constexpr int polyline_loop = 2;

/// The values of two codes that come in turn, as points.
std::vector<Vertex> points_of(const Record& record, int x_code) {
  std::vector<Vertex> points;
  for (const Pair& pair : record.pairs) {
    if (pair.code == x_code) points.push_back({to_real(pair.value).value_or(0), 0});
    if (pair.code == x_code + 10 && !points.empty()) {
      points.back().y = to_real(pair.value).value_or(0);
    }
  }
  return points;
}

std::vector<double> values_of(const Record& record, int code) {
  std::vector<double> values;
  for (const Pair& pair : record.pairs) {
    if (pair.code == code) values.push_back(to_real(pair.value).value_or(0));
  }
  return values;
}

std::vector<Vertex> polyline_points(const Record& loop) {
  std::vector<Corner> corners;
  for (const Pair& pair : loop.pairs) {
    const double value = to_real(pair.value).value_or(0);
    if (pair.code == 10) corners.push_back({{value, 0}, 0});
    if (corners.empty()) continue;
    if (pair.code == 20) corners.back().at.y = value;
    if (pair.code == 42) corners.back().bulge = value;
  }
  std::vector<Vertex> points;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const Corner& from = corners[i];
    const Corner& to = corners[(i + 1) % corners.size()];
    if (is_straight(from.at, to.at, from.bulge)) {
      points.push_back(from.at);
    } else {
      flatten(bulge_arc(from.at, to.at, from.bulge), points);
    }
  }
  return points;
}

std::vector<Vertex> arc_points(const Record& edge, bool is_ellipse) {
  const double size = edge.real(40, 0);
  const Vertex p = is_ellipse ? Vertex{edge.real(11, 0), edge.real(21, 0)} : Vertex{size, 0};
  // Clockwise arcs have their angles measured clockwise, too.
  const double turn = edge.integer(73, 1) == 0 ? -1.0 : 1.0;
  const double q = turn * (is_ellipse ? size : 1.0);
  Arc arc{{edge.real(10, 0), edge.real(20, 0)},
          p,
          {-q * p.y, q * p.x},
          radians(edge.real(50, 0)),
          radians(edge.real(51, 360))};
  put_in_order(arc.start, arc.end);
  std::vector<Vertex> points;
  flatten(arc, points);
  return points;
}

std::vector<Vertex> edge_points(const Record& edge) {
  switch (edge.integer(72, 0)) {
    case 1:
      return {{edge.real(10, 0), edge.real(20, 0)}, {edge.real(11, 0), edge.real(21, 0)}};
    case 2:
      return arc_points(edge, false);
    case 3:
      return arc_points(edge, true);
    case 4:
      return flattened({edge.integer(94, 3), false, values_of(edge, 40), points_of(edge, 10),
                        values_of(edge, 42), points_of(edge, 11)});
    default:
      return {};
  }
}

/// Appends an edge, the other way round where that joins better.
void join(std::vector<Vertex>& loop, std::vector<Vertex> edge) {
  if (edge.empty()) return;
  if (!loop.empty() && length(edge.back() - loop.back()) < length(edge.front() - loop.back())) {
    std::reverse(edge.begin(), edge.end());
  }
  loop.insert(loop.end(), edge.begin(), edge.end());
}

/// Takes the parts of a hatch as their first pairs come by.
class Parts {
 public:
  explicit Parts(Hatch& hatch) : m_hatch(hatch) {}

  void begin_loop(int flags) {
    end_loop();
    m_in_loop = true;
    m_is_polyline = (flags & polyline_loop) != 0;
  }

  void add(const Pair& pair) {
    if (!m_is_polyline && pair.code == 72) end_edge();
    m_part.pairs.push_back(pair);
  }

  void end_loop() {
    if (!m_in_loop) return;
    if (m_is_polyline) {
      m_loop = polyline_points(m_part);
      m_part.pairs.clear();
    } else {
      end_edge();
    }
    if (m_loop.size() > 2) m_hatch.loops.push_back(m_loop);
    m_loop.clear();
    m_in_loop = false;
  }

  [[nodiscard]] bool is_in_loop() const { return m_in_loop; }

 private:
  void end_edge() {
    join(m_loop, edge_points(m_part));
    m_part.pairs.clear();
  }

  Hatch& m_hatch;
  Record m_part;
  std::vector<Vertex> m_loop;
  bool m_in_loop = false;
  bool m_is_polyline = false;
};

void add_to_lines(std::vector<HatchLines>& lines, const Pair& pair) {
  const double value = to_real(pair.value).value_or(0);
  if (pair.code == 53) lines.push_back({radians(value), {0, 0}, {0, 0}, {}});
  if (lines.empty()) return;
  switch (pair.code) {
    case 43:
      lines.back().base.x = value;
      break;
    case 44:
      lines.back().base.y = value;
      break;
    case 45:
      lines.back().step.x = value;
      break;
    case 46:
      lines.back().step.y = value;
      break;
    case 49:
      lines.back().dashes.push_back(value);
      break;
    default:
      break;
  }
}

}  // namespace

Hatch read_hatch(const Record& record) {
  Hatch hatch;
  hatch.is_solid = record.integer(70, 1) != 0;
  Parts parts(hatch);
  bool has_loops = true;
  for (const Pair& pair : record.pairs) {
    // What follows the loops starts with the style of the hatch.
    if (pair.code == 75 || pair.code == 98) has_loops = false;
    if (!has_loops) parts.end_loop();
    if (!has_loops) {
      if (pair.code >= 43 && pair.code <= 53) add_to_lines(hatch.lines, pair);
    } else if (pair.code == loop_flags) {
      parts.begin_loop(to_integer(pair.value).value_or(0));
    } else if (parts.is_in_loop()) {
      parts.add(pair);
    }
  }
  parts.end_loop();
  return hatch;
}

}  // namespace importers::dxf
