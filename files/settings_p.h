#pragma once

#include <cstdint>

/// The switches of a list that are kept, as bits.
namespace files::settings {

inline constexpr std::uint32_t kCheckOverflow = 1;
inline constexpr std::uint32_t kWideDots = 2;
inline constexpr std::uint32_t kGrayscale = 4;
inline constexpr std::uint32_t kAlternateScale = 8;

}  // namespace files::settings
