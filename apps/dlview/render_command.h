#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "apps/dlview/command.h"
#include "apps/dlview/render.h"

namespace dlview {

/// `dlview render`: draws a picture.
class RenderCommand final : public Command {
 public:
  explicit RenderCommand(CLI::App& program);

  [[nodiscard]] std::string run() const override { return render(m_options); }

 private:
  void add_output();
  void add_view_options();
  void add_look_options();

  RenderOptions m_options;
};

}  // namespace dlview
