#pragma once

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/support/brute_force_walk.h"
#include "tests/support/interrupt_counter.h"
#include "tests/support/iterator_walk.h"
#include "tests/support/probe_scene.h"
#include "tests/support/reference_redraw.h"

/// Lists with long rows of siblings, changed and redrawn in every way.
namespace long_list {

using DL::Group;
using Bounds = DL::BoundsTemplate<long>;

/// Numbers that one seed tells: far quicker than a generator for each.
class Dice {
 public:
  explicit Dice(std::uint32_t seed) : m_random(seed) {}
  int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
  bool one_in(int chances) { return below(chances) == 0; }
  std::int32_t between(std::int64_t low, std::int64_t high) {
    const std::int64_t span = std::max<std::int64_t>(high - low, 0) + 1;
    return static_cast<std::int32_t>(low + static_cast<std::int64_t>(m_random()) % span);
  }
  template <class T>
  const T& any_of(const std::vector<T>& values) {
    return values[static_cast<std::size_t>(below(static_cast<int>(values.size())))];
  }

 private:
  std::mt19937 m_random;
};

/// Bounds that jump between the four parts of one cell, so that each jump opens
/// another child of the group with that cell.
class Jumps {
 public:
  Jumps(Dice& dice, std::uint32_t level) : m_dice(dice), m_cell(Bounds::plane()) {
    const std::int32_t x = dice.between(INT32_MIN, INT32_MAX);
    const std::int32_t y = dice.between(INT32_MIN, INT32_MAX);
    if (level > 0) m_cell = DL::OpenBottomGroup::cell_around({x, y, x, y}, level);
    m_side = (std::int64_t{m_cell.max.x} - m_cell.min.x + 1) / 2;
    m_spread = dice.one_in(2) ? m_side : std::min<std::int64_t>(m_side, 3000);
    m_stay = dice.below(4);
  }

  Bounds next() {
    if (m_dice.below(4) >= m_stay) m_part = m_dice.below(4);
    if (m_dice.one_in(60)) return somewhere();
    const std::int64_t left = m_cell.min.x + (m_part % 2) * m_side;
    const std::int64_t low = m_cell.min.y + (m_part / 2) * m_side;
    const std::int32_t x = m_dice.between(left, left + m_spread - 1);
    const std::int32_t y = m_dice.between(low, low + m_spread - 1);
    return {x, y, m_dice.between(x, std::min(left + m_side - 1, x + m_spread / 16)),
            m_dice.between(y, std::min(low + m_side - 1, y + m_spread / 16))};
  }
  /// Anywhere in the cell.
  Bounds somewhere() {
    const std::int32_t x = m_dice.between(m_cell.min.x, m_cell.max.x);
    const std::int32_t y = m_dice.between(m_cell.min.y, m_cell.max.y);
    return {x, y, m_dice.between(x, m_cell.max.x), m_dice.between(y, m_cell.max.y)};
  }

 private:
  Dice& m_dice;
  Bounds m_cell;
  std::int64_t m_side;
  std::int64_t m_spread;
  int m_stay;  ///< how often of four it stays
  int m_part = 0;
};

/// Thrown out of a draw.
struct Thrown {};

class LongList {
 public:
  explicit LongList(std::uint32_t seed, LumenHeap* heap = nullptr)
      : dice(seed),
        scene(1 + dice.below(8), dice.any_of(std::vector<int>{1, 2, 3, 5, 20}), heap),
        jumps(dice, static_cast<std::uint32_t>(dice.any_of(std::vector<int>{0, 0, 1, 2, 6}))) {
    list().m_pfnInterrupt = &poll<ReferenceRedraw::kPoll>;
    list().m_pfnSelInterrupt = &poll<ReferenceRedraw::kSelectionPoll>;
    list().m_pInterruptContext = list().m_pSelInterruptContext = this;
    scene.log.on_draw = [this](int, DL::DisplayList&) { note_draw(); };
  }

  DL::DisplayList& list() { return scene.list; }
  Group& any_group() { return *dice.any_of(groups_of(list())); }

  void grow(int count) {
    for (int i = 0; i < count; ++i) scene.add(jumps.next());
  }

  // --- Drawing ------------------------------------------------------------

  /// Draws a region of a group by any bounded form, perhaps with a stop, a throw
  /// or another draw on the way, and compares with the walk.
  void check_draw(const Group& group, bool may_nest = true) {
    std::vector<const DrawForm*> forms;
    for (const DrawForm& form : kDrawForms) {
      if (form.bounded) forms.push_back(&form);
    }
    const Bounds outer = any_region();
    check_draw(group, *dice.any_of(forms), any_inner(outer), outer, may_nest);
  }

  void check_draw(const Group& group, const DrawForm& form, const Bounds& inner,
                  const Bounds& outer, bool may_nest) {
    const PollEvery poll_every(dice.any_of(std::vector<int>{1, 2, 3, 7, 20, 150, 0, -1}));
    list().m_cInterruptCounter = dice.between(-2, 30);
    list().m_cSelInterruptCounter = dice.between(-2, 30);
    m_outcome = static_cast<Outcome>(dice.below(6));
    m_at = 1 + dice.below(dice.one_in(2) ? 6 : 300);
    m_nests = may_nest && dice.one_in(3);
    m_polls = m_draws = 0;
    const bool stops = m_outcome == Outcome::stops || m_outcome == Outcome::poll_throws;
    const ReferenceRedraw expected(group, list(), form, inner, outer,
                                   stops ? m_at : ReferenceRedraw::kNever);
    const std::int32_t expected_other =
        form.selection ? list().m_cInterruptCounter : list().m_cSelInterruptCounter;
    scene.log.calls.clear();
    try {
      const bool result = form.draw(group, list(), inner, outer);
      RC_ASSERT(result == expected.result);
      RC_ASSERT(scene.log.calls == expected.calls);
      const bool selects = form.selection;
      RC_ASSERT((selects ? list().m_cSelInterruptCounter : list().m_cInterruptCounter) ==
                expected.counter);
      RC_ASSERT((selects ? list().m_cInterruptCounter : list().m_cSelInterruptCounter) ==
                expected_other);
    } catch (const Thrown&) {
      const ProbeCalls& calls = scene.log.calls;
      RC_ASSERT(calls.size() <= expected.calls.size());
      RC_ASSERT(std::equal(calls.begin(), calls.end(), expected.calls.begin()));
      if (m_outcome == Outcome::poll_throws) RC_ASSERT(calls.size() == expected.calls.size());
    }
  }

  void check_draws(int count) {
    for (int i = 0; i < count; ++i) {
      check_draw(dice.one_in(3) ? static_cast<const Group&>(longest()) : *list().m_pRootGroup);
      if (dice.one_in(4)) check_draw(any_group());
      if (dice.one_in(4)) check_reverse();
    }
  }

  /// A whole draw, which has to walk: what it ends with is an index, if any can be.
  void draw_whole() {
    const Outcome outcome = std::exchange(m_outcome, Outcome::none);
    list().m_pRootGroup->draw_bounded(list(), {}, Bounds::plane());
    m_outcome = outcome;
  }

  void check_reverse() {
    const Bounds region = any_region();
    std::vector<DL::Drawable*> expected = drawables_meeting_or_inside(region);
    std::reverse(expected.begin(), expected.end());
    DL::DisplayListReverseIterator at(&list(), region);
    RC_ASSERT(ids_walked(at) == ids_of(expected));
  }

  /// The group with most children.
  Group& longest() {
    Group* longest = list().m_pRootGroup;
    int most = 0;
    for (Group* group : groups_of(list())) {
      if (group->contains_drawables()) continue;
      int count = 0;
      for (const Group* c = group->m_pFirst.group; c != nullptr; c = c->m_pNext) ++count;
      if (count > most) {
        most = count;
        longest = group;
      }
    }
    return *longest;
  }

  // --- Regions ------------------------------------------------------------

  Bounds any_region() {
    switch (dice.below(14)) {
      case 0:
        return Bounds::plane();
      case 1:
        return {};
      case 2:
        return inverted(jumps.somewhere());
      case 3: {
        const auto x = dice.between(INT32_MIN, INT32_MAX);
        const auto y = dice.between(INT32_MIN, INT32_MAX);
        return {x, y, dice.between(x, INT32_MAX), dice.between(y, INT32_MAX)};
      }
      case 4:
      case 5:
        return jumps.somewhere();
      case 6:
      case 7: {
        Bounds region = jumps.next();
        region.widen(jumps.next());
        return region;
      }
      case 8:
        return any_group().m_bounds;
      case 9:
      case 10:
        return hot;
      default:
        return jumps.next();
    }
  }
  Bounds any_inner(const Bounds& outer) {
    switch (dice.below(8)) {
      case 0:
        return {};
      case 1:
        return any_region();
      case 2:
        return Bounds::plane();
      case 3:
        return inverted(outer);
      case 4:
      case 5: {
        const Bounds& b = any_group().m_bounds;
        return {std::max(b.min.x, outer.min.x), std::max(b.min.y, outer.min.y),
                std::min(b.max.x, outer.max.x), std::min(b.max.y, outer.max.y)};
      }
      default:
        return outer;
    }
  }
  static Bounds inverted(const Bounds& b) { return {b.max.x, b.min.y, b.min.x, b.max.y}; }

  Dice dice;
  ProbeScene scene;
  Jumps jumps;
  Bounds hot;  ///< where something has changed

 private:
  enum class Outcome { none, stops, poll_throws, draw_throws };

  /// What a walk comes to that goes to all below a group that lies inside.
  std::vector<DL::Drawable*> drawables_meeting_or_inside(const Bounds& region) {
    std::vector<DL::Drawable*> drawables;
    const std::function<void(Group&, bool)> walk = [&](Group& group, bool inside) {
      if (group.contains_drawables()) {
        for (DL::Drawable* d = group.m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
          drawables.push_back(d);
        }
        return;
      }
      for (Group* c = group.m_pFirst.group; c != nullptr; c = c->m_pNext) {
        const bool in = inside || c->m_bounds.is_inside(region);
        if (in || c->m_bounds.meets(region)) walk(*c, in);
      }
    };
    walk(*list().m_pRootGroup, false);
    return drawables;
  }

  /// A draw of the same list in the midst of another one.
  void nest() {
    const ProbeCalls calls = std::exchange(scene.log.calls, {});
    const auto saved =
        std::make_tuple(m_outcome, m_at, m_polls, m_draws, list().m_cInterruptCounter,
                        list().m_cSelInterruptCounter, DL::DisplayList::m_cInterruptCount,
                        DL::DisplayList::m_cSelInterruptCount);
    m_nests = false;
    check_draw(*list().m_pRootGroup, false);
    check_reverse();
    std::tie(m_outcome, m_at, m_polls, m_draws, list().m_cInterruptCounter,
             list().m_cSelInterruptCounter, DL::DisplayList::m_cInterruptCount,
             DL::DisplayList::m_cSelInterruptCount) = saved;
    scene.log.calls = calls;
  }

  void note_draw() {
    ++m_draws;
    if (m_nests && m_draws == 2) nest();
    if (m_outcome == Outcome::draw_throws && m_draws == m_at) throw Thrown();
  }

  template <int Kind>
  static bool poll(void* context, DL::DisplayList*) {
    auto* self = static_cast<LongList*>(context);
    self->scene.log.calls.push_back({Kind, DrawSlot::unclipped});
    if (self->m_nests) self->nest();
    if (++self->m_polls != self->m_at) return true;
    if (self->m_outcome == Outcome::poll_throws) throw Thrown();
    return self->m_outcome != Outcome::stops;
  }

  Outcome m_outcome = Outcome::none;
  int m_at = 0;          ///< the poll or draw that the outcome comes at
  bool m_nests = false;  ///< still to draw again on the way
  int m_polls = 0;
  int m_draws = 0;
};

}  // namespace long_list
