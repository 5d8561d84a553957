#include "importers/dxf/colors.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace importers::dxf {

namespace {

/// How much of red (0), green (1) or blue (2) a hue in degrees has, 0 to 1.
double part_of_hue(double hue, int primary) {
  double away = std::fabs(hue - 120.0 * primary);
  if (away > 180.0) away = 360.0 - away;
  return std::clamp(2.0 - away / 60.0, 0.0, 1.0);
}

std::uint32_t shade_of_hue(int index) {
  constexpr std::array<int, 5> levels{255, 165, 127, 76, 38};
  const int level = levels[static_cast<std::size_t>(index % 10 / 2)];
  // Pale forms are half way to the grey of the same level.
  const int least = index % 2 == 1 ? level / 2 : 0;
  const double hue = 15.0 * (index / 10 - 1);
  std::uint32_t word = 0;
  for (int primary = 0; primary < 3; ++primary) {
    const double value = least + (level - least) * part_of_hue(hue, primary);
    word = word << 8 | static_cast<std::uint32_t>(value);
  }
  return word;
}

}  // namespace

LM_RGB32 index_color(int index) {
  constexpr std::array<std::uint32_t, 9> first{0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF, 0x0000FF,
                                               0xFF00FF, 0x000000, 0x808080, 0xC0C0C0};
  constexpr std::array<std::uint32_t, 6> greys{0x333333, 0x5B5B5B, 0x848484,
                                               0xADADAD, 0xD6D6D6, 0xFFFFFF};
  if (index >= 1 && index <= 9) return {first[static_cast<std::size_t>(index - 1)]};
  if (index >= 250 && index <= 255) return {greys[static_cast<std::size_t>(index - 250)]};
  if (index >= 10 && index <= 249) return {shade_of_hue(index)};
  return {0};
}

LM_RGB32 entity_color(int index, int true_color) {
  constexpr int rgb_bits = 0xFFFFFF;
  if (true_color >= 0) return {static_cast<std::uint32_t>(true_color & rgb_bits)};
  constexpr int highest_index = 255;
  const bool is_off = index < 0 && index >= -highest_index;
  return index_color(is_off ? -index : index);
}

}  // namespace importers::dxf
