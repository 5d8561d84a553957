#pragma once

#include <cstdint>
#include <vector>

#include "importers/sketch.h"

namespace importers {

/// A number from 0 to `colors` - 1 for every area of the layer: one per
/// feature, the same in every run, and different for features that share a
/// vertex wherever `colors` suffice.
std::vector<std::uint32_t> color_areas(const Sketch& sketch, const Sketch::Layer& layer,
                                       std::uint32_t colors);

}  // namespace importers
