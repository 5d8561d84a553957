#include "apps/dlview/render.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>

#include "apps/dlview/color.h"
#include "apps/dlview/output_file.h"
#include "apps/dlview/sheet.h"
#include "apps/dlview/visits.h"

namespace dlview {

namespace {

using importers::Drawing;

/// Paints what lies inside the clip, whose surroundings stay as they are.
void paint_background(DL::DisplayList& list, const PictureSize& size, LM_RGB32 color) {
  const LM_DCI_Point corners[4] = {
      {-1, -1, 0}, {size.width, -1, 0}, {size.width, size.height, 0}, {-1, size.height, 0}};
  list.m_rendition.set_color(color, true);
  list.m_pRenderer->actions.polygon_clipped(&list.m_rendition, 4, corners, 0);
}

/// Gives the list, and the renditions of its own that the drawing has, all
/// that drawing on the sheet asks for, but the transform.
void prepare(Drawing& drawing, const RenderOptions& options, Sheet& sheet) {
  DL::DisplayList& list = *drawing.list;
  list.m_pRenderer = sheet.renderer();
  list.m_bComplexClipSupported = list.m_pRenderer->options.supports_complex_clip;
  // What collapses onto a single pixel is as wide as any other line.
  list.m_bWideDots = true;
  const LM_Contour_Set clip = clip_of(options.form, options.size);
  LM_Rendition& working = list.m_rendition;
  working.set_line_weight(options.line_width);
  working.set_end_styles(LM_END_ROUND);
  working.set_complex_clip(clip, true);
  for (const std::unique_ptr<LM_Rendition>& rendition : drawing.renditions) {
    rendition->set_clip_rectangle(working.clip_rectangle());
    rendition->set_complex_clip(clip, true);
    // A weight of its own is that of point symbols.
    if (rendition->line_style().weight > 1) continue;
    rendition->set_line_weight(options.line_width);
    rendition->set_end_styles(LM_END_ROUND);
  }
}

/// Draws, and returns how many milliseconds that took.
double draw_picture(Drawing& drawing, const RenderOptions& options, const Region& region) {
  using Clock = std::chrono::steady_clock;
  DL::DisplayList& list = *drawing.list;
  const LM_RGB32 usual = drawing.is_map ? sea : paper;
  paint_background(list, options.size, options.background.value_or(usual));
  const Clock::time_point start = Clock::now();
  draw(list, options.form, region);
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void tell_statistics(Drawing& drawing, const RenderOptions& options, const Region& region,
                     double milliseconds) {
  const Visits visits = count_visits(*drawing.list, options.form, region);
  std::printf("%zu of %zu drawables, %zu groups visited, %.2f ms, %s\n", visits.drawables,
              drawing.drawables, visits.groups, milliseconds, options.output.c_str());
}

}  // namespace

std::string render(const RenderOptions& options) {
  const std::string& input = options.source.path;
  std::string problem = check_output(options.output, input, picture_files());
  if (!problem.empty()) return problem;
  Drawing drawing;
  problem = read(options.source, drawing);
  if (!problem.empty()) return problem;
  View view;
  problem = make_view(drawing, options.window, options.size, view);
  if (!problem.empty()) return "the drawing '" + input + "' " + problem;
  const std::unique_ptr<Sheet> sheet =
      make_sheet(options.output, options.size, options.antialiased);
  if (sheet == nullptr) {
    return "a picture as large as '" + options.output + "' cannot be held; give a smaller --size";
  }
  view.apply(*drawing.list);
  prepare(drawing, options, *sheet);
  const std::int32_t reach = std::max(options.line_width, options.source.point_size);
  Region region = visible_region(*drawing.list, reach);
  region.is_part = options.window.has_value();
  const double milliseconds = draw_picture(drawing, options, region);
  problem = sheet->write();
  if (problem.empty() && options.statistics) {
    tell_statistics(drawing, options, region, milliseconds);
  }
  return problem;
}

}  // namespace dlview
