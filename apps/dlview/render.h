#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apps/dlview/draw_form.h"
#include "apps/dlview/view.h"

namespace dlview {

/// What is drawn into which file, and how.
struct RenderOptions {
  std::string input;
  std::string output;
  std::string importer;  ///< its name; empty: the one that fits the input best
  PictureSize size;
  std::optional<importers::Extent> window;  ///< drawing coordinates; none: all
  std::optional<LM_RGB32> background;       ///< none: what suits the drawing
  std::optional<LM_RGB32> line_color;
  std::int32_t line_width = 1;  ///< pixels
  std::int32_t point_size = 5;  ///< pixels
  std::vector<std::string> layers;
  DrawForm form = DrawForm::bounded;
  bool fill = true;
  bool antialiased = true;
  bool skip_unusable = false;  ///< draw what is left of damaged drawings
  bool statistics = false;
};

/// Draws one picture. Empty on success, else one sentence that names the file
/// and the mend; then no file was written.
[[nodiscard]] std::string render(const RenderOptions& options);

}  // namespace dlview
