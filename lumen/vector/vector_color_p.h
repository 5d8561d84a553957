#pragma once

#include <cairo.h>

#include <algorithm>
#include <cstdint>

#include "displaylist/platform/points.h"
#include "lumen/pixel_blend_p.h"
#include "lumen/vector/vector_contour_p.h"

namespace lumen {

/// A colour as Cairo takes it, each part from 0 to 1.
struct PageColor {
  double red;
  double green;
  double blue;
  double opacity;

  friend bool operator==(const PageColor&, const PageColor&) = default;
};

inline PageColor page_color(LM_RGB32 color) {
  const auto part = [&](int shift) { return ((color.word >> shift) & 0xFF) / 255.0; };
  return {part(16), part(8), part(0), opacity_of(color) / 255.0};
}

inline PageColor between(const PageColor& a, const PageColor& b, double part) {
  const auto mixed = [part](double from, double to) { return from + (to - from) * part; };
  return {mixed(a.red, b.red), mixed(a.green, b.green), mixed(a.blue, b.blue),
          mixed(a.opacity, b.opacity)};
}

constexpr LM_RGB32 opaque(LM_RGB32 color) {
  return {color.word & 0x00FFFFFF};
}

/// Whether all colours, of which there is one, are equally transparent.
inline bool has_common_opacity(std::int32_t count, const LM_RGB32* colors) {
  return std::all_of(colors, colors + count,
                     [&](LM_RGB32 color) { return opacity_of(color) == opacity_of(colors[0]); });
}

inline void set_source(cairo_t* cairo, const PageColor& color) {
  cairo_set_source_rgba(cairo, color.red, color.green, color.blue, color.opacity);
}

/// Draws with colours from one place to the other, the same across.
inline void set_gradient(cairo_t* cairo, const PagePoint& from, const PageColor& first,
                         const PagePoint& to, const PageColor& last) {
  if (first == last) return set_source(cairo, first);
  cairo_pattern_t* gradient = cairo_pattern_create_linear(from.x, from.y, to.x, to.y);
  cairo_pattern_add_color_stop_rgba(gradient, 0, first.red, first.green, first.blue, first.opacity);
  cairo_pattern_add_color_stop_rgba(gradient, 1, last.red, last.green, last.blue, last.opacity);
  cairo_set_source(cairo, gradient);
  cairo_pattern_destroy(gradient);
}

}  // namespace lumen
