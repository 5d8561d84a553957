#pragma once

#include <cstdint>

#include "displaylist/platform/image.h"

namespace lumen {

/// Reads colours from a texture page, which outlives it.
class Texture {
 public:
  /// A missing page covers nothing.
  Texture() = default;
  /// `wrap` is an LM_Texture_Wrap; any other number clamps. Smooth mixes the
  /// four nearest texels, else there is the one that a place lies on.
  Texture(const LM_Image* page, std::int32_t wrap, bool smooth);

  [[nodiscard]] bool is_missing() const { return m_page == nullptr; }

  /// The colour at a place, both finite: 0 to 1 on the page, any number beyond.
  /// An invisible one when the page is missing.
  [[nodiscard]] std::uint32_t color(double u, double v) const;

 private:
  /// How far along a side of the page, in 1/256 texel.
  [[nodiscard]] std::int64_t units(double coordinate, std::int32_t size) const;
  /// A mixture of the texel whose centre lies up to a texel left of and above
  /// the place, and of the next ones.
  [[nodiscard]] std::uint32_t smooth_color(std::int64_t x, std::int64_t y) const;
  /// The texel that there is on the page instead of one up to a texel beyond.
  [[nodiscard]] std::int32_t wrapped(std::int64_t texel, std::int32_t size) const;

  const LM_Image* m_page = nullptr;
  bool m_repeats = false;
  bool m_smooth = false;
};

/// The word with red, green, blue and opacity multiplied by those of another,
/// of 255.
std::uint32_t modulated(std::uint32_t color, std::uint32_t modulation);

}  // namespace lumen
