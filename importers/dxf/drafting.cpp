#include "importers/dxf/drafting.h"

#include <utility>

#include "importers/dxf/hatch_lines.h"
#include "importers/dxf/text_layout.h"

namespace importers::dxf {

namespace {

bool is_usable(const Extent& extent) {
  constexpr double most = Sketch::largest_coordinate;
  return extent.min_x >= -most && extent.min_y >= -most && extent.max_x <= most &&
         extent.max_y <= most;
}

Extent extent_of(const std::vector<Vertex>& points) {
  Extent extent;
  for (const Vertex& v : points) extent.widen(v.x, v.y);
  return extent;
}

class Drafter {
 public:
  Drafter(const Affine& affine, const DraftStyle& style, Plan& plan)
      : m_affine(affine), m_style(style), m_plan(plan) {}

  bool operator()(const Polyline& polyline) const;
  bool operator()(const Arc& arc) const { return add_arc(arc); }
  bool operator()(const Spline& spline) const { return add_stroke(flattened(spline)); }
  bool operator()(const Spot& spot) const;
  bool operator()(const Ray& ray) const;
  bool operator()(const Hatch& hatch) const;
  bool operator()(const Text& text) const { return add_text(text); }
  bool operator()(const Paragraphs& text) const { return add_text(text); }
  bool operator()(const Insert& /*insert*/) const { return true; }

 private:
  bool add_stroke(std::vector<Vertex> points) const;
  bool add_segments(std::vector<Vertex> points) const;
  bool add_arc(const Arc& arc) const;
  bool add_area(const std::vector<std::vector<Vertex>>& loops) const;
  template <class AnyText>
  bool add_text(const AnyText& text) const {
    if (!(text.height > 0) && !text.text.empty()) return false;
    return add_labels(laid_out(text, m_style.model));
  }
  bool add_labels(const std::vector<TextRun>& runs) const;

  const Affine& m_affine;
  const DraftStyle& m_style;
  Plan& m_plan;
};

bool Drafter::add_stroke(std::vector<Vertex> points) const {
  if (points.size() < 2) return false;
  for (Vertex& v : points) v = m_affine.point(v);
  const Extent extent = extent_of(points);
  return append(m_plan, {m_style.pen, extent, Stroke{std::move(points)}});
}

bool Drafter::add_segments(std::vector<Vertex> points) const {
  for (Vertex& v : points) v = m_affine.point(v);
  const Extent extent = extent_of(points);
  return append(m_plan, {m_style.pen, extent, Segments{std::move(points)}});
}

bool Drafter::add_arc(const Arc& arc) const {
  const Arc placed = transformed(arc, m_affine);
  // Without an area it has no axes: a line, or nothing.
  if (placed.p.x * placed.q.y - placed.p.y * placed.q.x == 0.0) {
    std::vector<Vertex> points;
    flatten(arc, points);
    return add_stroke(std::move(points));
  }
  Extent extent;
  widen(extent, placed);
  return append(m_plan, {m_style.pen, extent, placed});
}

bool Drafter::operator()(const Polyline& polyline) const {
  const std::vector<Corner>& corners = polyline.corners;
  if (corners.empty()) return false;
  const std::size_t sides = polyline.is_closed ? corners.size() : corners.size() - 1;
  if (sides == 0) return (*this)(Spot{corners[0].at});
  bool is_seen = false;
  std::vector<Vertex> run{corners[0].at};
  for (std::size_t i = 0; i < sides; ++i) {
    const Corner& from = corners[i];
    const Corner& to = corners[(i + 1) % corners.size()];
    if (is_straight(from.at, to.at, from.bulge)) {
      run.push_back(to.at);
      continue;
    }
    is_seen = add_stroke(std::move(run)) || is_seen;
    is_seen = add_arc(bulge_arc(from.at, to.at, from.bulge)) || is_seen;
    run.assign(1, to.at);
  }
  return add_stroke(std::move(run)) || is_seen;
}

bool Drafter::operator()(const Spot& spot) const {
  const Vertex at = m_affine.point(spot.at);
  return append(m_plan, {m_style.pen, {at.x, at.y, at.x, at.y}, Dot{at}});
}

bool Drafter::operator()(const Ray& ray) const {
  const Beam beam{m_affine.point(ray.base), m_affine.direction(ray.direction), ray.both_ways};
  m_plan.shapes.push_back({m_style.pen, {}, beam});
  return true;
}

bool Drafter::operator()(const Hatch& hatch) const {
  if (m_style.fill && hatch.is_solid) return add_area(hatch.loops);
  std::vector<Vertex> dashes = m_style.fill ? hatch_segments(hatch) : std::vector<Vertex>();
  if (!dashes.empty()) return add_segments(std::move(dashes));
  bool is_seen = false;
  for (const std::vector<Vertex>& loop : hatch.loops) {
    std::vector<Vertex> outline = loop;
    if (!outline.empty()) outline.push_back(outline.front());
    is_seen = add_stroke(std::move(outline)) || is_seen;
  }
  return is_seen;
}

bool Drafter::add_area(const std::vector<std::vector<Vertex>>& loops) const {
  std::vector<Vertex> points;
  for (const std::vector<Vertex>& loop : loops) {
    if (loop.size() < 3) continue;
    for (const Vertex& v : loop) points.push_back(m_affine.point(v));
    if (loops.size() == 1) break;
    points.push_back(m_affine.point(loop.front()));
    // Back to the first loop, along the bridge that led here.
    if (points.size() > loop.size() + 1) points.push_back(points.front());
  }
  if (points.size() < 3) return false;
  const Extent extent = extent_of(points);
  return append(m_plan, {m_style.pen, extent, Area{std::move(points)}});
}

bool Drafter::add_labels(const std::vector<TextRun>& runs) const {
  bool is_seen = runs.empty();
  for (const TextRun& run : runs) {
    is_seen = append(m_plan, label_of(run, m_affine, m_style.to_root, m_style.pen)) || is_seen;
  }
  return is_seen;
}

}  // namespace

bool append(Plan& plan, Shape shape) {
  if (!is_usable(shape.extent)) return false;
  plan.extent.widen(shape.extent.min_x, shape.extent.min_y);
  plan.extent.widen(shape.extent.max_x, shape.extent.max_y);
  plan.shapes.push_back(std::move(shape));
  return true;
}

bool draft(const Geometry& geometry, const Affine& affine, const DraftStyle& style, Plan& plan) {
  return std::visit(Drafter(affine, style, plan), geometry);
}

}  // namespace importers::dxf
