#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "displaylist/platform/points.h"

namespace lumen {

/// A place in device units with fractions; pixel centres are at whole numbers.
struct Place {
  double x;
  double y;

  friend bool operator==(const Place&, const Place&) = default;
};

/// A box of places, its border included.
struct PlaceBox {
  double min_x;
  double min_y;
  double max_x;
  double max_y;

  [[nodiscard]] bool overlaps(const PlaceBox& other) const {
    return min_x <= other.max_x && other.min_x <= max_x && min_y <= other.max_y &&
           other.min_y <= max_y;
  }
  [[nodiscard]] bool encloses(const PlaceBox& other) const {
    return min_x <= other.min_x && other.max_x <= max_x && min_y <= other.min_y &&
           other.max_y <= max_y;
  }
};

/// Part of an ellipse, as LM_Arc_Action has it: the point at angle t for t from
/// `start` on through `sweep` radians.
class EllipticalArc {
 public:
  /// The arc of a device action's arguments, whatever they are.
  EllipticalArc(const LM_DCI_Point& center, const LM_DCI_Point& radii, double start, double end,
                double rotation);
  /// The whole circle around a point.
  EllipticalArc(const LM_DCI_Point& center, double radius);

  /// Whether the angles are finite and the radii not negative; nothing else is
  /// to be asked of an arc that is not.
  [[nodiscard]] bool is_drawable() const { return m_is_drawable; }
  [[nodiscard]] bool is_whole() const { return m_sweep == turn; }
  /// Whether it is no curve but a line, or a dot.
  [[nodiscard]] bool is_flat() const { return m_radius_x == 0 || m_radius_y == 0; }

  [[nodiscard]] double start() const { return m_start; }
  [[nodiscard]] double sweep() const { return m_sweep; }
  [[nodiscard]] double largest_radius() const { return std::max(m_radius_x, m_radius_y); }
  [[nodiscard]] Place center() const { return m_center; }
  /// A box around the whole ellipse and more.
  [[nodiscard]] PlaceBox bounds() const {
    const double radius = largest_radius();
    return {m_center.x - radius, m_center.y - radius, m_center.x + radius, m_center.y + radius};
  }

  /// The point at an angle, seen from the centre.
  [[nodiscard]] Place offset_at(double angle) const {
    const double along = std::cos(angle);
    const double across = std::sin(angle);
    return {m_cos_x * along + m_sin_x * across, m_cos_y * along + m_sin_y * across};
  }
  [[nodiscard]] Place at(double angle) const {
    const Place offset = offset_at(angle);
    return {m_center.x + offset.x, m_center.y + offset.y};
  }
  /// Which way it runs at an angle, not scaled to a length.
  [[nodiscard]] Place direction_at(double angle) const {
    const double along = std::cos(angle);
    const double across = std::sin(angle);
    return {m_sin_x * along - m_cos_x * across, m_sin_y * along - m_cos_y * across};
  }

  /// The coefficients of x = cos_x cos t + sin_x sin t, y alike.
  [[nodiscard]] double cos_x() const { return m_cos_x; }
  [[nodiscard]] double sin_x() const { return m_sin_x; }
  [[nodiscard]] double cos_y() const { return m_cos_y; }
  [[nodiscard]] double sin_y() const { return m_sin_y; }
  [[nodiscard]] double area_of_radii() const { return m_radius_x * m_radius_y; }

  /// The same arc, its radii longer by so much.
  [[nodiscard]] EllipticalArc grown(double by) const;
  /// The two ends of a flat arc's line. `with_center`: of the line that reaches
  /// the centre, too.
  [[nodiscard]] std::array<Place, 2> ends_of_flat(bool with_center) const;

  static constexpr double turn = 2 * std::numbers::pi;

 private:
  void set_radii(double x, double y);

  Place m_center;
  double m_radius_x = 0;
  double m_radius_y = 0;
  double m_start = 0;
  double m_sweep = turn;
  double m_cos_rotation = 1;
  double m_sin_rotation = 0;
  double m_cos_x = 0;
  double m_sin_x = 0;
  double m_cos_y = 0;
  double m_sin_y = 0;
  bool m_is_drawable = true;
};

/// How an arc is cut into straight pieces: at equal steps of the angle.
class ArcSteps {
 public:
  /// Steps so short that no piece is further than 1/64 unit from the arc, or
  /// from one that runs `reach` outside it, as the edge of a stroke does.
  ArcSteps(const EllipticalArc& arc, double reach, std::int32_t most_steps);

  /// Calls `visit(place)` for the points in their order. Those of stretches
  /// that do not come near the box are left out: what remains of such a stretch
  /// is a line between its ends, which does not come near it either.
  template <class Visit>
  void visit(const PlaceBox& box, const Visit& visit) const {
    if (box.encloses(m_arc.bounds())) return visit_all(visit);
    visit(point(0));
    visit_stretch(0, m_count, box, visit);
  }
  /// Calls it for all of them.
  template <class Visit>
  void visit_all(const Visit& visit) const {
    for (std::int32_t i = 0; i <= m_count; ++i) visit(point(i));
  }

  /// So many steps are enough for radii up to 2^32.
  static constexpr std::int32_t unlimited = 1 << 21;

 private:
  /// The last point of a whole ellipse is its first one.
  [[nodiscard]] Place point(std::int32_t index) const {
    if (index == m_count && m_arc.is_whole()) index = 0;
    return m_arc.at(m_arc.start() + m_arc.sweep() * index / m_count);
  }
  /// A box around the stretch of the arc and around its chord.
  [[nodiscard]] PlaceBox bounds(std::int32_t first, std::int32_t last) const;

  /// The points behind `first` up to `last`.
  template <class Visit>
  void visit_stretch(std::int32_t first, std::int32_t last, const PlaceBox& box,
                     const Visit& visit) const {
    if (last - first <= 1 || !bounds(first, last).overlaps(box)) return visit(point(last));
    const std::int32_t middle = first + (last - first) / 2;
    visit_stretch(first, middle, box, visit);
    visit_stretch(middle, last, box, visit);
  }

  const EllipticalArc& m_arc;
  std::int32_t m_count;
};

}  // namespace lumen
