#pragma once

#include <cairo.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "displaylist/platform/points.h"
#include "lumen/text/font_face_p.h"
#include "lumen/vector/svg_fonts_p.h"
#include "lumen/vector/vector_color_p.h"

namespace lumen {

/// A piece of text in one face.
struct SvgText {
  const FontFace* face;
  std::string_view text;  ///< UTF-8 that XML can hold, in reading order
  bool is_backward;       ///< from right to left
  /// From ems of the face, x along the text and y down, to the page.
  cairo_matrix_t frame;
  double font_size;  ///< in units, more than 0
  double length;     ///< in ems of the face
  LM_RGB32 color;
};

/// The texts of an SVG. Cairo before 1.18 writes glyphs as shapes; texts that
/// can be read, searched and copied are put in place of marks instead, which are
/// drawn where the texts are to be.
class SvgTexts {
 public:
  /// The colour of the mark of this text: a filled path that starts at `corner`,
  /// which is whole units.
  [[nodiscard]] PageColor add(const SvgText& text, const PagePoint& corner);
  /// A glyph that the texts in this face may be shown with.
  void add_glyph(const FontFace& face, std::uint32_t glyph) { m_fonts.add_glyph(face, glyph); }

  /// The complete SVG with its texts in place of the marks, and their fonts.
  [[nodiscard]] std::string put_into(std::string svg) const;

 private:
  struct Element {
    PagePoint corner;
    cairo_matrix_t matrix;
    std::string rest;  ///< what follows the transform
  };

  void append_element(std::string& svg, std::string_view mark) const;

  std::vector<Element> m_elements;
  SvgFonts m_fonts;
};

}  // namespace lumen
