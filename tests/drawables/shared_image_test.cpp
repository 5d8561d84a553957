#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <thread>

#include "displaylist/drawables/image.h"
#include "lumen/packed_heap.h"
#include "tests/drawables/watched_image.h"
#include "tests/support/drawable_answers.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/point_printing.h"
#include "tests/support/recorded_list.h"

// One image in several drawables.

namespace {

using answers::clipped;
using DL::DLImage;

struct SharedImage : testing::Test {
  SharedImage() { WatchedImage::destroyed = 0; }

  static LM_Handle<LM_Image> picture() { return LM_Create<WatchedImage>(4, 3); }

  RecordedList recorded;
};

TEST_F(SharedImage, CloneSharesTheImageThroughACellOfItsOwn) {
  DLImage image({0x00ABCDEF}, {10, 20, 30, 40}, picture());
  image.m_pNext = &image;
  image.set_drawable_info(reinterpret_cast<DL::Extra_Drawable_Info*>(&recorded));
  const std::unique_ptr<DL::Drawable> copy(image.clone());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->type(), DLImage::my_type());
  EXPECT_EQ(copy->m_pNext, nullptr);
  EXPECT_EQ(copy->drawable_info(), nullptr);
  EXPECT_EQ(copy->m_colorData.m_color.word, 0x00ABCDEFU);
  const auto* shared = static_cast<DLImage*>(copy.get());
  EXPECT_EQ(shared->image(), image.image());
  EXPECT_NE(shared->m_pImageRef, image.m_pImageRef);
  EXPECT_EQ(shared->m_rect, image.m_rect);
  EXPECT_EQ(image.partial_clone(0, 1), nullptr);
}

TEST_F(SharedImage, IsDestroyedOnceWithTheLastThatSharesIt) {
  int order[] = {0, 1, 2};
  do {
    WatchedImage::destroyed = 0;
    std::unique_ptr<DL::Drawable> sharers[3];
    sharers[0] = std::make_unique<DLImage>(LM_RGB32{}, LogicalBounds{1, 2, 3, 4}, picture());
    sharers[1].reset(sharers[0]->clone());
    sharers[2].reset(sharers[1]->clone());
    sharers[1]->hide();
    sharers[order[0]].reset();
    sharers[order[1]].reset();
    EXPECT_EQ(WatchedImage::destroyed, 0);
    EXPECT_EQ(clipped(recorded, *sharers[order[2]]).size(), order[2] == 1 ? 0U : 1U);
    sharers[order[2]].reset();
    EXPECT_EQ(WatchedImage::destroyed, 1);
  } while (std::next_permutation(order, order + 3));
}

TEST_F(SharedImage, OutlivesItsDrawablesInTheClientsHands) {
  const LM_Handle<LM_Image> held = picture();
  {
    const DLImage image({}, {1, 2, 3, 4}, held);
    EXPECT_TRUE(held->is_shared());
  }
  EXPECT_FALSE(held->is_shared());
  EXPECT_EQ(WatchedImage::destroyed, 0);
}

TEST_F(SharedImage, MayBeSharedByClonesOnSeveralThreads) {
  constexpr int rounds = 2000;
  const auto clone_and_delete = [](const DLImage& mine) {
    for (int i = 0; i < rounds; ++i) {
      const std::unique_ptr<DL::Drawable> copy(const_cast<DLImage&>(mine).clone());
    }
  };
  {
    const DLImage one({}, {1, 2, 3, 4}, picture());
    const std::unique_ptr<DL::Drawable> other(const_cast<DLImage&>(one).clone());
    std::thread thread([&] { clone_and_delete(static_cast<const DLImage&>(*other)); });
    clone_and_delete(one);
    thread.join();
    EXPECT_EQ(WatchedImage::destroyed, 0);
  }
  EXPECT_EQ(WatchedImage::destroyed, 1);
}

TEST_F(SharedImage, CloneIsNullWithoutMemoryAndHasNoCellWithoutMemoryForThat) {
  const std::size_t in_use = lumen::PackedHeap::process_heap().bytes_in_use();
  {
    DLImage image({}, {1, 2, 3, 4}, picture());
    const auto hidden = std::make_unique<DLImage>(LM_RGB32{}, LogicalBounds{1, 2, 3, 4}, nullptr);
    hidden->hide();
    DL::Drawable* as_hidden = hidden.get();
    {
      const FailingDefaultHeap no_memory;
      EXPECT_EQ(image.clone(), nullptr);
      EXPECT_EQ(as_hidden->clone(), nullptr);
    }
    const FailingDefaultHeap failing(1);
    const std::unique_ptr<DL::Drawable> copy(image.clone());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(static_cast<DLImage*>(copy.get())->m_pImageRef, nullptr);
    EXPECT_TRUE(answers::all_ways(recorded, *copy).empty());
    EXPECT_EQ(bounds_of(*copy), LogicalBounds(1, 2, 3, 4));
  }
  EXPECT_EQ(WatchedImage::destroyed, 1);
  EXPECT_EQ(lumen::PackedHeap::process_heap().bytes_in_use(), in_use);
}

}  // namespace
