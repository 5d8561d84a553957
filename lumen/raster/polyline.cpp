#include "lumen/raster/polyline_p.h"

#include <algorithm>

#include "lumen/raster/raster_scratch_p.h"
#include "lumen/raster/thin_line_p.h"

namespace lumen {

void draw_shaded_polyline(const ShadingTarget& target, const LM_Line_Style& style,
                          std::int32_t count, const LM_DCI_Point* points, const LM_RGB32* colors) {
  if (style.weight <= 1 && !target.antialiased) {
    // These pixels are the same in whatever rectangle they are looked for.
    const PixelRectangle inside = target.rows.part_of(target.inside);
    return draw_thin_polyline({target.picture, inside, {}, target.mask, style.pattern}, count,
                              points, colors);
  }
  const bool plain =
      std::all_of(colors, colors + count, [&](LM_RGB32 color) { return is_plain(color, style); });
  RasterScratch& tools = scratch();
  if (plain && SmoothLine::can_draw(count, points)) {
    tools.shaded_line.draw_smooth(target, count, points, colors, tools.smooth_line);
  } else {
    tools.shaded_line.draw_stroke(target, count, points, colors, style, tools.stroker);
  }
}

}  // namespace lumen
