#pragma once

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "tests/support/bounds_generators.h"
#include "tests/support/brute_force_walk.h"
#include "tests/support/iterator_walk.h"
#include "tests/support/point_printing.h"
#include "tests/support/probe_scene.h"

/// Random lists, from which drawables are taken in every way while others are
/// added, against a flat list of numbers.
namespace garden {

using DL::Drawable;
using DL::Group;
using DL::Search;
using Bounds = DL::BoundsTemplate<long>;
using Drawables = std::vector<Drawable*>;
using Ids = std::vector<int>;

inline int id_of(const Drawable* drawable) {
  return static_cast<const ProbeDrawable*>(drawable)->id();
}

inline const Bounds& bounds_of(const Drawable* drawable) {
  return static_cast<const ProbeDrawable*>(drawable)->bounds();
}

/// Any number from 0 up, with the same chance, however small the sample's size is.
inline std::size_t any_below(std::size_t limit) {
  return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange<std::size_t>(0, limit));
}

template <class T>
T any_of(const std::vector<T>& values) {
  return values[any_below(values.size())];
}

/// A scene, what should be in it, and the ways to change both.
class Garden {
 public:
  explicit Garden(rc::Gen<Bounds> bounds)
      : m_scene(*rc::gen::element(1, 2, 3, 4), *rc::gen::element(1, 2, 3, 8, 20, 31)),
        m_bounds(std::move(bounds)) {}

  DL::DisplayList& list() { return m_scene.list; }
  Bounds any_bounds() { return *m_bounds; }
  [[nodiscard]] bool is_empty() const { return m_order.empty(); }

  void add() {
    const Bounds bounds = any_bounds();
    m_order.push_back(m_scene.next_id);
    RC_ASSERT(m_scene.add(bounds, 0) == list().m_pOpenGroup);
  }

  void add_before() {
    const Drawables all = drawables_of(list());
    const auto at = any_below(all.size());
    const Bounds bounds = any_bounds();
    m_order.insert(m_order.begin() + static_cast<std::ptrdiff_t>(at), m_scene.next_id);
    Group* group = leaf_of(list(), all[at]);
    RC_ASSERT(list().add_before(m_scene.list.m_pRootGroup, all[at], m_scene.make(bounds), bounds) ==
              group);
  }

  void remove_directly() {
    const Drawables all = drawables_of(list());
    const auto at = any_below(all.size());
    Group* leaf = leaf_of(list(), all[at]);
    Drawable* previous = all[at] == leaf->m_pFirst.drawable ? nullptr : all[at - 1];
    Group* expected = empties(*leaf) ? survivor_above(*leaf) : leaf;
    forget({all[at]});
    RC_ASSERT(leaf->remove(all[at], previous) == expected);
  }

  /// What becomes of a match: kept, it links a probe of the same bounds after itself.
  enum class Fate { destroyed, detached, kept };

  /// Searches from any group for one probe or for any of several, at its own
  /// bounds or anywhere.
  void search(Fate fate) {
    const Drawables all = drawables_of(list());
    const int id = id_of(any_of(all));
    const int step = *rc::gen::element(1, 2, 1 << 20);
    const auto wanted = [=](const Drawable* d) { return (id_of(d) - id) % step == 0; };
    m_scene.log.on_search = [=, this](ProbeDrawable& probe, Search& search) {
      if (!wanted(&probe)) return false;
      if (fate == Fate::kept) link_another(probe, search);
      return true;
    };
    Search search;
    search.m_bounds = *rc::gen::arbitrary<bool>() ? bounds_of(any_of(all)) : any_bounds();
    Group* start = any_of(groups_of(list()));
    Drawables candidates;
    collect_drawables(
        *start, [&](Group& group) { return search.m_bounds.is_inside(group.m_bounds); },
        candidates);
    const auto match = std::find_if(candidates.begin(), candidates.end(), wanted);
    expect_match(*start, search, match == candidates.end() ? nullptr : *match, fate);
  }

  void remove_bounded(bool worker) {
    Group* start = any_of(groups_of(list()));
    Bounds rectangle = any_bounds();
    if (*rc::gen::arbitrary<bool>()) rectangle.widen(any_bounds());
    Drawables gone;
    for (Drawable* each : drawables_below(*start)) {
      if (bounds_of(each).is_inside(rectangle)) gone.push_back(each);
    }
    forget(gone);
    worker ? start->remove_bounded_worker(rectangle) : start->remove_bounded(rectangle);
  }

  void remove_all(Group* group) {
    forget(drawables_below(*group));
    group->remove_all();
    RC_ASSERT(group->m_pFirst.group == nullptr);
  }

  void check() {
    RC_ASSERT(ids_of(drawables_of(list())) == m_order);
    RC_ASSERT(broken_invariants(list(), TreeHistory::removals) == "");
    RC_ASSERT(m_scene.log.alive == static_cast<int>(m_order.size()));
    const Group* hint = list().m_pInsertHint;
    if (hint != nullptr) RC_ASSERT(hint == list().m_pOpenGroup);
    list().m_pRootGroup->assert_valid();
  }

  /// Only the root and the open group are ever empty.
  void check_pruned() {
    for (Group* group : groups_of(list())) {
      const bool may_be_empty = group->m_pParent == nullptr || group == list().m_pOpenGroup;
      if (!may_be_empty) RC_ASSERT(group->m_pFirst.group != nullptr);
    }
  }

 private:
  void link_another(ProbeDrawable& probe, Search& search) {
    search.handled = true;
    Drawable* next = m_scene.make(probe.bounds());
    next->m_pNext = std::exchange(probe.m_pNext, next);
  }

  void expect_match(Group& start, Search& search, Drawable* match, Fate fate) {
    Group* expected = nullptr;
    if (match != nullptr && fate == Fate::kept) {
      expected = leaf_of(list(), match);
      m_order.insert(std::find(m_order.begin(), m_order.end(), id_of(match)) + 1, m_scene.next_id);
    } else if (match != nullptr) {
      Group* leaf = leaf_of(list(), match);
      Group* next = leaf->m_pNext;
      expected = !empties(*leaf) ? leaf : next != nullptr ? next : survivor_above(*leaf);
      forget({match});
    }
    const bool detaches =
        fate == Fate::detached || (fate == Fate::kept && *rc::gen::arbitrary<bool>());
    RC_ASSERT((detaches ? start.detach_fast(search) : start.remove_fast(search)) == expected);
    RC_ASSERT(search.handled == (fate == Fate::kept && match != nullptr));
    RC_ASSERT(search.m_pDetached == (fate == Fate::detached ? match : nullptr));
    if (search.m_pDetached != nullptr) RC_ASSERT(search.m_pDetached->m_pNext == nullptr);
    delete search.m_pDetached;
  }

  static bool empties(const Group& leaf) {
    return leaf.m_pFirst.drawable->m_pNext == nullptr && leaf.m_pParent != nullptr;
  }
  void forget(const Drawables& gone) {
    for (const Drawable* each : gone) {
      m_order.erase(std::find(m_order.begin(), m_order.end(), id_of(each)));
    }
  }

  ProbeScene m_scene;
  rc::Gen<Bounds> m_bounds;
  Ids m_order;
};

inline rc::Gen<Bounds> garden_bounds() {
  return *rc::gen::elementOf(std::vector<rc::Gen<Bounds>>{
      clustered_bounds(16), clustered_bounds(64), clustered_bounds(1 << 20),
      rc::gen::oneOf(any_bounds(), small_bounds(1000), clustered_bounds(64))});
}

/// Takes something out in a way that prunes what it empties.
inline void prune(Garden& garden) {
  switch (any_below(6)) {
    case 0:
    case 1:
      return garden.remove_directly();
    case 2:
      return garden.search(Garden::Fate::destroyed);
    case 3:
      return garden.search(Garden::Fate::detached);
    case 4:
      return garden.search(Garden::Fate::kept);
    default:
      return garden.remove_bounded(false);
  }
}

/// Takes something out in a way that leaves empty groups.
inline void hollow(Garden& garden) {
  if (*rc::gen::arbitrary<bool>()) return garden.remove_bounded(true);
  garden.remove_all(any_of(groups_of(garden.list())));
}

}  // namespace garden
