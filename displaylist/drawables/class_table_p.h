#pragma once

#include <cstdint>

#include "displaylist/drawables/run_p.h"

class LumenHeap;

/// What the base needs to know of the concrete classes; the catalogue answers.
namespace DL {

class Drawable;

/// Turns a drawable that was read with a palette colour into its palettized
/// variant, by its type token; false when its class has none.
bool palettize(Drawable& drawable);

/// Constructs the library's own class for a stream tag on the heap, unfilled;
/// null for other tags or when memory is exhausted.
Drawable* construct_built_in(std::uint32_t tag, LumenHeap* heap);

/// The run of the class that drawings hold most of.
const DrawableRun& frequent_run();

/// Whether one of the library's own classes has this stream tag.
bool is_built_in(std::uint32_t tag);

}  // namespace DL
