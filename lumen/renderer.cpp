#include "displaylist/platform/renderer.h"

#include <algorithm>

namespace {

/// The extent of a text that takes no room.
void take_no_room(const LM_DCI_Point& start, std::int32_t count, LM_Point corners[4],
                  bool with_widths, const LM_Text_Extent& extent) {
  const LM_Point corner{static_cast<float>(start.x), static_cast<float>(start.y), 0.0F};
  std::fill_n(corners, 4, corner);
  if (with_widths) std::fill_n(extent.widths, std::max(count, 0), 0.0F);
}

}  // namespace

LM_Font LM_Renderer::resolve_font(const LM_Font& font) {
  return font;
}

LM_Font LM_Renderer::find_or_create_font(const LM_Font_Description& description) {
  return LM_Font(description);
}

void LM_Renderer::draw_text(LM_Rendition*, const LM_DCI_Point&, const wchar_t*, std::int32_t) {}

void LM_Renderer::draw_text(LM_Rendition*, const LM_DCI_Point&, const unsigned char*,
                            std::int32_t) {}

void LM_Renderer::text_extent(LM_Rendition*, const LM_DCI_Point& start, const wchar_t*,
                              std::int32_t count, LM_Point corners[4], bool with_widths,
                              LM_Text_Extent& extent) {
  take_no_room(start, count, corners, with_widths, extent);
}

void LM_Renderer::text_extent(LM_Rendition*, const LM_DCI_Point& start, const unsigned char*,
                              std::int32_t count, LM_Point corners[4], bool with_widths,
                              LM_Text_Extent& extent) {
  take_no_room(start, count, corners, with_widths, extent);
}

float LM_Renderer::measuring_text_size() const {
  return 1.0F;
}

void LM_Renderer::glyph_outline(std::uint32_t, LM_Rendition*, LM_Contour_Set& outline,
                                float& advance) {
  outline = nullptr;
  advance = 0.0F;
}
