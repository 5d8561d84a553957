// Redraws of a region against brute force over the groups, and the visits that
// interruptible redraws count.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "tests/support/bounds_generators.h"
#include "tests/support/draw_forms.h"
#include "tests/support/interrupt_counter.h"
#include "tests/support/point_printing.h"
#include "tests/support/probe_scene.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Group;
using Bounds = DL::BoundsTemplate<long>;

/// A random scene and region.
struct Redraw {
  Redraw() : scene(*rc::gen::inRange(1, 9), *rc::gen::inRange(1, 32)) {
    for (const Bounds& bounds : *scene_bounds()) scene.add(bounds);
    outer = *rc::gen::oneOf(any_bounds(), small_bounds(1 << 24), clustered_bounds(100));
    inner = *rc::gen::element(outer, Bounds(), shrunk(outer));
  }
  static Bounds shrunk(const Bounds& b) {
    const auto between = [](std::int32_t low, std::int32_t high, double part) {
      return static_cast<std::int32_t>(low + (static_cast<double>(high) - low) * part);
    };
    return {between(b.min.x, b.max.x, 0.1), between(b.min.y, b.max.y, 0.1),
            between(b.min.x, b.max.x, 0.9), between(b.min.y, b.max.y, 0.9)};
  }

  /// What a bounded form draws of the subtree, from the rule for one group.
  void expect(const Group& group, bool selection, ProbeCalls& calls) {
    if (group.m_bounds.is_inside(inner)) {
      expect_all(group, selection ? DrawSlot::unclipped_selection : DrawSlot::unclipped, calls);
    } else if (group.m_bounds.meets(outer)) {
      if (group.contains_drawables()) {
        expect_all(group, selection ? DrawSlot::clipped_selection : DrawSlot::clipped, calls);
        return;
      }
      for (const Group* c = group.m_pFirst.group; c != nullptr; c = c->m_pNext) {
        expect(*c, selection, calls);
      }
    }
  }
  static void expect_all(const Group& group, DrawSlot slot, ProbeCalls& calls) {
    std::vector<Group*> leaves;
    collect_leaves(const_cast<Group*>(&group), leaves);
    for (const Group* leaf : leaves) {
      for (const int id : ProbeScene::ids_in(*leaf)) calls.push_back({id, slot});
    }
  }

  ProbeScene scene;
  Bounds inner, outer;
};

RC_GTEST_PROP(BoundedRedraw, DrawsWhatEachGroupsPlaceAsksFor, ()) {
  Redraw redraw;
  for (const DrawForm& form : kDrawForms) {
    if (!form.bounded) continue;
    ProbeCalls expected;
    redraw.expect(redraw.scene.root(), form.selection, expected);
    RC_ASSERT(form.draw(redraw.scene.root(), redraw.scene.list, redraw.inner, redraw.outer));
    RC_ASSERT(redraw.scene.log.take() == expected);
  }
}

RC_GTEST_PROP(BoundedRedraw, IsTheFullRedrawForWhateverMeetsTheRegion, ()) {
  Redraw redraw;
  redraw.scene.root().draw_unclipped(redraw.scene.list);
  const ProbeCalls full = redraw.scene.log.take();
  redraw.scene.root().draw_bounded(redraw.scene.list, redraw.inner, redraw.outer);
  const ProbeCalls part = redraw.scene.log.take();

  std::size_t next = 0;
  const std::vector<DL::Drawable*> drawables = drawables_of(redraw.scene.list);
  RC_ASSERT(full.size() == drawables.size());
  for (std::size_t i = 0; i < full.size(); ++i) {
    const auto& probe = static_cast<const ProbeDrawable&>(*drawables[i]);
    RC_ASSERT(full[i] == (ProbeCall{probe.id(), DrawSlot::unclipped}));
    const bool drawn = next < part.size() && part[next].id == probe.id();
    RC_ASSERT(drawn || !probe.bounds().meets(redraw.outer));
    // Without clipping only what needs none.
    if (drawn && part[next].slot == DrawSlot::unclipped) {
      RC_ASSERT(probe.bounds().is_inside(redraw.inner));
    }
    next += drawn ? 1 : 0;
  }
  RC_ASSERT(next == part.size());
}

/// The visits that one draw of the subtree counts.
int visits(const Group& group, const DrawForm& form, bool bounded, const Redraw& redraw) {
  const bool inside = bounded && group.m_bounds.is_inside(redraw.inner);
  const bool drawn = !bounded || inside || group.m_bounds.meets(redraw.outer);
  if (group.contains_drawables()) {
    const auto count = static_cast<int>(ProbeScene::ids_in(group).size());
    if (count == 0 || !bounded || form.clip != DrawForm::Clip::none) return 0;
    if (form.selection) return 1;
    return drawn ? count : 0;
  }
  int sum = 1;
  if (!drawn) return sum;
  for (const Group* c = group.m_pFirst.group; c != nullptr; c = c->m_pNext) {
    sum += visits(*c, form, bounded && !inside, redraw);
  }
  return sum;
}

RC_GTEST_PROP(InterruptibleRedraw, CountsEveryVisit, ()) {
  Redraw redraw;
  const PollEvery poll_every(1);
  for (const DrawForm& form : kDrawForms) {
    if (!form.interrupt) continue;
    InterruptCounter interrupt(redraw.scene.list);
    RC_ASSERT(form.draw(redraw.scene.root(), redraw.scene.list, redraw.inner, redraw.outer));
    const int polls = form.selection ? interrupt.selection_polls : interrupt.polls;
    RC_ASSERT(polls == visits(redraw.scene.root(), form, form.bounded, redraw));
  }
}

RC_GTEST_PROP(InterruptibleRedraw, StoppedDrawIsTheBeginningOfAWholeOne, ()) {
  Redraw redraw;
  const PollEvery poll_every(1);
  const DrawForm& form = kDrawForms[*rc::gen::element<std::size_t>(6, 7, 8, 9, 10, 11, 14, 15)];
  InterruptCounter interrupt(redraw.scene.list);
  form.draw(redraw.scene.root(), redraw.scene.list, redraw.inner, redraw.outer);
  const ProbeCalls whole = redraw.scene.log.take();
  const int polls = interrupt.polls + interrupt.selection_polls;
  RC_PRE(polls > 0);

  InterruptCounter stopping(redraw.scene.list);
  stopping.stop_at = *rc::gen::inRange(1, polls + 1);
  RC_ASSERT(!form.draw(redraw.scene.root(), redraw.scene.list, redraw.inner, redraw.outer));
  RC_ASSERT(stopping.polls + stopping.selection_polls == stopping.stop_at);
  const ProbeCalls part = redraw.scene.log.take();
  RC_ASSERT(part.size() <= whole.size());
  RC_ASSERT(std::equal(part.begin(), part.end(), whole.begin()));
}

}  // namespace
