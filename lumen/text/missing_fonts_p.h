#pragma once

#include <string>

namespace lumen {

using MissingFontHandler = void (*)(const char* message);

/// Who is told of missing fonts from now on; null for nobody.
void replace_missing_font_handler(MissingFontHandler handler);

/// Tells that there is no font of this name and which one stands in for it.
void tell_missing_font(const std::string& name, const std::string& stand_in);

}  // namespace lumen
