#pragma once

#include "displaylist/polythings/polything.h"

namespace DL {

/// An open chain of segments through logical points, stroked in the drawable's
/// colour with the line style of its rendition. A polyline that falls on one
/// device point becomes a dot, or with the list's m_bWideDots a stroke as wide
/// as the line weight.
class DISPLAYLIST_API DLPolyline : public Polything {
 public:
  /// Copies `count` points, 2 at least.
  DLPolyline(LM_RGB32 color, std::int32_t count, const PointTemplate<long>* points,
             LumenHeap* heap = nullptr);
  explicit DLPolyline(class_change::Unfilled unfilled) : Polything(unfilled) {}

  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  /// Matches the first polyline with the same points, whatever its colour.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  /// A plain polyline of the `n` segments from segment `first` on; the run is
  /// not checked.
  Drawable* partial_clone(int first, int n) override;
  void hide() override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();
  static void* _parent_type;

 private:
  void draw(DisplayList& list, bool clip);
};

/// A polyline with a colour at each vertex, interpolated along the segments.
/// Not stored in streams.
class DISPLAYLIST_API DLGouraudPolyline : public DLPolyline {
 public:
  /// Copies `count` points and colours, 2 at least.
  DLGouraudPolyline(LM_RGB32 color, std::int32_t count, const PointTemplate<long>* points,
                    const LM_RGB32* colors, LumenHeap* heap = nullptr);
  explicit DLGouraudPolyline(class_change::Unfilled unfilled) : DLPolyline(unfilled) {}

  void draw_unclipped(DisplayList& list) override;
  void draw_clipped(DisplayList& list) override;
  /// Matches the first Gouraud polyline with the same points, whatever its colours.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  ~DLGouraudPolyline() override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  /// Writes and reads nothing.
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();

  LM_RGB32* colors = nullptr;  ///< one per point

  static void* _parent_type;

 private:
  void draw_gouraud(DisplayList& list, bool clip);
};
static_assert(sizeof(void*) != 8 || sizeof(DLPolyline) == 48);
static_assert(sizeof(void*) != 8 || sizeof(DLGouraudPolyline) == 56);

}  // namespace DL
