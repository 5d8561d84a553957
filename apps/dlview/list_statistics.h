#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "displaylist/core/display_list.h"

namespace dlview {

struct ClassCount {
  std::size_t all = 0;
  std::size_t hidden = 0;
  std::size_t palettized = 0;
};

/// What a display list is made of.
struct ListStatistics {
  ClassCount drawables;
  std::map<std::string, ClassCount> classes;  ///< by the name of the class
  std::size_t nested_lists = 0;               ///< each counted once, at any depth
  std::size_t nested_drawables = 0;           ///< of these lists

  std::size_t groups = 0;
  std::size_t leaves = 0;  ///< groups with drawables, or made for them
  std::size_t hidden_groups = 0;
  std::int32_t depth = 0;     ///< levels of groups
  std::int32_t capacity = 1;  ///< of a group with drawables
};

ListStatistics statistics_of(DL::DisplayList& list);

}  // namespace dlview
