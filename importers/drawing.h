#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "displaylist/core/display_list.h"
#include "displaylist/platform/rendition.h"
#include "importers/mapping.h"
#include "lumen/packed_heap.h"

namespace importers {

/// What an importer read: the display list and what belongs to it.
struct Drawing {
  // Declared before the list, which uses both until it is destroyed.
  std::unique_ptr<lumen::PackedHeap> heap = std::make_unique<lumen::PackedHeap>();
  /// What palettized drawables are drawn with: point symbols, lines without
  /// length as large as their weight, and, with a weight of 1, lines and texts
  /// whose colour and pattern the file tells. Whoever draws gives them the clip
  /// of the list's own rendition and those of weight 1 its line weight, and the
  /// list wide dots.
  std::vector<std::unique_ptr<LM_Rendition>> renditions;
  std::unique_ptr<DL::DisplayList> list;

  Extent extent;                    ///< of all that is drawn, in drawing coordinates
  Mapping mapping;                  ///< drawing to logical coordinates
  std::vector<std::string> layers;  ///< the names of the layers read, in drawing order
  bool is_map = false;              ///< filled areas in longitude and latitude
  /// Keys and values of whoever wrote the file, which are handed on.
  std::vector<std::pair<std::string, std::string>> notes;

  std::size_t drawables = 0;        ///< of the list itself, not of lists in it
  std::size_t points = 0;           ///< vertices kept, as the file has them
  std::size_t features = 0;         ///< features read, drawn or not
  std::size_t empty_features = 0;   ///< those without any geometry to draw
  std::size_t unusable_points = 0;  ///< left out: not finite, or too large to be told apart
  std::string first_unusable;       ///< where the first of them is, in words
  std::string remarks;              ///< what else was left out, in words; empty: nothing
};

}  // namespace importers
