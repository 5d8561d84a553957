#include "lumen/text/text_layout_p.h"

#include <hb.h>

#include <algorithm>

namespace lumen {
namespace {

/// Of a character that shares the glyph of one before it.
constexpr double no_glyph = -1;

hb_script_t script_of(std::uint32_t character) {
  return hb_unicode_script(hb_unicode_funcs_get_default(), character);
}

/// Whether any script uses it.
bool is_of_no_script(std::uint32_t script) {
  return script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED || script == HB_SCRIPT_UNKNOWN;
}

/// What a character has to do with the one before it.
enum class Bond : std::uint8_t { none, mark, control };

Bond bond_of(std::uint32_t character) {
  const bool selects_variant = (character >= 0xFE00 && character <= 0xFE0F) ||
                               (character >= 0xE0100 && character <= 0xE01EF);
  if (selects_variant) return Bond::control;
  switch (hb_unicode_general_category(hb_unicode_funcs_get_default(), character)) {
    case HB_UNICODE_GENERAL_CATEGORY_FORMAT:
      return Bond::control;
    case HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK:
    case HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK:
      return Bond::mark;
    default:
      return Bond::none;
  }
}

/// The face for a character after one in another face: a mark has the face of
/// what it is on where it can. One that no face has is shown as missing.
const FontFace* face_for(std::uint32_t character, const FontFace* before, const FontSet& fonts) {
  // The font first: most characters are neither marks nor missing.
  const Bond bond = character < 0x300 ? Bond::none : bond_of(character);
  if (bond == Bond::control) return before;
  if (bond == Bond::mark && before->glyph_of(character) != 0) return before;
  if (const FontFace* face = fonts.face_with(character)) return face;
  return bond == Bond::mark ? before : fonts.face();
}

}  // namespace

TextLayout::TextLayout() : m_buffer(hb_buffer_create()) {}

TextLayout::~TextLayout() {
  hb_buffer_destroy(m_buffer);
}

TextRun TextLayout::set(const TextCharacters& text, const FontSet& fonts) {
  TextRun run;
  run.widths.assign(static_cast<std::size_t>(text.string_length()), 0.0F);
  if (fonts.face() == nullptr) return run;
  const FontFace::Metrics& metrics = fonts.face()->metrics();
  run.ascent = metrics.ascent;
  run.descent = metrics.descent;
  run.x_height = metrics.x_height;
  run.cap_height = metrics.cap_height;

  m_end = 0;
  m_advances.assign(text.size(), no_glyph);
  m_levels.assign(text.values());
  find_scripts(text.values());
  cut(text.values(), fonts);
  order();
  for (const Piece& piece : m_pieces) shape(text, piece, run);
  share_widths(text, run);
  run.advance = static_cast<float>(m_end);
  return run;
}

void TextLayout::find_scripts(const std::vector<std::uint32_t>& values) {
  m_scripts.resize(values.size());
  std::transform(values.begin(), values.end(), m_scripts.begin(), script_of);
  // What is of no script goes with what is before it, at the start with what
  // comes first.
  const auto first = std::find_if_not(m_scripts.begin(), m_scripts.end(), is_of_no_script);
  std::uint32_t script = HB_SCRIPT_COMMON;
  if (first != m_scripts.end()) script = *first;
  for (std::uint32_t& own : m_scripts) {
    if (is_of_no_script(own)) own = script;
    script = own;
  }
}

void TextLayout::cut(const std::vector<std::uint32_t>& values, const FontSet& fonts) {
  m_pieces.clear();
  const FontFace* face = fonts.face();
  for (std::size_t i = 0; i < values.size(); ++i) {
    face = face_for(values[i], face, fonts);
    if (!m_pieces.empty()) {
      Piece& last = m_pieces.back();
      if (last.face == face && last.script == m_scripts[i] && last.level == m_levels[i]) {
        last.end = i + 1;
        continue;
      }
    }
    m_pieces.push_back({i, i + 1, face, m_scripts[i], m_levels[i]});
  }
}

void TextLayout::order() {
  std::uint8_t highest = 0;
  for (const Piece& piece : m_pieces) highest = std::max(highest, piece.level);
  for (std::uint8_t level = highest; level > 0; --level) {
    const auto is_lower = [level](const Piece& piece) { return piece.level < level; };
    for (auto start = m_pieces.begin(); start != m_pieces.end();) {
      start = std::find_if_not(start, m_pieces.end(), is_lower);
      const auto end = std::find_if(start, m_pieces.end(), is_lower);
      std::reverse(start, end);
      start = end;
    }
  }
}

void TextLayout::shape(const TextCharacters& text, const Piece& piece, TextRun& run) {
  const std::vector<std::uint32_t>& values = text.values();
  hb_buffer_clear_contents(m_buffer);
  // The whole text, since letters join those of other pieces.
  hb_buffer_add_codepoints(m_buffer, values.data(), static_cast<int>(values.size()),
                           static_cast<unsigned>(piece.start),
                           static_cast<int>(piece.end - piece.start));
  hb_buffer_set_direction(m_buffer, piece.level % 2 == 0 ? HB_DIRECTION_LTR : HB_DIRECTION_RTL);
  hb_buffer_set_script(m_buffer, static_cast<hb_script_t>(piece.script));
  hb_shape(piece.face->shaper(), m_buffer, nullptr, 0);

  unsigned count = 0;
  const hb_glyph_info_t* glyphs = hb_buffer_get_glyph_infos(m_buffer, &count);
  const hb_glyph_position_t* places = hb_buffer_get_glyph_positions(m_buffer, &count);
  const double scale = 1 / piece.face->units_per_em();
  for (unsigned i = 0; i < count; ++i) {
    const std::size_t first = glyphs[i].cluster;
    double advance = places[i].x_advance * scale;
    if (advance > 0) advance += piece.face->extra_advance();
    run.glyphs.push_back({piece.face, glyphs[i].codepoint,
                          static_cast<float>(m_end + places[i].x_offset * scale),
                          static_cast<float>(places[i].y_offset * scale),
                          static_cast<float>(advance), text.place(first)});
    m_advances[first] = std::max(m_advances[first], 0.0) + advance;
    m_end += advance;
  }
}

void TextLayout::share_widths(const TextCharacters& text, TextRun& run) const {
  for (std::size_t first = 0; first < text.size();) {
    std::size_t beyond = first + 1;
    while (beyond < text.size() && m_advances[beyond] == no_glyph) ++beyond;
    const std::int32_t from = text.place(first);
    const std::int32_t to = text.place(beyond);
    const double width = std::max(m_advances[first], 0.0) / (to - from);
    std::fill(run.widths.begin() + from, run.widths.begin() + to, static_cast<float>(width));
    first = beyond;
  }
}

}  // namespace lumen
