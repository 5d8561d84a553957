#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "lumen/pixel_blend_p.h"

namespace lumen {

// The one way to the pixels of a picture that is drawn on. Threads may draw
// over each other there, so every access is an atomic one, without order among
// them: on the processors that matter a plain move.

inline std::uint32_t read_pixel(std::uint32_t& pixel) {
  return std::atomic_ref<std::uint32_t>(pixel).load(std::memory_order_relaxed);
}

inline void write_pixel(std::uint32_t& pixel, std::uint32_t word) {
  std::atomic_ref<std::uint32_t>(pixel).store(word, std::memory_order_relaxed);
}

/// Lays the colour bits of `color` on the pixel with the opacity, 0 to 255.
/// With 0 it does not even write: what another thread puts there meanwhile stays.
inline void lay_on_pixel(std::uint32_t& pixel, std::uint32_t color, std::uint32_t opacity) {
  if (opacity == 255) return write_pixel(pixel, color);
  if (opacity != 0) write_pixel(pixel, blend(read_pixel(pixel), color, opacity));
}

#if defined(__x86_64__) && !defined(LUMEN_PORTABLE_PIXELS)

using FourPixels [[gnu::vector_size(16), gnu::may_alias, gnu::aligned(4)]] = std::uint32_t;

/// A store of the processor's own, which moves each of the four words as a
/// whole: compilers have no atomic one of that width.
// NOLINTNEXTLINE(readability-non-const-parameter): the instruction writes there
inline void write_four(std::uint32_t* pixels, const FourPixels& words) {
  asm volatile("movups %1, %0" : "=m"(*reinterpret_cast<FourPixels*>(pixels)) : "x"(words));
}

#else

using FourPixels = std::array<std::uint32_t, 4>;

inline void write_four(std::uint32_t* pixels, const FourPixels& words) {
  for (std::size_t i = 0; i < words.size(); ++i) write_pixel(pixels[i], words[i]);
}

#endif

/// Gives `count` pixels the word. It may write some of them twice.
inline void fill_pixels(std::uint32_t* pixels, std::ptrdiff_t count, std::uint32_t word) {
  if (count < 4) {
    for (; count > 0; --count) write_pixel(*pixels++, word);
    return;
  }
  const FourPixels words{word, word, word, word};
  std::uint32_t* const last = pixels + (count - 4);
  for (; pixels < last; pixels += 4) write_four(pixels, words);
  write_four(last, words);
}

/// Lays one colour on `count` pixels.
inline void lay_on_pixels(std::uint32_t* pixels, std::ptrdiff_t count, std::uint32_t color,
                          std::uint32_t opacity) {
  if (opacity == 255) return fill_pixels(pixels, count, color);
  if (opacity == 0) return;
  for (std::uint32_t* const end = pixels + count; pixels < end; ++pixels) {
    write_pixel(*pixels, blend(read_pixel(*pixels), color, opacity));
  }
}

}  // namespace lumen
