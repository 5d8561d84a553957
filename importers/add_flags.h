#pragma once

#include "displaylist/displaylist.h"

namespace importers {

/// The flags to add a drawable to a list with: bit 0, which keeps its group on
/// the calling thread, for what worker threads may not draw. That is a text with
/// a rendition that others have too, since it writes into it, and a nested list,
/// whose child its clones have too.
[[nodiscard]] unsigned long add_flags(const DL::Drawable& drawable);

}  // namespace importers
