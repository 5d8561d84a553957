#pragma once

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <numbers>
#include <vector>

#include "displaylist/platform/contour_set.h"

using ContourPoints = std::vector<LM_Point>;

inline LM_Contour_Set contour_set(std::initializer_list<ContourPoints> contours,
                                  LM_Fill_Rule rule = LM_Fill_Rule::even_odd) {
  auto set = LM_Create<LM_Contour_Set_Data>(rule);
  for (const ContourPoints& points : contours) {
    set->add_contour(points.data(), static_cast<std::int32_t>(points.size()));
  }
  return set;
}

inline ContourPoints rectangle(float min_x, float min_y, float max_x, float max_y) {
  return {{min_x, min_y, 0}, {max_x, min_y, 0}, {max_x, max_y, 0}, {min_x, max_y, 0}};
}

/// The corners of a regular polygon, every other one at `other_radius`.
inline ContourPoints regular_polygon(int corners, double radius, double other_radius, double x,
                                     double y) {
  ContourPoints points;
  for (int i = 0; i < corners; ++i) {
    const double angle = 2.0 * std::numbers::pi * i / corners;
    const double r = i % 2 == 0 ? radius : other_radius;
    points.push_back({static_cast<float>(x + r * std::cos(angle)),
                      static_cast<float>(y + r * std::sin(angle)), 0});
  }
  return points;
}
