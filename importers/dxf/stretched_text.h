#pragma once

#include <string>

#include "displaylist/displaylist.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/text/text.h"

namespace importers::dxf {

/// A text whose letters are narrower or wider than their font has them.
class StretchedText final : public DL::PalettizedDrawable<DL::DLText> {
 public:
  StretchedText(LM_Rendition* rendition, double width_factor, const LM_Font& font,
                const DL::PointTemplate<double>& position, const std::wstring& text, double height,
                double rotation, const DL::BoundsTemplate<long>& bounds, DL::DisplayList* list);
  StretchedText(const StretchedText& other);

  bool set_text_attributes(DL::DisplayList& list) override;
  void* type() const override;
  DL::Drawable* clone() override;
  /// Nothing: it is always seen.
  void hide() override;

  static void* my_type();

 private:
  float m_width_factor;
};

}  // namespace importers::dxf
