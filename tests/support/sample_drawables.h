#pragma once

#include <cstdint>
#include <iterator>
#include <memory>
#include <type_traits>

#include "lumen/picture_image.h"
#include "tests/support/recorded_list.h"

/// One drawable of any class of the library, so that a test can run over all.
namespace samples {

inline constexpr LogicalPoint kPoints[] = {{10, 20}, {30, 25}, {-5, 40}, {12, 7}};
inline constexpr std::int32_t kPointCount = std::size(kPoints);
inline constexpr LM_RGB32 kVertexColors[] = {{0x11}, {0x22}, {0x33}, {0x44}};
inline constexpr LM_RGB32 kColor{0x00123456};
inline constexpr LM_RGB32 kOwnColor{0x00654321};

inline const LM_Vertex_Triple kTriples[] = {
    LM_Vertex_Triple::at(0.0F, 0.0F, 0), LM_Vertex_Triple::at(1.0F, 0.0F, 0),
    LM_Vertex_Triple::at(0.0F, 1.0F, 0), LM_Vertex_Triple::at(1.0F, 1.0F, 0)};
inline constexpr std::uint32_t kValues[] = {1, 2, 3, 4};
inline constexpr LM_RGB32 kFill{0x00ABCDEF};

/// A display list with a dot and a polyline, to be nested.
inline DL::DisplayList* new_child() {
  auto* child = new DL::DisplayList;
  child->add(new DL::DLDot(kOwnColor, kPoints[0]));
  child->add(new DL::DLPolyline(kOwnColor, kPointCount, kPoints));
  return child;
}

/// Calls `make` with arguments that suit the constructor of `Base`, what comes
/// after the colour.
template <class Base, class Make>
auto with_arguments(const Make& make) {
  using DL::DisplayList;
  using Point = LogicalPoint;
  DisplayList* const no_list = nullptr;
  if constexpr (std::is_same_v<Base, DL::DLText>) {
    const LM_Font font(LM_Font_Description{.name = L"DejaVu Sans", .given = 1});
    return make(font, DL::PointTemplate<double>{10, 20}, L"Sample", 6, 12.0, 0.25,
                LogicalBounds{10, 20, 60, 40}, no_list, true);
  } else if constexpr (std::is_same_v<Base, DL::DrawableDisplayList>) {
    const LogicalBounds* const whole = nullptr;
    return make(new_child(), whole);
  } else if constexpr (std::is_same_v<Base, DL::DLTexturedPolytriangle>) {
    return make(kPointCount, kPoints,
                DL::DLTexturedPolytriangle::Vertices{kVertexColors, kTriples, kValues, kTriples});
  } else if constexpr (std::is_same_v<Base, DL::DLImage>) {
    const LM_Handle<LM_Image> image = LM_Create<lumen::PictureImage>(lumen::Picture(3, 2));
    return make(LogicalBounds{10, 20, 30, 40}, image);
  } else if constexpr (std::is_same_v<Base, DL::DLRowOfDots>) {
    return make(kPoints[0], Point{5, 1}, 3);
  } else if constexpr (std::is_same_v<Base, DL::DLEllipse>) {
    return make(kPoints[0], 30, 20, 0.5F, no_list);
  } else if constexpr (std::is_same_v<Base, DL::DLColorizedEllipse>) {
    return make(kPoints[0], 30, 20, 0.5F, 1.0F, 2.0F, kFill, true, no_list);
  } else if constexpr (std::is_base_of_v<DL::DLEllipticalArc, Base>) {
    return make(kPoints[0], 30, 20, 0.5F, 1.0F, 2.0F, no_list);
  } else if constexpr (std::is_constructible_v<Base, LM_RGB32, std::int32_t, const Point*,
                                               const LM_RGB32*>) {
    return make(kPointCount, kPoints, kVertexColors);
  } else if constexpr (std::is_base_of_v<DL::Polything, Base>) {
    return make(kPointCount, kPoints);
  } else if constexpr (std::is_same_v<Base, DL::DLColorizedDot>) {
    return make(kPoints[0], kOwnColor);
  } else {
    return make(kPoints[0]);
  }
}

/// Constructs a `Class`, a variant of `Base`, from its colour or rendition.
template <class Base, class Class, class Color>
std::unique_ptr<Class> make_variant(Color color) {
  return with_arguments<Base>([color](const auto&... arguments) {
    return std::unique_ptr<Class>(new Class(color, arguments...));
  });
}

/// What a nested list is constructed with: it has a rendition in its colour's
/// place, whose bits are those of kColor here.
inline LM_Rendition* color_as_rendition() {
  DL::Drawable::ColorData data;
  data.m_color = kColor;
  return data.m_pRendition;
}

template <class T>
std::unique_ptr<T> make_plain() {
  if constexpr (std::is_same_v<T, DL::DrawableDisplayList>) {
    return make_variant<T, T>(color_as_rendition());
  } else {
    return make_variant<T, T>(kColor);
  }
}

template <class T>
std::unique_ptr<DL::PalettizedDrawable<T>> make_palettized(LM_Rendition* rendition) {
  return make_variant<T, DL::PalettizedDrawable<T>>(rendition);
}

}  // namespace samples
