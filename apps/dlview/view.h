#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "displaylist/core/display_list.h"
#include "importers/drawing.h"

namespace dlview {

struct PictureSize {
  std::int32_t width = 1920;
  std::int32_t height = 1080;
};

/// Which part of a drawing a picture shows.
struct View {
  DL::BoundsTemplate<long> logical;  ///< what is mapped onto `screen`
  /// Pixels; upside down, since drawings have y upward and pictures downward.
  /// Smaller than the picture when that shows more than the logical plane.
  DL::BoundsTemplate<int> screen;
  PictureSize size;

  /// Gives the list the transform and its rendition the clip rectangle.
  void apply(DL::DisplayList& list) const;
};

/// A view of the window (in drawing coordinates, widened along one axis until
/// it has the picture's proportions), or of the whole drawing with a margin.
/// Empty on success; else what is wrong, as the end of a sentence about the
/// drawing's file.
[[nodiscard]] std::string make_view(const importers::Drawing& drawing,
                                    const std::optional<importers::Extent>& window,
                                    const PictureSize& size, View& view);

/// What is to be drawn: the two rectangles of the bounded draw forms, both logical.
struct Region {
  DL::BoundsTemplate<long> inner;  ///< nothing inside needs clipping
  DL::BoundsTemplate<long> outer;  ///< nothing outside is seen
  bool is_part = false;            ///< part of the drawing may lie outside
};

/// The region of what a list shows, for strokes that reach `reach` pixels
/// beyond the geometry.
Region visible_region(const DL::DisplayList& list, std::int32_t reach);

}  // namespace dlview
