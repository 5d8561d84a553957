#pragma once

#include <optional>
#include <string>

#include "displaylist/platform/points.h"

namespace dlview {

/// The usual background of maps.
inline constexpr LM_RGB32 sea{0x00D3E6F1};
/// The usual background of all other drawings.
inline constexpr LM_RGB32 paper{0x00FBFAF6};
/// What surrounds a picture that has a shape.
inline constexpr LM_RGB32 white{0x00FFFFFF};

/// A colour written as #RRGGBB or as one of color_names(); nothing if it is neither.
std::optional<LM_RGB32> parse_color(const std::string& text);

/// The names that parse_color knows, for people.
std::string color_names();

}  // namespace dlview
