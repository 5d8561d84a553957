#pragma once

#include "importers/dxf/model.h"
#include "importers/dxf/pairs.h"

namespace importers::dxf {

/// The loops and lines of a HATCH. They are taken from the pairs, since dxflib
/// does not hand over all of them.
[[nodiscard]] Hatch read_hatch(const Record& record);

}  // namespace importers::dxf
