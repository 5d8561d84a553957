#pragma once

#include <cstdio>
#include <string>

#include "displaylist/platform/export.h"

namespace lumen {

/// A file in the making that takes the place of another all at once. Until
/// then it has no name, where the file system can do that: a process that is
/// killed leaves nothing behind. Elsewhere it has a temporary name beside the
/// target.
class LUMEN_API NewFile {
 public:
  explicit NewFile(const std::string& path);
  /// Without put_in_place nothing stays.
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// To be written to; null, and errno says why, if no file can be made.
  [[nodiscard]] std::FILE* stream() const { return m_stream; }

  /// Ends the writing and gives the file its name, once, when its bytes are on
  /// the disk. False, and errno says why, if that failed.
  [[nodiscard]] bool put_in_place();

 private:
  void open_unnamed();
  void open_named();
  bool give_temporary_name();
  bool close();

  std::string m_path;
  std::string m_temporary;  ///< its name now; empty while it has none
  std::FILE* m_stream = nullptr;
};

}  // namespace lumen
