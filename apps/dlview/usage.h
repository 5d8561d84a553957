#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace dlview {

/// What is wrong with the command line that `program` did not understand: one
/// sentence that names it.
std::string usage_sentence(const CLI::App& program, const CLI::ParseError& error);

}  // namespace dlview
