#pragma once

#include "displaylist/polythings/elliptical_arc.h"

namespace DL {

/// A sector of an ellipse, told apart by its class alone: it is drawn like the
/// arc.
class DISPLAYLIST_API DLEllipticalPie : public DLEllipticalArc {
 public:
  using DLEllipticalArc::DLEllipticalArc;

  /// Matches the first pie with the same centre, radii and rotation, whatever
  /// its angles; a search for a pie that has a NaN among those finds none.
  bool remove(Search& search) override;
  void* type() const override;
  Drawable* clone() override;
  void hide() override;
  void dump(std::ostream& os, int level, DisplayListDebug& statistics) const override;
  void serialize_out(ZtFsStream* stream, DisplayList& list) override;
  void serialize_in(ZtFsStream* stream, DisplayList& list) override;

  static void* my_type();
  static void* _parent_type;
};
static_assert(sizeof(void*) != 8 || sizeof(DLEllipticalPie) == 72);

}  // namespace DL
