#pragma once

#include "displaylist/platform/rendition.h"

namespace lumen {

/// The complex clip of the rendition, derived first where it has changed; null
/// when there is none.
inline const LM_Contour_Set_Data* hard_clip(LM_Rendition& rendition) {
  if (!rendition.hard_complex_clip_validated()) {
    if (!rendition.complex_clip()) return nullptr;
    rendition.validate_hard_complex_clip();
  }
  return rendition.hard_complex_clip();
}

}  // namespace lumen
