#pragma once

#include <string>

#include "displaylist/platform/export.h"
#include "lumen/picture.h"

namespace lumen {

/// Writes the picture as a PNG file: RGB, with alpha only if a pixel is
/// transparent. The file appears whole or not at all; one that was there is
/// replaced. Empty on success, else one sentence that names the file and the
/// reason.
[[nodiscard]] LUMEN_API std::string write_png(const Picture& picture, const std::string& path);

/// A picture read from a PNG file; empty when it cannot be read, with one
/// sentence in `*error` (which may be null) that names the file and the reason.
[[nodiscard]] LUMEN_API Picture read_png(const std::string& path, std::string* error = nullptr);

}  // namespace lumen
