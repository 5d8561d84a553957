#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <string>

#include "displaylist/core/group.h"
#include "displaylist/displaylist.h"
#include "displaylist/drawables/debug.h"
#include "tests/support/tree_walk.h"

namespace {

using DL::Drawable;
using DL::Group;
using Point = DL::PointTemplate<long>;

/// The text with each address replaced by a number: that of its first mention.
std::string with_numbers(const std::string& text) {
  std::map<std::string, int> numbers;
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    if (text.compare(at, 2, "0x") != 0) {
      result += text[at++];
      continue;
    }
    const std::size_t end = std::min(text.find_first_of(",\n", at), text.size());
    const auto number = static_cast<int>(numbers.size()) + 1;
    result +=
        '#' + std::to_string(numbers.emplace(text.substr(at, end - at), number).first->second);
    at = end;
  }
  return result;
}

std::string address(const void* pointer) {
  std::ostringstream os;
  os << pointer;
  return os.str();
}

/// A list of dots, whose leaves hold one each, at three depths.
struct GroupDump : testing::Test {
  GroupDump() {
    list.m_cMaxOpenDrawables = 1;
    list.m_cMaxLevel = 5;
    for (const Point point : {Point{10, 10}, {-20, 10}, {-12, 10}, {30, 30}}) {
      list.add(new DL::DLDot({}, point));
    }
  }
  std::string dump(const Group& group, int level) {
    std::ostringstream os;
    statistics = {};
    group.dump_subtree(os, level, statistics);
    return os.str();
  }
  void expect_counts(std::uint32_t groups, std::uint32_t drawables) {
    EXPECT_EQ(statistics.m_cGroups, groups);
    EXPECT_EQ(statistics.m_cGroupBytes, 72 * groups);
    EXPECT_EQ(statistics.m_cDrawables, drawables);
    EXPECT_EQ(statistics.m_cDrawableBytes, 40 * drawables);
    EXPECT_EQ(statistics.m_cEntryBytes, 32 * drawables);
  }

  DL::DisplayList list;
  DL::DisplayListDebug statistics;
};

constexpr const char* kWholeTree =
    "Group: level  0, this = #1, sibling = 0\n"
    "    BottomGroup: level  1, this = #2, sibling = #3\n"
    "        DLDot: level  2, this = #4\n"
    "    Group: level  1, this = #3, sibling = #5\n"
    "        BottomGroup: level  2, this = #6, sibling = #7\n"
    "            DLDot: level  3, this = #8\n"
    "        Group: level  2, this = #7, sibling = 0\n"
    "            BottomGroup: level  3, this = #9, sibling = 0\n"
    "                DLDot: level  4, this = #10\n"
    "    *OpenBottomGroup*: level  1, this = #5, sibling = 0\n"
    "        DLDot: level  2, this = #11\n";

TEST_F(GroupDump, WritesALineForEachGroupAndDrawable) {
  EXPECT_EQ(with_numbers(dump(*list.m_pRootGroup, 0)), kWholeTree);
}

TEST_F(GroupDump, CountsALeafBelowAGroupTwiceAndTheRootNotAtAll) {
  dump(*list.m_pRootGroup, 0);
  expect_counts(6 + 4, 4);
}

TEST_F(GroupDump, OfAGroupWithOneLeafOfOneDot) {
  Group* inner = list.m_pRootGroup->m_pFirst.group->m_pNext->m_pLastChild.group;
  const std::string text = dump(*inner, 0);
  expect_counts(2, 1);
  EXPECT_EQ(with_numbers(text),
            "Group: level  2, this = #1, sibling = 0\n"
            "    BottomGroup: level  3, this = #2, sibling = 0\n"
            "        DLDot: level  2, this = #3\n");
}

TEST_F(GroupDump, AddsToTheCountsOfTheCaller) {
  std::ostringstream os;
  statistics = {.m_cGroups = 1000, .m_cDrawables = 2000, .m_cGroupBytes = 3000};
  list.m_pRootGroup->dump_subtree(os, 0, statistics);
  list.m_pRootGroup->dump_subtree(os, 0, statistics);
  EXPECT_EQ(statistics.m_cGroups, 1020U);
  EXPECT_EQ(statistics.m_cDrawables, 2008U);
  EXPECT_EQ(statistics.m_cGroupBytes, 3000U + 20U * 72U);
  EXPECT_EQ(statistics.m_cDrawableBytes, 8U * 40U);
}

TEST_F(GroupDump, OfALeafCountsItOnce) {
  Group* leaf = list.m_pRootGroup->m_pFirst.group;
  const std::string text = dump(*leaf, 1);
  expect_counts(1, 1);
  EXPECT_EQ(text, "    BottomGroup: level  1, this = " + address(leaf) +
                      ", sibling = " + address(leaf->m_pNext) +
                      "\n        DLDot: level  2, this = " + address(leaf->m_pFirst.drawable) +
                      "\n");
}

TEST_F(GroupDump, OfTheOpenGroupTellsTheLevelThatTheListKeeps) {
  list.m_openLevel = 17;
  const std::string text = dump(*list.m_pOpenGroup, 0);
  expect_counts(1, 1);
  EXPECT_EQ(with_numbers(text),
            "*OpenBottomGroup*: level  17, this = #1, sibling = 0\n"
            "    DLDot: level  1, this = #2\n");
}

TEST_F(GroupDump, IsIndentedByItsArgumentAndTellsTheLevelOfTheGroup) {
  Group* leaf = list.m_pRootGroup->m_pFirst.group;
  leaf->remove_all();
  const std::string line = "BottomGroup: level  1, this = #1, sibling = #2\n";
  EXPECT_EQ(with_numbers(dump(*leaf, 0)), line);
  EXPECT_EQ(with_numbers(dump(*leaf, 3)), "            " + line);
  EXPECT_EQ(with_numbers(dump(*leaf, -2)), line);
}

TEST_F(GroupDump, BelowAGroupAtANegativeLevelIsIndentedFromZero) {
  const std::string text = with_numbers(dump(*list.m_pRootGroup, -1));
  EXPECT_EQ(text.find("Group: level  0"), 0U);
  EXPECT_NE(text.find("\nBottomGroup: level  1"), std::string::npos);
  EXPECT_NE(text.find("\n    DLDot: level  1"), std::string::npos);
}

TEST_F(GroupDump, OfEmptyGroupsIsTheirLine) {
  list.m_pRootGroup->remove_all();
  EXPECT_EQ(with_numbers(dump(*list.m_pRootGroup, 0)), "Group: level  0, this = #1, sibling = 0\n");
  expect_counts(0, 0);
  DL::DisplayList empty;
  EXPECT_EQ(with_numbers(dump(*empty.m_pRootGroup, 0)),
            "*OpenBottomGroup*: level  0, this = #1, sibling = 0\n");
  expect_counts(1, 0);
}

TEST_F(GroupDump, OfHiddenGroupsAndDrawablesIsThatOfVisibleOnes) {
  const std::string visible = dump(*list.m_pRootGroup, 0);
  for (Group* group : groups_of(list)) group->make_hidden();
  for (Drawable* drawable : drawables_of(list)) drawable->hide();
  ASSERT_TRUE(list.m_pOpenGroup->is_hidden());
  EXPECT_EQ(dump(*list.m_pRootGroup, 0), visible);
  expect_counts(10, 4);
}

TEST_F(GroupDump, OfALeafNamesItsDrawablesInTheirOrder) {
  DL::DisplayList two;
  const Point points[] = {{10, 20}, {30, 25}, {-5, 40}};
  two.add(new DL::DLPolyline({7}, 3, points));
  two.add(new DL::DLDot({}, {1, 1}));
  EXPECT_EQ(with_numbers(dump(*two.m_pRootGroup, 0)),
            "*OpenBottomGroup*: level  0, this = #1, sibling = 0\n"
            "    DLPolyline: color = 7, points = 3, (10,20)x(-5,40), this = #2\n"
            "    DLDot: level  1, this = #3\n");
  EXPECT_EQ(statistics.m_cGroups, 1U);
  EXPECT_EQ(statistics.m_cDrawables, 2U);
  EXPECT_EQ(statistics.m_cDrawableBytes, 3U * 8U + 48U + 40U);
  EXPECT_EQ(statistics.m_cEntryBytes, 64U);
}

TEST_F(GroupDump, LeavesTheStreamInDecimal) {
  for (Group* group : groups_of(list)) {
    std::ostringstream os;
    os << std::hex;
    group->dump_subtree(os, 0, statistics);
    os << 255;
    EXPECT_EQ(os.str().substr(os.str().rfind('\n')), "\n255");
  }
}

TEST_F(GroupDump, OfTheOpenGroupTellsItsLevelInDecimalOnAnyStream) {
  list.m_openLevel = 17;
  std::ostringstream os;
  os << std::hex;
  list.m_pOpenGroup->dump_subtree(os, 0, statistics);
  EXPECT_EQ(os.str().find("*OpenBottomGroup*: level  17, "), 0U);
}

}  // namespace
