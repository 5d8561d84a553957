#pragma once

#include <string>

#include "files/drawing_file.h"
#include "importers/drawing.h"

namespace importers {

/// What a file keeps of a drawing beside its list: everything but the counts of
/// what the reading left out.
[[nodiscard]] files::Properties properties_of(const Drawing& drawing);

/// Makes a drawing of what was read from a file, whoever wrote it. Empty on
/// success, else what is wrong as the end of a sentence that starts with the
/// file's name.
[[nodiscard]] std::string take_over(files::Contents contents, Drawing& drawing);

}  // namespace importers
