#include "files/rendition_record_p.h"

#include <vector>

#include "files/coding_p.h"
#include "files/layout_p.h"
#include "files/reading_p.h"
#include "files/writing_p.h"

namespace files {
namespace {

bool get_line_style(Reading& reading, LM_Rendition& rendition) {
  LM_Line_Style style;
  if (!coding::get(reading.reader, style.weight) || !coding::get(reading.reader, style.pattern) ||
      !coding::get(reading.reader, style.start_style) ||
      !coding::get(reading.reader, style.end_style)) {
    return false;
  }
  rendition.set_line_weight(style.weight);
  rendition.set_line_pattern(style.pattern);
  rendition.set_end_styles(style.start_style, style.end_style);
  return true;
}

bool get_text_attributes(Reading& reading, LM_Rendition& rendition) {
  float size = 0;
  float rotation = 0;
  float width_scale = 0;
  std::uint32_t font = layout::kNone;
  if (!coding::get(reading.reader, size) || !coding::get(reading.reader, rotation) ||
      !coding::get(reading.reader, width_scale) || !coding::get(reading.reader, font)) {
    return false;
  }
  // Nobody shares the attributes yet; these setters take every value.
  rendition.set_shared_text_size(size);
  rendition.set_shared_text_rotation(rotation);
  rendition.set_text_width_scale(width_scale);
  if (font == layout::kNone) return true;
  if (font >= reading.fonts.size()) return false;
  rendition.set_shared_font(reading.fonts[font]);
  return true;
}

bool get_pages(Reading& reading, LM_Rendition& rendition) {
  std::uint32_t has_pages = 0;
  std::uint64_t count = 0;
  if (!coding::get(reading.reader, has_pages)) return false;
  if (has_pages == 0) return true;
  if (!reading.reader.get_count(count, sizeof(std::uint32_t))) return false;
  std::vector<LM_Handle<const LM_Image>> pages;
  for (std::uint64_t i = 0; i < count; ++i) {
    std::uint32_t image = layout::kNone;
    if (!coding::get(reading.reader, image)) return false;
    if (image != layout::kNone && image >= reading.images.size()) return false;
    pages.emplace_back(image == layout::kNone ? nullptr : reading.images[image].get());
  }
  rendition.set_texture_pages(LM_Create<const LM_Texture_Pages>(std::move(pages)));
  return true;
}

}  // namespace

void put_rendition(ZtFsStream& stream, const LM_Rendition& rendition, Writing& writing) {
  coding::put(stream, rendition.color().word);
  const LM_Line_Style& style = rendition.line_style();
  coding::put(stream, style.weight);
  coding::put(stream, style.pattern);
  coding::put(stream, style.start_style);
  coding::put(stream, style.end_style);
  coding::put(stream, rendition.edge_mode());
  coding::put(stream, rendition.marker().shape);
  coding::put(stream, rendition.marker().size);
  const LM_Text_Attributes& text = rendition.text_attributes();
  coding::put(stream, text.size);
  coding::put(stream, text.rotation);
  coding::put(stream, text.width_scale);
  coding::put(stream, writing.font_number(&text.font));
  const LM_Texture_Pages* pages = rendition.texture_pages();
  coding::put<std::uint32_t>(stream, pages == nullptr ? 0 : 1);
  if (pages == nullptr) return;
  coding::put<std::uint64_t>(stream, pages->count());
  for (std::size_t i = 0; i < pages->count(); ++i) {
    coding::put(stream, writing.image_number(pages->page(static_cast<std::uint32_t>(i))));
  }
}

bool get_rendition(Reading& reading, LM_Rendition& rendition) {
  LM_RGB32 color{};
  std::uint32_t edge_mode = 0;
  LM_Marker marker;
  if (!coding::get(reading.reader, color.word) || !get_line_style(reading, rendition) ||
      !coding::get(reading.reader, edge_mode) || !coding::get(reading.reader, marker.shape) ||
      !coding::get(reading.reader, marker.size)) {
    return false;
  }
  rendition.set_color(color, true);
  rendition.set_edge_mode(edge_mode);
  rendition.set_marker(marker);
  return get_text_attributes(reading, rendition) && get_pages(reading, rendition);
}

}  // namespace files
