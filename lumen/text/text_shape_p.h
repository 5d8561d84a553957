#pragma once

#include <algorithm>
#include <cmath>

#include "lumen/geometry/pixel_rectangle_p.h"
#include "lumen/geometry/shape_p.h"
#include "lumen/pixel_blend_p.h"
#include "lumen/text/glyph_outline_p.h"
#include "lumen/text/text_run_p.h"

namespace lumen {

/// Hands the outline of a glyph, in its place on a device, to `target` as
/// contours of straight lines, by `move_to(x, y)` and `line_to(x, y)`.
template <class Target>
class FlatOutline {
 public:
  /// How far from a curve its lines may be, in device units.
  static constexpr double tolerance = 1.0 / 16;
  /// The most lines for one curve, however large it is.
  static constexpr std::int32_t most_lines = 256;

  /// The glyph is `x` and `y` ems from the start of the text.
  FlatOutline(const TextPlacement& placement, double x, double y, Target& target)
      : m_placement(placement), m_x(x), m_y(y), m_target(target) {}

  // The steps of GlyphOutline::visit.
  void move_to(double x, double y) {
    m_last = place(x, y);
    m_target.move_to(m_last.x, m_last.y);
  }
  void line_to(double x, double y) {
    m_last = place(x, y);
    m_target.line_to(m_last.x, m_last.y);
  }
  void quadratic_to(double bend_x, double bend_y, double x, double y) {
    const Spot a = m_last;
    const Spot b = place(bend_x, bend_y);
    const Spot c = place(x, y);
    const std::int32_t count = lines_for(turn(a, b, c) / 4);
    for (std::int32_t i = 1; i < count; ++i) {
      const double t = static_cast<double>(i) / count;
      const double u = 1 - t;
      m_target.line_to(u * u * a.x + 2 * u * t * b.x + t * t * c.x,
                       u * u * a.y + 2 * u * t * b.y + t * t * c.y);
    }
    m_target.line_to(c.x, c.y);
    m_last = c;
  }
  void cubic_to(double bend1_x, double bend1_y, double bend2_x, double bend2_y, double x,
                double y) {
    const Spot a = m_last;
    const Spot b = place(bend1_x, bend1_y);
    const Spot c = place(bend2_x, bend2_y);
    const Spot d = place(x, y);
    const std::int32_t count = lines_for(std::max(turn(a, b, c), turn(b, c, d)) * 3 / 4);
    for (std::int32_t i = 1; i < count; ++i) {
      const double t = static_cast<double>(i) / count;
      const double u = 1 - t;
      m_target.line_to(
          u * u * u * a.x + 3 * u * u * t * b.x + 3 * u * t * t * c.x + t * t * t * d.x,
          u * u * u * a.y + 3 * u * u * t * b.y + 3 * u * t * t * c.y + t * t * t * d.y);
    }
    m_target.line_to(d.x, d.y);
    m_last = d;
  }

 private:
  struct Spot {
    double x;
    double y;
  };

  [[nodiscard]] Spot place(double x, double y) const {
    return {m_placement.x(m_x + x, m_y + y), m_placement.y(m_x + x, m_y + y)};
  }
  /// How far the curve of three points turns away from its chord.
  static double turn(const Spot& a, const Spot& b, const Spot& c) {
    return std::hypot(a.x - 2 * b.x + c.x, a.y - 2 * b.y + c.y);
  }
  /// Lines for a curve that is so far from its chord: n of them are n^2 nearer.
  static std::int32_t lines_for(double distance) {
    const double lines = std::ceil(std::sqrt(distance / tolerance));
    return static_cast<std::int32_t>(std::clamp(lines, 1.0, double{most_lines}));
  }

  const TextPlacement& m_placement;
  double m_x;
  double m_y;
  Target& m_target;
  Spot m_last{};
};

/// Adds the glyphs that may be seen in the rectangle, to be filled by the
/// non-zero rule.
void add_glyphs(const TextRun& run, const TextPlacement& placement, const PixelRectangle& inside,
                Shape& shape);

/// Text that is too small to be read.
inline bool is_tiny(float text_size) {
  constexpr float smallest = 5;
  return std::abs(text_size) < smallest;
}

/// The ink of the bar in the place of tiny text: letters cover some 40 % of it.
inline LM_RGB32 bar_ink(LM_RGB32 ink) {
  const std::uint32_t opacity = scale_255(opacity_of(ink), 102);
  return {(ink.word & 0x00FFFFFF) | (255 - opacity) << 24};
}

/// Adds the bar that stands in for text too small to be read: from its baseline
/// to the height of its small letters.
void add_bar(const TextRun& run, const TextPlacement& placement, Shape& shape);

}  // namespace lumen
