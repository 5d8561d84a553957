// Long rows of siblings that are written, read back, told of and drawn as part of
// other lists.

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "displaylist/drawables/debug.h"
#include "tests/support/brute_force_walk.h"
#include "tests/support/recorded_list.h"
#include "tests/support/stream_client.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Group;
using Lines = std::vector<std::string>;

constexpr LogicalBounds kWindow{-150, -150, 180, 180};

void add_dots(DL::DisplayList& list, int count) {
  for (int i = 0; i < count; ++i) {
    const std::int32_t at = i % 2 == 0 ? 100 + i : -100 - i;
    list.add(new DL::DLDot(LM_RGB32{static_cast<std::uint32_t>(i)}, {at, at}));
  }
}

struct Dots : RecordedList {
  Dots() {
    list.m_cMaxOpenDrawables = 2;
    list.set_screen_bounds({-1000, -1000, 1000, 1000});
    list.m_logicalBounds = {-1000, -1000, 1000, 1000};
    list.recompute_transform();
  }
  Lines redrawn() {
    list.m_pRootGroup->draw_bounded(list, kWindow, kWindow);
    return take_lines();
  }
  /// The same, leaf by leaf.
  Lines redrawn_leaf_by_leaf() {
    const std::function<void(const Group&)> walk = [&](const Group& group) {
      // Bounds of nothing, which a leaf that was read has, lie inside all others.
      if (!group.m_bounds.is_inside(kWindow) && !group.m_bounds.meets(kWindow)) return;
      if (group.contains_drawables()) return group.draw_bounded(list, kWindow, kWindow);
      for (const Group* c = group.m_pFirst.group; c != nullptr; c = c->m_pNext) walk(*c);
    };
    walk(*list.m_pRootGroup);
    return take_lines();
  }
  void expect_the_walk() {
    for (int i = 0; i < 3; ++i) {
      const Lines lines = redrawn();
      EXPECT_FALSE(lines.empty());
      EXPECT_EQ(lines, redrawn_leaf_by_leaf());
    }
  }
  std::string told() {
    std::ostringstream os;
    DL::DisplayListDebug statistics{};
    list.m_pRootGroup->dump_subtree(os, 0, statistics);
    return os.str();
  }
};

TEST(LeafIndexStream, DrawingLeavesNoTraceInStreamsAndTellings) {
  Dots dots;
  add_dots(dots.list, 600);
  StreamClient client;
  const auto words = client.written(dots.list);
  const std::string told = dots.told();
  dots.expect_the_walk();
  EXPECT_EQ(client.written(dots.list), words);
  EXPECT_EQ(dots.told(), told);
  EXPECT_EQ(dots.list.m_pRootGroup->level(), 0U);
  EXPECT_EQ(broken_invariants(dots.list), "");
}

TEST(LeafIndexStream, WhatIsReadBackIsRedrawnAndGrows) {
  Dots dots;
  add_dots(dots.list, 600);
  dots.expect_the_walk();
  StreamClient client;
  Dots copy;
  client.read(copy.list, client.written(dots.list));
  copy.expect_the_walk();
  for (int round = 0; round < 5; ++round) {
    add_dots(copy.list, 60);
    copy.expect_the_walk();
  }
}

TEST(LeafIndexStream, ListThatIsReadIntoKeepsNothingOfTheOldTree) {
  Dots dots;
  add_dots(dots.list, 600);
  StreamClient client;
  const auto words = client.written(dots.list);
  dots.expect_the_walk();
  dots.list.m_pRootGroup->remove_all();
  client.read(dots.list, words);
  dots.expect_the_walk();

  Group* old_root = dots.list.m_pRootGroup;
  client.read(dots.list, words);
  dots.expect_the_walk();
  old_root->draw_bounded(dots.list, kWindow, kWindow);
  EXPECT_FALSE(dots.take_lines().empty());
  delete old_root;
  dots.expect_the_walk();
}

TEST(LeafIndexStream, ListInOtherListsIsRedrawnForEachOwner) {
  Dots parent;
  auto* child = new DL::DisplayList;
  child->m_cMaxOpenDrawables = 2;
  add_dots(*child, 600);
  auto* first = new DL::DrawableDisplayList(nullptr, child, nullptr);
  DL::Drawable* second = first->clone();
  static_cast<DL::DrawableDisplayList*>(second)->set_offset({30, 40});
  auto* middle = new DL::DisplayList;
  middle->add(second);
  parent.list.add(first);
  parent.list.add(new DL::DrawableDisplayList(nullptr, middle, nullptr));
  parent.list.m_pRootGroup->draw_bounded(parent.list, {}, kWindow);
  const Lines once = parent.take_lines();
  EXPECT_FALSE(once.empty());
  for (int i = 0; i < 3; ++i) {
    parent.list.m_pRootGroup->draw_bounded(parent.list, {}, kWindow);
    EXPECT_EQ(parent.take_lines(), once);
  }
}

}  // namespace
