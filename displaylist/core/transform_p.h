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

#if defined(__SSE2__) && defined(__x86_64__)

/// Scale and offset, held in registers over the points of a drawable.
class Scaling {
 public:
  explicit Scaling(const DisplayList& list)
      : m_scale(_mm_loadu_pd(&list.m_scale.x)), m_offset(_mm_loadu_pd(&list.m_offset.x)) {}
  [[nodiscard]] __m128d operator()(const PointTemplate<long>& p) const {
    return _mm_add_pd(_mm_mul_pd(to_doubles(p), m_scale), m_offset);
  }

 private:
  __m128d m_scale;
  __m128d m_offset;
};

/// The rotation, held likewise.
class Rotating {
 public:
  explicit Rotating(const DisplayList& list)
      : m_ofX(_mm_set_pd(list.m_rotation[0], list.m_rotation[4])),
        m_ofY(_mm_set_pd(list.m_rotation[5], list.m_rotation[1])),
        m_offset(_mm_set_pd(list.m_rotation[3], list.m_rotation[2])) {}
  [[nodiscard]] __m128d operator()(const PointTemplate<long>& p) const {
    const __m128d xy = to_doubles(p);
    const __m128d from_x = _mm_mul_pd(m_ofX, _mm_unpacklo_pd(xy, xy));
    const __m128d from_y = _mm_mul_pd(m_ofY, _mm_unpackhi_pd(xy, xy));
    return _mm_add_pd(_mm_add_pd(from_x, from_y), m_offset);
  }

 private:
  __m128d m_ofX;
  __m128d m_ofY;
  __m128d m_offset;
};

/// Stores a device point with its z of 0, and 4 bytes of nothing behind it; tells
/// both coordinates as one word.
inline std::int64_t store_device(__m128d xy, LM_DCI_Point* device) {
  const __m128i rounded = _mm_cvtpd_epi32(xy);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(device), rounded);
  return _mm_cvtsi128_si64(rounded);
}

/// Keeps a point only where it differs from the last one kept, and shows each to
/// `watch`. Returns how many are kept. `device` has room for `count` and one more:
/// the place after the last kept point is written before it is known whether it
/// stays.
template <class Conversion, class Watch>
std::int32_t distinct(const DisplayList& list, const PointTemplate<long>* points,
                      std::int32_t count, LM_DCI_Point* device, Watch& watch) {
  const Conversion convert(list);
  std::int64_t last = store_device(convert(points[0]), device);
  watch(device[0]);
  LM_DCI_Point* end = device + 1;
  for (std::int32_t i = 1; i < count; ++i) {
    const std::int64_t next = store_device(convert(points[i]), end);
    watch(*end);
    end += next != last ? 1 : 0;
    last = next;
  }
  return static_cast<std::int32_t>(end - device);
}

#else

struct Scaling {
  const DisplayList& list;
  [[nodiscard]] LM_DCI_Point operator()(const PointTemplate<long>& p) const {
    return scaled(list, p);
  }
};

struct Rotating {
  const DisplayList& list;
  [[nodiscard]] LM_DCI_Point operator()(const PointTemplate<long>& p) const {
    return rotated(list, p);
  }
};

template <class Conversion, class Watch>
std::int32_t distinct(const DisplayList& list, const PointTemplate<long>* points,
                      std::int32_t count, LM_DCI_Point* device, Watch& watch) {
  const Conversion convert{list};
  device[0] = convert(points[0]);
  watch(device[0]);
  std::int32_t last = 0;
  for (std::int32_t i = 1; i < count; ++i) {
    const LM_DCI_Point next = convert(points[i]);
    device[last + 1] = next;
    watch(next);
    last += next.x != device[last].x || next.y != device[last].y ? 1 : 0;
  }
  return last + 1;
}

#endif

/// transform_point_with_rotation of at least one point, without repeated device
/// points; each is shown to `watch`. `device` has room for `count` and one more.
template <class Watch>
std::int32_t distinct_with_rotation(const DisplayList& list, const PointTemplate<long>* points,
                                    std::int32_t count, LM_DCI_Point* device, Watch&& watch) {
  return list.m_bRotated ? distinct<Rotating>(list, points, count, device, watch)
                         : distinct<Scaling>(list, points, count, device, watch);
}
inline std::int32_t distinct_with_rotation(const DisplayList& list,
                                           const PointTemplate<long>* points, std::int32_t count,
                                           LM_DCI_Point* device) {
  return distinct_with_rotation(list, points, count, device, [](const LM_DCI_Point&) {});
}

}  // namespace DL::transform
