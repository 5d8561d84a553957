// Iterators over random lists, from which drawables were removed, against plain
// walks through the tree.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "tests/support/garden.h"

namespace {

using DL::Drawable;
using DL::Group;
using garden::any_below;
using garden::Bounds;
using garden::Drawables;
using garden::Garden;
using garden::garden_bounds;
using garden::hollow;
using garden::prune;

std::size_t index_of(const Drawables& all, const Drawable* drawable) {
  return static_cast<std::size_t>(std::find(all.begin(), all.end(), drawable) - all.begin());
}

void check_walks_from_groups(DL::DisplayList& list) {
  DL::DisplayListIterator whole(&list);
  RC_ASSERT(walked(whole) == drawables_of(list));
  Group* start = garden::any_of(groups_of(list));
  DL::DisplayListIterator part(start);
  RC_ASSERT(walked(part) == drawables_from(list, start));
}

void check_bounded_walks(DL::DisplayList& list, const Bounds& bounds) {
  Drawables expected = drawables_meeting(list, bounds);
  DL::DisplayListBoundedIterator forward(&list, bounds);
  RC_ASSERT(walked(forward) == expected);
  std::reverse(expected.begin(), expected.end());
  DL::DisplayListReverseIterator backward(&list, bounds);
  RC_ASSERT(walked(backward) == expected);
}

Drawables of_color(Drawables drawables, const Drawable::ColorData& color) {
  std::erase_if(drawables,
                [&](const Drawable* each) { return each->m_colorData.m_color != color.m_color; });
  return drawables;
}

void check_color_walks(DL::DisplayList& list, const Bounds& bounds) {
  for (Drawable* each : drawables_of(list)) {
    each->m_colorData.m_color = {static_cast<std::uint32_t>(garden::id_of(each) % 3)};
  }
  Drawable::ColorData color;
  color.m_color = {static_cast<std::uint32_t>(any_below(4))};
  DL::DisplayListColorIterator whole(&list, color);
  RC_ASSERT(walked(whole) == of_color(drawables_of(list), color));
  DL::DisplayListBoundedColorIterator bounded(&list, bounds, color);
  RC_ASSERT(walked(bounded) == of_color(drawables_meeting(list, bounds), color));
}

void check_stretch(DL::DisplayList& list) {
  const Drawables all = drawables_of(list);
  if (all.empty()) return;
  const auto from = any_below(all.size());
  const auto last = from + any_below(all.size() - from);
  Group* start = garden::any_of(groups_of(list));
  const Drawables ahead = drawables_from(list, start);
  const bool found = index_of(ahead, all[from]) < ahead.size();
  const auto first = all.begin() + static_cast<std::ptrdiff_t>(from);
  const auto end = all.begin() + static_cast<std::ptrdiff_t>(last) + 1;
  DL::SubEntityIterator stretch(all[from], all[last], start);
  RC_ASSERT(walked(stretch) == (found ? Drawables(first, end) : Drawables()));
  DL::DisplayListIterator until(start);
  RC_ASSERT(until.next_until(all[from]) == (found ? all[from] : nullptr));
}

RC_GTEST_PROP(IteratorProperty, AllGoThroughWhatIsLeft, ()) {
  Garden garden(garden_bounds());
  const std::size_t steps = any_below(150);
  for (std::size_t i = 0; i < steps; ++i) {
    const std::size_t choice = any_below(10);
    if (garden.is_empty() || choice < 7) {
      garden.add();
    } else {
      choice < 9 ? prune(garden) : hollow(garden);
    }
    check_walks_from_groups(garden.list());
    check_bounded_walks(garden.list(), garden.any_bounds());
    check_color_walks(garden.list(), garden.any_bounds());
    check_stretch(garden.list());
  }
}

}  // namespace
