#include "lumen/geometry/coverage_p.h"

#include "lumen/geometry/line_pattern_p.h"

namespace lumen {
namespace {

/// So many steps are enough for any picture of a patterned arc, which has to be
/// gone along as a whole to know where its dashes are.
constexpr std::int32_t most_pattern_steps = 1 << 18;

/// How much further out than the arc pixel centres are inside: more than a
/// straight piece may be further in.
constexpr double centers_growth = 1.0 / 32;

PlaceBox grown(const PixelRectangle& inside, double by) {
  return {inside.min_x - by, inside.min_y - by, inside.max_x + by, inside.max_y + by};
}

LM_DCI_Point pixel_of(const Place& place) {
  const auto nearest = [](double value) {
    return static_cast<std::int32_t>(
        std::nearbyint(std::clamp(value, -2147483648.0, 2147483647.0)));
  };
  return {nearest(place.x), nearest(place.y), 0};
}

/// A product of two differences of 32-bit numbers, which takes 65 bits.
struct Product {
  Product(std::int64_t a, std::int64_t b)
      : size(magnitude(a) * magnitude(b)), is_negative(size != 0 && (a < 0) != (b < 0)) {}

  static std::uint64_t magnitude(std::int64_t value) {
    return static_cast<std::uint64_t>(value < 0 ? -value : value);
  }
  friend bool operator<(const Product& a, const Product& b) {
    if (a.is_negative != b.is_negative) return a.is_negative;
    return a.is_negative ? b.size < a.size : a.size < b.size;
  }

  std::uint64_t size;
  bool is_negative;
};

}  // namespace

void add_polygon(std::int32_t count, const LM_DCI_Point* points, Shape& shape) {
  shape.move_to(points[0].x, points[0].y);
  for (std::int32_t i = 1; i < count; ++i) shape.line_to(points[i].x, points[i].y);
}

void add_strip(std::int32_t count, const LM_DCI_Point* points, Shape& shape) {
  for (std::int32_t i = 2; i < count; ++i) {
    const LM_DCI_Point& a = points[i - 2];
    const LM_DCI_Point* b = &points[i - 1];
    const LM_DCI_Point* c = &points[i];
    const Product one(std::int64_t{b->x} - a.x, std::int64_t{c->y} - a.y);
    const Product other(std::int64_t{b->y} - a.y, std::int64_t{c->x} - a.x);
    if (one < other) {
      std::swap(b, c);
    } else if (!(other < one)) {
      continue;
    }
    shape.move_to(a.x, a.y);
    shape.line_to(b->x, b->y);
    shape.line_to(c->x, c->y);
  }
}

void add_area(const EllipticalArc& arc, ArcArea area, bool antialiased,
              const PixelRectangle& inside, Shape& shape) {
  if (arc.is_flat()) return;
  const EllipticalArc edge = antialiased ? arc : arc.grown(centers_growth);
  bool started = false;
  const auto add = [&](const Place& place) {
    if (started) {
      shape.line_to(place.x, place.y);
    } else {
      shape.move_to(place.x, place.y);
    }
    started = true;
  };
  ArcSteps(edge, 0, ArcSteps::unlimited).visit(grown(inside, 2), add);
  if (area == ArcArea::to_center && !arc.is_whole()) add(arc.center());
}

PixelRectangle image_pixels(const LM_Image& image, const LM_DCI_Point& corner,
                            const PixelRectangle& inside) {
  const std::int64_t right = std::int64_t{corner.x} + image.width() - 1;
  const std::int64_t lower = std::int64_t{corner.y} + image.height() - 1;
  // Limited to the rectangle before they are 32 bits again.
  return {std::max(corner.x, inside.min_x), std::max(corner.y, inside.min_y),
          static_cast<std::int32_t>(std::clamp<std::int64_t>(right, INT32_MIN, inside.max_x)),
          static_cast<std::int32_t>(std::clamp<std::int64_t>(lower, INT32_MIN, inside.max_y))};
}

void Strokes::start(const LM_Line_Style& style, bool antialiased, const PixelRectangle& inside) {
  m_style = style;
  m_antialiased = antialiased;
  m_are_thin = style.weight <= 1 && !antialiased;
  m_inside = inside;
  m_pixels.start(inside, style.pattern);
  m_shape.clear();
}

void Strokes::add_polyline(std::int32_t count, const LM_DCI_Point* points) {
  if (m_are_thin) {
    m_pixels.add_polyline(count, points);
  } else {
    m_stroker.add(count, points, m_style, m_inside, m_shape);
  }
}

void Strokes::add_arc(const EllipticalArc& arc) {
  if (arc.is_flat()) {
    add_flat(arc, false);
  } else if (m_are_thin) {
    m_pixels.add_arc(arc);
  } else {
    add_curve(arc);
  }
}

void Strokes::add_flat_area(const EllipticalArc& arc, ArcArea area) {
  add_flat(arc, area == ArcArea::to_center);
}

void Strokes::add_curve(const EllipticalArc& arc) {
  const auto add = [this](const Place& place) { m_path.push_back(place); };
  const double width = Stroker::width_of(m_style);
  m_path.clear();
  if (pattern_lengths(m_style.pattern).empty()) {
    const PlaceBox box = grown(m_inside, width + Stroker::solid_margin + 2);
    ArcSteps(arc, width / 2, ArcSteps::unlimited).visit(box, add);
  } else {
    ArcSteps(arc, width / 2, most_pattern_steps).visit_all(add);
  }
  add_path();
}

void Strokes::add_flat(const EllipticalArc& arc, bool with_center) {
  const auto ends = arc.ends_of_flat(with_center);
  if (m_are_thin) {
    const LM_DCI_Point pixels[] = {pixel_of(ends[0]), pixel_of(ends[1])};
    return m_pixels.add_polyline(pixels[0] == pixels[1] ? 1 : 2, pixels);
  }
  m_path.assign(ends.begin(), ends.end());
  add_path();
}

void Strokes::add_path() {
  // Shorter than that it has no direction that could be told.
  constexpr double no_length = 1e-6;
  const Place& first = m_path.front();
  const bool is_dot = std::all_of(m_path.begin(), m_path.end(), [&](const Place& place) {
    return std::abs(place.x - first.x) < no_length && std::abs(place.y - first.y) < no_length;
  });
  m_stroker.add(is_dot ? 1 : static_cast<std::int32_t>(m_path.size()), m_path.data(), m_style,
                m_inside, m_shape);
}

}  // namespace lumen
