#pragma once

#include "scenes/random.h"
#include "scenes/scene.h"

// What fills the table of scenes.

namespace scenes {

// Polylines.
Polylines coherent(std::size_t count, std::uint64_t seed);
Polylines scattered(std::size_t count, std::uint64_t seed);
Polylines rows(std::size_t count, std::uint64_t seed);
Polylines towns(std::size_t count, std::uint64_t seed);
Polylines many(std::size_t count, std::uint64_t seed);
Polylines rivers(std::size_t count, std::uint64_t seed);
Polylines deep(std::size_t count, std::uint64_t seed);

// Drawables of other classes.
void fill_mixed(DL::DisplayList& list, std::size_t count, std::uint64_t seed);
void fill_texts(DL::DisplayList& list, std::size_t count, std::uint64_t seed);
void fill_nested(DL::DisplayList& list, std::size_t count, std::uint64_t seed);

/// A point of the square of this half side around the middle.
inline Point start_in(Random& random, std::int64_t extent) {
  return {random.between(-extent, extent), random.between(-extent, extent)};
}

inline Point moved(const Point& from, Random& random, std::int64_t by) {
  return {from.x + random.between(-by, by), from.y + random.between(-by, by)};
}

/// A colour that neighbours in drawing order share.
LM_RGB32 color_of(std::size_t index);

}  // namespace scenes
