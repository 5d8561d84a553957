#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "scenes/scene.h"

namespace bench {

/// The map of the world that comes with the examples.
std::string world_file();

/// The borders of its countries as polylines of at most 64 points. The map is of
/// the scale 1:110m: detail is made up between its points until there are about
/// `points` of them, as a map of a larger scale has. None in a build without
/// importers.
scenes::Polylines world_lines(std::size_t points, std::uint64_t seed);

}  // namespace bench
