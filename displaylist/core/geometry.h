#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>

namespace DL {

/// What a coordinate of a `T` is stored in: `long` and `int` both mean a 32-bit
/// signed integer on every platform, as two types of their own.
template <class T>
using Scalar = std::conditional_t<std::is_integral_v<T>, std::int32_t, T>;

/// A point. `long`: logical coordinates; `int`: screen or device units;
/// `double`: fractional logical coordinates.
template <class T>
struct PointTemplate {
  using scalar = Scalar<T>;
  static constexpr scalar scalarMinimum = std::numeric_limits<scalar>::lowest();
  static constexpr scalar scalarMaximum = std::numeric_limits<scalar>::max();

  scalar x;
  scalar y;

  friend bool operator==(const PointTemplate&, const PointTemplate&) = default;
};
static_assert(sizeof(PointTemplate<long>) == 8 && sizeof(PointTemplate<int>) == 8);

/// A rectangle, inclusive at all four ends. As constructed it is empty: the
/// minima at the largest value and the maxima at the smallest, so that
/// widening needs no special case.
template <class T>
struct BoundsTemplate {
  using scalar = Scalar<T>;
  using point = PointTemplate<T>;

  point min{point::scalarMaximum, point::scalarMaximum};
  point max{point::scalarMinimum, point::scalarMinimum};

  constexpr BoundsTemplate() = default;
  constexpr BoundsTemplate(scalar min_x, scalar min_y, scalar max_x, scalar max_y)
      : min{min_x, min_y}, max{max_x, max_y} {}
  constexpr BoundsTemplate(point minimum, point maximum) : min(minimum), max(maximum) {}

  /// The whole 32-bit plane.
  static constexpr BoundsTemplate plane() {
    return {point::scalarMinimum, point::scalarMinimum, point::scalarMaximum, point::scalarMaximum};
  }

  [[nodiscard]] constexpr bool is_empty() const { return min.x > max.x || min.y > max.y; }

  /// Whether these bounds lie inside `outer`, borders inclusive.
  [[nodiscard]] constexpr bool is_inside(const BoundsTemplate& outer) const {
    return min.x >= outer.min.x && min.y >= outer.min.y && max.x <= outer.max.x &&
           max.y <= outer.max.y;
  }
  /// Whether the two share at least a border point.
  [[nodiscard]] constexpr bool meets(const BoundsTemplate& other) const {
    return max.x >= other.min.x && max.y >= other.min.y && min.x <= other.max.x &&
           min.y <= other.max.y;
  }

  /// The rectangle that the two corners span, whichever of them is which.
  [[nodiscard]] constexpr BoundsTemplate spanned() const {
    return {min.x < max.x ? min.x : max.x, min.y < max.y ? min.y : max.y,
            min.x < max.x ? max.x : min.x, min.y < max.y ? max.y : min.y};
  }

  constexpr void widen(const point& p) {
    if (p.x < min.x) min.x = p.x;
    if (p.x > max.x) max.x = p.x;
    if (p.y < min.y) min.y = p.y;
    if (p.y > max.y) max.y = p.y;
  }
  constexpr void widen(const BoundsTemplate& other) {
    if (other.min.x < min.x) min.x = other.min.x;
    if (other.max.x > max.x) max.x = other.max.x;
    if (other.min.y < min.y) min.y = other.min.y;
    if (other.max.y > max.y) max.y = other.max.y;
  }

  friend constexpr bool operator==(const BoundsTemplate&, const BoundsTemplate&) = default;
};
static_assert(sizeof(BoundsTemplate<long>) == 16);

/// A straight segment between two points.
template <class T>
struct VectorTemplate {
  PointTemplate<T> from;
  PointTemplate<T> to;

  friend bool operator==(const VectorTemplate&, const VectorTemplate&) = default;
};
static_assert(sizeof(VectorTemplate<long>) == 16);

}  // namespace DL
