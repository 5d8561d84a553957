#pragma once

#include "displaylist/platform/points.h"

namespace DL {

class DisplayList;
class Drawable;

/// The device corners of a drawable's bounds, from the minimum of both axes on
/// with x first; false when the bounds are empty.
bool selection_corners(const Drawable& drawable, const DisplayList& list, LM_DCI_Point corners[4]);

}  // namespace DL
