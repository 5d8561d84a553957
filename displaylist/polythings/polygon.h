#pragma once

#include "displaylist/polythings/polything.h"

namespace DL {

/// A filled polygon through logical points; the last joins the first. Not
/// stored in streams.
class DISPLAYLIST_API DLPolygon : public Polything {
 public:
  /// Copies `count` points, 3 at least.
  DLPolygon(LM_RGB32 color, std::int32_t count, const PointTemplate<long>* points,
            LumenHeap* heap = nullptr);
  explicit DLPolygon(class_change::Unfilled unfilled) : Polything(unfilled) {}

  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  /// Matches the first polygon with the same points and colour.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  /// One vector for each edge, the closing one last.
  int get_vector_count() const override;
  bool get_vector(int index, VectorTemplate<long>& vector) const override;
  DrawableVectorIterator* create_vector_iterator(bool flag) override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  /// Writes and reads nothing.
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();
  static void* _parent_type;

 private:
  void draw(DisplayList& list, bool clip);
};
static_assert(sizeof(void*) != 8 || sizeof(DLPolygon) == 48);

}  // namespace DL
