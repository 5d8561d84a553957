#pragma once

#include <string>

#include "lumen/picture.h"

namespace dlview {

/// Whether a picture can be written there, beside the drawing `input`, asked
/// before the work is done. Empty when so, else one sentence that names the
/// file and the mend.
[[nodiscard]] std::string check_output(const std::string& path, const std::string& input);

/// Writes the picture in the format that the name's ending tells; whole or not
/// at all. Empty on success, else one sentence.
[[nodiscard]] std::string write_output(const lumen::Picture& picture, const std::string& path);

}  // namespace dlview
