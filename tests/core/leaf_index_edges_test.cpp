// Odd trees with long rows of siblings, and lists that change while they are drawn.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "displaylist/drawables/search.h"
#include "tests/support/interrupt_counter.h"
#include "tests/support/iterator_walk.h"
#include "tests/support/probe_scene.h"
#include "tests/support/reference_redraw.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Group;
using Bounds = DL::BoundsTemplate<long>;

/// Where two runs of calls part; empty when they do not.
std::string first_difference(const ProbeCalls& calls, const ProbeCalls& expected) {
  const auto [call, due] =
      std::mismatch(calls.begin(), calls.end(), expected.begin(), expected.end());
  std::ostringstream os;
  if (call != calls.end()) os << "call " << call - calls.begin() << " is " << *call << ' ';
  if (due != expected.end()) os << "call " << due - expected.begin() << " is due: " << *due;
  return os.str();
}

/// A list whose every call and poll is written down.
struct Scene : ProbeScene {
  using ProbeScene::ProbeScene;

  /// Opens a child of the root for each pair of probes, and two leaves in that.
  void add_pairs(int count) {
    for (int i = 0; i < count; ++i) {
      const std::int32_t side = i % 2 == 0 ? 1 : -1;
      const std::int32_t x = side * (100 + i);
      add({x, x, x, x});
      const std::int32_t far = side * ((1 << 30) + 100 + i);
      add({far, far, far, far});
    }
  }
  /// Opens a leaf below the root for each probe.
  void add_row(int count) {
    for (int i = 0; i < count; ++i) {
      const std::int32_t x = i % 2 == 0 ? 100 + i : -100 - i;
      add({x, x, x, x});
    }
  }

  void write_polls_down() {
    list.m_pfnInterrupt = &poll<ReferenceRedraw::kPoll>;
    list.m_pfnSelInterrupt = &poll<ReferenceRedraw::kSelectionPoll>;
    list.m_pInterruptContext = list.m_pSelInterruptContext = this;
  }
  template <int Kind>
  static bool poll(void* context, DL::DisplayList*) {
    auto* self = static_cast<Scene*>(context);
    self->log.calls.push_back({Kind, DrawSlot::unclipped});
    if (self->on_poll) self->on_poll();
    return true;
  }

  /// Draws by every bounded form, twice.
  void expect_the_walk(const Bounds& inner, const Bounds& outer) {
    write_polls_down();
    const PollEvery poll_every(1);
    for (int round = 0; round < 2; ++round) {
      for (const DrawForm& form : kDrawForms) {
        if (!form.bounded) continue;
        const ReferenceRedraw expected(root(), list, form, inner, outer);
        log.take();
        form.draw(root(), list, inner, outer);
        EXPECT_EQ(first_difference(log.take(), expected.calls), "") << form;
      }
    }
  }
  void expect_the_walk() {
    const Bounds window{100, 100, 120, 120};
    expect_the_walk(window, window);
    expect_the_walk({-1000, -1000, 130, 130}, {-1000, -1000, 130, 130});
    expect_the_walk({}, Bounds::plane());
    expect_the_walk(Bounds::plane(), window);
  }

  std::function<void()> on_poll;
};

TEST(LeafIndexEdges, GroupsThatHoldNothingAreStillCounted) {
  Scene scene(1, 20);
  scene.add_pairs(150);
  scene.expect_the_walk();
  for (Group* child = scene.root().m_pFirst.group; child != nullptr;) {
    Group* next = child->m_pNext;
    if (child->contains_drawables()) {
      child->remove(child->m_pFirst.drawable, nullptr);
    } else {
      child->remove_all();
    }
    child = next;
  }
  ASSERT_TRUE(leaves_of(scene.list).empty());
  ASSERT_NE(ProbeScene::child(scene.root(), 60), nullptr);
  scene.expect_the_walk();
}

TEST(LeafIndexEdges, LeavesThatHoldNothingDrawNothing) {
  Scene scene(1, 20);
  scene.add_pairs(150);
  scene.expect_the_walk();
  for (Group* leaf : leaves_of(scene.list)) {
    if (scene.ids_in(*leaf).front() % 3 != 0) leaf->remove_all();
  }
  scene.expect_the_walk();
  DL::DisplayListReverseIterator at(&scene.list, Bounds::plane());
  EXPECT_EQ(ids_walked(at).size(), 100U);
}

TEST(LeafIndexEdges, GroupsThatReachBeyondTheirParentsAreFoundAsTheWalkFindsThem) {
  Scene scene(1, 20);
  scene.add_pairs(150);
  for (Group* child = scene.root().m_pFirst.group; child != nullptr; child = child->m_pNext) {
    // As a stream may tell them.
    if (!child->contains_drawables()) child->m_bounds = child->m_pLastChild.group->m_bounds;
  }
  scene.expect_the_walk();
}

TEST(LeafIndexEdges, GroupThatClosesAgainShrinksToWhatIsLeft) {
  Scene scene(1, 20);
  scene.add_pairs(150);
  Group* child = ProbeScene::child(scene.root(), 70);
  ASSERT_FALSE(child->contains_drawables());
  scene.expect_the_walk();
  child->remove_bounded(child->m_pFirst.group->m_bounds);
  scene.expect_the_walk();
  child->close();
  scene.expect_the_walk();
}

TEST(LeafIndexEdges, SearchForBoundsOfNothingFindsTheFirst) {
  Scene scene(1, 20);
  scene.add_row(200);
  scene.expect_the_walk();
  scene.log.on_search = [](ProbeDrawable&, DL::Search&) { return true; };
  for (int id = 1; id <= 3; ++id) {
    DL::Search search;
    search.m_bounds = Bounds();
    ASSERT_NE(scene.root().detach_fast(search), nullptr);
    ASSERT_NE(search.m_pDetached, nullptr);
    EXPECT_EQ(static_cast<ProbeDrawable*>(search.m_pDetached)->id(), id);
    delete search.m_pDetached;
    scene.expect_the_walk();
  }
}

TEST(LeafIndexEdges, ALeafPutIntoAnotherGroupIsDrawnThere) {
  Scene scene(1, 20);
  scene.add_pairs(150);
  scene.expect_the_walk();
  Group* from = ProbeScene::child(scene.root(), 60);
  Group* to = ProbeScene::child(scene.root(), 40);
  ASSERT_FALSE(from->contains_drawables());
  ASSERT_FALSE(to->contains_drawables());
  Group* leaf = from->m_pFirst.group;
  while (!leaf->contains_drawables()) leaf = (from = leaf)->m_pFirst.group;
  ASSERT_TRUE(leaf->m_bounds.is_inside(to->m_bounds));
  ASSERT_TRUE(from->unlink_child(leaf));
  scene.expect_the_walk({}, Bounds::plane());
  leaf->m_pParent = to;
  to->append_child(leaf);
  scene.expect_the_walk({}, Bounds::plane());
}

TEST(LeafIndexEdges, WhatIsAddedToAGroupThatFillsItsCellIsDrawn) {
  Scene scene(1, 20);
  for (int i = 0; i < 75; ++i) {
    for (const std::int32_t at : {0, INT32_MAX, INT32_MIN, -1}) scene.add({at, at, at, at});
  }
  scene.expect_the_walk({}, Bounds::plane());
  Group* taking = ProbeScene::child(scene.root(), 60);
  Group* reopened = ProbeScene::child(scene.root(), 80);
  ASSERT_FALSE(taking->contains_drawables());
  ASSERT_FALSE(reopened->contains_drawables());
  const Bounds corner{taking->m_bounds.min, taking->m_bounds.min};
  scene.list.m_pOpenGroup->close();
  ASSERT_NE(taking->add(scene.make(corner), corner, &scene.list, 0), nullptr);
  scene.expect_the_walk({}, Bounds::plane());

  scene.list.m_pOpenGroup->close();
  scene.expect_the_walk({}, Bounds::plane());
  reopened->create_open_bottom_group(&scene.list);
  const Bounds other{reopened->m_bounds.min, reopened->m_bounds.min};
  ASSERT_EQ(scene.add(other)->m_pParent, reopened);
  scene.expect_the_walk({}, Bounds::plane());
}

// --- Changes in the midst of a draw -------------------------------------------

/// Draws with a poll at each visit; at the first poll the list is changed. The
/// walk comes to what is there when it comes by.
struct ChangeOnTheWay {
  explicit ChangeOnTheWay(Scene& s) : scene(s) {
    scene.write_polls_down();
    scene.root().draw_bounded(scene.list, {}, Bounds::plane());
    scene.log.take();
  }
  std::vector<int> ids_drawn(const std::function<void()>& change) {
    bool changed = false;
    scene.on_poll = [&] {
      if (std::exchange(changed, true)) return;
      change();
    };
    const PollEvery poll_every(3);
    scene.root().draw_bounded_interrupt(scene.list, {}, Bounds::plane());
    scene.on_poll = nullptr;
    std::vector<int> ids;
    for (const ProbeCall& call : scene.log.take()) {
      if (call.id > 0) ids.push_back(call.id);
    }
    return ids;
  }
  Scene& scene;
};

std::vector<int> all_ids(Scene& scene) {
  return ids_of(drawables_of(scene.list));
}

TEST(LeafIndexEdges, WhatAnInterruptTestAddsIsDrawnToo) {
  Scene scene(1, 20);
  scene.add_row(200);
  ChangeOnTheWay draw(scene);
  const std::vector<int> drawn = draw.ids_drawn([&] { scene.add_row(100); });
  EXPECT_EQ(drawn.size(), 300U);
  EXPECT_EQ(drawn, all_ids(scene));
  scene.expect_the_walk();
}

TEST(LeafIndexEdges, InterruptTestMayAddWhereTheOpenGroupIsEmpty) {
  Scene scene(1, 20);
  scene.add_row(200);
  scene.list.m_pOpenGroup->remove_all();
  ChangeOnTheWay draw(scene);
  const std::vector<int> drawn = draw.ids_drawn([&] { scene.add_row(100); });
  EXPECT_EQ(drawn.size(), 299U);
  EXPECT_EQ(drawn, all_ids(scene));
  scene.expect_the_walk();
}

}  // namespace
