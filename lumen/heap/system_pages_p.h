#pragma once

#include <cstddef>

namespace lumen {

/// The size and the alignment of a slab, and the alignment of a large region.
inline constexpr std::size_t slab_size = std::size_t{64} * 1024;

/// `size` bytes (a multiple of `slab_size`) of zeroed memory from the system,
/// aligned to `slab_size`; null when there is none.
void* take_pages(std::size_t size) noexcept;

/// How many bytes a huge page of the system has.
inline constexpr std::size_t huge_page_size = std::size_t{2} * 1024 * 1024;

/// The same for `huge_page_size` bytes that will all be written soon, aligned to
/// their size, where the system puts a huge page if it can.
void* take_huge_page() noexcept;

/// Gives back what was taken, or any slabs of it.
void return_pages(void* pages, std::size_t size) noexcept;

}  // namespace lumen
