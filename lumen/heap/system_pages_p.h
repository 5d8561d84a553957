#pragma once

#include <cstddef>

namespace lumen {

/// The size and the alignment of a slab, and the alignment of a large region.
inline constexpr std::size_t slab_size = std::size_t{64} * 1024;

/// `size` bytes (a multiple of `slab_size`) of zeroed memory from the system,
/// aligned to `slab_size`; null when there is none. `at_once`: all pages will be
/// written soon, so that they had better come in one go.
void* take_pages(std::size_t size, bool at_once) noexcept;

/// Gives back what `take_pages` returned.
void return_pages(void* pages, std::size_t size) noexcept;

}  // namespace lumen
