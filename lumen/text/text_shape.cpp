#include "lumen/text/text_shape_p.h"

#include <algorithm>

#include "lumen/text/font_face_p.h"

namespace lumen {
namespace {

/// Whether a box, `x` and `y` ems from the start of the text, may cover a pixel
/// of the rectangle.
bool may_touch(const GlyphOutline::Box& box, double x, double y, const TextPlacement& placement,
               const PixelRectangle& inside) {
  const double min_along = x + box.min_x;
  const double max_along = x + box.max_x;
  const double min_up = y + box.min_y;
  const double max_up = y + box.max_y;
  const auto [left, right] =
      std::minmax({placement.x(min_along, min_up), placement.x(min_along, max_up),
                   placement.x(max_along, min_up), placement.x(max_along, max_up)});
  const auto [top, bottom] =
      std::minmax({placement.y(min_along, min_up), placement.y(min_along, max_up),
                   placement.y(max_along, min_up), placement.y(max_along, max_up)});
  return left <= inside.max_x + 1.0 && right >= inside.min_x - 1.0 && top <= inside.max_y + 1.0 &&
         bottom >= inside.min_y - 1.0;
}

}  // namespace

void add_glyphs(const TextRun& run, const TextPlacement& placement, const PixelRectangle& inside,
                Shape& shape) {
  for (const PlacedGlyph& glyph : run.glyphs) {
    const GlyphOutline& outline = glyph.face->outline(glyph.glyph);
    if (outline.is_empty() || !may_touch(outline.box(), glyph.x, glyph.y, placement, inside)) {
      continue;
    }
    outline.visit(FlatOutline<Shape>(placement, glyph.x, glyph.y, shape));
  }
}

void add_bar(const TextRun& run, const TextPlacement& placement, Shape& shape) {
  const auto has_ink = [](const PlacedGlyph& glyph) {
    return !glyph.face->outline(glyph.glyph).is_empty();
  };
  if (std::none_of(run.glyphs.begin(), run.glyphs.end(), has_ink)) return;
  const auto advance = double{run.advance};
  const auto height = double{run.x_height};
  shape.move_to(placement.x(0, 0), placement.y(0, 0));
  shape.line_to(placement.x(advance, 0), placement.y(advance, 0));
  shape.line_to(placement.x(advance, height), placement.y(advance, height));
  shape.line_to(placement.x(0, height), placement.y(0, height));
}

}  // namespace lumen
