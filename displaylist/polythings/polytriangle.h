#pragma once

#include "displaylist/polythings/polything.h"

namespace DL {

/// A strip of filled triangles (p0, p1, p2), (p1, p2, p3), ... through logical
/// points. Its outline is one closed loop: the even points forward, then the
/// odd ones backward.
class DISPLAYLIST_API DLPolytriangleWithNoBorder : public Polything {
 public:
  /// Copies `count` points, 3 at least.
  DLPolytriangleWithNoBorder(LM_RGB32 color, std::int32_t count, const PointTemplate<long>* points,
                             LumenHeap* heap = nullptr);
  explicit DLPolytriangleWithNoBorder(class_change::Unfilled unfilled) : Polything(unfilled) {}

  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  /// Matches the first strip of exactly this class with the same points.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  /// One vector for each edge of the outline.
  int get_vector_count() const override;
  bool get_vector(int index, VectorTemplate<long>& vector) const override;
  DrawableVectorIterator* create_vector_iterator(bool flag) override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();
  static void* _parent_type;
};

/// A strip of filled triangles whose outline is drawn one device unit wide in
/// the same colour, when the edge mode of the rendition asks for it.
class DISPLAYLIST_API DLPolytriangle : public DLPolytriangleWithNoBorder {
 public:
  /// Copies `count` points, 3 at least.
  DLPolytriangle(LM_RGB32 color, std::int32_t count, const PointTemplate<long>* points,
                 LumenHeap* heap = nullptr);
  explicit DLPolytriangle(class_change::Unfilled unfilled) : DLPolytriangleWithNoBorder(unfilled) {}

  /// Draws clipped always.
  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  /// Matches the first strip of exactly this class with the same points.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();
  static void* _parent_type;

 private:
  void draw_outline(DisplayList& list, const LM_DCI_Point* device);
};
static_assert(sizeof(void*) != 8 || sizeof(DLPolytriangle) == 48);

}  // namespace DL
