// Lists with long rows of siblings, changed in every way a client can: whatever
// drawing keeps of them between redraws, each redraw is the plain walk.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "displaylist/drawables/search.h"
#include "tests/support/long_list.h"

namespace {

using DL::Drawable;
using DL::Group;
using DL::Search;
using long_list::Bounds;
using long_list::LongList;
using Drawables = std::vector<Drawable*>;

const Bounds& bounds_of(const Drawable* drawable) {
  return static_cast<const ProbeDrawable*>(drawable)->bounds();
}

int id_of(const Drawable* drawable) {
  return static_cast<const ProbeDrawable*>(drawable)->id();
}

/// A long list, the drawing order it should have, and the ways to change both.
class History : public LongList {
 public:
  using LongList::LongList;

  void add(int count) {
    for (int i = 0; i < count; ++i) {
      m_order.push_back(scene.next_id);
      RC_ASSERT(scene.add(jumps.next()) == list().m_pOpenGroup);
    }
    if (m_reopened) take_over_order();
  }

  void change() {
    if (m_order.size() < 100) add(20);
    if (m_order.size() < 2) return;
    switch (dice.below(16)) {
      case 0:
      case 1:
      case 2:
        return add(1 + dice.below(60));
      case 3:
      case 4:
        return add_before();
      case 5:
      case 6:
        return remove_directly(1 + dice.below(30));
      case 7:
      case 8:
      case 9:
        return search();
      case 10:
      case 11:
        return remove_bounded();
      case 12:
        return remove_some_group();
      case 13:
        return close_some();
      case 14:
        return reopen();
      default:
        return hide_some();
    }
  }

  void check() {
    RC_ASSERT(ids_of(drawables_of(list())) == m_order);
    list().m_pRootGroup->assert_valid();
    if (list().has_open_group()) {
      RC_ASSERT(broken_invariants(list(), TreeHistory::removals) == "");
    }
  }

  // --- Changes ------------------------------------------------------------

  void add_before() {
    const Drawables all = drawables_of(list());
    const auto at = static_cast<std::size_t>(dice.below(static_cast<int>(all.size())));
    // In its group's bounds, or beyond them.
    const Bounds bounds = dice.one_in(2) ? bounds_of(all[at]) : jumps.next();
    hot = bounds;
    m_order.insert(m_order.begin() + static_cast<std::ptrdiff_t>(at), scene.next_id);
    RC_ASSERT(list().add_before(list().m_pRootGroup, all[at], scene.make(bounds), bounds) !=
              nullptr);
  }

  void remove_directly(int count) {
    while (count-- > 0 && m_order.size() > 1) {
      Group* leaf = dice.any_of(leaves_of(list()));
      Drawable* first = leaf->m_pFirst.drawable;
      if (first == nullptr) continue;
      forget({first});
      Group* expected = empties(*leaf) ? survivor_above(*leaf) : leaf;
      RC_ASSERT(leaf->remove(first, nullptr) == expected);
    }
  }

  void search() {
    const Drawables all = drawables_of(list());
    const Drawable* wanted = dice.any_of(all);
    const int step = dice.any_of(std::vector<int>{2, 50, 1 << 20});
    const auto matches = [=](const Drawable* d) { return (id_of(d) - id_of(wanted)) % step == 0; };
    scene.log.on_search = [=](ProbeDrawable& probe, Search&) { return matches(&probe); };
    Search search;
    search.m_bounds = dice.one_in(3) ? any_region() : bounds_of(dice.any_of(all));
    if (dice.one_in(2)) search.m_bounds = bounds_of(wanted);
    Group& start = dice.one_in(3) ? any_group() : *list().m_pRootGroup;
    Drawables asked;
    collect_drawables(
        start, [&](Group& group) { return search.m_bounds.is_inside(group.m_bounds); }, asked);
    const auto match = std::find_if(asked.begin(), asked.end(), matches);
    Group* expected = nullptr;
    if (match != asked.end()) {
      Group* leaf = leaf_of(list(), *match);
      Group* left = empties(*leaf) ? survivor_above(*leaf) : leaf;
      expected = empties(*leaf) && leaf->m_pNext != nullptr ? leaf->m_pNext : left;
      forget({*match});
    }
    const bool detaches = dice.one_in(2);
    RC_ASSERT((detaches ? start.detach_fast(search) : start.remove_fast(search)) == expected);
    delete search.m_pDetached;
  }

  void remove_bounded() {
    Group& start = dice.one_in(2) ? any_group() : *list().m_pRootGroup;
    const Bounds rectangle = hot = dice.one_in(8) ? any_region() : jumps.next();
    Drawables gone;
    for (Drawable* each : drawables_below(start)) {
      if (bounds_of(each).is_inside(rectangle)) gone.push_back(each);
    }
    if (gone.size() == m_order.size()) return;
    forget(gone);
    dice.one_in(2) ? start.remove_bounded(rectangle) : start.remove_bounded_worker(rectangle);
  }

  /// Leaves an empty group in the tree.
  void remove_some_group() {
    Group& group = any_group();
    const Drawables gone = drawables_below(group);
    if (gone.size() * 2 > m_order.size()) return;
    forget(gone);
    group.remove_all();
  }

  /// Closes groups again that may have become smaller; but not the root, which
  /// then would take nothing outside what it holds.
  void close_some() {
    for (int i = 0; i < 10; ++i) {
      Group& group = any_group();
      if (group.m_pParent == nullptr) continue;
      thin_out(group);
      group.close();
    }
  }

  /// Takes the first child away where that is a leaf and others are left.
  void thin_out(Group& group) {
    Group* first = group.m_pFirst.group;
    if (group.contains_drawables() || first == nullptr || first->m_pNext == nullptr) return;
    if (!first->contains_drawables() || first->m_pFirst.drawable == nullptr) return;
    hot = first->m_bounds;
    forget(drawables_below(*first));
    while (first->m_pFirst.drawable->m_pNext != nullptr) {
      first->remove(first->m_pFirst.drawable, nullptr);
    }
    RC_ASSERT(first->remove(first->m_pFirst.drawable, nullptr) == &group);
  }

  void reopen() {
    m_reopened = true;
    if (list().has_open_group()) list().m_pOpenGroup->close();
    Group& group = any_group();
    if (dice.one_in(2) || group.contains_drawables()) {
      group.create_open_bottom_group(&list());
      if (list().has_open_group()) add_at(*list().m_pOpenGroup, list().m_pOpenGroup->m_bounds.min);
    } else {
      add_at(group, dice.one_in(2) ? group.m_bounds.min : jumps.next().min);
    }
    take_over_order();
  }

  void add_at(Group& group, const DL::PointTemplate<long>& point) {
    hot = {point, point};
    ProbeDrawable* probe = scene.make(hot);
    if (group.add(probe, hot, &list(), 0) == nullptr) {
      delete probe;
    } else {
      m_order.push_back(probe->id());
    }
  }

  void hide_some() {
    Group& group = any_group();
    group.is_hidden() ? group.make_visible() : group.make_hidden();
  }

 private:
  static bool empties(const Group& leaf) {
    return leaf.m_pFirst.drawable->m_pNext == nullptr && leaf.m_pParent != nullptr;
  }
  void forget(const Drawables& gone) {
    std::vector<int> ids = ids_of(gone);
    std::sort(ids.begin(), ids.end());
    std::erase_if(m_order, [&](int id) { return std::binary_search(ids.begin(), ids.end(), id); });
  }

  /// Additions go into the midst of the order once another group was opened.
  void take_over_order() {
    std::vector<int> order = ids_of(drawables_of(list()));
    std::vector<int> sorted = order;
    std::sort(sorted.begin(), sorted.end());
    std::sort(m_order.begin(), m_order.end());
    RC_ASSERT(sorted == m_order);
    m_order = std::move(order);
  }

  std::vector<int> m_order;
  bool m_reopened = false;
};

void live_through(std::uint32_t seed, int first, int steps) {
  History list(seed);
  list.add(first);
  list.check_draws(4);
  for (int i = 0; i < steps; ++i) {
    list.change();
    list.check_draws(3);
    if (list.dice.one_in(2)) list.draw_whole();
  }
  list.check();
}

RC_GTEST_PROP(LeafIndexHistory, RedrawsAreThePlainWalk, ()) {
  const auto seed = *rc::gen::arbitrary<std::uint32_t>();
  live_through(seed, *rc::gen::inRange(0, 400), *rc::gen::inRange(0, 50));
}

TEST(LeafIndexHistory, RedrawsOfThousandsAreThePlainWalk) {
  for (std::uint32_t seed = 1; seed <= 4; ++seed) live_through(seed, 3000, 12);
}

}  // namespace
