#pragma once

#include <cstddef>

#include "apps/dlview/draw_form.h"

namespace dlview {

/// What the library looks at to draw a picture.
struct Visits {
  std::size_t drawables = 0;  ///< drawn
  /// The root and the children of every group in which something is drawn.
  std::size_t groups = 0;
};

/// Counts by drawing once more through a renderer that draws nothing, so that
/// counting takes no time from the picture. The drawables have no info yet.
Visits count_visits(DL::DisplayList& list, DrawForm form, const Region& region);

}  // namespace dlview
