#pragma once

#include <string>

#include "displaylist/displaylist.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/text/text.h"

namespace importers::dxf {

/// A text whose letters are narrower or wider than their font has them. Its type
/// is that of texts, so that it is found and written as one; a stream does not
/// hold the factor.
class StretchedText : public DL::PalettizedDrawable<DL::DLText> {
 public:
  StretchedText(LM_Rendition* rendition, double width_factor, const LM_Font& font,
                const DL::PointTemplate<double>& position, const std::wstring& text, double height,
                double rotation, const DL::BoundsTemplate<long>& bounds, DL::DisplayList* list);
  explicit StretchedText(DL::class_change::Unfilled unfilled) : PalettizedDrawable(unfilled) {}
  StretchedText(const StretchedText& other);

  bool set_text_attributes(DL::DisplayList& list) override;
  DL::Drawable* clone() override;
  void hide() override;

 private:
  float m_width_factor = 1.0F;
};

}  // namespace importers::dxf
