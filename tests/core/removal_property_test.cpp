#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/support/garden.h"

namespace {

using garden::any_below;
using garden::Garden;
using garden::garden_bounds;
using garden::hollow;
using garden::prune;

RC_GTEST_PROP(RemovalProperty, PruningLeavesWhatAFlatListWouldHold, ()) {
  Garden garden(garden_bounds());
  const std::size_t steps = any_below(300);
  for (std::size_t i = 0; i < steps; ++i) {
    const std::size_t choice = any_below(8);
    if (garden.is_empty() || choice < 5) {
      garden.add();
    } else if (choice == 5) {
      garden.add_before();
    } else {
      prune(garden);
    }
    garden.check();
    garden.check_pruned();
  }
}

RC_GTEST_PROP(RemovalProperty, EmptyGroupsInTheTreeDisturbNothing, ()) {
  Garden garden(garden_bounds());
  const std::size_t steps = any_below(300);
  for (std::size_t i = 0; i < steps; ++i) {
    const std::size_t choice = any_below(10);
    if (garden.is_empty() || choice < 7) {
      garden.add();
    } else if (choice == 7) {
      garden.add_before();
    } else {
      choice == 8 ? prune(garden) : hollow(garden);
    }
    garden.check();
  }
}

RC_GTEST_PROP(RemovalProperty, AddingGoesOnAfterEverythingWasRemoved, ()) {
  Garden garden(garden_bounds());
  for (int round = 0; round < 4; ++round) {
    const std::size_t count = any_below(20);
    for (std::size_t i = 0; i < count; ++i) garden.add();
    garden.check();
    if (*rc::gen::arbitrary<bool>()) {
      garden.remove_all(garden.list().m_pRootGroup);
    } else {
      while (!garden.is_empty()) garden.remove_directly();
    }
    RC_ASSERT(garden.is_empty());
    garden.check();
  }
}

}  // namespace
