#include "displaylist/core/iterators.h"

#include <gtest/gtest.h>

#include "displaylist/drawables/dot.h"
#include "tests/support/grove.h"
#include "tests/support/iterator_walk.h"

namespace {

using DL::DisplayListIterator;
using DL::Drawable;
using DL::Group;
using Ids = std::vector<int>;

TEST(Iterator, GoesThroughAllLeavesInDrawingOrder) {
  Grove grove;
  DisplayListIterator at(&grove.list);
  EXPECT_EQ(at.m_pGroup, grove.right);
  EXPECT_EQ(at.m_pCurrent, grove.right->m_pFirst.drawable);
  EXPECT_EQ(at.next(), grove.shallow->m_pFirst.drawable);
  EXPECT_EQ(at.m_pGroup, grove.shallow);
  EXPECT_EQ(at.next(), grove.deep->m_pFirst.drawable);
  EXPECT_EQ(at.m_pGroup, grove.deep);
  EXPECT_EQ(at.next(), grove.open->m_pFirst.drawable);
  EXPECT_EQ(at.m_pGroup, grove.open);
  EXPECT_EQ(at.m_pCurrent, grove.open->m_pFirst.drawable);
  EXPECT_TRUE(at.is_at_drawable());
  EXPECT_EQ(at.next(), nullptr);
}

TEST(Iterator, GoesThroughTheChainOfALeafThatIsTheRoot) {
  ProbeScene scene;
  for (int i = 0; i < 3; ++i) scene.add({i, 0, i, 0});
  EXPECT_EQ(ids_walked(DisplayListIterator(&scene.list)), (Ids{1, 2, 3}));
}

TEST(Iterator, StaysAtItsEnd) {
  Grove grove;
  DisplayListIterator at(&grove.list);
  while (at.next() != nullptr) {
  }
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(at.m_pCurrent, nullptr);
    EXPECT_EQ(at.m_pGroup, nullptr);
    EXPECT_FALSE(at.is_at_drawable());
    EXPECT_EQ(at.next(), nullptr);
    EXPECT_EQ(at.next_group(), nullptr);
    EXPECT_EQ(at.next_until(grove.open->m_pFirst.drawable), nullptr);
  }
}

TEST(Iterator, OverAnEmptyListStandsAtItsSentinel) {
  DL::DisplayList list;
  DisplayListIterator at(&list);
  EXPECT_EQ(at.m_pGroup, list.m_pRootGroup);
  EXPECT_EQ(at.m_pCurrent, &at.m_sentinel);
  EXPECT_EQ(at.m_sentinel.m_pNext, nullptr);
  EXPECT_FALSE(at.is_at_drawable());
  EXPECT_EQ(at.next(), nullptr);
  EXPECT_EQ(at.m_pCurrent, nullptr);
}

TEST(Iterator, LeavesTheSentinelForTheNextGroup) {
  Grove grove;
  grove.right->remove_all();
  DisplayListIterator at(&grove.list);
  EXPECT_EQ(at.m_pGroup, grove.right);
  EXPECT_EQ(at.m_pCurrent, &at.m_sentinel);
  EXPECT_EQ(at.next(), grove.shallow->m_pFirst.drawable);
}

TEST(Iterator, StandsAtTheFirstDrawableOfTheList) {
  Grove grove;
  grove.right->remove_all();
  grove.shallow->remove_all();
  DisplayListIterator at(&grove.list);
  Drawable* first = grove.deep->m_pFirst.drawable;
  EXPECT_EQ(at.next_until(first), first);
  EXPECT_EQ(at.m_pCurrent, first);
}

TEST(Iterator, PassesOverLeavesAndInnerGroupsWithNothingInThem) {
  Grove grove;
  grove.shallow->remove_all();
  EXPECT_EQ(ids_walked(DisplayListIterator(&grove.list)), (Ids{1, 3, 4}));
  grove.deeper->remove_all();
  EXPECT_EQ(ids_walked(DisplayListIterator(&grove.list)), (Ids{1, 4}));
  grove.inner->remove_all();
  EXPECT_EQ(ids_walked(DisplayListIterator(&grove.list)), (Ids{1, 4}));
  grove.open->remove_all();
  EXPECT_EQ(ids_walked(DisplayListIterator(&grove.list)), (Ids{1}));
  grove.right->remove_all();
  EXPECT_EQ(ids_walked(DisplayListIterator(&grove.list)), Ids{});
  grove.root().remove_all();
  DisplayListIterator at(&grove.list);
  EXPECT_EQ(at.m_pGroup, nullptr);
  EXPECT_EQ(at.next(), nullptr);
}

TEST(Iterator, PassesOverAnInnerGroupWithNothingInItAtTheStart) {
  Grove grove;
  Group* open = grove.open;
  ASSERT_TRUE(grove.root().unlink_child(grove.right));
  delete grove.right;
  grove.inner->remove_all();
  DisplayListIterator at(&grove.list);
  EXPECT_EQ(at.m_pGroup, open);
  EXPECT_EQ(ids_walked(at), Ids{4});
}

TEST(Iterator, PassesOverAnInnerGroupWithNothingInItAtTheEnd) {
  Grove grove;
  ASSERT_TRUE(grove.root().unlink_child(grove.open));
  delete grove.open;
  grove.deeper->remove_all();
  EXPECT_EQ(ids_walked(DisplayListIterator(&grove.list)), (Ids{1, 2}));
}

TEST(Iterator, GoesOnFromAGroupToTheEndOfTheList) {
  Grove grove;
  EXPECT_EQ(ids_walked(DisplayListIterator(&grove.root())), (Ids{1, 2, 3, 4}));
  EXPECT_EQ(ids_walked(DisplayListIterator(grove.right)), (Ids{1, 2, 3, 4}));
  EXPECT_EQ(ids_walked(DisplayListIterator(grove.inner)), (Ids{2, 3, 4}));
  EXPECT_EQ(ids_walked(DisplayListIterator(grove.shallow)), (Ids{2, 3, 4}));
  EXPECT_EQ(ids_walked(DisplayListIterator(grove.deeper)), (Ids{3, 4}));
  EXPECT_EQ(ids_walked(DisplayListIterator(grove.deep)), (Ids{3, 4}));
  EXPECT_EQ(ids_walked(DisplayListIterator(grove.open)), Ids{4});
}

TEST(Iterator, GoesOnFromAnInnerGroupWithNothingInIt) {
  Grove grove;
  grove.deeper->remove_all();
  DisplayListIterator at(grove.deeper);
  EXPECT_EQ(at.m_pGroup, grove.open);
  EXPECT_EQ(ids_walked(at), Ids{4});
}

TEST(Iterator, OverNothingHasNoGroup) {
  DL::DisplayList rootless;
  delete rootless.m_pRootGroup;
  rootless.m_pRootGroup = nullptr;
  DisplayListIterator at(&rootless);
  EXPECT_EQ(at.init(static_cast<DL::DisplayList*>(nullptr)), nullptr);
  EXPECT_EQ(at.init(static_cast<Group*>(nullptr)), nullptr);
  EXPECT_EQ(at.init(&rootless), nullptr);
  EXPECT_EQ(at.m_pCurrent, &at.m_sentinel);
  EXPECT_EQ(at.next_group(), nullptr);
  EXPECT_EQ(at.next(), nullptr);
}

TEST(Iterator, StartsAnewWithTheFirstBottomGroup) {
  Grove grove;
  DisplayListIterator at(grove.open);
  EXPECT_EQ(at.next(), nullptr);
  EXPECT_EQ(at.init(&grove.list), grove.right);
  EXPECT_EQ(ids_walked(at), (Ids{1, 2, 3, 4}));
  EXPECT_EQ(at.init(grove.deeper), grove.deep);
  EXPECT_EQ(ids_walked(at), (Ids{3, 4}));
}

TEST(Iterator, NextGroupLeavesItWhereItIs) {
  Grove grove;
  DisplayListIterator at(&grove.list);
  EXPECT_EQ(at.next_group(), grove.shallow);
  EXPECT_EQ(at.next_group(), grove.shallow);
  EXPECT_EQ(at.m_pGroup, grove.right);
  EXPECT_EQ(at.m_pCurrent, grove.right->m_pFirst.drawable);
  at.next();
  EXPECT_EQ(at.next_group(), grove.deep);
  at.next();
  EXPECT_EQ(at.next_group(), grove.open);
  at.next();
  EXPECT_EQ(at.next_group(), nullptr);
}

TEST(Iterator, NextGroupNamesEmptyLeavesToo) {
  Grove grove;
  grove.shallow->remove_all();
  EXPECT_EQ(DisplayListIterator(&grove.list).next_group(), grove.shallow);
}

TEST(Iterator, HasNoWayBack) {
  Grove grove;
  DisplayListIterator at(&grove.list);
  at.next();
  EXPECT_EQ(at.prev(), nullptr);
  EXPECT_EQ(at.reserved_step(), nullptr);
  EXPECT_EQ(at.m_pCurrent, grove.shallow->m_pFirst.drawable);
}

TEST(Iterator, NextUntilStopsAtTheDrawable) {
  Grove grove;
  const auto all = drawables_of(grove.list);
  DisplayListIterator at(&grove.list);
  EXPECT_EQ(at.next_until(all[0]), all[0]);
  EXPECT_EQ(at.next_until(all[2]), all[2]);
  EXPECT_EQ(at.m_pGroup, grove.deep);
  EXPECT_EQ(at.next_until(all[2]), all[2]);
  EXPECT_EQ(at.next(), all[3]);
}

TEST(Iterator, NextUntilEndsWhenTheDrawableDoesNotFollow) {
  Grove grove;
  const auto all = drawables_of(grove.list);
  DisplayListIterator at(&grove.list);
  at.next();
  EXPECT_EQ(at.next_until(all[0]), nullptr);
  EXPECT_EQ(at.m_pCurrent, nullptr);
  EXPECT_EQ(at.m_pGroup, nullptr);
}

TEST(Iterator, GoesThroughHiddenGroupsAndDrawables) {
  DL::DisplayList list;
  auto* hidden = new DL::DLDot({}, {1, 1});
  auto* visible = new DL::DLDot({}, {2, 2});
  list.add(hidden);
  list.add(visible);
  static_cast<Drawable*>(hidden)->hide();
  list.m_pRootGroup->make_hidden();
  DisplayListIterator at(&list);
  EXPECT_EQ(walked(at), (std::vector<Drawable*>{hidden, visible}));
}

}  // namespace
