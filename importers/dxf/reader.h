#pragma once

#include <functional>
#include <istream>
#include <string>

#include "importers/dxf/model.h"

namespace importers::dxf {

/// Reads a text DXF into an empty model. Empty on success, else what is wrong,
/// in words. Whatever follows the damage is not read. `keep_on` is asked now
/// and then with the number of records read so far; false cancels.
[[nodiscard]] std::string read(std::istream& stream, Model& model,
                               const std::function<bool(std::size_t)>& keep_on);

}  // namespace importers::dxf
