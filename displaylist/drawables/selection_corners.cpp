#include "displaylist/core/transform_p.h"
#include "displaylist/drawables/drawable.h"
#include "displaylist/drawables/selection_corners_p.h"

namespace DL {

bool selection_corners(const Drawable& drawable, const DisplayList& list, LM_DCI_Point corners[4]) {
  BoundsTemplate<long> box;
  drawable.add_bounds(box);
  if (box.is_empty()) return false;
  const PointTemplate<long> logical[] = {
      box.min, {box.max.x, box.min.y}, box.max, {box.min.x, box.max.y}};
  transform::all_with_rotation(list, logical, 4, corners);
  return true;
}

}  // namespace DL
