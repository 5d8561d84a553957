#pragma once

#include <cstddef>
#include <vector>

#include "displaylist/core/display_list.h"
#include "displaylist/drawables/drawable.h"

namespace importers {

/// Drawables that wait until they can be added to a list in the order that
/// fills it best; owned until then.
class Batch {
 public:
  Batch() = default;
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;
  ~Batch();

  /// May throw std::bad_alloc; the drawable is then the caller's.
  void push(DL::Drawable* drawable, const DL::BoundsTemplate<long>& bounds);
  /// Adds all that wait and returns how many that were: less when memory is
  /// exhausted, and then the others are destroyed.
  std::size_t add_to(DL::DisplayList& list);
  [[nodiscard]] std::size_t size() const { return m_drawables.size(); }

 private:
  void clear();

  std::vector<DL::Drawable*> m_drawables;
  std::vector<DL::BoundsTemplate<long>> m_bounds;  ///< of each
};

}  // namespace importers
