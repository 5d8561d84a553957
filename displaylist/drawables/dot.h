#pragma once

#include "displaylist/drawables/drawable.h"

namespace DL {

/// One device pixel at a logical point, in the drawable's colour.
class DISPLAYLIST_API DLDot : public Drawable {
 public:
  DLDot(LM_RGB32 color, PointTemplate<long> point);
  explicit DLDot(class_change::Unfilled unfilled);

  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  void add_bounds(BoundsTemplate<long>& bounds) const override;
  /// Matches the first dot at the same point.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  int get_vector_count() const override;
  /// The point as both ends, for any index.
  bool get_vector(int index, VectorTemplate<long>& vector) const override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();

  PointTemplate<long> m_point;  ///< logical

  static void* _parent_type;

 protected:
  void draw_unclipped_colored(DisplayList& list, const LM_RGB32* color);
  void draw_clipped_colored(DisplayList& list, const LM_RGB32* color);
};
static_assert(sizeof(void*) != 8 || sizeof(DLDot) == 40);

/// A dot that hands its own colour word to the renderer beside the point. Not
/// stored in streams.
class DISPLAYLIST_API DLColorizedDot : public DLDot {
 public:
  /// `color` is the drawable's colour, `own_color` the one that the dot gets.
  DLColorizedDot(LM_RGB32 color, PointTemplate<long> point, LM_RGB32 own_color);
  explicit DLColorizedDot(class_change::Unfilled unfilled);

  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  /// Matches the first colorized dot at the same point and of the same own colour.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  /// Writes and reads nothing.
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();

  LM_RGB32 m_color;

  static void* _parent_type;
};
static_assert(sizeof(void*) != 8 || sizeof(DLColorizedDot) == 48);

}  // namespace DL
