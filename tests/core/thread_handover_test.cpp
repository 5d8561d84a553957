#include <gtest/gtest.h>

#include <ostream>
#include <vector>

#include "displaylist/core/multithread.h"
#include "tests/support/draw_forms.h"
#include "tests/support/interrupt_counter.h"
#include "tests/support/probe_scene.h"

namespace {

using DL::Group;
using Bounds = DL::BoundsTemplate<long>;

constexpr Bounds kPlane = Bounds::plane();
constexpr Bounds kBounds{10, 10, 20, 20};

struct HandOver {
  const Group* group;
  bool clipped;

  friend bool operator==(const HandOver&, const HandOver&) = default;
  friend std::ostream& operator<<(std::ostream& os, const HandOver& h) {
    return os << h.group << (h.clipped ? " clipped" : " unclipped");
  }
};

/// What is queued for a single worker. Nothing is drawn before the queue is
/// released.
std::vector<HandOver> queued(const DL::DisplayListMultithread& threads) {
  std::vector<HandOver> handed;
  for (std::int32_t i = 0; i < threads.m_queueCount[0]; ++i) {
    handed.push_back({threads.m_queue[0][i], threads.m_clipped[0][i]});
  }
  return handed;
}

/// The leaves 1 and 2, closed, and 3, open, all with the given flags, and one
/// worker, or none.
struct ThreadedScene : ProbeScene {
  explicit ThreadedScene(unsigned long flags, int workers = 1)
      : ProbeScene(1, 1), threads(workers) {
    for (int i = 0; i < 3; ++i) add(kBounds, flags);
    threads.m_pDisplayList = &list;
    list.m_pMultithread = &threads;
  }

  DL::DisplayListMultithread threads;
};

constexpr int kNoWorkers = -1;

bool hands_over(const DrawForm& form) {
  return form.clip == DrawForm::Clip::none && !form.selection;
}

struct ThreadedForms : testing::TestWithParam<DrawForm> {};

TEST_P(ThreadedForms, ClosedLeavesGoToTheThreadsInUnclippedAndBoundedForms) {
  const DrawForm& form = GetParam();
  for (const bool meeting : {false, true}) {
    ThreadedScene scene(6);
    const Bounds inner = meeting ? Bounds() : kPlane;
    EXPECT_TRUE(form.draw(scene.root(), scene.list, inner, kPlane));
    std::vector<HandOver> expected;
    if (hands_over(form)) {
      const bool clipped = form.bounded && meeting;
      expected = {{scene.child(scene.root(), 0), clipped}, {scene.child(scene.root(), 1), clipped}};
    }
    EXPECT_EQ(queued(scene.threads), expected);
    EXPECT_EQ(scene.log.take().size(), hands_over(form) ? 1U : 3U);
    scene.threads.WaitForAllThreads();
    EXPECT_EQ(scene.log.take().size(), hands_over(form) ? 2U : 0U);
  }
}

TEST_P(ThreadedForms, FlagBitZeroKeepsALeafOnTheCallingThread) {
  for (const unsigned long flags : {1UL, 7UL}) {
    ThreadedScene scene(flags);
    GetParam().draw(scene.root(), scene.list, Bounds(), kPlane);
    EXPECT_TRUE(scene.threads.is_drained());
    EXPECT_EQ(scene.log.take().size(), 3U);
  }
}

TEST_P(ThreadedForms, WithoutWorkersLeavesAreDrawnHereInOrder) {
  ThreadedScene with_threads(0, kNoWorkers);
  ThreadedScene without(0);
  without.list.m_pMultithread = nullptr;
  for (const Bounds& inner : {Bounds(), kPlane}) {
    GetParam().draw(with_threads.root(), with_threads.list, inner, kPlane);
    GetParam().draw(without.root(), without.list, inner, kPlane);
    const ProbeCalls calls = without.log.take();
    EXPECT_EQ(calls.size(), 3U);
    EXPECT_EQ(with_threads.log.take(), calls);
  }
  EXPECT_TRUE(with_threads.threads.is_drained());
}

TEST_P(ThreadedForms, ThreadsOfAnotherListGetNothing) {
  ThreadedScene scene(0);
  scene.threads.m_pDisplayList = nullptr;
  GetParam().draw(scene.root(), scene.list, Bounds(), kPlane);
  EXPECT_TRUE(scene.threads.is_drained());
  EXPECT_EQ(scene.log.take().size(), 3U);
}

TEST_P(ThreadedForms, TheOpenGroupStaysOnTheCallingThread) {
  ProbeScene scene;
  DL::DisplayListMultithread threads(1);
  threads.m_pDisplayList = &scene.list;
  scene.list.m_pMultithread = &threads;
  scene.add(kBounds);
  scene.list.m_pOpenGroup->make_hidden();
  GetParam().draw(scene.root(), scene.list, Bounds(), kPlane);
  EXPECT_TRUE(threads.is_drained());
  EXPECT_EQ(scene.log.take().size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(All, ThreadedForms, testing::ValuesIn(kDrawForms),
                         [](const auto& form) { return std::string(form.param.name); });

TEST(ThreadedDrawBoundedInterrupt, HandsLeavesOverWholeWithoutPolling) {
  const PollEvery poll_every(1);
  ThreadedScene scene(0);
  InterruptCounter interrupt(scene.list);
  EXPECT_TRUE(scene.root().draw_bounded_interrupt(scene.list, Bounds(), kPlane));
  EXPECT_EQ(queued(scene.threads).size(), 2U);
  EXPECT_EQ(interrupt.polls, 2);  // the root, and the drawable of the open group
}

TEST(ThreadedDrawBoundedInterrupt, PollsPerDrawableWithoutWorkers) {
  const PollEvery poll_every(1);
  ThreadedScene scene(0, kNoWorkers);
  InterruptCounter interrupt(scene.list);
  interrupt.stop_at = 3;
  EXPECT_FALSE(scene.root().draw_bounded_interrupt(scene.list, Bounds(), kPlane));
  EXPECT_EQ(scene.log.take(), calls_of(DrawSlot::clipped, {1}));
}

TEST(ThreadedDraw, LeavesApartFromTheRegionAreNotHandedOver) {
  const Bounds apart{100, 100, 200, 200};
  for (const DrawForm& form : kDrawForms) {
    if (!form.bounded) continue;
    ThreadedScene scene(0);
    scene.root().m_bounds = kPlane;
    form.draw(scene.root(), scene.list, apart, apart);
    EXPECT_TRUE(scene.threads.is_drained()) << form;
  }
}

TEST(ThreadedDraw, HiddenClosedLeavesAreHandedOverToo) {
  ThreadedScene scene(0);
  scene.child(scene.root(), 0)->make_hidden();
  scene.root().draw_unclipped(scene.list);
  EXPECT_EQ(queued(scene.threads).size(), 2U);
}

}  // namespace
