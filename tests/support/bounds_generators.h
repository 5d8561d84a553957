#pragma once

#include <rapidcheck.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "displaylist/core/geometry.h"

/// Any 32-bit number with the same chance, however small the sample's size is.
inline rc::Gen<std::int32_t> any_coordinate() {
  return rc::gen::cast<std::int32_t>(rc::gen::resize(
      rc::kNominalSize, rc::gen::inRange<std::int64_t>(INT32_MIN, std::int64_t{INT32_MAX} + 1)));
}

inline DL::BoundsTemplate<long> sorted_bounds(std::int32_t ax, std::int32_t ay, std::int32_t bx,
                                              std::int32_t by) {
  return {std::min(ax, bx), std::min(ay, by), std::max(ax, bx), std::max(ay, by)};
}

/// Bounds anywhere on the 32-bit plane.
inline rc::Gen<DL::BoundsTemplate<long>> any_bounds() {
  return rc::gen::apply(&sorted_bounds, any_coordinate(), any_coordinate(), any_coordinate(),
                        any_coordinate());
}

/// Bounds of at most `size` logical units anywhere on the plane.
inline rc::Gen<DL::BoundsTemplate<long>> small_bounds(std::int32_t size) {
  const auto extent = rc::gen::inRange<std::int32_t>(0, size + 1);
  return rc::gen::apply(
      [](std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
        x = std::min(x, INT32_MAX - width);
        y = std::min(y, INT32_MAX - height);
        return DL::BoundsTemplate<long>{x, y, x + width, y + height};
      },
      any_coordinate(), any_coordinate(), extent, extent);
}

/// Small bounds in a square of `spread` units around the origin, so that many
/// share a cell and many straddle the axes.
inline rc::Gen<DL::BoundsTemplate<long>> clustered_bounds(std::int32_t spread) {
  const auto coordinate =
      rc::gen::resize(rc::kNominalSize, rc::gen::inRange<std::int32_t>(-spread, spread + 1));
  const auto extent = rc::gen::inRange<std::int32_t>(0, spread / 8 + 2);
  return rc::gen::apply(
      [](std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
        return DL::BoundsTemplate<long>{x, y, x + width, y + height};
      },
      coordinate, coordinate, extent, extent);
}

/// The bounds of a scene: of one kind, or of all kinds mixed.
inline rc::Gen<std::vector<DL::BoundsTemplate<long>>> scene_bounds() {
  const auto mixed = rc::gen::oneOf(any_bounds(), small_bounds(1000), clustered_bounds(64),
                                    clustered_bounds(1 << 20));
  return rc::gen::oneOf(
      rc::gen::container<std::vector<DL::BoundsTemplate<long>>>(mixed),
      rc::gen::container<std::vector<DL::BoundsTemplate<long>>>(any_bounds()),
      rc::gen::container<std::vector<DL::BoundsTemplate<long>>>(small_bounds(1000)),
      rc::gen::container<std::vector<DL::BoundsTemplate<long>>>(clustered_bounds(64)));
}
