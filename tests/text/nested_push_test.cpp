#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/support/point_printing.h"
#include "tests/text/nested_lists.h"

// The part of a child that is visible, against a plain reckoning.

namespace {

using namespace nested;

struct Visible {
  bool any = false;
  ScreenBounds clip;
  LogicalBounds window;
};

/// One axis in plain numbers: of a child [low, high] under a positive scale, on
/// a screen [first, last].
struct Axis {
  std::int64_t low, high, first, last;
  double scale, offset;

  [[nodiscard]] std::int64_t on_screen(std::int64_t at) const {
    return std::llrint(std::nearbyint(static_cast<double>(at) * scale + offset));
  }
  [[nodiscard]] std::int64_t seen_first() const { return std::max(on_screen(low), first); }
  [[nodiscard]] std::int64_t seen_last() const { return std::min(on_screen(high), last); }
  [[nodiscard]] bool is_whole() const {
    return seen_first() == on_screen(low) && seen_last() == on_screen(high);
  }
  [[nodiscard]] std::int64_t window_low() const {
    const auto at = static_cast<std::int64_t>((static_cast<double>(seen_first()) - offset) / scale);
    return on_screen(at) < first ? at + 1 : at;
  }
  [[nodiscard]] std::int64_t window_high() const {
    const auto at =
        static_cast<std::int64_t>((static_cast<double>(seen_last()) - offset) / scale + 1.0);
    return on_screen(at) > last ? at - 1 : at;
  }
};

template <class T>
DL::BoundsTemplate<T> box(std::int64_t min_x, std::int64_t min_y, std::int64_t max_x,
                          std::int64_t max_y) {
  return {static_cast<std::int32_t>(min_x), static_cast<std::int32_t>(min_y),
          static_cast<std::int32_t>(max_x), static_cast<std::int32_t>(max_y)};
}

Visible reckoned(const Axis& x, const Axis& y) {
  Visible v;
  if (x.seen_first() > x.seen_last() || y.seen_first() > y.seen_last()) return v;
  v.clip = box<int>(x.seen_first(), y.seen_first(), x.seen_last(), y.seen_last());
  v.any = true;
  if (x.is_whole() && y.is_whole()) {
    v.window = box<long>(x.low, y.low, x.high, y.high);
    return v;
  }
  v.any = x.window_low() <= x.window_high() && y.window_low() <= y.window_high();
  if (!v.any) return v;
  v.window = box<long>(x.window_low(), y.window_low(), x.window_high(), y.window_high());
  v.clip = box<int>(x.on_screen(v.window.min.x), y.on_screen(v.window.min.y),
                    x.on_screen(v.window.max.x), y.on_screen(v.window.max.y));
  return v;
}

struct RandomPush {
  RandomPush() {
    const auto any_scale = rc::gen::oneOf(rc::gen::inRange(1, 400), rc::gen::inRange(400, 40000));
    const auto any_offset = rc::gen::inRange(-400, 500);
    const auto low = rc::gen::inRange(-60, 60);
    const auto extent = rc::gen::inRange(0, 120);
    bounds = {*low, *low, 0, 0};
    bounds.max = {bounds.min.x + *extent, bounds.min.y + *extent};
    scale = {*any_scale / 97.0, *any_scale / 97.0};
    offset = {*any_offset / 3.0, *any_offset / 3.0};
  }

  LogicalBounds bounds;
  Factors scale;
  Factors offset;
};

RC_GTEST_PROP(NestedPush, VisiblePartIsTheReckonedOne, ()) {
  const RandomPush r;
  Parent parent;
  const auto nested = nest(new DL::DisplayList, r.scale, r.offset, r.bounds);
  ScreenBounds clip;
  const bool any = nested->push_transform(parent.list, clip);
  const Visible wanted = reckoned({r.bounds.min.x, r.bounds.max.x, 0, 100, r.scale.x, r.offset.x},
                                  {r.bounds.min.y, r.bounds.max.y, 0, 100, r.scale.y, r.offset.y});
  RC_ASSERT(any == wanted.any);
  RC_ASSERT(clip == wanted.clip);
  if (!any) return;
  const DL::DisplayList& child = *nested->display_list();
  RC_ASSERT(child.m_logicalBounds == wanted.window);
  RC_ASSERT(child.m_screenBounds == clip);
  RC_ASSERT(child.m_scale == r.scale);
  RC_ASSERT(child.m_offset == r.offset);
}

/// Every unit of one axis of the child that is seen is in its window, but for
/// one, and what half a pixel rounds away, at its ends; and the window reaches
/// no further than two units beyond the screen.
void expect_window_fits(double scale, double offset, std::int32_t low, std::int32_t high,
                        std::int32_t window_low, std::int32_t window_high) {
  const double unit = std::fabs(scale);
  const double margin = unit + 0.5;
  const double first = std::min(low * scale, high * scale) + offset;
  const double last = std::max(low * scale, high * scale) + offset;
  for (std::int32_t at = low; at <= high; ++at) {
    const double device = at * scale + offset;
    if (device <= std::max(first, 0.0) + margin) continue;
    if (device >= std::min(last, 100.0) - margin) continue;
    RC_ASSERT(at >= window_low && at <= window_high);
  }
  for (const std::int32_t end : {window_low, window_high}) {
    const double device = end * scale + offset;
    RC_ASSERT(device >= -2 * unit - 0.5 && device <= 100 + 2 * unit + 0.5);
  }
}

RC_GTEST_PROP(NestedPush, WindowHoldsWhatIsSeenInAnyView,
              (bool mirrored_x, bool mirrored_y, bool upside_down)) {
  RandomPush r;
  if (mirrored_x) r.scale.x = -r.scale.x;
  if (mirrored_y) r.scale.y = -r.scale.y;
  Parent parent({0, 0, 100, 100},
                upside_down ? ScreenBounds{0, 100, 100, 0} : ScreenBounds{0, 0, 100, 100});
  const auto nested = nest(new DL::DisplayList, r.scale, r.offset, r.bounds);
  ScreenBounds clip;
  if (!nested->push_transform(parent.list, clip)) return;
  const DL::DisplayList& child = *nested->display_list();
  const LogicalBounds window = child.m_logicalBounds;
  expect_window_fits(child.m_scale.x, child.m_offset.x, r.bounds.min.x, r.bounds.max.x,
                     window.min.x, window.max.x);
  expect_window_fits(child.m_scale.y, child.m_offset.y, r.bounds.min.y, r.bounds.max.y,
                     window.min.y, window.max.y);
  RC_ASSERT(!clip.is_empty());
  const bool is_upside_down = child.m_screenBounds.min.y > child.m_screenBounds.max.y;
  RC_ASSERT(child.m_screenBounds.min.x == clip.min.x && child.m_screenBounds.max.x == clip.max.x);
  RC_ASSERT(!is_upside_down || child.m_scale.y < 0);
  RC_ASSERT(std::min(child.m_screenBounds.min.y, child.m_screenBounds.max.y) == clip.min.y);
  RC_ASSERT(std::max(child.m_screenBounds.min.y, child.m_screenBounds.max.y) == clip.max.y);
}

}  // namespace
