#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "displaylist/platform/font.h"
#include "displaylist/platform/points.h"
#include "displaylist/platform/rendition.h"

namespace lumen {

class FontFace;

/// A glyph in its place in a run, in ems: x along the text from its start, y
/// above its baseline.
struct PlacedGlyph {
  const FontFace* face;  ///< its outline; alive as long as the process
  std::uint32_t glyph;   ///< in the face
  float x;
  float y;
  float advance;           ///< along the text
  std::int32_t character;  ///< the first character of the string that it shows
};

/// A string set in a font: its glyphs from left to right, in ems.
struct TextRun {
  std::vector<PlacedGlyph> glyphs;
  std::vector<float> widths;  ///< per character of the string, as LM_Text_Extent has them
  float advance = 0.0F;       ///< of all
  float ascent = 0.0F;        ///< of the font above the baseline, positive
  float descent = 0.0F;       ///< below the baseline, positive
  float x_height = 0.0F;
  float cap_height = 0.0F;
};

/// Sets `count` UTF-16 code units, or up to a zero, in the font. Unpaired
/// surrogates and characters that no font has show the font's mark for missing
/// ones. The run is the thread's own, valid until the thread sets the next one.
const TextRun& set_text(const LM_Font& font, const wchar_t* characters, std::int32_t count);
/// The same with multibyte characters in the encoding of the locale; the widths
/// are per multibyte character.
const TextRun& set_text(const LM_Font& font, const unsigned char* characters, std::int32_t count);

/// How ems lie on a device whose y runs down.
struct TextPlacement {
  double start_x, start_y;  ///< of the baseline
  double along_x, along_y;  ///< one em along the text
  double up_x, up_y;        ///< one em up

  /// As LM_Renderer says it of text attributes; a size or angle that is not
  /// finite places everything on the start.
  TextPlacement(const LM_Text_Attributes& attributes, const LM_DCI_Point& start);

  /// Moves the text half a unit down, as it stands, so that its baseline is the
  /// lower edge of its pixels and the feet of its letters are sharp: how it is
  /// drawn.
  void sit_on_pixels();

  [[nodiscard]] double x(double along, double up) const {
    return start_x + along * along_x + up * up_x;
  }
  [[nodiscard]] double y(double along, double up) const {
    return start_y + along * along_y + up * up_y;
  }
};

}  // namespace lumen
