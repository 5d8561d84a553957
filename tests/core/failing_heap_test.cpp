// Insertion while the list's heap has no memory: what is not taken stays the
// caller's, what was taken stays in the list, and the list goes on.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/support/bounds_generators.h"
#include "tests/support/point_printing.h"
#include "tests/support/probe_scene.h"
#include "tests/support/test_heap.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Drawable;
using DL::Group;
using Bounds = DL::BoundsTemplate<long>;
using Ids = std::vector<int>;

constexpr std::int64_t kPlenty = 1'000'000'000;
constexpr Bounds kRight{10, 10, 20, 20};
constexpr Bounds kLeft{-20, 10, -10, 20};

Ids all_ids(DL::DisplayList& list) {
  Ids ids;
  for (Drawable* d : drawables_of(list)) ids.push_back(static_cast<ProbeDrawable*>(d)->id());
  return ids;
}

struct FailingHeap : testing::Test {
  TestHeap heap;
  ProbeScene scene{1, 1, &heap};
};

TEST_F(FailingHeap, GroupsComeFromTheListsHeap) {
  EXPECT_EQ(heap.requests(), 1);
  scene.add(kRight);
  EXPECT_EQ(heap.requests(), 1);
  scene.add(kRight);
  EXPECT_EQ(heap.requests(), 3);
  EXPECT_EQ(heap.bytes(), 3 * sizeof(Group));
}

TEST_F(FailingHeap, SplitThatCannotBeginChangesNothing) {
  scene.add(kRight);
  heap.fail_after(0);
  EXPECT_EQ(scene.add(kRight), nullptr);
  EXPECT_EQ(&scene.root(), scene.list.m_pOpenGroup);
  EXPECT_EQ(all_ids(scene.list), Ids{1});
  EXPECT_EQ(scene.log.alive, 1);
  EXPECT_EQ(broken_invariants(scene.list), "");
  heap.fail_after(kPlenty);
  EXPECT_NE(scene.add(kRight), nullptr);
  EXPECT_EQ(all_ids(scene.list), (Ids{1, 3}));
}

TEST_F(FailingHeap, AnOpenGroupIsNotClosedWhenItsSuccessorCannotBeOpened) {
  scene.add(kRight);
  scene.add(kRight);
  Group* open = scene.list.m_pOpenGroup;
  heap.fail_after(0);
  EXPECT_EQ(scene.add(kRight), nullptr);  // full at the deepest level
  EXPECT_EQ(scene.add(kLeft), nullptr);
  scene.list.m_cMaxOpenDrawables = 10;
  EXPECT_EQ(scene.add(kLeft), nullptr);  // climbs
  EXPECT_EQ(scene.list.m_pOpenGroup, open);
  EXPECT_EQ(broken_invariants(scene.list), "");
  EXPECT_EQ(scene.add({30, 30, 31, 31}), open);  // needs no memory
  heap.fail_after(kPlenty);
  EXPECT_NE(scene.add(kLeft), nullptr);
  EXPECT_EQ(all_ids(scene.list), (Ids{1, 2, 6, 7}));
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST_F(FailingHeap, AnEmptyOpenGroupIsKeptWhenItsSuccessorCannotBeOpened) {
  scene.add(kRight);
  scene.add(kRight);
  Group* open = scene.list.m_pOpenGroup;
  open->close();
  open->create_open_bottom_group(&scene.list);
  heap.fail_after(0);
  EXPECT_EQ(scene.add(kLeft), nullptr);
  EXPECT_EQ(broken_invariants(scene.list), "");
  heap.fail_after(kPlenty);
  EXPECT_NE(scene.add(kLeft), nullptr);
  EXPECT_EQ(all_ids(scene.list), (Ids{1, 2, 4}));
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST_F(FailingHeap, SplitThatFailsHalfWayLosesNothing) {
  scene.list.m_cMaxOpenDrawables = 4;
  for (const Bounds& b : {kRight, kLeft, kRight, kLeft}) scene.add(b, 2);
  heap.fail_after(2);  // the first two children
  EXPECT_EQ(scene.add({30, -30, 31, -29}), nullptr);
  EXPECT_EQ(all_ids(scene.list), (Ids{1, 2, 3, 4}));
  EXPECT_EQ(scene.log.alive, 4);
  Bounds all;
  scene.root().add_bounds(all);
  EXPECT_TRUE(all.is_inside(scene.root().m_bounds));
  heap.fail_after(kPlenty);
  EXPECT_NE(scene.add(kRight), nullptr);
  EXPECT_EQ(all_ids(scene.list), (Ids{1, 2, 3, 4, 6}));
  scene.root().draw_bounded(scene.list, Bounds(), kLeft);
  const ProbeCalls calls = scene.log.take();
  for (const int id : {2, 4}) {
    EXPECT_EQ(std::count(calls.begin(), calls.end(), ProbeCall{id, DrawSlot::clipped}), 1);
  }
}

TEST_F(FailingHeap, ReopeningWaitsForMemory) {
  scene.add(kRight);
  scene.add(kRight);
  scene.root().unlink_child(scene.list.m_pOpenGroup);
  delete static_cast<Group*>(scene.list.m_pOpenGroup);
  ASSERT_EQ(scene.list.m_pOpenGroup, nullptr);
  heap.fail_after(0);
  EXPECT_EQ(scene.add(kRight), nullptr);
  heap.fail_after(kPlenty);
  EXPECT_NE(scene.add(kRight), nullptr);
  EXPECT_EQ(all_ids(scene.list), (Ids{1, 4}));
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(ExhaustedHeap, ListWithoutARootTakesNothingUntilThereIsMemory) {
  TestHeap heap(0);
  ProbeScene scene(4, 5, &heap);
  EXPECT_EQ(scene.list.m_pRootGroup, nullptr);
  EXPECT_EQ(scene.add(kRight), nullptr);
  heap.fail_after(kPlenty);
  EXPECT_NE(scene.add(kRight), nullptr);
  EXPECT_EQ(all_ids(scene.list), Ids{2});
  EXPECT_EQ(broken_invariants(scene.list), "");
}

RC_GTEST_PROP(FailingHeapProperty, NothingIsLostWhicheverRequestFails, ()) {
  TestHeap heap;
  ProbeScene scene(*rc::gen::inRange(1, 9), *rc::gen::inRange(1, 32), &heap);
  Ids taken;
  for (const Bounds& bounds : *scene_bounds()) {
    heap.fail_after(*rc::gen::element<std::int64_t>(0, 1, 2, 3, kPlenty, kPlenty));
    const int id = scene.next_id;
    if (scene.add(bounds) != nullptr) taken.push_back(id);
    RC_ASSERT(all_ids(scene.list) == taken);
    RC_ASSERT(scene.log.alive == static_cast<int>(taken.size()));
    RC_ASSERT(scene.list.m_pOpenGroup->is_open());
    RC_ASSERT(leaves_of(scene.list).back() == scene.list.m_pOpenGroup);
    for (Group* leaf : leaves_of(scene.list)) {
      Bounds contents;
      leaf->add_bounds(contents);
      for (Group* g = leaf; g != nullptr; g = g->m_pParent) {
        RC_ASSERT(contents.is_inside(g->m_bounds));
      }
    }
  }
}

}  // namespace
