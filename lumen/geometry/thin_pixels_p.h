#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "displaylist/platform/points.h"
#include "lumen/geometry/elliptical_arc_p.h"
#include "lumen/geometry/line_pattern_p.h"
#include "lumen/geometry/pixel_rectangle_p.h"

namespace lumen {

/// The pixels of one-pixel lines and arcs, gathered so that each is coloured
/// once however often they come by. Kept per thread: it allocates only while
/// it grows.
class ThinPixels {
 public:
  /// Forgets the pixels. Those added next are limited to the rectangle and to
  /// the line pattern.
  void start(const PixelRectangle& inside, std::int32_t pattern) {
    m_inside = inside;
    m_pattern = PatternPhase(pattern);
    m_places.clear();
  }

  /// Coordinates may be any, `count` is at least 1.
  void add_polyline(std::int32_t count, const LM_DCI_Point* points);
  /// A drawable arc that is not flat.
  void add_arc(const EllipticalArc& arc);

  /// Replaces the pixels left of x = 0 by the mirror image of those right of
  /// it. Lines alone are not even: one halfway between two pixels takes the
  /// right one.
  void mirror_right_half();

  /// `Pen` has `solid(x, y, length, cover)`. `once`: no pixel twice, for ink
  /// that shows it.
  template <class Pen>
  void fill(bool once, Pen& pen) {
    if (once) leave_one_of_each();
    for (std::size_t i = 0; i < m_places.size();) {
      const std::uint64_t first = m_places[i];
      std::int32_t length = 1;
      while (++i < m_places.size() && m_places[i] == first + static_cast<std::uint32_t>(length)) {
        ++length;
      }
      pen.solid(coordinate(first), coordinate(first >> 32), length, 255);
    }
  }

  // What walks along an arc calls these.
  void pixel(std::int32_t x, std::int32_t y) {
    if (m_pattern.next_is_drawn()) m_places.push_back(biased(y) << 32 | biased(x));
  }
  void skip(std::int64_t count) { m_pattern.skip(count); }

 private:
  /// Coordinates as numbers in the same order that are never negative.
  static std::uint64_t biased(std::int32_t coordinate) {
    return static_cast<std::uint32_t>(coordinate) ^ 0x80000000U;
  }
  static std::int32_t coordinate(std::uint64_t biased) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(biased) ^ 0x80000000U);
  }

  void add_line(const LM_DCI_Point& from, const LM_DCI_Point& to);
  void leave_one_of_each() {
    std::sort(m_places.begin(), m_places.end());
    m_places.erase(std::unique(m_places.begin(), m_places.end()), m_places.end());
  }

  PixelRectangle m_inside{};
  PatternPhase m_pattern{LM_PATTERN_SOLID};
  std::vector<std::uint64_t> m_places;  ///< y above x
};

}  // namespace lumen
