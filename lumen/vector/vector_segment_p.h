#pragma once

#include <algorithm>

#include "lumen/vector/vector_contour_p.h"

namespace lumen {

/// Part of a segment, 0 its start and 1 its end; none when first > last.
struct SegmentPart {
  double first = 0;
  double last = 1;

  [[nodiscard]] bool is_empty() const { return first > last; }

  /// Leaves where a coordinate that goes evenly from one number to the other
  /// lies in the limits.
  void limit(double from, double to, double low, double high) {
    const double change = to - from;
    if (change == 0) {
      if (from < low || from > high) last = -1;
      return;
    }
    const double one = (low - from) / change;
    const double other = (high - from) / change;
    first = std::max(first, std::min(one, other));
    last = std::min(last, std::max(one, other));
  }
};

inline SegmentPart part_inside(const PageBox& box, const PagePoint& from, const PagePoint& to) {
  SegmentPart part;
  if (box.contains(from) && box.contains(to)) return part;
  part.limit(from.x, to.x, box.min_x, box.max_x);
  part.limit(from.y, to.y, box.min_y, box.max_y);
  return part;
}

}  // namespace lumen
