#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

/// A folder of its own for each test, gone afterwards.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "displaylist-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    m_path = name;
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() { std::filesystem::remove_all(m_path); }

  [[nodiscard]] std::string path(std::string_view name) const { return (m_path / name).string(); }
  /// Writes a file and returns its path.
  [[nodiscard]] std::string write(std::string_view name, std::string_view content) const {
    std::ofstream(m_path / name, std::ios::binary) << content;
    return path(name);
  }
  /// How many files there are.
  [[nodiscard]] std::size_t file_count() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(m_path), {}));
  }

 private:
  std::filesystem::path m_path;
};
