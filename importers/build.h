#pragma once

#include <string>

#include "importers/importer.h"
#include "importers/sketch.h"

namespace importers {

/// Makes the display list of a sketch and fills in the rest of the drawing.
/// Empty on success, else what is wrong as the end of a sentence that starts
/// with the file's name.
[[nodiscard]] std::string build(const Sketch& sketch, const ReadOptions& options, Drawing& drawing);

}  // namespace importers
