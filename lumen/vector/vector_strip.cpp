#include "lumen/vector/vector_strip_p.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumen {
namespace {

using Parts = std::array<double, 4>;

Parts parts_of(const PageColor& color) {
  return {color.red, color.green, color.blue, color.opacity};
}

/// How far along a direction a point lies.
double position(const PagePoint& point, const PagePoint& direction) {
  return point.x * direction.x + point.y * direction.y;
}

struct Range {
  double low;
  double high;
};

Range range_along(const Contour& contour, const PagePoint& direction) {
  Range range{position(contour[0], direction), position(contour[0], direction)};
  for (const PagePoint& point : contour) {
    range.low = std::min(range.low, position(point, direction));
    range.high = std::max(range.high, position(point, direction));
  }
  return range;
}

/// How many bands keep the colours within two of 255 steps.
int band_count(double change) {
  constexpr double tolerance = 4 / 255.0;
  constexpr double most = 128;
  return static_cast<int>(std::clamp(std::ceil(change / tolerance), 1.0, most));
}

}  // namespace

class VectorStrip::ColorPlane {
 public:
  /// Of three points that follow each other.
  ColorPlane(const LM_DCI_Point* points, const LM_RGB32* colors)
      : m_origin(page_point(points[0])), m_parts(parts_of(page_color(colors[0]))) {
    const PagePoint b = page_point(points[1]);
    const PagePoint c = page_point(points[2]);
    const double area = doubled_area(m_origin, b, c);
    const Parts parts_b = parts_of(page_color(colors[1]));
    const Parts parts_c = parts_of(page_color(colors[2]));
    for (std::size_t i = 0; i < 4; ++i) {
      const double to_b = parts_b[i] - m_parts[i];
      const double to_c = parts_c[i] - m_parts[i];
      m_by_x[i] = (to_b * (c.y - m_origin.y) - to_c * (b.y - m_origin.y)) / area;
      m_by_y[i] = (to_c * (b.x - m_origin.x) - to_b * (c.x - m_origin.x)) / area;
    }
    find_axes();
  }

  [[nodiscard]] PageColor at(const PagePoint& point) const {
    const auto part = [&](std::size_t i) {
      return std::clamp(
          m_parts[i] + m_by_x[i] * (point.x - m_origin.x) + m_by_y[i] * (point.y - m_origin.y), 0.0,
          1.0);
    };
    return {part(0), part(1), part(2), part(3)};
  }

  /// The direction of length 1 in which the colours change most.
  [[nodiscard]] const PagePoint& along() const { return m_along; }
  /// The one at a right angle to it.
  [[nodiscard]] PagePoint across() const { return {-m_along.y, m_along.x}; }
  /// How much they change in a unit across.
  [[nodiscard]] double change_across() const { return m_change_across; }

 private:
  void find_axes() {
    double xx = 0;
    double xy = 0;
    double yy = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      xx += m_by_x[i] * m_by_x[i];
      xy += m_by_x[i] * m_by_y[i];
      yy += m_by_y[i] * m_by_y[i];
    }
    const double angle = std::atan2(2 * xy, xx - yy) / 2;
    m_along = {std::cos(angle), std::sin(angle)};
    const double least = (xx + yy) / 2 - std::hypot((xx - yy) / 2, xy);
    m_change_across = std::sqrt(std::max(least, 0.0));
  }

  PagePoint m_origin;
  Parts m_parts;
  Parts m_by_x{};
  Parts m_by_y{};
  PagePoint m_along{};
  double m_change_across = 0;
};

void VectorStrip::fill(std::int32_t count, const LM_DCI_Point* points, LM_RGB32 color) {
  m_page.set_ink(color);
  add_path(count, points);
  cairo_fill(m_page.cairo());
}

void VectorStrip::fill(std::int32_t count, const LM_DCI_Point* points, const LM_RGB32* colors) {
  if (std::all_of(colors, colors + count, [&](LM_RGB32 color) { return color == colors[0]; })) {
    return fill(count, points, colors[0]);
  }
  const bool has_meshes = m_page.format() == VectorFormat::pdf;
  const bool is_even = has_common_opacity(count, colors);
  if (has_meshes && !is_even) return fill_mesh(count, points, colors);
  m_inks.assign(colors, colors + count);
  for (LM_RGB32& color : m_inks) color = opaque(color);
  if (!is_even) return fill_masked(count, points, colors);
  m_page.lay(opacity_of(colors[0]), [&] {
    has_meshes ? fill_mesh(count, points, m_inks.data())
               : fill_triangles(count, points, m_inks.data(), true);
  });
}

void VectorStrip::fill_masked(std::int32_t count, const LM_DCI_Point* points,
                              const LM_RGB32* colors) {
  cairo_t* cairo = m_page.cairo();
  cairo_push_group(cairo);
  fill_triangles(count, points, m_inks.data(), true);
  cairo_pattern_t* inks = cairo_pop_group(cairo);
  for (std::int32_t i = 0; i < count; ++i) {
    m_inks[static_cast<std::size_t>(i)].word = colors[i].word & 0xFF000000;
  }
  cairo_push_group(cairo);
  fill_triangles(count, points, m_inks.data(), false);
  cairo_pattern_t* opacities = cairo_pop_group(cairo);
  cairo_set_source(cairo, inks);
  cairo_mask(cairo, opacities);
  cairo_pattern_destroy(inks);
  cairo_pattern_destroy(opacities);
}

/// All triangles run the same way round, so that none cancels another.
void VectorStrip::take_triangle(const LM_DCI_Point* points) {
  m_corners.assign({page_point(points[0]), page_point(points[1]), page_point(points[2])});
  const double area = doubled_area(m_corners[0], m_corners[1], m_corners[2]);
  if (area == 0) return m_corners.clear();
  if (area < 0) std::swap(m_corners[1], m_corners[2]);
  cut(m_corners, m_scratch, m_page.box());
}

void VectorStrip::add_path(std::int32_t count, const LM_DCI_Point* points) {
  cairo_set_fill_rule(m_page.cairo(), CAIRO_FILL_RULE_WINDING);
  for (std::int32_t i = 0; i + 2 < count; ++i) {
    take_triangle(points + i);
    m_page.add(m_corners);
  }
}

void VectorStrip::fill_mesh(std::int32_t count, const LM_DCI_Point* points,
                            const LM_RGB32* colors) {
  cairo_pattern_t* mesh = cairo_pattern_create_mesh();
  for (std::int32_t i = 0; i + 2 < count; ++i) {
    take_triangle(points + i);
    if (!m_corners.empty()) add_patches(mesh, ColorPlane(points + i, colors + i));
  }
  cairo_set_source(m_page.cairo(), mesh);
  cairo_pattern_destroy(mesh);
  add_path(count, points);
  cairo_fill(m_page.cairo());
}

void VectorStrip::add_patches(cairo_pattern_t* mesh, const ColorPlane& plane) {
  for (std::size_t i = 1; i + 1 < m_corners.size(); ++i) {
    cairo_mesh_pattern_begin_patch(mesh);
    const PagePoint corners[] = {m_corners[0], m_corners[i], m_corners[i + 1]};
    for (const PagePoint& corner : corners) cairo_mesh_pattern_line_to(mesh, corner.x, corner.y);
    for (unsigned int k = 0; k < 4; ++k) {
      const PageColor color = plane.at(corners[k % 3]);
      cairo_mesh_pattern_set_corner_color_rgba(mesh, k, color.red, color.green, color.blue,
                                               color.opacity);
    }
    cairo_mesh_pattern_end_patch(mesh);
  }
}

void VectorStrip::fill_triangles(std::int32_t count, const LM_DCI_Point* points,
                                 const LM_RGB32* colors, bool overlapped) {
  cairo_set_fill_rule(m_page.cairo(), CAIRO_FILL_RULE_WINDING);
  for (std::int32_t i = 0; i + 2 < count; ++i) {
    take_triangle(points + i);
    if (m_corners.empty()) continue;
    fill_bands(ColorPlane(points + i, colors + i), points + i, overlapped,
               overlapped && i + 3 < count);
  }
}

void VectorStrip::fill_bands(const ColorPlane& plane, const LM_DCI_Point* points, bool overlapped,
                             bool has_next) {
  const PagePoint across = plane.across();
  const Range whole = range_along(m_corners, across);
  const int count = band_count((whole.high - whole.low) * plane.change_across());
  const double step = (whole.high - whole.low) / count;
  for (int i = 0; i < count; ++i) {
    const double low = whole.low + i * step;
    take_triangle(points);
    cut_band(across, low, low + step);
    if (m_corners.empty()) continue;
    const Range range = range_along(m_corners, plane.along());
    const auto middle = [&](double reach) {
      const double half = low + step / 2;
      return PagePoint{plane.along().x * reach + across.x * half,
                       plane.along().y * reach + across.y * half};
    };
    const PagePoint from = middle(range.low);
    const PagePoint to = middle(range.high);
    set_gradient(m_page.cairo(), from, plane.at(from), to, plane.at(to));
    const double high = low + (overlapped ? 2 : 1) * step;
    add_band(points, across, low, high);
    if (has_next) add_band(points + 1, across, low, high);
    cairo_fill(m_page.cairo());
  }
}

void VectorStrip::cut_band(const PagePoint& across, double low, double high) {
  cut(m_corners, m_scratch, [&](const PagePoint& point) { return position(point, across) - low; });
  cut(m_corners, m_scratch, [&](const PagePoint& point) { return high - position(point, across); });
}

void VectorStrip::add_band(const LM_DCI_Point* points, const PagePoint& across, double low,
                           double high) {
  take_triangle(points);
  cut_band(across, low, high);
  m_page.add(m_corners);
}

}  // namespace lumen
