#pragma once

#include <cstdint>
#include <limits>

#include "tests/support/draw_forms.h"
#include "tests/support/probe_drawable.h"

/// The plain walk through all groups, as an oracle of the draw forms of a list
/// without a complex clip: each device call and each poll, in order.
class ReferenceRedraw {
 public:
  /// Stands for a poll among the calls.
  static constexpr int kPoll = -1;
  static constexpr int kSelectionPoll = -2;
  static constexpr int kNever = std::numeric_limits<int>::max();

  /// The draw of a group by a form; poll number `stop_at` asks to stop.
  ReferenceRedraw(const DL::Group& group, const DL::DisplayList& list, const DrawForm& form,
                  const DrawForm::Bounds& inner, const DrawForm::Bounds& outer,
                  int stop_at = kNever)
      : counter(form.selection ? list.m_cSelInterruptCounter : list.m_cInterruptCounter),
        m_form(form),
        m_inner(inner),
        m_outer(outer),
        m_stop_at(stop_at) {
    result = visit(group, form.bounded);
  }

  ProbeCalls calls;
  std::int32_t counter;  ///< of the visits, in the end
  int polls = 0;
  bool result;  ///< what the form returns

 private:
  bool goes_on() {
    if (!m_form.interrupt) return true;
    const std::int32_t every = m_form.selection ? DL::DisplayList::m_cSelInterruptCount
                                                : DL::DisplayList::m_cInterruptCount;
    if (++counter != every) return true;
    counter = 0;
    calls.push_back({m_form.selection ? kSelectionPoll : kPoll, DrawSlot::unclipped});
    return ++polls != m_stop_at;
  }

  bool visit(const DL::Group& group, bool bounded) {
    const bool leaf = group.contains_drawables();
    if (leaf && group.m_pFirst.drawable == nullptr) return true;
    if ((!leaf || (bounded && m_form.selection)) && !goes_on()) return false;
    bool clipped = false;
    if (bounded) {
      clipped = !group.m_bounds.is_inside(m_inner);
      if (clipped && !group.m_bounds.meets(m_outer)) return true;
    }
    return leaf ? draw(group, bounded, clipped) : visit_children(group, clipped);
  }

  bool visit_children(const DL::Group& group, bool bounded) {
    for (const DL::Group* child = group.m_pFirst.group; child != nullptr; child = child->m_pNext) {
      if (!visit(*child, bounded)) return false;
    }
    return true;
  }

  bool draw(const DL::Group& leaf, bool bounded, bool clipped) {
    const bool polls_each = bounded && !m_form.selection && m_form.clip == DrawForm::Clip::none;
    for (const DL::Drawable* d = leaf.m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
      if (polls_each && !goes_on()) return false;
      calls.push_back({static_cast<const ProbeDrawable*>(d)->id(), slot(clipped)});
    }
    return true;
  }

  [[nodiscard]] DrawSlot slot(bool clipped) const {
    if (m_form.selection) {
      return clipped ? DrawSlot::clipped_selection : DrawSlot::unclipped_selection;
    }
    return clipped ? DrawSlot::clipped : DrawSlot::unclipped;
  }

  const DrawForm& m_form;
  const DrawForm::Bounds& m_inner;
  const DrawForm::Bounds& m_outer;
  int m_stop_at;
};
