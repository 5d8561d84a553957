#pragma once

#include <cstdint>

#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"

/// The sixteen draw forms as combinations of four choices.
namespace DL::draw {

/// The complex clip that is in force, and how a group is tested against it.
enum class Clip : std::uint8_t { none, circle, complex };

/// One draw form.
struct Form {
  Clip clip;
  bool bounded;    ///< tested against the region to draw
  bool interrupt;  ///< polls the interrupt test
  bool selection;  ///< draws the selection pass
};

/// The region of a bounded form.
struct Region {
  const BoundsTemplate<long>* inner;
  const BoundsTemplate<long>* outer;
};

/// The form that goes on below a group that lies inside the inner rectangle.
constexpr Form without_bounds(Form form) {
  return {form.clip, false, form.interrupt, form.selection};
}

/// The form that goes on below a group that lies inside the lifted clip.
constexpr Form without_clip(Form form) {
  return {Clip::none, form.bounded, form.interrupt, form.selection};
}

/// Calls the group's virtual operation for the form; true for the forms that
/// do not tell.
template <Form F>
bool visit(const Group& group, DisplayList& list, const Region& region) {
  static_assert(!F.selection || F.clip == Clip::none, "selection knows no clip tests");
#define DL_PLAIN_CALL(operation)              \
  if constexpr (F.interrupt) {                \
    return group.operation##_interrupt(list); \
  } else {                                    \
    group.operation(list);                    \
    return true;                              \
  }
#define DL_BOUNDED_CALL(operation)                                          \
  if constexpr (F.interrupt) {                                              \
    return group.operation##_interrupt(list, *region.inner, *region.outer); \
  } else {                                                                  \
    group.operation(list, *region.inner, *region.outer);                    \
    return true;                                                            \
  }
  if constexpr (F.selection) {
    if constexpr (F.bounded) {
      DL_BOUNDED_CALL(draw_bounded_selection)
    } else {
      DL_PLAIN_CALL(draw_unclipped_selection)
    }
  } else if constexpr (F.clip == Clip::none) {
    if constexpr (F.bounded) {
      DL_BOUNDED_CALL(draw_bounded)
    } else {
      DL_PLAIN_CALL(draw_unclipped)
    }
  } else if constexpr (F.clip == Clip::circle) {
    if constexpr (F.bounded) {
      DL_BOUNDED_CALL(draw_circled_bounded)
    } else {
      DL_PLAIN_CALL(draw_circled)
    }
  } else {
    if constexpr (F.bounded) {
      DL_BOUNDED_CALL(draw_complex_bounded)
    } else {
      DL_PLAIN_CALL(draw_complex)
    }
  }
#undef DL_PLAIN_CALL
#undef DL_BOUNDED_CALL
}

}  // namespace DL::draw
