#pragma once

#include <vector>

#include "displaylist/core/display_list.h"
#include "displaylist/drawables/drawable.h"

/// Checks the links of a list's tree and that every way through it finds the same
/// drawables, draws it in all forms, dumps it. Returns the drawables in order.
std::vector<const DL::Drawable*> use_list(DL::DisplayList& list);
