#pragma once

#include <cstdint>
#include <vector>

#include "displaylist/platform/points.h"
#include "lumen/vector/vector_color_p.h"
#include "lumen/vector/vector_page_p.h"

namespace lumen {

/// Fills triangle strips on the page of a vector device.
class VectorStrip {
 public:
  explicit VectorStrip(VectorPage& page) : m_page(page) {}

  void fill(std::int32_t count, const LM_DCI_Point* points, LM_RGB32 color);
  /// With a colour for each point; `count` is at least 3.
  void fill(std::int32_t count, const LM_DCI_Point* points, const LM_RGB32* colors);

 private:
  /// The colours of a triangle: they change evenly in every direction.
  class ColorPlane;

  /// Its near part, or nothing, as the corners.
  void take_triangle(const LM_DCI_Point* points);
  void add_path(std::int32_t count, const LM_DCI_Point* points);
  void fill_mesh(std::int32_t count, const LM_DCI_Point* points, const LM_RGB32* colors);
  void add_patches(cairo_pattern_t* mesh, const ColorPlane& plane);
  void fill_triangles(std::int32_t count, const LM_DCI_Point* points, const LM_RGB32* colors,
                      bool overlapped);
  /// The opaque colours in m_inks, seen through the opacities of the others.
  void fill_masked(std::int32_t count, const LM_DCI_Point* points, const LM_RGB32* colors);
  /// `overlapped`: each band also covers the place of the one that is drawn
  /// next, and of the next triangle, so that no seams show between them.
  void fill_bands(const ColorPlane& plane, const LM_DCI_Point* points, bool overlapped,
                  bool has_next);
  /// Leaves of the corners what lies from `low` to `high` in that direction.
  void cut_band(const PagePoint& across, double low, double high);
  /// Adds that part of a triangle to the path.
  void add_band(const LM_DCI_Point* points, const PagePoint& across, double low, double high);

  VectorPage& m_page;
  Contour m_corners;  ///< of a triangle, or what is left of it
  Contour m_scratch;
  std::vector<LM_RGB32> m_inks;
};

}  // namespace lumen
