// Drawables in the order of a Hilbert curve, which crosses from one cell of the
// tree to the next only when it has been everywhere in it.

#include "displaylist/core/insertion_order.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <new>
#include <numeric>

#include "displaylist/core/display_list.h"
#include "displaylist/core/hilbert_curve_p.h"

namespace DL {

namespace {

using Bounds = BoundsTemplate<long>;

/// A drawable and where it is in the order.
struct Place {
  std::uint64_t key;
  std::size_t index;

  friend auto operator<=>(const Place&, const Place&) = default;
};

/// What comes first, in the highest bits of a key.
enum Kind : std::uint64_t { kLarge, kSmall, kEmpty };

constexpr std::uint32_t kCurveBits = 31;  ///< for each axis: a unit more or less is no matter

double extent(std::int32_t minimum, std::int32_t maximum) {
  return static_cast<double>(maximum) - static_cast<double>(minimum);
}

/// The middle of two coordinates on the axis of the curve.
std::uint32_t middle(std::int32_t a, std::int32_t b) {
  constexpr std::int64_t zero = std::int64_t{1} << 31U;
  return static_cast<std::uint32_t>((std::int64_t{a} + b + 2 * zero) / 2) >> (32U - kCurveBits);
}

/// The side of the square in which a full group's worth of the drawables starts,
/// as far as they lie evenly; along a line, of the piece of it.
double side_of_group(std::span<const Bounds> bounds) {
  Bounds all;
  for (const Bounds& each : bounds) {
    if (!each.is_empty()) all.widen(each);
  }
  if (all.is_empty()) return 0.0;
  const double share = DisplayList::kDefaultCapacity / static_cast<double>(bounds.size());
  const double width = extent(all.min.x, all.max.x);
  const double height = extent(all.min.y, all.max.y);
  return std::max(std::sqrt(width * height * share), std::max(width, height) * share);
}

std::uint64_t key_of(const Bounds& bounds, double large_side) {
  if (bounds.is_empty()) return std::uint64_t{kEmpty} << (2 * kCurveBits);
  const double side =
      std::max(extent(bounds.min.x, bounds.max.x), extent(bounds.min.y, bounds.max.y));
  const std::uint64_t kind = side > large_side ? kLarge : kSmall;
  return kind << (2 * kCurveBits) | place_on_hilbert_curve(middle(bounds.min.x, bounds.max.x),
                                                           middle(bounds.min.y, bounds.max.y),
                                                           kCurveBits);
}

}  // namespace

bool insertion_order(std::span<const Bounds> bounds, std::span<std::size_t> order) noexcept {
  std::iota(order.begin(), order.end(), std::size_t{0});
  if (bounds.size() != order.size()) return false;
  const std::unique_ptr<Place[]> places(new (std::nothrow) Place[bounds.size()]);
  if (places == nullptr) return false;
  const double large_side = side_of_group(bounds);
  for (std::size_t i = 0; i < bounds.size(); ++i) places[i] = {key_of(bounds[i], large_side), i};
  std::sort(places.get(), places.get() + bounds.size());
  for (std::size_t i = 0; i < bounds.size(); ++i) order[i] = places[i].index;
  return true;
}

}  // namespace DL
