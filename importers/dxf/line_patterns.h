#pragma once

#include <cstdint>

#include "importers/dxf/model.h"

namespace importers::dxf {

/// The LM_Line_Pattern that is nearest to a line type: by its dashes or, where
/// it has no definition, by its name.
[[nodiscard]] std::int32_t pattern_of(const LineType& type);

}  // namespace importers::dxf
