#pragma once

#include <string>
#include <vector>

/// A run of the tool: what it was told and what came of it.
struct DlviewRun {
  explicit DlviewRun(const std::vector<std::string>& arguments) : DlviewRun(arguments, {}) {}
  /// Standard output goes to the file, which is there already, where one is named.
  DlviewRun(const std::vector<std::string>& arguments, const std::string& to);

  int status = -1;  ///< the exit status; -1 when a signal ended the program
  std::string out;
  std::string err;
};
