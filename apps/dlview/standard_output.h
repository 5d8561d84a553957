#pragma once

#include <streambuf>
#include <string>

namespace dlview {

/// Standard output for the library, which flushes after every line: flushing
/// does nothing here, so that lines are written together.
class StandardOutput final : public std::streambuf {
 protected:
  int_type overflow(int_type character) override;
  std::streamsize xsputn(const char* text, std::streamsize size) override;
  int sync() override { return 0; }
};

/// Writes what is left of what was printed. Empty when all of it has gone out,
/// else one sentence.
[[nodiscard]] std::string finish_output();

}  // namespace dlview
