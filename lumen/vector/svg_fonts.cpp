#include "lumen/vector/svg_fonts_p.h"

#include <hb-ot.h>
#include <hb-subset.h>
#include <hb.h>

#include <algorithm>
#include <array>
#include <vector>

#include "lumen/vector/svg_write_p.h"

namespace lumen {
namespace {

std::string name_of(hb_face_t* face, hb_ot_name_id_t id) {
  std::array<char, 256> name{};
  auto size = static_cast<unsigned>(name.size());
  hb_ot_name_get_utf8(face, id, HB_LANGUAGE_INVALID, &size, name.data());
  std::string result(name.data());
  // They would end the string of a style sheet.
  std::erase_if(
      result, [](char c) { return c == '\'' || c == '\\' || static_cast<unsigned char>(c) < ' '; });
  return result;
}

std::string family_of(hb_face_t* face) {
  const std::string family = name_of(face, HB_OT_NAME_ID_TYPOGRAPHIC_FAMILY);
  return family.empty() ? name_of(face, HB_OT_NAME_ID_FONT_FAMILY) : family;
}

/// The nearest of the widths that style sheets know by name.
std::string_view stretch_of(hb_font_t* font) {
  struct Width {
    float limit;
    std::string_view name;
  };
  constexpr Width widths[] = {
      {56, "ultra-condensed"}, {69, "extra-condensed"}, {81, "condensed"}, {94, "semi-condensed"},
      {106, "normal"},         {119, "semi-expanded"},  {137, "expanded"}, {175, "extra-expanded"}};
  const float percent = hb_style_get_value(font, HB_STYLE_TAG_WIDTH);
  for (const auto& [limit, name] : widths) {
    if (percent < limit) return name;
  }
  return "ultra-expanded";
}

/// Hands on the name and the value of every property that is not the usual one.
template <class Take>
void visit_style(hb_font_t* font, Take take) {
  const float weight = std::clamp(hb_style_get_value(font, HB_STYLE_TAG_WEIGHT), 1.0F, 1000.0F);
  if (weight != 400) take("font-weight", std::to_string(static_cast<int>(weight)));
  if (hb_style_get_value(font, HB_STYLE_TAG_ITALIC) > 0) {
    take("font-style", "italic");
  } else if (hb_style_get_value(font, HB_STYLE_TAG_SLANT_ANGLE) != 0) {
    take("font-style", "oblique");
  }
  if (stretch_of(font) != "normal") take("font-stretch", std::string(stretch_of(font)));
}

/// Holds the axes of a variable font where the face has them.
void pin_axes(hb_subset_input_t* input, hb_font_t* font) {
  hb_face_t* face = hb_font_get_face(font);
  unsigned count = hb_ot_var_get_axis_count(face);
  unsigned set = 0;
  const float* values = hb_font_get_var_coords_design(font, &set);
  std::vector<hb_ot_var_axis_info_t> axes(count);
  hb_ot_var_get_axis_infos(face, 0, &count, axes.data());
  for (unsigned i = 0; i < count; ++i) {
    const float value = i < set ? values[i] : axes[i].default_value;
    hb_subset_input_pin_axis_location(input, face, axes[i].tag, value);
  }
}

/// The bytes of a font file with what the sets name; empty when there is no way.
std::string subset_of(hb_font_t* font, const hb_set_t* characters, const hb_set_t* glyphs) {
  hb_subset_input_t* input = hb_subset_input_create_or_fail();
  if (input == nullptr) return {};
  hb_set_union(hb_subset_input_unicode_set(input), characters);
  hb_set_union(hb_subset_input_glyph_set(input), glyphs);
  hb_subset_input_set_flags(input, HB_SUBSET_FLAGS_NO_HINTING);
  pin_axes(input, font);
  hb_face_t* subset = hb_subset_or_fail(hb_font_get_face(font), input);
  hb_subset_input_destroy(input);
  if (subset == nullptr) return {};
  hb_blob_t* blob = hb_face_reference_blob(subset);
  unsigned size = 0;
  const char* bytes = hb_blob_get_data(blob, &size);
  std::string result(bytes, size);
  hb_blob_destroy(blob);
  hb_face_destroy(subset);
  return result;
}

}  // namespace

void SvgFonts::Delete::operator()(hb_set_t* set) const {
  hb_set_destroy(set);
}

SvgFonts::Font& SvgFonts::font(const FontFace& face) {
  const auto [place, is_new] = m_places.try_emplace(&face, m_fonts.size());
  if (!is_new) return m_fonts[place->second];
  Font& font = m_fonts.emplace_back();
  font.face = &face;
  font.characters.reset(hb_set_create());
  font.glyphs.reset(hb_set_create());
  font.name = "dl" + std::to_string(place->second);
  font.attributes = "font-family=\"" + font.name + ", '";
  append_escaped(font.attributes, family_of(hb_font_get_face(face.shaper())));
  font.attributes += "', sans-serif\"";
  visit_style(face.shaper(), [&font](const std::string& name, const std::string& value) {
    font.style.append(name).append(":").append(value).append(";");
    font.attributes.append(" ").append(name).append("=\"").append(value).append("\"");
  });
  return font;
}

void SvgFonts::add_text(const FontFace& face, std::string_view text) {
  hb_buffer_t* buffer = hb_buffer_create();
  const int size = static_cast<int>(text.size());
  hb_buffer_add_utf8(buffer, text.data(), size, 0, size);
  unsigned count = 0;
  const hb_glyph_info_t* characters = hb_buffer_get_glyph_infos(buffer, &count);
  hb_set_t* set = font(face).characters.get();
  for (unsigned i = 0; i < count; ++i) hb_set_add(set, characters[i].codepoint);
  hb_buffer_destroy(buffer);
}

void SvgFonts::add_glyph(const FontFace& face, std::uint32_t glyph) {
  hb_set_add(font(face).glyphs.get(), glyph);
}

const std::string& SvgFonts::attributes(const FontFace& face) {
  return font(face).attributes;
}

std::string SvgFonts::rules() const {
  std::string rules;
  for (const Font& font : m_fonts) {
    const std::string bytes =
        subset_of(font.face->shaper(), font.characters.get(), font.glyphs.get());
    if (bytes.empty()) continue;
    rules +=
        "@font-face{font-family:" + font.name + ";" + font.style + "src:url(data:font/ttf;base64,";
    append_base64(rules, bytes);
    rules += ")}\n";
  }
  return rules;
}

}  // namespace lumen
