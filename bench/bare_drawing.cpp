#include "bench/bare_drawing.h"

#include <algorithm>
#include <cstdlib>

namespace bench {

namespace {

bool is_inside(const LM_DCI_Point& point) {
  return static_cast<std::uint32_t>(point.x) < static_cast<std::uint32_t>(kWidth) &&
         static_cast<std::uint32_t>(point.y) < static_cast<std::uint32_t>(kHeight);
}

/// Narrows [first, last], parts of a line that changes by `change` from `start`,
/// to where it lies between 0 and `most`.
void narrow(double start, double change, double most, double& first, double& last) {
  if (change == 0.0) {
    if (start < 0.0 || start > most) last = -1.0;
    return;
  }
  const double at_zero = -start / change;
  const double at_most = (most - start) / change;
  first = std::max(first, std::min(at_zero, at_most));
  last = std::min(last, std::max(at_zero, at_most));
}

/// Cuts the line off at the edges of the picture; false when nothing is left.
bool clip(LM_DCI_Point& from, LM_DCI_Point& to) {
  const double x = from.x;
  const double y = from.y;
  const double width = static_cast<double>(to.x) - x;
  const double height = static_cast<double>(to.y) - y;
  double first = 0.0;
  double last = 1.0;
  narrow(x, width, kWidth - 1, first, last);
  narrow(y, height, kHeight - 1, first, last);
  if (first > last) return false;
  const auto at = [&](double part) {
    return LM_DCI_Point{std::clamp(static_cast<std::int32_t>(x + part * width), 0, kWidth - 1),
                        std::clamp(static_cast<std::int32_t>(y + part * height), 0, kHeight - 1),
                        0};
  };
  from = at(first);
  to = at(last);
  return true;
}

}  // namespace

void BareDrawing::do_nothing(std::int32_t /*count*/, const LM_DCI_Point* /*points*/) {}

void BareDrawing::draw_pixels(std::int32_t count, const LM_DCI_Point* points, LM_RGB32 color) {
  for (std::int32_t i = 1; i < count; ++i) {
    LM_DCI_Point from = points[i - 1];
    LM_DCI_Point to = points[i];
    if ((is_inside(from) && is_inside(to)) || clip(from, to)) draw_line(from, to, color.word);
  }
}

/// A pixel per step along the longer axis.
void BareDrawing::draw_line(const LM_DCI_Point& from, const LM_DCI_Point& to, std::uint32_t color) {
  const std::int32_t width = std::abs(to.x - from.x);
  const std::int32_t height = std::abs(to.y - from.y);
  std::ptrdiff_t longer = to.x < from.x ? -1 : 1;
  std::ptrdiff_t shorter = to.y < from.y ? -kWidth : kWidth;
  std::int32_t steps = width;
  std::int32_t rise = height;
  if (height > width) {
    std::swap(longer, shorter);
    std::swap(steps, rise);
  }
  std::uint32_t* pixel = m_pixels.data() + static_cast<std::ptrdiff_t>(from.y) * kWidth + from.x;
  *pixel = color;
  std::int32_t error = steps / 2;
  for (std::int32_t i = 0; i < steps; ++i) {
    pixel += longer;
    error -= rise;
    if (error < 0) {
      pixel += shorter;
      error += steps;
    }
    *pixel = color;
  }
}

}  // namespace bench
