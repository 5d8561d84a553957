#pragma once

#include <cstdint>

#include "displaylist/platform/points.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace DL {

#if defined(__SSE2__)

/// Takes device points one by one and tells whether all lie inside a rectangle or
/// on its border.
class InsideTest {
 public:
  explicit InsideTest(const LM_Clip_Rectangle& rectangle)
      : m_min(_mm_set_epi32(0, 0, rectangle.min_y, rectangle.min_x)),
        m_max(_mm_set_epi32(0, 0, rectangle.max_y, rectangle.max_x)) {}

  void operator()(const LM_DCI_Point& point) {
    const __m128i xy = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(&point));
    const __m128i beyond = _mm_or_si128(_mm_cmpgt_epi32(m_min, xy), _mm_cmpgt_epi32(xy, m_max));
    m_outside = _mm_or_si128(m_outside, beyond);
  }
  [[nodiscard]] bool all_inside() const { return _mm_movemask_epi8(m_outside) == 0; }

 private:
  __m128i m_min;
  __m128i m_max;
  __m128i m_outside = _mm_setzero_si128();
};

#else

class InsideTest {
 public:
  explicit InsideTest(const LM_Clip_Rectangle& rectangle) : m_rectangle(rectangle) {}

  void operator()(const LM_DCI_Point& point) { m_inside = m_inside && m_rectangle.contains(point); }
  [[nodiscard]] bool all_inside() const { return m_inside; }

 private:
  LM_Clip_Rectangle m_rectangle;
  bool m_inside = true;
};

#endif

/// Whether every device point lies inside the rectangle or on its border.
inline bool all_inside(const LM_Clip_Rectangle& rectangle, const LM_DCI_Point* points,
                       std::int32_t count) {
  InsideTest test(rectangle);
  for (std::int32_t i = 0; i < count; ++i) test(points[i]);
  return test.all_inside();
}

}  // namespace DL
