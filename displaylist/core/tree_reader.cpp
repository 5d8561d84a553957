// Reading a tree back, whatever the bytes: what does not make sense ends the
// reading and leaves a valid tree.

#include <cassert>
#include <utility>

#include "displaylist/core/coding.h"
#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "displaylist/core/multithread.h"
#include "displaylist/core/nesting_p.h"
#include "displaylist/core/pending_groups_p.h"
#include "displaylist/core/tags.h"
#include "displaylist/drawables/drawable.h"
#include "displaylist/drawables/record_chain_p.h"

namespace DL {

namespace {

/// Makes a bottom group of an open one, as it stands: bounds and level are what
/// the stream said.
void close_as_it_stands(OpenBottomGroup& group, DisplayList& list) {
  group.m_level = group.level();
  class_change::become<BottomGroup>(&group);
  list.m_pOpenGroup = nullptr;
  list.m_cOpenDrawables = 0;
}

/// A list has one open group: one that was read before stays as it is, closed.
void make_open(OpenBottomGroup& group, DisplayList& list) {
  if (list.has_open_group()) close_as_it_stands(*list.m_pOpenGroup, list);
  group.open_in(list, 0);
}

/// The group that a record with this tag fills; null without memory.
Group* make_group(std::uint32_t group_tag, DisplayList& list) {
  auto* group = new (list.m_heap) OpenBottomGroup(class_change::kUnfilled);
  if (group == nullptr) return nullptr;
  group->m_bounds = list.m_logicalBounds;
  if (group_tag == tag::kGroup) {
    group->m_level = 0;
    class_change::become<Group>(group);
  } else if (group_tag == tag::kBottomGroup) {
    group->m_level = 0;
    class_change::become<BottomGroup>(group);
  } else {
    make_open(*group, list);
  }
  return group;
}

class TreeReader {
 public:
  TreeReader(ZtFsStream& stream, DisplayList& list, Group& start)
      : m_stream(stream), m_list(list), m_pending(start) {}

  /// Reads what follows the tag of the start.
  void read(Group& start) {
    bool goes_on = read_siblings(&start);
    while (goes_on) {
      Group* group = m_pending.take();
      if (group == nullptr) return;
      goes_on = group->contains_drawables() ? read_drawables(static_cast<BottomGroup&>(*group))
                                            : read_children(*group);
    }
  }

 private:
  /// False when the stream has ended.
  bool read_fields(Group& group) {
    return coding::read(m_stream, group.m_bounds) &&
           (group.is_open() || coding::read(m_stream, group.m_level)) &&
           coding::read(m_stream, group.m_flags);
  }

  /// Reads the records of a group and its later siblings.
  bool read_siblings(Group* group) {
    for (;;) {
      m_pending.push(group);
      std::uint32_t next_tag = 0;
      if (!read_fields(*group) || !coding::read(m_stream, next_tag)) return false;
      if (next_tag == tag::kEnd) return true;
      // A root has no siblings.
      Group* parent = group->m_pParent;
      Group* next = parent == nullptr ? nullptr : make_group(next_tag, m_list);
      if (next == nullptr) return false;
      next->m_pParent = parent;
      group->m_pNext = next;
      parent->m_pLastChild.group = next;
      group = next;
    }
  }

  bool read_children(Group& parent) {
    std::uint32_t child_tag = 0;
    if (!coding::read(m_stream, child_tag)) return false;
    if (child_tag == tag::kEnd) return true;
    if (nesting::depth_of(parent) >= nesting::kDeepest) return false;
    Group* child = make_group(child_tag, m_list);
    if (child == nullptr) return false;
    child->m_pParent = &parent;
    parent.m_pFirst.group = parent.m_pLastChild.group = child;
    return read_siblings(child);
  }

  bool read_drawables(BottomGroup& group) {
    const bool goes_on = read_record_chain(group.m_pFirst.drawable, m_stream, m_list);
    const std::int32_t count = group.count_and_set_last_drawable();
    if (group.is_open()) m_list.m_cOpenDrawables = count;
    return goes_on;
  }

  ZtFsStream& m_stream;
  DisplayList& m_list;
  PendingGroups m_pending;
};

}  // namespace

void Group::serialize_in(ZtFsStream* stream, DisplayList& list, Group* parent) {
  m_pParent = parent;
  TreeReader(*stream, list, *this).read(*this);
}

void DisplayList::forget_tree() {
  assert(is_drained(*this));
  Group* open = has_open_group() ? m_pOpenGroup : nullptr;
  Group* root = std::exchange(m_pRootGroup, nullptr);
  m_pOpenGroup = nullptr;
  m_pInsertHint = nullptr;
  m_openLevel = m_cOpenDrawables = 0;
  m_openBounds = {};
  if (open != nullptr) {
    if (open->m_pParent != nullptr) open->m_pParent->unlink_child(open);
    if (root == open) root = nullptr;
    delete open;
  }
  if (root != nullptr && root->m_pFirst.group == nullptr) delete root;
}

void DisplayList::serialize_in(ZtFsStream* stream,
                               LM_Rendition* (*index_to_rendition)(void* context, int index),
                               void* rendition_context,
                               Drawable* (*factory)(void* context, int tag), void* factory_context,
                               void (*post_read)(Drawable* drawable)) {
  m_pfnIndexToRendition = index_to_rendition;
  m_pIndexToRenditionContext = rendition_context;
  m_pfnCreateDrawable = factory;
  m_pCreateDrawableContext = factory_context;
  m_pfnPostRead = post_read;
  std::uint32_t root_tag = 0;
  const bool has_root = coding::read(*stream, root_tag) && root_tag != tag::kEnd;
  forget_tree();
  if (!has_root) return;
  m_pRootGroup = make_group(root_tag, *this);
  if (m_pRootGroup == nullptr) return;
  m_pRootGroup->serialize_in(stream, *this, nullptr);
  m_pInsertHint = m_pOpenGroup;
}

}  // namespace DL
