#pragma once

#include <cairo.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "displaylist/platform/contour_set.h"
#include "displaylist/platform/rendition.h"
#include "lumen/new_file.h"
#include "lumen/vector/svg_texts_p.h"
#include "lumen/vector/vector_contour_p.h"
#include "lumen/vector_device.h"

namespace lumen {

inline LM_Clip_Rectangle common_part(const LM_Clip_Rectangle& a, const LM_Clip_Rectangle& b) {
  return {std::max(a.min_x, b.min_x), std::min(a.max_x, b.max_x), std::max(a.min_y, b.min_y),
          std::min(a.max_y, b.max_y)};
}

inline bool is_empty(const LM_Clip_Rectangle& rectangle) {
  return rectangle.min_x > rectangle.max_x || rectangle.min_y > rectangle.max_y;
}

/// Wider lines are drawn no wider; this covers any page.
inline constexpr std::int32_t max_line_width = 1 << 17;

/// The page of a vector device, its file, and the state that is drawn with. The
/// user space of its Cairo context is that of PagePoint.
class VectorPage {
 public:
  VectorPage(VectorFormat format, std::int32_t width, std::int32_t height, const std::string& path);
  ~VectorPage();
  VectorPage(const VectorPage&) = delete;
  VectorPage& operator=(const VectorPage&) = delete;

  /// As VectorDevice::finish.
  [[nodiscard]] const std::string& finish();

  /// Limits what follows to the rendition's clips. False when nothing of it
  /// could be seen; the page is not to be drawn on then.
  [[nodiscard]] bool enter(const LM_Rendition& rendition);

  [[nodiscard]] cairo_t* cairo() const { return m_cairo; }
  [[nodiscard]] VectorFormat format() const { return m_format; }
  /// The texts of an SVG.
  [[nodiscard]] SvgTexts& svg_texts() { return m_svg_texts; }
  /// The units of the page inside the clip rectangle.
  [[nodiscard]] const LM_Clip_Rectangle& visible() const { return m_visible; }

  void set_ink(LM_RGB32 color);
  /// What shapes are cut to: the page and so much around it that no cut is to be
  /// seen, `reach` more than usual. Cairo holds coordinates up to 2^23; programs
  /// that show what it writes go astray before.
  [[nodiscard]] PageBox box(double reach = 0) const {
    const double margin = 16384 + reach;
    return {m_page.min_x - margin, m_page.min_y - margin, m_page.max_x + margin,
            m_page.max_y + margin};
  }
  /// Adds a closed contour of any finite coordinates to the path; changes it.
  void add(Contour& contour) {
    cut(contour, m_scratch, box());
    add_to_path(m_cairo, contour);
  }

  /// Lays what `draw` draws opaque on the page, with this opacity as a whole,
  /// so that overlapping parts do not show.
  template <class Draw>
  void lay(std::uint32_t opacity, Draw draw) {
    if (opacity == 255) return draw();
    cairo_push_group(m_cairo);
    draw();
    cairo_pop_group_to_source(m_cairo);
    cairo_paint_with_alpha(m_cairo, opacity / 255.0);
  }

 private:
  void open(std::int32_t width, std::int32_t height);
  static cairo_status_t write(void* page, const unsigned char* data, unsigned int size);
  /// Keeps bytes of an SVG until it is complete.
  cairo_status_t keep(std::string_view bytes);
  bool write_to_file(std::string_view bytes);
  void set_clip(const LM_Clip_Rectangle& visible, const LM_Contour_Set_Data* clip);
  void end_clip();
  [[nodiscard]] std::string close();
  void forget();

  VectorFormat m_format;
  std::string m_failure;  ///< how a sentence about the file starts
  std::string m_result;
  bool m_finished = false;
  NewFile m_file;
  std::string m_svg;  ///< held back until it is complete
  SvgTexts m_svg_texts;
  int m_write_error = 0;  ///< errno of the first write that failed
  cairo_surface_t* m_surface = nullptr;
  cairo_t* m_cairo = nullptr;  ///< null when there is nothing to draw on
  LM_Clip_Rectangle m_page;
  LM_Clip_Rectangle m_visible;
  LM_Handle<const LM_Contour_Set_Data> m_clip;  ///< held so that its address names it
  Contour m_contour;
  Contour m_scratch;
};

}  // namespace lumen
