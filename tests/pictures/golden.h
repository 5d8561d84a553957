#pragma once

#include <string>

#include "lumen/picture.h"

/// Compares the picture with tests/pictures/golden/NAME.png and fails the test
/// when they differ by more than the tolerance: in a channel of any pixel by
/// more than `channel` of 255, but for `pixels` pixels. A failure leaves NAME's
/// actual, expected and difference pictures behind in the build folder.
/// With DISPLAYLIST_REBASELINE=1 in the environment the stored picture is
/// replaced instead.
struct Tolerance {
  int channel = 24;
  int pixels = 0;
};
void expect_golden(const lumen::Picture& actual, const std::string& name, Tolerance tolerance);
