#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace files {

/// Reads a whole file, or no more than its beginning when that is not how files
/// of display lists start. Empty on success, else the reason. May throw
/// std::bad_alloc.
[[nodiscard]] std::string load(const std::string& path, std::vector<std::byte>& bytes);

}  // namespace files
