#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace dlview {

/// The command line of one of the tool's commands.
class Command {
 public:
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;
  virtual ~Command() = default;

  [[nodiscard]] bool is_chosen() const { return m_command->parsed(); }
  /// Empty on success, else one sentence for standard error. Whether all that
  /// was printed has gone out is looked at afterwards.
  [[nodiscard]] virtual std::string run() const = 0;

 protected:
  /// Adds the subcommand to the program; both live until the command has run.
  Command(CLI::App& program, const std::string& name, const std::string& description)
      : m_command(program.add_subcommand(name, description)) {}

  CLI::App* m_command;
};

}  // namespace dlview
