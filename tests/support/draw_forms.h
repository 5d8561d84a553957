#pragma once

#include <array>
#include <functional>
#include <ostream>
#include <type_traits>

#include "displaylist/core/display_list.h"
#include "displaylist/core/group.h"

/// One of the sixteen draw forms, to be called by its description.
struct DrawForm {
  using Bounds = DL::BoundsTemplate<long>;
  enum class Clip { none, circle, complex };

  const char* name;
  Clip clip;
  bool bounded;
  bool interrupt;
  bool selection;
  /// Draws; true for the forms that return nothing.
  bool (*draw)(const DL::Group& group, DL::DisplayList& list, const Bounds& inner,
               const Bounds& outer);

  friend std::ostream& operator<<(std::ostream& os, const DrawForm& form) {
    return os << form.name;
  }
};

template <auto Operation>
bool call_draw_form(const DL::Group& group, DL::DisplayList& list, const DrawForm::Bounds& inner,
                    const DrawForm::Bounds& outer) {
  const auto call = [&]() -> decltype(auto) {
    if constexpr (std::is_invocable_v<decltype(Operation), const DL::Group&, DL::DisplayList&>) {
      return std::invoke(Operation, group, list);
    } else {
      return std::invoke(Operation, group, list, inner, outer);
    }
  };
  if constexpr (std::is_void_v<decltype(call())>) {
    call();
    return true;
  } else {
    return call();
  }
}

#define DRAW_FORM(name, clip, bounded, interrupt, selection)    \
  DrawForm {                                                    \
#name, DrawForm::Clip::clip, bounded, interrupt, selection, \
        &call_draw_form < &DL::Group::name>                     \
  }

/// Every draw form, in the order of the operations.
inline const std::array<DrawForm, 16> kDrawForms = {
    DRAW_FORM(draw_unclipped, none, false, false, false),
    DRAW_FORM(draw_circled, circle, false, false, false),
    DRAW_FORM(draw_complex, complex, false, false, false),
    DRAW_FORM(draw_bounded, none, true, false, false),
    DRAW_FORM(draw_circled_bounded, circle, true, false, false),
    DRAW_FORM(draw_complex_bounded, complex, true, false, false),
    DRAW_FORM(draw_unclipped_interrupt, none, false, true, false),
    DRAW_FORM(draw_circled_interrupt, circle, false, true, false),
    DRAW_FORM(draw_complex_interrupt, complex, false, true, false),
    DRAW_FORM(draw_bounded_interrupt, none, true, true, false),
    DRAW_FORM(draw_circled_bounded_interrupt, circle, true, true, false),
    DRAW_FORM(draw_complex_bounded_interrupt, complex, true, true, false),
    DRAW_FORM(draw_unclipped_selection, none, false, false, true),
    DRAW_FORM(draw_bounded_selection, none, true, false, true),
    DRAW_FORM(draw_unclipped_selection_interrupt, none, false, true, true),
    DRAW_FORM(draw_bounded_selection_interrupt, none, true, true, true),
};
#undef DRAW_FORM
