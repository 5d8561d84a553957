#include "displaylist/polythings/polytriangle.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/polythings/allocation_counter.h"
#include "tests/polythings/strips.h"
#include "tests/support/drawable_answers.h"
#include "tests/support/drawable_chain.h"
#include "tests/support/palette.h"
#include "tests/support/recorded_list.h"

// The strips without vertex data: their outline on the device, and their records.

namespace {

using answers::clipped;
using answers::Lines;
using answers::unclipped;
using answers::Words;
using DL::DLPolytriangle;
using DL::DLPolytriangleWithNoBorder;

constexpr LogicalPoint kSix[] = {{0, 0}, {1, 1}, {2, 0}, {3, 1}, {4, 0}, {5, 1}};
constexpr std::uint32_t kTag = 0x80000800;
constexpr std::uint32_t kInnerTag = 0x80001000;
constexpr std::uint32_t kIndex = 0x20000001;
constexpr std::uint32_t kColor = 0x20000002;
constexpr std::uint32_t kEnd = 0x10000002;

struct Polytriangle : testing::Test {
  Polytriangle() { rendition.set_edge_mode(LM_EDGE_MODE_OUTLINE); }

  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  LM_Rendition& rendition = list.m_rendition;
  DLPolytriangle strip{{0x10}, 6, kSix};
};

const std::string kFill =
    "triangle_strip_clipped color=00000010 edge_mode=64 (0,0) (1,1) (2,0) (3,1) (4,0) (5,1)";
const std::string kOutline =
    "polyline_clipped color=00000010 edge_mode=64 (0,0) (1,1) (3,1) (5,1) (4,0) (2,0) (0,0)";

TEST_F(Polytriangle, IsFilledThenOutlinedInBothDraws) {
  EXPECT_EQ(clipped(recorded, strip), (Lines{kFill, kOutline}));
  EXPECT_EQ(unclipped(recorded, strip), (Lines{kFill, kOutline}));
}

TEST_F(Polytriangle, IsClippedEvenWhereItLiesInsideTheClipRectangle) {
  rendition.set_edge_mode(0);
  rendition.set_clip_rectangle({-100, 100, -100, 100});
  const Lines fill = {"triangle_strip_clipped color=00000010 (0,0) (1,1) (2,0) (3,1) (4,0) (5,1)"};
  EXPECT_EQ(unclipped(recorded, strip), fill);
  DLPolytriangleWithNoBorder no_border({0x10}, 6, kSix);
  EXPECT_EQ(unclipped(recorded, no_border),
            Lines{"triangle_strip_unclipped color=00000010 (0,0) (1,1) (2,0) (3,1) (4,0) (5,1)"});
}

TEST_F(Polytriangle, IsOutlinedInEdgeMode64Alone) {
  for (const std::uint32_t mode : {0U, 1U, 32U, 63U, 65U, 128U, 192U, 0x80000040U, 0xFFFFFFFFU}) {
    rendition.set_edge_mode(mode);
    EXPECT_EQ(clipped(recorded, strip).size(), 1U) << mode;
    EXPECT_EQ(unclipped(recorded, strip).size(), 1U) << mode;
  }
  rendition.set_edge_mode(64);
  EXPECT_EQ(clipped(recorded, strip).size(), 2U);
}

TEST_F(Polytriangle, WithNoBorderIsNeverOutlined) {
  DLPolytriangleWithNoBorder no_border({0x10}, 6, kSix);
  EXPECT_EQ(clipped(recorded, no_border), Lines{kFill});
  EXPECT_EQ(unclipped(recorded, no_border).size(), 1U);
}

TEST_F(Polytriangle, OutlineIsOneClosedLoopAlongTheBoundary) {
  for (int count = 3; count <= 40; ++count) {
    const auto numbered = strips::make<DLPolytriangle>(strips::numbered_points(count));
    recorded.recorder->clear();
    numbered->draw_clipped(list);
    ASSERT_EQ(recorded.recorder->calls().size(), 2U);
    std::vector<std::int32_t> walk;
    for (const LM_DCI_Point& p : recorded.recorder->calls()[1].points) {
      EXPECT_EQ(p.y, p.x % 2);
      EXPECT_EQ(p.z, 0);
      walk.push_back(p.x);
    }
    EXPECT_TRUE(strips::is_outline_of_strip(walk, count)) << count;
    EXPECT_EQ(walk[1], 1) << "it starts along the first edge";
  }
}

TEST_F(Polytriangle, OutlineIsMadeOfTransformedPoints) {
  answers::turn_by_a_quarter(list);
  EXPECT_EQ(clipped(recorded, strip).at(1),
            "polyline_clipped color=00000010 edge_mode=64 (100,200) (99,201) (99,203) (99,205) "
            "(100,204) (100,202) (100,200)");
}

TEST_F(Polytriangle, OfFewerThanThreePointsHasNoOutline) {
  DLPolytriangle two({0x10}, 2, kSix);
  EXPECT_EQ(clipped(recorded, two),
            Lines{"triangle_strip_clipped color=00000010 edge_mode=64 (0,0) (1,1)"});
  DLPolytriangle one({0x10}, 1, kSix);
  EXPECT_EQ(clipped(recorded, one),
            Lines{"triangle_strip_clipped color=00000010 edge_mode=64 (0,0)"});
}

TEST_F(Polytriangle, OutlineIsOneUnitWideAndTheWeightIsGivenBack) {
  for (const std::int32_t weight : {2, 7, 0, -3, INT32_MAX}) {
    rendition.set_line_weight(weight);
    strip.draw_clipped(list);
    ASSERT_EQ(recorded.recorder->calls().size(), 2U);
    EXPECT_EQ(recorded.recorder->calls()[0].line_style.weight, weight);
    EXPECT_EQ(recorded.recorder->calls()[1].line_style.weight, 1);
    EXPECT_EQ(rendition.line_style().weight, weight);
    recorded.recorder->clear();
  }
}

TEST_F(Polytriangle, OutlineKeepsThePatternAndTheEnds) {
  rendition.set_line_weight(4);
  rendition.set_line_pattern(LM_PATTERN_DASH);
  rendition.set_end_styles(LM_END_ROUND, LM_END_SQUARE);
  const std::string expected =
      "polyline_clipped color=00000010 pattern=1 ends=1,2 edge_mode=64 (0,0) (1,1) (3,1) (5,1) "
      "(4,0) (2,0) (0,0)";
  EXPECT_EQ(clipped(recorded, strip).at(1), expected);
}

TEST_F(Polytriangle, EachChangeOfTheWeightHasAFreshSerial) {
  rendition.set_line_weight(5);
  strip.rendition(list);
  LM_Rendition held = rendition;  // shares its state until the strip changes it
  const std::uint64_t before = rendition.change_serial();
  const std::uint64_t style_before = rendition.line_style().change_serial;
  static std::uint64_t serial_at_outline = 0;
  list.m_pRenderer->actions.polyline_clipped.function = [](void*, LM_Rendition* drawn, std::int32_t,
                                                           const LM_DCI_Point*) {
    serial_at_outline = drawn->change_serial();
  };
  strip.draw_clipped(list);
  EXPECT_GT(serial_at_outline, before);
  EXPECT_GT(serial_at_outline, style_before);
  EXPECT_GT(rendition.change_serial(), serial_at_outline);
  EXPECT_GT(rendition.line_style().change_serial, style_before);
  EXPECT_EQ(held.change_serial(), before);
  EXPECT_EQ(held.line_style().weight, 5);
}

TEST_F(Polytriangle, OutlineOfWeightOneLeavesTheRenditionUnchanged) {
  strip.rendition(list);
  const std::uint64_t before = rendition.change_serial();
  EXPECT_EQ(clipped(recorded, strip), (Lines{kFill, kOutline}));
  EXPECT_EQ(rendition.change_serial(), before);
}

TEST_F(Polytriangle, TakesEdgeModeAndWeightFromItsOwnRenditionWhenPalettized) {
  LM_Rendition own;
  own.set_color({0x20}, true);
  own.set_line_weight(3);
  DL::PalettizedDrawable<DLPolytriangle> palettized(&own, 3, kSix);
  EXPECT_EQ(clipped(recorded, palettized),
            Lines{"triangle_strip_clipped color=00000020 weight=3 (0,0) (1,1) (2,0)"});
  own.set_edge_mode(LM_EDGE_MODE_OUTLINE);
  rendition.set_edge_mode(0);
  rendition.set_line_weight(9);
  EXPECT_EQ(clipped(recorded, palettized),
            (Lines{"triangle_strip_clipped color=00000020 weight=3 edge_mode=64 (0,0) (1,1) (2,0)",
                   "polyline_clipped color=00000020 edge_mode=64 (0,0) (1,1) (2,0) (0,0)"}));
  EXPECT_EQ(own.line_style().weight, 3);
  EXPECT_EQ(rendition.line_style().weight, 9);
}

TEST_F(Polytriangle, OutlineTakesASecondBufferFromPoint257On) {
  DL::DisplayList outlined;
  outlined.m_rendition.set_edge_mode(LM_EDGE_MODE_OUTLINE);
  const auto sizes_for = [&](int count) {
    const auto many = strips::make<DLPolytriangle>(strips::numbered_points(count));
    many->rendition(outlined);  // the working rendition has the colour now
    AllocationCounter counter;
    many->draw_clipped(outlined);
    return counter.sizes();
  };
  EXPECT_EQ(sizes_for(256), std::vector<std::size_t>{});
  EXPECT_EQ(sizes_for(257),
            (std::vector<std::size_t>{257 * sizeof(LM_DCI_Point), 258 * sizeof(LM_DCI_Point)}));
}

TEST_F(Polytriangle, OutlineOfManyPointsGoesAllTheWayRound) {
  for (const int count : {255, 256, 257, 258, 1000}) {
    const auto many = strips::make<DLPolytriangle>(strips::numbered_points(count));
    recorded.recorder->clear();
    many->draw_clipped(list);
    std::vector<std::int32_t> walk;
    for (const LM_DCI_Point& p : recorded.recorder->calls().at(1).points) walk.push_back(p.x);
    EXPECT_TRUE(strips::is_outline_of_strip(walk, count)) << count;
  }
}

TEST_F(Polytriangle, RecordStartsWithTwoTags) {
  Palette palette(list);
  DLPolytriangle three({0xABCDEF}, 3, strips::kPoints);
  EXPECT_EQ(answers::record_of(three, list),
            (Words{kTag, kInnerTag, 3, 1, 2, 3, 4, 5, 6, kColor, 0xABCDEF, kEnd}));
}

TEST_F(Polytriangle, RecordOfAPalettizedOneHoldsTheIndexAndIsReadBack) {
  Palette palette(list);
  DL::PalettizedDrawable<DLPolytriangle> three(palette.at(6), 3, strips::kPoints);
  const Words words = {kTag, kInnerTag, 3, 1, 2, 3, 4, 5, 6, kIndex, 6, kEnd};
  EXPECT_EQ(answers::record_of(three, list), words);
  MemoryStream stream(words);
  const DrawableChain chain(read_drawables(stream, list));
  ASSERT_NE(chain.first(), nullptr);
  EXPECT_TRUE(stream.at_end());
  EXPECT_EQ(chain.first()->type(), DLPolytriangle::my_type());
  EXPECT_TRUE(chain.first()->is_palettized());
  EXPECT_EQ(chain.first()->m_colorData.m_pRendition, palette.at(6));
  EXPECT_EQ(answers::record_of(*chain.first(), list), words);
  EXPECT_TRUE(Palette::unsupported.empty());
}

TEST_F(Polytriangle, InnerTagOfARecordIsNotChecked) {
  Palette palette(list);
  for (const std::uint32_t inner : {0U, kTag, 0xFFFFFFFFU, kEnd}) {
    MemoryStream stream(
        Words{kTag, inner, 1, 8, 9, kColor, 0x10, 0x80000010, 1, 2, kColor, 0x10, kEnd});
    const DrawableChain chain(read_drawables(stream, list));
    ASSERT_EQ(chain.drawables().size(), 2U);
    EXPECT_TRUE(stream.at_end());
    const auto* read = static_cast<DLPolytriangle*>(chain.first());
    EXPECT_EQ(read->type(), DLPolytriangle::my_type());
    ASSERT_EQ(read->count, 1);
    EXPECT_TRUE((read->points[0] == LogicalPoint{8, 9}));
  }
}

TEST_F(Polytriangle, WithNoBorderHasARecordOfOneTag) {
  DLPolytriangleWithNoBorder three({7}, 3, strips::kPoints);
  EXPECT_EQ(answers::record_of(three, list),
            (Words{kInnerTag, 3, 1, 2, 3, 4, 5, 6, kColor, 7, kEnd}));
}

TEST_F(Polytriangle, WithNoBorderIsReadThroughTheStandardFactoryAndHasNoPalettizedClass) {
  Palette palette(list);
  EXPECT_EQ(list.create_drawable(kInnerTag), nullptr);
  list.m_pfnCreateDrawable = &DL::standard_factory;
  const Words words = {kInnerTag, 3, 1, 2, 3, 4, 5, 6, kIndex, 7, kEnd};
  MemoryStream stream(words);
  const DrawableChain chain(read_drawables(stream, list));
  ASSERT_NE(chain.first(), nullptr);
  EXPECT_TRUE(stream.at_end());
  EXPECT_EQ(chain.first()->type(), DLPolytriangleWithNoBorder::my_type());
  EXPECT_FALSE(chain.first()->is_palettized());
  EXPECT_EQ(Palette::unsupported, std::vector<DL::Drawable*>{chain.first()});
  const auto written = strips::make<DLPolytriangleWithNoBorder>(3, strips::kPoints);
  EXPECT_TRUE(answers::finds(*written, *chain.first()));
}

TEST(StandardFactory, KnowsTheStripWithoutBorderAlone) {
  const std::unique_ptr<DL::Drawable> made(
      DL::standard_factory(nullptr, static_cast<int>(kInnerTag)));
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(made->type(), DLPolytriangleWithNoBorder::my_type());
  EXPECT_EQ(made->m_pNext, nullptr);
  EXPECT_EQ(made->drawable_info(), nullptr);
  for (const std::uint32_t tag : {0U, kTag, 0x80001001U, 0x40001000U, kEnd}) {
    EXPECT_EQ(DL::standard_factory(nullptr, static_cast<int>(tag)), nullptr);
  }
}

TEST_F(Polytriangle, DumpLinesTellLevelAndCount) {
  answers::expect_dump(strip, 3, "            DLPolytriangle: level  3, points = 6", 6 * 8 + 48);
  LM_Rendition own;
  const DL::PalettizedDrawable<DLPolytriangle> palettized(&own, 3, kSix);
  answers::expect_dump(palettized, 0, "DLPolytriangle: level  0, points = 3", 3 * 8 + 48);
  const DLPolytriangleWithNoBorder no_border({}, 5, kSix);
  answers::expect_dump(no_border, 1, "    DLPolytriangleWithNoBorder: level  1, points = 5",
                       5 * 8 + 48);
}

}  // namespace
