#pragma once

#include <cstdint>
#include <string>

#include "apps/dlview/view.h"
#include "displaylist/core/display_list.h"

namespace dlview {

/// Through which of the library's draw forms a picture is drawn.
enum class DrawForm : std::uint8_t { unclipped, bounded, circled, complex };

/// The clip that belongs to the form, fitted into the picture: a circle, a
/// star, or null where the whole picture is drawn.
LM_Contour_Set clip_of(DrawForm form, const PictureSize& size);

/// Draws the list, whose view and clip are set, through its renderer.
void draw(DL::DisplayList& list, DrawForm form, const Region& region);

}  // namespace dlview
