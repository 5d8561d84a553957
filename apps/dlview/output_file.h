#pragma once

#include <string>
#include <vector>

namespace dlview {

/// Files that a command writes.
struct FileKind {
  const char* name;                  ///< "pictures"
  std::vector<std::string> endings;  ///< of their names, in lower case: ".png"
};

/// What the name of a file ends in, in lower case: ".png".
[[nodiscard]] std::string ending_of(const std::string& path);

/// Whether such a file can be written there, beside the drawing `input`, asked
/// before the work is done. Empty when so, else one sentence that names the
/// file and the mend.
[[nodiscard]] std::string check_output(const std::string& path, const std::string& input,
                                       const FileKind& kind);

}  // namespace dlview
