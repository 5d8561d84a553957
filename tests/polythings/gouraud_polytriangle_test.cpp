#include "displaylist/polythings/gouraud_polytriangle.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/polythings/strips.h"
#include "tests/support/drawable_answers.h"
#include "tests/support/drawable_chain.h"
#include "tests/support/test_heap.h"

namespace {

using answers::clipped;
using answers::Lines;
using answers::unclipped;
using DL::DLGouraudPolytriangle;

constexpr LM_RGB32 kColors[] = {{0xA}, {0xB}, {0xC}, {0xD}};

struct GouraudPolytriangle : testing::Test {
  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  DLGouraudPolytriangle strip{{0x10}, 4, strips::kPoints, kColors};
};

TEST_F(GouraudPolytriangle, IsClippedInBothDrawsWithTheColorOfEachVertex) {
  list.m_rendition.set_clip_rectangle({-100, 100, -100, 100});
  const Lines expected = {
      "gouraud_triangle_strip_clipped color=00000010 (1,2) (3,4) (5,6) (7,8) #0000000A #0000000B "
      "#0000000C #0000000D"};
  EXPECT_EQ(clipped(recorded, strip), expected);
  EXPECT_EQ(unclipped(recorded, strip), expected);
}

TEST_F(GouraudPolytriangle, HasNoOutline) {
  list.m_rendition.set_edge_mode(LM_EDGE_MODE_OUTLINE);
  list.m_rendition.set_line_weight(3);
  EXPECT_EQ(clipped(recorded, strip).size(), 1U);
  EXPECT_EQ(unclipped(recorded, strip).size(), 1U);
  EXPECT_EQ(list.m_rendition.line_style().weight, 3);
}

TEST_F(GouraudPolytriangle, CopiesTheColorsItIsGiven) {
  LM_RGB32 colors[] = {{1}, {2}, {3}};
  TestHeap heap;
  const DLGouraudPolytriangle three({}, 3, strips::kPoints, colors, &heap);
  colors[0] = {9};
  EXPECT_EQ(three.colors[0], LM_RGB32{1});
  EXPECT_EQ(heap.requests(), 2);
  EXPECT_EQ(heap.bytes(), 3 * sizeof(LogicalPoint) + 3 * sizeof(LM_RGB32));
}

TEST_F(GouraudPolytriangle, WithoutColorsDrawsNothing) {
  DLGouraudPolytriangle no_colors({}, 4, strips::kPoints, nullptr);
  EXPECT_TRUE(answers::all_ways(recorded, no_colors).empty());
}

TEST_F(GouraudPolytriangle, CloneHasColorsOfItsOwn) {
  const std::unique_ptr<DL::Drawable> copy(strip.clone());
  const auto* gouraud = static_cast<DLGouraudPolytriangle*>(copy.get());
  EXPECT_NE(gouraud->colors, strip.colors);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(gouraud->colors[i], kColors[i]);
}

TEST_F(GouraudPolytriangle, IsFoundWhateverTheColorsOfItsVertices) {
  const LM_RGB32 other_colors[] = {{7}, {8}, {9}, {10}};
  DLGouraudPolytriangle other({0x99}, 4, strips::kPoints, other_colors);
  EXPECT_TRUE(answers::finds(other, strip));
}

TEST_F(GouraudPolytriangle, IsNotStoredAndLeftOutOfAChain) {
  answers::expect_not_stored(strip);
  EXPECT_EQ(strip.count, 4);
  const DrawableChain chain{new DL::DLDot({1}, {1, 1}),
                            new DLGouraudPolytriangle({}, 4, strips::kPoints, kColors),
                            new DL::DLDot({2}, {2, 2})};
  EXPECT_EQ(answers::record_of(*chain.first(), list),
            (answers::Words{0x80000010, 1, 1, 0x20000002, 1, 0x80000010, 2, 2, 0x20000002, 2,
                            0x10000002}));
}

TEST_F(GouraudPolytriangle, DumpLineTellsLevelAndCount) {
  answers::expect_dump(strip, 3, "            GouraudPolytriange: level  3, points = 4",
                       4 * 12 + 56);
  const DLGouraudPolytriangle none({}, 0, strips::kPoints, kColors);
  answers::expect_dump(none, 0, "GouraudPolytriange: level  0, points = 0", 56);
}

}  // namespace
