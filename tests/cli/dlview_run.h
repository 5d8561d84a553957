#pragma once

#include <string>
#include <vector>

/// A run of the tool: what it was told and what came of it.
struct DlviewRun {
  explicit DlviewRun(const std::vector<std::string>& arguments);

  int status = -1;  ///< the exit status; -1 when a signal ended the program
  std::string out;
  std::string err;
};
