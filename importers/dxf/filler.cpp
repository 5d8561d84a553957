#include "importers/dxf/filler.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <tuple>

#include "files/stretched_text.h"
#include "importers/add_flags.h"
#include "importers/complete_drawable.h"

namespace importers::dxf {

namespace {

/// The logical box of an extent, and a unit more for what was rounded.
DL::BoundsTemplate<long> logical_box(const Extent& extent, const Mapping& mapping) {
  return {nearest_logical(mapping.logical_x(extent.min_x) - 1),
          nearest_logical(mapping.logical_y(extent.min_y) - 1),
          nearest_logical(mapping.logical_x(extent.max_x) + 1),
          nearest_logical(mapping.logical_y(extent.max_y) + 1)};
}

/// Whether all of the ellipse, not the arc alone, has logical coordinates.
bool has_logical_axes(const Arc& arc, const Axes& axes, const Mapping& mapping) {
  constexpr double most = 2147483000.0;
  const double radius = axes.major * mapping.scale;
  return std::fabs(mapping.logical_x(arc.center.x)) + radius < most &&
         std::fabs(mapping.logical_y(arc.center.y)) + radius < most;
}

/// What a plan is fitted by: its extent and, so that its arcs stay arcs, the
/// ellipses that they are part of, unless that is more than `most_growth` times.
Extent fitted_extent(const Plan& plan, double most_growth) {
  Extent extent = plan.extent;
  for (const Shape& shape : plan.shapes) {
    const Arc* arc = std::get_if<Arc>(&shape.what);
    if (arc == nullptr) continue;
    const double radius = axes(*arc).major;
    extent.widen(arc->center.x - radius, arc->center.y - radius);
    extent.widen(arc->center.x + radius, arc->center.y + radius);
  }
  const double side = std::max(plan.extent.width(), plan.extent.height());
  const double grown = std::max(extent.width(), extent.height());
  return grown <= side * most_growth ? extent : plan.extent;
}

/// Of the drawing itself, which is looked at more closely than what is nested:
/// fitted by more than its extent where arcs need that only, and then by little.
Mapping mapping_of(const Plan& plan) {
  // What a quarter of a circle by itself takes, and what is lost in rounding.
  constexpr double most_growth = 2.001;
  const Mapping mapping = Mapping::fitting(plan.extent);
  const bool fits = std::all_of(plan.shapes.begin(), plan.shapes.end(), [&](const Shape& shape) {
    const Arc* arc = std::get_if<Arc>(&shape.what);
    return arc == nullptr || has_logical_axes(*arc, axes(*arc), mapping);
  });
  return fits ? mapping : Mapping::fitting(fitted_extent(plan, most_growth));
}

}  // namespace

bool Filler::PenOrder::operator()(const std::pair<Pen, std::int32_t>& a,
                                  const std::pair<Pen, std::int32_t>& b) const {
  return std::tuple(a.first.color.word, a.first.pattern, a.second) <
         std::tuple(b.first.color.word, b.first.pattern, b.second);
}

LM_Rendition* Filler::rendition(const Pen& pen, std::int32_t weight) {
  LM_Rendition*& known = m_renditions[{pen, weight}];
  if (known != nullptr) return known;
  auto rendition = std::make_unique<LM_Rendition>();
  rendition->set_color(pen.color, false);
  rendition->set_line_pattern(pen.pattern);
  rendition->set_line_weight(weight);
  known = rendition.get();
  m_drawing.renditions.push_back(std::move(rendition));
  return known;
}

void Filler::fill(const Plan& plan) {
  m_drawing.extent = plan.extent;
  m_drawing.mapping = mapping_of(plan);
  m_drawing.list = std::make_unique<DL::DisplayList>(m_drawing.heap.get());
  fill(plan, {*m_drawing.list, m_drawing.mapping, false});
}

void Filler::fill(const Plan& plan, const Target& target) {
  for (const Shape& shape : plan.shapes) {
    if (target.is_nested && ++m_nested > m_limit) {
      ++m_too_many;
      return;
    }
    if (!target.is_nested) begin_nests(shape);
    add(shape, target);
  }
}

void Filler::begin_nests(const Shape& shape) {
  const Nest* nest = std::get_if<Nest>(&shape.what);
  if (nest == nullptr || nest->plan.get() == m_last_nested) return;
  m_last_nested = nest->plan.get();
  // None takes all that is left, so that it does not silence those after it.
  m_limit = m_nested + (most_nested - std::min(m_nested, most_nested)) / 5 * 4;
}

void Filler::add(const Shape& shape, const Target& target) {
  DL::Drawable* drawable =
      std::visit([&](const auto& what) { return make(what, shape, target); }, shape.what);
  if (drawable == nullptr) return;
  if (target.list.add(drawable, logical_box(shape.extent, target.mapping), add_flags(*drawable)) ==
      nullptr) {
    delete drawable;
    m_out_of_memory = true;
    return;
  }
  if (!target.is_nested) ++m_drawing.drawables;
}

void Filler::load(const std::vector<Vertex>& points, const Mapping& mapping) {
  m_points.clear();
  for (const Vertex& v : points) m_points.push_back(mapping.to_logical(v.x, v.y));
  m_drawing.points += points.size();
}

DL::Drawable* Filler::make(const Stroke& stroke, const Shape& shape, const Target& target) {
  load(stroke.points, target.mapping);
  LM_Rendition* pen = rendition(shape.pen, 1);
  auto* drawable =
      complete_or_null(new (m_drawing.heap.get()) DL::PalettizedDrawable<DL::DLPolyline>(
          pen, static_cast<std::int32_t>(m_points.size()), m_points.data()));
  m_out_of_memory = m_out_of_memory || drawable == nullptr;
  return drawable;
}

DL::Drawable* Filler::make(const Segments& segments, const Shape& shape, const Target& target) {
  load(segments.points, target.mapping);
  auto* drawable =
      complete_or_null(new (m_drawing.heap.get()) DL::PalettizedDrawable<DL::DLPolysegment>(
          rendition(shape.pen, 1), static_cast<std::int32_t>(m_points.size()), m_points.data()));
  m_out_of_memory = m_out_of_memory || drawable == nullptr;
  return drawable;
}

DL::Drawable* Filler::make(const Arc& arc, const Shape& shape, const Target& target) {
  const Axes own = axes(arc);
  const Mapping& mapping = target.mapping;
  if (!has_logical_axes(arc, own, mapping)) {
    Stroke stroke;
    flatten(arc, stroke.points);
    return make(stroke, shape, target);
  }
  LM_Rendition* pen = rendition(shape.pen, 1);
  const LogicalPoint center = mapping.to_logical(arc.center.x, arc.center.y);
  const std::int32_t major = nearest_logical(own.major * mapping.scale);
  const std::int32_t minor = nearest_logical(own.minor * mapping.scale);
  const auto rotation = static_cast<float>(own.rotation);
  LumenHeap* heap = m_drawing.heap.get();
  DL::Drawable* drawable = nullptr;
  if (arc.is_whole()) {
    drawable = new (heap)
        DL::PalettizedDrawable<DL::DLEllipse>(pen, center, major, minor, rotation, &target.list);
  } else {
    drawable = new (heap) DL::PalettizedDrawable<DL::DLEllipticalArc>(
        pen, center, major, minor, rotation, static_cast<float>(own.start),
        static_cast<float>(own.end), &target.list);
  }
  m_out_of_memory = m_out_of_memory || drawable == nullptr;
  return drawable;
}

DL::Drawable* Filler::make(const Dot& dot, const Shape& shape, const Target& target) {
  load({dot.at, dot.at}, target.mapping);
  LM_Rendition* pen = rendition({shape.pen.color, LM_PATTERN_SOLID}, m_point_size);
  LumenHeap* heap = m_drawing.heap.get();
  DL::Drawable* drawable = nullptr;
  if (m_point_size < 2) {
    drawable = new (heap) DL::PalettizedDrawable<DL::DLDot>(pen, m_points[0]);
  } else {
    drawable = complete_or_null(
        new (heap) DL::PalettizedDrawable<DL::DLPolyline>(pen, 2, m_points.data()));
  }
  m_out_of_memory = m_out_of_memory || drawable == nullptr;
  return drawable;
}

DL::Drawable* Filler::make(const Area& area, const Shape& shape, const Target& target) {
  load(area.points, target.mapping);
  DL::Drawable* drawable = complete_or_null(new (m_drawing.heap.get()) DL::DLPolygon(
      shape.pen.color, static_cast<std::int32_t>(m_points.size()), m_points.data()));
  m_out_of_memory = m_out_of_memory || drawable == nullptr;
  return drawable;
}

DL::Drawable* Filler::make(const Label& label, const Shape& shape, const Target& target) {
  const Mapping& mapping = target.mapping;
  LM_Rendition* pen = rendition({shape.pen.color, LM_PATTERN_SOLID}, 1);
  DL::Drawable* drawable = new (m_drawing.heap.get()) files::StretchedText(
      pen, label.width_factor, label.font,
      DL::PointTemplate<double>{mapping.logical_x(label.start.x), mapping.logical_y(label.start.y)},
      label.text, label.em * mapping.scale, label.rotation, logical_box(shape.extent, mapping),
      &target.list);
  m_out_of_memory = m_out_of_memory || drawable == nullptr;
  return drawable;
}

DL::Drawable* Filler::make(const Beam& /*beam*/, const Shape& /*shape*/, const Target& /*target*/) {
  return nullptr;
}

DL::Drawable* Filler::make(const Nest& nest, const Shape& shape, const Target& target) {
  if (m_nested + list_cost > m_limit) {
    ++m_too_many;
    return nullptr;
  }
  m_nested += list_cost;
  constexpr double most_growth = 16;
  const Mapping inner = Mapping::fitting(fitted_extent(*nest.plan, most_growth));
  const Mapping& outer = target.mapping;
  DL::DisplayList* child = make_list(*nest.plan, inner);
  const DL::BoundsTemplate<long> bounds = logical_box(nest.plan->extent, inner);
  LM_Rendition* pen = rendition(shape.pen, 1);
  auto* drawable = new (m_drawing.heap.get()) DL::DrawableDisplayList(pen, child, &bounds);
  if (drawable == nullptr) {
    delete child;
    m_out_of_memory = true;
    return nullptr;
  }
  drawable->set_scale(
      {nest.scale.x * outer.scale / inner.scale, nest.scale.y * outer.scale / inner.scale});
  drawable->set_offset({outer.logical_x(inner.origin_x * nest.scale.x + nest.offset.x),
                        outer.logical_y(inner.origin_y * nest.scale.y + nest.offset.y)});
  return drawable;
}

DL::DisplayList* Filler::make_list(const Plan& plan, const Mapping& mapping) {
  auto list = std::make_unique<DL::DisplayList>(m_drawing.heap.get());
  list->m_bWideDots = true;
  fill(plan, {*list, mapping, true});
  return list.release();
}

}  // namespace importers::dxf
