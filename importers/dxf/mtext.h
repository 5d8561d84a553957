#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "displaylist/platform/points.h"
#include "importers/dxf/fonts.h"

namespace importers::dxf {

/// How a piece of an MTEXT is set.
struct PieceFormat {
  double height = 1.0;
  double width_factor = 1.0;
  FontChoice font;
  std::optional<LM_RGB32> color;
};

/// A piece of an MTEXT that is set in one way.
struct Piece {
  std::wstring text;
  PieceFormat format;
  bool begins_line = false;
};

/// The text without its formatting codes, in pieces. Stacked parts are set on
/// the line with a slash between them; over- and underlines are left out.
[[nodiscard]] std::vector<Piece> pieces_of(std::wstring_view text, const PieceFormat& format);

}  // namespace importers::dxf
