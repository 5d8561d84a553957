#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "displaylist/platform/points.h"
#include "displaylist/platform/rendition.h"

namespace files {

/// Renditions that stand for the colours of plain drawables until these have
/// their colours back. There may be as many as drawables, so that each is only a
/// handle of one state that all share, with the colour beside it.
class WordRenditions {
 public:
  /// Makes one, which stays where it is. May throw std::bad_alloc.
  LM_Rendition* add(LM_RGB32 color);
  /// Whether the rendition, which is not looked at, is one of these.
  [[nodiscard]] bool hold(const LM_Rendition* rendition) const;

  /// The colour that a rendition stands for: that beside it for one of these,
  /// of whichever object, else its own.
  [[nodiscard]] static LM_RGB32 color_of(const LM_Rendition& rendition);

 private:
  struct Entry {
    LM_Rendition rendition;  ///< first, so that its address is the entry's
    LM_RGB32 color;
  };

  /// Each twice as large as the one before, and never larger than reserved.
  std::vector<std::vector<Entry>> m_blocks;
};

}  // namespace files
