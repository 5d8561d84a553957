#include "lumen/picture.h"

#include <algorithm>
#include <new>

namespace lumen {

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
