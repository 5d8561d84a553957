#include <gtest/gtest.h>

#include <memory>
#include <typeinfo>
#include <vector>

#include "tests/support/recorded_list.h"

// Groups open, close, split and hide in place while pointers to them are held.

namespace {

using DL::BottomGroup;
using DL::Group;
using DL::OpenBottomGroup;

/// A new root of the list, in place of the one that it has. A Group is all that
/// it stays when it changes.
Group* make_root(DL::DisplayList& list) {
  delete list.m_pRootGroup;
  auto* group = new OpenBottomGroup(list, nullptr, 0, LogicalBounds(0, 0, 9, 9));
  list.m_pRootGroup = group;
  group->append(new DL::DLDot({}, {1, 2}), {1, 2, 1, 2}, 0);
  return group;
}

TEST(GroupChange, FromOpenToClosedIsSeenThroughThePointerThatNewReturned) {
  DL::DisplayList list;
  Group* group = make_root(list);
  EXPECT_TRUE(group->is_open());
  group->close();
  EXPECT_FALSE(group->is_open());
  EXPECT_TRUE(group->contains_drawables());
  EXPECT_EQ(typeid(*group), typeid(BottomGroup));
}

TEST(GroupChange, FromVisibleToHiddenAndBackIsSeen) {
  DL::DisplayList list;
  Group* group = list.m_pRootGroup;
  const Group* constant = group;
  for (int round = 0; round < 3; ++round) {
    group->make_hidden();
    EXPECT_TRUE(group->is_hidden());
    EXPECT_TRUE(constant->is_hidden());
    EXPECT_TRUE(constant->is_open());
    group->make_visible();
    EXPECT_FALSE(group->is_hidden());
    EXPECT_TRUE(constant->is_open());
  }
}

TEST(GroupChange, OfAClosedGroupToHiddenIsSeenInALoop) {
  DL::DisplayList list;
  Group* group = make_root(list);
  group->close();
  int hidden = 0;
  for (int i = 0; i < 100; ++i) {
    i % 3 == 0 ? group->make_hidden() : group->make_visible();
    hidden += group->is_hidden() ? 1 : 0;
  }
  EXPECT_EQ(hidden, 34);
}

TEST(GroupChange, BySplittingIsSeenInTheMiddleOfALoop) {
  DL::DisplayList list;
  list.m_cMaxOpenDrawables = 4;
  Group* root = list.m_pRootGroup;
  int adds_before_split = 0;
  for (int i = 0; i < 32; ++i) {
    if (root->contains_drawables() && root->is_open()) ++adds_before_split;
    list.add(new DL::DLDot({}, {1000 * i, 1000 * i}));
  }
  EXPECT_EQ(list.m_pRootGroup, root);
  EXPECT_FALSE(root->contains_drawables());
  EXPECT_FALSE(root->is_open());
  EXPECT_GE(adds_before_split, 4);
  EXPECT_LT(adds_before_split, 32);

  RecordedList recorded;
  root->draw_unclipped(recorded.list);
  EXPECT_EQ(recorded.recorder->calls().size(), 32U);
  LogicalBounds bounds;
  root->add_bounds(bounds);
  EXPECT_EQ(bounds, LogicalBounds(0, 0, 31000, 31000));
}

TEST(GroupChange, ShowsInWhatTheGroupDraws) {
  RecordedList recorded;
  Group* group = recorded.list.m_pRootGroup;
  std::size_t expected = 0;
  for (int i = 0; i < 10; ++i) {
    recorded.list.add(new DL::DLDot({}, {i, i}));
    expected += static_cast<std::size_t>(i) + 1;
    group->draw_unclipped(recorded.list);
    group->make_hidden();
    group->make_visible();
  }
  EXPECT_EQ(recorded.recorder->calls().size(), expected);
  group->close();
  EXPECT_FALSE(group->is_open());
  group->draw_unclipped(recorded.list);
  EXPECT_EQ(recorded.recorder->calls().size(), expected + 10);
}

TEST(GroupChange, OfEachGroupThatFillsUpIsSeenThroughThePointerToIt) {
  DL::DisplayList list;
  list.m_cMaxOpenDrawables = 4;
  list.m_cMaxLevel = 1;
  std::vector<Group*> filled;
  for (int i = 0; i < 40; ++i) {
    list.add(new DL::DLDot({}, {i, i}));
    Group* open = list.m_pOpenGroup;
    EXPECT_TRUE(open->is_open());
    if (filled.empty() || filled.back() != open) filled.push_back(open);
    for (Group* group : filled) EXPECT_EQ(group->is_open(), group == open);
  }
  EXPECT_GT(filled.size(), 8U);
}

}  // namespace
