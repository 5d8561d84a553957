#pragma once

#include "displaylist/core/geometry.h"

namespace DL {

class Drawable;

/// Describes a drawable to find for removal.
struct Search {
  Drawable* prototype = nullptr;  ///< a drawable of the same class and geometry
  void* type = nullptr;           ///< the class's type token
  BoundsTemplate<long> m_bounds;  ///< the drawable's logical bounds
  /// Set by a drawable that dealt with the match itself and stays; the client
  /// clears it before a search.
  bool handled = false;
  /// Set by Group::detach_fast: the drawable found, which is the caller's now, or
  /// null.
  Drawable* m_pDetached = nullptr;
};

}  // namespace DL
