#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "lumen/text/font_set_p.h"
#include "lumen/text/text_characters_p.h"
#include "lumen/text/text_levels_p.h"
#include "lumen/text/text_run_p.h"

struct hb_buffer_t;

namespace lumen {

/// Sets texts: which glyphs, in which order, where. Kept per thread.
class TextLayout {
 public:
  TextLayout();
  TextLayout(const TextLayout&) = delete;
  TextLayout& operator=(const TextLayout&) = delete;
  ~TextLayout();

  /// The text in the fonts.
  [[nodiscard]] TextRun set(const TextCharacters& text, const FontSet& fonts);

 private:
  /// Neighbours that are shaped together.
  struct Piece {
    std::size_t start;
    std::size_t end;
    const FontFace* face;
    std::uint32_t script;
    std::uint8_t level;
  };

  void find_scripts(const std::vector<std::uint32_t>& values);
  void cut(const std::vector<std::uint32_t>& values, const FontSet& fonts);
  /// Puts the pieces in order from left to right.
  void order();
  void shape(const TextCharacters& text, const Piece& piece, TextRun& run);
  void share_widths(const TextCharacters& text, TextRun& run) const;

  hb_buffer_t* m_buffer;
  TextLevels m_levels;
  std::vector<std::uint32_t> m_scripts;
  std::vector<Piece> m_pieces;
  /// Of the glyphs that a character is the first of; negative where it is none.
  std::vector<double> m_advances;
  double m_end = 0;
};

}  // namespace lumen
