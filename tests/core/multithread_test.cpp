// Worker threads: how they start and end, and their queues.

#include <gtest/gtest.h>
#include <sched.h>

#include <climits>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>

#include "tests/support/marked_list.h"
#include "tests/support/thread_hooks.h"

namespace {

using DL::BottomGroup;
using DL::DisplayListMultithread;
using Ints = std::vector<int>;

constexpr std::uint32_t kFirstWorker = 2;

int allowed_processors() {
  cpu_set_t set;
  return sched_getaffinity(0, sizeof set, &set) == 0 ? CPU_COUNT(&set) : 0;
}

std::vector<std::int32_t> queue_counts(const DisplayListMultithread& threads) {
  return {std::begin(threads.m_queueCount), std::end(threads.m_queueCount)};
}

TEST(WorkerThreads, AreAsManyAsAskedForButFourAtMost) {
  const std::ptrdiff_t before = threads_at_rest();
  for (const auto& [asked, started] : std::vector<std::pair<int, int>>{{INT_MIN, 0},
                                                                       {-1000, 0},
                                                                       {-1, 0},
                                                                       {1, 1},
                                                                       {2, 2},
                                                                       {3, 3},
                                                                       {4, 4},
                                                                       {5, 4},
                                                                       {1000, 4},
                                                                       {INT_MAX, 4}}) {
    {
      const DisplayListMultithread threads(asked);
      EXPECT_EQ(threads.m_cThreads, started) << asked;
      EXPECT_EQ(running_threads(), before + started) << asked;
      EXPECT_EQ(threads.m_iNext, 0);
      EXPECT_EQ(threads.m_pDisplayList, nullptr);
      EXPECT_FALSE(threads.m_bStop);
      EXPECT_TRUE(threads.is_drained());
    }
    EXPECT_TRUE(becomes_running_threads(before)) << asked;
  }
}

TEST(WorkerThreads, AreOneForEachProcessorWhenZeroIsAskedFor) {
  const int processors = allowed_processors();
  ASSERT_GT(processors, 0);
  const DisplayListMultithread threads(0);
  EXPECT_EQ(threads.m_cThreads, processors < 2 ? 0 : std::min(processors, 4));
}

TEST(WorkerThreads, TellTheirSystemIds) {
  const DisplayListMultithread threads(3);
  const std::set<std::uint32_t> ids(threads.m_threadId, threads.m_threadId + 3);
  EXPECT_EQ(ids.size(), 3U);
  for (const std::uint32_t id : ids) {
    EXPECT_TRUE(std::filesystem::exists("/proc/self/task/" + std::to_string(id)));
  }
  EXPECT_EQ(threads.m_threadId[3], 0U);
}

TEST(WorkerThreads, AskForMorePriorityAndTheFirstForMost) {
  Ints asked;
  const PriorityHook hook([&](int priority) { asked.push_back(priority); });
  const DisplayListMultithread threads(4);
  EXPECT_EQ(asked, (Ints{-4, -2, -2, -2}));
}

TEST(WorkerThreads, AreNoneWhereOneCannotBeStarted) {
  const std::ptrdiff_t before = threads_at_rest();
  for (int good = 0; good < 4; ++good) {
    MarkedList marked(3);
    {
      std::optional<NoMoreThreads> no_more;
      if (good == 0) no_more.emplace();
      int started = 0;
      const PriorityHook hook([&](int) {
        if (++started == good) no_more.emplace();
      });
      DisplayListMultithread threads(4);
      EXPECT_EQ(started, good);
      EXPECT_EQ(threads.m_cThreads, 0);
      EXPECT_EQ(running_threads(), before + good);
      marked.draw_with(threads);
      marked.root().draw_unclipped(marked.list);
      EXPECT_EQ(marked.draws(), marked.each_drawn(1));
      EXPECT_FALSE(threads.hand_over(marked.leaf(0), false, 0));
      threads.WaitForAllThreads();
    }
    EXPECT_TRUE(becomes_running_threads(before)) << good;
  }
  const DisplayListMultithread later(4);
  EXPECT_EQ(later.m_cThreads, 4);
}

TEST(WorkerThreads, LieInPagesOfTheSystem) {
  const auto threads = std::make_unique<DisplayListMultithread>(-1);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(threads.get()) % 4096, 0U);
  EXPECT_EQ(DisplayListMultithread::operator new(SIZE_MAX / 2), nullptr);
  DisplayListMultithread::operator delete(nullptr, 1);
}

TEST(WorkerQueues, TakeGroupsInTurn) {
  for (int workers = 1; workers <= 4; ++workers) {
    DisplayListMultithread threads(workers);
    MarkedList marked(10);
    marked.draw_with(threads);
    for (int i = 0; i < 10; ++i) {
      EXPECT_EQ(threads.m_iNext, i % workers);
      EXPECT_TRUE(threads.hand_over(marked.leaf(i), i % 3 == 0, 0));
    }
    for (int i = 0; i < 10; ++i) {
      EXPECT_EQ(threads.m_queue[i % workers][i / workers], &marked.leaf(i));
      EXPECT_EQ(threads.m_clipped[i % workers][i / workers], i % 3 == 0);
    }
    EXPECT_FALSE(threads.is_drained());
    EXPECT_EQ(marked.draws(), marked.each_drawn(0));
    threads.WaitForAllThreads();
    EXPECT_EQ(marked.draws(), marked.each_drawn(1));
    EXPECT_EQ(threads.m_iNext, 0);
  }
}

TEST(WorkerQueues, GiveGroupsOfFlagBitOneToTheFirstAndGoOnWithTheSecond) {
  DisplayListMultithread threads(3);
  MarkedList marked(7);
  marked.draw_with(threads);
  const std::uint32_t flags[] = {0, 0, 2, 6, 0xFFFFFFFF, 0, 0xFFFFFFFC};
  for (int i = 0; i < 7; ++i) threads.hand_over(marked.leaf(i), false, flags[i]);
  const std::vector<const BottomGroup*> first(threads.m_queue[0], threads.m_queue[0] + 4);
  EXPECT_EQ(first, (std::vector<const BottomGroup*>{&marked.leaf(0), &marked.leaf(2),
                                                    &marked.leaf(3), &marked.leaf(4)}));
  EXPECT_EQ(threads.m_queue[1][0], &marked.leaf(1));
  EXPECT_EQ(threads.m_queue[1][1], &marked.leaf(5));
  EXPECT_EQ(threads.m_queue[2][0], &marked.leaf(6));
  EXPECT_EQ(queue_counts(threads), (Ints{4, 2, 1, 0}));
  EXPECT_EQ(threads.m_iNext, 0);
  threads.WaitForAllThreads();
  EXPECT_EQ(marked.draws(), marked.each_drawn(1));
}

TEST(WorkerQueues, AreDrawnWhenOneIsFull) {
  DisplayListMultithread threads(2);
  MarkedList marked(1000, 1);
  marked.draw_with(threads);
  threads.hand_over(marked.leaf(0), false, 0);
  threads.hand_over(marked.leaf(1), false, 0);
  for (int i = 2; i < 999; ++i) threads.hand_over(marked.leaf(i), false, kFirstWorker);
  EXPECT_EQ(queue_counts(threads), (Ints{998, 1, 0, 0}));
  EXPECT_EQ(marked.draws(), marked.each_drawn(0));
  threads.hand_over(marked.leaf(999), false, kFirstWorker);
  EXPECT_EQ(marked.draws(), marked.each_drawn(1));
  EXPECT_EQ(queue_counts(threads), (Ints{0, 0, 0, 0}));
  EXPECT_EQ(threads.m_iNext, 0);
  EXPECT_EQ(threads.m_queue[0][998], &marked.leaf(999));
  EXPECT_EQ(threads.m_queue[0][999], nullptr);
}

TEST(WorkerQueues, ThatFillInTurnAreDrawnWhenTheFirstIsFull) {
  for (int workers = 1; workers <= 4; ++workers) {
    DisplayListMultithread threads(workers);
    const int full = 998 * workers + 1;
    MarkedList marked(full + 1, 1);
    marked.draw_with(threads);
    for (int i = 0; i < full - 1; ++i) threads.hand_over(marked.leaf(i), false, 0);
    EXPECT_EQ(threads.m_queueCount[0], 998);
    EXPECT_EQ(marked.draws(), marked.each_drawn(0));
    threads.hand_over(marked.leaf(full - 1), false, 0);
    EXPECT_TRUE(threads.is_drained());
    threads.hand_over(marked.leaf(full), false, 0);
    EXPECT_EQ(threads.m_queue[0][0], &marked.leaf(full));
    EXPECT_EQ(queue_counts(threads), (Ints{1, 0, 0, 0}));
    threads.WaitForAllThreads();
    EXPECT_EQ(marked.draws(), marked.each_drawn(1));
  }
}

TEST(WaitForAllThreads, ReturnsAtOnceWhenNothingIsQueued) {
  DisplayListMultithread threads(2);
  threads.WaitForAllThreads();  // there is no list to draw for
  DisplayListMultithread none(-1);
  none.WaitForAllThreads();
  MarkedList marked(2);
  marked.draw_with(threads);
  threads.m_iNext = 1;
  threads.WaitForAllThreads();
  EXPECT_EQ(threads.m_iNext, 1);
}

}  // namespace
