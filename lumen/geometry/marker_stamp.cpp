#include "lumen/geometry/marker_stamp_p.h"

namespace lumen {
namespace {

/// Markers that reach no further are made whole, so that the next points need
/// no other part of it.
constexpr std::int32_t small_reach = 64;

constexpr LM_DCI_Point origin{0, 0, 0};

}  // namespace

bool MarkerStamp::prepare(const Key& key, std::int32_t count, const LM_DCI_Point* points,
                          const PixelRectangle& inside) {
  const MarkerGeometry geometry(key.marker);
  const std::int32_t weight =
      geometry.has_weight() ? std::clamp(key.weight, 1, MarkerGeometry::max_reach) : 1;
  // More than the half of the weight that it is.
  m_reach = geometry.reach() + weight + 2;
  const PixelRectangle needed = window(count, points, inside);
  if (needed.is_empty()) return false;
  if (key == m_key && needed == m_window) return true;
  m_key = key;
  m_window = needed;
  make(geometry, weight);
  return true;
}

PixelRectangle MarkerStamp::window(std::int32_t count, const LM_DCI_Point* points,
                                   const PixelRectangle& inside) const {
  PixelRectangle places{INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN};
  for (std::int32_t i = 0; i < count; ++i) {
    const LM_DCI_Point& point = points[i];
    if (!is_near(point, inside)) continue;
    places = {std::min(places.min_x, point.x), std::min(places.min_y, point.y),
              std::max(places.max_x, point.x), std::max(places.max_y, point.y)};
  }
  if (places.is_empty()) return places;
  if (m_reach <= small_reach) return {-m_reach, -m_reach, m_reach, m_reach};
  // As wide to the left as to the right, because the one is made of the other.
  const std::int32_t side =
      std::min(m_reach, std::max(places.max_x - inside.min_x, inside.max_x - places.min_x));
  return {-side, std::max(-m_reach, inside.min_y - places.max_y), side,
          std::min(m_reach, inside.max_y - places.min_y)};
}

void MarkerStamp::make(const MarkerGeometry& geometry, std::int32_t weight) {
  m_runs.clear();
  m_covers.clear();
  if (geometry.is_disc()) return make_disc(geometry);
  LM_Line_Style style;
  style.weight = weight;
  m_strokes.start(style, m_key.antialiased, m_window);
  for (const MarkerStroke& stroke : geometry.strokes()) {
    m_strokes.add_polyline(stroke.count, stroke.points.data());
  }
  if (geometry.is_circle()) m_strokes.add_arc(EllipticalArc(origin, geometry.reach()));
  m_strokes.mirror_right_half();
  m_strokes.fill(true, *this);
}

void MarkerStamp::make_disc(const MarkerGeometry& geometry) {
  m_shape.clear();
  add_area(EllipticalArc(origin, geometry.reach() + 0.5), ArcArea::to_chord, m_key.antialiased,
           m_window, m_shape);
  m_shape.fill(LM_Fill_Rule::even_odd, m_key.antialiased, m_window, *this);
}

}  // namespace lumen
