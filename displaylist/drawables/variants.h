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
  /// A T constructed from a colour and `arguments`, drawn with the rendition.
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

/// Turns a drawable that was read with a palette colour into its palettized
/// variant, by its type token; false when its class has none.
bool palettize(Drawable& drawable);

/// Constructs the library's own class for a stream tag on the heap, unfilled;
/// null for other tags or when memory is exhausted.
Drawable* construct_built_in(std::uint32_t tag, LumenHeap* heap);

/// Whether one of the library's own classes has this stream tag.
bool is_built_in(std::uint32_t tag);

}  // namespace DL
