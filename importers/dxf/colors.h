#pragma once

#include "displaylist/platform/points.h"

namespace importers::dxf {

/// The colour of an index from 1 to 255: six pure ones, two greys around black
/// (index 7, which is the other of black and white on a dark sheet), 24 hues in
/// five shades and their pale forms, six more greys. Others count as 7.
[[nodiscard]] LM_RGB32 index_color(int index);

/// The colour that a file gives by an index, negative in layers that are off,
/// and a true colour, negative where there is none.
[[nodiscard]] LM_RGB32 entity_color(int index, int true_color);

}  // namespace importers::dxf
