#pragma once

#include "bench/report.h"
#include "bench/settings.h"

namespace bench {

/// What only the display list does, or what no peer of it does alike.
void run_own_measures(const Settings& settings, Report& report);

// Its parts.

/// Removing by search and by area, iterating over all and over windows.
void measure_editing(const Settings& settings, Report& report);
/// The stream, drawing files, and opening a map.
void measure_storing(const Settings& settings, Report& report);
/// How soon a redraw ends once its interrupt test says so.
void measure_interrupts(const Settings& settings, Report& report);
/// Redrawing with worker threads.
void measure_threads(const Settings& settings, Report& report);
/// Scenes of other drawables than polylines.
void measure_classes(const Settings& settings, Report& report);

}  // namespace bench
