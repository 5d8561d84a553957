#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>

#include "displaylist/displaylist.h"
#include "tests/support/probe_drawable.h"
#include "tests/support/recorded_list.h"

/// Lists inside lists, for tests.
namespace nested {

using Nested = DL::DrawableDisplayList;
using Factors = DL::PointTemplate<double>;
using ScreenBounds = DL::BoundsTemplate<int>;

/// A list nested with all its fields; the bounds are those of its drawables
/// where none are given. The nested list owns the child.
inline std::unique_ptr<Nested> nest(DL::DisplayList* child, Factors scale = {1, 1},
                                    Factors offset = {0, 0},
                                    std::optional<LogicalBounds> bounds = std::nullopt) {
  std::unique_ptr<Nested> drawable(new Nested(nullptr, child, bounds ? &*bounds : nullptr));
  drawable->set_scale(scale);
  drawable->set_offset(offset);
  return drawable;
}

inline DL::DisplayList* child_with_a_dot(LogicalPoint point, LM_RGB32 color = {}) {
  auto* child = new DL::DisplayList;
  child->add(new DL::DLDot(color, point));
  return child;
}

/// A list that is seen through a recorder, one device unit per logical unit.
struct Parent : RecordedList {
  explicit Parent(LogicalBounds window = {0, 0, 100, 100}, ScreenBounds screen = {0, 0, 100, 100}) {
    list.m_logicalBounds = window;
    list.set_screen_bounds(screen);
    list.m_rendition.set_clip_rectangle(
        {std::min(screen.min.x, screen.max.x), std::max(screen.min.x, screen.max.x),
         std::min(screen.min.y, screen.max.y), std::max(screen.min.y, screen.max.y)});
  }

  /// Adds with the drawable's own bounds.
  template <class T>
  T* add(std::unique_ptr<T> drawable) {
    list.add(drawable.get());
    return drawable.release();
  }
  void draw_window() {
    list.m_pRootGroup->draw_bounded(list, list.m_logicalBounds, list.m_logicalBounds);
  }
};

/// A child of probes, which outlives neither its log nor its nested list.
struct ProbeChild {
  DL::DisplayList* list = new DL::DisplayList;
  ProbeLog log;

  void add(int id, const LogicalBounds& bounds) {
    list->add(new ProbeDrawable(log, id, bounds), bounds, 0);
  }
};

inline LogicalBounds placed(const DL::Drawable& drawable) {
  return bounds_of(drawable);
}

}  // namespace nested
