#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "apps/dlview/render.h"

namespace dlview {

/// The command line of `dlview render`.
class RenderCommand {
 public:
  /// Adds the subcommand to the program; both live until the command has run.
  explicit RenderCommand(CLI::App& program);
  RenderCommand(const RenderCommand&) = delete;
  RenderCommand& operator=(const RenderCommand&) = delete;

  [[nodiscard]] bool is_chosen() const { return m_command->parsed(); }
  /// Empty on success, else one sentence for standard error.
  [[nodiscard]] std::string run() const { return render(m_options); }

 private:
  void add_files();
  void add_view_options();
  void add_look_options();
  void add_color(const std::string& name, std::optional<LM_RGB32>& color,
                 const std::string& description);
  void add_pixels(const std::string& name, std::int32_t& pixels, const std::string& description);

  CLI::App* m_command;
  RenderOptions m_options;
};

}  // namespace dlview
