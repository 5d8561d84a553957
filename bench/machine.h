#pragma once

#include <string>
#include <utility>
#include <vector>

namespace bench {

/// What belongs to numbers that others are to compare with: processor,
/// compiler, commit, date, load average. In pairs of a name and a text.
std::vector<std::pair<std::string, std::string>> machine();

/// What a command writes to standard output, without the last line end; empty
/// when it fails.
std::string output_of(const std::string& command);

/// The resident memory of this process in bytes.
std::size_t resident_bytes();

}  // namespace bench
