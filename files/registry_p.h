#pragma once

#include <cstdint>

#include "displaylist/core/class_change.h"
#include "displaylist/core/display_list.h"
#include "displaylist/drawables/drawable.h"
#include "displaylist/platform/memory.h"

/// The classes whose records files have of their own.
namespace files {

/// Constructs a drawable on a heap, to be filled by its serialize_in; null
/// without memory.
using Maker = DL::Drawable* (*)(LumenHeap* heap);

/// Which drawable a class tag of a file stands for; null for tags that are not
/// this library's, nor those that streams leave to their readers.
Maker maker_of(std::uint32_t tag);

/// How a drawable writes itself to a file.
enum class Way : std::uint8_t {
  own,             ///< by its own record
  form,            ///< by the record that files have for its class
  nothing,         ///< not at all
  unpalettizable,  ///< not at all: it has a rendition and its class has no palettized variant
};

struct Manner {
  Way way = Way::own;
  DL::class_change::OperationTable form = nullptr;  ///< with which it writes that record
};

/// Asks the class, or where that is not known here the drawable, which may
/// write its record to find out. The list's callbacks are set.
Manner manner_of(DL::Drawable& drawable, DL::DisplayList& list);

/// The object's table of operations.
DL::class_change::OperationTable table_of(const DL::Drawable& drawable);

}  // namespace files
