#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "displaylist/platform/points.h"

namespace lumen {

/// The four bytes of a colour word as numbers from 0 to 255, the lowest first:
/// blue, green, red, transparency.
using Channels = std::array<float, 4>;

inline Channels channels_of(std::uint32_t word) {
  Channels channels{};
  for (std::size_t i = 0; i < 4; ++i) {
    channels[i] = static_cast<float>((word >> (8 * i)) & 0xFF);
  }
  return channels;
}

/// The word of channels that are within 0 to 255, each rounded.
inline std::uint32_t word_of(const Channels& channels) {
  std::uint32_t word = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    // A signed number first: there is no quick way to an unsigned one.
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): no channel is negative
    const auto rounded = static_cast<std::int32_t>(channels[i] + 0.5F);
    word |= static_cast<std::uint32_t>(rounded) << (8 * i);
  }
  return word;
}

/// What each of three corners has of a place between them. None is negative,
/// together they are 1.
struct Weights {
  double a;
  double b;
  double c;
};

/// A colour for each corner of a triangle.
class CornerColors {
 public:
  /// The colours of three corners that follow each other.
  explicit CornerColors(const std::uint32_t* words) : CornerColors(words[0], words[1], words[2]) {}
  CornerColors(std::uint32_t a, std::uint32_t b, std::uint32_t c)
      : m_a(channels_of(a)), m_b(channels_of(b)), m_c(channels_of(c)) {}

  [[nodiscard]] std::uint32_t at(const Weights& weights) const {
    const auto a = static_cast<float>(weights.a);
    const auto b = static_cast<float>(weights.b);
    const auto c = static_cast<float>(weights.c);
    Channels mixed{};
    for (std::size_t i = 0; i < 4; ++i) mixed[i] = a * m_a[i] + b * m_b[i] + c * m_c[i];
    return word_of(mixed);
  }

 private:
  Channels m_a;
  Channels m_b;
  Channels m_c;
};

/// The colours from one end of a segment to the other.
class ColorRamp {
 public:
  ColorRamp(LM_RGB32 from, LM_RGB32 to) : m_from(channels_of(from.word)), m_change{} {
    const Channels end = channels_of(to.word);
    for (std::size_t i = 0; i < 4; ++i) m_change[i] = end[i] - m_from[i];
  }

  /// 0 is the start, 1 the end; nothing beyond.
  [[nodiscard]] std::uint32_t at(double part) const {
    const auto t = static_cast<float>(part);
    Channels mixed{};
    for (std::size_t i = 0; i < 4; ++i) mixed[i] = m_from[i] + t * m_change[i];
    return word_of(mixed);
  }

 private:
  Channels m_from;
  Channels m_change;
};

}  // namespace lumen
