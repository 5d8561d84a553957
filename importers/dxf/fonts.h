#pragma once

#include <string>

namespace importers::dxf {

/// The family that a font file belongs to, by its name; empty, which stands for
/// the usual one, for stroke fonts and names without an ending.
[[nodiscard]] std::wstring family_of_file(const std::wstring& file);

}  // namespace importers::dxf
