#include "displaylist/text/drawable_display_list.h"

#include <utility>

#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "displaylist/core/rounding_p.h"
#include "displaylist/drawables/search.h"
#include "displaylist/drawables/variants.h"

namespace DL {

void* DrawableDisplayList::_parent_type = nullptr;

DrawableDisplayList::DrawableDisplayList(LM_Rendition* rendition, DisplayList* list,
                                         const BoundsTemplate<long>* bounds)
    : Drawable(LM_RGB32{}) {
  m_colorData.m_pRendition = rendition;
  own(list);
  set_bounds(bounds);
}

DrawableDisplayList::~DrawableDisplayList() {
  DisplayList* child = m_pChild;
  if (disown()) delete child;
}

void DrawableDisplayList::own(DisplayList* list) {
  m_pChild = list;
  if (list != nullptr) ++list->m_cNestings;
}

bool DrawableDisplayList::disown() {
  return m_pChild != nullptr && --m_pChild->m_cNestings == 0;
}

void* DrawableDisplayList::my_type() {
  return &_parent_type;
}

void* DrawableDisplayList::type() const {
  return my_type();
}

void DrawableDisplayList::copy(const DrawableDisplayList& other) {
  m_colorData = other.m_colorData;
  disown();
  own(other.m_pChild);
  m_bounds = other.m_bounds;
  m_placedBounds = other.m_placedBounds;
  m_scale = other.m_scale;
  m_offset = other.m_offset;
  m_bSelector = other.m_bSelector;
}

Drawable* DrawableDisplayList::clone() {
  auto* twin = new DrawableDisplayList(nullptr, nullptr, nullptr);
  if (twin != nullptr) twin->copy(*this);
  return twin;
}

void DrawableDisplayList::hide() {
  class_change::become<HiddenDrawable<DrawableDisplayList>>(this);
}

void DrawableDisplayList::serialize_out(ZtFsStream*, DisplayList&) {}

void DrawableDisplayList::serialize_in(ZtFsStream*, DisplayList&) {}

void DrawableDisplayList::add_bounds(BoundsTemplate<long>& bounds) const {
  bounds.widen(m_placedBounds);
}

bool DrawableDisplayList::remove(Search& search) {
  if (search.type != DrawableDisplayList::my_type()) return false;
  const auto* wanted = static_cast<const DrawableDisplayList*>(search.prototype);
  return wanted->m_pChild == m_pChild && wanted->m_scale == m_scale && wanted->m_offset == m_offset;
}

// --- The place of the child ---------------------------------------------------

void DrawableDisplayList::set_display_list(DisplayList* list, const BoundsTemplate<long>* bounds) {
  disown();
  own(list);
  set_bounds(bounds);
}

void DrawableDisplayList::set_bounds(const BoundsTemplate<long>* bounds) {
  if (bounds != nullptr) {
    m_bounds = *bounds;
  } else {
    m_bounds = {};
    if (m_pChild != nullptr && m_pChild->m_pRootGroup != nullptr) {
      m_pChild->m_pRootGroup->add_bounds(m_bounds);
    }
  }
  if (m_bounds.min.x > m_bounds.max.x) return;
  const PointTemplate<double> low =
      drawable_to_display({1.0 * m_bounds.min.x, 1.0 * m_bounds.min.y});
  const PointTemplate<double> high =
      drawable_to_display({1.0 * m_bounds.max.x, 1.0 * m_bounds.max.y});
  m_placedBounds = {rounding::truncate_saturated(low.x), rounding::truncate_saturated(low.y),
                    rounding::truncate_saturated(high.x), rounding::truncate_saturated(high.y)};
  if (m_scale.x < 0) std::swap(m_placedBounds.min.x, m_placedBounds.max.x);
  if (m_scale.y < 0) std::swap(m_placedBounds.min.y, m_placedBounds.max.y);
}

void DrawableDisplayList::set_scale(const PointTemplate<double>& scale) {
  m_scale = scale;
  const BoundsTemplate<long> same = m_bounds;
  set_bounds(&same);
}

void DrawableDisplayList::set_offset(const PointTemplate<double>& offset) {
  m_offset = offset;
  const BoundsTemplate<long> same = m_bounds;
  set_bounds(&same);
}

PointTemplate<double> DrawableDisplayList::drawable_to_display(const PointTemplate<double>& point) {
  return {point.x * m_scale.x + m_offset.x, point.y * m_scale.y + m_offset.y};
}

PointTemplate<double> DrawableDisplayList::display_to_drawable(const PointTemplate<double>& point) {
  return {(point.x - m_offset.x) / m_scale.x, (point.y - m_offset.y) / m_scale.y};
}

PointTemplate<double> DrawableDisplayList::drawable_to_screen(const PointTemplate<double>& point) {
  return {point.x * m_pChild->m_scale.x + m_pChild->m_offset.x,
          point.y * m_pChild->m_scale.y + m_pChild->m_offset.y};
}

PointTemplate<double> DrawableDisplayList::screen_to_drawable(const PointTemplate<double>& point) {
  return {(point.x - m_pChild->m_offset.x) / m_pChild->m_scale.x,
          (point.y - m_pChild->m_offset.y) / m_pChild->m_scale.y};
}

}  // namespace DL
