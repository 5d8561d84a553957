#include "tests/pictures/golden.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>

#include "lumen/png_file.h"

namespace {

namespace fs = std::filesystem;

int channel_of(std::uint32_t word, int channel) {
  return static_cast<int>((word >> (8 * channel)) & 0xFF);
}

/// The largest difference in any of the four channels.
int difference(std::uint32_t a, std::uint32_t b) {
  int largest = 0;
  for (int channel = 0; channel < 4; ++channel) {
    largest = std::max(largest, std::abs(channel_of(a, channel) - channel_of(b, channel)));
  }
  return largest;
}

/// Counts the pixels that differ by more than the tolerance; draws them black.
int compare(const lumen::Picture& actual, const lumen::Picture& expected, int channel_tolerance,
            lumen::Picture& differences) {
  int different = 0;
  for (std::int32_t y = 0; y < actual.height(); ++y) {
    for (std::int32_t x = 0; x < actual.width(); ++x) {
      if (difference(actual.row(y)[x], expected.row(y)[x]) <= channel_tolerance) continue;
      differences.row(y)[x] = 0;
      ++different;
    }
  }
  return different;
}

void leave_behind(const lumen::Picture& picture, const std::string& name, const char* what) {
  const fs::path folder = fs::path(DISPLAYLIST_BINARY_DIR) / "golden-failures";
  fs::create_directories(folder);
  const fs::path file = folder / (name + "-" + what + ".png");
  EXPECT_EQ(lumen::write_png(picture, file.string()), "");
  ADD_FAILURE() << "see " << file;
}

}  // namespace

void expect_golden(const lumen::Picture& actual, const std::string& name, Tolerance tolerance) {
  const fs::path stored =
      fs::path(DISPLAYLIST_SOURCE_DIR) / "tests/pictures/golden" / (name + ".png");
  if (std::getenv("DISPLAYLIST_REBASELINE") != nullptr) {
    ASSERT_EQ(lumen::write_png(actual, stored.string()), "");
    return;
  }
  std::string error;
  const lumen::Picture expected = lumen::read_png(stored.string(), &error);
  ASSERT_EQ(error, "");
  ASSERT_EQ(actual.width(), expected.width());
  ASSERT_EQ(actual.height(), expected.height());

  lumen::Picture differences(actual.width(), actual.height());
  const int different = compare(actual, expected, tolerance.channel, differences);
  if (different <= tolerance.pixels) return;
  ADD_FAILURE() << name << ": " << different << " pixels differ";
  leave_behind(actual, name, "actual");
  leave_behind(expected, name, "expected");
  leave_behind(differences, name, "difference");
}
