#pragma once

#include <bit>
#include <cstddef>

namespace lumen {

/// Sizes of blocks that share a slab: steps of 8 bytes up to 256, then four
/// steps to each doubling up to 8192.
inline constexpr std::size_t largest_dense_size = 256;
inline constexpr std::size_t largest_class_size = 8192;
inline constexpr std::size_t dense_class_count = largest_dense_size / 8;
inline constexpr std::size_t size_class_count = dense_class_count + std::size_t{4} * 5;

/// The class of a size up to `largest_class_size`.
constexpr std::size_t size_class(std::size_t size) {
  if (size <= largest_dense_size) return size == 0 ? 0 : (size - 1) / 8;
  const auto doubling = static_cast<std::size_t>(std::bit_width(size - 1)) - 1;
  const std::size_t step = (size - 1 - (std::size_t{1} << doubling)) >> (doubling - 2);
  return dense_class_count + 4 * (doubling - 8) + step;
}

/// The block size of a class.
constexpr std::size_t class_block_size(std::size_t index) {
  if (index < dense_class_count) return (index + 1) * 8;
  const std::size_t geometric = index - dense_class_count;
  const std::size_t doubling = std::size_t{256} << (geometric / 4);
  return doubling + doubling / 4 * (geometric % 4 + 1);
}

static_assert(class_block_size(size_class(72)) == 72);
static_assert(class_block_size(size_class(257)) == 320);
static_assert(class_block_size(size_class(512)) == 512);
static_assert(class_block_size(size_class(largest_class_size)) == largest_class_size);
static_assert(size_class(largest_class_size) == size_class_count - 1);

}  // namespace lumen
