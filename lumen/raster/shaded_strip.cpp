#include "lumen/raster/shaded_strip_p.h"

#include <algorithm>
#include <cmath>

#include "lumen/geometry/coverage_p.h"
#include "lumen/pixel_blend_p.h"
#include "lumen/raster/color_mix_p.h"
#include "lumen/raster/convex_rows_p.h"
#include "lumen/raster/pixel_access_p.h"
#include "lumen/raster/texture_p.h"
#include "lumen/raster/triangle_p.h"

namespace lumen {
namespace {

/// A pixel is a square of this reach around its centre; a little more makes
/// up for rounding.
constexpr double pixel_reach = 0.625;

constexpr std::uint32_t invisible = 0xFF000000;

CornerColors corners_of(const LM_RGB32* colors) {
  return {colors[0].word, colors[1].word, colors[2].word};
}

bool are_opaque(std::int32_t count, const LM_RGB32* colors) {
  return std::all_of(colors, colors + count,
                     [](LM_RGB32 color) { return opacity_of(color) == 255; });
}

/// The colours of the vertices, mixed.
class PlainMaterial {
 public:
  explicit PlainMaterial(const LM_RGB32* colors) : m_colors(colors) {}

  [[nodiscard]] bool is_opaque(std::int32_t count) const { return are_opaque(count, m_colors); }
  /// What colours the triangle whose first vertex is the given one.
  [[nodiscard]] auto shader(std::int32_t first) const {
    return [colors = corners_of(m_colors + first)](const Weights& weights) {
      return colors.at(weights);
    };
  }

 private:
  const LM_RGB32* m_colors;
};

/// A texture laid on one triangle.
class TextureCover {
 public:
  TextureCover(const LM_Vertex_Triple* places, const LM_Texture_Pages* pages, std::int32_t wrap,
               bool smooth) {
    if (places == nullptr || pages == nullptr) return;
    for (std::size_t i = 0; i < 3; ++i) {
      if (!std::isfinite(places[i].u()) || !std::isfinite(places[i].v())) return;
      m_places[i] = {places[i].u(), places[i].v()};
    }
    m_texture = Texture(pages->page(places[0].page()), wrap, smooth);
  }

  [[nodiscard]] std::uint32_t color(const Weights& weights) const {
    if (m_texture.is_missing()) return invisible;
    const auto& [a, b, c] = m_places;
    return m_texture.color(weights.a * a.u + weights.b * b.u + weights.c * c.u,
                           weights.a * a.v + weights.b * b.v + weights.c * c.v);
  }

 private:
  struct Place {
    double u = 0;
    double v = 0;
  };

  Texture m_texture;
  std::array<Place, 3> m_places;
};

std::uint32_t lay(std::uint32_t under, std::uint32_t over) {
  return blend(under, over & 0x00FFFFFF, opacity_of({over}));
}

/// A ground colour with up to two textures on it.
class TexturedMaterial {
 public:
  TexturedMaterial(const StripTextures& textures, bool smooth)
      : m_textures(textures), m_smooth(smooth) {}

  [[nodiscard]] bool is_opaque(std::int32_t count) const {
    return m_textures.colors != nullptr && are_opaque(count, m_textures.colors);
  }

  [[nodiscard]] auto shader(std::int32_t first) const {
    return [ground = ground(first), modulation = modulation(first),
            is_modulated = m_textures.modulation != nullptr, lower = cover(m_textures.first, first),
            upper = cover(m_textures.second, first)](const Weights& weights) {
      const std::uint32_t over = upper.color(weights);
      if (opacity_of({over}) == 255) return over;
      std::uint32_t texel = lower.color(weights);
      if (is_modulated) texel = modulated(texel, modulation.at(weights));
      if (opacity_of({texel}) != 255) texel = lay(ground.at(weights), texel);
      return lay(texel, over);
    };
  }

 private:
  [[nodiscard]] CornerColors ground(std::int32_t first) const {
    if (m_textures.colors == nullptr) return {invisible, invisible, invisible};
    return corners_of(m_textures.colors + first);
  }
  [[nodiscard]] CornerColors modulation(std::int32_t first) const {
    if (m_textures.modulation == nullptr) return {invisible, invisible, invisible};
    return CornerColors(m_textures.modulation + first);
  }
  [[nodiscard]] TextureCover cover(const LM_Vertex_Triple* places, std::int32_t first) const {
    return {places == nullptr ? nullptr : places + first, m_textures.pages, m_textures.wrap,
            m_smooth};
  }

  const StripTextures& m_textures;
  bool m_smooth;
};

/// Calls `draw(triangle, shader)` for the triangles that may be seen in the
/// area, in order.
template <class Material, class Draw>
void for_each_triangle(std::int32_t count, const LM_DCI_Point* points, const Material& material,
                       const PixelRectangle& area, const Draw& draw) {
  for (std::int32_t i = 0; i < count - 2; ++i) {
    const Triangle triangle(points + i);
    if (triangle.area() == 0 || !triangle.is_near(area)) continue;
    draw(triangle, material.shader(i));
  }
}

/// Paints every pixel of its runs in the rows that there are, in a layer or right
/// on a picture.
template <class Shader>
struct TrianglePen {
  const Triangle& triangle;
  const Shader& shader;
  const ColorRows& rows;

  void solid(std::int32_t x, std::int32_t y, std::int32_t length, std::uint32_t /*cover*/) const {
    if (y < rows.area.min_y || y > rows.area.max_y) return;
    std::uint32_t* words = rows.at(x, y);
    triangle.walk(x, y, length, [&](std::int32_t i, const Weights& weights) {
      write_pixel(words[i], painted(shader(weights)));
    });
  }
};

void lay_all(const LayerPen& pen, const PixelRectangle& area) {
  for (std::int32_t y = area.min_y; y <= area.max_y; ++y) {
    pen.solid(area.min_x, y, area.max_x - area.min_x + 1, 255);
  }
}

}  // namespace

void ShadedStrip::draw(const ShadingTarget& target, std::int32_t count, const LM_DCI_Point* points,
                       const LM_RGB32* colors) {
  draw_material(target, count, points, PlainMaterial(colors));
}

void ShadedStrip::draw(const ShadingTarget& target, std::int32_t count, const LM_DCI_Point* points,
                       const StripTextures& textures) {
  draw_material(target, count, points, TexturedMaterial(textures, target.antialiased));
}

template <class Material>
void ShadedStrip::draw_material(const ShadingTarget& target, std::int32_t count,
                                const LM_DCI_Point* points, const Material& material) {
  const PixelRectangle box = box_around(count, points, 1, target.inside);
  if (box.is_empty()) return;
  if (!target.antialiased && target.mask == nullptr && material.is_opaque(count)) {
    // The last colour of a pixel stays: the same as through a layer.
    const PixelRectangle part = target.rows.part_of(box);
    if (part.is_empty()) return;
    return paint_centers(count, points, material, box, rows_of_picture(target.picture, part));
  }
  m_outline.clear();
  if (target.antialiased) add_strip(count, points, m_outline);
  for_each_band(box, [&](const PixelRectangle& band) {
    const PixelRectangle part = target.rows.part_of(band);
    if (part.is_empty()) return;
    const ColorRows rows = m_layer.clear(part);
    LayerPen pen(target.picture, rows, target.mask);
    paint_centers(count, points, material, band, rows);
    if (!target.antialiased) return lay_all(pen, part);
    paint_edges(count, points, material, rows);
    m_outline.fill(LM_Fill_Rule::non_zero, true, band, pen);
  });
}

template <class Material>
void ShadedStrip::paint_centers(std::int32_t count, const LM_DCI_Point* points,
                                const Material& material, const PixelRectangle& area,
                                const ColorRows& rows) {
  for_each_triangle(count, points, material, rows.area,
                    [&](const Triangle& triangle, const auto& shader) {
                      m_triangle.clear();
                      const auto& [a, b, c] = triangle.corners();
                      m_triangle.move_to(a.x, a.y);
                      m_triangle.line_to(b.x, b.y);
                      m_triangle.line_to(c.x, c.y);
                      TrianglePen<std::decay_t<decltype(shader)>> pen{triangle, shader, rows};
                      m_triangle.fill_centers(LM_Fill_Rule::non_zero, area, pen);
                    });
}

template <class Material>
void ShadedStrip::paint_edges(std::int32_t count, const LM_DCI_Point* points,
                              const Material& material, const ColorRows& rows) {
  for_each_triangle(
      count, points, material, rows.area, [&](const Triangle& triangle, const auto& shader) {
        ConvexRows(triangle.corners(), pixel_reach)
            .sweep(rows.area, [&](std::int32_t x, std::int32_t y, std::int32_t length) {
              std::uint32_t* words = rows.at(x, y);
              triangle.walk(x, y, length, [&](std::int32_t i, const Weights& weights) {
                if (words[i] == unpainted) words[i] = painted(shader(weights));
              });
            });
      });
}

}  // namespace lumen
