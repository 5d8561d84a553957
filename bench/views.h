#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "displaylist/core/display_list.h"
#include "scenes/scene.h"

namespace bench {

/// The picture that everything is drawn into, in pixels.
inline constexpr std::int32_t kWidth = 1920;
inline constexpr std::int32_t kHeight = 1080;

/// A window of the scene, shown in the whole picture: pixel = logical * scale +
/// offset.
struct View {
  scenes::Bounds window;
  DL::PointTemplate<double> scale{};
  DL::PointTemplate<double> offset{};
  std::vector<std::uint32_t> visible;  ///< the polylines whose bounds meet the window, in order
};

/// Views that are measured together.
struct ViewSet {
  std::string name;
  std::vector<View> views;

  [[nodiscard]] std::size_t visible() const;
};

/// Makes the list show the window in the whole picture.
void look_at(DL::DisplayList& list, const scenes::Bounds& window);

/// The whole, `count` windows of 1 % of its area and as many of 0.01 %, anywhere
/// in it, the same in every run.
std::vector<ViewSet> view_sets(const scenes::Bounds& whole, std::size_t count);

/// Windows that close in on the middle, the last one 2^12 times as small.
ViewSet zoom_set(const scenes::Bounds& whole, std::size_t count);

/// Notes in each view what is visible.
void find_visible(const scenes::Polylines& lines, ViewSet& set);

}  // namespace bench
