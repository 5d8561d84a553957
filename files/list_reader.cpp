#include "files/list_reader_p.h"

#include <utility>
#include <vector>

#include "displaylist/catalogue.h"
#include "displaylist/core/coding.h"
#include "files/layout_p.h"
#include "files/rendition_record_p.h"
#include "files/settings_p.h"
#include "files/tree_walk_p.h"

namespace files {
namespace {

struct Counts {
  std::uint64_t groups = 0;
  std::uint64_t drawables = 0;

  friend bool operator==(const Counts&, const Counts&) = default;
};

Counts counts_of(const DL::DisplayList& list) {
  Counts counts;
  for_each_group(list, [&counts](const DL::Group&) { ++counts.groups; });
  for_each_drawable(list, [&counts](const DL::Drawable&) { ++counts.drawables; });
  return counts;
}

/// Ascending numbers below a limit.
bool get_ascending(PayloadReader& reader, std::uint64_t limit,
                   std::vector<std::uint64_t>& numbers) {
  std::uint64_t count = 0;
  if (!reader.get_count(count, sizeof(std::uint64_t))) return false;
  std::uint64_t number = 0;
  for (std::uint64_t i = 0; i < count; ++i) {
    std::uint64_t step = 0;
    if (!DL::coding::read(reader, step) || (i != 0 && step == 0) || step >= limit - number)
      return false;
    number += step;
    numbers.push_back(number);
  }
  return true;
}

void set_switches(DL::DisplayList& list, std::uint32_t bits) {
  list.m_bCheckOverflow = (bits & settings::kCheckOverflow) != 0;
  list.m_bWideDots = (bits & settings::kWideDots) != 0;
  list.m_bGrayscale = (bits & settings::kGrayscale) != 0;
  list.m_bAlternateScale = (bits & settings::kAlternateScale) != 0;
}

/// What a list tells of its open group, which streams do not hold.
struct Open {
  std::int32_t level = 0;
  DL::BoundsTemplate<long> bounds;
};

bool get_settings(Reading& reading, DL::DisplayList& list, Open& open, Counts& counts) {
  PayloadReader& reader = reading.reader;
  std::uint32_t switches = 0;
  if (!DL::coding::read(reader, list.m_logicalBounds) ||
      !DL::coding::read(reader, list.m_yAspect) || !DL::coding::read(reader, switches) ||
      !DL::coding::read(reader, list.m_cMaxOpenDrawables) ||
      !DL::coding::read(reader, list.m_cMaxLevel) || !DL::coding::read(reader, open.level) ||
      !DL::coding::read(reader, open.bounds) || !get_rendition(reading, list.m_rendition) ||
      !DL::coding::read(reader, counts.groups) || !DL::coding::read(reader, counts.drawables)) {
    return false;
  }
  set_switches(list, switches);
  return true;
}

/// The stream of the list, up to its end.
bool get_tree(Reading& reading, DL::DisplayList& list, const Counts& expected) {
  list.serialize_in(&reading.reader, &Reading::index_to_rendition, &reading,
                    &Reading::create_drawable, &reading, &Reading::post_read);
  list.m_pfnIndexToRendition = nullptr;
  list.m_pIndexToRenditionContext = nullptr;
  list.m_pfnCreateDrawable = nullptr;
  list.m_pCreateDrawableContext = nullptr;
  list.m_pfnPostRead = nullptr;
  std::uint32_t end = 0;
  return DL::coding::read(reading.reader, end) && end == layout::kListEnd &&
         counts_of(list) == expected;
}

/// Plain drawables come out of a stream with renditions in their colours' places.
void make_colors_plain(const Reading& reading, const DL::DisplayList& list) {
  for_each_drawable(list, [&reading](DL::Drawable& drawable) {
    const LM_Rendition* rendition = drawable.m_colorData.m_pRendition;
    if (!drawable.is_palettized() || !reading.is_made_for_word(rendition)) return;
    const LM_RGB32 color = WordRenditions::color_of(*rendition);
    if (DL::make_plain(drawable)) drawable.m_colorData.m_color = color;
  });
}

/// Hides the drawables and groups at the given places.
void hide(const DL::DisplayList& list, const std::vector<std::uint64_t>& drawables,
          const std::vector<std::uint64_t>& groups) {
  std::uint64_t place = 0;
  auto next = drawables.begin();
  for_each_drawable(list, [&](DL::Drawable& drawable) {
    if (next == drawables.end() || place++ != *next) return;
    drawable.hide();
    ++next;
  });
  place = 0;
  next = groups.begin();
  for_each_group(list, [&](DL::Group& group) {
    if (next == groups.end() || place++ != *next) return;
    group.make_hidden();
    ++next;
  });
}

void mend_open_group(DL::DisplayList& list, const Open& open) {
  if (list.m_pOpenGroup == nullptr) return;
  list.m_openLevel = open.level;
  list.m_openBounds = open.bounds;
}

bool get_list(Reading& reading, DL::DisplayList& list) {
  Open open;
  Counts counts;
  std::vector<std::uint64_t> drawables;
  std::vector<std::uint64_t> groups;
  if (!get_settings(reading, list, open, counts) || !get_tree(reading, list, counts) ||
      !get_ascending(reading.reader, counts.drawables, drawables) ||
      !get_ascending(reading.reader, counts.groups, groups)) {
    return false;
  }
  make_colors_plain(reading, list);
  hide(list, drawables, groups);
  mend_open_group(list, open);
  return true;
}

}  // namespace

std::unique_ptr<DL::DisplayList> read_lists(Reading& reading, lumen::PackedHeap& heap) {
  constexpr std::uint64_t least_list = 148;  // with an empty tree
  std::uint64_t count = 0;
  if (!reading.reader.get_count(count, least_list)) return nullptr;
  std::unique_ptr<DL::DisplayList> list;
  for (std::uint64_t i = 0; i < count; ++i) {
    if (list != nullptr) reading.add_child(std::move(list));
    list = std::make_unique<DL::DisplayList>(&reading.heap);
    if (!get_list(reading, *list)) reading.reader.fail_of_damage();
    list->m_heap = &heap;
    if (reading.reader.has_failed()) return nullptr;
  }
  if (list == nullptr) reading.reader.fail_of_damage();
  return list;
}

}  // namespace files
