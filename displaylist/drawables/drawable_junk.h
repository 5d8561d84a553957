#pragma once

#include "displaylist/drawables/drawable.h"
#include "displaylist/platform/export.h"

/// A drawable that does nothing: it stands where a pointer to a drawable is
/// wanted and there is none, so that nobody has to test for null.
class DISPLAYLIST_API DrawableJunk : public DL::Drawable {
 public:
  DrawableJunk();

  void draw_unclipped(DL::DisplayList& list) override;
  void draw_clipped(DL::DisplayList& list) override;
  void add_bounds(DL::BoundsTemplate<long>& bounds) const override;
  bool remove(DL::Search& search) override;
  /// Null.
  void* type() const override;
  /// Null.
  DL::Drawable* clone() override;
  DL::Drawable* partial_clone(int first, int count) override;
  int get_vector_count() const override;
};
