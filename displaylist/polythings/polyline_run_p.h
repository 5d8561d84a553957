#pragma once

#include "displaylist/drawables/run_p.h"

namespace DL {

/// The run of plain polylines, with what vectors this processor has.
DrawableRun polyline_run();

}  // namespace DL
