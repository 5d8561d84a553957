#pragma once

#include <utility>

#include "displaylist/core/class_change.h"
#include "displaylist/drawables/drawable.h"
#include "displaylist/platform/export.h"

namespace DL {

/// A T that keeps its place, bounds, type and record, but does not draw.
template <class T>
class DISPLAYLIST_API HiddenDrawable : public T {
 public:
  explicit HiddenDrawable(class_change::Unfilled unfilled) : T(unfilled) {}

  void draw_unclipped(DisplayList&) override {}
  void draw_clipped(DisplayList&) override {}
  Drawable* clone() override {
    Drawable* copy = T::clone();
    if (copy != nullptr) copy->hide();
    return copy;
  }
  void hide() override {}
  void unhide() override { class_change::become<T>(this); }
  bool is_hidden() const override { return true; }
};

/// A T that draws with a rendition of its own instead of a colour; the client
/// owns the rendition, which outlives the drawable.
template <class T>
class DISPLAYLIST_API PalettizedDrawable : public T {
 public:
  explicit PalettizedDrawable(class_change::Unfilled unfilled) : T(unfilled) {}
  /// A T constructed from a colour and `arguments`, drawn with the rendition,
  /// which is not null.
  template <class... Arguments>
  explicit PalettizedDrawable(LM_Rendition* rendition, Arguments&&... arguments)
      : T(LM_RGB32{}, std::forward<Arguments>(arguments)...) {
    this->m_colorData.m_pRendition = rendition;
  }

  Drawable* clone() override { return palettized(T::clone()); }
  /// Only for a T that can be split.
  Drawable* partial_clone(int first, int n) override {
    return palettized(T::partial_clone(first, n));
  }
  void hide() override { class_change::become<HiddenDrawable<PalettizedDrawable<T>>>(this); }
  bool is_palettized() const override { return true; }
  LM_Rendition* rendition(DisplayList&) override { return this->m_colorData.m_pRendition; }

 private:
  Drawable* palettized(Drawable* copy) const {
    if (copy == nullptr) return nullptr;
    class_change::become<PalettizedDrawable<T>>(copy);
    copy->m_colorData = this->m_colorData;
    return copy;
  }
};

}  // namespace DL
