// Worker threads show what they draw in the order of the traversal, whatever lies
// over what, where the renderer draws in order.

#include <gtest/gtest.h>

#include "tests/support/interrupt_counter.h"
#include "tests/support/scribbled_page.h"

namespace {

using namespace scribbled;

TEST(OrderedThreads, ShowAnythingThatOverlapsAsASingleThreadDoes) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    for (const bool antialiased : {false, true}) {
      SCOPED_TRACE(testing::Message() << "seed " << seed << (antialiased ? ", smooth" : ""));
      Page page(60, seed);
      page.device->set_antialiased(antialiased);
      expect_one_picture(page);
    }
  }
}

TEST(OrderedThreads, PutWhatTheCallingThreadDrawsInItsPlace) {
  for (unsigned seed = 11; seed <= 14; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Page page(60, seed, &mixed);
    page.device->set_antialiased(seed % 2 == 0);
    DL::Group* open = hand_made::open(
        page.list, 1, kBox, 0,
        {new Scribble(page.material, 1), new client::Mark, new Scribble(page.material, 2)});
    page.list.m_pRootGroup->append_child(open);
    open->m_pParent = page.list.m_pRootGroup;
    expect_one_picture(page);
  }
}

TEST(OrderedThreads, PutOtherDrawFormsInTheirPlaceToo) {
  Page page(12, 21);
  page.list.m_rendition.set_complex_clip(page.material.clips[1], true);
  expect_one_picture(page, [&page](auto&) {
    DL::Group& root = *page.list.m_pRootGroup;
    root.draw_unclipped(page.list);
    root.draw_complex(page.list);
    root.draw_bounded(page.list, {20, 20, 30, 30}, kBox);
    root.draw_bounded_interrupt(page.list, {20, 20, 30, 30}, kBox);
    root.draw_unclipped_selection(page.list);
  });
}

TEST(OrderedThreads, DrawMoreGroupsThanTheQueuesHold) {
  Page page(0);
  for (int i = 0; i < 4500; ++i) {
    page.add_leaf({new Scribble(page.material, static_cast<unsigned>(i) % 97)}, mixed(i / 50));
  }
  expect_one_picture(page);
}

TEST(OrderedThreads, DrawInSeveralGoesWhatWouldTakeMuchMemory) {
  lumen::Picture picture(30, 5000);
  const auto device = LM_Create<lumen::RasterDevice>(picture);
  device->set_antialiased(true);
  Page page(0);
  page.list.m_pRenderer = device;
  page.list.m_rendition.set_clip_rectangle({0, 29, 0, 4999});
  for (std::int32_t i = 0; i < 90; ++i) {
    const std::int32_t x = i % 10;
    const DL::PointTemplate<long> corners[] = {
        {x, i}, {x + 7, 0}, {x + 13, 5000 - i * (i % 3) * 40}, {x + 5, 5000}};
    const auto n = static_cast<std::uint32_t>(i);
    page.add_leaf({new DL::DLPolygon({n * 0x01020304U}, 4, corners)}, n % 11 == 3 ? 1 : 0);
  }
  std::vector<lumen::Picture> pictures;
  for (const int workers : kAllWorkers) {
    picture.clear(kPaper);
    DisplayListMultithread threads(workers);
    threads.m_pDisplayList = &page.list;
    page.list.m_pMultithread = &threads;
    page.list.m_pRootGroup->draw_unclipped(page.list);
    threads.WaitForAllThreads();
    page.list.m_pMultithread = nullptr;
    pictures.push_back(picture);
    EXPECT_TRUE(pictures.back() == pictures.front()) << workers << " workers";
  }
}

TEST(OrderedThreads, DrawPartsThatWereInterruptedAndGoneOnWith) {
  Page page(40, 31, &mixed);
  const PollEvery poll_every(1);
  expect_one_picture(page, [&page](DisplayListMultithread& threads) {
    InterruptCounter interrupt(page.list);
    interrupt.stop_at = 15;
    const auto draw_twice = [&] {
      page.list.m_pRootGroup->draw_bounded_interrupt(page.list, kBox, kBox);
      page.list.m_pRootGroup->draw_unclipped_interrupt(page.list);
    };
    draw_twice();
    threads.WaitForAllThreads();
    draw_twice();
  });
}

/// Has the queues drawn in the middle of a leaf that the calling thread draws.
class Waiting final : public client::Mark {
 public:
  void draw_unclipped(DL::DisplayList& list) override {
    if (list.m_pMultithread != nullptr) list.m_pMultithread->WaitForAllThreads();
  }
};

TEST(OrderedThreads, MayBeWaitedForInTheMiddleOfALeaf) {
  Page page(7, 41);
  page.add_leaf({new Scribble(page.material, 1), new Waiting, new Scribble(page.material, 2)}, 1);
  page.add_leaf({new Scribble(page.material, 3)}, 0);
  expect_one_picture(page);
}

/// A list to be drawn in the middle of a leaf.
DL::DisplayList* make_child(const Scribble::Material& material, unsigned seed) {
  auto* child = new DL::DisplayList;
  hand_made::plant(*child, hand_made::inner(0, kBox, 0, {}));
  for (unsigned i = 0; i < 9; ++i) {
    DL::Group* leaf =
        hand_made::leaf(1, kBox, i % 3 == 1 ? 1 : 0, {new Scribble(material, seed + i)});
    child->m_pRootGroup->append_child(leaf);
    leaf->m_pParent = child->m_pRootGroup;
  }
  return child;
}

TEST(OrderedThreads, DrawNestedListsInOrderThoseWithThreadsOfTheirOwnToo) {
  for (const std::uint32_t flags : {0U, 1U}) {
    Page page(0);
    std::vector<std::unique_ptr<DisplayListMultithread>> threads;
    std::vector<DL::DisplayList*> children;
    page.list.m_screenBounds = {0, 0, Scribble::width, Scribble::height};
    for (unsigned i = 0; i < 20; ++i) {
      children.push_back(make_child(page.material, 50 * i));
      threads.push_back(std::make_unique<DisplayListMultithread>(2));
      threads.back()->m_pDisplayList = children.back();
      page.add_leaf({new Scribble(page.material, 7 * i)}, i % 4 == 0 ? 1 : 0);
      page.add_leaf({new DL::DrawableDisplayList(nullptr, children.back(), &kBox),
                     new Scribble(page.material, 7 * i + 1)},
                    flags);
    }
    const lumen::Picture expected = page.drawn(-1);
    for (const bool have_threads : {false, true}) {
      for (std::size_t i = 0; i < children.size(); ++i) {
        children[i]->m_pMultithread = have_threads ? threads[i].get() : nullptr;
      }
      for (const int workers : kAllWorkers) {
        ASSERT_TRUE(page.drawn(workers) == expected) << workers << " workers, flags " << flags;
      }
    }
    for (DL::DisplayList* child : children) child->m_pMultithread = nullptr;
  }
}

}  // namespace
