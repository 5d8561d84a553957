#pragma once

#include <string>

namespace importers {

/// Whether the path leads to something that can be read at all: a file with
/// bytes in it, or a folder, which some formats are. Empty when so, else one
/// sentence that names the path and the mend.
[[nodiscard]] std::string check_input(const std::string& path);

}  // namespace importers
