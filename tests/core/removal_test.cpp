// Removal of a drawable that is named or searched for, and of all.

#include <gtest/gtest.h>

#include "displaylist/displaylist.h"
#include "tests/support/grove.h"
#include "tests/support/point_printing.h"

namespace {

using DL::Drawable;
using DL::Group;
using DL::Search;
using Bounds = DL::BoundsTemplate<long>;
using Ids = std::vector<int>;

/// Three probes in a leaf, which is the root.
struct OneLeaf : ProbeScene {
  OneLeaf() {
    for (int i = 0; i < 3; ++i) add({i, 0, i, 0});
    all = drawables_of(list);
  }
  std::vector<Drawable*> all;
};

TEST(Remove, TakesTheDrawableOutOfItsChain) {
  for (std::size_t index = 0; index < 3; ++index) {
    OneLeaf leaf;
    Drawable* previous = index == 0 ? nullptr : leaf.all[index - 1];
    EXPECT_EQ(leaf.root().remove(leaf.all[index], previous), &leaf.root());
    Ids left{1, 2, 3};
    left.erase(left.begin() + static_cast<std::ptrdiff_t>(index));
    EXPECT_EQ(leaf.ids_in(leaf.root()), left);
    EXPECT_EQ(leaf.log.alive, 2);
    EXPECT_EQ(leaf.list.m_cOpenDrawables, 2);
    EXPECT_EQ(broken_invariants(leaf.list, TreeHistory::removals), "");
  }
}

TEST(Remove, FromTheRootLeavesItEvenWhenEmpty) {
  ProbeScene scene;
  scene.add(Grove::k1);
  Group* root = &scene.root();
  EXPECT_EQ(root->remove(root->m_pFirst.drawable, nullptr), root);
  EXPECT_EQ(root->m_pFirst.drawable, nullptr);
  EXPECT_EQ(root->m_pLastChild.drawable, nullptr);
  EXPECT_EQ(scene.list.m_pOpenGroup, root);
  EXPECT_EQ(scene.list.m_cOpenDrawables, 0);
  EXPECT_EQ(scene.log.alive, 0);
  EXPECT_EQ(scene.add(Grove::k2), root);
  EXPECT_EQ(scene.ids_in(*root), Ids{2});
}

TEST(Remove, FromAnInnerGroupDoesNothing) {
  Grove grove;
  EXPECT_EQ(grove.inner->remove(grove.shallow->m_pFirst.drawable, nullptr), nullptr);
  EXPECT_EQ(grove.root().remove(nullptr, nullptr), nullptr);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 3, 4}));
}

TEST(Remove, OfWhatDoesNotFollowThePreviousOneDoesNothing) {
  OneLeaf leaf;
  EXPECT_EQ(leaf.root().remove(leaf.all[1], nullptr), nullptr);
  EXPECT_EQ(leaf.root().remove(leaf.all[2], leaf.all[0]), nullptr);
  EXPECT_EQ(leaf.root().remove(leaf.all[0], leaf.all[2]), nullptr);
  EXPECT_EQ(leaf.root().remove(nullptr, leaf.all[2]), nullptr);
  EXPECT_EQ(leaf.root().remove(nullptr, nullptr), nullptr);
  EXPECT_EQ(leaf.log.alive, 3);
  EXPECT_EQ(leaf.list.m_cOpenDrawables, 3);
}

TEST(Remove, OfTheLastOneDestroysEveryGroupThatBecomesEmpty) {
  Grove grove;
  const Bounds before = grove.inner->m_bounds;
  EXPECT_EQ(grove.deep->remove(grove.deep->m_pFirst.drawable, nullptr), grove.inner);
  EXPECT_EQ(grove.inner->m_pLastChild.group, grove.shallow);
  EXPECT_EQ(grove.shallow->m_pNext, nullptr);
  EXPECT_EQ(grove.inner->m_bounds, before);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 4}));
  EXPECT_EQ(grove.log.alive, 3);
  EXPECT_EQ(grove.shallow->remove(grove.shallow->m_pFirst.drawable, nullptr), &grove.root());
  EXPECT_EQ(grove.right->m_pNext, grove.open);
  EXPECT_EQ(grove.broken(), "");
}

TEST(Remove, OfAllLeavesTheRootWithoutChildren) {
  Grove grove;
  Group* root = &grove.root();
  EXPECT_EQ(grove.deep->remove(grove.deep->m_pFirst.drawable, nullptr), grove.inner);
  EXPECT_EQ(grove.shallow->remove(grove.shallow->m_pFirst.drawable, nullptr), root);
  EXPECT_EQ(grove.open->remove(grove.open->m_pFirst.drawable, nullptr), root);
  EXPECT_EQ(grove.right->remove(grove.right->m_pFirst.drawable, nullptr), root);
  EXPECT_EQ(root->m_pFirst.group, nullptr);
  EXPECT_EQ(root->m_pLastChild.group, nullptr);
  EXPECT_EQ(&grove.root(), root);
  EXPECT_EQ(grove.broken(), "");
  EXPECT_NE(grove.add(Grove::k2), nullptr);
  EXPECT_EQ(grove.ids(), Ids{5});
  EXPECT_EQ(broken_invariants(grove.list), "");
}

TEST(Remove, OfTheOpenGroupLeavesTheListWithoutOneUntilTheNextAdd) {
  Grove grove;
  grove.list.m_pInsertHint = grove.open;
  EXPECT_EQ(grove.open->remove(grove.open->m_pFirst.drawable, nullptr), &grove.root());
  EXPECT_EQ(grove.list.m_pOpenGroup, nullptr);
  EXPECT_EQ(grove.list.m_pInsertHint, nullptr);
  EXPECT_EQ(grove.list.m_cOpenDrawables, 0);
  EXPECT_EQ(grove.list.m_openBounds, Bounds());
  Group* taken = grove.add(Grove::k4);
  EXPECT_EQ(taken, grove.list.m_pOpenGroup);
  EXPECT_EQ(taken, grove.root().m_pLastChild.group);
  EXPECT_EQ(grove.ids(), (Ids{1, 2, 3, 5}));
  EXPECT_EQ(broken_invariants(grove.list), "");
}

TEST(Remove, OfTheOpenGroupWithoutMemoryForAnotherLeavesTheListAsItIs) {
  TestHeap heap;
  ProbeScene scene(1, 5, &heap);
  scene.add(Grove::k1);
  scene.add(Grove::k2);
  Group* open = scene.list.m_pOpenGroup;
  EXPECT_EQ(open->remove(open->m_pFirst.drawable, nullptr), &scene.root());
  heap.fail_after(0);
  EXPECT_EQ(scene.add(Grove::k2), nullptr);
  EXPECT_EQ(scene.list.m_pOpenGroup, nullptr);
  EXPECT_EQ(scene.log.alive, 1);
  heap.fail_after(1000);
  EXPECT_EQ(scene.add(Grove::k2), scene.list.m_pOpenGroup);
  EXPECT_EQ(broken_invariants(scene.list), "");
}

TEST(Remove, DoesNotShrinkTheOpenBounds) {
  ProbeScene scene;
  scene.add(Grove::k1);
  scene.add(Grove::k4);
  scene.root().remove(scene.root().m_pFirst.drawable, nullptr);
  EXPECT_EQ(scene.list.m_openBounds, (Bounds{10, 10, 40, 40}));
}

TEST(Remove, BetweenTwoRedrawsOfWorkerThreads) {
  Grove grove;
  DL::DisplayListMultithread threads(1);
  threads.m_pDisplayList = &grove.list;
  grove.list.m_pMultithread = &threads;
  grove.root().draw_unclipped(grove.list);
  ASSERT_FALSE(threads.is_drained());
  threads.WaitForAllThreads();
  EXPECT_EQ(grove.log.take().size(), 4U);
  EXPECT_EQ(grove.deep->remove(grove.deep->m_pFirst.drawable, nullptr), grove.inner);
  grove.root().remove_bounded(Grove::k1);
  grove.root().draw_unclipped(grove.list);
  threads.WaitForAllThreads();
  EXPECT_EQ(grove.log.take(), (ProbeCalls{{4, DrawSlot::unclipped}, {2, DrawSlot::unclipped}}));
  grove.root().remove_all();
  grove.root().draw_unclipped(grove.list);
  EXPECT_TRUE(threads.is_drained());
  EXPECT_EQ(grove.log.alive, 0);
}

TEST(RemoveAll, OfALeafLeavesItEmpty) {
  Grove grove;
  for (Group* leaf : {grove.open, grove.right, grove.deep}) {
    leaf->remove_all();
    EXPECT_EQ(leaf->m_pFirst.drawable, nullptr);
    EXPECT_EQ(leaf->m_pLastChild.drawable, nullptr);
    EXPECT_EQ(grove.list.m_cOpenDrawables, 0);
  }
  EXPECT_EQ(grove.list.m_pOpenGroup, grove.open);
  EXPECT_EQ(grove.log.alive, 1);
  EXPECT_EQ(leaves_of(grove.list).size(), 4U);
  EXPECT_EQ(grove.broken(), "");
}

TEST(RemoveAll, OfTheOpenGroupCountsNoneAndItTakesMore) {
  OneLeaf leaf;
  leaf.root().remove_all();
  EXPECT_EQ(leaf.list.m_cOpenDrawables, 0);
  EXPECT_EQ(leaf.log.alive, 0);
  leaf.root().remove_all();
  EXPECT_EQ(leaf.list.m_cOpenDrawables, 0);
  EXPECT_EQ(leaf.add(Grove::k1), &leaf.root());
  EXPECT_EQ(leaf.list.m_cOpenDrawables, 1);
}

TEST(RemoveAll, OfAnInnerGroupDestroysItsChildren) {
  Grove grove;
  grove.inner->remove_all();
  EXPECT_EQ(grove.inner->m_pFirst.group, nullptr);
  EXPECT_EQ(grove.inner->m_pLastChild.group, nullptr);
  EXPECT_EQ(grove.child(grove.root(), 1), grove.inner);
  EXPECT_EQ(grove.ids(), (Ids{1, 4}));
  EXPECT_EQ(grove.log.alive, 2);
  EXPECT_EQ(grove.list.m_pOpenGroup, grove.open);
}

TEST(RemoveAll, OfTheRootTakesTheOpenGroupToo) {
  Grove grove;
  grove.root().remove_all();
  EXPECT_EQ(grove.root().m_pFirst.group, nullptr);
  EXPECT_EQ(grove.list.m_pOpenGroup, nullptr);
  EXPECT_EQ(grove.log.alive, 0);
  EXPECT_EQ(grove.broken(), "");
  for (const Bounds& bounds : {Grove::k1, Grove::k2, Grove::k3}) {
    EXPECT_NE(grove.add(bounds), nullptr);
  }
  EXPECT_EQ(grove.ids(), (Ids{5, 6, 7}));
  EXPECT_EQ(broken_invariants(grove.list), "");
}

TEST(RemoveAll, OfHiddenGroupsIsThatOfVisibleOnes) {
  Grove grove;
  for (Group* group : groups_of(grove.list)) group->make_hidden();
  grove.open->remove_all();
  EXPECT_EQ(grove.list.m_cOpenDrawables, 0);
  EXPECT_TRUE(grove.open->is_hidden());
  grove.inner->remove_all();
  EXPECT_EQ(grove.ids(), Ids{1});
  grove.root().remove_all();
  EXPECT_EQ(grove.log.alive, 0);
  EXPECT_TRUE(grove.root().is_hidden());
}

}  // namespace
