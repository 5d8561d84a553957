#include "displaylist/core/light_leaf_p.h"

#include <algorithm>
#include <cmath>

#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"
#include "displaylist/drawables/class_table_p.h"

namespace DL {

namespace {

/// Points between the bounds go to rows between these; false where rounding a
/// coordinate would not keep their order.
bool find_rows(const BoundsTemplate<long>& bounds, const DisplayList& list, DeviceRows& rows) {
  constexpr double most = 1 << 30;
  const double one = bounds.min.y * list.m_scale.y + list.m_offset.y;
  const double other = bounds.max.y * list.m_scale.y + list.m_offset.y;
  const double low = std::min(one, other);
  const double high = std::max(one, other);
  if (list.m_bRotated || !(low > -most && high < most)) return false;
  rows = {static_cast<std::int32_t>(std::floor(low)), static_cast<std::int32_t>(std::ceil(high))};
  return true;
}

}  // namespace

bool find_light_rows(const BottomGroup& group, const DisplayList& list, DeviceRows& rows) {
  const DrawableRun& run = frequent_run();
  const Drawable* const first = group.m_pFirst.drawable;
  return first != nullptr && class_change::table_of(first) == run.table &&
         find_rows(group.m_bounds, list, rows) && run.is_light(first);
}

}  // namespace DL
