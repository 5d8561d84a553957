#pragma once

#include <string>

#include "importers/dxf/composer.h"
#include "importers/dxf/model.h"

namespace importers::dxf {

/// How many entities of the file are in paper space.
[[nodiscard]] std::size_t paper_entities(const Model& model);

/// What was left out, in half a sentence; empty when nothing was. What is hidden
/// is meant to be, and told `with_hidden` only.
[[nodiscard]] std::string remarks(const Model& model, const LeftOut& left_out, bool with_hidden);

}  // namespace importers::dxf
