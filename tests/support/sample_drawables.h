#pragma once

#include <cstdint>
#include <iterator>
#include <memory>
#include <type_traits>

#include "tests/support/recorded_list.h"

/// One drawable of any class of the library, so that a test can run over all.
namespace samples {

inline constexpr LogicalPoint kPoints[] = {{10, 20}, {30, 25}, {-5, 40}, {12, 7}};
inline constexpr std::int32_t kPointCount = std::size(kPoints);
inline constexpr LM_RGB32 kVertexColors[] = {{0x11}, {0x22}, {0x33}, {0x44}};
inline constexpr LM_RGB32 kColor{0x00123456};
inline constexpr LM_RGB32 kOwnColor{0x00654321};

/// Constructs a `Class`, a variant of `Base`, from its colour or rendition and
/// arguments that suit the constructor of `Base`.
template <class Base, class Class, class Color>
std::unique_ptr<Class> make_variant(Color color) {
  if constexpr (std::is_constructible_v<Base, LM_RGB32, std::int32_t, const LogicalPoint*,
                                        const LM_RGB32*>) {
    return std::unique_ptr<Class>(new Class(color, kPointCount, kPoints, kVertexColors));
  } else if constexpr (std::is_constructible_v<Base, LM_RGB32, std::int32_t, const LogicalPoint*>) {
    return std::unique_ptr<Class>(new Class(color, kPointCount, kPoints));
  } else if constexpr (std::is_constructible_v<Base, LM_RGB32, LogicalPoint, LM_RGB32>) {
    return std::unique_ptr<Class>(new Class(color, kPoints[0], kOwnColor));
  } else {
    return std::unique_ptr<Class>(new Class(color, kPoints[0]));
  }
}

template <class T>
std::unique_ptr<T> make_plain() {
  return make_variant<T, T>(kColor);
}

template <class T>
std::unique_ptr<DL::PalettizedDrawable<T>> make_palettized(LM_Rendition* rendition) {
  return make_variant<T, DL::PalettizedDrawable<T>>(rendition);
}

}  // namespace samples
