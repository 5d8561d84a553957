#pragma once

#include "displaylist/polythings/polytriangle.h"

namespace DL {

/// A strip of triangles with a colour at each vertex, interpolated between
/// them. It has no outline. Not stored in streams.
class DISPLAYLIST_API DLGouraudPolytriangle : public DLPolytriangle {
 public:
  /// Copies `count` points and colours, 3 at least.
  DLGouraudPolytriangle(LM_RGB32 color, std::int32_t count, const PointTemplate<long>* points,
                        const LM_RGB32* colors, LumenHeap* heap = nullptr);
  explicit DLGouraudPolytriangle(class_change::Unfilled unfilled) : DLPolytriangle(unfilled) {}

  void draw_clipped(DisplayList& list) override;
  /// Matches the first Gouraud strip with the same points, whatever its colours.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  ~DLGouraudPolytriangle() override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  /// Writes and reads nothing.
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();

  LM_RGB32* colors = nullptr;  ///< one per point

  static void* _parent_type;
};
static_assert(sizeof(void*) != 8 || sizeof(DLGouraudPolytriangle) == 56);

}  // namespace DL
