#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "apps/dlview/draw_form.h"
#include "apps/dlview/source.h"
#include "apps/dlview/view.h"

namespace dlview {

/// What is drawn into which file, and how.
struct RenderOptions {
  Source source;
  std::string output;
  PictureSize size;
  std::optional<importers::Extent> window;  ///< drawing coordinates; none: all
  std::optional<LM_RGB32> background;       ///< none: what suits the drawing
  std::int32_t line_width = 1;              ///< pixels
  DrawForm form = DrawForm::bounded;
  bool antialiased = true;
  bool statistics = false;
};

/// Draws one picture. Empty on success, else one sentence that names the file
/// and the mend; then no file was written.
[[nodiscard]] std::string render(const RenderOptions& options);

}  // namespace dlview
