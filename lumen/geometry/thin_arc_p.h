#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "lumen/geometry/elliptical_arc_p.h"
#include "lumen/geometry/pixel_rectangle_p.h"

namespace lumen {

/// The pixels of an arc that is one pixel wide: a pixel per step along the axis
/// that it runs along faster, which changes at up to four places. A whole
/// circle looks the same from eight sides, a whole ellipse that is not rotated
/// from four. Only what can be seen is walked along.
class ThinArc {
 public:
  /// Of a drawable arc that is not flat and outlives the object.
  explicit ThinArc(const EllipticalArc& arc);

  /// Calls `sink.pixel(x, y)` for the pixels inside and `sink.skip(count)` for
  /// others, in their order along the arc. Narrow ellipses come by a pixel
  /// twice, and whole ones end where they start.
  template <class Sink>
  void walk(const PixelRectangle& inside, Sink& sink) const {
    Last last;
    for (std::size_t i = 1; i < m_angle_count; ++i) {
      walk_piece(piece(m_angles[i - 1], m_angles[i], last), inside, sink);
    }
  }

 private:
  /// The last pixel of the piece before, from the centre.
  struct Last {
    bool exists = false;
    std::int64_t x = 0;
    std::int64_t y = 0;
  };

  /// A piece along one axis, seen from the centre. Along the axis it takes one
  /// step a pixel.
  struct Piece {
    bool x_is_major;
    std::int32_t step;  ///< -1 or 1
    std::int64_t from;
    std::int64_t count;
    // The ellipse by the major coordinate.
    double reach;
    double slope;
    double bend;

    /// Whether the step from there leads to a pixel that does not touch: where
    /// a sharp bend lies within it.
    [[nodiscard]] bool jumps(std::int64_t major) const {
      return std::abs(minor(major + step) - minor(major)) > 1;
    }
    [[nodiscard]] std::int64_t minor(std::int64_t major) const {
      // Half a pixel past the end of the ellipse it still is the end.
      const double at = std::clamp(static_cast<double>(major), -reach, reach);
      const double rest = (reach - at) * (reach + at);
      return static_cast<std::int64_t>(std::nearbyint(slope * at + bend * std::sqrt(rest)));
    }
  };

  Piece piece(double from, double to, Last& last) const;
  /// The first step of a piece that goes on behind a pixel.
  static std::int64_t continued(const Piece& piece, const Last& last);
  void set_ellipse(const Place& direction, Piece& piece) const;

  template <class Sink>
  void walk_piece(const Piece& piece, const PixelRectangle& inside, Sink& sink) const {
    const std::int64_t start = (piece.x_is_major ? m_center_x : m_center_y) + piece.from;
    const std::int64_t low = piece.x_is_major ? inside.min_x : inside.min_y;
    const std::int64_t high = piece.x_is_major ? inside.max_x : inside.max_y;
    const std::int64_t first =
        std::clamp<std::int64_t>(piece.step > 0 ? low - start : start - high, 0, piece.count);
    const std::int64_t beyond = std::clamp<std::int64_t>(
        (piece.step > 0 ? high - start : start - low) + 1, first, piece.count);
    sink.skip(first);
    for (std::int64_t i = first; i < beyond; ++i) {
      put_pixel(piece, piece.from + i * piece.step, inside, sink);
    }
    sink.skip(piece.count - beyond);
  }

  template <class Sink>
  void put_pixel(const Piece& piece, std::int64_t major, const PixelRectangle& inside,
                 Sink& sink) const {
    const std::int64_t minor = piece.minor(major);
    const std::int64_t x = m_center_x + (piece.x_is_major ? major : minor);
    const std::int64_t y = m_center_y + (piece.x_is_major ? minor : major);
    if (x < inside.min_x || x > inside.max_x || y < inside.min_y || y > inside.max_y) {
      return sink.skip(1);
    }
    sink.pixel(static_cast<std::int32_t>(x), static_cast<std::int32_t>(y));
  }

  const EllipticalArc& m_arc;
  std::int64_t m_center_x;
  std::int64_t m_center_y;
  std::array<double, 6> m_angles;  ///< the ends, and where the axis changes
  std::size_t m_angle_count = 0;
};

}  // namespace lumen
