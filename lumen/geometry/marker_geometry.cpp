#include "lumen/geometry/marker_geometry_p.h"

#include <algorithm>

namespace lumen {
namespace {

using Directions = std::array<std::int32_t, 2>;

constexpr Directions dot[] = {{0, 0}};
constexpr Directions across[] = {{-1, 0}, {1, 0}};
constexpr Directions along[] = {{0, -1}, {0, 1}};
constexpr Directions falling[] = {{-1, -1}, {1, 1}};
constexpr Directions rising[] = {{-1, 1}, {1, -1}};
constexpr Directions square[] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}, {-1, -1}};
constexpr Directions diamond[] = {{0, -1}, {1, 0}, {0, 1}, {-1, 0}, {0, -1}};
constexpr Directions triangle[] = {{0, -1}, {1, 1}, {-1, 1}, {0, -1}};

}  // namespace

MarkerGeometry::MarkerGeometry(const LM_Marker& marker)
    : m_reach(std::clamp(marker.size / 2, 0, max_reach)),
      m_has_weight(LM_MARKER_PLUS <= marker.shape && marker.shape <= LM_MARKER_TRIANGLE) {
  if (m_reach == 0) {
    add_stroke(dot);
  } else {
    add_shape(marker.shape);
  }
}

void MarkerGeometry::add_shape(std::int32_t shape) {
  switch (shape) {
    case LM_MARKER_PLUS:
      return add_plus();
    case LM_MARKER_CROSS:
      return add_cross();
    case LM_MARKER_STAR:
      add_plus();
      return add_cross();
    case LM_MARKER_CIRCLE:
      m_is_circle = true;
      return;
    case LM_MARKER_SQUARE:
      return add_stroke(square);
    case LM_MARKER_DIAMOND:
      return add_stroke(diamond);
    case LM_MARKER_TRIANGLE:
      return add_stroke(triangle);
    default:
      m_is_disc = true;
  }
}

void MarkerGeometry::add_plus() {
  add_stroke(across);
  add_stroke(along);
}

void MarkerGeometry::add_cross() {
  add_stroke(falling);
  add_stroke(rising);
}

void MarkerGeometry::add_stroke(std::span<const Directions> directions) {
  MarkerStroke& stroke = m_strokes[m_stroke_count++];
  for (const Directions& direction : directions) {
    stroke.points[static_cast<std::size_t>(stroke.count++)] = {direction[0] * m_reach,
                                                               direction[1] * m_reach, 0};
  }
}

}  // namespace lumen
