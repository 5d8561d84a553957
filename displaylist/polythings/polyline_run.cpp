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

/// How many distinct device points a polyline has, and whether all lie inside the
/// clip rectangle.
struct Converted {
  std::int32_t count;
  bool inside;
};

/// Fills in the distinct device points.
using Conversion = Converted(const DisplayList& list, const DLPolyline& polyline,
                             LM_DCI_Point* device);

Converted convert(const DisplayList& list, const DLPolyline& polyline, LM_DCI_Point* device) {
  InsideTest test(list.m_rendition.clip_rectangle());
  const std::int32_t count =
      transform::distinct_with_rotation(list, polyline.points, polyline.count, device, test);
  return {count, test.all_inside()};
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
      const auto [count, inside] = Convert(list, polyline, device);
      list.m_rendition.set_color(polyline.m_colorData.m_color, true);
      polyline::draw_device(list, list.m_rendition, device, count,
                            inside && !clipped && !list.m_bRotationSecondary);
    }
  } while ((drawable = drawable->m_pNext) != nullptr && class_change::table_of(drawable) == table);
  return drawable;
}

bool is_light_run(const Drawable* first) {
  const class_change::OperationTable table = class_change::table_of(first);
  bool is_light = true;
  for (const Drawable* each = first; each != nullptr && is_light; each = each->m_pNext) {
    is_light = class_change::table_of(each) == table && each->m_pDrawableInfo == nullptr &&
               static_cast<const DLPolyline*>(each)->count <= kPointsWithoutAllocation;
  }
  return is_light;
}

Drawable* draw_any_run(Drawable* first, DisplayList& list, bool clipped) {
  return draw_run<&convert>(first, list, clipped);
}

#if defined(__x86_64__)

/// Two device points in a register.
struct PointPair {
  __m128i xy;

  [[gnu::target("avx2")]] std::int64_t first() const { return _mm_cvtsi128_si64(xy); }
  [[gnu::target("avx2")]] std::int64_t second() const { return _mm_extract_epi64(xy, 1); }
  /// Stores the point and 4 bytes of nothing behind it.
  [[gnu::target("avx2")]] void store_first(LM_DCI_Point* device) const { store(xy, device); }
  [[gnu::target("avx2")]] void store_second(LM_DCI_Point* device) const {
    store(_mm_unpackhi_epi64(xy, xy), device);
  }

 private:
  [[gnu::target("avx2")]] static void store(__m128i point, LM_DCI_Point* device) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(device), _mm_move_epi64(point));
  }
};

/// Transforms pairs of points, and notes whether any lay outside the clip rectangle.
class PairTransform {
 public:
  [[gnu::target("avx2")]] explicit PairTransform(const DisplayList& list)
      : m_scale(_mm256_broadcast_pd(reinterpret_cast<const __m128d*>(&list.m_scale.x))),
        m_offset(_mm256_broadcast_pd(reinterpret_cast<const __m128d*>(&list.m_offset.x))),
        m_outside(_mm_setzero_si128()) {
    const __m128i clip =
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(&list.m_rendition.clip_rectangle()));
    m_min = _mm_shuffle_epi32(clip, _MM_SHUFFLE(2, 0, 2, 0));
    m_max = _mm_shuffle_epi32(clip, _MM_SHUFFLE(3, 1, 3, 1));
  }

  [[gnu::target("avx2")]] PointPair operator()(const PointTemplate<long>* pair) {
    const __m128i logical = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pair));
    const __m256d scaled =
        _mm256_add_pd(_mm256_mul_pd(_mm256_cvtepi32_pd(logical), m_scale), m_offset);
    const __m128i xy = _mm256_cvtpd_epi32(scaled);
    const __m128i beyond = _mm_or_si128(_mm_cmpgt_epi32(m_min, xy), _mm_cmpgt_epi32(xy, m_max));
    m_outside = _mm_or_si128(m_outside, beyond);
    return {xy};
  }

  [[gnu::target("avx2")]] bool all_inside() const { return _mm_movemask_epi8(m_outside) == 0; }

 private:
  __m256d m_scale;
  __m256d m_offset;
  __m128i m_min;
  __m128i m_max;
  __m128i m_outside;
};

/// As `convert`, two points at a time: the same operations on wider registers.
[[gnu::target("avx2")]] inline Converted convert_pairs(const DisplayList& list,
                                                       const DLPolyline& polyline,
                                                       LM_DCI_Point* device) {
  const std::int32_t count = polyline.count;
  if (list.m_bRotated || count < 2) return convert(list, polyline, device);
  PairTransform transformed(list);
  const PointTemplate<long>* pair = polyline.points;
  const PointTemplate<long>* const last_pair = pair + count - 2;
  // Whether points are distinct is anybody's guess: no branch depends on it.
  PointPair points = transformed(pair);
  points.store_first(device);
  points.store_second(device + 1);
  LM_DCI_Point* end = device + 1 + (points.second() != points.first() ? 1 : 0);
  while (pair != last_pair) {
    const std::int64_t last = points.second();
    // The last pair of an odd number begins with the last point kept, once more.
    pair = std::min(pair + 2, last_pair);
    points = transformed(pair);
    points.store_first(end);
    end += points.first() != last ? 1 : 0;
    points.store_second(end);
    end += points.second() != points.first() ? 1 : 0;
  }
  return {static_cast<std::int32_t>(end - device), transformed.all_inside()};
}

[[gnu::target("avx2")]] Drawable* draw_wide_run(Drawable* first, DisplayList& list, bool clipped) {
  return draw_run<&convert_pairs>(first, list, clipped);
}

DrawableRun polyline_run_here() {
  const bool wide = __builtin_cpu_supports("avx2") != 0;
  return {class_change::operation_table<DLPolyline>(), wide ? &draw_wide_run : &draw_any_run,
          &is_light_run};
}

#else

DrawableRun polyline_run_here() {
  return {class_change::operation_table<DLPolyline>(), &draw_any_run, &is_light_run};
}

#endif

}  // namespace

DrawableRun polyline_run() {
  return polyline_run_here();
}

}  // namespace DL
