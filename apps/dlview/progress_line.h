#pragma once

#include <chrono>
#include <string>

#include "importers/importer.h"

namespace dlview {

/// One line on standard error that tells how far reading is, there only while
/// it takes long and somebody watches.
class ProgressLine {
 public:
  /// `watched`: whether standard error is a terminal.
  ProgressLine(std::string what, bool watched);
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;
  /// Wipes the line.
  ~ProgressLine();

  void show(const importers::Progress& progress);

 private:
  using Clock = std::chrono::steady_clock;

  std::string m_what;
  bool m_watched;
  bool m_shown = false;
  Clock::time_point m_next;
};

}  // namespace dlview
