#pragma once

/// The one place that sees every drawable class of the library.
#include "displaylist/drawables/dot.h"
#include "displaylist/drawables/drawable_junk.h"
#include "displaylist/drawables/manifest.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/polythings/polygon.h"
#include "displaylist/polythings/polyline.h"
