#pragma once

#include <cstddef>

#include "displaylist/platform/points.h"

/// The colours of imported drawings.
namespace importers::palette {

inline constexpr std::size_t area_colors = 8;

/// Soft fills that stand beside each other well.
LM_RGB32 area(std::size_t index);
/// Strong colours for lines, one per layer.
LM_RGB32 line(std::size_t layer);
/// Colours of point symbols, one per layer.
LM_RGB32 point(std::size_t layer);
/// The outline of filled areas: darker than all of their fills.
inline constexpr LM_RGB32 outline{0x00807460};

}  // namespace importers::palette
