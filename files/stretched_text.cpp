#include "files/stretched_text.h"

#include "displaylist/core/coding.h"

namespace files {

StretchedText::StretchedText(LM_Rendition* rendition, double width_factor, const LM_Font& font,
                             const DL::PointTemplate<double>& position, const std::wstring& text,
                             double height, double rotation, const DL::BoundsTemplate<long>& bounds,
                             DL::DisplayList* list)
    : PalettizedDrawable(rendition, font, position, text.c_str(),
                         static_cast<std::int32_t>(text.size() + 1), height, rotation, bounds, list,
                         true),
      m_width_factor(static_cast<float>(width_factor)) {}

StretchedText::StretchedText(const StretchedText& other)
    : PalettizedDrawable(other), m_width_factor(other.m_width_factor) {
  m_colorData = other.m_colorData;
}

bool StretchedText::set_text_attributes(DL::DisplayList& list) {
  if (!DLText::set_text_attributes(list)) return false;
  if (m_width_factor != 1.0F) rendition(list)->set_text_width_scale(m_width_factor);
  return true;
}

DL::Drawable* StretchedText::clone() {
  return new StretchedText(*this);
}

void StretchedText::hide() {
  DL::class_change::become<DL::HiddenDrawable<StretchedText>>(this);
}

void StretchedText::serialize_out(ZtFsStream* stream, DL::DisplayList& list) {
  DL::coding::write(*stream, kTag);
  DL::coding::write(*stream, m_width_factor);
  DLText::serialize_out(stream, list);
}

void StretchedText::serialize_in(ZtFsStream* stream, DL::DisplayList& list) {
  DLText& text = *this;
  std::uint32_t text_tag = 0;
  static_cast<void>(DL::coding::read(*stream, m_width_factor) &&
                    DL::coding::read(*stream, text_tag));
  // Reading a palette colour makes a palettized text of a plain one; without a
  // palette it stays plain, since there is no rendition for the factor.
  DL::class_change::become<DLText>(&text);
  text.DLText::serialize_in(stream, list);
  if (text.is_palettized()) DL::class_change::become<StretchedText>(&text);
}

}  // namespace files
