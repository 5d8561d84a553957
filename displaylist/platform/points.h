#pragma once

#include <cstdint>

/// A point in integer device units (pixels for a raster device). z is always 0.
struct LM_DCI_Point {
  std::int32_t x;
  std::int32_t y;
  std::int32_t z;

  friend bool operator==(const LM_DCI_Point&, const LM_DCI_Point&) = default;
};
static_assert(sizeof(LM_DCI_Point) == 12);

/// A point in fractional device units. z is always 0.
struct LM_Point {
  float x;
  float y;
  float z;

  friend bool operator==(const LM_Point&, const LM_Point&) = default;
};
static_assert(sizeof(LM_Point) == 12);

/// A direction in fractional units. z is not looked at.
struct LM_Vector {
  float x;
  float y;
  float z;

  friend bool operator==(const LM_Vector&, const LM_Vector&) = default;
};

/// A colour as one word, copied whole. The display list never looks inside;
/// the default renderer reads 0xTTRRGGBB, where TT is the transparency
/// (0 opaque, 0xFF invisible).
struct LM_RGB32 {
  std::uint32_t word;

  friend bool operator==(const LM_RGB32&, const LM_RGB32&) = default;
};
static_assert(sizeof(LM_RGB32) == 4);

/// A device rectangle, inclusive at all four ends.
struct LM_Clip_Rectangle {
  std::int32_t min_x = INT32_MIN;
  std::int32_t max_x = INT32_MAX;
  std::int32_t min_y = INT32_MIN;
  std::int32_t max_y = INT32_MAX;

  /// Whether the device point lies inside or on the border.
  [[nodiscard]] bool contains(const LM_DCI_Point& point) const {
    return min_x <= point.x && min_y <= point.y && point.x <= max_x && point.y <= max_y;
  }

  friend bool operator==(const LM_Clip_Rectangle&, const LM_Clip_Rectangle&) = default;
};
