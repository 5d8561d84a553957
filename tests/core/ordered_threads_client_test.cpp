// Worker threads that draw in order, and what clients do meanwhile.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

#include "tests/support/scribbled_page.h"

namespace {

using namespace scribbled;

class Throwing final : public client::Mark {
 public:
  void draw_unclipped(DL::DisplayList&) override { throw std::runtime_error("no paper"); }
};

TEST(OrderedThreadsOfClients, ShowWhatWasDrawnBeforeSomethingThrew) {
  for (const int workers : {1, 2, 4}) {
    Page page(9, 51);
    const lumen::Picture expected = page.drawn(-1);
    page.add_leaf({new Throwing}, 0);
    const auto draw = [&page](DisplayListMultithread& threads) {
      page.list.m_pRootGroup->draw_unclipped(page.list);
      EXPECT_THROW(threads.WaitForAllThreads(), std::runtime_error);
      EXPECT_TRUE(threads.is_drained());
    };
    EXPECT_TRUE(page.drawn(workers, draw) == expected) << workers;
    EXPECT_TRUE(page.drawn(workers, draw) == expected) << workers;
  }
}

TEST(OrderedThreadsOfClients, LetGoOfTheRendererWhenSomethingThrew) {
  for (const int workers : {1, 2}) {
    Page page(0);
    page.add_leaf({new Throwing}, 0);
    DisplayListMultithread threads(workers);
    threads.m_pDisplayList = &page.list;
    page.list.m_pMultithread = &threads;
    page.list.m_pRootGroup->draw_unclipped(page.list);
    EXPECT_THROW(threads.WaitForAllThreads(), std::runtime_error);
    page.list.m_pMultithread = nullptr;
    page.list.m_pRenderer = nullptr;
    EXPECT_FALSE(page.device->is_shared()) << workers << " workers";
  }
}

/// An image that cannot be read.
class TornImage final : public LM_Image {
 public:
  TornImage() : LM_Image(20, 20) {}
  [[nodiscard]] const std::uint32_t* row(std::int32_t) const override {
    throw std::runtime_error("torn");
  }
};

TEST(OrderedThreadsOfClients, PassOnWhatIsThrownWhileBandsAreDrawn) {
  for (const int workers : {1, 4}) {
    Page page(9, 55, &mixed);
    const LM_Handle<LM_Image> torn = LM_Create<TornImage>();
    page.add_leaf({new DL::DLImage(LM_RGB32{}, {50, 50, 70, 70}, torn)}, 0);
    page.add_leaf({new Scribble(page.material, 5)}, 0);
    for (int repeat = 0; repeat < 3; ++repeat) {
      page.drawn(workers, [&page](DisplayListMultithread& threads) {
        page.list.m_pRootGroup->draw_unclipped(page.list);
        EXPECT_THROW(threads.WaitForAllThreads(), std::runtime_error);
        EXPECT_TRUE(threads.is_drained());
      });
    }
  }
}

TEST(OrderedThreadsOfClients, LeaveTheRendererAloneAfterTheCallingThreadsDrawableThrew) {
  Page page(5, 61);
  page.add_leaf({new Throwing}, 1);
  page.drawn(2, [&page](DisplayListMultithread&) {
    EXPECT_THROW(page.list.m_pRootGroup->draw_unclipped(page.list), std::runtime_error);
    EXPECT_EQ(page.list.m_pRenderer, page.device);
  });
}

/// Notes what it is drawn through.
class RendererNote final : public client::Mark {
 public:
  void draw_unclipped(DL::DisplayList& list) override { found = list.m_pRenderer.get(); }
  const LM_Renderer* found = nullptr;
};

TEST(OrderedThreadsOfClients, DrawThroughARendererThatHasNoOrderThemselves) {
  Page page(0);
  auto* queued = new RendererNote;
  auto* kept = new RendererNote;
  page.add_leaf({queued}, 0);
  page.add_leaf({kept}, 1);
  page.drawn(2);
  EXPECT_NE(queued->found, page.device.get());
  EXPECT_NE(kept->found, page.device.get());
  EXPECT_NE(kept->found, queued->found);

  // An action of a client's own has to be called.
  const LM_Dot_Action own{nullptr, &LM_Dot_Action::do_nothing};
  const LM_Dot_Action before = std::exchange(page.device->actions.dot_clipped, own);
  page.drawn(2);
  EXPECT_EQ(queued->found, page.device.get());
  EXPECT_EQ(kept->found, page.device.get());
  page.device->actions.dot_clipped = before;

  page.device->options.is_for_one_thread = true;
  page.drawn(2, [&page](DisplayListMultithread& threads) {
    page.list.m_pRootGroup->draw_unclipped(page.list);
    EXPECT_TRUE(threads.is_drained());
  });
  EXPECT_EQ(queued->found, page.device.get());
}

TEST(OrderedThreadsOfClients, OfASecondListOnTheSameDeviceLeaveItToTheCallingThread) {
  Page page(10, 71);
  Page other(10, 72);
  other.list.m_pRenderer = page.device;
  DisplayListMultithread other_threads(2);
  other_threads.m_pDisplayList = &other.list;
  other.list.m_pMultithread = &other_threads;
  page.drawn(2, [&](DisplayListMultithread& threads) {
    page.list.m_pRootGroup->draw_unclipped(page.list);
    EXPECT_FALSE(threads.is_drained());
    other.list.m_pRootGroup->draw_unclipped(other.list);
    EXPECT_TRUE(other_threads.is_drained());
    threads.WaitForAllThreads();
    other.list.m_pRootGroup->draw_unclipped(other.list);
    EXPECT_FALSE(other_threads.is_drained());
    other_threads.WaitForAllThreads();
  });
  other.list.m_pMultithread = nullptr;
}

/// The picture of every other leaf of a page, on a calling thread.
lumen::Picture every_other(unsigned first) {
  Page page(0);
  for (unsigned i = first; i < 20; i += 2) {
    page.add_leaf({new Scribble(page.material, i)}, 0);
  }
  return page.drawn(-1);
}

TEST(OrderedThreadsOfClients, GiveEachRendererWhatWasDrawnForIt) {
  Page page(0);
  for (unsigned i = 0; i < 20; ++i) page.add_leaf({new Scribble(page.material, i)}, i % 2);
  lumen::Picture second(Scribble::width, Scribble::height, kPaper);
  const auto second_device = LM_Create<lumen::RasterDevice>(second);
  const lumen::Picture first = page.drawn(3, [&](DisplayListMultithread& threads) {
    page.list.m_pRootGroup->draw_unclipped(page.list);
    page.list.m_pRenderer = second_device;
    threads.WaitForAllThreads();
    page.list.m_pRenderer = page.device;
  });
  EXPECT_TRUE(first == every_other(1));
  EXPECT_TRUE(second == every_other(0));
}

/// Notes whether another of its kind is being drawn at the same time.
class Lonely final : public client::Mark {
 public:
  void draw_unclipped(DL::DisplayList&) override {
    if (drawing.fetch_add(1) != 0) met = true;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    drawing.fetch_sub(1);
    ++drawn;
  }
  inline static std::atomic<int> drawing{0};
  inline static std::atomic<int> drawn{0};
  inline static std::atomic<bool> met{false};
};

TEST(OrderedThreadsOfClients, DrawOneAfterTheOtherThroughARendererForOneThread) {
  Page page(0);
  for (int i = 0; i < 16; ++i) page.add_leaf({new Lonely}, 0);
  page.drawn(4, [&page](DisplayListMultithread& threads) {
    page.list.m_pRootGroup->draw_unclipped(page.list);
    // The client goes on to another renderer before the groups are drawn.
    const LM_Handle<LM_Renderer> other = LM_Create<LM_Renderer>();
    other->options.is_for_one_thread = true;
    page.list.m_pRenderer = other;
    threads.WaitForAllThreads();
    page.list.m_pRenderer = page.device;
  });
  EXPECT_EQ(Lonely::drawn, 16);
  EXPECT_FALSE(Lonely::met);
}

TEST(OrderedThreadsOfClients, SurviveAPictureThatChangesItsSizeBeforeTheyDraw) {
  Page page(30, 91, &mixed);
  page.drawn(2, [&page](DisplayListMultithread& threads) {
    page.list.m_pRootGroup->draw_unclipped(page.list);
    page.picture = lumen::Picture(20, 10, kPaper);
    threads.WaitForAllThreads();
  });
  page.picture = lumen::Picture();
  page.drawn(2);
}

}  // namespace
