#include "files/list_writer_p.h"

#include <algorithm>

#include "displaylist/core/coding.h"
#include "displaylist/text/drawable_display_list.h"
#include "files/layout_p.h"
#include "files/registry_p.h"
#include "files/rendition_record_p.h"
#include "files/settings_p.h"
#include "files/tree_walk_p.h"

namespace files {
namespace {

/// The first as it is, each other as the difference to the one before.
void put_ascending(ZtFsStream& stream, const std::vector<std::uint64_t>& numbers) {
  DL::coding::write<std::uint64_t>(stream, numbers.size());
  std::uint64_t previous = 0;
  for (const std::uint64_t number : numbers) {
    DL::coding::write(stream, number - previous);
    previous = number;
  }
}

std::uint32_t switches_of(const DL::DisplayList& list) {
  std::uint32_t bits = 0;
  if (list.m_bCheckOverflow) bits |= settings::kCheckOverflow;
  if (list.m_bWideDots) bits |= settings::kWideDots;
  if (list.m_bGrayscale) bits |= settings::kGrayscale;
  if (list.m_bAlternateScale) bits |= settings::kAlternateScale;
  return bits;
}

std::string drawables_are(std::uint64_t count) {
  return std::to_string(count) + (count == 1 ? " drawable is" : " drawables are");
}

}  // namespace

ListWriter::~ListWriter() {
  for (const auto& [drawable, table] : m_changed) {
    DL::class_change::set_operation_table(drawable, table);
  }
  for (const Prepared& prepared : m_prepared) {
    prepared.list->m_pfnRenditionToIndex = prepared.rendition_to_index;
    prepared.list->m_pRenditionToIndexContext = prepared.index_context;
  }
}

std::string ListWriter::prepare(DL::DisplayList& list) {
  if (visit(list, 1) == 0) {
    return "lists are nested in each other more than " + std::to_string(layout::kDeepestNesting) +
           " deep; draw some of them in one list";
  }
  if (m_unstored != 0) {
    return drawables_are(m_unstored) +
           " of a class that writes no record of its own; remove them, or give their class "
           "serialize_out and serialize_in with a tag that is not taken";
  }
  if (m_unpalettizable != 0) {
    return drawables_are(m_unpalettizable) +
           " drawn with a rendition although their class has no palettized variant; give them a "
           "colour";
  }
  return {};
}

std::uint32_t ListWriter::visit(DL::DisplayList& list, std::uint32_t depth) {
  const auto [place, is_new] = m_heights.try_emplace(&list, 0);
  if (!is_new) return place->second;  // a list inside itself is endlessly deep
  if (depth > layout::kDeepestNesting) return 0;
  const std::uint32_t height = visit_children(list, depth);
  if (height == 0 || height > layout::kDeepestNesting) return 0;
  prepare_list(list);
  return m_heights[&list] = height;
}

std::uint32_t ListWriter::visit_children(const DL::DisplayList& list, std::uint32_t depth) {
  std::uint32_t height = 1;
  for_each_drawable(list, [this, depth, &height](DL::Drawable& drawable) {
    if (drawable.type() != DL::DrawableDisplayList::my_type() || height == 0) return;
    DL::DisplayList* child = static_cast<DL::DrawableDisplayList&>(drawable).display_list();
    if (child == nullptr) return;
    const std::uint32_t below = visit(*child, depth + 1);
    height = below == 0 ? 0 : std::max(height, below + 1);
  });
  return height;
}

void ListWriter::prepare_list(DL::DisplayList& list) {
  Prepared& prepared = m_prepared.emplace_back();
  prepared.list = &list;
  prepared.rendition_to_index = list.m_pfnRenditionToIndex;
  prepared.index_context = list.m_pRenditionToIndexContext;
  m_writing.add_list(list);
  list.m_pfnRenditionToIndex = &Writing::rendition_to_index;
  list.m_pRenditionToIndexContext = &m_writing;
  prepare_tree(prepared);
}

void ListWriter::prepare_tree(Prepared& prepared) {
  for_each_group(*prepared.list, [&prepared](const DL::Group& group) {
    if (group.is_hidden()) prepared.hidden_groups.push_back(prepared.groups);
    ++prepared.groups;
  });
  for_each_drawable(*prepared.list, [this, &prepared](DL::Drawable& drawable) {
    prepare_drawable(prepared, drawable);
  });
}

void ListWriter::prepare_drawable(Prepared& prepared, DL::Drawable& drawable) {
  if (drawable.is_hidden()) prepared.hidden_drawables.push_back(prepared.drawables);
  ++prepared.drawables;
  const Manner manner = manner_of(drawable, *prepared.list);
  if (manner.way == Way::nothing) ++m_unstored;
  if (manner.way == Way::unpalettizable) ++m_unpalettizable;
  if (manner.way == Way::form) change(drawable, manner.form);
}

void ListWriter::change(DL::Drawable& drawable, DL::class_change::OperationTable form) {
  m_changed.emplace_back(&drawable, table_of(drawable));
  DL::class_change::set_operation_table(&drawable, form);
}

void ListWriter::write_settings(const Prepared& prepared, ZtFsStream& stream) {
  const DL::DisplayList& list = *prepared.list;
  DL::coding::write(stream, list.m_logicalBounds);
  DL::coding::write(stream, list.m_yAspect);
  DL::coding::write(stream, switches_of(list));
  DL::coding::write(stream, list.m_cMaxOpenDrawables);
  DL::coding::write(stream, list.m_cMaxLevel);
  DL::coding::write(stream, list.m_openLevel);
  DL::coding::write(stream, list.m_openBounds);
  put_rendition(stream, list.m_rendition, m_writing);
  DL::coding::write(stream, prepared.groups);
  DL::coding::write(stream, prepared.drawables);
}

void ListWriter::write(ZtFsStream& stream) {
  DL::coding::write<std::uint64_t>(stream, m_prepared.size());
  for (const Prepared& prepared : m_prepared) {
    write_settings(prepared, stream);
    prepared.list->serialize_out(&stream, &Writing::rendition_to_index, &m_writing);
    DL::coding::write(stream, layout::kListEnd);
    put_ascending(stream, prepared.hidden_drawables);
    put_ascending(stream, prepared.hidden_groups);
  }
}

}  // namespace files
