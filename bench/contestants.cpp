#include "bench/contestant.h"

namespace bench {

namespace {

constexpr Entry kEntries[] = {
    {kLowerBound, &make_lower_bound, true},
    {kOurs, &make_own_list, true},
    {kReordered, &make_reordered_list, true},
#if defined(BENCH_HAS_QT)
    {"Qt graphics scene", &make_qt_scene, false},
#endif
#if defined(BENCH_HAS_CAIRO)
    {"Cairo recording", &make_cairo_recording, false},
#endif
#if defined(BENCH_HAS_BOOST)
    {"R*-tree of ids", &make_dynamic_rtree, false},
    {"packed R-tree of ids", &make_packed_rtree, true},
#endif
    {"flat array", &make_flat_array, true},
    {"blocked array", &make_blocked_array, true},
};

}  // namespace

std::span<const Entry> contestants() {
  return kEntries;
}

std::string_view left_out() {
  return ""
#if !defined(BENCH_HAS_QT)
         "Qt's graphics scene (package qt6-base-dev) "
#endif
#if !defined(BENCH_HAS_CAIRO)
         "Cairo's recording surface (package libcairo2-dev) "
#endif
#if !defined(BENCH_HAS_BOOST)
         "Boost's R-trees (package libboost-dev)"
#endif
      ;
}

}  // namespace bench
