#include "apps/dlview/view.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace dlview {

namespace {

using importers::Drawing;
using importers::Extent;
using importers::nearest_logical;

/// The whole drawing and some space around it.
Extent with_margin(const Extent& extent) {
  const double side = std::max(extent.width(), extent.height());
  const double margin = side > 0.0 ? side * 0.02 : 1.0;
  return {extent.min_x - margin, extent.min_y - margin, extent.max_x + margin,
          extent.max_y + margin};
}

std::string in_words(const Extent& extent) {
  char text[160];
  std::snprintf(text, sizeof text, "%.10g %.10g %.10g %.10g", extent.min_x, extent.min_y,
                extent.max_x, extent.max_y);
  return text;
}

/// What is wrong when the drawing is too small to be seen in what is shown.
std::string would_be_a_speck(const Drawing& drawing, const Extent& shown) {
  return "would be a speck in the window " + in_words(shown) + "; choose a window near " +
         in_words(drawing.extent);
}

/// What is wrong with a window that was asked for; empty when nothing is.
std::string check_window(const Drawing& drawing, const Extent& window) {
  if (window.width() <= 0.0 || window.height() <= 0.0) {
    return "cannot be shown through the window " + in_words(window) +
           ", which has no area; give MINX MINY MAXX MAXY with MINX below MAXX and MINY below MAXY";
  }
  if (!std::isfinite(window.width()) || !std::isfinite(window.height())) {
    return would_be_a_speck(drawing, window);
  }
  if (!window.meets(drawing.extent)) {
    return "lies outside the window " + in_words(window) + "; choose a window within " +
           in_words(drawing.extent);
  }
  return {};
}

/// One axis of the picture on the logical plane.
struct Axis {
  double center;  ///< logical
  double units;   ///< logical units of a pixel
  std::int32_t pixels;

  [[nodiscard]] double first() const { return center - units * (pixels - 1) / 2; }
  [[nodiscard]] double last() const { return center + units * (pixels - 1) / 2; }
  [[nodiscard]] std::int32_t pixel(std::int32_t value) const {
    return static_cast<std::int32_t>(std::nearbyint((value - first()) / units));
  }
};

}  // namespace

std::string make_view(const Drawing& drawing, const std::optional<Extent>& window,
                      const PictureSize& size, View& view) {
  if (window) {
    std::string problem = check_window(drawing, *window);
    if (!problem.empty()) return problem;
  }
  const Extent shown = window ? *window : with_margin(drawing.extent);
  const importers::Mapping& mapping = drawing.mapping;
  const double units = mapping.scale * std::max(shown.width() / (size.width - 1),
                                                shown.height() / (size.height - 1));
  // Below one unit a pixel, device coordinates no longer fit in 32 bits.
  if (units < 1.0) {
    char least[32];
    std::snprintf(least, sizeof least, "%.3g", (size.width - 1) / mapping.scale);
    return "has no finer detail than the window " + in_words(shown) +
           " asks for; choose a window that is at least " + least + " wide";
  }
  const Axis x{mapping.logical_x(shown.min_x / 2 + shown.max_x / 2), units, size.width};
  const Axis y{mapping.logical_y(shown.min_y / 2 + shown.max_y / 2), units, size.height};
  view.size = size;
  view.logical = {nearest_logical(x.first()), nearest_logical(y.first()), nearest_logical(x.last()),
                  nearest_logical(y.last())};
  view.screen = {x.pixel(view.logical.min.x), size.height - 1 - y.pixel(view.logical.min.y),
                 x.pixel(view.logical.max.x), size.height - 1 - y.pixel(view.logical.max.y)};
  if (view.screen.min.x >= view.screen.max.x || view.screen.min.y <= view.screen.max.y) {
    return would_be_a_speck(drawing, shown);
  }
  return {};
}

void View::apply(DL::DisplayList& list) const {
  list.m_logicalBounds = logical;
  list.set_screen_bounds(screen);
  list.recompute_transform();
  list.m_rendition.set_clip_rectangle({0, size.width - 1, 0, size.height - 1});
}

Region visible_region(const DL::DisplayList& list, std::int32_t reach) {
  const DL::BoundsTemplate<long>& seen = list.m_visibleBounds;
  // The vertical scale is negative and has turned the bounds over.
  const double low_x = std::min(seen.min.x, seen.max.x);
  const double high_x = std::max(seen.min.x, seen.max.x);
  const double low_y = std::min(seen.min.y, seen.max.y);
  const double high_y = std::max(seen.min.y, seen.max.y);
  const double more_x = (reach + 1) / std::fabs(list.m_scale.x);
  const double more_y = (reach + 1) / std::fabs(list.m_scale.y);
  return {{nearest_logical(low_x + more_x), nearest_logical(low_y + more_y),
           nearest_logical(high_x - more_x), nearest_logical(high_y - more_y)},
          {nearest_logical(low_x - more_x), nearest_logical(low_y - more_y),
           nearest_logical(high_x + more_x), nearest_logical(high_y + more_y)}};
}

}  // namespace dlview
