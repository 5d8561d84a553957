// The stream record of texts.

#include <string>

#include "displaylist/core/coding.h"
#include "displaylist/core/display_list.h"
#include "displaylist/drawables/manifest.h"
#include "displaylist/text/encoded_text.h"
#include "displaylist/text/text.h"

namespace DL {

namespace {

/// The name up to a terminator, the low byte of each character.
void write_name(ZtFsStream& stream, const std::wstring& name) {
  const std::wstring_view text(name.c_str());
  coding::write(stream, static_cast<std::int32_t>(text.size()));
  for (const wchar_t character : text) {
    coding::write(stream, static_cast<std::uint8_t>(static_cast<std::uint32_t>(character) & 0xFFU));
  }
}

bool read_name(ZtFsStream& stream, std::wstring& name) {
  std::int32_t length = 0;
  if (!coding::read(stream, length)) return false;
  std::uint8_t character = 0;
  for (std::int32_t i = 0; i < length; ++i) {
    if (!coding::read(stream, character)) return false;
    name.push_back(character);
  }
  return true;
}

void write_font(ZtFsStream& stream, const LM_Font_Description& font) {
  write_name(stream, font.name);
  coding::write(stream, font.bold);
  coding::write(stream, font.italic);
  coding::write(stream, font.weight);
  coding::write(stream, font.width);
  coding::write(stream, font.character);
}

bool read_font(ZtFsStream& stream, LM_Font_Description& font) {
  font.given = LM_Font_Description::EVERY_ITEM;
  return read_name(stream, font.name) && coding::read(stream, font.bold) &&
         coding::read(stream, font.italic) && coding::read(stream, font.weight) &&
         coding::read(stream, font.width) && coding::read(stream, font.character);
}

}  // namespace

void DLText::serialize_out(ZtFsStream* stream, DisplayList& list) {
  coding::write(*stream, tag::kDLText);
  write_font(*stream, m_pFont == nullptr ? LM_Font_Description{} : m_pFont->description());
  EncodedText empty;
  (m_pText == nullptr ? empty : *m_pText).serialize_out(stream);
  coding::write(*stream, m_position);
  coding::write(*stream, m_height);
  coding::write(*stream, m_rotation);
  coding::write(*stream, m_bounds);
  Drawable::serialize_out(stream, list);
}

void DLText::serialize_in(ZtFsStream* stream, DisplayList& list) {
  m_pDisplayList = &list;
  LM_Font_Description description;
  if (!read_font(*stream, description)) return;
  m_pFont = new_font_cell(list.m_pRenderer ? list.m_pRenderer->find_or_create_font(description)
                                           : LM_Font(description));
  replace_text(new EncodedText);
  EncodedText dropped;  // what there is no memory for is read all the same
  (m_pText == nullptr ? dropped : *m_pText).serialize_in(stream);
  if (!coding::read(*stream, m_position) || !coding::read(*stream, m_height) ||
      !coding::read(*stream, m_rotation) || !coding::read(*stream, m_bounds)) {
    return;
  }
  Drawable::serialize_in(stream, list);
}

}  // namespace DL
