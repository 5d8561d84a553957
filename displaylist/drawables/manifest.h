#pragma once

#include <cstdint>

/// The drawable classes of the library, once: first those with a palettized
/// variant, then those without. Tables and parametrised tests are made from
/// these lists, so that a new class is one line here, one header and one
/// source. Every class has a hidden variant.
#define DL_PALETTIZED_CLASSES(X) \
  X(DLDot)                       \
  X(DLPolydot)                   \
  X(DLPolyline)                  \
  X(DLPolysegment)               \
  X(DLPolytriangle)              \
  X(DLEllipse)                   \
  X(DLEllipticalArc)             \
  X(DLEllipticalPie)             \
  X(DLText)

#define DL_PLAIN_ONLY_CLASSES(X) \
  X(DLColorizedDot)              \
  X(DLImage)                     \
  X(DLGouraudPolyline)           \
  X(DLPolygon)                   \
  X(DLPolytriangleWithNoBorder)  \
  X(DLGouraudPolytriangle)       \
  X(DLTexturedPolytriangle)      \
  X(DLPolymarker)                \
  X(DLRowOfDots)                 \
  X(DLColorizedEllipse)          \
  X(DrawableDisplayList)

/// The classes that streams hold, with their tags: never renumbered, never
/// derived from an order. Readers construct these themselves.
#define DL_STORED_CLASSES(X)     \
  X(DLDot, 0x80000010)           \
  X(DLEllipse, 0x80000020)       \
  X(DLEllipticalArc, 0x80000040) \
  X(DLEllipticalPie, 0x80000080) \
  X(DLPolydot, 0x80000100)       \
  X(DLPolyline, 0x80000200)      \
  X(DLPolysegment, 0x80000400)   \
  X(DLPolytriangle, 0x80000800)

/// Stored as well, but constructed by the client's factory: standard_factory
/// does.
#define DL_FACTORY_CLASSES(X)               \
  X(DLPolytriangleWithNoBorder, 0x80001000) \
  X(DLText, 0x80002000)

namespace DL::tag {

#define DL_DECLARE_TAG(Class, value) inline constexpr std::uint32_t k##Class = value;
DL_STORED_CLASSES(DL_DECLARE_TAG)
DL_FACTORY_CLASSES(DL_DECLARE_TAG)
#undef DL_DECLARE_TAG

}  // namespace DL::tag
