#include "apps/dlview/usage.h"

#include <algorithm>
#include <vector>

namespace dlview {

namespace {

constexpr const char* see_commands = "; `dlview --help` tells the commands";

std::string see_options(const CLI::App& command) {
  return "; `dlview " + command.get_name() + " --help` tells what there is";
}

/// About the first word that belongs nowhere. `command` may be null.
std::string unexpected(const std::string& word, const CLI::App* command) {
  const std::string see = command != nullptr ? see_options(*command) : see_commands;
  if (word.starts_with('-')) return "there is no option '" + word + "'" + see;
  if (command != nullptr) return "'" + word + "' is one argument too many" + see;
  return "there is no command '" + word + "'" + see;
}

/// About an option with too few or too many values, whose error starts with
/// its name or mentions it, and with "missing" at the end when too few.
std::string wrong_count(const CLI::App& command, const std::string& what) {
  const std::vector<const CLI::Option*> options = command.get_options();
  const auto named = std::find_if(options.begin(), options.end(), [&](const CLI::Option* option) {
    return what.find(option->get_name()) != std::string::npos;
  });
  if (named == options.end()) return what + see_options(command);
  const std::string name = (*named)->get_name();
  if (!what.ends_with("missing")) return name + " may be given only once" + see_options(command);
  return name + " lacks a value; give " + name + " " + (*named)->get_type_name();
}

}  // namespace

std::string usage_sentence(const CLI::App& program, const CLI::ParseError& error) {
  const std::vector<CLI::App*> commands = program.get_subcommands();
  const CLI::App* command = commands.empty() ? nullptr : commands.front();
  std::string what = error.what();
  const std::vector<std::string> extra = program.remaining(true);
  // An option that is missing may be there, misspelt.
  const bool is_extra = dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
  const bool is_missing = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
  if (!extra.empty() &&
      (is_extra || (is_missing && (command == nullptr || extra.front().starts_with('-'))))) {
    return unexpected(extra.front(), command);
  }
  if (command == nullptr) return std::string("a command is missing") + see_commands;
  if (is_missing) return what + see_options(*command);
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    return wrong_count(*command, what);
  }
  if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr) return what;
  return what + see_options(*command);
}

}  // namespace dlview
