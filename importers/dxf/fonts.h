#pragma once

#include <string>

namespace importers::dxf {

/// What a drawing asks for as a font.
struct FontChoice {
  std::wstring family;  ///< empty for the usual one
  bool is_bold = false;
  bool is_italic = false;
};

/// The font in a file, by the file's name; the usual one for stroke fonts and
/// names without an ending.
[[nodiscard]] FontChoice font_of_file(const std::wstring& file);

}  // namespace importers::dxf
