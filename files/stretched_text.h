#pragma once

#include <cstdint>
#include <string>

#include "displaylist/displaylist.h"
#include "displaylist/drawables/variants.h"
#include "displaylist/text/text.h"
#include "files/export.h"

namespace files {

/// A text whose letters are narrower or wider than their font has them. Its type
/// is that of texts, so that it is found as one; its record has a tag of its
/// own, which a factory makes it for.
class FILES_API StretchedText : public DL::PalettizedDrawable<DL::DLText> {
 public:
  /// The class tag of its record: the factor, then that of the text.
  static constexpr std::uint32_t kTag = 0x40000020;

  StretchedText(LM_Rendition* rendition, double width_factor, const LM_Font& font,
                const DL::PointTemplate<double>& position, const std::wstring& text, double height,
                double rotation, const DL::BoundsTemplate<long>& bounds, DL::DisplayList* list);
  explicit StretchedText(DL::class_change::Unfilled unfilled) : PalettizedDrawable(unfilled) {}
  StretchedText(const StretchedText& other);

  bool set_text_attributes(DL::DisplayList& list) override;
  DL::Drawable* clone() override;
  void hide() override;
  void serialize_out(ZtFsStream* stream, DL::DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DL::DisplayList& list) override;

  [[nodiscard]] float width_factor() const { return m_width_factor; }

 private:
  float m_width_factor = 1.0F;
};

}  // namespace files
