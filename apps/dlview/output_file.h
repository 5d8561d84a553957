#pragma once

#include <string>

namespace dlview {

/// Whether a picture can be written there, beside the drawing `input`, asked
/// before the work is done. Empty when so, else one sentence that names the
/// file and the mend.
[[nodiscard]] std::string check_output(const std::string& path, const std::string& input);

}  // namespace dlview
