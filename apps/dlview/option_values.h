#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "apps/dlview/draw_form.h"
#include "apps/dlview/view.h"
#include "displaylist/platform/points.h"

namespace dlview {

// The values of options, from their text. What is no such value throws a
// CLI::ValidationError whose sentence names the option and what it takes.

/// Throws that error: "NAME must be MUST_BE, not 'TEXT'".
[[noreturn]] void refuse(const std::string& name, const std::string& must_be,
                         const std::string& text);

/// "1920x1080", within what a picture can hold.
PictureSize size_value(const std::string& name, const std::string& text);

/// The most pixels of a picture, for people: "268 million".
std::string most_pixels();

/// A whole number within the limits.
std::int32_t whole_value(const std::string& name, const std::string& text, std::int32_t least,
                         std::int32_t most);

/// Four finite numbers.
importers::Extent window_value(const std::string& name, const std::vector<std::string>& texts);

DrawForm form_value(const std::string& name, const std::string& text);

LM_RGB32 color_value(const std::string& name, const std::string& text);

/// The name of an importer that there is; of any, where none can be loaded,
/// which reading then tells.
std::string importer_value(const std::string& name, const std::string& text);

}  // namespace dlview
