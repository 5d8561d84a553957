// Reading a tree: what the client is asked and told, and what becomes of the
// tree that the list had.

#include <gtest/gtest.h>

#include "displaylist/displaylist.h"
#include "tests/support/hand_made_tree.h"
#include "tests/support/live_heap.h"
#include "tests/support/point_printing.h"
#include "tests/support/probe_scene.h"
#include "tests/support/stream_client.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Group;
using stream_words::dot_words;
using stream_words::joined;
using stream_words::kBottom;
using stream_words::kColor;
using stream_words::kDot;
using stream_words::kEnd;
using stream_words::kGroup;
using stream_words::kIndex;
using stream_words::kOpen;
using stream_words::Words;
using Bounds = DL::BoundsTemplate<long>;
using Ints = std::vector<int>;

constexpr std::uint32_t kMark = client::StoredMark::kTag;
constexpr Bounds kBox{10, 10, 20, 20};

/// An open root with these drawables.
Words open_root(const Words& drawables) {
  return joined({{kOpen, 0, 0, 9, 9, 0, kEnd}, drawables, {kEnd}});
}

struct TreeReadingCallbacks : testing::Test {
  std::size_t read(const Words& words) { return client.read(list, words); }

  StreamClient client;
  DL::DisplayList list;
};

TEST_F(TreeReadingCallbacks, StayInTheirFieldsWithTheirContexts) {
  int factory_context = 0;
  MemoryStream stream(open_root({}));
  list.serialize_in(&stream, &StreamClient::rendition_at, &client, &client::create,
                    &factory_context, &StreamClient::tell);
  EXPECT_EQ(list.m_pfnIndexToRendition, &StreamClient::rendition_at);
  EXPECT_EQ(list.m_pIndexToRenditionContext, &client);
  EXPECT_EQ(list.m_pfnCreateDrawable, &client::create);
  EXPECT_EQ(list.m_pCreateDrawableContext, &factory_context);
  EXPECT_EQ(list.m_pfnPostRead, &StreamClient::tell);
  EXPECT_EQ(list.m_pfnRenditionToIndex, nullptr);
}

TEST_F(TreeReadingCallbacks, AreStoredEvenWhenThereIsNothingToRead) {
  read({});
  EXPECT_EQ(list.m_pfnCreateDrawable, &StreamClient::create);
  EXPECT_EQ(list.m_pCreateDrawableContext, &client);
  MemoryStream empty;
  list.serialize_in(&empty, nullptr, nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(list.m_pfnCreateDrawable, nullptr);
  EXPECT_EQ(list.m_pfnIndexToRendition, nullptr);
  EXPECT_EQ(list.m_pfnPostRead, nullptr);
}

TEST_F(TreeReadingCallbacks, AreAskedForTheIndicesOfPlainColorsToo) {
  read(open_root({kDot, 1, 1, kColor, 0xFFFFFFFF, kDot, 1, 1, kIndex, 4}));
  EXPECT_EQ(client.asked_indices, (Ints{-1, 4}));
  for (DL::Drawable* d : drawables_of(list)) EXPECT_TRUE(d->is_palettized());
  EXPECT_TRUE(StreamClient::told.empty());
}

TEST_F(TreeReadingCallbacks, AreAskedForClientsClassesOnly) {
  read(open_root(joined({dot_words(1, 1, 1),
                         {kMark, 77, kColor, 5},
                         {0x80000200, 0, kColor, 6},
                         {kMark, 78, kColor, 5}})));
  EXPECT_EQ(client.asked_tags, (Ints{0x40000001, 0x40000001}));
  const auto drawables = drawables_of(list);
  ASSERT_EQ(drawables.size(), 4U);
  EXPECT_EQ(static_cast<client::StoredMark*>(drawables[3])->m_value, 78U);
}

TEST_F(TreeReadingCallbacks, AreToldOfClassesWithoutAPalettizedVariantOnce) {
  read(open_root({kMark, 77, kColor, 5}));
  EXPECT_EQ(StreamClient::told, drawables_of(list));
  EXPECT_EQ(StreamClient::told.front()->m_colorData.m_pRendition, client.at(5));
  EXPECT_FALSE(StreamClient::told.front()->is_palettized());
}

TEST_F(TreeReadingCallbacks, MayBeMissing) {
  MemoryStream stream(open_root({kDot, 1, 2, kColor, 3, kDot, 4, 5, kIndex, 6}));
  list.serialize_in(&stream, nullptr, nullptr, nullptr, nullptr, nullptr);
  EXPECT_TRUE(stream.at_end());
  const auto drawables = drawables_of(list);
  ASSERT_EQ(drawables.size(), 2U);
  EXPECT_FALSE(drawables[0]->is_palettized());
  EXPECT_EQ(drawables[0]->m_colorData.m_color.word, 3U);
  EXPECT_EQ(drawables[1]->m_colorData.m_color.word, 6U);
  MemoryStream marks(open_root({kMark, 77, kColor, 5}));
  list.serialize_in(&marks, &StreamClient::rendition_at, &client, &client::create, nullptr,
                    nullptr);
  EXPECT_EQ(drawables_of(list).size(), 1U);
}

TEST_F(TreeReadingCallbacks, WordsThatStandForNothingEndTheReading) {
  // The drawables of the last group come first in the stream.
  const Words fields{0, 0, 9, 9, 1, 0};
  for (const std::uint32_t tag : {0x00000005U, 0x3FFFFFFFU, 0x20000001U, 0x40000100U}) {
    const Words words = joined({{kGroup},
                                fields,
                                {kEnd, kBottom},
                                fields,
                                {kBottom},
                                fields,
                                {kEnd},
                                dot_words(1, 1, 1),
                                {tag},
                                dot_words(2, 2, 2),
                                {kEnd},
                                dot_words(3, 3, 3),
                                {kEnd}});
    EXPECT_EQ(read(words), 29U) << std::hex << tag;
    ASSERT_EQ(leaves_of(list).size(), 2U);
    EXPECT_EQ(leaves_of(list)[0]->m_pFirst.drawable, nullptr);
    EXPECT_EQ(drawables_of(list).size(), 1U);
    EXPECT_EQ(leaves_of(list)[1]->m_pLastChild.drawable, drawables_of(list)[0]);
    hand_made::plant(list, nullptr);
  }
  EXPECT_EQ(client.asked_tags, Ints{0x40000100});  // the one with a class bit
}

TEST_F(TreeReadingCallbacks, WithoutAFactoryClientsClassesEndTheReading) {
  MemoryStream stream(open_root(joined({dot_words(1, 1, 1), {kMark, 77, kColor, 5}})));
  list.serialize_in(&stream, &StreamClient::rendition_at, &client, nullptr, nullptr, nullptr);
  EXPECT_EQ(drawables_of(list).size(), 1U);
  EXPECT_EQ(list.m_cOpenDrawables, 1);
}

TEST_F(TreeReadingCallbacks, WordsThatEndAnInnerChainEndTheOuterOnesToo) {
  read(open_root(
      joined({{client::Folder::kTag}, dot_words(1, 1, 1), {5}, {kColor, 1}, dot_words(2, 2, 2)})));
  ASSERT_EQ(drawables_of(list).size(), 1U);
  const auto* folder = static_cast<client::Folder*>(drawables_of(list)[0]);
  ASSERT_NE(folder->m_content, nullptr);
  EXPECT_EQ(folder->m_content->m_pNext, nullptr);
}

TEST_F(TreeReadingCallbacks, AListCanBeReadAgainAfterBadWords) {
  read(open_root({5}));
  EXPECT_TRUE(drawables_of(list).empty());
  const Words words = open_root(joined({dot_words(1, 1, 1), dot_words(2, 2, 2)}));
  EXPECT_EQ(read(words), words.size());
  EXPECT_EQ(drawables_of(list).size(), 2U);
}

TEST_F(TreeReadingCallbacks, GroupsBehindADrawableWithAChainOfItsOwnAreRead) {
  Words chain = joined({{client::Folder::kTag}, dot_words(1, 1, 1), {kEnd, kColor, 1}});
  const Words fields{0, 0, 9, 9, 1, 0};
  const Words words = joined({{kGroup},
                              fields,
                              {kEnd, kBottom},
                              fields,
                              {kBottom},
                              fields,
                              {kEnd},
                              chain,
                              {kEnd},
                              chain,
                              dot_words(2, 2, 2),
                              {kEnd}});
  EXPECT_EQ(read(words), words.size());
  EXPECT_EQ(drawables_of(list).size(), 3U);
}

// --- Lists that had a tree --------------------------------------------------

struct UsedList : testing::Test {
  UsedList() { scene.add(kBox); }

  void read(const Words& words) { client.read(scene.list, words); }

  StreamClient client;
  LiveHeap heap;
  ProbeScene scene{1, 5, &heap};
};

TEST_F(UsedList, LosesItsOpenRoot) {
  read(open_root({}));
  EXPECT_EQ(scene.log.alive, 0);
  EXPECT_EQ(heap.alive(), 1U);
  EXPECT_EQ(scene.list.m_cOpenDrawables, 0);
}

TEST_F(UsedList, HasNoRootAfterAnEndMarkerOrNothing) {
  scene.list.m_cMaxOpenDrawables = 5;
  for (const Words& words : {Words{kEnd}, Words{}}) {
    scene.add(kBox);
    read(words);
    EXPECT_EQ(scene.log.alive, 0);
    EXPECT_EQ(heap.alive(), 0U);
    EXPECT_EQ(scene.list.m_pRootGroup, nullptr);
    EXPECT_EQ(scene.list.m_pOpenGroup, nullptr);
    EXPECT_EQ(scene.list.m_pInsertHint, nullptr);
    EXPECT_EQ(scene.list.m_cOpenDrawables, 0);
    EXPECT_TRUE(scene.list.m_openBounds.is_empty());
    EXPECT_NE(scene.add(kBox), nullptr);
    EXPECT_EQ(broken_invariants(scene.list), "");
  }
}

TEST_F(UsedList, LeavesARootWithContentsToTheCaller) {
  for (int i = 0; i < 3; ++i) scene.add(kBox);  // leaves 1 to 3 closed, 4 open
  Group* old_root = &scene.root();
  const std::size_t open_groups = 1;
  const std::size_t before = heap.alive();
  read(open_root(dot_words(1, 1, 1)));
  EXPECT_EQ(scene.log.alive, 3);
  EXPECT_EQ(heap.alive(), before - open_groups + 2);  // a new root and its dot
  EXPECT_NE(scene.list.m_pRootGroup, old_root);
  old_root->assert_valid();
  EXPECT_FALSE(old_root->m_pLastChild.group->is_open());
  EXPECT_EQ(old_root->m_pLastChild.group->m_pNext, nullptr);
  delete old_root;
  EXPECT_EQ(scene.log.alive, 0);
  EXPECT_EQ(heap.alive(), 2U);
  EXPECT_EQ(scene.list.m_pOpenGroup, scene.list.m_pRootGroup);
}

TEST_F(UsedList, LosesARootThatHeldTheOpenGroupOnly) {
  hand_made::plant(scene.list, new (&heap) Group(DL::class_change::kUnfilled));
  hand_made::fill(scene.list.m_pRootGroup, 0, kBox, 0);
  scene.add(kBox);
  ASSERT_EQ(heap.alive(), 2U);
  read(open_root({}));
  EXPECT_EQ(scene.log.alive, 0);
  EXPECT_EQ(heap.alive(), 1U);
}

TEST_F(UsedList, ForgetsTheOpenLevelAndBounds) {
  scene.list.m_cMaxOpenDrawables = 1;
  for (int i = 0; i < 3; ++i) scene.add(kBox);
  ASSERT_NE(scene.list.m_openLevel, 0);
  Group* old_root = &scene.root();
  read({kBottom, 0, 0, 9, 9, 7, 0, kEnd, kEnd});
  EXPECT_EQ(scene.list.m_openLevel, 0);
  EXPECT_TRUE(scene.list.m_openBounds.is_empty());
  EXPECT_EQ(scene.list.m_cOpenDrawables, 0);
  EXPECT_EQ(scene.list.m_pOpenGroup, nullptr);
  delete old_root;
}

TEST_F(UsedList, KeepsARootThatTheClientClosed) {
  scene.root().close();
  Group* old_root = &scene.root();
  read(open_root({}));
  EXPECT_EQ(scene.log.alive, 1);
  delete old_root;
  EXPECT_EQ(scene.log.alive, 0);
  EXPECT_EQ(heap.alive(), 1U);
}

TEST_F(UsedList, CanBeReadManyTimes) {
  const Words words = open_root(joined({dot_words(1, 1, 1), dot_words(2, 2, 2)}));
  for (int i = 0; i < 10; ++i) {
    read(words);
    EXPECT_EQ(heap.alive(), 3U);
    EXPECT_EQ(scene.list.m_cOpenDrawables, 2);
  }
}

}  // namespace
