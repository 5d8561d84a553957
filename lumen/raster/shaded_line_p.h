#pragma once

#include <cstdint>
#include <vector>

#include "displaylist/platform/rendition.h"
#include "lumen/geometry/shape_p.h"
#include "lumen/geometry/stroker_p.h"
#include "lumen/raster/color_layer_p.h"
#include "lumen/raster/shading_p.h"
#include "lumen/raster/smooth_line_p.h"

namespace lumen {

/// Draws the strokes of polylines in colours that change along each segment
/// and are the same across its width. A pixel has the colour of the nearest
/// place on the polyline, and is laid on the picture once. Kept per thread.
class ShadedLine {
 public:
  /// `count` points, at least 1, with a colour each. A polyline without length
  /// is a dot in its last colour.
  void draw_stroke(const ShadingTarget& target, std::int32_t count, const LM_DCI_Point* points,
                   const LM_RGB32* colors, const LM_Line_Style& style, Stroker& stroker);
  /// An antialiased solid line of weight 1 that the smooth line can draw.
  void draw_smooth(const ShadingTarget& target, std::int32_t count, const LM_DCI_Point* points,
                   const LM_RGB32* colors, SmoothLine& smooth_line);

 private:
  /// How far from the polyline colours are needed, and how far that one lies
  /// right of and below the points.
  struct Stripe {
    double reach;
    double offset;
  };

  /// Calls `cover(band, pen)` to lay the painted colours on the picture.
  template <class Cover>
  void draw(const ShadingTarget& target, std::int32_t count, const LM_DCI_Point* points,
            const LM_RGB32* colors, const Stripe& stripe, const Cover& cover);
  void paint(std::int32_t count, const LM_DCI_Point* points, const LM_RGB32* colors,
             const Stripe& stripe, const ColorRows& rows);

  Shape m_shape;
  ColorLayer m_layer;
  std::vector<float> m_distances;  ///< squared, of painted pixels from the polyline
};

}  // namespace lumen
