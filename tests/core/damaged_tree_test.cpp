// Streams that no writer produced: what was read is a valid list that can be
// used in every way and leaves nothing behind.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <sstream>

#include "displaylist/displaylist.h"
#include "tests/support/draw_forms.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/hand_made_tree.h"
#include "tests/support/iterator_walk.h"
#include "tests/support/live_heap.h"
#include "tests/support/recorded_list.h"
#include "tests/support/recursive_writer.h"
#include "tests/support/stream_client.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Group;
using stream_words::Words;

constexpr LogicalBounds kBox{-50, -50, 50, 50};

/// A list whose heap tells what it leaves behind.
struct WatchedList {
  explicit WatchedList(std::int64_t good_requests = LiveHeap::kNever) {
    list.m_pRenderer = recorder;
    list.m_cMaxOpenDrawables = 2;
    hand_made::plant(list, nullptr);
    list.m_heap = &heap;
    heap.allow(good_requests);
  }

  StreamClient client;
  LiveHeap heap;
  LM_Handle<lumen::Recorder> recorder = LM_Create<lumen::Recorder>();
  DL::DisplayList list;
};

void expect_one_open_group_at_most(DL::DisplayList& list) {
  int open_groups = 0;
  for (Group* group : groups_of(list)) {
    if (!group->is_open()) continue;
    ++open_groups;
    EXPECT_EQ(list.m_pOpenGroup, group);
  }
  EXPECT_EQ(open_groups, list.m_pOpenGroup == nullptr ? 0 : 1);
  if (list.m_pOpenGroup == nullptr) {
    EXPECT_EQ(list.m_cOpenDrawables, 0);
  }
}

void expect_valid(DL::DisplayList& list) {
  for (Group* group : groups_of(list)) {
    if (group->contains_drawables()) continue;
    Group* last = nullptr;
    for (Group* child = group->m_pFirst.group; child != nullptr; child = child->m_pNext) {
      EXPECT_EQ(child->m_pParent, group);
      last = child;
    }
    EXPECT_EQ(group->m_pLastChild.group, last);
  }
  for (Group* leaf : leaves_of(list)) {
    DL::Drawable* last = leaf->m_pFirst.drawable;
    while (last != nullptr && last->m_pNext != nullptr) last = last->m_pNext;
    EXPECT_EQ(leaf->m_pLastChild.drawable, last);
  }
  if (list.m_pRootGroup != nullptr) list.m_pRootGroup->assert_valid();
}

/// Draws, walks, dumps, writes and measures.
void look_at(WatchedList& watched) {
  DL::DisplayList& list = watched.list;
  const Words words = watched.client.written(list);
  EXPECT_TRUE(words == RecursiveWriter(list).words());
  DL::DisplayListIterator at(&list);
  EXPECT_EQ(walked(at), drawables_of(list));
  DL::DisplayListReverseIterator back(&list, LogicalBounds::plane());
  walked(back);
  if (list.m_pRootGroup == nullptr) return;
  for (const DrawForm& form : kDrawForms) form.draw(*list.m_pRootGroup, list, kBox, kBox);
  watched.recorder->clear();
  std::ostringstream os;
  DL::DisplayListDebug statistics;
  list.m_pRootGroup->dump_subtree(os, 0, statistics);
  EXPECT_FALSE(os.str().empty());
  LogicalBounds bounds;
  list.m_pRootGroup->add_bounds(bounds);
}

/// Adds at places near and far, which a closed root may refuse.
void change(DL::DisplayList& list) {
  std::size_t size = drawables_of(list).size();
  for (const LogicalPoint& point :
       {LogicalPoint{1, 1}, {-40, 3}, {2, 2}, {2'000'000'000, 5}, {1, 1}, {3, -9}}) {
    auto* dot = new (list.m_heap) DL::DLDot({1}, point);
    if (dot == nullptr) continue;
    if (list.add(dot) == nullptr) {
      delete dot;
    } else {
      EXPECT_EQ(drawables_of(list).size(), ++size);
    }
  }
}

/// Uses a list in every way, and reads into it once more.
void use(WatchedList& watched) {
  expect_valid(watched.list);
  expect_one_open_group_at_most(watched.list);
  look_at(watched);
  change(watched.list);
  expect_valid(watched.list);
  expect_one_open_group_at_most(watched.list);
  look_at(watched);
}

void finish(WatchedList& watched) {
  use(watched);
  const Words words = watched.client.written(watched.list);
  hand_made::plant(watched.list, nullptr);
  EXPECT_EQ(watched.heap.alive(), 0U);
  EXPECT_EQ(watched.list.m_pOpenGroup, nullptr);
  EXPECT_EQ(watched.client.read(watched.list, words), words.size());
  hand_made::plant(watched.list, nullptr);
  EXPECT_EQ(watched.heap.alive(), 0U);
}

DL::DLDot* dot(std::int32_t x, std::int32_t y) {
  return new DL::DLDot({7}, {x, y});
}

/// The words of a small list of each kind.
std::vector<Words> good_streams() {
  std::vector<Words> streams;
  {
    StreamClient client;
    DL::DisplayList list;
    list.m_cMaxOpenDrawables = 1;
    for (const std::int32_t x : {1, -40, 3}) list.add(dot(x, x), 2);
    list.add(make_polyline({{1, 1}, {2, 3}, {9, 9}}));
    list.add(new client::StoredMark(3), kBox, 0);
    streams.push_back(client.written(list));
    hand_made::plant(
        list, hand_made::inner(
                  0, kBox, 0,
                  {hand_made::inner(1, kBox, 1, {hand_made::leaf(2, kBox, 2, {dot(1, 2)})}),
                   hand_made::leaf(1, kBox, 1, {new client::Folder(dot(3, 4)), dot(5, 6)}),
                   hand_made::open(list, 1, kBox, 0,
                                   {new DL::DLEllipse({}, {1, 2}, 3, 4, 0.5F, {}), dot(7, 8)})}));
    streams.push_back(client.written(list));
    hand_made::plant(list, hand_made::leaf(0, kBox, 0, {dot(1, 2), dot(3, 4)}));
    streams.push_back(client.written(list));
  }
  return streams;
}

void read_and_finish(const Words& words, std::size_t bytes) {
  WatchedList watched;
  MemoryStream stream(words);
  stream.truncate(bytes);
  watched.client.read(watched.list, stream);
  finish(watched);
}

TEST(DamagedTree, CutAnywhereLeavesAValidList) {
  for (const Words& words : good_streams()) {
    std::size_t most = 0;
    for (std::size_t size = 0; size <= 4 * words.size(); ++size) {
      SCOPED_TRACE(size);
      read_and_finish(words, size);
      WatchedList watched;
      MemoryStream stream(words);
      stream.truncate(size);
      watched.client.read(watched.list, stream);
      const std::size_t there = drawables_of(watched.list).size();
      EXPECT_GE(there, most);
      most = there;
      if (testing::Test::HasFailure()) return;
    }
    EXPECT_GE(most, 2U);
  }
}

TEST(DamagedTree, WithAnyWordReplacedLeavesAValidList) {
  for (const Words& good : good_streams()) {
    for (std::size_t at = 0; at < good.size(); ++at) {
      for (const std::uint32_t word :
           {0U, 1U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU, 0x80000001U, 0x80000002U, 0x80000004U,
            0x10000002U, 0x80000010U, 0x40000002U, 0x20000001U}) {
        SCOPED_TRACE(testing::Message() << at << ": " << std::hex << word);
        Words damaged = good;
        damaged[at] = word;
        read_and_finish(damaged, SIZE_MAX);
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

TEST(DamagedTree, WithAnyByteReplacedLeavesAValidList) {
  for (const Words& good : good_streams()) {
    for (std::size_t at = 0; at < 4 * good.size(); ++at) {
      for (const std::uint32_t change : {0x01U, 0x80U, 0xFFU}) {
        SCOPED_TRACE(testing::Message() << at << ": " << std::hex << change);
        Words damaged = good;
        damaged[at / 4] ^= change << 8 * (at % 4);
        read_and_finish(damaged, SIZE_MAX);
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

RC_GTEST_PROP(DamagedTree, OfRandomWordsLeavesAValidList, ()) {
  const auto word = rc::gen::weightedOneOf<std::uint32_t>(
      {{4, rc::gen::element<std::uint32_t>(0x80000001, 0x80000002, 0x80000004)},
       {4, rc::gen::element<std::uint32_t>(0x10000002, 0x20000002)},
       {2, rc::gen::element<std::uint32_t>(0x80000010, 0x80000200, 0x40000001, 0x40000004)},
       {4, rc::gen::inRange<std::uint32_t>(0, 5)},
       {1, rc::gen::arbitrary<std::uint32_t>()}});
  read_and_finish(*rc::gen::container<Words>(word), SIZE_MAX);
  RC_ASSERT(!testing::Test::HasFailure());
}

TEST(DamagedTree, ReadWithAHeapThatFailsAnywhereLeavesAValidList) {
  for (const Words& words : good_streams()) {
    std::size_t most = 0;
    std::int64_t needed = 0;
    for (std::int64_t good = 0; good <= needed + 1; ++good) {
      WatchedList watched(good);
      watched.client.read(watched.list, words);
      if (watched.heap.requests() > good) needed = good + 1;
      if (good == 0) {
        EXPECT_EQ(watched.list.m_pRootGroup, nullptr);
      }
      const std::size_t there = groups_of(watched.list).size() + drawables_of(watched.list).size();
      EXPECT_GE(there, most);
      most = there;
      expect_valid(watched.list);
      look_at(watched);
      change(watched.list);  // still without memory
      expect_valid(watched.list);
      watched.heap.allow(LiveHeap::kNever);
      finish(watched);
    }
    EXPECT_GE(needed, 3);
  }
}

TEST(LittleMemory, OfTheWalkItselfChangesNothing) {
  DL::DisplayList list;
  StreamClient client;
  list.m_cMaxOpenDrawables = 1;
  for (std::int32_t i = 0; i < 150; ++i) list.add(dot(i * i * 37 % 1000, i * 91 % 777 - 300));
  const Words words = client.written(list);
  ASSERT_GT(groups_of(list).size(), 150U);
  // The stack of the walk asks for room for 16 groups, for 32 and so on.
  for (const std::int64_t good_requests : {0, 1, 2, 3}) {
    WatchedList watched;
    MemoryStream stream(words);
    MemoryStream written;
    {
      const FailingDefaultHeap failing(good_requests);
      client.read(watched.list, stream);
      client.write(watched.list, written);
    }
    EXPECT_TRUE(stream.at_end());
    EXPECT_EQ(written.size(), stream.size());
    EXPECT_EQ(written.words(), RecursiveWriter(watched.list).words());
    EXPECT_EQ(groups_of(watched.list).size(), groups_of(list).size());
    expect_valid(watched.list);
  }
}

}  // namespace
