#include "bench/views.h"

#include <cmath>

#include "scenes/random.h"

namespace bench {

namespace {

using scenes::Bounds;
using scenes::Point;

View view_of(const Bounds& window) {
  DL::DisplayList list;
  look_at(list, window);
  return {window, list.m_scale, list.m_offset, {}};
}

std::int32_t part(std::int32_t low, std::int32_t high, double share) {
  return static_cast<std::int32_t>((static_cast<double>(high) - low) * share);
}

/// Windows of `share` of the area of the whole.
ViewSet windows_in(std::string name, const Bounds& whole, double share, std::size_t count) {
  const std::int32_t width = part(whole.min.x, whole.max.x, std::sqrt(share));
  const std::int32_t height = part(whole.min.y, whole.max.y, std::sqrt(share));
  scenes::Random random(2);
  ViewSet set{std::move(name), {}};
  for (std::size_t i = 0; i < count; ++i) {
    const Point corner{random.between(whole.min.x, whole.max.x - width),
                       random.between(whole.min.y, whole.max.y - height)};
    set.views.push_back(view_of({corner.x, corner.y, corner.x + width, corner.y + height}));
  }
  return set;
}

}  // namespace

std::size_t ViewSet::visible() const {
  std::size_t count = 0;
  for (const View& view : views) count += view.visible.size();
  return count;
}

void look_at(DL::DisplayList& list, const Bounds& window) {
  list.m_logicalBounds = window;
  list.m_screenBounds = {};
  list.set_screen_bounds({0, 0, kWidth - 1, kHeight - 1});
  list.m_rendition.set_clip_rectangle({0, kWidth - 1, 0, kHeight - 1});
}

std::vector<ViewSet> view_sets(const Bounds& whole, std::size_t count) {
  std::vector<ViewSet> sets;
  sets.push_back({"whole", {view_of(whole)}});
  sets.push_back(windows_in("1 %", whole, 0.01, count));
  sets.push_back(windows_in("0.01 %", whole, 0.0001, count));
  return sets;
}

ViewSet zoom_set(const Bounds& whole, std::size_t count) {
  ViewSet set{"zoom", {}};
  for (std::size_t i = 0; i < count; ++i) {
    const double side = std::exp2(-12.0 * static_cast<double>(i) / static_cast<double>(count));
    const std::int32_t x = part(whole.min.x, whole.max.x, side / 2);
    const std::int32_t y = part(whole.min.y, whole.max.y, side / 2);
    set.views.push_back(view_of({-x, -y, x, y}));
  }
  return set;
}

void find_visible(const scenes::Polylines& lines, ViewSet& set) {
  for (View& view : set.views) view.visible.clear();
  for (std::size_t i = 0; i < lines.count(); ++i) {
    const Bounds bounds = scenes::bounds_of(lines.polyline(i));
    for (View& view : set.views) {
      if (bounds.meets(view.window)) view.visible.push_back(static_cast<std::uint32_t>(i));
    }
  }
}

}  // namespace bench
