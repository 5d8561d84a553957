#pragma once

#include "displaylist/core/class_change.h"

namespace DL {

class DisplayList;
class Drawable;

/// Draws drawables of exactly one class that follow each other in a leaf, without
/// a virtual call for each. It makes the calls that they would make one by one.
struct DrawableRun {
  /// Of the class.
  class_change::OperationTable table;
  /// Draws `first`, which is of the class, and those that follow it up to the first
  /// of another class, as far as their info lets them draw; `clipped` with the
  /// clipped operations. Returns that first of another class, null at the end.
  Drawable* (*draw)(Drawable* first, DisplayList& list, bool clipped);
  /// Whether `first`, which is of the class, and all that follow it are of the class,
  /// have no info, and are soon drawn: no more than a dot or a polyline of few points
  /// each, between their own.
  bool (*is_light)(const Drawable* first);
};

}  // namespace DL
