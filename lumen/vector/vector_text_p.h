#pragma once

#include <cairo.h>

#include <cstdint>
#include <vector>

#include "displaylist/platform/rendition.h"
#include "lumen/text/text_characters_p.h"
#include "lumen/text/text_run_p.h"
#include "lumen/vector/page_fonts_p.h"
#include "lumen/vector/text_segments_p.h"
#include "lumen/vector/vector_page_p.h"

namespace lumen {

/// Draws text on the page of a vector device, as text.
class VectorText {
 public:
  explicit VectorText(VectorPage& page) : m_page(page) {}

  /// In the colour and the font of the rendition whose page was entered. The
  /// characters end at a zero or the count; null is none.
  template <class Character>
  void draw(const LM_Rendition& rendition, const LM_DCI_Point& start, const Character* characters,
            std::int32_t count) {
    const LM_Text_Attributes& attributes = rendition.text_attributes();
    m_characters.assign(characters, count);
    if (m_characters.size() == 0) return;
    TextPlacement placement(attributes, start);
    placement.sit_on_pixels();
    draw(set_text(attributes.font, characters, count), placement, rendition.color());
  }

 private:
  void draw(const TextRun& run, const TextPlacement& placement, LM_RGB32 color);
  void show_glyphs(const TextRun& run, const TextSegment& segment, const TextPlacement& placement);
  void take_glyphs(const TextRun& run, const TextSegment& segment, const TextPlacement& placement);
  void show_element(const TextRun& run, const TextSegment& segment, const TextPlacement& placement,
                    const PageBox& ink, LM_RGB32 color);
  void fill_outlines(const TextRun& run, const TextSegment& segment,
                     const TextPlacement& placement);

  VectorPage& m_page;
  TextCharacters m_characters;
  TextSegments m_segments;
  PageFonts m_fonts;
  Contour m_contour;
  std::vector<cairo_glyph_t> m_glyphs;
  std::vector<cairo_text_cluster_t> m_clusters;
};

}  // namespace lumen
