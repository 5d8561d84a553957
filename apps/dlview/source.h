#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "displaylist/platform/points.h"
#include "importers/drawing.h"

namespace dlview {

/// A drawing file, and how it is read.
struct Source {
  std::string path;
  std::string importer;  ///< its name; empty: the one that fits the file best
  std::vector<std::string> layers;
  bool fill = true;
  std::optional<LM_RGB32> line_color;
  std::int32_t point_size = 5;  ///< pixels
  bool reorder = false;         ///< within layers
  bool skip_unusable = false;   ///< take what is left of damaged drawings
};

/// Reads the drawing, with a line on standard error while that takes long and
/// one about what was left out. Empty on success, else one sentence that names
/// the file and the mend.
[[nodiscard]] std::string read(const Source& source, importers::Drawing& drawing);

}  // namespace dlview
