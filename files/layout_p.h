#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

/// The words and sizes of the file, one place for the writer and the reader.
/// Never renumbered: files outlive programs.
namespace files::layout {

/// A byte with the top bit, the name, and line ends that a text transfer would
/// change.
inline constexpr unsigned char kMagic[8] = {0x8C, 'D', 'L', 'F', '\r', '\n', 0x1A, '\n'};

/// Whether bytes, one at least, start as files do, as far as they go.
[[nodiscard]] inline bool starts_a_file(std::span<const std::byte> bytes) {
  const std::size_t size = std::min(bytes.size(), sizeof kMagic);
  return size != 0 && std::memcmp(bytes.data(), kMagic, size) == 0;
}

inline constexpr std::uint32_t kVersion = 1;
inline constexpr std::uint32_t kFlags = 0;

inline constexpr std::size_t kHeaderSize = sizeof kMagic + 4 + 4;  ///< magic, version, flags
inline constexpr std::size_t kFooterSize = 8 + 8;                  ///< payload size, checksum

/// A payload has at most kFreePayload + kGrowth times the size of its file, so
/// that the memory a reader needs is bounded by what it was given.
inline constexpr std::uint64_t kFreePayload = std::uint64_t{16} << 20U;
inline constexpr std::uint64_t kGrowth = 16;

/// Windows of the compression, 8 MiB at most: what levels up to 19 take.
inline constexpr int kLargestWindow = 23;

/// The end of a list's stream.
inline constexpr std::uint32_t kListEnd = 0x30000001;
/// In the place of the number of a font, an image or a list: none.
inline constexpr std::uint32_t kNone = 0xFFFFFFFF;

/// How deep lists may be nested: the outermost is 1.
inline constexpr std::uint32_t kDeepestNesting = 64;

/// Class tags of these, by their upper half, are this library's own.
inline constexpr std::uint32_t kOwnTags = 0x40000000;
inline constexpr std::uint32_t kOwnTagBits = 0xFFFF0000;

}  // namespace files::layout
