#pragma once

#include <string_view>

#include "bench/report.h"
#include "bench/settings.h"

namespace bench {

/// Has everybody build and draw the scenes of polylines and the world.
void run_contests(const Settings& settings, Report& report);

/// Prints the bytes for each polyline that a contestant takes, once it has drawn
/// the scene in both ways. For a process that does nothing else.
int print_bytes(std::string_view scene, std::string_view contestant, const Settings& settings);

}  // namespace bench
