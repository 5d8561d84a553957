#pragma once

#include "displaylist/drawables/drawable.h"

namespace DL {

/// Evenly spaced dots without a point array. They follow the list's scale and
/// offset, never its rotation. Not stored in streams.
class DISPLAYLIST_API DLRowOfDots : public Drawable {
 public:
  /// `dot_count` dots from `origin` on, each `step` further than the one before,
  /// both logical; positions wrap at the 32-bit limits. Below 1 there are none.
  DLRowOfDots(LM_RGB32 color, PointTemplate<long> origin, PointTemplate<long> step,
              std::int32_t dot_count);
  explicit DLRowOfDots(class_change::Unfilled unfilled) : Drawable(unfilled) {}

  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  /// Widens by the first and the last dot.
  void add_bounds(BoundsTemplate<long>& bounds) const override;
  /// Matches the first row with the same origin, step and count, whatever its
  /// colour.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  /// Writes and reads nothing.
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();

  PointTemplate<long> origin{};  ///< logical
  PointTemplate<long> step{};    ///< logical
  std::int32_t dot_count = 0;

  static void* _parent_type;

 private:
  void draw(DisplayList& list, bool clip);
};
static_assert(sizeof(void*) != 8 || sizeof(DLRowOfDots) == 56);

}  // namespace DL
