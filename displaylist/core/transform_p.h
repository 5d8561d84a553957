#pragma once

#include <cstdint>
#include <cstring>

#include "displaylist/core/display_list.h"
#include "displaylist/core/rounding_p.h"

/// The conversions that every drawn vertex goes through, inline. They stay
/// inside the library, where contraction of a * b + c is switched off.
namespace DL::transform {

namespace portable {

inline LM_DCI_Point scaled(const DisplayList& list, const PointTemplate<long>& p) {
  return {rounding::portable::nearest(p.x * list.m_scale.x + list.m_offset.x),
          rounding::portable::nearest(p.y * list.m_scale.y + list.m_offset.y), 0};
}

inline LM_DCI_Point rotated(const DisplayList& list, const PointTemplate<long>& p) {
  const double* r = list.m_rotation;
  return {rounding::portable::nearest(r[4] * p.x + r[1] * p.y + r[2]),
          rounding::portable::nearest(r[0] * p.x + r[5] * p.y + r[3]), 0};
}

}  // namespace portable

#if defined(__SSE2__)

/// Both coordinates of a point as doubles.
inline __m128d to_doubles(const PointTemplate<long>& p) {
  return _mm_cvtepi32_pd(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(&p)));
}

/// To nearest; what does not fit gives -2147483648, as the processor has it.
inline LM_DCI_Point to_device(__m128d xy) {
  LM_DCI_Point device;
  _mm_storel_epi64(reinterpret_cast<__m128i*>(&device), _mm_cvtpd_epi32(xy));
  device.z = 0;
  return device;
}

inline LM_DCI_Point scaled(const DisplayList& list, const PointTemplate<long>& p) {
  const __m128d scale = _mm_loadu_pd(&list.m_scale.x);
  const __m128d offset = _mm_loadu_pd(&list.m_offset.x);
  return to_device(_mm_add_pd(_mm_mul_pd(to_doubles(p), scale), offset));
}

inline LM_DCI_Point rotated(const DisplayList& list, const PointTemplate<long>& p) {
  const double* r = list.m_rotation;
  const __m128d xy = to_doubles(p);
  const __m128d from_x = _mm_mul_pd(_mm_set_pd(r[0], r[4]), _mm_unpacklo_pd(xy, xy));
  const __m128d from_y = _mm_mul_pd(_mm_set_pd(r[5], r[1]), _mm_unpackhi_pd(xy, xy));
  return to_device(_mm_add_pd(_mm_add_pd(from_x, from_y), _mm_set_pd(r[3], r[2])));
}

#else
using portable::rotated;
using portable::scaled;
#endif

/// Scaled, saturated at the 32-bit limits.
inline LM_DCI_Point scaled_saturated(const DisplayList& list, const PointTemplate<long>& p) {
  return {rounding::nearest_saturated(p.x * list.m_scale.x + list.m_offset.x),
          rounding::nearest_saturated(p.y * list.m_scale.y + list.m_offset.y), 0};
}

/// Through the rotation when it is on, saturated at the 32-bit limits.
inline LM_DCI_Point with_rotation_saturated(const DisplayList& list, const PointTemplate<long>& p) {
  if (!list.m_bRotated) return scaled_saturated(list, p);
  const double* r = list.m_rotation;
  return {rounding::nearest_saturated(r[4] * p.x + r[1] * p.y + r[2]),
          rounding::nearest_saturated(r[0] * p.x + r[5] * p.y + r[3]), 0};
}

/// transform_point to device integers.
inline LM_DCI_Point point(const DisplayList& list, const PointTemplate<long>& p) {
  return list.m_bCheckOverflow ? scaled_saturated(list, p) : scaled(list, p);
}

/// transform_point_with_rotation to device integers.
inline LM_DCI_Point with_rotation(const DisplayList& list, const PointTemplate<long>& p) {
  return list.m_bRotated ? rotated(list, p) : scaled(list, p);
}

/// transform_point_with_rotation of every point.
inline void all_with_rotation(const DisplayList& list, const PointTemplate<long>* points,
                              std::int32_t count, LM_DCI_Point* device) {
  if (list.m_bRotated) {
    for (std::int32_t i = 0; i < count; ++i) device[i] = rotated(list, points[i]);
  } else {
    for (std::int32_t i = 0; i < count; ++i) device[i] = scaled(list, points[i]);
  }
}

/// Keeps a point only where it differs from the last one kept. Returns how many
/// are kept. `device` has room for `count`: the place after the last kept point
/// is written before it is known whether it stays.
template <LM_DCI_Point (*Convert)(const DisplayList&, const PointTemplate<long>&)>
std::int32_t distinct(const DisplayList& list, const PointTemplate<long>* points,
                      std::int32_t count, LM_DCI_Point* device) {
  device[0] = Convert(list, points[0]);
  std::int32_t last = 0;
  for (std::int32_t i = 1; i < count; ++i) {
    const LM_DCI_Point next = Convert(list, points[i]);
    device[last + 1] = next;
    last += next.x != device[last].x || next.y != device[last].y ? 1 : 0;
  }
  return last + 1;
}

/// transform_point_with_rotation of at least one point, without repeated device
/// points. `device` has room for `count` points.
inline std::int32_t distinct_with_rotation(const DisplayList& list,
                                           const PointTemplate<long>* points, std::int32_t count,
                                           LM_DCI_Point* device) {
  return list.m_bRotated ? distinct<rotated>(list, points, count, device)
                         : distinct<scaled>(list, points, count, device);
}

}  // namespace DL::transform
