#pragma once

#include "displaylist/polythings/polything.h"

namespace DL {

/// Separate segments between logical points: each pair of points is one, an odd
/// last point is left alone. A segment that falls on one device point becomes
/// a dot, a disc, or with the list's m_bWideDots a stroke as wide as the line
/// weight.
class DISPLAYLIST_API DLPolysegment : public Polything {
 public:
  /// Copies `count` points, two for each segment.
  DLPolysegment(LM_RGB32 color, std::int32_t count, const PointTemplate<long>* points,
                LumenHeap* heap = nullptr);
  explicit DLPolysegment(class_change::Unfilled unfilled) : Polything(unfilled) {}

  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  /// True: a search that reaches a polysegment takes it, whatever it looks for.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  /// A plain polysegment of `n` segments from segment `first` on; the run is
  /// not checked.
  Drawable* partial_clone(int first, int n) override;
  void hide() override;
  /// The number of segments. The vector iterator, unlike get_vector, walks the
  /// gaps between them as well.
  int get_vector_count() const override;
  bool get_vector(int index, VectorTemplate<long>& vector) const override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();
  static void* _parent_type;

 private:
  void draw(DisplayList& list, bool clip);
};
static_assert(sizeof(void*) != 8 || sizeof(DLPolysegment) == 48);

}  // namespace DL
