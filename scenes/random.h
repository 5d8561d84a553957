#pragma once

#include <cstdint>

namespace scenes {

/// A small generator of random numbers with the same sequence on every
/// platform: the multiplication of Knuth's 64-bit linear congruential
/// generator, with the high bits mixed into what is given out.
class Random {
 public:
  explicit Random(std::uint64_t seed) : m_state(seed * 2 + 1) { next(); }

  std::uint32_t next() {
    m_state = m_state * 6364136223846793005U + 1442695040888963407U;
    const std::uint64_t mixed = m_state ^ (m_state >> 29);
    return static_cast<std::uint32_t>(mixed >> 32);
  }
  /// Uniform in [low, high], which are less than 2^32 apart.
  std::int32_t between(std::int64_t low, std::int64_t high) {
    const auto range = static_cast<std::uint64_t>(high - low + 1);
    return static_cast<std::int32_t>(low + static_cast<std::int64_t>((next() * range) >> 32));
  }

 private:
  std::uint64_t m_state;
};

}  // namespace scenes
