#include "apps/dlview/output_file.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "apps/dlview/words.h"

namespace dlview {

namespace fs = std::filesystem;

namespace {

/// What keeps new files out of the folder, and the mend; empty when nothing does.
std::string check_folder(const fs::path& folder) {
  const std::string name = "'" + folder.string() + "'";
  std::error_code error;
  const fs::file_status status = fs::status(folder, error);
  if (status.type() == fs::file_type::not_found) {
    return "there is no folder " + name + "; create it or name another";
  }
  if (error) return "the folder " + name + ": " + error.message() + "; name another";
  if (status.type() != fs::file_type::directory) return name + " is no folder; name another";
  if (access(folder.c_str(), W_OK | X_OK) == 0) return {};
  return "the folder " + name + " may not be written to (" + std::strerror(errno) +
         "); name another";
}

}  // namespace

std::string ending_of(const std::string& path) {
  std::string ending = fs::path(path).extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return ending;
}

std::string check_output(const std::string& path, const std::string& input, const FileKind& kind) {
  const std::string failure = "cannot write '" + path + "': ";
  const std::string ending = ending_of(path);
  if (std::find(kind.endings.begin(), kind.endings.end(), ending) == kind.endings.end()) {
    return failure + "that is no format of " + kind.name + "; end the name in " +
           alternatives(kind.endings);
  }
  std::error_code error;
  if (fs::is_directory(path, error)) return failure + "it is a folder; name a file in it";
  if (fs::equivalent(path, input, error)) {
    return failure + "it is the drawing that is to be read; name another output";
  }
  // A pipe or a device is written to where it is.
  if (fs::exists(path, error) && !fs::is_regular_file(path, error)) return {};
  // What a link leads to is replaced, not the link.
  const bool is_link = fs::is_symlink(path, error);
  const fs::path folder =
      (is_link ? fs::weakly_canonical(path, error) : fs::path(path)).parent_path();
  const std::string problem = check_folder(folder.empty() ? "." : folder);
  return problem.empty() ? problem : failure + problem;
}

}  // namespace dlview
