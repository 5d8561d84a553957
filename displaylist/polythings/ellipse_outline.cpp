// The outline of ellipses as vectors, and the directions that arcs have.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <new>

#include "displaylist/core/display_list.h"
#include "displaylist/core/rounding_p.h"
#include "displaylist/core/wrapping_p.h"
#include "displaylist/platform/elliptical_points.h"
#include "displaylist/polythings/angle_p.h"
#include "displaylist/polythings/ellipse.h"

namespace DL {

PointTemplate<double> DLEllipse::vector_scale() const {
  return display_list == nullptr ? PointTemplate<double>{1.0, 1.0} : display_list->m_deviceScale;
}

int DLEllipse::get_vector_count() const {
  const PointTemplate<double> scale = vector_scale();
  const double first = major * scale.x;
  const double second = minor * scale.y;
  const auto radius = static_cast<float>(first > second ? first : second);
  const float per_turn = std::sqrt(radius) * 4.0F;
  const float sweep = end_angle() - start_angle();
  const std::int32_t steps = rounding::truncate(sweep * per_turn / -angle::kTurn);
  return std::max(wrapping_add(1, wrapping_multiply(steps, -1)), 2);
}

void DLEllipse::generateVectors(LM_DCI_Point*& points, int& n) const {
  n = wrapping_add(get_vector_count(), 1);
  points = n < 1 ? nullptr : new (std::nothrow) LM_DCI_Point[static_cast<std::size_t>(n)];
  if (points == nullptr) {
    n = 0;
    return;
  }
  // Generated with the x axis as long as it looks, which spaces the points
  // evenly on the device.
  const PointTemplate<double> scale = vector_scale();
  const double stretch = scale.x / scale.y;
  const LM_DCI_Point origin{0, 0, 0};
  const LM_DCI_Point radii{rounding::truncate(major * stretch), minor, 0};
  LD_Generate_Elliptical_Points(origin, radii, start_angle(), end_angle(), rotation, n, points);
  for (std::int32_t i = 0; i < n; ++i) {
    points[i].x = wrapping_add(rounding::truncate(points[i].x / stretch), center.x);
    points[i].y = wrapping_add(points[i].y, center.y);
  }
}

bool DLEllipse::isWithinBounds(const LM_Vector& direction) const {
  if (end_angle() - start_angle() > angle::kAlmostTurn) return true;
  const float first = angle::normalized(start_angle() + rotation);
  const float last = angle::normalized(end_angle() + rotation);
  const float asked = angle::normalized(std::atan2(direction.y, direction.x));
  const bool passes_zero = first > last;
  return passes_zero ? asked >= first || asked <= last : first <= asked && asked <= last;
}

DrawableVectorIterator* DLEllipse::create_vector_iterator(bool) {
  return new DrawableVectorIteratorEllipse(*this);
}

DrawableVectorIteratorEllipse::DrawableVectorIteratorEllipse(DLEllipse& drawable)
    : vector_count(drawable.get_vector_count()), ellipse(&drawable) {
  initialize(&drawable);
  m_bDone = false;
  DrawableVectorIteratorEllipse::get_vector(0);
}

DrawableVectorIteratorEllipse::~DrawableVectorIteratorEllipse() {
  delete[] points;
}

void DrawableVectorIteratorEllipse::get_vector(int i) {
  if (i == 0 && points == nullptr) {
    int count = 0;
    ellipse->generateVectors(points, count);
  }
  if (points == nullptr || i < 0 || i >= vector_count) return;
  m_vector = {{points[i].x, points[i].y}, {points[i + 1].x, points[i + 1].y}};
}

VectorTemplate<long>* DrawableVectorIteratorEllipse::next() {
  if (index < vector_count) ++index;
  m_bDone = index == vector_count;
  if (m_bDone) return nullptr;
  get_vector(index);
  return &m_vector;
}

VectorTemplate<long>* DrawableVectorIteratorEllipse::prev() {
  if (index > 0) --index;
  get_vector(index);
  m_bDone = index == 0;
  return m_bDone ? nullptr : &m_vector;
}

}  // namespace DL
