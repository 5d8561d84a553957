#pragma once

#include <cstdint>

#include "displaylist/core/geometry.h"
#include "displaylist/drawables/drawable.h"
#include "displaylist/platform/contour_set.h"
#include "displaylist/platform/export.h"
#include "displaylist/platform/font.h"

class LM_Matrix;
class LM_Renderer;

namespace DL {

class EncodedText;

/// A run of text: a string set in a font at a logical position on its baseline,
/// with a height (of the font's em square) in logical units and a rotation in
/// radians, counter-clockwise in logical space.
///
/// The bounds are the caller's: they are trusted and not taken from the string
/// or the font. Text is drawn as a whole through the renderer's text
/// operations, whatever its size on the device. The measuring operations go
/// through the renderer of the display list given at construction, which
/// outlives the text or is null; without one, or without a font or a string,
/// they measure nothing.
class DISPLAYLIST_API DLText : public Drawable {
 public:
  /// Without font or string; to be filled by serialize_in.
  explicit DLText(const LM_RGB32& color);
  /// A plain text. `unicode` keeps the string wide, else it is multibyte; see
  /// EncodedText for the string and its length.
  DLText(const LM_RGB32& color, const LM_Font& font, PointTemplate<double> position,
         const char* text, std::int32_t length, double height, double rotation,
         BoundsTemplate<long> bounds, DisplayList* list, bool unicode);
  DLText(const LM_RGB32& color, const LM_Font& font, PointTemplate<double> position,
         const wchar_t* text, std::int32_t length, double height, double rotation,
         BoundsTemplate<long> bounds, DisplayList* list, bool unicode);
  /// The same as PalettizedDrawable<DLText>, which these objects are: the
  /// client owns the rendition, which outlives the text. Made by `new` only.
  /// Drawing and measuring write size, direction and font into the rendition:
  /// texts that share one are used by one thread at a time.
  explicit DLText(LM_Rendition* rendition);
  DLText(LM_Rendition* rendition, const LM_Font& font, PointTemplate<double> position,
         const char* text, std::int32_t length, double height, double rotation,
         BoundsTemplate<long> bounds, DisplayList* list, bool unicode);
  DLText(LM_Rendition* rendition, const LM_Font& font, PointTemplate<double> position,
         const wchar_t* text, std::int32_t length, double height, double rotation,
         BoundsTemplate<long> bounds, DisplayList* list, bool unicode);
  /// A plain copy, unlinked and without drawable info, that shares the font.
  DLText(const DLText& other);
  explicit DLText(class_change::Unfilled unfilled) : Drawable(unfilled) {}
  ~DLText() override;

  /// The same as draw_clipped.
  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  /// These two draw the bounds as an area in the text's colour, the first one
  /// unclipped where all of it lies inside the device clip rectangle.
  void draw_unclipped_selection(DisplayList& list) override;
  void draw_clipped_selection(DisplayList& list) override;
  void add_bounds(BoundsTemplate<long>& bounds) const override;
  /// Matches a text that has the very same string object and equal bounds,
  /// which is itself: a copy has a string of its own.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  /// 1, so that texts are taken for drawables with vectors; which are told by
  /// the iterator alone, not by get_vector.
  int get_vector_count() const override;
  /// A DrawableVectorIteratorText: with the flag over the bounds and their
  /// diagonals, else over the text as it is drawn in its display list.
  DrawableVectorIterator* create_vector_iterator(bool flag) override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  /// For a new text: font and string that it had are replaced, the font without
  /// being released.
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  /// Replaces the string; the bounds stay.
  virtual void set_text_string(const char* text, std::int32_t length, bool unicode);
  virtual void set_text_string(const wchar_t* text, std::int32_t length, bool unicode);
  /// Gives the rendition that the text is drawn with its size and direction on
  /// the device and a width scale of 1. False, with nothing changed, when the
  /// size is above 1e15 device units; above 32767 it is 32767. The size is
  /// negative in a view that turns the picture upside down, without these limits.
  virtual bool set_text_attributes(DisplayList& list);
  /// The device height below which text is not worth its glyphs: 75 in the
  /// alternate scale, else 5.
  virtual std::int32_t greeking_height(bool alternate_scale);
  virtual bool is_text_greeked(std::int32_t device_height, bool alternate_scale);
  /// The height in device units, toward zero; negative in a view that turns the
  /// picture upside down.
  virtual std::int32_t height(DisplayList& list);
  /// Fills in, for each character of the string, of which there is one at
  /// least, the part of the text's width up to its end, 0 to 1.
  virtual void accumulated_normalized_widths(float* widths);
  /// The font, which belongs to the text; null when it has none.
  virtual LM_Font* get_font();
  virtual PointTemplate<double> get_position();
  virtual double rotation();
  virtual void set_rotation(double rotation);
  /// The four corners of the text as set_text_attributes has prepared it, in
  /// logical units: below the start and the end, above the end and the start.
  virtual void get_text_bbox(PointTemplate<double>* corners);
  /// The corners of character `index` in the box of its text, in the same
  /// order, and `origin` moved on by its width.
  virtual void get_character_bbox(std::int32_t index, const float* widths,
                                  const PointTemplate<double>& origin,
                                  const PointTemplate<double>* text_corners,
                                  PointTemplate<double>* corners, PointTemplate<double>& pen);
  /// The outline of character `index` in device units, the matrix that puts it
  /// at `origin` on the device, and `origin` moved on by its advance. Null when
  /// the character leaves no ink. The widths are not looked at.
  virtual LM_Contour_Set get_character_contour(std::int32_t index, const float* widths,
                                               const PointTemplate<double>& origin,
                                               const PointTemplate<double>* text_corners,
                                               PointTemplate<double>& pen, LM_Matrix& matrix);

  static void* my_type();

  [[nodiscard]] EncodedText* text() const { return m_pText; }
  [[nodiscard]] const BoundsTemplate<long>& bounds() const { return m_bounds; }

  static void* _parent_type;

 private:
  friend class DrawableVectorIteratorText;

  /// Without font or string.
  DLText(const LM_RGB32& color, PointTemplate<double> position, double height, double rotation,
         const BoundsTemplate<long>& bounds, DisplayList* list);
  template <class Character>
  void fill(const LM_Font& font, const Character* text, std::int32_t length, bool unicode);
  void replace_text(EncodedText* text);
  /// A font handle in a cell of its own; null when memory is exhausted.
  static LM_Font* new_font_cell(const LM_Font& font);
  void release_font();
  [[nodiscard]] bool has_characters() const;
  [[nodiscard]] bool can_be_measured() const;
  /// The upright outline of a character and its advance, in device units.
  void outline_of(LM_Renderer& renderer, std::int32_t index, LM_Contour_Set& outline,
                  float& advance);
  /// Makes the rendition refer to the text's font.
  void give_font(LM_Rendition& rendition) const;

  DisplayList* m_pDisplayList = nullptr;
  LM_Font* m_pFont = nullptr;  ///< a cell of its own; null when memory was exhausted
  EncodedText* m_pText = nullptr;
  PointTemplate<double> m_position{0.0, 0.0};
  double m_height = 0.0;
  double m_rotation = 0.0;
  BoundsTemplate<long> m_bounds;
};
static_assert(sizeof(void*) != 8 || sizeof(DLText) == 104);

}  // namespace DL
