#include "lumen/picture.h"

#include <sys/mman.h>

#include <algorithm>
#include <new>

namespace lumen {

namespace {

constexpr std::size_t kHugePage = std::size_t{2} * 1024 * 1024;

/// Bytes that are aligned for a huge page if they fill one.
std::align_val_t alignment_of(std::size_t size) {
  return std::align_val_t{size < kHugePage ? alignof(std::max_align_t) : kHugePage};
}

}  // namespace

std::uint32_t* PixelAllocator::allocate(std::size_t count) {
  const std::size_t size = count * sizeof(std::uint32_t);
  void* pixels = ::operator new(size, alignment_of(size));
  // Only a wish: small pages do as well.
  if (size >= kHugePage)
    static_cast<void>(madvise(pixels, size / kHugePage * kHugePage, MADV_HUGEPAGE));
  return static_cast<std::uint32_t*>(pixels);
}

void PixelAllocator::deallocate(std::uint32_t* pixels, std::size_t count) noexcept {
  const std::size_t size = count * sizeof(std::uint32_t);
  ::operator delete(pixels, size, alignment_of(size));
}

Picture::Picture(std::int32_t width, std::int32_t height, LM_RGB32 color) {
  if (width <= 0 || height <= 0 || width > max_side || height > max_side) return;
  const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  if (count > max_pixels) return;
  try {
    m_pixels.assign(count, color.word);
  } catch (const std::bad_alloc&) {
    return;
  }
  m_width = width;
  m_height = height;
}

void Picture::clear(LM_RGB32 color) {
  std::fill(m_pixels.begin(), m_pixels.end(), color.word);
}

LM_RGB32 Picture::pixel(std::int32_t x, std::int32_t y) const {
  if (x < 0 || y < 0 || x >= m_width || y >= m_height) return {0xFF000000};
  return {row(y)[x]};
}

}  // namespace lumen
