#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "displaylist/platform/rendition.h"

namespace lumen {

/// Lengths drawn and left out in turns, for a line of weight 1; they grow with
/// the weight.
inline constexpr std::array<std::uint8_t, 2> dash_lengths{8, 4};
inline constexpr std::array<std::uint8_t, 2> dot_lengths{2, 4};
inline constexpr std::array<std::uint8_t, 4> dash_dot_lengths{8, 4, 2, 4};
inline constexpr std::array<std::uint8_t, 6> dash_dot_dot_lengths{8, 4, 2, 4, 2, 4};

/// The lengths of an LM_Line_Pattern, in pairs; none for a solid line.
inline std::span<const std::uint8_t> pattern_lengths(std::int32_t pattern) {
  switch (pattern) {
    case LM_PATTERN_DASH:
      return dash_lengths;
    case LM_PATTERN_DOT:
      return dot_lengths;
    case LM_PATTERN_DASH_DOT:
      return dash_dot_lengths;
    case LM_PATTERN_DASH_DOT_DOT:
      return dash_dot_dot_lengths;
    default:
      return {};
  }
}

/// A pattern as one bit a pixel, the first pixel lowest; none for a solid line.
struct PatternBits {
  std::uint32_t bits = 0;
  std::uint32_t length = 0;

  explicit PatternBits(std::int32_t pattern) {
    bool drawn = true;
    for (const std::uint32_t part : pattern_lengths(pattern)) {
      if (drawn) bits |= ((1U << part) - 1) << length;
      length += part;
      drawn = !drawn;
    }
  }
};

/// Where along a pattern a line of weight 1 is, pixel by pixel.
class PatternPhase {
 public:
  explicit PatternPhase(std::int32_t pattern) : m_pattern(pattern) {}

  /// Whether the next pixel is drawn; goes on to the one behind it.
  bool next_is_drawn() {
    if (m_pattern.length == 0) return true;
    const bool drawn = ((m_pattern.bits >> m_phase) & 1) != 0;
    if (++m_phase == m_pattern.length) m_phase = 0;
    return drawn;
  }

  /// Pixels of the pattern that pass unseen.
  void skip(std::int64_t pixels) {
    if (m_pattern.length == 0) return;
    m_phase = static_cast<std::uint32_t>((m_phase + pixels) % m_pattern.length);
  }

 private:
  PatternBits m_pattern;
  std::uint32_t m_phase = 0;
};

}  // namespace lumen
