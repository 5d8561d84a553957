#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "apps/dlview/command.h"
#include "apps/dlview/source.h"

namespace dlview {

/// `dlview info`: tells what a drawing holds.
class InfoCommand final : public Command {
 public:
  explicit InfoCommand(CLI::App& program);
  [[nodiscard]] std::string run() const override;

 private:
  Source m_source;
};

/// `dlview dump`: prints the tree of groups with all drawables.
class DumpCommand final : public Command {
 public:
  explicit DumpCommand(CLI::App& program);
  [[nodiscard]] std::string run() const override;

 private:
  Source m_source;
};

/// `dlview verify`: tells whether a .dlf is whole.
class VerifyCommand final : public Command {
 public:
  explicit VerifyCommand(CLI::App& program);
  [[nodiscard]] std::string run() const override;

 private:
  std::string m_path;
};

}  // namespace dlview
