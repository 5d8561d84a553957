#include "apps/dlview/output_file.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "lumen/png_file.h"

namespace dlview {

namespace fs = std::filesystem;

namespace {

std::string lower_case(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

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

std::string check_output(const std::string& path, const std::string& input) {
  const std::string failure = "cannot write '" + path + "': ";
  if (lower_case(fs::path(path).extension().string()) != ".png") {
    return failure + "pictures are written as PNG only; end the name in .png";
  }
  std::error_code error;
  if (fs::is_directory(path, error)) return failure + "it is a folder; name a file in it";
  if (fs::equivalent(path, input, error)) {
    return failure + "it is the drawing that is to be read; name another output";
  }
  const fs::path folder = fs::path(path).parent_path();
  const std::string problem = check_folder(folder.empty() ? "." : folder);
  return problem.empty() ? problem : failure + problem;
}

std::string write_output(const lumen::Picture& picture, const std::string& path) {
  const std::string problem = lumen::write_png(picture, path);
  return problem.empty() ? problem : problem + "; choose another name or folder";
}

}  // namespace dlview
