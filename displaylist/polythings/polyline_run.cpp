// Plain polylines of one leaf, drawn in one go: most of most drawings.

#include "displaylist/polythings/polyline_run_p.h"

#include <algorithm>
#include <cstdint>

#include "displaylist/core/device_buffer_p.h"
#include "displaylist/core/display_list.h"
#include "displaylist/core/transform_p.h"
#include "displaylist/polythings/inside_p.h"
#include "displaylist/polythings/polyline.h"
#include "displaylist/polythings/polyline_device_p.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace DL {

namespace {

/// The distinct device points of a polyline: fills them in, returns how many there
/// are and tells whether all lie inside the clip rectangle.
using Conversion = std::int32_t(const DisplayList& list, const DLPolyline& polyline,
                                LM_DCI_Point* device, bool& inside);

std::int32_t convert(const DisplayList& list, const DLPolyline& polyline, LM_DCI_Point* device,
                     bool& inside) {
  InsideTest test(list.m_rendition.clip_rectangle());
  const std::int32_t count =
      transform::distinct_with_rotation(list, polyline.points, polyline.count, device, test);
  inside = test.all_inside();
  return count;
}

/// The run with one of the conversions; `device` has room for the largest
/// polyline that is drawn without an allocation.
template <Conversion* Convert>
[[gnu::always_inline]] inline Drawable* draw_run(Drawable* first, DisplayList& list, bool clipped) {
  LM_DCI_Point device[kPointsWithoutAllocation + 1];  // not initialised: hot
  const class_change::OperationTable table = class_change::table_of(first);
  Drawable* drawable = first;
  do {
    auto& polyline = static_cast<DLPolyline&>(*drawable);
    Extra_Drawable_Info* info = polyline.m_pDrawableInfo;
    if (info != nullptr && !info->is_drawn()) continue;
    if (polyline.count < 1 || polyline.count > kPointsWithoutAllocation) {
      clipped ? polyline.DLPolyline::draw_clipped(list) : polyline.DLPolyline::draw_unclipped(list);
    } else {
      bool inside = false;
      const std::int32_t count = Convert(list, polyline, device, inside);
      list.m_rendition.set_color(polyline.m_colorData.m_color, true);
      polyline::draw_device(list, list.m_rendition, device, count,
                            inside && !clipped && !list.m_bRotationSecondary);
    }
  } while ((drawable = drawable->m_pNext) != nullptr && class_change::table_of(drawable) == table);
  return drawable;
}

Drawable* draw_any_run(Drawable* first, DisplayList& list, bool clipped) {
  return draw_run<&convert>(first, list, clipped);
}

#if defined(__x86_64__)

/// Stores a device point and 4 bytes of nothing behind it.
[[gnu::target("avx2")]] inline void store(__m128i xy, LM_DCI_Point* device) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(device), _mm_move_epi64(xy));
}

/// As `convert`, two points at a time: the same operations on wider registers.
[[gnu::target("avx2")]] inline std::int32_t convert_pairs(const DisplayList& list,
                                                          const DLPolyline& polyline,
                                                          LM_DCI_Point* device, bool& inside) {
  const std::int32_t count = polyline.count;
  if (list.m_bRotated || count < 2) return convert(list, polyline, device, inside);
  const __m256d scale = _mm256_broadcast_pd(reinterpret_cast<const __m128d*>(&list.m_scale.x));
  const __m256d offset = _mm256_broadcast_pd(reinterpret_cast<const __m128d*>(&list.m_offset.x));
  const LM_Clip_Rectangle& clip = list.m_rendition.clip_rectangle();
  const __m128i min = _mm_set_epi32(clip.min_y, clip.min_x, clip.min_y, clip.min_x);
  const __m128i max = _mm_set_epi32(clip.max_y, clip.max_x, clip.max_y, clip.max_x);
  __m128i outside = _mm_setzero_si128();
  const PointTemplate<long>* const last_pair = polyline.points + count - 2;
  const PointTemplate<long>* pair = polyline.points;
  LM_DCI_Point* end = device;
  std::int64_t last = 0;
  bool kept = true;  // the first point always is
  for (;;) {
    const __m128i logical = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pair));
    const __m256d scaled = _mm256_add_pd(_mm256_mul_pd(_mm256_cvtepi32_pd(logical), scale), offset);
    const __m128i xy = _mm256_cvtpd_epi32(scaled);
    const __m128i beyond = _mm_or_si128(_mm_cmpgt_epi32(min, xy), _mm_cmpgt_epi32(xy, max));
    outside = _mm_or_si128(outside, beyond);
    const std::int64_t first = _mm_cvtsi128_si64(xy);
    const std::int64_t second = _mm_extract_epi64(xy, 1);
    store(xy, end);
    end += kept | (first != last) ? 1 : 0;
    store(_mm_unpackhi_epi64(xy, xy), end);
    end += second != first ? 1 : 0;
    if (pair == last_pair) break;
    last = second;
    kept = false;
    // The last pair of an odd number begins with the last point kept, once more.
    pair = std::min(pair + 2, last_pair);
  }
  inside = _mm_movemask_epi8(outside) == 0;
  return static_cast<std::int32_t>(end - device);
}

[[gnu::target("avx2")]] Drawable* draw_wide_run(Drawable* first, DisplayList& list, bool clipped) {
  return draw_run<&convert_pairs>(first, list, clipped);
}

DrawableRun polyline_run_here() {
  const bool wide = __builtin_cpu_supports("avx2") != 0;
  return {class_change::operation_table<DLPolyline>(), wide ? &draw_wide_run : &draw_any_run};
}

#else

DrawableRun polyline_run_here() {
  return {class_change::operation_table<DLPolyline>(), &draw_any_run};
}

#endif

}  // namespace

DrawableRun polyline_run() {
  return polyline_run_here();
}

}  // namespace DL
