#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "displaylist/platform/marker.h"
#include "displaylist/platform/points.h"

namespace lumen {

/// A polyline of a marker, seen from the marker's point; closed where the last
/// point is the first.
struct MarkerStroke {
  std::int32_t count = 0;
  std::array<LM_DCI_Point, 5> points{};
};

/// What a marker consists of: strokes, or a circle, or a disc.
///
/// It lies evenly around the middle of its point's pixel, so that its strokes
/// run along pixels: as far to all sides as half its size, rounded down. A
/// marker of size 7 takes 7 by 7 pixels, one of size 8 takes 9 by 9.
class MarkerGeometry {
 public:
  explicit MarkerGeometry(const LM_Marker& marker);

  /// How far the middles of the outermost pixels are from the point. Markers
  /// wider than any picture are made no wider.
  [[nodiscard]] std::int32_t reach() const { return m_reach; }
  /// The lines, none of a circle and a disc; a dot is one of a single point.
  [[nodiscard]] std::span<const MarkerStroke> strokes() const {
    return std::span(m_strokes).first(m_stroke_count);
  }
  /// Whether the lines have the weight of the rendition; the dot of a disc has
  /// weight 1.
  [[nodiscard]] bool has_weight() const { return m_has_weight; }
  /// A circle's line has the reach as its radius.
  [[nodiscard]] bool is_circle() const { return m_is_circle; }
  /// A disc has half a pixel more, to the outer edge of its pixels.
  [[nodiscard]] bool is_disc() const { return m_is_disc; }

  static constexpr std::int32_t max_reach = 1 << 17;

 private:
  void add_shape(std::int32_t shape);
  void add_stroke(std::span<const std::array<std::int32_t, 2>> directions);
  void add_plus();
  void add_cross();

  std::int32_t m_reach;
  std::size_t m_stroke_count = 0;
  std::array<MarkerStroke, 4> m_strokes;
  bool m_has_weight;
  bool m_is_circle = false;
  bool m_is_disc = false;
};

}  // namespace lumen
