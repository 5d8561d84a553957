// Writing a tree: the record of a group, with that of its next sibling in it,
// then its children's. A loop instead of calls keeps the stack constant.

#include "displaylist/core/coding.h"
#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "displaylist/core/pending_groups_p.h"
#include "displaylist/core/tags.h"
#include "displaylist/drawables/record_chain_p.h"

namespace DL {

namespace {

std::uint32_t tag_of(const Group& group) {
  if (!group.contains_drawables()) return tag::kGroup;
  return group.is_open() ? tag::kOpenBottomGroup : tag::kBottomGroup;
}

/// What a group's record holds of the group itself.
void write_fields(const Group& group, ZtFsStream& stream) {
  coding::write(stream, tag_of(group));
  coding::write(stream, group.m_bounds);
  if (!group.is_open()) coding::write(stream, group.level());
  coding::write(stream, group.m_flags);
}

void write_siblings(Group* first, ZtFsStream& stream, PendingGroups& pending) {
  for (Group* group = first; group != nullptr; group = group->m_pNext) {
    write_fields(*group, stream);
    pending.push(group);
  }
  write_end(stream);
}

}  // namespace

void Group::serialize_out(ZtFsStream* stream, DisplayList& list) {
  PendingGroups pending(*this);
  write_siblings(this, *stream, pending);
  while (Group* group = pending.take()) {
    if (group->contains_drawables()) {
      write_record_chain(group->m_pFirst.drawable, *stream, list);
    } else {
      write_siblings(group->m_pFirst.group, *stream, pending);
    }
  }
}

void DisplayList::serialize_out(ZtFsStream* stream,
                                int (*rendition_to_index)(void* context, LM_Rendition* rendition),
                                void* index_context) {
  m_pfnRenditionToIndex = rendition_to_index;
  m_pRenditionToIndexContext = index_context;
  if (m_pRootGroup != nullptr) {
    m_pRootGroup->serialize_out(stream, *this);
  } else {
    write_end(*stream);
  }
}

}  // namespace DL
