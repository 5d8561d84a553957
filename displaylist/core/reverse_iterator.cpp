#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "displaylist/core/iterators.h"
#include "displaylist/core/leaf_index_p.h"

namespace DL {

DisplayListReverseIterator::DisplayListReverseIterator(DisplayList* list,
                                                       const BoundsTemplate<long>& bounds) {
  init(list, bounds);
}

DisplayListReverseIterator::~DisplayListReverseIterator() = default;

Group* DisplayListReverseIterator::init(DisplayList* list, const BoundsTemplate<long>& bounds) {
  m_bounds = bounds;
  m_groups.clear();
  m_drawables.clear();
  m_pGroup = list == nullptr ? nullptr : list->m_pRootGroup;
  m_pCurrent = &m_sentinel;
  if (m_pGroup == nullptr) return nullptr;
  if (!m_pGroup->contains_drawables()) {
    if (!expand({m_pGroup, false})) return nullptr;
    next_from_groups();
  } else if (m_pGroup->m_pFirst.drawable != nullptr) {
    load(m_pGroup);
  }
  return m_pGroup;
}

bool DisplayListReverseIterator::expand(const GroupInfo& info) {
  Group* child = info.group->m_pFirst.group;
  LeafIndex* index = info.inside ? nullptr : LeafIndex::of(*info.group);
  if (LeafIndex::Hits leaves(index, m_bounds, false); leaves) {
    while (Group* leaf = leaves.next()) {
      if (!m_groups.push({leaf, false})) return give_up();
    }
    child = index->tail();
  }
  for (; child != nullptr; child = child->m_pNext) {
    const bool inside = info.inside || child->m_bounds.is_inside(m_bounds);
    if (!inside && !child->m_bounds.meets(m_bounds)) continue;
    if (!m_groups.push({child, inside})) return give_up();
  }
  return true;
}

bool DisplayListReverseIterator::load(Group* group) {
  m_pGroup = group;
  Drawable* drawable = group->m_pFirst.drawable;
  for (; drawable->m_pNext != nullptr; drawable = drawable->m_pNext) {
    if (!m_drawables.push(drawable)) return give_up();
  }
  m_pCurrent = drawable;
  return true;
}

Drawable* DisplayListReverseIterator::next_from_groups() {
  while (!m_groups.is_empty()) {
    const GroupInfo info = m_groups.pop();
    if (!info.group->contains_drawables()) {
      if (!expand(info)) return nullptr;
    } else if (info.group->m_pFirst.drawable != nullptr) {
      return load(info.group) ? m_pCurrent : nullptr;
    }
  }
  return end();
}

Drawable* DisplayListReverseIterator::next() {
  if (m_pCurrent == nullptr) return nullptr;
  if (m_drawables.is_empty()) return next_from_groups();
  return m_pCurrent = m_drawables.pop();
}

bool DisplayListReverseIterator::give_up() {
  end();
  return false;
}

}  // namespace DL
