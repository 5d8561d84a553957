#pragma once

#include <memory>
#include <string>

#include "apps/dlview/output_file.h"
#include "apps/dlview/view.h"
#include "displaylist/platform/renderer.h"

namespace dlview {

/// What a drawing is drawn on, and the file that it becomes.
class Sheet {
 public:
  Sheet() = default;
  Sheet(const Sheet&) = delete;
  Sheet& operator=(const Sheet&) = delete;
  virtual ~Sheet() = default;

  /// Draws on the sheet, while that is there.
  [[nodiscard]] virtual LM_Handle<LM_Renderer> renderer() = 0;

  /// Writes the file, whole or not at all. Empty on success, else one sentence
  /// that names the file and the mend.
  [[nodiscard]] std::string write();

 protected:
  /// Empty on success, else one sentence that names the file.
  [[nodiscard]] virtual std::string write_file() = 0;
};

/// The files that sheets become.
[[nodiscard]] FileKind picture_files();

/// An empty sheet of this size, in pixels or units of 1/96 inch, in the format
/// that the name's ending tells, which is one. Null when it cannot be held.
/// `antialiased`: whether pixels are smooth.
[[nodiscard]] std::unique_ptr<Sheet> make_sheet(const std::string& path, const PictureSize& size,
                                                bool antialiased);

}  // namespace dlview
