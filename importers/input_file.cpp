#include "importers/input_file.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace importers {

namespace fs = std::filesystem;

std::string check_input(const std::string& path) {
  const std::string failure = "cannot read '" + path + "': ";
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) {
    return failure + "there is no such file; check the path";
  }
  if (error) return failure + error.message() + "; check the path";
  if (access(path.c_str(), R_OK) != 0) {
    return failure + "it may not be read; change its permissions";
  }
  if (status.type() == fs::file_type::directory) return {};
  if (status.type() != fs::file_type::regular) {
    return failure + "it is not a file; name a drawing file";
  }
  if (fs::file_size(path, error) == 0 && !error) {
    return failure + "the file is empty; export the drawing again";
  }
  return {};
}

}  // namespace importers
