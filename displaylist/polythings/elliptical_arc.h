#pragma once

#include "displaylist/polythings/ellipse.h"

namespace DL {

/// The part of an ellipse from one angle up to another; through 2 pi where the
/// end lies below the start, the whole ellipse from 2 pi - 0.01 on.
class DISPLAYLIST_API DLEllipticalArc : public DLEllipse {
 public:
  DLEllipticalArc(LM_RGB32 color, PointTemplate<long> center, std::int32_t major,
                  std::int32_t minor, float rotation, float start, float end,
                  DisplayList* display_list);
  explicit DLEllipticalArc(class_change::Unfilled unfilled) : DLEllipse(unfilled) {}

  /// Matches the first arc with the same centre and radii, whatever its angles
  /// and rotation; an arc that has a NaN among those is never found.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;
  float start_angle() const override;
  float end_angle() const override;

  static void* my_type();

  float start = 0.0F;  ///< radians, before the rotation
  float end = 0.0F;    ///< radians, before the rotation

  static void* _parent_type;

 protected:
  /// Whether the angles are numbers; only then a search for this arc finds any.
  [[nodiscard]] bool has_angles() const;
};
static_assert(sizeof(void*) != 8 || sizeof(DLEllipticalArc) == 72);

}  // namespace DL
