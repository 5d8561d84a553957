// What reading makes of a good stream: groups, links, the open group.

#include <gtest/gtest.h>

#include "displaylist/displaylist.h"
#include "tests/support/hand_made_tree.h"
#include "tests/support/iterator_walk.h"
#include "tests/support/point_printing.h"
#include "tests/support/stream_client.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Group;
using stream_words::dot_words;
using stream_words::joined;
using stream_words::kBottom;
using stream_words::kEnd;
using stream_words::kGroup;
using stream_words::kOpen;
using stream_words::Words;
using Bounds = DL::BoundsTemplate<long>;

constexpr Bounds kBox{-5, -6, 7, 8};

Words closed(std::uint32_t tag, std::uint32_t level, std::uint32_t flags = 0) {
  return {tag, 0xFFFFFFFB, 0xFFFFFFFA, 7, 8, level, flags};
}
Words opened(std::uint32_t flags = 0, std::uint32_t tag = kOpen) {
  return {tag, 0xFFFFFFFB, 0xFFFFFFFA, 7, 8, flags};
}

Group* child(const Group& group, int index) {
  Group* found = group.m_pFirst.group;
  while (index-- > 0 && found != nullptr) found = found->m_pNext;
  return found;
}

/// A root with a closed leaf, an inner group with a leaf, and the open group.
Words grove() {
  return joined({closed(kGroup, 3, 1),
                 {kEnd},
                 closed(kBottom, 4, 2),  //
                 closed(kGroup, 5, 3),
                 opened(4),
                 {kEnd},  //
                 dot_words(1, 1, 1),
                 {kEnd},  // of the open group
                 closed(kBottom, 6, 5),
                 {kEnd},
                 dot_words(2, 2, 2),
                 {kEnd},
                 dot_words(3, 3, 3),
                 dot_words(4, 4, 4),
                 {kEnd}});
}

struct TreeReading : testing::Test {
  std::size_t read(const Words& words) { return client.read(list, words); }
  [[nodiscard]] Group& root() const { return *list.m_pRootGroup; }
  Group* add(std::int32_t x, std::int32_t y) { return list.add(new DL::DLDot({7}, {x, y})); }

  StreamClient client;
  DL::DisplayList list;
};

TEST_F(TreeReading, OfAnOpenRootMakesItTheOpenGroup) {
  const Words words = joined({opened(9), {kEnd}, dot_words(5, 6, 1), dot_words(-2, 3, 2), {kEnd}});
  EXPECT_EQ(read(words), words.size());
  EXPECT_EQ(list.m_pRootGroup, list.m_pOpenGroup);
  EXPECT_EQ(list.m_pInsertHint, list.m_pOpenGroup);
  EXPECT_TRUE(root().is_open());
  EXPECT_FALSE(root().is_hidden());
  EXPECT_EQ(root().m_pDisplayList, &list);
  EXPECT_EQ(root().m_bounds, kBox);
  EXPECT_EQ(root().m_flags, 9U);
  EXPECT_EQ(root().m_pParent, nullptr);
  EXPECT_EQ(root().m_pNext, nullptr);
  EXPECT_EQ(list.m_cOpenDrawables, 2);
  EXPECT_EQ(list.m_openLevel, 0);
  EXPECT_TRUE(list.m_openBounds.is_empty());
  const auto drawables = drawables_of(list);
  ASSERT_EQ(drawables.size(), 2U);
  EXPECT_EQ(root().m_pLastChild.drawable, drawables[1]);
  EXPECT_EQ(static_cast<DL::DLDot*>(drawables[0])->m_point, (DL::PointTemplate<long>{5, 6}));
  EXPECT_EQ(static_cast<DL::DLDot*>(drawables[1])->m_point, (DL::PointTemplate<long>{-2, 3}));
  EXPECT_EQ(drawables[1]->m_colorData.m_pRendition, client.at(2));
}

TEST_F(TreeReading, MakesTheClassesLevelsAndFlags) {
  EXPECT_EQ(read(grove()), grove().size());
  const std::vector<Group*> groups = groups_of(list);
  ASSERT_EQ(groups.size(), 5U);
  const std::vector<bool> leaf{false, true, false, true, true};
  const std::vector<std::uint32_t> levels{3, 4, 5, 6, 0};  // an open group's counts as 0
  const std::vector<std::uint32_t> flags{1, 2, 3, 5, 4};
  for (std::size_t i = 0; i < groups.size(); ++i) {
    EXPECT_EQ(groups[i]->contains_drawables(), leaf[i]) << i;
    EXPECT_EQ(groups[i]->level(), levels[i]) << i;
    EXPECT_EQ(groups[i]->m_flags, flags[i]) << i;
    EXPECT_EQ(groups[i]->m_bounds, kBox) << i;
    EXPECT_EQ(groups[i]->is_open(), i == 4) << i;
  }
}

TEST_F(TreeReading, LinksParentsSiblingsAndLastChildren) {
  read(grove());
  Group& inner = *child(root(), 1);
  EXPECT_EQ(root().m_pParent, nullptr);
  EXPECT_EQ(root().m_pLastChild.group, child(root(), 2));
  EXPECT_EQ(child(root(), 2)->m_pNext, nullptr);
  EXPECT_EQ(inner.m_pLastChild.group, inner.m_pFirst.group);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(child(root(), i)->m_pParent, &root());
  EXPECT_EQ(inner.m_pFirst.group->m_pParent, &inner);
  EXPECT_EQ(list.m_pOpenGroup, child(root(), 2));
  EXPECT_EQ(list.m_pInsertHint, list.m_pOpenGroup);
  EXPECT_EQ(list.m_cOpenDrawables, 1);
  for (Group* leaf : leaves_of(list)) {
    DL::Drawable* last = leaf->m_pFirst.drawable;
    while (last->m_pNext != nullptr) last = last->m_pNext;
    EXPECT_EQ(leaf->m_pLastChild.drawable, last);
  }
  root().assert_valid();
}

TEST_F(TreeReading, KeepsTheDrawingOrder) {
  read(grove());
  std::vector<std::int32_t> xs;
  for (DL::Drawable* d : drawables_of(list)) xs.push_back(static_cast<DL::DLDot*>(d)->m_point.x);
  EXPECT_EQ(xs, (std::vector<std::int32_t>{3, 4, 2, 1}));
  DL::DisplayListIterator at(&list);
  EXPECT_EQ(walked(at), drawables_of(list));
}

TEST_F(TreeReading, WithoutAnOpenGroupLeavesTheListWithoutOne) {
  const Words words =
      joined({closed(kGroup, 0), {kEnd}, closed(kBottom, 1), {kEnd}, dot_words(1, 1, 1), {kEnd}});
  EXPECT_EQ(read(words), words.size());
  EXPECT_EQ(list.m_pOpenGroup, nullptr);
  EXPECT_EQ(list.m_pInsertHint, nullptr);
  EXPECT_EQ(list.m_cOpenDrawables, 0);
  Group* group = add(2, 2);
  ASSERT_NE(group, nullptr);
  EXPECT_EQ(group, list.m_pOpenGroup);
  EXPECT_EQ(group->m_pParent, &root());
  EXPECT_EQ(drawables_of(list).size(), 2U);
}

TEST_F(TreeReading, OfAnyOtherTagMakesAnOpenGroup) {
  for (const std::uint32_t tag : {0U, 5U, 0x80000000U, 0x80000003U, 0x80000008U, 0x80000010U,
                                  0xC0000001U, 0x40000001U, 0xFFFFFFFFU, 0x10000003U}) {
    EXPECT_EQ(read(joined({opened(1, tag), {kEnd}, dot_words(1, 2, 3), {kEnd}})), 13U);
    EXPECT_TRUE(root().is_open()) << std::hex << tag;
    EXPECT_EQ(list.m_cOpenDrawables, 1);
    read(joined({closed(kGroup, 0), {kEnd}, opened(1, tag), {kEnd}, dot_words(1, 2, 3), {kEnd}}));
    ASSERT_EQ(groups_of(list).size(), 2U);
    EXPECT_TRUE(groups_of(list)[1]->is_open()) << std::hex << tag;
    hand_made::plant(list, nullptr);
  }
}

TEST_F(TreeReading, MakesAnEmptyInnerGroupOfAnEndMarker) {
  const Words words = joined({closed(kGroup, 0),
                              {kEnd},
                              closed(kGroup, 1),
                              closed(kBottom, 1),
                              opened(),
                              {kEnd, kEnd, kEnd, kEnd}});
  EXPECT_EQ(read(words), words.size());
  EXPECT_EQ(groups_of(list).size(), 4U);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(child(root(), i)->m_pFirst.group, nullptr);
  EXPECT_EQ(client.written(list), words);
}

TEST_F(TreeReading, TakesAddsWhereTheStreamEnded) {
  read(grove());
  Group* open = list.m_pOpenGroup;
  EXPECT_EQ(add(6, 6), open);
  EXPECT_EQ(list.m_cOpenDrawables, 2);
  EXPECT_EQ(list.m_openBounds, (Bounds{6, 6, 6, 6}));
  open->close();
  EXPECT_EQ(open->m_bounds, (Bounds{6, 6, 6, 6}));  // of what was added since
  EXPECT_EQ(open->level(), 0U);
}

TEST_F(TreeReading, LetsAFullOpenGroupSplitFromLevelZero) {
  list.m_cMaxOpenDrawables = 2;
  read(joined({opened(), {kEnd}, dot_words(1, 1, 1), dot_words(-4, -4, 2), {kEnd}}));
  ASSERT_NE(add(2, 2), nullptr);
  EXPECT_FALSE(root().contains_drawables());
  EXPECT_EQ(root().level(), 0U);
  EXPECT_EQ(root().m_pFirst.group->level(), 1U);
  EXPECT_EQ(drawables_of(list).size(), 3U);
}

TEST_F(TreeReading, OfAGroupAloneFillsItBelowItsParent) {
  hand_made::plant(list, hand_made::inner(0, kBox, 0, {}));
  Group* filled = hand_made::leaf(0, {}, 0, {});
  root().append_child(filled);
  const Words words = joined({closed(kBottom, 8, 6),
                              closed(kBottom, 9),
                              {kEnd},
                              dot_words(1, 1, 1),
                              {kEnd},
                              dot_words(2, 2, 2),
                              {kEnd}});
  MemoryStream stream(Words(words.begin() + 1, words.end()));
  filled->serialize_in(&stream, list, &root());
  EXPECT_TRUE(stream.at_end());
  EXPECT_EQ(filled->m_pParent, &root());
  EXPECT_EQ(filled->level(), 8U);
  EXPECT_EQ(filled->m_flags, 6U);
  ASSERT_NE(filled->m_pNext, nullptr);
  EXPECT_EQ(filled->m_pNext->m_pParent, &root());
  EXPECT_EQ(root().m_pLastChild.group, filled->m_pNext);
  EXPECT_EQ(drawables_of(list).size(), 2U);
}

TEST_F(TreeReading, ClosesAnOpenGroupWhenThereIsAnother) {
  const Words words = joined({closed(kGroup, 0),
                              {kEnd},
                              opened(1),
                              opened(2),
                              opened(3),
                              {kEnd},
                              dot_words(1, 1, 1),
                              {kEnd},  // of the third
                              dot_words(2, 2, 2),
                              dot_words(3, 3, 3),
                              {kEnd},  // of the second
                              {kEnd}});
  EXPECT_EQ(read(words), words.size());
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(child(root(), i)->is_open());
    EXPECT_TRUE(child(root(), i)->contains_drawables());
    EXPECT_EQ(child(root(), i)->level(), 0U);
    EXPECT_EQ(child(root(), i)->m_bounds, kBox);
  }
  EXPECT_EQ(list.m_pOpenGroup, child(root(), 2));
  EXPECT_EQ(list.m_cOpenDrawables, 1);
  EXPECT_EQ(drawables_of(list).size(), 3U);
}

TEST_F(TreeReading, ClosesAnOpenGroupThatWasReadBeforeAnotherOneBelow) {
  read(joined({closed(kGroup, 0),
               {kEnd},
               closed(kGroup, 1),
               opened(1),
               {kEnd},
               dot_words(1, 1, 1),
               {kEnd},
               opened(2),
               {kEnd, kEnd}}));
  EXPECT_FALSE(child(root(), 1)->is_open());
  EXPECT_EQ(child(root(), 1)->m_pFirst.drawable, child(root(), 1)->m_pLastChild.drawable);
  EXPECT_EQ(list.m_pOpenGroup, child(root(), 0)->m_pFirst.group);
  EXPECT_EQ(list.m_cOpenDrawables, 0);
}

TEST_F(TreeReading, CountsNothingInAnOpenGroupWhereTheStreamEnds) {
  read(joined({closed(kGroup, 0),
               {kEnd},
               closed(kGroup, 1),
               opened(1),
               {kEnd},
               dot_words(1, 1, 1),
               {kEnd},
               opened(2)}));
  EXPECT_EQ(list.m_pOpenGroup, child(root(), 0)->m_pFirst.group);
  EXPECT_EQ(list.m_cOpenDrawables, 0);
}

TEST_F(TreeReading, EndsAtTheSiblingOfARoot) {
  const Words words = joined({opened(5), opened(6), {kEnd}, dot_words(1, 1, 1), {kEnd, kEnd}});
  EXPECT_EQ(read(words), 7U);
  EXPECT_EQ(root().m_pNext, nullptr);
  EXPECT_EQ(root().m_flags, 5U);
  EXPECT_EQ(list.m_pOpenGroup, list.m_pRootGroup);
  EXPECT_TRUE(drawables_of(list).empty());
}

TEST_F(TreeReading, EndsWhereGroupsNestTooDeep) {
  for (const std::size_t depth : {64U, 599U, 600U, 601U, 700U}) {
    Words words;
    for (std::size_t i = 0; i + 1 < depth; ++i) {
      words = joined({words, closed(kGroup, static_cast<std::uint32_t>(i)), {kEnd}});
    }
    words = joined({words, opened(), {kEnd}, dot_words(1, 1, 1), {kEnd}});
    const std::size_t words_read = read(words);
    EXPECT_EQ(groups_of(list).size(), std::min<std::size_t>(depth, 600));
    EXPECT_EQ(drawables_of(list).size(), depth <= 600 ? 1U : 0U);
    EXPECT_EQ(words_read == words.size(), depth <= 600);
    hand_made::plant(list, nullptr);
  }
}

}  // namespace
