// DXF files that are damaged, senseless or made to exhaust whoever reads them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "tests/importers/dxf_drawing.h"

namespace {

using dxf_text::block;
using dxf_text::entity;
using dxf_text::groups;
using dxf_text::insert;
using dxf_text::layer;
using dxf_text::line;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

const std::string frame = line(-100, -100, 100, 100);

std::string sample_texts() {
  return entity("TEXT", {{10, 1}, {20, 1}, {40, 2}, {1, "a%%c"}, {72, 1}, {11, 5}, {21, 5}}) +
         entity("MTEXT",
                {{10, 1}, {20, 1}, {40, 1}, {41, 9}, {71, 5}, {1, "{\\fArial|b0;b} \\H2x;c\\Pd"}});
}

std::string sample_header() {
  return groups({{9, "$ACADVER"}, {1, "AC1015"}, {9, "$DWGCODEPAGE"}, {3, "ANSI_1252"}});
}

/// One of everything.
std::string sample() {
  const std::string polyline = entity("POLYLINE", {{66, 1}, {70, 1}}) +
                               entity("VERTEX", {{10, 1}, {20, 1}, {42, 0.5}}) +
                               entity("VERTEX", {{10, 4}, {20, 2}}) + entity("SEQEND", {});
  const std::string hatch = entity(
      "HATCH", {{10, 0}, {20, 0}, {2, "SOLID"}, {70, 1}, {91, 1},   {92, 1}, {93, 2}, {72, 2},
                {10, 0}, {20, 0}, {40, 3},      {50, 0}, {51, 180}, {73, 1}, {72, 1}, {10, -3},
                {20, 0}, {11, 3}, {21, 0},      {97, 0}, {75, 1},   {98, 0}});
  const std::string spline = entity("SPLINE", {{70, 8},
                                               {71, 2},
                                               {72, 6},
                                               {73, 3},
                                               {74, 0},
                                               {40, 0},
                                               {40, 0},
                                               {40, 0},
                                               {40, 1},
                                               {40, 1},
                                               {40, 1},
                                               {10, 0},
                                               {20, 0},
                                               {10, 1},
                                               {20, 1},
                                               {10, 2},
                                               {20, 0}});
  const std::string others =
      entity("LWPOLYLINE", {{90, 2}, {70, 0}, {10, 0}, {20, 0}, {42, 1}, {10, 5}, {20, 5}}) +
      entity("CIRCLE", {{10, 1}, {20, 1}, {40, 3}}) +
      entity("ELLIPSE", {{10, 1}, {20, 1}, {11, 3}, {21, 0}, {40, 0.5}, {41, 0}, {42, 3}}) +
      entity("LEADER", {{71, 1}, {76, 2}, {10, 0}, {20, 0}, {10, 3}, {20, 3}}) +
      entity("DIMENSION", {{10, 9}, {20, 5}, {11, 5}, {21, 6}, {70, 1}, {13, 0}, {23, 0}, {14, 9}});
  const std::string blocks = block("B", line(0, 0, 1, 1) + insert("C", 1, 1, 2, 2, 30)) +
                             block("C", entity("CIRCLE", {{10, 1}, {40, 1}}));
  const std::string array =
      entity("INSERT", {{2, "B"}, {10, 1}, {70, 2}, {71, 2}, {44, 3}, {45, 3}});
  return dxf_text::file(
      {frame + polyline + hatch + spline + sample_texts() + others + array, blocks,
       layer("L", 3) + groups({{0, "LTYPE"}, {2, "D"}, {73, 2}, {49, 1}, {49, -1}}),
       sample_header()});
}

/// Reads and draws. What comes of it is a drawing or a sentence, not both.
void read_whatever_it_is(const std::string& text) {
  const DxfDrawing read(as_is, text);
  if (read.recorded.problem.empty()) {
    EXPECT_NE(read.drawing.list, nullptr);
  } else {
    EXPECT_THAT(read.recorded.problem, HasSubstr("a.dxf"));
  }
}

TEST(DxfDamage, TheSampleIsWhole) {
  const DxfDrawing read(as_is, sample());
  EXPECT_EQ(read.recorded.problem, "");
  EXPECT_EQ(read.drawing.remarks, "");
  EXPECT_GT(read.calls().size(), 20U);
}

TEST(DxfDamage, FilesCutOffAtAnyLine) {
  const std::string whole = sample();
  for (std::size_t end = whole.find('\n'); end != std::string::npos;
       end = whole.find('\n', end + 1)) {
    SCOPED_TRACE(end);
    read_whatever_it_is(whole.substr(0, end + 1));
  }
}

TEST(DxfDamage, FilesCutOffAtAnyByte) {
  const std::string whole = sample();
  for (std::size_t size = 1; size < whole.size(); ++size)
    read_whatever_it_is(whole.substr(0, size));
}

TEST(DxfDamage, WhatEndsTooEarlySaysSo) {
  const std::string whole = sample();
  const DxfDrawing early(as_is, whole.substr(0, whole.size() - groups({{0, "EOF"}}).size()));
  EXPECT_EQ(early.recorded.problem, "");
  EXPECT_EQ(early.drawing.remarks,
            "left out: what follows where the file ends without an end mark");
  const DxfDrawing unknown(as_is, dxf_text::section("ENTITIES", frame + entity("REGION", {})));
  EXPECT_EQ(unknown.drawing.remarks,
            "left out: 1 of kind REGION, what follows where the file ends without an end mark");
  const DxfDrawing torn(as_is, whole.substr(0, whole.size() - 5));
  EXPECT_THAT(torn.recorded.problem, AllOf(StartsWith("cannot read"), HasSubstr("complete")));
}

TEST(DxfDamage, RandomMutations) {
  const std::string whole = sample();
  const auto start = std::chrono::steady_clock::now();
  for (unsigned seed = 0; seed < 1000; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::string text = whole;
    for (unsigned i = 0; i <= seed % 8; ++i) {
      const std::size_t at = random() % text.size();
      switch (random() % 4) {
        case 0:
          text[at] = static_cast<char>(random() % 256);
          break;
        case 1:
          text.erase(at, 1 + random() % 30);
          break;
        case 2:
          text.insert(at, text.substr(random() % text.size(), random() % 60));
          break;
        // A digit more makes other codes, counts and coordinates.
        default:
          text.insert(at, 1, static_cast<char>('0' + random() % 10));
          break;
      }
      if (text.empty()) text = " ";
    }
    read_whatever_it_is(text);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::minutes(2));
}

TEST(DxfDamage, NumbersOutOfReachAreLeftOutAndCounted) {
  for (const char* number : {"nan", "inf", "-1e999", "1e300", "2e15", "none", ""}) {
    SCOPED_TRACE(number);
    const DxfDrawing read({frame + dxf_text::on_layer("WALLS", "LINE", {{10, number}, {11, 5}})});
    EXPECT_EQ(read.recorded.problem, "");
    EXPECT_EQ(read.calls().size(), 1U);
    EXPECT_EQ(read.drawing.unusable_points, 1U);
    EXPECT_EQ(read.drawing.first_unusable, "a LINE of layer 'WALLS'");
  }
  const DxfDrawing only({entity("CIRCLE", {{10, 1}, {40, "1e300"}})});
  EXPECT_THAT(only.recorded.problem, HasSubstr("repair them"));
}

TEST(DxfDamage, CountsThatLieDoNoHarm) {
  for (const char* count : {"-1", "0", "1", "2147483647", "1073741825", "99999999999", "x"}) {
    SCOPED_TRACE(count);
    const std::string entities =
        entity("LWPOLYLINE", {{90, count}, {10, 0}, {20, 0}, {10, 5}, {20, 5}}) +
        entity("SPLINE",
               {{71, count}, {72, count}, {73, count}, {74, count}, {10, 0}, {10, 5}, {40, 1}}) +
        entity("LEADER", {{76, count}, {10, 0}, {10, 5}}) +
        entity("HATCH", {{91, count}, {92, count}, {93, count}, {72, count}, {10, 1}}) +
        entity("POLYLINE", {{70, 16}, {71, count}, {72, count}}) + entity("VERTEX", {{10, 1}}) +
        entity("SEQEND", {});
    const DxfDrawing read({frame + entities});
    EXPECT_EQ(read.recorded.problem, "");
    EXPECT_GE(read.calls().size(), 3U);
  }
}

TEST(DxfDamage, BlocksWithinThemselvesAreDrawnOnce) {
  const std::string blocks = block("A", line(0, 0, 1, 1) + insert("B", 1, 0)) +
                             block("B", line(0, 0, 1, 2) + insert("A", 1, 0)) +
                             block("C", line(0, 0, 1, 3) + insert("C", 1, 0, 1, 1, 45));
  const DxfDrawing read({insert("A", 0, 0) + insert("C", 0, 0), blocks});
  EXPECT_EQ(read.recorded.problem, "");
  EXPECT_EQ(read.calls().size(), 3U);
  EXPECT_EQ(read.drawing.remarks, "left out: 2 inserts of blocks into themselves");
  // Each of two is within the other where it is inserted itself.
  const DxfDrawing both({insert("A", 0, 0) + insert("B", 50, 0), blocks});
  EXPECT_EQ(both.calls().size(), 4U);
}

std::string nested_blocks(int depth, int inserts, double degrees) {
  std::string blocks = block("B0", line(0, 0, 1, 1));
  for (int i = 1; i <= depth; ++i) {
    std::string content;
    for (int k = 0; k < inserts; ++k) {
      content += insert(("B" + std::to_string(i - 1)).c_str(), k, 0, 1, 1, degrees);
    }
    blocks += block(("B" + std::to_string(i)).c_str(), content);
  }
  return blocks;
}

TEST(DxfDamage, BlocksMayBeNestedAHundredDeep) {
  for (const double degrees : {0.0, 10.0}) {
    const DxfDrawing read({insert("B100", 0, 0), nested_blocks(100, 1, degrees)});
    EXPECT_EQ(read.recorded.problem, "");
    EXPECT_EQ(read.calls().size(), 1U);
  }
  const DxfDrawing deeper({frame + insert("B400", 0, 0), nested_blocks(400, 1, 0)});
  EXPECT_EQ(deeper.drawing.remarks, "left out: 1 insert in more than 128 others");
}

TEST(DxfDamage, CopiesWithoutNumberEndSomewhere) {
  const auto start = std::chrono::steady_clock::now();
  for (const double degrees : {0.0, 10.0}) {
    const DxfDrawing read({insert("B90", 0, 0), nested_blocks(90, 2, degrees)});
    EXPECT_EQ(read.recorded.problem, "");
    EXPECT_THAT(read.drawing.remarks, HasSubstr("beyond the most that are drawn"));
  }
  const std::string array =
      entity("INSERT", {{2, "B0"}, {10, 0}, {70, 30000}, {71, 2000000000}, {44, 2}, {45, 2}});
  const DxfDrawing read({array, nested_blocks(0, 1, 0)});
  EXPECT_THAT(read.drawing.remarks, HasSubstr("beyond the most that are drawn"));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::minutes(2));
}

TEST(DxfDamage, InsertsOfNoSizeOrOfNothingAreCounted) {
  const DxfDrawing read({frame + insert("B", 0, 0, 0, 1) + insert("GONE", 0, 0) + insert("", 1, 1),
                         block("B", line(0, 0, 1, 1))});
  EXPECT_EQ(read.recorded.problem, "");
  EXPECT_EQ(read.drawing.remarks,
            "left out: 1 of kind INSERT, 1 insert of a block that is not there, "
            "1 entity without size or too far away");
}

TEST(DxfDamage, ScalesThatMultiplyBeyondReach) {
  std::string blocks = block("B0", line(0, 0, 1, 1));
  for (int i = 1; i < 40; ++i) {
    blocks += block(("B" + std::to_string(i)).c_str(),
                    insert(("B" + std::to_string(i - 1)).c_str(), 1, 1, 1e12, 1e-12, i % 2 * 10));
  }
  const DxfDrawing read({frame + insert("B39", 0, 0), blocks});
  EXPECT_EQ(read.recorded.problem, "");
  EXPECT_THAT(read.drawing.remarks, HasSubstr("too far away"));
}

TEST(DxfDamage, NamesMayBeEmptyOrLong) {
  const std::string long_name(5000, 'n');
  const DxfDrawing read({dxf_text::on_layer("", "LINE", {{11, 1}}) +
                             dxf_text::on_layer(long_name.c_str(), "LINE", {{11, 2}}) +
                             entity(long_name.c_str(), {}),
                         block("", line(0, 0, 1, 1)), layer("", 1) + layer(long_name.c_str(), 2)});
  EXPECT_EQ(read.recorded.problem, "");
  EXPECT_EQ(read.calls().size(), 2U);
  EXPECT_LT(read.drawing.remarks.size(), 100U);
}

TEST(DxfDamage, OtherFilesAreSaidToBeNoDxf) {
  for (const char* text : {"x", "\n", "{\"type\":\"Point\"}", "0\nEOF\n", "999\ncomment\n"}) {
    EXPECT_THAT(DxfDrawing(as_is, text).recorded.problem, StartsWith("cannot read '")) << text;
  }
  const std::string binary = std::string("AutoCAD Binary DXF\r\n\x1a") + '\0' + "rest";
  EXPECT_THAT(DxfDrawing(as_is, binary).recorded.problem,
              HasSubstr("binary DXF; save it as a text DXF"));
  EXPECT_THAT(DxfDrawing(as_is, dxf_text::file({""})).recorded.problem,
              StartsWith("cannot read '"));
}

TEST(DxfDamage, NothingToDrawIsSaid) {
  const DxfDrawing none(
      as_is,
      dxf_text::section("HEADER", groups({{9, "$ACADVER"}, {1, "AC1015"}})) + groups({{0, "EOF"}}));
  EXPECT_THAT(none.recorded.problem, HasSubstr("nothing to draw"));
  const DxfDrawing unknown({entity("REGION", {})});
  EXPECT_THAT(unknown.recorded.problem, HasSubstr("nothing to draw (left out: 1 of kind REGION)"));
}

TEST(DxfDamage, ReadingCanBeCancelled) {
  std::string lines;
  for (int i = 0; i < 20000; ++i) lines += line(0, 0, i, 1);
  importers::ReadOptions options;
  options.progress = [](const importers::Progress& progress) {
    return progress.fraction.value_or(1) > 1;
  };
  EXPECT_THAT(DxfDrawing({lines}, options).recorded.problem, HasSubstr("cancelled"));
}

TEST(DxfDamage, LineEndsAndMarksOfOtherSystems) {
  std::string dos;
  for (const char c : sample()) dos += c == '\n' ? std::string("\r\n") : std::string(1, c);
  const DxfDrawing read(as_is, "\xEF\xBB\xBF" + dos + "\r\n");
  EXPECT_EQ(read.recorded.problem, "");
  EXPECT_EQ(read.calls().size(), DxfDrawing(as_is, sample()).calls().size());
}

TEST(DxfDamage, RemarksCountInPlurals) {
  const DxfDrawing read({frame + insert("B", 0, 0, 0, 1) + insert("B", 0, 0, 1, 0) +
                             insert("GONE", 0, 0) + insert("GONE", 1, 0),
                         block("B", line(0, 0, 1, 1))});
  EXPECT_EQ(read.drawing.remarks,
            "left out: 2 inserts of blocks that are not there, "
            "2 entities without size or too far away");
}

TEST(DxfDamage, WhatFollowsTooManyCopiesIsDrawn) {
  const std::string array =
      entity("INSERT", {{2, "A"}, {10, 0}, {70, 1200}, {71, 1200}, {44, 1}, {45, 1}});
  const std::string blocks =
      block("A", line(0, 0, 10, 5)) + block("B", entity("CIRCLE", {{10, 0}, {40, 300}}));
  const DxfDrawing read({array + insert("B", -500, 0) + line(0, 0, 10, 5), blocks});
  ASSERT_EQ(read.recorded.problem, "");
  const std::vector<std::string> actions = read.recorded.actions();
  EXPECT_EQ(actions.back(), "polyline");
  EXPECT_EQ(actions[actions.size() - 2], "elliptical");
  // Every copy is drawn or counted.
  const std::size_t drawn = read.calls().size() - 2;
  EXPECT_GT(drawn, 100000U);
  EXPECT_EQ(read.drawing.remarks, "left out: " + std::to_string(1200 * 1200 - drawn) +
                                      " copies of blocks beyond the most that are drawn");
  const DxfDrawing turned({insert("B90", 0, 0) + insert("A", -500, 0, 1, 1, 10) +
                               insert("A", -500, 9, 1, 1, 10) + line(0, 0, 10, 5),
                           nested_blocks(90, 2, 10) + blocks});
  EXPECT_EQ(turned.drawing.extent.min_x, -500);
}

TEST(DxfDamage, TheEndsOfEndlessLinesAreCounted) {
  const DxfDrawing read(
      {frame + entity("TEXT", {{10, 1}, {20, 1}, {40, 2}, {1, std::string(65537, 'x')}})});
  EXPECT_EQ(read.drawing.remarks, "left out: 1 end of a line of more than 65536 bytes");
  const DxfDrawing whole(
      {frame + entity("TEXT", {{10, 1}, {20, 1}, {40, 2}, {1, std::string(65536, 'x')}})});
  EXPECT_EQ(whole.drawing.remarks, "");
}

}  // namespace
