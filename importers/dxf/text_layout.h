#pragma once

#include <optional>
#include <string>
#include <vector>

#include "importers/dxf/model.h"
#include "importers/dxf/plan.h"

namespace importers::dxf {

/// The measures of a font and of a text in it, in ems.
struct TextMeasures {
  double advance;
  double ascent;   ///< above the baseline, positive
  double descent;  ///< below the baseline, positive
  double cap_height;
};
[[nodiscard]] TextMeasures measures(const LM_Font& font, const std::wstring& text);

[[nodiscard]] LM_Font font_of(const FontChoice& choice);

/// A run of text as it lies, in the coordinates of its entity.
struct TextRun {
  Vertex start{0, 0};       ///< on its baseline
  double rotation = 0.0;    ///< radians
  double cap_height = 1.0;  ///< what the file calls the height
  double width_factor = 1.0;
  LM_Font font;
  std::wstring text;
  std::optional<LM_RGB32> color;  ///< of its own
};

/// The runs that a text consists of; none for one without characters.
[[nodiscard]] std::vector<TextRun> laid_out(const Text& text, const Model& model);
[[nodiscard]] std::vector<TextRun> laid_out(const Paragraphs& text, const Model& model);

/// The run under a map, which may mirror it: then it is written from the other
/// end or on the other side of its baseline, in the same box. `to_root` maps
/// further, to where it is seen. Without bounds where its size is.
[[nodiscard]] Shape label_of(const TextRun& run, const Affine& affine, const Affine& to_root,
                             const Pen& pen);

}  // namespace importers::dxf
