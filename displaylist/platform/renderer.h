#pragma once

#include <cstdint>

#include "displaylist/platform/contour_set.h"
#include "displaylist/platform/counted.h"
#include "displaylist/platform/device_actions.h"
#include "displaylist/platform/export.h"
#include "displaylist/platform/font.h"
#include "displaylist/platform/option_table.h"

/// What a renderer is able to do.
struct LM_Renderer_Options {
  bool supports_complex_clip = false;
  /// One thread at a time draws through it: lists give their worker threads
  /// nothing to draw.
  bool is_for_one_thread = false;
};

class LM_Ordered_Drawing;

/// What text_extent tells beside the corners.
struct LM_Text_Extent {
  /// One width per character along the text, in device units, in the order of
  /// the string; the caller's array, as long as the count that goes with it.
  /// Characters that share a glyph share its width evenly; those behind the end
  /// of the string may be left alone.
  float* widths = nullptr;
};

/// A renderer: the drawing context that a display list carries. Anybody can
/// fill one; as it stands it draws nothing. Shared by count.
///
/// Text is drawn by operations of its own. It starts at a device point on its
/// baseline and is set in the rendition's font, text size (the height of the em
/// square in device units), rotation and width scale. On the devices of this
/// library, whose y runs down a picture, text is upright and never mirrored:
/// it runs along (cos r, sin r) where the size is positive, and along
/// (cos r, -sin r) where it is negative, which is what a list makes of a text
/// whose logical y runs up. The glyphs stand to the left of that direction as
/// one sees it; the devices of this library draw them half a unit below the
/// baseline, on the edge of its pixels. Wide strings are UTF-16, one code unit
/// per element; multibyte strings are in the encoding of the process's locale.
/// Each is `count` characters long, or ends at a zero before.
class LUMEN_API LM_Renderer : public LM_Counted {
 public:
  LM_Device_Actions actions;
  LM_Renderer_Options options;
  LM_Option_Table option_table;

  /// Loads a font for drawing; as it stands gives the same handle.
  virtual LM_Font resolve_font(const LM_Font& font);
  /// The font of a description, an existing one where there is one. Never one
  /// without data.
  virtual LM_Font find_or_create_font(const LM_Font_Description& description);

  virtual void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                         const wchar_t* characters, std::int32_t count);
  virtual void draw_text(LM_Rendition* rendition, const LM_DCI_Point& start,
                         const unsigned char* characters, std::int32_t count);

  /// The box of a text as it would be drawn, from the font's descent to its
  /// ascent: `corners[0]` below the start, then below the end, above the end and
  /// above the start. With `with_widths` fills in `extent.widths` too. As it
  /// stands every corner is the start and every width 0.
  virtual void text_extent(LM_Rendition* rendition, const LM_DCI_Point& start,
                           const wchar_t* characters, std::int32_t count, LM_Point corners[4],
                           bool with_widths, LM_Text_Extent& extent);
  virtual void text_extent(LM_Rendition* rendition, const LM_DCI_Point& start,
                           const unsigned char* characters, std::int32_t count, LM_Point corners[4],
                           bool with_widths, LM_Text_Extent& extent);

  /// The text size at which widths are measured best.
  [[nodiscard]] virtual float measuring_text_size() const;

  /// The outline of one character in the rendition's font and size, in device
  /// units from its start on the baseline, with its advance along the text.
  /// `outline` becomes null where the character leaves no ink.
  virtual void glyph_outline(std::uint32_t character, LM_Rendition* rendition,
                             LM_Contour_Set& outline, float& advance);

  /// What draws groups of several threads in order (see ordered_drawing.h), as
  /// long as the renderer lives; as it stands null. Without it threads draw
  /// through the renderer all at once.
  [[nodiscard]] virtual LM_Ordered_Drawing* ordered_drawing() { return nullptr; }
};
