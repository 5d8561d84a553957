#pragma once

#include <cstddef>
#include <span>

#include "displaylist/core/geometry.h"
#include "displaylist/platform/export.h"

namespace DL {

/// An order of adding for drawables that have none among themselves.
///
/// The tree of a list follows the order in which drawables are added: neighbours
/// that come one after the other share a group, and what jumps about gets groups
/// of its own by the hundred thousand, which drawing a part of the list has to
/// pass. Drawables whose order in the picture does not matter, because they do
/// not overlap or all look the same, are better added along a curve that fills
/// the plane, as this order is. Drawables larger than what a full group covers on
/// the average come first, below the others, so that they do not make groups of
/// small ones large; those with empty bounds come last.
///
/// `bounds[i]`, logical, of any values, is of drawable i. `order` gets the indices
/// of the bounds, each once: order[0] is to be added first. Those for which there
/// is nothing to choose keep the order that they have.
///
/// False when there is no memory (16 bytes for each), or when the spans differ in
/// size; `order` is then 0, 1, 2 and so on. Any thread may call.
[[nodiscard]] DISPLAYLIST_API bool insertion_order(std::span<const BoundsTemplate<long>> bounds,
                                                   std::span<std::size_t> order) noexcept;

}  // namespace DL
