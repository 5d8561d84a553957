#include "importers/palette.h"

#include <array>

namespace importers::palette {

LM_RGB32 area(std::size_t index) {
  static constexpr std::array<LM_RGB32, area_colors> colors{{{0x00F3E3B3},
                                                             {0x00CFE0B8},
                                                             {0x00F2C9B0},
                                                             {0x00D9CCE3},
                                                             {0x00F7D794},
                                                             {0x00B9D8C2},
                                                             {0x00EFBFC0},
                                                             {0x00E4E2A8}}};
  return colors[index % colors.size()];
}

LM_RGB32 line(std::size_t layer) {
  static constexpr std::array<LM_RGB32, 6> colors{
      {{0x00334E68}, {0x00A63D40}, {0x00277DA1}, {0x00567D46}, {0x00835C9E}, {0x00B0702B}}};
  return colors[layer % colors.size()];
}

LM_RGB32 point(std::size_t layer) {
  static constexpr std::array<LM_RGB32, 4> colors{
      {{0x00B5281E}, {0x001D4E89}, {0x006A3D9A}, {0x00256D3F}}};
  return colors[layer % colors.size()];
}

}  // namespace importers::palette
