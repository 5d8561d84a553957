#pragma once

#include <cstdint>

#include "displaylist/platform/device_actions.h"
#include "displaylist/platform/texture_pages.h"
#include "lumen/geometry/shape_p.h"
#include "lumen/raster/color_layer_p.h"
#include "lumen/raster/shading_p.h"

namespace lumen {

/// What a textured strip has at its vertices, and what it is covered with.
/// An array that is null covers nothing, or modulates nothing.
struct StripTextures {
  const LM_RGB32* colors;
  const LM_Vertex_Triple* first;
  const std::uint32_t* modulation;
  const LM_Vertex_Triple* second;
  const LM_Texture_Pages* pages;
  std::int32_t wrap;
};

/// Draws triangle strips whose colour differs from pixel to pixel. Each pixel
/// of a strip is laid on the picture once: where triangles overlap, in the
/// colour of the last one. Kept per thread.
///
/// With antialiasing the colours go into a layer, which also has colours just
/// beyond the edges, and the layer onto the picture through the cover of the
/// whole strip. So no seam shows between triangles.
class ShadedStrip {
 public:
  /// `count` vertices with a colour each; points and colours exist.
  void draw(const ShadingTarget& target, std::int32_t count, const LM_DCI_Point* points,
            const LM_RGB32* colors);
  void draw(const ShadingTarget& target, std::int32_t count, const LM_DCI_Point* points,
            const StripTextures& textures);

 private:
  template <class Material>
  void draw_material(const ShadingTarget& target, std::int32_t count, const LM_DCI_Point* points,
                     const Material& material);
  /// The pixels whose centre is inside a triangle of those within the area, as
  /// far as they are in the rows, which are rows of the area.
  template <class Material>
  void paint_centers(std::int32_t count, const LM_DCI_Point* points, const Material& material,
                     const PixelRectangle& area, const ColorRows& rows);
  /// Other pixels that a triangle touches.
  template <class Material>
  void paint_edges(std::int32_t count, const LM_DCI_Point* points, const Material& material,
                   const ColorRows& rows);

  Shape m_outline;
  Shape m_triangle;
  ColorLayer m_layer;
};

}  // namespace lumen
