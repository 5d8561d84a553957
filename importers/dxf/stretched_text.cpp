#include "importers/dxf/stretched_text.h"

namespace importers::dxf {

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

}  // namespace importers::dxf
