#pragma once

#include <cstdint>

#include "displaylist/platform/export.h"
#include "displaylist/platform/renderer.h"

namespace lumen {

/// A renderer that knows the fonts of the system: what the devices of this
/// library have in common.
///
/// Text is shaped, with ligatures, kerning, joined letters and marks, and runs
/// in both directions, in the order of the Unicode bidirectional algorithm. Its
/// paragraph direction is that of its first letter, but the start of a text is
/// its left end in any case. Characters that the font does not have come from
/// other fonts; those that no font has, and what is no character, show the mark
/// for missing ones. A tab is a blank, other control characters are not shown.
///
/// A font that the system does not have is replaced by the usual sans-serif
/// face; see set_missing_font_handler. Where the system has no font at all, text
/// is not drawn and takes no room.
///
/// Any thread may ask, each with another rendition or with one that nobody
/// changes meanwhile. Opened fonts stay until the process ends. A thread keeps
/// the texts that it set last, in some 6 MB, and the eight fonts that it used
/// last.
class LUMEN_API TextRenderer : public LM_Renderer {
 public:
  /// Opens the font's face. Gives the same handle.
  LM_Font resolve_font(const LM_Font& font) override;
  /// The same font for all that is described equally, in the whole process.
  LM_Font find_or_create_font(const LM_Font_Description& description) override;

  /// Corners and widths are told as they are, not in whole units. Widths are
  /// written only for the characters that there are.
  void text_extent(LM_Rendition* rendition, const LM_DCI_Point& start, const wchar_t* characters,
                   std::int32_t count, LM_Point corners[4], bool with_widths,
                   LM_Text_Extent& extent) override;
  void text_extent(LM_Rendition* rendition, const LM_DCI_Point& start,
                   const unsigned char* characters, std::int32_t count, LM_Point corners[4],
                   bool with_widths, LM_Text_Extent& extent) override;
  /// Any size does equally well; at this one the widths of most fonts are whole
  /// numbers.
  [[nodiscard]] float measuring_text_size() const override;

  /// The outline has straight edges, to be filled by the non-zero rule, that are
  /// within 0.1 device units of the curves; at sizes of more than 2^15 they are
  /// coarser. As it is drawn at (0, 0): its start is its left end, turned and
  /// stretched as the rendition has it.
  void glyph_outline(std::uint32_t character, LM_Rendition* rendition, LM_Contour_Set& outline,
                     float& advance) override;
};

}  // namespace lumen
