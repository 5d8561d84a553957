#include "files/rendition_record_p.h"

#include <vector>

#include "displaylist/core/coding.h"
#include "files/layout_p.h"
#include "files/reading_p.h"
#include "files/writing_p.h"

namespace files {
namespace {

bool get_line_style(Reading& reading, LM_Rendition& rendition) {
  LM_Line_Style style;
  if (!DL::coding::read(reading.reader, style.weight) ||
      !DL::coding::read(reading.reader, style.pattern) ||
      !DL::coding::read(reading.reader, style.start_style) ||
      !DL::coding::read(reading.reader, style.end_style)) {
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
  if (!DL::coding::read(reading.reader, size) || !DL::coding::read(reading.reader, rotation) ||
      !DL::coding::read(reading.reader, width_scale) || !DL::coding::read(reading.reader, font)) {
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
  if (!DL::coding::read(reading.reader, has_pages)) return false;
  if (has_pages == 0) return true;
  if (!reading.reader.get_count(count, sizeof(std::uint32_t))) return false;
  std::vector<LM_Handle<const LM_Image>> pages;
  for (std::uint64_t i = 0; i < count; ++i) {
    std::uint32_t image = layout::kNone;
    if (!DL::coding::read(reading.reader, image)) return false;
    if (image != layout::kNone && image >= reading.images.size()) return false;
    pages.emplace_back(image == layout::kNone ? nullptr : reading.images[image].get());
  }
  rendition.set_texture_pages(LM_Create<const LM_Texture_Pages>(std::move(pages)));
  return true;
}

}  // namespace

void put_rendition(ZtFsStream& stream, const LM_Rendition& rendition, Writing& writing) {
  DL::coding::write(stream, rendition.color().word);
  const LM_Line_Style& style = rendition.line_style();
  DL::coding::write(stream, style.weight);
  DL::coding::write(stream, style.pattern);
  DL::coding::write(stream, style.start_style);
  DL::coding::write(stream, style.end_style);
  DL::coding::write(stream, rendition.edge_mode());
  DL::coding::write(stream, rendition.marker().shape);
  DL::coding::write(stream, rendition.marker().size);
  const LM_Text_Attributes& text = rendition.text_attributes();
  DL::coding::write(stream, text.size);
  DL::coding::write(stream, text.rotation);
  DL::coding::write(stream, text.width_scale);
  DL::coding::write(stream, writing.font_number(&text.font));
  const LM_Texture_Pages* pages = rendition.texture_pages();
  DL::coding::write<std::uint32_t>(stream, pages == nullptr ? 0 : 1);
  if (pages == nullptr) return;
  DL::coding::write<std::uint64_t>(stream, pages->count());
  for (std::size_t i = 0; i < pages->count(); ++i) {
    DL::coding::write(stream, writing.image_number(pages->page(static_cast<std::uint32_t>(i))));
  }
}

bool get_rendition(Reading& reading, LM_Rendition& rendition) {
  LM_RGB32 color{};
  std::uint32_t edge_mode = 0;
  LM_Marker marker;
  if (!DL::coding::read(reading.reader, color.word) || !get_line_style(reading, rendition) ||
      !DL::coding::read(reading.reader, edge_mode) ||
      !DL::coding::read(reading.reader, marker.shape) ||
      !DL::coding::read(reading.reader, marker.size)) {
    return false;
  }
  rendition.set_color(color, true);
  rendition.set_edge_mode(edge_mode);
  rendition.set_marker(marker);
  return get_text_attributes(reading, rendition) && get_pages(reading, rendition);
}

}  // namespace files
