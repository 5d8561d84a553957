#include "apps/dlview/output_file.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
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

}  // namespace

std::string check_output(const std::string& path) {
  const std::string failure = "cannot write '" + path + "': ";
  if (lower_case(fs::path(path).extension().string()) != ".png") {
    return failure + "pictures are written as PNG only; end the name in .png";
  }
  std::error_code error;
  if (fs::is_directory(path, error)) return failure + "it is a folder; name a file in it";
  fs::path folder = fs::path(path).parent_path();
  if (folder.empty()) folder = ".";
  if (!fs::is_directory(folder, error)) {
    return failure + "there is no folder '" + folder.string() + "'; create it or name another";
  }
  if (access(folder.c_str(), W_OK | X_OK) != 0) {
    return failure + "the folder '" + folder.string() +
           "' may not be written to; change its permissions or name another";
  }
  return {};
}

std::string write_output(const lumen::Picture& picture, const std::string& path) {
  const std::string problem = lumen::write_png(picture, path);
  return problem.empty() ? problem : problem + "; check the folder and the free space";
}

}  // namespace dlview
