// How a nested list finds its place in its parent's view, and is drawn there.

#include <algorithm>
#include <cmath>
#include <utility>

#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "displaylist/core/multithread.h"
#include "displaylist/core/transform_p.h"
#include "displaylist/text/drawable_display_list.h"

namespace DL {

namespace {

using Box = BoundsTemplate<int>;

Box common_part(const Box& a, const Box& b) {
  const Box part{std::max(a.min.x, b.min.x), std::max(a.min.y, b.min.y), std::min(a.max.x, b.max.x),
                 std::min(a.max.y, b.max.y)};
  return part.is_empty() ? Box() : part;
}

/// The images of the two corners of a logical box under the list's transform.
template <LM_DCI_Point (*Convert)(const DisplayList&, const PointTemplate<long>&)>
Box corners_on_device(const DisplayList& list, const BoundsTemplate<long>& box) {
  const LM_DCI_Point low = Convert(list, box.min);
  const LM_DCI_Point high = Convert(list, box.max);
  return {low.x, low.y, high.x, high.y};
}

/// A device box as the screen of a list: upside down where its scale is.
Box as_screen(Box box, const DisplayList& list) {
  box = box.spanned();
  if (list.m_scale.y < 0) std::swap(box.min.y, box.max.y);
  return box;
}

/// An interval of one axis.
struct Span {
  std::int32_t min;
  std::int32_t max;
};

/// What of an axis of the child is to be seen in `visible`, and one unit more at
/// its end. A negative scale runs against the device.
Span logical_span(Span visible, double scale, double offset) {
  if (scale < 0) std::swap(visible.min, visible.max);
  return {rounding::truncate_saturated((visible.min - offset) / scale),
          rounding::truncate_saturated((visible.max - offset) / scale + 1.0)};
}

/// Shrinks the span by a unit on each side on which `drawn`, its image, reaches
/// beyond `screen`.
void shrink(Span& span, Span drawn, Span screen, bool mirrored) {
  bool below = drawn.min < screen.min;
  bool above = drawn.max > screen.max;
  if (mirrored) std::swap(below, above);
  if (below && span.min < INT32_MAX) ++span.min;
  if (above && span.max > INT32_MIN) --span.max;
}

/// What a list holds while nobody draws it as part of another.
const LM_Rendition& resting_rendition() {
  static const LM_Rendition rendition;
  return rendition;
}

}  // namespace

void DrawableDisplayList::compose_transform(const DisplayList& parent) {
  DisplayList& child = *m_pChild;
  child.m_scale = {parent.m_scale.x * m_scale.x, parent.m_scale.y * m_scale.y};
  child.m_offset = {parent.m_scale.x * m_offset.x + parent.m_offset.x,
                    parent.m_scale.y * m_offset.y + parent.m_offset.y};
  child.m_bRotated = parent.m_bRotated;
  child.m_bRotationSecondary = parent.m_bRotated && std::fabs(parent.m_rotation[0]) > 1e-10;
  // The rotation is the parent's as it stands; scale and offset have no part in it.
  if (parent.m_bRotated) std::copy_n(parent.m_rotation, 6, child.m_rotation);
}

bool DrawableDisplayList::visible_part(const Box& screen, Box& clip,
                                       BoundsTemplate<long>& logical) const {
  const DisplayList& child = *m_pChild;
  if (m_bounds.is_empty()) {
    clip = {};
    return false;
  }
  const Box whole = corners_on_device<transform::point>(child, m_bounds).spanned();
  clip = common_part(whole, screen);
  if (clip.is_empty()) return false;
  logical = m_bounds;
  if (clip == whole) return true;

  const PointTemplate<double> scale = child.m_scale;
  Span x = logical_span({clip.min.x, clip.max.x}, scale.x, child.m_offset.x);
  Span y = logical_span({clip.min.y, clip.max.y}, scale.y, child.m_offset.y);
  const Box drawn =
      corners_on_device<transform::point>(child, {x.min, y.min, x.max, y.max}).spanned();
  shrink(x, {drawn.min.x, drawn.max.x}, {screen.min.x, screen.max.x}, scale.x < 0);
  shrink(y, {drawn.min.y, drawn.max.y}, {screen.min.y, screen.max.y}, scale.y < 0);
  logical = {x.min, y.min, x.max, y.max};
  if (logical.is_empty()) return false;
  clip = corners_on_device<transform::scaled_saturated>(child, logical).spanned();
  return true;
}

bool DrawableDisplayList::push_transform(DisplayList& parent, BoundsTemplate<int>& clip) {
  if (m_pChild == nullptr) return false;
  DisplayList& child = *m_pChild;
  compose_transform(parent);
  const PointTemplate<double> scale = child.m_scale;
  const PointTemplate<double> offset = child.m_offset;
  BoundsTemplate<long> logical;
  if (!visible_part(parent.m_screenBounds.spanned(), clip, logical)) return false;

  child.set_screen_bounds(as_screen(clip, child));
  if (child.m_logicalBounds != logical) {
    child.m_logicalBounds = logical;
    child.recompute_transform();
  }
  child.m_scale = scale;
  child.m_offset = offset;
  m_bSelector = is_selector(parent) ? 1 : 0;
  return true;
}

bool DrawableDisplayList::is_selector(const DisplayList& parent) {
  if (!parent.m_pRenderer) return false;
  const LM_Option_Table::Value* option = parent.m_pRenderer->option_table.find(LM_IS_SELECTOR);
  return option != nullptr && !option->empty() && option->front() != 0;
}

bool DrawableDisplayList::push_view(DisplayList& parent) {
  if (m_pChild == nullptr) return true;
  BoundsTemplate<int> clip;
  push_transform(parent, clip);
  m_pChild->m_bAlternateScale = parent.m_bAlternateScale;
  m_pChild->m_pRenderer = parent.m_pRenderer;
  m_pChild->m_rendition = parent.m_rendition;
  m_pChild->m_pPrivateRendition = parent.m_pPrivateRendition;
  m_pChild->m_bComplexClipSupported =
      parent.m_pRenderer && parent.m_pRenderer->options.supports_complex_clip;
  return true;
}

void DrawableDisplayList::pop_view(DisplayList& parent) {
  pop_transform(parent);
  if (m_pChild == nullptr) return;
  // What the child's own threads have still to draw is drawn with this view.
  if (!is_drained(*m_pChild)) m_pChild->m_pMultithread->WaitForAllThreads();
  m_pChild->m_pRenderer = nullptr;
  m_pChild->m_rendition = resting_rendition();
  m_pChild->m_pPrivateRendition = nullptr;
  m_pChild->m_bComplexClipSupported = false;
}

void DrawableDisplayList::pop_transform(DisplayList&) {}

void DrawableDisplayList::draw_unclipped(DisplayList& parent) {
  if (!can_be_drawn() || !push_view(parent)) return;
  DisplayList& child = *m_pChild;
  const Group& root = *child.m_pRootGroup;
  const bool needs_clip = !child.m_bComplexClipSupported && child.m_rendition.complex_clip();
  if (m_bSelector != 0) {
    root.draw_unclipped_selection(child);
  } else if (!needs_clip) {
    root.draw_unclipped(child);
  } else if (child.circular_complex_clip()) {
    root.draw_circled(child);
  } else {
    root.draw_complex(child);
  }
  pop_view(parent);
}

void DrawableDisplayList::draw_clipped(DisplayList& parent) {
  if (!can_be_drawn() || !push_view(parent)) return;
  DisplayList& child = *m_pChild;
  const Group& root = *child.m_pRootGroup;
  const BoundsTemplate<long> seen = child.m_logicalBounds;
  if (m_bSelector != 0) {
    root.draw_bounded_selection(child, seen, seen);
  } else {
    root.draw_bounded(child, seen, seen);
  }
  pop_view(parent);
}

bool DrawableDisplayList::can_be_drawn() const {
  return m_pChild != nullptr && m_pChild->m_pRootGroup != nullptr && !m_bounds.is_empty();
}

}  // namespace DL
