#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "lumen/picture_image.h"
#include "lumen/raster_device.h"
#include "tests/support/client_drawables.h"
#include "tests/support/contours.h"

/// A drawable that calls some device action, in some rendition, at some place of
/// a page of this size or partly beyond; the same for the same seed.
class Scribble final : public client::Mark {
 public:
  static constexpr std::int32_t width = 200;
  static constexpr std::int32_t height = 150;
  static constexpr unsigned kinds = 13;

  /// What scribbles share.
  struct Material {
    LM_Handle<LM_Image> image;
    LM_Handle<LM_Texture_Pages> pages;
    LM_Contour_Set clips[3];
  };

  Scribble(const Material& material, unsigned seed) : m_material(material), m_seed(seed) {}

  void draw_unclipped(DL::DisplayList& list) override { Hand(m_material, m_seed).scribble(list); }
  void draw_clipped(DL::DisplayList& list) override { draw_unclipped(list); }

  static Material make_material() {
    lumen::Picture picture(23, 17, {0x40FF8800});
    for (std::int32_t y = 0; y < 17; ++y) {
      for (std::int32_t x = 0; x < 23; ++x) {
        picture.row(y)[x] = static_cast<std::uint32_t>((x * y * 77) << 24 | x << 19 | y << 10 | x);
      }
    }
    Material material;
    material.image = LM_Create<lumen::PictureImage>(std::move(picture));
    material.pages = LM_Create<LM_Texture_Pages>(
        std::vector<LM_Handle<const LM_Image>>{material.image, nullptr});
    material.clips[1] = contour_set({regular_polygon(14, 90, 40, 100, 75)});
    material.clips[2] = contour_set({rectangle(-5, 20.5F, 150, 120.25F)});
    return material;
  }

 private:
  /// What draws once: several threads may draw a drawable at a time.
  class Hand {
   public:
    Hand(const Material& material, unsigned seed) : m_material(material), m_random(seed) {}

    void scribble(const DL::DisplayList& list) {
      LM_Rendition rendition;
      set_rendition(rendition, list);
      const LM_Handle<LM_Renderer> renderer = list.m_pRenderer;
      const auto kind = static_cast<unsigned>(any(0, kinds - 1));
      kind < 7 ? draw_plain(renderer->actions, rendition, kind)
               : draw_rich(*renderer, rendition, kind);
    }

   private:
    using Points = std::vector<LM_DCI_Point>;

    std::int32_t any(std::int32_t low, std::int32_t high) {
      return std::uniform_int_distribution<std::int32_t>(low, high)(m_random);
    }
    bool one_in(std::int32_t many) { return any(1, many) == 1; }
    LM_RGB32 any_color() {
      const auto color = static_cast<std::uint32_t>(m_random()) & 0x00FFFFFF;
      return {one_in(3) ? color | static_cast<std::uint32_t>(any(0, 255)) << 24 : color};
    }
    LM_DCI_Point any_point() {
      const std::int32_t x = any(-40, width + 40);
      return {x, any(-40, height + 40), 0};
    }
    /// Near each other or all over the page, now and then far beyond.
    Points any_points(std::int32_t count) {
      Points points;
      const bool near = one_in(2);
      const LM_DCI_Point corner = any_point();
      for (std::int32_t i = 0; i < count; ++i) {
        const std::int32_t x = any(0, 9);
        points.push_back(near ? LM_DCI_Point{corner.x + x, corner.y + any(0, 9), 0} : any_point());
      }
      if (one_in(12)) points.back() = {any(INT32_MIN, INT32_MAX), any(INT32_MIN, INT32_MAX), 0};
      return points;
    }

    void set_rendition(LM_Rendition& rendition, const DL::DisplayList& list) {
      LM_Clip_Rectangle clip = list.m_rendition.clip_rectangle();
      if (one_in(4)) clip.min_y = any(0, 60);
      if (one_in(4)) clip.max_y = any(70, height - 1);
      rendition.set_clip_rectangle(clip);
      rendition.set_color(any_color(), true);
      rendition.set_line_weight(one_in(2) ? 1 : any(0, 12));
      rendition.set_line_pattern(one_in(2) ? LM_PATTERN_SOLID : any(-1, 5));
      rendition.set_end_styles(any(0, 2), any(0, 2));
      rendition.set_marker({any(0, 8), any(0, 30)});
      rendition.set_complex_clip(one_in(3) ? m_material.clips[any(1, 2)] : nullptr, true);
      rendition.set_texture_pages(m_material.pages);
      rendition.set_text_size(static_cast<float>(any(2, 30)));
      rendition.set_text_rotation(static_cast<float>(any(0, 6)));
    }

    void draw_plain(const LM_Device_Actions& actions, LM_Rendition& rendition, unsigned kind) {
      const std::int32_t count = one_in(5) ? any(20, 60) : any(1, 6);
      const Points points = any_points(count);
      const LM_RGB32 color = any_color();
      switch (kind) {
        case 0:
          for (const LM_DCI_Point& point : points) {
            actions.dot_clipped(&rendition, &point, one_in(2) ? &color : nullptr);
          }
          return;
        case 1:
        case 2:
          return actions.polyline_clipped(&rendition, count, points.data());
        case 3:
          return actions.polygon_clipped(&rendition, count, points.data(), 0);
        case 4:
          return actions.triangle_strip_clipped(&rendition, count, points.data());
        case 5:
          return actions.marker_clipped(&rendition, count, points.data());
        default:
          LM_Image* const cell = m_material.image.get();
          actions.image_clipped(&rendition, points.data(), &cell);
      }
    }

    void draw_rich(LM_Renderer& renderer, LM_Rendition& rendition, unsigned kind) {
      const LM_Device_Actions& actions = renderer.actions;
      const Points points = any_points(5);
      const LM_DCI_Point radii{any(0, 60), any(0, 60), 0};
      std::vector<LM_RGB32> colors;
      for (int i = 0; i < 5; ++i) colors.push_back(one_in(2) ? any_color() : LM_RGB32{0x00335577});
      std::vector<LM_Vertex_Triple> places;
      for (int i = 0; i < 5; ++i) {
        const auto u = static_cast<float>(any(-2, 2));
        places.push_back(LM_Vertex_Triple::at(u, static_cast<float>(any(-2, 2)),
                                              static_cast<std::uint32_t>(any(0, 2))));
      }
      const std::uint32_t modulation[] = {0, 0x80FFFFFF, 0x00808080, 0x2000FF00, 0x00FFFFFF};
      switch (kind) {
        case 7:
          return actions.gouraud_polyline_clipped(&rendition, any(1, 5), points.data(),
                                                  colors.data());
        case 8:
          return actions.gouraud_triangle_strip_clipped(&rendition, 5, points.data(),
                                                        colors.data());
        case 9:
          return actions.textured_triangle_strip_clipped(
              &rendition, 5, points.data(), one_in(2) ? colors.data() : nullptr, places.data(),
              any(0, 1), one_in(2) ? modulation : nullptr, one_in(2) ? places.data() : nullptr);
        case 10:
          return actions.elliptical_arc(&rendition, points.data(), &radii, 0.5F,
                                        static_cast<float>(any(1, 7)), 0.25F,
                                        one_in(2) ? colors.data() : nullptr);
        case 11:
          return actions.elliptical_area(&rendition, points.data(), &radii, 0.5, any(1, 7), 0.25,
                                         one_in(2) ? colors.data() : nullptr);
        default:
          return one_in(2) ? renderer.draw_text(&rendition, points[0], L"Scribble", any(1, 8))
                           : renderer.draw_text(&rendition, points[0],
                                                reinterpret_cast<const unsigned char*>("Scribble"),
                                                any(1, 8));
      }
    }

    const Material& m_material;
    std::mt19937 m_random;
  };

  const Material& m_material;
  unsigned m_seed;
};
