#include "displaylist/core/iterators.h"

#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "displaylist/core/group_walk_p.h"

namespace DL {

namespace {

/// Goes on until the drawable is one of the colour, in any of its variants: what
/// is compared is the word, be it a colour or the low half of a pointer.
template <class Step>
Drawable* first_of_color(const DisplayListIterator& at, const Drawable::ColorData& color,
                         const Step& step) {
  Drawable* drawable = at.is_at_drawable() ? at.m_pCurrent : step();
  while (drawable != nullptr && drawable->m_colorData.m_color != color.m_color) drawable = step();
  return drawable;
}

Group* root_of(DisplayList* list) {
  return list == nullptr ? nullptr : list->m_pRootGroup;
}

}  // namespace

DisplayListIterator::DisplayListIterator(DisplayList* list) {
  init(list);
}

DisplayListIterator::DisplayListIterator(Group* start) {
  init(start);
}

DisplayListIterator::~DisplayListIterator() = default;

Group* DisplayListIterator::init(DisplayList* list) {
  return init(root_of(list));
}

Group* DisplayListIterator::init(Group* start) {
  m_pGroup = start;
  if (start != nullptr && !start->contains_drawables()) {
    m_pGroup = DisplayListIterator::next_group();
  }
  return stand_at_group();
}

Group* DisplayListIterator::stand_at_group() {
  Drawable* first = m_pGroup == nullptr ? nullptr : m_pGroup->m_pFirst.drawable;
  m_pCurrent = first != nullptr ? first : &m_sentinel;
  return m_pGroup;
}

Drawable* DisplayListIterator::step() {
  if (m_pCurrent == nullptr) return nullptr;
  if (m_pCurrent->m_pNext != nullptr) return m_pCurrent = m_pCurrent->m_pNext;
  do {
    m_pGroup = next_group();
    if (m_pGroup == nullptr) return end();
  } while (m_pGroup->m_pFirst.drawable == nullptr);
  return m_pCurrent = m_pGroup->m_pFirst.drawable;
}

Drawable* DisplayListIterator::end() {
  m_pGroup = nullptr;
  return m_pCurrent = nullptr;
}

Drawable* DisplayListIterator::next() {
  return step();
}

Drawable* DisplayListIterator::prev() {
  return nullptr;
}

Drawable* DisplayListIterator::next_until(Drawable* drawable) {
  while (m_pCurrent != nullptr && m_pCurrent != drawable) step();
  return m_pCurrent;
}

Group* DisplayListIterator::next_group() {
  return next_bottom_group(m_pGroup, [](const Group&) { return true; });
}

Drawable* DisplayListIterator::reserved_step() {
  return nullptr;
}

DisplayListBoundedIterator::DisplayListBoundedIterator(DisplayList* list,
                                                       const BoundsTemplate<long>& bounds) {
  init(list, bounds);
}

DisplayListBoundedIterator::~DisplayListBoundedIterator() = default;

Group* DisplayListBoundedIterator::init(DisplayList* list, const BoundsTemplate<long>& bounds) {
  m_bounds = bounds;
  m_pGroup = root_of(list);
  if (m_pGroup != nullptr && !m_pGroup->contains_drawables()) {
    m_pGroup = DisplayListBoundedIterator::next_group();
  }
  return stand_at_group();
}

Group* DisplayListBoundedIterator::next_group() {
  return next_bottom_group(m_pGroup,
                           [this](const Group& group) { return group.m_bounds.meets(m_bounds); });
}

DisplayListColorIterator::DisplayListColorIterator(DisplayList* list,
                                                   const Drawable::ColorData& color) {
  init(list, color);
}

DisplayListColorIterator::~DisplayListColorIterator() = default;

Group* DisplayListColorIterator::init(DisplayList* list, const Drawable::ColorData& color) {
  m_filterColor = color;
  DisplayListIterator::init(list);
  first_of_color(*this, m_filterColor, [this] { return step(); });
  return m_pGroup;
}

Drawable* DisplayListColorIterator::next() {
  if (step() == nullptr) return nullptr;
  return first_of_color(*this, m_filterColor, [this] { return step(); });
}

DisplayListBoundedColorIterator::DisplayListBoundedColorIterator(DisplayList* list,
                                                                 const BoundsTemplate<long>& bounds,
                                                                 const Drawable::ColorData& color) {
  init(list, bounds, color);
}

DisplayListBoundedColorIterator::~DisplayListBoundedColorIterator() = default;

Group* DisplayListBoundedColorIterator::init(DisplayList* list, const BoundsTemplate<long>& bounds,
                                             const Drawable::ColorData& color) {
  m_filterColor = color;
  DisplayListBoundedIterator::init(list, bounds);
  first_of_color(*this, m_filterColor, [this] { return step(); });
  return m_pGroup;
}

Drawable* DisplayListBoundedColorIterator::next() {
  if (step() == nullptr) return nullptr;
  return first_of_color(*this, m_filterColor, [this] { return step(); });
}

SubEntityIterator::SubEntityIterator() = default;

SubEntityIterator::SubEntityIterator(Drawable* from, Drawable* last, Group* start) {
  init(from, last, start);
}

SubEntityIterator::~SubEntityIterator() = default;

Group* SubEntityIterator::init(Drawable* from, Drawable* last, Group* start) {
  m_pLast = last;
  if (start == nullptr || from == nullptr) {
    end();
    return nullptr;
  }
  DisplayListIterator::init(start);
  next_until(from);
  return m_pGroup;
}

Drawable* SubEntityIterator::next() {
  return m_pCurrent == m_pLast ? end() : step();
}

}  // namespace DL
