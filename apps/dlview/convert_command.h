#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "apps/dlview/command.h"
#include "apps/dlview/source.h"

namespace dlview {

/// `dlview convert`: keeps a drawing in a file that opens fast.
class ConvertCommand final : public Command {
 public:
  explicit ConvertCommand(CLI::App& program);

  [[nodiscard]] std::string run() const override;

 private:
  Source m_source;
  std::string m_output;
  std::int32_t m_compression = 3;
};

}  // namespace dlview
