#pragma once

#include "displaylist/polythings/polything.h"

namespace DL {

/// A cloud of dots at logical points. With the list's m_bWideDots and a line
/// weight above 1 each dot is a solid horizontal stroke as long as the weight.
/// Points that follow each other onto one device point are drawn once; the
/// last point is drawn first.
class DISPLAYLIST_API DLPolydot : public Polything {
 public:
  /// Copies `count` points.
  DLPolydot(LM_RGB32 color, std::int32_t count, const PointTemplate<long>* points,
            LumenHeap* heap = nullptr);
  explicit DLPolydot(class_change::Unfilled unfilled) : Polything(unfilled) {}

  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  /// True: a search that reaches a polydot takes it, whatever it looks for.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  /// A plain polydot of `n` points from point `first` on; the run is not checked.
  Drawable* partial_clone(int first, int n) override;
  void hide() override;
  int get_vector_count() const override;
  /// The point as both ends. The index is not checked.
  bool get_vector(int index, VectorTemplate<long>& vector) const override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();
  static void* _parent_type;

 private:
  void draw(DisplayList& list, bool clip);
  void draw_device_points(DisplayList& list, bool clip, LM_DCI_Point* device);
};
static_assert(sizeof(void*) != 8 || sizeof(DLPolydot) == 48);

}  // namespace DL
