#pragma once

#include <cstdint>

/// The drawable classes of the library, once: first those with a palettized
/// variant, then those without. Tables and parametrised tests are made from
/// these lists, so that a new class is one line here, one header and one
/// source. Every class has a hidden variant.
#define DL_PALETTIZED_CLASSES(X) \
  X(DLDot)                       \
  X(DLPolyline)

#define DL_PLAIN_ONLY_CLASSES(X) \
  X(DLColorizedDot)              \
  X(DLGouraudPolyline)           \
  X(DLPolygon)

/// The classes that streams hold, with their tags: never renumbered, never
/// derived from an order.
#define DL_STORED_CLASSES(X) \
  X(DLDot, 0x80000010)       \
  X(DLPolyline, 0x80000200)

namespace DL::tag {

#define DL_DECLARE_TAG(Class, value) inline constexpr std::uint32_t k##Class = value;
DL_STORED_CLASSES(DL_DECLARE_TAG)
#undef DL_DECLARE_TAG

}  // namespace DL::tag
