// The order in which drawables without one fill the tree.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

#include "displaylist/displaylist.h"
#include "tests/support/recorded_list.h"
#include "tests/support/tree_walk.h"

namespace {

using Bounds = DL::BoundsTemplate<long>;
using Order = std::vector<std::size_t>;

Order order_of(const std::vector<Bounds>& bounds) {
  Order order(bounds.size());
  EXPECT_TRUE(DL::insertion_order(bounds, order));
  return order;
}

Order as_given(std::size_t count) {
  Order order(count);
  std::iota(order.begin(), order.end(), std::size_t{0});
  return order;
}

/// Small squares anywhere; one of `large_each`, if any, is larger.
std::vector<Bounds> scattered(std::size_t count, std::size_t large_each) {
  std::mt19937 random(5);
  std::vector<Bounds> all;
  for (std::size_t i = 0; i < count; ++i) {
    const auto x = static_cast<std::int32_t>(random() >> 3U);
    const auto y = static_cast<std::int32_t>(random() >> 3U);
    const std::int32_t side = large_each != 0 && i % large_each == 0 ? 1 << 26U : 1 << 10U;
    all.emplace_back(x, y, x + side, y + side);
  }
  return all;
}

struct Counts {
  std::size_t root_children = 0;
  std::size_t groups = 0;
  std::size_t visited = 0;  ///< drawables of the leaves that windows meet
  std::size_t met = 0;      ///< drawables that windows meet
};

/// Fills a list with diagonals of the given bounds and looks through it with windows.
Counts counts_of(const std::vector<Bounds>& bounds, const Order& order) {
  DL::DisplayList list;
  std::map<const DL::Drawable*, Bounds> where;
  for (const std::size_t index : order) {
    const DL::PointTemplate<long> corners[] = {bounds[index].min, bounds[index].max};
    auto* diagonal = new DL::DLPolyline({}, 2, corners);
    where[diagonal] = bounds[index];
    EXPECT_NE(list.add(diagonal), nullptr);
  }
  Counts counts;
  for (const DL::Group* g = list.m_pRootGroup->m_pFirst.group; g != nullptr; g = g->m_pNext) {
    ++counts.root_children;
  }
  const std::vector<DL::Group*> groups = groups_of(list);
  counts.groups = groups.size();
  for (std::int32_t window = 0; window < 10; ++window) {
    const std::int32_t corner = window * (1 << 25);
    const Bounds seen(corner, corner, corner + (1 << 26), corner + (1 << 26));
    for (const DL::Group* group : groups) {
      if (!group->contains_drawables() || !group->m_bounds.meets(seen)) continue;
      for (const DL::Drawable* d = group->m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
        ++counts.visited;
        if (where[d].meets(seen)) ++counts.met;
      }
    }
  }
  return counts;
}

std::int32_t any_coordinate() {
  return *rc::gen::oneOf(rc::gen::arbitrary<std::int32_t>(), rc::gen::inRange<std::int32_t>(-3, 4),
                         rc::gen::element(std::numeric_limits<std::int32_t>::min(),
                                          std::numeric_limits<std::int32_t>::max()));
}

RC_GTEST_PROP(InsertionOrder, HasEveryIndexOnceWhateverTheBounds, ()) {
  std::vector<Bounds> bounds;
  for (int left = *rc::gen::inRange(0, 80); left > 0; --left) {
    bounds.emplace_back(any_coordinate(), any_coordinate(), any_coordinate(), any_coordinate());
  }
  Order order = order_of(bounds);
  RC_ASSERT(order == order_of(bounds));
  std::sort(order.begin(), order.end());
  RC_ASSERT(order == as_given(bounds.size()));
}

RC_GTEST_PROP(InsertionOrder, KeepsTheOrderOfWhatIsInTheSamePlace, ()) {
  std::vector<Bounds> bounds;
  for (int left = *rc::gen::inRange(0, 80); left > 0; --left) {
    const std::int32_t at = 1000 * *rc::gen::inRange(0, 3);
    bounds.emplace_back(at, -at, at, -at);
  }
  const Order order = order_of(bounds);
  for (std::size_t i = 1; i < order.size(); ++i) {
    if (bounds[order[i - 1]] == bounds[order[i]]) RC_ASSERT(order[i - 1] < order[i]);
  }
}

RC_GTEST_PROP(InsertionOrder, BringsEqualBoundsTogether, ()) {
  std::vector<Bounds> bounds;
  for (int left = *rc::gen::inRange(0, 80); left > 0; --left) {
    const std::int32_t x = 1000 * *rc::gen::inRange(0, 3);
    const std::int32_t y = 1000 * *rc::gen::inRange(0, 3);
    bounds.emplace_back(x, y, x, y);
  }
  const Order order = order_of(bounds);
  std::vector<Bounds> seen;
  for (const std::size_t index : order) {
    if (!seen.empty() && seen.back() == bounds[index]) continue;
    RC_ASSERT(std::find(seen.begin(), seen.end(), bounds[index]) == seen.end());
    seen.push_back(bounds[index]);
  }
}

TEST(InsertionOrder, PutsWhatHasNoBoundsLast) {
  const std::vector<Bounds> bounds{Bounds(), Bounds(4, 4, 5, 5), Bounds(9, 0, 8, 0),
                                   Bounds(1, 1, 2, 2)};
  const Order order = order_of(bounds);
  EXPECT_EQ((Order{order[2], order[3]}), (Order{0, 2}));
}

TEST(InsertionOrder, PutsWhatIsLargeFirst) {
  const std::vector<Bounds> bounds = scattered(20'000, 2000);
  const Order order = order_of(bounds);
  for (std::size_t i = 0; i < order.size(); ++i) ASSERT_EQ(order[i] % 2000 == 0, i < 10) << i;
}

TEST(InsertionOrder, OfSpansThatDifferInSizeIsNone) {
  const std::vector<Bounds> bounds(3);
  Order order(4, 77);
  EXPECT_FALSE(DL::insertion_order(bounds, order));
  EXPECT_EQ(order, as_given(4));
  EXPECT_TRUE(DL::insertion_order({}, {}));
}

TEST(InsertionOrder, NeverLeavesAQuarterOfThePlaneToComeBack) {
  std::vector<Bounds> bounds = scattered(4096, 0);
  for (Bounds& each : bounds) {  // all over the plane
    const auto spread = [](std::int32_t at) {
      return static_cast<std::int32_t>((std::int64_t{at} - (1 << 28)) * 7);
    };
    each.min = each.max = {spread(each.min.x), spread(each.min.y)};
  }
  int changes = 0;
  std::pair<bool, bool> last{};
  for (const std::size_t index : order_of(bounds)) {
    const std::pair quarter{bounds[index].min.x < 0, bounds[index].min.y < 0};
    if (quarter != last) ++changes;
    last = quarter;
  }
  EXPECT_LE(changes, 4);
}

TEST(InsertionOrder, MakesFewGroupsThatFitWhatTheyHold) {
  for (const std::size_t large_each : {0U, 100U}) {
    const std::vector<Bounds> bounds = scattered(20'000, large_each);
    const Counts before = counts_of(bounds, as_given(bounds.size()));
    const Counts after = counts_of(bounds, order_of(bounds));
    EXPECT_EQ(after.met, before.met);
    EXPECT_GT(before.groups, bounds.size() / 2);
    EXPECT_LT(after.groups, bounds.size() / 10);
    EXPECT_LT(after.root_children, 50U);
    EXPECT_LT(after.visited, 2 * after.met);
    EXPECT_LT(after.visited, before.visited);
  }
}

/// Lines of what drawing the polylines in that order tells the renderer, sorted.
std::vector<std::string> sorted_calls(const std::vector<Bounds>& bounds, const Order& order) {
  RecordedList recorded;
  for (const std::size_t index : order) {
    recorded.list.add(
        make_polyline({bounds[index].min, bounds[index].max}, {static_cast<std::uint32_t>(index)}));
  }
  DL::DisplayList& list = recorded.list;
  list.m_pRootGroup->draw_unclipped(list);
  std::vector<std::string> lines = recorded.take_lines();
  std::sort(lines.begin(), lines.end());
  return lines;
}

TEST(InsertionOrder, GivesTheSameCallsOfTheRenderer) {
  const std::vector<Bounds> bounds = scattered(500, 50);
  EXPECT_EQ(sorted_calls(bounds, order_of(bounds)), sorted_calls(bounds, as_given(bounds.size())));
}

}  // namespace
