#pragma once

#include <vector>

#include "importers/dxf/model.h"

namespace importers::dxf {

/// The dashes of a hatch's lines within its loops, two points each. None where
/// the hatch has no lines, or so many that they would be taken for a fill.
[[nodiscard]] std::vector<Vertex> hatch_segments(const Hatch& hatch);

}  // namespace importers::dxf
