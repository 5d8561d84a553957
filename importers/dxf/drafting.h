#pragma once

#include "importers/dxf/model.h"
#include "importers/dxf/plan.h"

namespace importers::dxf {

/// How entities are drawn.
struct DraftStyle {
  Pen pen;
  bool fill = true;
  Affine to_root;  ///< of the plan's coordinates to the drawing's, but for the place
  const Model& model;
};

/// Appends the shapes of an entity, none of an insert. False when there is
/// nothing of it to be seen, or it lies too far away.
bool draft(const Geometry& geometry, const Affine& affine, const DraftStyle& style, Plan& plan);

/// Appends a shape whose extent is known. False, and nothing done, when it lies
/// too far away.
bool append(Plan& plan, Shape shape);

}  // namespace importers::dxf
