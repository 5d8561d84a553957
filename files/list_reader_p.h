#pragma once

#include <memory>

#include "displaylist/core/display_list.h"
#include "files/reading_p.h"
#include "lumen/packed_heap.h"

namespace files {

/// Reads the lists of a file. Each may nest those before it; the last one is
/// the drawing's. Null when something is wrong, which the reading tells.
[[nodiscard]] std::unique_ptr<DL::DisplayList> read_lists(Reading& reading,
                                                          lumen::PackedHeap& heap);

}  // namespace files
