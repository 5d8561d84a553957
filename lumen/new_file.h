#pragma once

#include <sys/stat.h>

#include <cstdio>
#include <string>

#include "displaylist/platform/export.h"

namespace lumen {

/// A file in the making that takes the place of another all at once. Until
/// then it has no name, where the file system can do that: a process that is
/// killed leaves nothing behind. Elsewhere it has a temporary name beside the
/// target.
///
/// The new file has the permissions of the old one and, where that is allowed,
/// its owner. A link stays: what it leads to is replaced. A pipe or a device is
/// not replaced but written to, at once.
class LUMEN_API NewFile {
 public:
  explicit NewFile(const std::string& path);
  /// Without put_in_place nothing stays, but for what a pipe or a device took.
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// To be written to; null, and errno says why, if no file can be made.
  [[nodiscard]] std::FILE* stream() const { return m_stream; }

  /// Ends the writing and gives the file its name, once, when its bytes are on
  /// the disk. False, and errno says why, if that failed.
  [[nodiscard]] bool put_in_place();

 private:
  void open_special();
  void take_permissions(const struct stat& old);
  void open_unnamed();
  void open_named();
  bool give_temporary_name();
  bool close();

  std::string m_path;         ///< what is replaced, which is no link
  bool m_is_special = false;  ///< no regular file: written to as it is
  std::string m_temporary;    ///< its name now; empty while it has none
  std::FILE* m_stream = nullptr;
};

}  // namespace lumen
