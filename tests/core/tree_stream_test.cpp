// The words of a written tree, one by one.

#include <gtest/gtest.h>

#include "displaylist/displaylist.h"
#include "tests/support/hand_made_tree.h"
#include "tests/support/recursive_writer.h"
#include "tests/support/stream_client.h"

namespace {

using DL::DLDot;
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

constexpr std::uint32_t kLowest = 0x80000000;
constexpr std::uint32_t kHighest = 0x7FFFFFFF;
constexpr Bounds kBox{1, -2, 3, 4};

DLDot* dot(std::uint32_t color, std::int32_t x, std::int32_t y) {
  return new DLDot({color}, {x, y});
}

/// The fields of a closed group of box kBox.
Words closed(std::uint32_t tag, std::uint32_t level, std::uint32_t flags = 0) {
  return {tag, 1, 0xFFFFFFFE, 3, 4, level, flags};
}
/// The fields of an open group of box kBox.
Words opened(std::uint32_t flags = 0) {
  return {kOpen, 1, 0xFFFFFFFE, 3, 4, flags};
}

struct TreeStream : testing::Test {
  Words words() { return client.written(list); }
  void plant(DL::Group* root) { hand_made::plant(list, root); }

  DL::DisplayList list;
  StreamClient client;
};

TEST_F(TreeStream, OfAListWithoutARootIsTheEndMarker) {
  plant(nullptr);
  MemoryStream stream;
  client.write(list, stream);
  EXPECT_EQ(stream.size(), 4U);
  EXPECT_EQ(stream.writes(), 1U);
  EXPECT_EQ(stream.words(), Words{0x10000002});
}

TEST_F(TreeStream, OfANewListIsItsEmptyOpenRoot) {
  EXPECT_EQ(words(),
            (Words{0x80000004, kLowest, kLowest, kHighest, kHighest, 0, 0x10000002, 0x10000002}));
}

TEST_F(TreeStream, OfAnOpenRootIsItsFieldsAndTheChain) {
  list.add(dot(0x00FF0000, 7, -2), 5);
  list.add(dot(9, 1, 2), 8);
  EXPECT_EQ(words(), (Words{0x80000004, kLowest, kLowest, kHighest, kHighest, 13, 0x10000002,
                            0x80000010, 7, 0xFFFFFFFE, 0x20000002, 0x00FF0000,  //
                            0x80000010, 1, 2, 0x20000002, 9, 0x10000002}));
}

TEST_F(TreeStream, OfAClosedRootHoldsItsLevel) {
  list.add(dot(9, 5, 6), 4);
  list.m_pRootGroup->close();
  EXPECT_EQ(words(), (Words{0x80000002, 5, 6, 5, 6, 0, 4, kEnd, kDot, 5, 6, kColor, 9, kEnd}));
}

TEST_F(TreeStream, HoldsSiblingsBeforeGrandchildren) {
  plant(hand_made::inner(
      0, kBox, 1,
      {hand_made::inner(1, kBox, 2,
                        {hand_made::leaf(2, kBox, 3, {dot(1, 1, 1)}),
                         hand_made::leaf(2, kBox, 4, {dot(2, 2, 2), dot(3, 3, 3)})}),
       hand_made::inner(1, kBox, 5, {hand_made::leaf(2, kBox, 6, {dot(4, 4, 4)})}),
       hand_made::open(list, 1, kBox, 7, {dot(5, 5, 5)})}));
  EXPECT_EQ(words(), joined({closed(kGroup, 0, 1),
                             {kEnd},
                             closed(kGroup, 1, 2),
                             closed(kGroup, 1, 5),
                             opened(7),
                             {kEnd},
                             dot_words(5, 5, 5),
                             {kEnd},
                             closed(kBottom, 2, 6),
                             {kEnd},
                             dot_words(4, 4, 4),
                             {kEnd},
                             closed(kBottom, 2, 3),
                             closed(kBottom, 2, 4),
                             {kEnd},
                             dot_words(2, 2, 2),
                             dot_words(3, 3, 3),
                             {kEnd},
                             dot_words(1, 1, 1),
                             {kEnd}}));
}

TEST_F(TreeStream, HoldsTheEndMarkerAsTheChildrenOfEmptyGroups) {
  plant(hand_made::inner(0, kBox, 0,
                         {hand_made::inner(1, kBox, 0, {}), hand_made::leaf(1, kBox, 0, {}),
                          hand_made::open(list, 1, kBox, 0, {})}));
  EXPECT_EQ(words(), joined({closed(kGroup, 0),
                             {kEnd},
                             closed(kGroup, 1),
                             closed(kBottom, 1),
                             opened(),
                             {kEnd, kEnd, kEnd, kEnd}}));
}

TEST_F(TreeStream, HoldsLevelsAndFlagsAsTheyAre) {
  plant(hand_made::inner(0xFFFFFFFF, kBox, 0xFFFFFFFF,
                         {hand_made::leaf(0x80000000, kBox, 0xDEADBEEF, {})}));
  EXPECT_EQ(words(), joined({closed(kGroup, 0xFFFFFFFF, 0xFFFFFFFF),
                             {kEnd},
                             closed(kBottom, 0x80000000, 0xDEADBEEF),
                             {kEnd, kEnd}}));
}

TEST_F(TreeStream, HoldsNoLevelOfAnOpenGroup) {
  plant(hand_made::inner(4, kBox, 0, {hand_made::open(list, 5, kBox, 2, {})}));
  EXPECT_EQ(words(), joined({closed(kGroup, 4), {kEnd}, opened(2), {kEnd, kEnd}}));
}

TEST_F(TreeStream, OfHiddenGroupsIsThatOfVisibleOnes) {
  plant(hand_made::inner(0, kBox, 0,
                         {hand_made::leaf(1, kBox, 0, {dot(1, 1, 1)}),
                          hand_made::open(list, 1, kBox, 0, {dot(2, 2, 2)})}));
  const Words visible = words();
  DL::Group& root = *list.m_pRootGroup;
  root.m_pFirst.group->make_hidden();
  root.m_pLastChild.group->make_hidden();
  root.make_hidden();
  EXPECT_EQ(words(), visible);
  EXPECT_TRUE(root.is_hidden());
}

TEST_F(TreeStream, OfAGroupAloneHoldsItsLaterSiblings) {
  plant(hand_made::inner(
      0, kBox, 0,
      {hand_made::leaf(1, kBox, 1, {dot(1, 1, 1)}), hand_made::leaf(1, kBox, 2, {dot(2, 2, 2)}),
       hand_made::open(list, 1, kBox, 3, {dot(3, 3, 3)})}));
  MemoryStream stream;
  list.m_pRootGroup->m_pFirst.group->m_pNext->serialize_out(&stream, list);
  EXPECT_EQ(stream.words(), joined({closed(kBottom, 1, 2),
                                    opened(3),
                                    {kEnd},
                                    dot_words(3, 3, 3),
                                    {kEnd},
                                    dot_words(2, 2, 2),
                                    {kEnd}}));
  MemoryStream last;
  list.m_pOpenGroup->serialize_out(&last, list);
  EXPECT_EQ(last.words(), joined({opened(3), {kEnd}, dot_words(3, 3, 3), {kEnd}}));
}

TEST_F(TreeStream, LeavesOutWhatIsNotStoredAndGoesOnBehindIt) {
  const auto unstored = [] { return new DL::DLColorizedDot({}, {9, 9}, {}); };
  plant(hand_made::inner(
      0, kBox, 0,
      {hand_made::leaf(1, kBox, 0, {unstored(), unstored()}),
       hand_made::leaf(1, kBox, 0,
                       {unstored(), dot(1, 1, 1), unstored(), dot(2, 2, 2), unstored()})}));
  EXPECT_EQ(words(), joined({closed(kGroup, 0),
                             {kEnd},
                             closed(kBottom, 1),
                             closed(kBottom, 1),
                             {kEnd},
                             dot_words(1, 1, 1),
                             dot_words(2, 2, 2),
                             {kEnd, kEnd}}));
}

TEST_F(TreeStream, HoldsTheClientsIndexOfAPaletteColor) {
  plant(hand_made::leaf(
      0, kBox, 0,
      {new DL::PalettizedDrawable<DLDot>(client.at(-3), DL::PointTemplate<long>{1, 2})}));
  const Words expected = joined({closed(kBottom, 0), {kEnd, kDot, 1, 2, kIndex, 0xFFFFFFFD, kEnd}});
  EXPECT_EQ(words(), expected);
  EXPECT_EQ(list.m_pfnRenditionToIndex, &StreamClient::index_of);
  EXPECT_EQ(list.m_pRenditionToIndexContext, &client);
  MemoryStream later;
  list.m_pRootGroup->serialize_out(&later, list);  // asks the callback that stayed
  EXPECT_EQ(later.words(), expected);
}

TEST_F(TreeStream, HoldsTheIndexZeroWhenNobodyTellsIt) {
  plant(hand_made::leaf(
      0, kBox, 0,
      {new DL::PalettizedDrawable<DLDot>(client.at(8), DL::PointTemplate<long>{1, 2})}));
  MemoryStream stream;
  list.serialize_out(&stream, nullptr, nullptr);
  EXPECT_EQ(stream.words(), joined({closed(kBottom, 0), {kEnd, kDot, 1, 2, kIndex, 0, kEnd}}));
  EXPECT_EQ(list.m_pfnRenditionToIndex, nullptr);
}

TEST_F(TreeStream, OfADrawableWithAChainOfItsOwnGoesOnBehindIt) {
  auto* content = dot(1, 1, 1);
  content->m_pNext = dot(2, 2, 2);
  plant(hand_made::leaf(0, kBox, 0, {new client::Folder(content), dot(3, 3, 3)}));
  EXPECT_EQ(words(), joined({closed(kBottom, 0),
                             {kEnd, client::Folder::kTag},
                             dot_words(1, 1, 1),
                             dot_words(2, 2, 2),
                             {kEnd, kColor, 0},
                             dot_words(3, 3, 3),
                             {kEnd}}));
}

TEST_F(TreeStream, IsWrittenWordByWordAndLeavesTheListAsItIs) {
  list.m_cMaxOpenDrawables = 1;
  for (std::int32_t i = -20; i < 20; ++i) list.add(dot(1, i * 1000, i * i));
  MemoryStream stream;
  client.write(list, stream);
  EXPECT_EQ(stream.writes(), stream.words().size());
  EXPECT_EQ(stream.words(), RecursiveWriter(list).words());
  EXPECT_EQ(words(), stream.words());
  EXPECT_NE(list.add(dot(1, 0, 0)), nullptr);
}

}  // namespace
