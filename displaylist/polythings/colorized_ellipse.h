#pragma once

#include "displaylist/polythings/elliptical_arc.h"

namespace DL {

/// An arc with a fill colour of its own. With `use_arc` it is an arc whose
/// area up to the chord is filled, else a filled sector, whose angles the
/// renderer gets as they are stored, whatever the list's transform. Not stored
/// in streams.
class DISPLAYLIST_API DLColorizedEllipse : public DLEllipticalArc {
 public:
  /// `color` is that of the arc, `fill_color` that of the area.
  DLColorizedEllipse(LM_RGB32 color, PointTemplate<long> center, std::int32_t major,
                     std::int32_t minor, float rotation, float start, float end,
                     LM_RGB32 fill_color, bool use_arc, DisplayList* display_list);
  explicit DLColorizedEllipse(class_change::Unfilled unfilled) : DLEllipticalArc(unfilled) {}

  void draw_clipped(DisplayList& list) override;
  /// Matches the first colorized ellipse with equal geometry, fill colour and
  /// `use_arc`.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  /// Writes and reads nothing.
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();

  LM_RGB32 fill_color{};
  bool use_arc = false;

  static void* _parent_type;
};
static_assert(sizeof(void*) != 8 || sizeof(DLColorizedEllipse) == 80);

}  // namespace DL
