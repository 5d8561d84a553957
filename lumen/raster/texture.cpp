#include <algorithm>
#include <array>
#include <cmath>

#include "displaylist/platform/device_actions.h"
#include "lumen/pixel_blend_p.h"
#include "lumen/raster/texture_p.h"

namespace lumen {
namespace {

/// Places are told apart to this part of a texel: enough for smooth mixing,
/// and so coarse that rounding never moves one across the edge of a texel.
constexpr double units_of_texel = 256;

/// Four texels and how much of 65536 each one is.
struct Mixture {
  std::array<std::uint32_t, 4> texels;
  std::array<std::uint32_t, 4> parts;

  [[nodiscard]] bool is_opaque() const {
    return ((texels[0] | texels[1] | texels[2] | texels[3]) >> 24) == 0;
  }
};

std::uint32_t mix_opaque(const Mixture& mixture) {
  // Red and blue are summed up in the halves of one number.
  std::uint64_t red_blue = 0x0000'8000'0000'8000;
  std::uint32_t green = 0x8000;
  for (std::size_t i = 0; i < 4; ++i) {
    const std::uint32_t texel = mixture.texels[i];
    red_blue += mixture.parts[i] * ((std::uint64_t{texel & 0x00FF0000} << 16) | (texel & 0xFF));
    green += mixture.parts[i] * ((texel >> 8) & 0xFF);
  }
  return static_cast<std::uint32_t>(((red_blue >> 32) & 0x00FF0000) | ((green >> 8) & 0x0000FF00) |
                                    ((red_blue >> 16) & 0x000000FF));
}

/// Each texel counts as much as it covers: what colour an invisible one would
/// have is not seen.
std::uint32_t mix_transparent(const Mixture& mixture) {
  std::uint32_t opacity = 0;
  for (std::size_t i = 0; i < 4; ++i) opacity += mixture.parts[i] * opacity_of({mixture.texels[i]});
  const auto mixed_opacity = (opacity + (1U << 15)) >> 16;
  if (mixed_opacity == 0) return 0xFF000000;
  std::uint32_t word = (255 - mixed_opacity) << 24;
  for (std::uint32_t shift = 0; shift < 24; shift += 8) {
    std::uint64_t sum = opacity / 2;
    for (std::size_t i = 0; i < 4; ++i) {
      const std::uint32_t texel = mixture.texels[i];
      sum += std::uint64_t{mixture.parts[i]} * opacity_of({texel}) * ((texel >> shift) & 0xFF);
    }
    word |= static_cast<std::uint32_t>(sum / opacity) << shift;
  }
  return word;
}

}  // namespace

Texture::Texture(const LM_Image* page, std::int32_t wrap, bool smooth)
    : m_repeats(wrap == LM_TEXTURE_REPEAT), m_smooth(smooth) {
  if (page != nullptr && page->width() > 0 && page->height() > 0) m_page = page;
}

std::uint32_t Texture::color(double u, double v) const {
  if (is_missing()) return 0xFF000000;
  const std::int64_t x = units(u, m_page->width());
  const std::int64_t y = units(v, m_page->height());
  if (m_smooth) return smooth_color(x - 128, y - 128);
  return m_page->row(wrapped(y >> 8, m_page->height()))[wrapped(x >> 8, m_page->width())];
}

std::int64_t Texture::units(double coordinate, std::int32_t size) const {
  const double on_page =
      m_repeats ? coordinate - std::floor(coordinate) : std::clamp(coordinate, 0.0, 1.0);
  // NOLINTNEXTLINE(bugprone-incorrect-roundings): not negative, and quick
  return static_cast<std::int64_t>(on_page * size * units_of_texel + 0.5);
}

std::uint32_t Texture::smooth_color(std::int64_t x, std::int64_t y) const {
  const std::uint32_t* upper = m_page->row(wrapped(y >> 8, m_page->height()));
  const std::uint32_t* lower = m_page->row(wrapped((y >> 8) + 1, m_page->height()));
  const std::int32_t left = wrapped(x >> 8, m_page->width());
  const std::int32_t right = wrapped((x >> 8) + 1, m_page->width());
  const auto part_x = static_cast<std::uint32_t>(x & 0xFF);
  const auto part_y = static_cast<std::uint32_t>(y & 0xFF);
  const Mixture mixture{{upper[left], upper[right], lower[left], lower[right]},
                        {(256 - part_x) * (256 - part_y), part_x * (256 - part_y),
                         (256 - part_x) * part_y, part_x * part_y}};
  return mixture.is_opaque() ? mix_opaque(mixture) : mix_transparent(mixture);
}

std::int32_t Texture::wrapped(std::int64_t texel, std::int32_t size) const {
  if (texel < 0) return m_repeats ? size - 1 : 0;
  if (texel >= size) return m_repeats ? static_cast<std::int32_t>(texel - size) : size - 1;
  return static_cast<std::int32_t>(texel);
}

std::uint32_t modulated(std::uint32_t color, std::uint32_t modulation) {
  const std::uint32_t opacity = scale_255(opacity_of({color}), opacity_of({modulation}));
  std::uint32_t word = (255 - opacity) << 24;
  for (std::uint32_t shift = 0; shift < 24; shift += 8) {
    word |= scale_255((color >> shift) & 0xFF, (modulation >> shift) & 0xFF) << shift;
  }
  return word;
}

}  // namespace lumen
