#pragma once

#include <CLI/CLI.hpp>

#include "apps/dlview/source.h"

namespace dlview {

/// Adds INPUT and the options that choose what of it is read.
void add_source_options(CLI::App& command, Source& source);

/// Adds the options that tell how what has no look of its own is to look.
void add_source_look_options(CLI::App& command, Source& source);

/// Adds an option for a colour or for a number of pixels, 1 to 1000.
void add_color(CLI::App& command, const std::string& name, std::optional<LM_RGB32>& color,
               const std::string& description);
void add_pixels(CLI::App& command, const std::string& name, std::int32_t& pixels,
                const std::string& description);

}  // namespace dlview
