#pragma once

#include <cstdint>

/// The words that a stored display list is framed with. They are never
/// renumbered: streams outlive programs.
namespace DL::tag {

inline constexpr std::uint32_t kGroup = 0x80000001;
inline constexpr std::uint32_t kBottomGroup = 0x80000002;
inline constexpr std::uint32_t kOpenBottomGroup = 0x80000004;

/// No (further) sibling, no (further) drawable, or an empty list.
inline constexpr std::uint32_t kEnd = 0x10000002;

/// A palette index follows.
inline constexpr std::uint32_t kPaletteIndex = 0x20000001;
/// A 32-bit colour word follows.
inline constexpr std::uint32_t kColor = 0x20000002;

/// A class tag has one of these bits: 31 for the library's, 30 for a client's.
inline constexpr std::uint32_t kClassBits = 0xC0000000;

}  // namespace DL::tag
