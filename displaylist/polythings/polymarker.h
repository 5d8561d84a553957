#pragma once

#include "displaylist/polythings/polything.h"

namespace DL {

/// The rendition's marker at each of the logical points. Not stored in streams.
class DISPLAYLIST_API DLPolymarker : public Polything {
 public:
  /// Copies `count` points.
  DLPolymarker(LM_RGB32 color, std::int32_t count, const PointTemplate<long>* points,
               LumenHeap* heap = nullptr);
  explicit DLPolymarker(class_change::Unfilled unfilled) : Polything(unfilled) {}

  /// The points, not the markers, tell whether it lies inside the clip rectangle.
  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  /// Matches the first polymarker with the same points and colour.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  /// Writes and reads nothing.
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();
  static void* _parent_type;

 private:
  void draw(DisplayList& list, bool clip);
};
static_assert(sizeof(void*) != 8 || sizeof(DLPolymarker) == 48);

}  // namespace DL
