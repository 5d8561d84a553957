#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "lumen/picture_image.h"
#include "lumen/raster_device.h"
#include "tests/lumen/text_art.h"

/// A crowd of shapes of one colour all over a picture, for tests of what
/// threads leave where they draw over each other.
class Crowd {
 public:
  static constexpr std::int32_t width = 240;
  static constexpr std::int32_t height = 160;

  /// The same seed makes the same crowd. The rendition is the caller's.
  Crowd(lumen::RasterDevice& device, LM_Rendition& rendition, LM_RGB32 ink, unsigned seed)
      : m_device(device), m_rendition(rendition), m_ink(ink), m_random(seed) {
    m_cell = LM_Create<lumen::PictureImage>(lumen::Picture(23, 17, ink));
  }

  /// Sets what the shapes are drawn with, but for what `vary` changes.
  void prepare() {
    m_rendition.set_color(m_ink, true);
    m_rendition.set_clip_rectangle({0, width - 1, 0, height - 1});
    m_rendition.set_texture_pages(
        LM_Create<LM_Texture_Pages>(std::vector<LM_Handle<const LM_Image>>{m_cell}));
    m_rendition.set_text_size(19);
  }
  void vary(int i, const LM_Contour_Set& clip) {
    m_rendition.set_line_weight(1 + i % 4);
    m_rendition.set_line_pattern(i % 5);
    m_rendition.set_marker({i % 8, i % 30});
    m_rendition.set_text_rotation(static_cast<float>(i));
    m_rendition.set_complex_clip(i % 7 == 0 ? clip : nullptr, true);
  }

  /// One of each shape, at random places.
  void draw_one_of_each() {
    draw_lines_and_areas();
    draw_colored();
    draw_arcs();
    const LM_DCI_Point place = any_point();
    LM_Image* const cell = m_cell.get();
    m_device.actions.image_clipped(&m_rendition, &place, &cell);
    m_device.actions.dot_clipped(&m_rendition, &place, nullptr);
  }
  void draw_text() { m_device.draw_text(&m_rendition, any_point(), L"Crowd", 5); }

 private:
  LM_DCI_Point any_point() {
    const auto at_most = [this](std::int32_t most) {
      return std::uniform_int_distribution<std::int32_t>(-20, most + 20)(m_random);
    };
    const std::int32_t x = at_most(width);
    return {x, at_most(height), 0};
  }
  const LM_DCI_Point* any_points() {
    for (LM_DCI_Point& point : m_points) point = any_point();
    return m_points;
  }

  void draw_lines_and_areas() {
    const LM_Device_Actions& actions = m_device.actions;
    actions.polyline_clipped(&m_rendition, count, any_points());
    actions.polygon_clipped(&m_rendition, 3, any_points(), 0);
    actions.triangle_strip_clipped(&m_rendition, 3, any_points());
    actions.marker_clipped(&m_rendition, count, any_points());
  }

  void draw_colored() {
    const LM_Device_Actions& actions = m_device.actions;
    const std::vector<LM_RGB32> colors(count, m_ink);
    actions.gouraud_polyline_clipped(&m_rendition, count, any_points(), colors.data());
    actions.gouraud_triangle_strip_clipped(&m_rendition, 3, any_points(), colors.data());
    const std::vector<LM_Vertex_Triple> places(count, LM_Vertex_Triple::at(0.5F, 0.5F, 0));
    actions.textured_triangle_strip_clipped(&m_rendition, 3, any_points(), nullptr, places.data(),
                                            LM_TEXTURE_CLAMP, nullptr, nullptr);
  }

  void draw_arcs() {
    const LM_Device_Actions& actions = m_device.actions;
    const LM_DCI_Point radii{31, 12, 0};
    const LM_DCI_Point center = any_point();
    actions.elliptical_arc(&m_rendition, &center, &radii, 0.0F, 4.0F, 0.5F, nullptr);
    actions.elliptical_area(&m_rendition, &m_points[0], &radii, 1.0, 4.0, 0.5, &m_ink);
  }

  static constexpr std::int32_t count = 4;

  lumen::RasterDevice& m_device;
  LM_Rendition& m_rendition;
  LM_RGB32 m_ink;
  std::mt19937 m_random;
  LM_Handle<lumen::PictureImage> m_cell;
  LM_DCI_Point m_points[count] = {};
};
