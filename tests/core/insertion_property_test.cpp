#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <memory>

#include "tests/support/bounds_generators.h"
#include "tests/support/point_printing.h"
#include "tests/support/probe_scene.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Drawable;
using DL::Group;
using Bounds = DL::BoundsTemplate<long>;

std::unique_ptr<ProbeScene> scene_of(const std::vector<Bounds>& all,
                                     const std::vector<unsigned long>& flags) {
  auto scene = std::make_unique<ProbeScene>(*rc::gen::inRange(1, 9), *rc::gen::inRange(1, 32));
  for (std::size_t i = 0; i < all.size(); ++i) {
    scene->add(all[i], flags.empty() ? 0 : flags[i % flags.size()]);
  }
  return scene;
}

RC_GTEST_PROP(InsertionProperty, KeepsTheOrderAndTheInvariantsAfterEveryStep, ()) {
  ProbeScene scene(*rc::gen::inRange(1, 9), *rc::gen::inRange(1, 32));
  int last = 0;
  for (const Bounds& bounds : *scene_bounds()) {
    const Group* taken = scene.add(bounds);
    RC_ASSERT(taken == scene.list.m_pOpenGroup);
    RC_ASSERT(broken_invariants(scene.list) == "");
    ++last;
    int expected = 1;
    for (Drawable* d : drawables_of(scene.list)) {
      RC_ASSERT(static_cast<ProbeDrawable*>(d)->id() == expected++);
    }
    RC_ASSERT(expected == last + 1);
  }
}

RC_GTEST_PROP(InsertionProperty, NeverOverfillsALeafAboveTheDeepestLevel, ()) {
  const auto scene = scene_of(*scene_bounds(), {});
  for (const Group* leaf : leaves_of(scene->list)) {
    const auto count = static_cast<std::int32_t>(scene->ids_in(*leaf).size());
    RC_ASSERT(count <= scene->list.m_cMaxOpenDrawables);
    RC_ASSERT(static_cast<std::int32_t>(leaf->level()) <= scene->list.m_cMaxLevel);
  }
}

RC_GTEST_PROP(InsertionProperty, CellContainsWhateverEnteredItWhileOpen, ()) {
  // The cell that a leaf had while it was open, told by its own contents: the
  // drawables of a leaf fit together into one union of cells of the first.
  const auto scene = scene_of(*scene_bounds(), {});
  for (Group* leaf : leaves_of(scene->list)) {
    const Drawable* first = leaf->m_pFirst.drawable;
    if (first == nullptr || leaf->m_pParent == nullptr) continue;
    const auto& seed = static_cast<const ProbeDrawable*>(first)->bounds();
    const Bounds cell = DL::OpenBottomGroup::cell_around(seed, leaf->level());
    for (const Drawable* d = first; d != nullptr; d = d->m_pNext) {
      RC_ASSERT(static_cast<const ProbeDrawable*>(d)->bounds().is_inside(cell));
    }
  }
}

RC_GTEST_PROP(InsertionProperty, FlagsOfALeafCoverThoseOfItsDrawables, ()) {
  const std::vector<unsigned long> flags{1, 2, 4, 0};
  const auto scene = scene_of(*scene_bounds(), flags);
  for (const Group* leaf : leaves_of(scene->list)) {
    for (const int id : scene->ids_in(*leaf)) {
      const unsigned long own = flags[static_cast<std::size_t>(id - 1) % flags.size()];
      RC_ASSERT((leaf->m_flags & own) == own);
    }
    RC_ASSERT((leaf->m_flags & ~7U) == 0U);
  }
}

RC_GTEST_PROP(InsertionProperty, ClosedGroupsOffThePathToTheOpenOneAreTight, ()) {
  const auto scene = scene_of(*scene_bounds(), {});
  std::map<const Group*, bool> on_path;
  for (const Group* g = scene->list.m_pOpenGroup; g != nullptr; g = g->m_pParent) on_path[g] = true;
  for (Group* leaf : leaves_of(scene->list)) {
    for (Group* g = leaf; g != nullptr && !on_path[g]; g = g->m_pParent) {
      Bounds contents;
      g->add_bounds(contents);
      RC_ASSERT(g->m_bounds == contents);
    }
  }
}

RC_GTEST_PROP(InsertionProperty, TheOpenGroupIsTheLastInDrawingOrder, ()) {
  const auto scene = scene_of(*scene_bounds(), {});
  RC_ASSERT(leaves_of(scene->list).back() == scene->list.m_pOpenGroup);
}

RC_GTEST_PROP(InsertionProperty, NothingLeaksWithTheList, ()) {
  ProbeLog log;
  const std::vector<Bounds> all = *scene_bounds();
  {
    DL::DisplayList list;
    list.m_cMaxOpenDrawables = *rc::gen::inRange(1, 9);
    list.m_cMaxLevel = *rc::gen::inRange(1, 32);
    for (const Bounds& b : all) list.add(new ProbeDrawable(log, 0, b), b, 0);
    RC_ASSERT(log.alive == static_cast<int>(all.size()));
  }
  RC_ASSERT(log.alive == 0);
}

}  // namespace
