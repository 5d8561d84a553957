#pragma once

#include <cstdint>
#include <vector>

#include "displaylist/platform/image.h"
#include "displaylist/platform/marker.h"
#include "displaylist/platform/points.h"
#include "displaylist/platform/rendition.h"
#include "lumen/geometry/elliptical_arc_p.h"
#include "lumen/geometry/pixel_rectangle_p.h"
#include "lumen/geometry/shape_p.h"
#include "lumen/geometry/stroker_p.h"
#include "lumen/geometry/thin_pixels_p.h"

/// What the device actions cover, whoever draws or looks for it.
namespace lumen {

/// Adds a polygon, to be filled by the even-odd rule. `count` is at least 1.
void add_polygon(std::int32_t count, const LM_DCI_Point* points, Shape& shape);

/// Adds the triangles of a strip, to be filled by the non-zero rule: all run
/// the same way around, so that neighbours leave no seam and none takes another
/// one away. `count` may be any.
void add_strip(std::int32_t count, const LM_DCI_Point* points, Shape& shape);

/// The two areas of an arc that is not whole.
enum class ArcArea : std::uint8_t { to_chord, to_center };

/// Adds the area of a drawable arc as far as it can be seen in the rectangle,
/// to be filled by the even-odd rule. A flat arc has none. Without antialiasing
/// pixels whose centre is on the arc are inside on all its sides.
void add_area(const EllipticalArc& arc, ArcArea area, bool antialiased,
              const PixelRectangle& inside, Shape& shape);

/// The pixels of an image that is drawn with its left upper pixel on the point,
/// as far as they are inside.
PixelRectangle image_pixels(const LM_Image& image, const LM_DCI_Point& corner,
                            const PixelRectangle& inside);

/// What the lines of one action cover: pixels one by one where they are thin,
/// else the area of their strokes. Kept per thread, with what it works in.
class Strokes {
 public:
  /// Both outlive the object; the shape is filled with other things in between.
  Strokes(Stroker& stroker, Shape& shape) : m_stroker(stroker), m_shape(shape) {}

  /// Forgets the lines. Those added next have this style and are seen in the
  /// rectangle, which is not empty.
  void start(const LM_Line_Style& style, bool antialiased, const PixelRectangle& inside);

  /// `count` is at least 1.
  void add_polyline(std::int32_t count, const LM_DCI_Point* points);
  /// The line along a drawable arc.
  void add_arc(const EllipticalArc& arc);
  /// The line that is left of the area of a flat arc.
  void add_flat_area(const EllipticalArc& arc, ArcArea area);

  /// Makes thin lines even around x = 0, inside a rectangle that is so, too.
  void mirror_right_half() { m_pixels.mirror_right_half(); }

  /// Colours the pixels. `once`: none of them twice.
  template <class Pen>
  void fill(bool once, Pen& pen) {
    if (m_are_thin) {
      m_pixels.fill(once, pen);
    } else {
      m_shape.fill(LM_Fill_Rule::non_zero, m_antialiased, m_inside, pen);
    }
  }

 private:
  void add_curve(const EllipticalArc& arc);
  void add_flat(const EllipticalArc& arc, bool with_center);
  void add_path();

  LM_Line_Style m_style;
  bool m_antialiased = false;
  bool m_are_thin = true;
  PixelRectangle m_inside{};
  std::vector<Place> m_path;
  Stroker& m_stroker;
  Shape& m_shape;
  ThinPixels m_pixels;
};

}  // namespace lumen
