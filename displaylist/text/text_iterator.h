#pragma once

#include <cstdint>

#include "displaylist/drawables/vector_iterator.h"
#include "displaylist/platform/contour_set.h"
#include "displaylist/platform/export.h"
#include "displaylist/platform/matrix.h"

namespace DL {

class DLText;

/// Steps forward through a text as segments in its logical coordinates. The
/// first one is there after construction; there is no way back.
class DISPLAYLIST_API DrawableVectorIteratorText final : public DrawableVectorIterator {
 public:
  /// Where a walk over the text itself starts.
  enum class Start : std::uint8_t {
    usual,            ///< with the outlines, or the box of a text too small to be read
    text_box,         ///< with the box of the text, then those of its characters
    character_boxes,  ///< with the box of each character, then the outlines
  };

  /// `box` walks over the bounds with their middle lines and diagonals instead.
  /// The text and the display list it was made for outlive the iterator.
  DrawableVectorIteratorText(DLText& text, bool box, Start start = Start::usual);
  ~DrawableVectorIteratorText() override;

  VectorTemplate<long>* next() override;

 private:
  /// What is walked over. Each part of the text is followed by the next one, but
  /// a text too small to be read ends with its box or boxes.
  enum class Part : std::uint8_t { bounds, text_box, character_boxes, outlines, none };

  /// Measures the text; the part to start with, or none.
  Part prepare(Start start);
  void begin(Part part);
  [[nodiscard]] Part following() const;
  /// Loads the next segment; false at the end of the walk.
  bool step();
  // The same within one part.
  bool step_bounds();
  bool step_text_box();
  bool step_character_boxes();
  bool step_outlines();
  /// Loads side 0 to 3 of a box.
  void load_side(const PointTemplate<double>* corners);
  void load_outline();
  /// A vertex of the outline in logical units.
  [[nodiscard]] PointTemplate<long> vertex(const LM_Contour& contour, std::int32_t index) const;

  DLText& m_text;
  Part m_part = Part::none;
  bool m_bGreeked = false;
  std::int32_t m_character = 0;
  std::int32_t m_step = 0;  ///< side or segment of the present figure
  float* m_pWidths = nullptr;
  PointTemplate<double> m_corners[4]{};
  PointTemplate<double> m_characterCorners[4]{};
  PointTemplate<double> m_pen{};
  LM_Contour_Set m_outline;
  std::int32_t m_contour = 0;
  LM_Matrix m_matrix;
};

}  // namespace DL
