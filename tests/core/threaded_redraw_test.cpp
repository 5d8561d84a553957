// A redraw on worker threads: every group once, by whom and how.

#include <gtest/gtest.h>

#include <memory>
#include <set>

#include "tests/support/interrupt_counter.h"
#include "tests/support/marked_list.h"

namespace {

using DL::DisplayListMultithread;
using Ints = std::vector<int>;

std::vector<std::int32_t> queue_counts(const DisplayListMultithread& threads) {
  return {std::begin(threads.m_queueCount), std::end(threads.m_queueCount)};
}

TEST(ThreadedRedraw, DrawsEachGroupOnceWhateverTheNumberOfThreads) {
  for (const int workers : {-1, 1, 2, 3, 4}) {
    DisplayListMultithread threads(workers);
    MarkedList marked(300, 3);
    marked.draw_with(threads);
    for (int round = 1; round <= 20; ++round) {
      marked.root().draw_unclipped(marked.list);
      threads.WaitForAllThreads();
      ASSERT_EQ(marked.draws(), marked.each_drawn(round)) << workers;
      EXPECT_EQ(queue_counts(threads), (Ints{0, 0, 0, 0}));
    }
  }
}

TEST(ThreadedRedraw, DrawsAQueueOnItsThreadWithAListOfItsOwn) {
  DisplayListMultithread threads(4);
  MarkedList marked(40);
  marked.draw_with(threads);
  for (int round = 0; round < 3; ++round) {
    marked.root().draw_unclipped(marked.list);
    threads.WaitForAllThreads();
    std::set<std::thread::id> workers;
    std::set<DL::DisplayList*> lists;
    for (std::size_t i = 0; i < marked.marks.size(); ++i) {
      const ThreadMark& mark = *marked.marks[i];
      const std::size_t worker = i / 2 % 4;
      EXPECT_EQ(mark.drawn_by, threads.m_hThread[worker].get_id());
      EXPECT_EQ(mark.drawn_in, marked.marks[2 * worker]->drawn_in);
      workers.insert(mark.drawn_by);
      lists.insert(mark.drawn_in);
    }
    EXPECT_EQ(workers.size(), 4U);
    EXPECT_EQ(workers.count(std::this_thread::get_id()), 0U);
    EXPECT_EQ(lists.size(), 4U);
    EXPECT_EQ(lists.count(&marked.list), 0U);
  }
}

TEST(ThreadedRedraw, CallsTheOperationThatTheQueueNames) {
  DisplayListMultithread threads(2);
  MarkedList marked(6, 1);
  marked.draw_with(threads);
  for (int i = 0; i < 6; ++i) threads.hand_over(marked.leaf(i), i >= 2, 0);
  threads.WaitForAllThreads();
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(marked.mark(i).clipped_draws, i >= 2 ? 1 : 0);
    EXPECT_EQ(marked.mark(i).unclipped_draws, i >= 2 ? 0 : 1);
  }
}

TEST(ThreadedRedraw, AsksEachDrawablesInfo) {
  DisplayListMultithread threads(3);
  MarkedList marked(30, 4);
  marked.draw_with(threads);
  std::vector<std::unique_ptr<ProbeInfo>> infos;
  Ints expected;
  for (std::size_t i = 0; i < marked.marks.size(); ++i) {
    infos.push_back(std::make_unique<ProbeInfo>(i % 4 != 1));
    if (i % 4 != 0) marked.marks[i]->set_drawable_info(infos.back().get());
    expected.push_back(i % 4 != 1 ? 1 : 0);
  }
  marked.root().draw_unclipped(marked.list);
  threads.WaitForAllThreads();
  EXPECT_EQ(marked.draws(), expected);
  for (std::size_t i = 0; i < infos.size(); ++i) EXPECT_EQ(infos[i]->asked, i % 4 != 0 ? 1 : 0);
}

TEST(ThreadedRedraw, ThatWasInterruptedLeavesNothingQueuedAfterTheWait) {
  const PollEvery poll_every(1);
  for (int stop_at = 1; stop_at <= 4; ++stop_at) {
    DisplayListMultithread threads(2);
    MarkedList marked(0);
    marked.draw_with(threads);
    for (int i = 0; i < 3; ++i) {  // three inner groups of one leaf each
      marked.add_leaf(1, 0);
      DL::Group* leaf = marked.root().m_pLastChild.group;
      marked.root().unlink_child(leaf);
      DL::Group* inner = hand_made::inner(1, MarkedList::kBox, 0, {leaf});
      marked.root().append_child(inner);
      inner->m_pParent = &marked.root();
    }
    InterruptCounter interrupt(marked.list);
    interrupt.stop_at = stop_at;
    EXPECT_FALSE(marked.root().draw_unclipped_interrupt(marked.list));
    EXPECT_EQ(threads.is_drained(), stop_at <= 2);
    threads.WaitForAllThreads();
    EXPECT_EQ(queue_counts(threads), (Ints{0, 0, 0, 0}));
    EXPECT_EQ(marked.draws(), (Ints{stop_at > 2 ? 1 : 0, stop_at > 3 ? 1 : 0, 0}));
    interrupt.stop_at = InterruptCounter::kNever;
    EXPECT_TRUE(marked.root().draw_unclipped_interrupt(marked.list));
    threads.WaitForAllThreads();
    EXPECT_EQ(marked.draws(), (Ints{stop_at > 2 ? 2 : 1, stop_at > 3 ? 2 : 1, 1}));
  }
}

TEST(ThreadedRedraw, IsFinishedByTheDestructor) {
  MarkedList marked(50);
  {
    DisplayListMultithread threads(3);
    marked.draw_with(threads);
    marked.root().draw_unclipped(marked.list);
    EXPECT_EQ(marked.draws(), marked.each_drawn(0));
  }
  EXPECT_EQ(marked.draws(), marked.each_drawn(1));
  marked.list.m_pMultithread = nullptr;
}

TEST(ThreadedRedraw, OfAListWhoseDrawablesAreAllKeptHereQueuesNothing) {
  DisplayListMultithread threads(2);
  MarkedList marked(5, 2, 1);
  marked.draw_with(threads);
  marked.root().draw_unclipped(marked.list);
  EXPECT_TRUE(threads.is_drained());
  for (const ThreadMark* mark : marked.marks) {
    EXPECT_EQ(mark->drawn_by, std::this_thread::get_id());
    EXPECT_EQ(mark->drawn_in, &marked.list);
  }
}

}  // namespace
