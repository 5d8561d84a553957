#pragma once

#include <cstddef>
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

inline constexpr Form kUnclipped{Clip::none, false, false, false};
inline constexpr Form kCircled{Clip::circle, false, false, false};
inline constexpr Form kComplex{Clip::complex, false, false, false};
inline constexpr Form kSelection{Clip::none, false, false, true};

constexpr Form bounded(Form form) {
  form.bounded = true;
  return form;
}
constexpr Form interruptible(Form form) {
  form.interrupt = true;
  return form;
}
/// The form that goes on below a group that lies inside the inner rectangle.
constexpr Form without_bounds(Form form) {
  form.bounded = false;
  return form;
}
/// The form that goes on below a group that lies inside the lifted clip.
constexpr Form without_clip(Form form) {
  form.clip = Clip::none;
  return form;
}

/// The virtual operation of each form.
template <Form F>
inline constexpr std::nullptr_t operation = nullptr;
template <>
inline constexpr auto operation<kUnclipped> = &Group::draw_unclipped;
template <>
inline constexpr auto operation<kCircled> = &Group::draw_circled;
template <>
inline constexpr auto operation<kComplex> = &Group::draw_complex;
template <>
inline constexpr auto operation<bounded(kUnclipped)> = &Group::draw_bounded;
template <>
inline constexpr auto operation<bounded(kCircled)> = &Group::draw_circled_bounded;
template <>
inline constexpr auto operation<bounded(kComplex)> = &Group::draw_complex_bounded;
template <>
inline constexpr auto operation<interruptible(kUnclipped)> = &Group::draw_unclipped_interrupt;
template <>
inline constexpr auto operation<interruptible(kCircled)> = &Group::draw_circled_interrupt;
template <>
inline constexpr auto operation<interruptible(kComplex)> = &Group::draw_complex_interrupt;
template <>
inline constexpr auto operation<interruptible(bounded(kUnclipped))> =
    &Group::draw_bounded_interrupt;
template <>
inline constexpr auto operation<interruptible(bounded(kCircled))> =
    &Group::draw_circled_bounded_interrupt;
template <>
inline constexpr auto operation<interruptible(bounded(kComplex))> =
    &Group::draw_complex_bounded_interrupt;
template <>
inline constexpr auto operation<kSelection> = &Group::draw_unclipped_selection;
template <>
inline constexpr auto operation<bounded(kSelection)> = &Group::draw_bounded_selection;
template <>
inline constexpr auto operation<interruptible(kSelection)> =
    &Group::draw_unclipped_selection_interrupt;
template <>
inline constexpr auto operation<interruptible(bounded(kSelection))> =
    &Group::draw_bounded_selection_interrupt;

/// The region of a bounded form.
struct Region {
  const BoundsTemplate<long>* inner;
  const BoundsTemplate<long>* outer;
};

/// Calls the group's operation of the form; true for the forms that do not tell.
template <Form F>
bool visit(const Group& group, DisplayList& list, const Region& region) {
  constexpr auto call = operation<F>;
  if constexpr (F.bounded && F.interrupt) {
    return (group.*call)(list, *region.inner, *region.outer);
  } else if constexpr (F.bounded) {
    (group.*call)(list, *region.inner, *region.outer);
    return true;
  } else if constexpr (F.interrupt) {
    return (group.*call)(list);
  } else {
    (group.*call)(list);
    return true;
  }
}

}  // namespace DL::draw
