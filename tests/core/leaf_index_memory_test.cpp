// The memory of what bounded drawing keeps of long rows of siblings.

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/live_heap.h"
#include "tests/support/probe_scene.h"
#include "tests/support/reference_redraw.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Group;
using Bounds = DL::BoundsTemplate<long>;

/// A scene in which each probe opens another child of the root.
struct Row : ProbeScene {
  static Bounds place(int i) {
    const std::int32_t x = 1000 + 10 * (i / 2);
    return i % 2 == 0 ? Bounds{x, x, x + 5, x + 5} : Bounds{-x - 5, -x - 5, -x, -x};
  }

  Row(LumenHeap* heap, int count) : ProbeScene(1, 20, heap) {
    for (int i = 0; i < count; ++i) add(place(i));
  }

  bool draws_what_the_walk_does(const Bounds& inner, const Bounds& outer) {
    for (const DrawForm& form : kDrawForms) {
      if (!form.bounded) continue;
      const ReferenceRedraw expected(root(), list, form, inner, outer);
      ProbeCalls polls_left_out;
      for (const ProbeCall& call : expected.calls) {
        if (call.id > 0) polls_left_out.push_back(call);
      }
      form.draw(root(), list, inner, outer);
      if (log.take() != polls_left_out) return false;
    }
    return true;
  }
  bool draws_what_the_walk_does() {
    const Bounds window{900, 900, 1400, 1400};
    return draws_what_the_walk_does(window, window) &&
           draws_what_the_walk_does({}, Bounds::plane());
  }
};

TEST(LeafIndexMemory, FirstRedrawTakesSomeAndTheNextNone) {
  LiveHeap heap;
  Row row(&heap, 400);
  const std::int64_t built = heap.requests();
  EXPECT_TRUE(row.draws_what_the_walk_does());
  const std::int64_t drawn = heap.requests();
  EXPECT_GT(drawn, built);
  for (int i = 0; i < 5; ++i) EXPECT_TRUE(row.draws_what_the_walk_does());
  EXPECT_EQ(heap.requests(), drawn);
}

TEST(LeafIndexMemory, RedrawWhereNothingIsSimpleTakesNoneAgain) {
  LiveHeap heap;
  Row row(&heap, 400);
  EXPECT_TRUE(row.draws_what_the_walk_does());
  const std::int64_t drawn = heap.requests();
  // What needs no clipping reaches beyond what is seen.
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(row.draws_what_the_walk_does(Bounds::plane(), {1100, 1100, 1300, 1300}));
    EXPECT_TRUE(row.draws_what_the_walk_does({1000, 1000, 1200, 1200}, {1100, 1100, 1300, 1300}));
  }
  EXPECT_EQ(heap.requests(), drawn);
}

TEST(LeafIndexMemory, FewSiblingsTakeNone) {
  LiveHeap heap;
  Row row(&heap, 20);
  const std::int64_t built = heap.requests();
  EXPECT_TRUE(row.draws_what_the_walk_does());
  EXPECT_EQ(heap.requests(), built);
}

TEST(LeafIndexMemory, ListGivesAllBack) {
  LiveHeap heap;
  {
    Row row(&heap, 400);
    EXPECT_TRUE(row.draws_what_the_walk_does());
    for (int i = 400; i < 900; ++i) row.add(Row::place(i));
    EXPECT_TRUE(row.draws_what_the_walk_does());
    EXPECT_GT(heap.alive(), 0U);
  }
  EXPECT_EQ(heap.alive(), 0U);
}

TEST(LeafIndexMemory, RemovingAllGivesAllButTheRootBack) {
  LiveHeap heap;
  Row row(&heap, 400);
  EXPECT_TRUE(row.draws_what_the_walk_does());
  row.root().remove_all();
  EXPECT_EQ(heap.alive(), 1U);
  EXPECT_TRUE(row.draws_what_the_walk_does());
}

TEST(LeafIndexMemory, DirectRemovalOfEachGivesAllButTheRootBack) {
  for (const bool from_the_end : {false, true}) {
    LiveHeap heap;
    Row row(&heap, 200);
    while (row.root().m_pFirst.group != nullptr) {
      EXPECT_TRUE(row.draws_what_the_walk_does());
      const std::vector<Group*> leaves = leaves_of(row.list);
      Group* leaf = from_the_end ? leaves.back() : leaves.front();
      ASSERT_NE(leaf->remove(leaf->m_pFirst.drawable, nullptr), nullptr);
    }
    EXPECT_EQ(heap.alive(), 1U);
  }
}

TEST(LeafIndexMemory, DrawingWithoutMemoryIsThePlainWalk) {
  LiveHeap heap;
  {
    Row row(&heap, 400);
    for (std::int64_t good = 0; good < 4; ++good) {
      heap.allow(good);
      EXPECT_TRUE(row.draws_what_the_walk_does()) << good;
      heap.allow(LiveHeap::kNever);
      EXPECT_NE(row.add(Row::place(static_cast<int>(good))), nullptr);
      EXPECT_TRUE(row.draws_what_the_walk_does()) << good;
      row.root().remove_bounded(Row::place(350 + static_cast<int>(good)));
    }
    EXPECT_EQ(broken_invariants(row.list, TreeHistory::removals), "");
  }
  EXPECT_EQ(heap.alive(), 0U);
}

TEST(LeafIndexMemory, EveryFailureWhileTheListGrowsAndIsDrawnLeavesItRight) {
  for (std::int64_t good = 100; good < 240; good += 7) {
    LiveHeap heap(good);
    {
      Row row(&heap, 0);
      for (int i = 0; i < 150; ++i) {
        row.add(Row::place(i));
        if (i % 10 != 9) continue;
        EXPECT_TRUE(row.draws_what_the_walk_does()) << good << ' ' << i;
      }
      EXPECT_EQ(broken_invariants(row.list, TreeHistory::removals), "") << good;
    }
    EXPECT_EQ(heap.alive(), 0U) << good;
  }
}

/// A lasting index of a group and one above it: both go.
TEST(LeafIndexMemory, NestedRowsGiveAllBack) {
  LiveHeap heap;
  {
    ProbeScene scene(1, 20, &heap);
    for (int outer = 0; outer < 100; ++outer) {
      const std::int32_t side = outer % 2 == 0 ? 1 : -1;
      for (int i = 0; i < 120; ++i) {
        const std::int32_t x = 1000 + i;
        const std::int32_t y = i % 2 == 0 ? 1000 : 1 << 30;
        scene.add({side * x, side * y, side * x, side * y});
      }
      if (outer % 10 == 9) scene.root().draw_bounded(scene.list, {}, Bounds::plane());
    }
    scene.log.take();
    for (const DrawForm& form : kDrawForms) {
      if (!form.bounded) continue;
      form.draw(scene.root(), scene.list, {}, Bounds::plane());
      EXPECT_EQ(scene.log.take().size(), 12000U) << form;
    }
    EXPECT_GT(heap.alive(), 0U);
  }
  EXPECT_EQ(heap.alive(), 0U);
}

TEST(LeafIndexMemory, IsNotTakenFromTheHeapOfAnotherListThatDraws) {
  Row row(nullptr, 400);
  const Bounds window{900, 900, 1400, 1400};
  {
    LiveHeap heap;
    DL::DisplayList visitor;
    visitor.m_heap = &heap;
    visitor.m_pRenderer = row.list.m_pRenderer;
    for (int i = 0; i < 3; ++i) row.root().draw_bounded(visitor, window, window);
    EXPECT_EQ(heap.requests(), 0);
  }
  EXPECT_FALSE(row.log.take().empty());
  EXPECT_TRUE(row.draws_what_the_walk_does());
}

}  // namespace
