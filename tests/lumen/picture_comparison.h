#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "lumen/picture.h"

/// How much alike two pictures are that were drawn in different ways.
namespace picture_comparison {

inline int channel_of(const lumen::Picture& picture, std::int32_t x, std::int32_t y, int shift) {
  return static_cast<int>((picture.pixel(x, y).word >> shift) & 0xFF);
}

/// How far a channel of a pixel is from what there is in the other picture
/// there and a pixel around: edges may lie half a pixel elsewhere.
inline int strangeness(const lumen::Picture& picture, const lumen::Picture& other, std::int32_t x,
                       std::int32_t y, int shift) {
  int low = 255;
  int high = 0;
  for (std::int32_t row = std::max(y - 1, 0); row <= std::min(y + 1, other.height() - 1); ++row) {
    for (std::int32_t column = std::max(x - 1, 0); column <= std::min(x + 1, other.width() - 1);
         ++column) {
      const int channel = channel_of(other, column, row, shift);
      low = std::min(low, channel);
      high = std::max(high, channel);
    }
  }
  const int channel = channel_of(picture, x, y, shift);
  return std::max({low - channel, channel - high, 0});
}

struct Comparison {
  int strangest = 0;
  double difference = 0;  ///< of all channels on average
  double ink = 0;         ///< of the first picture, compared with white, alike
};

/// Of two pictures of one size.
inline Comparison compare(const lumen::Picture& one, const lumen::Picture& other) {
  Comparison result;
  for (std::int32_t y = 0; y < one.height(); ++y) {
    for (std::int32_t x = 0; x < one.width(); ++x) {
      for (const int shift : {0, 8, 16}) {
        const int a = channel_of(one, x, y, shift);
        const int b = channel_of(other, x, y, shift);
        result.difference += std::abs(a - b);
        result.ink += 255 - a;
        result.strangest = std::max({result.strangest, strangeness(one, other, x, y, shift),
                                     strangeness(other, one, x, y, shift)});
      }
    }
  }
  const double channels = 3.0 * one.width() * one.height();
  result.difference /= channels;
  result.ink /= channels;
  return result;
}

}  // namespace picture_comparison
