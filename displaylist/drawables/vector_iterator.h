#pragma once

#include <cstddef>
#include <cstdint>

#include "displaylist/core/geometry.h"
#include "displaylist/platform/export.h"

namespace DL {

class Drawable;

/// Steps through the outline of a drawable, vector by vector, in logical
/// coordinates: as it stands by index, through the drawable's get_vector.
///
/// The first vector is there after initialisation; next() goes on to the second.
/// The returned pointer is the iterator's own m_vector, overwritten by the next
/// step. The drawable outlives the iterator and does not change meanwhile.
class DISPLAYLIST_API DrawableVectorIterator {
 public:
  DrawableVectorIterator() = default;
  DrawableVectorIterator(const DrawableVectorIterator&) = delete;
  DrawableVectorIterator& operator=(const DrawableVectorIterator&) = delete;
  virtual ~DrawableVectorIterator();

  /// The next or the previous vector; null past either end and on an iterator
  /// that was not initialised.
  virtual VectorTemplate<long>* next();
  virtual VectorTemplate<long>* prev();

  /// Binds the iterator to a drawable; true when there is a first vector.
  bool initialize(Drawable* drawable);

  static void* operator new(std::size_t size) noexcept;
  static void operator delete(void* memory) noexcept;

  Drawable* m_pDrawable = nullptr;
  bool m_bDone = true;  ///< the last step ran off an end, or there is no vector
  VectorTemplate<long> m_vector{};
  std::int32_t m_count = 0;
  std::int32_t m_index = 0;
  bool m_bFast = false;  ///< the drawable answers by index
};

}  // namespace DL
