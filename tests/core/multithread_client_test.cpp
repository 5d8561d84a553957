// What clients' drawables do on workers.

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>

#include "displaylist/displaylist.h"
#include "tests/support/client_drawables.h"
#include "tests/support/recorded_list.h"

namespace {

class ThrowingMark final : public client::Mark {
 public:
  void draw_unclipped(DL::DisplayList&) override { throw std::runtime_error("no paper"); }
};

/// Changes its rendition while it draws, as wide dots do.
class ChangingMark final : public client::Mark {
 public:
  explicit ChangingMark(LM_Rendition& shared) : m_shared(shared) {}
  void draw_unclipped(DL::DisplayList& list) override {
    changed_shared = &list.changeable(m_shared) == &m_shared;
  }

  std::atomic<bool> changed_shared = true;

 private:
  LM_Rendition& m_shared;
};

/// A list whose drawables each have a closed group, and workers.
struct ThreadedList {
  ThreadedList() : threads(2) {
    list.m_pRenderer = LM_Create<LM_Renderer>();
    list.m_cMaxOpenDrawables = 1;
    list.m_cMaxLevel = 1;
    threads.m_pDisplayList = &list;
    list.m_pMultithread = &threads;
  }
  void add(DL::Drawable* drawable) { list.add(drawable, {1, 1, 2, 2}, 0); }

  DL::DisplayList list;
  DL::DisplayListMultithread threads;
};

TEST(ClientOnWorkers, WhatADrawableThrowsReachesWhoeverWaits) {
  ThreadedList threaded;
  for (int i = 0; i < 8; ++i) {
    threaded.add(i == 3 ? static_cast<DL::Drawable*>(new ThrowingMark) : new client::Mark);
  }
  threaded.list.m_pRootGroup->draw_unclipped(threaded.list);
  EXPECT_THROW(threaded.threads.WaitForAllThreads(), std::runtime_error);
  EXPECT_TRUE(threaded.threads.is_drained());
  threaded.list.m_pRootGroup->draw_unclipped(threaded.list);
  EXPECT_THROW(threaded.threads.WaitForAllThreads(), std::runtime_error);
  threaded.threads.WaitForAllThreads();
}

TEST(ClientOnWorkers, SharedRenditionsOfNestedListsAreNotChanged) {
  LM_Rendition shared;
  ThreadedList threaded;
  auto* child = new DL::DisplayList;
  auto* mark = new ChangingMark(shared);
  child->add(mark, {1, 1, 2, 2}, 0);
  const LogicalBounds box{1, 1, 2, 2};
  threaded.list.m_rendition.set_clip_rectangle({-100, 100, -100, 100});
  threaded.list.m_screenBounds = {-100, -100, 100, 100};
  threaded.add(new DL::DrawableDisplayList(nullptr, child, &box));
  threaded.add(new client::Mark);
  threaded.list.m_pRootGroup->draw_unclipped(threaded.list);
  threaded.threads.WaitForAllThreads();
  EXPECT_FALSE(mark->changed_shared);
  threaded.list.m_pMultithread = nullptr;
  threaded.list.m_pRootGroup->draw_unclipped(threaded.list);
  EXPECT_TRUE(mark->changed_shared);
}

}  // namespace
