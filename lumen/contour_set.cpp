#include "displaylist/platform/contour_set.h"

#include <algorithm>

namespace {

/// How often the contour's edges cross the ray from (x, y) to the right,
/// upward crossings counted +1 and downward ones -1 in `winding`.
void count_crossings(const LM_Contour& contour, double x, double y, int& winding, int& crossings) {
  if (contour.points == nullptr) return;
  for (std::int32_t i = 0; i < contour.count; ++i) {
    const LM_Point& from = contour.points[i == 0 ? contour.count - 1 : i - 1];
    const LM_Point& to = contour.points[i];
    const double from_y = from.y;
    const double to_y = to.y;
    if ((from_y <= y) == (to_y <= y)) continue;
    const double from_x = from.x;
    const double at_y = from_x + (y - from_y) / (to_y - from_y) * (to.x - from_x);
    if (at_y <= x) continue;
    ++crossings;
    winding += to_y > from_y ? 1 : -1;
  }
}

}  // namespace

void LM_Contour_Set_Data::add_contour(const LM_Point* points, std::int32_t count) {
  Contour contour{std::max(count, 0), nullptr};
  if (points != nullptr) {
    contour.points = std::make_unique<LM_Point[]>(static_cast<std::size_t>(contour.count));
    std::copy_n(points, contour.count, contour.points.get());
  }
  m_contours.push_back(std::move(contour));
}

bool LM_Contour_Set_Data::point_inside(double x, double y) const {
  int winding = 0;
  int crossings = 0;
  for (std::int32_t i = 0; i < contour_count(); ++i) {
    count_crossings(contour(i), x, y, winding, crossings);
  }
  return m_rule == LM_Fill_Rule::non_zero ? winding != 0 : crossings % 2 != 0;
}
