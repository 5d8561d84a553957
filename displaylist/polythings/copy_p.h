#pragma once

#include "displaylist/drawables/drawable.h"

namespace DL {

/// The copy, null or not, with all 64 bits of the original's colour: a plain
/// drawable may hold a rendition there.
inline Drawable* with_color_of(const Drawable& original, Drawable* copy) {
  if (copy != nullptr) copy->m_colorData = original.m_colorData;
  return copy;
}

}  // namespace DL
