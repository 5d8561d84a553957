#include "lumen/text_renderer.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "lumen/text/font_face_p.h"
#include "lumen/text/font_set_p.h"
#include "lumen/text/text_run_p.h"
#include "lumen/text/text_shape_p.h"

namespace lumen {
namespace {

float to_float(double value) {
  constexpr double most = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(value, -most, most));
}

/// One em along the text, in device units.
double em_along(const TextPlacement& placement) {
  return std::hypot(placement.along_x, placement.along_y);
}

void tell_extent(const TextRun& run, const TextPlacement& placement, LM_Point corners[4],
                 float* widths) {
  const auto corner = [&](double along, double up) -> LM_Point {
    return {to_float(placement.x(along, up)), to_float(placement.y(along, up)), 0.0F};
  };
  corners[0] = corner(0, -run.descent);
  corners[1] = corner(run.advance, -run.descent);
  corners[2] = corner(run.advance, run.ascent);
  corners[3] = corner(0, run.ascent);
  if (widths == nullptr) return;
  std::transform(run.widths.begin(), run.widths.end(), widths,
                 [em = em_along(placement)](float width) { return to_float(width * em); });
}

/// Collects contours for a contour set.
class ContourCollector {
 public:
  explicit ContourCollector(LM_Contour_Set_Data& set) : m_set(set) {}
  ContourCollector(const ContourCollector&) = delete;
  ContourCollector& operator=(const ContourCollector&) = delete;
  ~ContourCollector() { end_contour(); }

  void move_to(double x, double y) {
    end_contour();
    line_to(x, y);
  }
  void line_to(double x, double y) { m_points.push_back({to_float(x), to_float(y), 0.0F}); }

 private:
  void end_contour() {
    if (m_points.empty()) return;
    m_set.add_contour(m_points.data(), static_cast<std::int32_t>(m_points.size()));
    m_points.clear();
  }

  LM_Contour_Set_Data& m_set;
  std::vector<LM_Point> m_points;
};

/// The ink of a run as straight contours; null for none.
LM_Contour_Set outline_of(const TextRun& run, const TextPlacement& placement) {
  auto contours = LM_Create<LM_Contour_Set_Data>(LM_Fill_Rule::non_zero);
  {
    ContourCollector collector(*contours);
    for (const PlacedGlyph& glyph : run.glyphs) {
      glyph.face->outline(glyph.glyph)
          .visit(FlatOutline<ContourCollector>(placement, glyph.x, glyph.y, collector));
    }
  }
  return contours->contour_count() > 0 ? contours : nullptr;
}

}  // namespace

LM_Font TextRenderer::resolve_font(const LM_Font& font) {
  font_set(font);
  return font;
}

LM_Font TextRenderer::find_or_create_font(const LM_Font_Description& description) {
  return font_set(description).font();
}

void TextRenderer::text_extent(LM_Rendition* rendition, const LM_DCI_Point& start,
                               const wchar_t* characters, std::int32_t count, LM_Point corners[4],
                               bool with_widths, LM_Text_Extent& extent) {
  const LM_Text_Attributes& attributes = rendition->text_attributes();
  tell_extent(set_text(attributes.font, characters, count), TextPlacement(attributes, start),
              corners, with_widths ? extent.widths : nullptr);
}

void TextRenderer::text_extent(LM_Rendition* rendition, const LM_DCI_Point& start,
                               const unsigned char* characters, std::int32_t count,
                               LM_Point corners[4], bool with_widths, LM_Text_Extent& extent) {
  const LM_Text_Attributes& attributes = rendition->text_attributes();
  tell_extent(set_text(attributes.font, characters, count), TextPlacement(attributes, start),
              corners, with_widths ? extent.widths : nullptr);
}

float TextRenderer::measuring_text_size() const {
  return 2048.0F;
}

void TextRenderer::glyph_outline(std::uint32_t character, LM_Rendition* rendition,
                                 LM_Contour_Set& outline, float& advance) {
  wchar_t units[2] = {static_cast<wchar_t>(character), 0};
  std::int32_t count = 1;
  if (character >= 0x10000) {
    const std::uint32_t offset = std::min(character, 0x10FFFFU) - 0x10000;
    units[0] = static_cast<wchar_t>(0xD800 + (offset >> 10));
    units[1] = static_cast<wchar_t>(0xDC00 + (offset & 0x3FF));
    count = 2;
  }
  const LM_Text_Attributes& attributes = rendition->text_attributes();
  const TextRun& run = set_text(attributes.font, units, count);
  const TextPlacement placement(attributes, {0, 0, 0});
  const double em = em_along(placement);
  outline = em > 0 ? outline_of(run, placement) : nullptr;
  advance = to_float(run.advance * em);
}

}  // namespace lumen
