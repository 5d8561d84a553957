// Blocks and inserts: what is drawn where, and what it inherits.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "lumen/picture.h"
#include "lumen/raster_device.h"
#include "tests/importers/dxf_drawing.h"

namespace {

using dxf_text::block;
using dxf_text::entity;
using dxf_text::insert;
using dxf_text::layer;
using dxf_text::line;
using dxf_text::on_layer;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double tolerance = 1e-5;
const std::string frame = line(-100, -100, 100, 100);

void expect_line(const DxfDrawing& read, std::size_t call, double x1, double y1, double x2,
                 double y2) {
  ASSERT_LT(call, read.calls().size());
  const std::vector<LM_DCI_Point>& points = read.calls()[call].points;
  ASSERT_EQ(points.size(), 2U);
  EXPECT_NEAR(read.x(points[0]), x1, tolerance);
  EXPECT_NEAR(read.y(points[0]), y1, tolerance);
  EXPECT_NEAR(read.x(points[1]), x2, tolerance);
  EXPECT_NEAR(read.y(points[1]), y2, tolerance);
}

/// How many drawables of the list itself are lists.
std::size_t nested_lists(const DxfDrawing& read) {
  std::size_t count = 0;
  std::vector<const DL::Group*> groups{read.drawing.list->m_pRootGroup};
  while (!groups.empty()) {
    const DL::Group* group = groups.back();
    groups.pop_back();
    if (!group->contains_drawables()) {
      for (const DL::Group* g = group->m_pFirst.group; g != nullptr; g = g->m_pNext) {
        groups.push_back(g);
      }
      continue;
    }
    for (const DL::Drawable* d = group->m_pFirst.drawable; d != nullptr; d = d->m_pNext) {
      if (d->type() == DL::DrawableDisplayList::my_type()) ++count;
    }
  }
  return count;
}

TEST(DxfBlocks, InsertsAlongTheAxesAreListsOfTheirOwn) {
  const DxfDrawing read({frame + insert("B", 10, 20, 2, 3), block("B", line(1, 1, 5, 2), 1, 1)});
  EXPECT_EQ(nested_lists(read), 1U);
  expect_line(read, 1, 10, 20, 18, 23);
}

TEST(DxfBlocks, MirroredAndTurnedOverInsertsAreListsToo) {
  const DxfDrawing read({frame + insert("B", 10, 20, -2, 3) + insert("B", 0, 0, 1, 1, 180),
                         block("B", line(0, 0, 5, 2))});
  EXPECT_EQ(nested_lists(read), 2U);
  expect_line(read, 1, 10, 20, 0, 26);
  expect_line(read, 2, 0, 0, -5, -2);
}

TEST(DxfBlocks, EveryInsertOwnsItsList) {
  const DxfDrawing read(
      {frame + insert("B", 0, 0) + insert("B", 9, 0), block("B", line(0, 0, 5, 2))});
  EXPECT_EQ(nested_lists(read), 2U);
  expect_line(read, 1, 0, 0, 5, 2);
  expect_line(read, 2, 9, 0, 14, 2);
}

TEST(DxfBlocks, TurnedInsertsAreCopies) {
  const DxfDrawing read({frame + insert("B", 10, 20, 2, 2, 90), block("B", line(0, 0, 5, 1))});
  EXPECT_EQ(nested_lists(read), 0U);
  expect_line(read, 1, 10, 20, 8, 30);
}

TEST(DxfBlocks, CirclesInUnequallyScaledCopiesAreEllipses) {
  const DxfDrawing read({frame + insert("B", 0, 0, 3, 1, 30),
                         block("B", entity("CIRCLE", {{10, 0}, {20, 0}, {40, 10}}))});
  ASSERT_EQ(read.calls().size(), 2U);
  EXPECT_NEAR(read.length(read.calls()[1].points[1].x), 30, tolerance);
  EXPECT_NEAR(read.length(read.calls()[1].points[1].y), 10, tolerance);
  EXPECT_NEAR(read.calls()[1].angles[2], std::numbers::pi / 6, tolerance);
}

TEST(DxfBlocks, BlocksInBlocksAreComposed) {
  const std::string blocks = block("INNER", line(0, 0, 1, 1)) +
                             block("OUTER", insert("INNER", 10, 0, 2, 2) + line(0, 0, 0, 1));
  const DxfDrawing read({frame + insert("OUTER", 5, 5, 3, -1), blocks});
  EXPECT_EQ(nested_lists(read), 1U);
  expect_line(read, 1, 35, 5, 41, 3);
  expect_line(read, 2, 5, 5, 5, 4);
}

TEST(DxfBlocks, ArraysAreRowsAndColumns) {
  const std::string array =
      entity("INSERT", {{2, "B"}, {10, 1}, {20, 2}, {70, 3}, {71, 2}, {44, 10.0}, {45, 20.0}});
  const DxfDrawing read({frame + array, block("B", line(0, 0, 1, 0))});
  ASSERT_EQ(read.calls().size(), 7U);
  expect_line(read, 1, 1, 2, 2, 2);
  expect_line(read, 3, 21, 2, 22, 2);
  expect_line(read, 6, 21, 22, 22, 22);
}

/// Draws into a picture of 120 by 120 pixels.
lumen::Picture picture_of(const DxfDrawing& read) {
  lumen::Picture picture(120, 120);
  DL::DisplayList& list = *read.drawing.list;
  list.m_pRenderer = LM_Create<lumen::RasterDevice>(picture);
  list.m_rendition.set_clip_rectangle({0, 119, 0, 119});
  const std::int32_t half = 1 << 30;
  list.m_logicalBounds = {-half, -half, half, half};
  list.set_screen_bounds({0, 119, 119, 0});
  list.recompute_transform();
  list.m_pRootGroup->draw_unclipped(list);
  return picture;
}

TEST(DxfBlocks, ListsAreDrawnLikeCopiesByHand) {
  const auto shapes = [](double x, double y, double scale) {
    return line(x, y, x + 20 * scale, y + 10 * scale) +
           entity("CIRCLE", {{10, x + 10 * scale}, {20, y + 10 * scale}, {40, 8 * scale}});
  };
  const std::string box = entity("LWPOLYLINE", {{90, 4},
                                                {70, 1},
                                                {10, -100},
                                                {20, -100},
                                                {10, 100},
                                                {20, -100},
                                                {10, 100},
                                                {20, 100},
                                                {10, -100},
                                                {20, 100}});
  const DxfDrawing nested({box + insert("B", -50, -60, 3, 3), block("B", shapes(0, 0, 1))});
  const DxfDrawing by_hand({box + shapes(-50, -60, 3)});
  EXPECT_EQ(nested_lists(nested), 1U);
  const lumen::Picture a = picture_of(nested);
  const lumen::Picture b = picture_of(by_hand);
  int different = 0;
  for (std::int32_t y = 0; y < 120; ++y) {
    for (std::int32_t x = 0; x < 120; ++x) different += a.pixel(x, y) == b.pixel(x, y) ? 0 : 1;
  }
  // Where a rounding falls to the other side of a pixel.
  EXPECT_LE(different, 12);
}

TEST(DxfPalette, ColorsComeFromTheEntityTheLayerOrTheInsert) {
  const std::string tables = layer("0", 7) + layer("RED", 1) + layer("GREEN", 3);
  const std::string content = on_layer("0", "LINE", {{10, 0}, {20, 0}, {11, 1}, {21, 0}}) +
                              on_layer("GREEN", "LINE", {{10, 0}, {20, 0}, {11, 1}, {21, 0}}) +
                              on_layer("GREEN", "LINE", {{62, 0}, {10, 0}, {11, 1}}) +
                              on_layer("GREEN", "LINE", {{62, 5}, {10, 0}, {11, 1}});
  const std::string insertion =
      dxf_text::groups({{0, "INSERT"}, {8, "RED"}, {62, 6}, {2, "B"}, {10, 0}, {20, 0}});
  const DxfDrawing read({on_layer("RED", "LINE", {{10, 0}, {11, 9}, {420, 0x123456}}) + insertion,
                         block("B", content), tables});
  std::vector<std::uint32_t> colors;
  for (const lumen::RecordedCall& call : read.calls()) colors.push_back(call.color.word);
  EXPECT_THAT(colors, ElementsAre(0x123456U, 0xFF0000U, 0x00FF00U, 0xFF00FFU, 0x0000FFU));
  EXPECT_THAT(read.drawing.layers, ElementsAre("RED", "GREEN"));
}

TEST(DxfPalette, IndexColorsAreTheStandardOnes) {
  struct Known {
    int index;
    std::uint32_t rgb;
  };
  constexpr Known known[] = {{1, 0xFF0000},   {2, 0xFFFF00},   {4, 0x00FFFF},   {7, 0x000000},
                             {8, 0x808080},   {10, 0xFF0000},  {11, 0xFF7F7F},  {12, 0xA50000},
                             {20, 0xFF3F00},  {21, 0xFF9F7F},  {30, 0xFF7F00},  {50, 0xFFFF00},
                             {90, 0x00FF00},  {130, 0x00FFFF}, {170, 0x0000FF}, {210, 0xFF00FF},
                             {174, 0x00007F}, {249, 0x261317}, {250, 0x333333}, {255, 0xFFFFFF}};
  std::string entities;
  for (const Known& color : known) {
    entities += entity("LINE", {{62, color.index}, {10, 0}, {11, 1}});
  }
  const DxfDrawing read({entities});
  ASSERT_EQ(read.calls().size(), std::size(known));
  for (std::size_t i = 0; i < std::size(known); ++i) {
    EXPECT_EQ(read.calls()[i].color.word, known[i].rgb) << known[i].index;
  }
}

TEST(DxfPalette, EqualPensShareOneRendition) {
  const DxfDrawing read({line(0, 0, 1, 1) + line(1, 0, 2, 1) + entity("LINE", {{62, 1}, {11, 3}}) +
                         entity("CIRCLE", {{62, 1}, {40, 2}})});
  EXPECT_EQ(read.drawing.renditions.size(), 2U);
}

TEST(DxfPalette, LineTypesBecomeTheNearestPatterns) {
  const auto type = [](const char* name, std::initializer_list<double> dashes) {
    std::string text = dxf_text::groups({{0, "LTYPE"},
                                         {2, name},
                                         {70, 0},
                                         {3, ""},
                                         {72, 65},
                                         {73, static_cast<int>(dashes.size())},
                                         {40, 1.0}});
    for (const double dash : dashes) text += dxf_text::groups({{49, dash}});
    return text;
  };
  const std::string tables = type("A", {5, -2}) + type("B", {0, -2}) + type("C", {5, -2, 0, -2}) +
                             type("D", {5, -1, 0, -1, 0, -1}) + type("E", {9, -2, 2, -2}) +
                             layer("L", 1, "B");
  std::string entities;
  for (const char* name : {"A", "B", "C", "D", "E", "HIDDEN2", "CONTINUOUS"}) {
    entities += entity("LINE", {{6, name}, {11, 1}});
  }
  const DxfDrawing read({entities + on_layer("L", "LINE", {{11, 1}}), "", tables});
  std::vector<int> patterns;
  for (const lumen::RecordedCall& call : read.calls()) patterns.push_back(call.line_style.pattern);
  EXPECT_THAT(patterns, ElementsAre(1, 2, 3, 4, 3, 1, 0, 2));
}

TEST(DxfLayers, HiddenOnesAreLeftOut) {
  const std::string tables = layer("FROZEN", 1, "CONTINUOUS", 1) + layer("OFF", -1);
  const DxfDrawing read({line(0, 0, 1, 1) + on_layer("FROZEN", "LINE", {{11, 1}}) +
                             on_layer("OFF", "LINE", {{11, 1}}) +
                             entity("LINE", {{60, 1}, {11, 5}}),
                         "", tables});
  EXPECT_EQ(read.calls().size(), 1U);
  EXPECT_EQ(read.drawing.remarks, "");
}

TEST(DxfLayers, ADrawingWithNothingButHiddenOnesTellsThat) {
  const DxfDrawing read({on_layer("OFF", "LINE", {{11, 1}}), "", layer("OFF", -1)});
  EXPECT_THAT(
      read.recorded.problem,
      testing::HasSubstr("nothing to draw (left out: 1 entity hidden, by itself or by its layer"));
}

TEST(DxfLayers, AreChosenByNameInTheOrderOfTheFile) {
  importers::ReadOptions options;
  options.layers = {"b", "A"};
  const DxfDrawing read({on_layer("A", "LINE", {{11, 1}}) + on_layer("C", "LINE", {{11, 9}}) +
                         on_layer("B", "LINE", {{11, 2}})},
                        options);
  ASSERT_EQ(read.recorded.problem, "");
  EXPECT_EQ(read.calls().size(), 2U);
  EXPECT_THAT(read.drawing.layers, ElementsAre("A", "B"));
  options.layers = {"X"};
  const DxfDrawing missing({on_layer("A", "LINE", {{11, 1}})}, options);
  EXPECT_THAT(missing.recorded.problem, HasSubstr("no layer 'X'; choose from '0', 'A'"));
}

TEST(DxfLayers, NamesAreDecoded) {
  const std::string header =
      dxf_text::groups({{9, "$ACADVER"}, {1, "AC1015"}, {9, "$DWGCODEPAGE"}, {3, "ANSI_1252"}});
  const DxfDrawing old({on_layer("W\xE4nde", "LINE", {{11, 1}}), "", "", header});
  EXPECT_THAT(old.drawing.layers, ElementsAre("W\xC3\xA4nde"));
  const std::string modern = dxf_text::groups({{9, "$ACADVER"}, {1, "AC1024"}});
  const DxfDrawing utf8({on_layer("W\xC3\xA4nde", "LINE", {{11, 1}}), "", "", modern});
  EXPECT_THAT(utf8.drawing.layers, ElementsAre("W\xC3\xA4nde"));
}

TEST(DxfLayers, PaperSpaceIsDrawnOnlyByItself) {
  const std::string paper = entity("LINE", {{67, 1}, {11, 7}});
  const DxfDrawing both({line(0, 0, 1, 1) + paper});
  EXPECT_EQ(both.calls().size(), 1U);
  EXPECT_EQ(both.drawing.remarks, "left out: 1 entity in paper space");
  const DxfDrawing alone({paper});
  EXPECT_EQ(alone.calls().size(), 1U);
  EXPECT_EQ(alone.drawing.remarks, "");
  EXPECT_EQ(alone.drawing.extent.max_x, 7);
}

TEST(DxfLayers, EscapesInNamesAreDecoded) {
  const DxfDrawing read({on_layer("W\\U+00E4nde", "LINE", {{11, 1}})});
  EXPECT_THAT(read.drawing.layers, ElementsAre("W\xC3\xA4nde"));
  const DxfDrawing lone({on_layer("a\\U+D800b", "LINE", {{11, 1}})});
  EXPECT_THAT(lone.drawing.layers, ElementsAre("a\xEF\xBF\xBD"
                                               "b"));
}

TEST(DxfLayers, OnlySomeOfManyAreOfferedInOneLine) {
  importers::ReadOptions options;
  options.layers = {"X"};
  std::string lines = on_layer("a\x1B[31mb", "LINE", {{11, 1}});
  for (int i = 0; i < 100; ++i) {
    lines += on_layer(("L" + std::to_string(i)).c_str(), "LINE", {{11, 1}});
  }
  const std::string problem = DxfDrawing({lines}, options).recorded.problem;
  EXPECT_THAT(problem, HasSubstr("choose from '0', 'a?[31mb', 'L0', "));
  EXPECT_THAT(problem, HasSubstr(", 'L17' and 82 more"));
}

}  // namespace
