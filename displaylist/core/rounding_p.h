#pragma once

#include <cmath>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// The three roundings from double to integer and the saturations, in one
/// place. Every conversion gives the same bits on every compiler: the library
/// is built without contraction and runs in the default rounding mode.
namespace DL::rounding {

/// What a conversion to 32 bits gives for a value that it cannot hold, NaN
/// included; also what the processor's own conversion gives.
inline constexpr std::int32_t kIndefinite = INT32_MIN;

/// What the asymmetric rounding takes from negative values: just under a half,
/// so that a negative half-way value goes toward zero. Bits 0x3FDFFFFFFFFD4050.
inline constexpr double kAlmostHalf = 0.49999999999;

/// Toward zero; kIndefinite for what does not fit. The processor's own
/// conversion would do, but compilers fold that of a constant differently.
[[nodiscard]] inline std::int32_t truncate(double value) {
  const bool fits = value > -2147483649.0 && value < 2147483648.0;
  return fits ? static_cast<std::int32_t>(value) : kIndefinite;
}

namespace portable {

/// Nearest, ties to even; kIndefinite for what does not fit.
[[nodiscard]] inline std::int32_t nearest(double value) {
  return truncate(std::nearbyint(value));
}

}  // namespace portable

#if defined(__SSE2__)
[[nodiscard]] inline std::int32_t nearest(double value) {
  return _mm_cvtsd_si32(_mm_set_sd(value));
}
#else
using portable::nearest;
#endif

/// Nearest, ties to even, saturated at the 32-bit limits on the side that the
/// value is on; NaN is kIndefinite.
[[nodiscard]] inline std::int32_t nearest_saturated(double value) {
  if (value >= 2147483647.0) return INT32_MAX;
  return value > -2147483648.0 ? nearest(value) : INT32_MIN;
}

/// The value, or the 32-bit limit that it lies beyond; NaN stays.
[[nodiscard]] inline double clamp_to_32_bits(double value) {
  if (value > 2147483647.0) return 2147483647.0;
  if (value < -2147483648.0) return -2147483648.0;
  return value;
}

/// Clamped to the 32-bit range, then toward zero; NaN is kIndefinite.
[[nodiscard]] inline std::int32_t truncate_saturated(double value) {
  return truncate(clamp_to_32_bits(value));
}

/// Clamped to the 32-bit range, then half away from zero for values from 0.0
/// up and half toward zero below; NaN is kIndefinite.
[[nodiscard]] inline std::int32_t asymmetric(double value) {
  const double clamped = clamp_to_32_bits(value);
  return truncate(clamped >= 0.0 ? clamped + 0.5 : clamped - kAlmostHalf);
}

}  // namespace DL::rounding
