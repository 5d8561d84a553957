#pragma once

#include <cstdint>

#include "displaylist/platform/points.h"

namespace lumen {

/// How much a colour covers: 255 opaque, 0 invisible.
constexpr std::uint32_t opacity_of(LM_RGB32 color) {
  return 255 - (color.word >> 24);
}

/// Whether the colour covers nothing.
constexpr bool is_invisible(LM_RGB32 color) {
  return opacity_of(color) == 0;
}

/// a * b / 255, rounded; both up to 255.
constexpr std::uint32_t scale_255(std::uint32_t a, std::uint32_t b) {
  const std::uint32_t product = a * b + 128;
  return (product + (product >> 8)) >> 8;
}

/// `over` laid on a pixel that is itself transparent.
constexpr std::uint32_t blend_transparent(std::uint32_t under, std::uint32_t over,
                                          std::uint32_t opacity) {
  const std::uint32_t under_part = scale_255(255 - (under >> 24), 255 - opacity);
  const std::uint32_t total = opacity + under_part;
  if (total == 0) return under;
  std::uint32_t result = (255 - total) << 24;
  for (std::uint32_t shift = 0; shift < 24; shift += 8) {
    const std::uint32_t a = (over >> shift) & 0xFF;
    const std::uint32_t b = (under >> shift) & 0xFF;
    result |= ((a * opacity + b * under_part + total / 2) / total) << shift;
  }
  return result;
}

/// The colour bits of `over` laid with the opacity (0 to 255) on the pixel
/// `under`; 0 leaves it, 255 replaces it.
constexpr std::uint32_t blend(std::uint32_t under, std::uint32_t over, std::uint32_t opacity) {
  if (under >> 24 != 0) return blend_transparent(under, over, opacity);
  const std::uint32_t part = opacity + (opacity >> 7);
  const std::uint32_t rest = 256 - part;
  const std::uint32_t red_blue =
      (over & 0x00FF00FF) * part + (under & 0x00FF00FF) * rest + 0x00800080;
  const std::uint32_t green =
      ((over >> 8) & 0xFF) * part + ((under >> 8) & 0xFF) * rest + 0x00000080;
  return ((red_blue >> 8) & 0x00FF00FF) | (green & 0x0000FF00);
}

static_assert(blend(0x00123456, 0x00FEDCBA, 0) == 0x00123456);
static_assert(blend(0x00123456, 0x00FEDCBA, 255) == 0x00FEDCBA);
static_assert(blend(0xFF000000, 0x00FEDCBA, 128) == 0x7FFEDCBA);

}  // namespace lumen
