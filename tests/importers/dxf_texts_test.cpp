// Texts of DXF files: what they say, where, and how large.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

#include "lumen/fonts.h"
#include "tests/importers/dxf_drawing.h"
#include "tests/support/tree_walk.h"

namespace {

using dxf_text::block;
using dxf_text::entity;
using dxf_text::Group;
using dxf_text::groups;
using dxf_text::insert;
using dxf_text::line;
using lumen::RecordedCall;
using testing::ElementsAre;

constexpr double tolerance = 1e-4;
constexpr double pi = std::numbers::pi;
const std::string frame = line(-100, -100, 100, 100);

struct Texts {
  explicit Texts(const std::string& entities, const std::string& blocks = "",
                 const std::string& tables = "", const std::string& header = "")
      : read({frame + entities, blocks, tables, header}) {
    EXPECT_EQ(read.recorded.problem, "");
    for (const RecordedCall& call : read.calls()) {
      if (call.action == "wide_text") calls.push_back(call);
    }
  }
  [[nodiscard]] std::vector<std::wstring> words() const {
    std::vector<std::wstring> all;
    for (const RecordedCall& call : calls) all.push_back(call.wide_text);
    return all;
  }
  [[nodiscard]] double x(std::size_t i) const { return read.x(calls[i].points[0]); }
  [[nodiscard]] double y(std::size_t i) const { return read.y(calls[i].points[0]); }

  DxfDrawing read;
  std::vector<RecordedCall> calls;
};

std::string text(const std::string& words, std::initializer_list<Group> more = {}) {
  return groups({{0, "TEXT"}, {8, "0"}, {10, 10}, {20, 20}, {40, 5}, {1, words}}) + groups(more);
}

std::string mtext(const std::string& words, std::initializer_list<Group> more = {}) {
  return groups({{0, "MTEXT"}, {8, "0"}, {10, 10}, {20, 20}, {40, 5}, {71, 1}}) + groups(more) +
         groups({{1, words}});
}

lumen::TextMeasure measure(const std::wstring& words) {
  return lumen::measure_text({}, words.c_str(), static_cast<std::int32_t>(words.size()));
}

/// The width of a text of height 5.
double width_of(const std::wstring& words) {
  const lumen::TextMeasure m = measure(words);
  return 5.0 * static_cast<double>(m.advance) / static_cast<double>(m.cap_height);
}

TEST(DxfTexts, HeightIsThatOfCapitals) {
  const Texts read(text("Hall"));
  ASSERT_EQ(read.words(), std::vector<std::wstring>{L"Hall"});
  EXPECT_NEAR(read.x(0), 10, tolerance);
  EXPECT_NEAR(read.y(0), 20, tolerance);
  // Seen with y upward at ten pixels a unit.
  DL::DisplayList& list = *read.read.drawing.list;
  const double scale = 10 / read.read.drawing.mapping.scale;
  list.m_scale = {scale, -scale};
  read.read.recorded.recorder->clear();
  list.m_pRootGroup->draw_unclipped(list);
  const LM_Text_Attributes& set = read.read.calls().back().text_attributes;
  EXPECT_NEAR(-set.size * measure(L"Hall").cap_height, 50, 1e-3);
}

TEST(DxfTexts, AlignmentsPutTheBoxAtTheirPoint) {
  struct Case {
    int horizontal;
    int vertical;
    double across;  ///< of the width
    double up;      ///< of the height of capitals
  };
  const double width = width_of(L"Width");
  for (const Case& c : {Case{1, 0, 0.5, 0}, Case{2, 0, 1, 0}, Case{0, 3, 0, 1},
                        Case{1, 2, 0.5, 0.5}, Case{2, 3, 1, 1}, Case{4, 0, 0.5, 0.5}}) {
    const Texts read(text("Width", {{72, c.horizontal}, {73, c.vertical}, {11, 50}, {21, 60}}));
    ASSERT_EQ(read.calls.size(), 1U);
    EXPECT_NEAR(read.x(0), 50 - c.across * width, tolerance) << c.horizontal << c.vertical;
    EXPECT_NEAR(read.y(0), 60 - c.up * 5, tolerance) << c.horizontal << c.vertical;
  }
}

TEST(DxfTexts, AlignedAndFittedTextsSpanTheirPoints) {
  const Texts fit(text("Width", {{72, 5}, {11, 70}, {21, 20}}));
  EXPECT_NEAR(fit.calls[0].text_attributes.width_scale, 60 / width_of(L"Width"), 1e-3);
  EXPECT_NEAR(fit.x(0), 10, tolerance);
  const Texts aligned(text("Width", {{72, 3}, {11, 10}, {21, 80}}));
  EXPECT_EQ(aligned.calls[0].text_attributes.width_scale, 1.0F);
  EXPECT_NEAR(aligned.calls[0].text_attributes.rotation, pi / 2, tolerance);
}

TEST(DxfTexts, OfAnotherWidthAreHiddenAndShownLikeOthers) {
  const Texts read(text("a", {{41, 0.5}}));
  DL::DisplayList& list = *read.read.drawing.list;
  DL::Drawable& wide = *drawables_of(list).back();
  ASSERT_TRUE(wide.isKindOf(DL::DLText::my_type()));
  const auto widths = [&](DL::Drawable& drawable) {
    std::vector<float> scales;
    read.read.recorded.recorder->clear();
    drawable.draw_clipped(list);
    for (const RecordedCall& call : read.read.calls()) {
      scales.push_back(call.text_attributes.width_scale);
    }
    return scales;
  };
  wide.hide();
  EXPECT_TRUE(wide.is_hidden() && wide.is_palettized());
  EXPECT_THAT(widths(wide), testing::IsEmpty());
  wide.unhide();
  const std::unique_ptr<DL::Drawable> copy(wide.clone());
  EXPECT_THAT(widths(wide), ElementsAre(0.5F));
  EXPECT_THAT(widths(*copy), ElementsAre(0.5F));
}

TEST(DxfTexts, RotationAndWidthFactor) {
  const Texts read(text("a", {{50, 30}, {41, 0.5}}));
  EXPECT_NEAR(read.calls[0].text_attributes.rotation, pi / 6, tolerance);
  EXPECT_EQ(read.calls[0].text_attributes.width_scale, 0.5F);
}

TEST(DxfTexts, BoundsCoverTheText) {
  const DxfDrawing read({text("Hall", {{50, 90}})});
  ASSERT_EQ(read.recorded.problem, "");
  const importers::Extent& extent = read.drawing.extent;
  EXPECT_LE(extent.min_x, 5 + tolerance);
  EXPECT_GE(extent.max_x, 10);
  EXPECT_LE(extent.min_y, 20);
  EXPECT_GE(extent.max_y, 20 + width_of(L"Hall") - tolerance);
  EXPECT_LE(extent.width(), 10);
}

TEST(DxfTexts, PercentCodesAndEscapes) {
  const Texts read(text("%%c5 %%p1%%d 50%%% %%uon%%u %%065 \\U+00C4\\U+20AC \\M+182A0"));
  EXPECT_THAT(read.words(), ElementsAre(L"\u00D8"
                                        L"5 \u00B11\u00B0 50% on A \u00C4\u20AC \u3042"));
}

TEST(DxfTexts, CodePages) {
  const auto header = [](const char* page) {
    return groups({{9, "$ACADVER"}, {1, "AC1015"}, {9, "$DWGCODEPAGE"}, {3, page}});
  };
  EXPECT_THAT(Texts(text("\xC0\xE1"), "", "", header("ANSI_1251")).words(),
              ElementsAre(L"\u0410\u0431"));
  EXPECT_THAT(Texts(text("\x83\x41"), "", "", header("ANSI_932")).words(), ElementsAre(L"\u30A2"));
  EXPECT_THAT(Texts(text("\xE4"), "", "", header("nonsense")).words(), ElementsAre(L"\u00E4"));
  // Where accents are letters of their own, the last letter awaits them.
  EXPECT_THAT(Texts(text("WORD ABC"), "", "", header("ANSI_1258")).words(),
              ElementsAre(L"WORD ABC"));
  EXPECT_THAT(Texts(text("\xF9\xEC"), "", "", header("ANSI_1255")).words(),
              ElementsAre(L"\u05E9\u05DC"));
  const std::string modern = groups({{9, "$ACADVER"}, {1, "AC1021"}});
  EXPECT_THAT(Texts(text("\xD0\x90\xFF"), "", "", modern).words(), ElementsAre(L"\u0410\uFFFD"));
}

TEST(DxfTexts, StylesGiveFontsAndFactors) {
  const std::string tables = groups({{0, "STYLE"},
                                     {2, "WIDE"},
                                     {70, 0},
                                     {40, 0},
                                     {41, 1.5},
                                     {50, 0},
                                     {71, 0},
                                     {42, 1},
                                     {3, "Arial.ttf"},
                                     {4, ""}}) +
                             groups({{0, "STYLE"},
                                     {2, "PLAIN"},
                                     {70, 0},
                                     {40, 0},
                                     {41, 1},
                                     {50, 0},
                                     {71, 0},
                                     {42, 1},
                                     {3, "txt.shx"},
                                     {4, ""}});
  lumen::set_missing_font_handler(nullptr);
  const Texts read(text("a", {{7, "WIDE"}}) + text("b", {{7, "PLAIN"}}), "", tables);
  ASSERT_EQ(read.calls.size(), 2U);
  EXPECT_EQ(read.calls[0].text_attributes.font.description().name, L"Arial");
  EXPECT_EQ(read.calls[0].text_attributes.width_scale, 1.5F);
  EXPECT_EQ(read.calls[1].text_attributes.font.data(), nullptr);
}

TEST(DxfTexts, FontFilesTellFamilyAndStyle) {
  struct Case {
    const char* file;
    const wchar_t* family;
    bool is_bold;
    bool is_italic;
  };
  lumen::set_missing_font_handler(nullptr);
  for (const Case& c : {Case{"arial.ttf", L"Arial", false, false},
                        {"C:\\Fonts\\ARIALBD.TTF", L"Arial", true, false},
                        {"timesbi.ttf", L"Times New Roman", true, true},
                        {"couri.ttf", L"Courier New", false, true},
                        {"DejaVuSerif-Bold.ttf", L"Dejavuserif", true, false},
                        {"DejaVuSans-BoldOblique.ttf", L"Dejavusans", true, true},
                        {"Serif-Regular.otf", L"Serif", false, false}}) {
    const std::string style = groups({{0, "STYLE"}, {2, "S"}, {70, 0}, {3, c.file}});
    const Texts read(text("a", {{7, "S"}}), "", style);
    ASSERT_EQ(read.calls.size(), 1U);
    const LM_Font_Description font = read.calls[0].text_attributes.font.description();
    EXPECT_EQ(font.name, c.family);
    EXPECT_EQ(font.bold != 0, c.is_bold) << c.file;
    EXPECT_EQ(font.italic != 0, c.is_italic) << c.file;
  }
}

TEST(DxfTexts, ParagraphsAreLinesUnderEachOther) {
  const Texts read(mtext("One\\PTwo\\P\\PFour"));
  ASSERT_THAT(read.words(), ElementsAre(L"One", L"Two", L"Four"));
  EXPECT_NEAR(read.y(0), 15, tolerance);
  EXPECT_NEAR(read.y(1), 15 - 25.0 / 3, tolerance);
  EXPECT_NEAR(read.y(2), 15 - 25, tolerance);
  const Texts wide(mtext("One\\PTwo", {{44, 2}}));
  EXPECT_NEAR(wide.y(1), 15 - 50.0 / 3, tolerance);
}

TEST(DxfTexts, ParagraphsAreAttachedByTheirPoint) {
  const double width = width_of(L"Two");
  const Texts read(groups({{0, "MTEXT"}, {8, "0"}, {10, 10}, {20, 20}, {40, 5}, {71, 9}}) +
                   groups({{1, "a\\PTwo"}}));
  ASSERT_EQ(read.calls.size(), 2U);
  EXPECT_NEAR(read.y(1), 20, tolerance);
  EXPECT_NEAR(read.x(1), 10 - width, tolerance);
}

TEST(DxfTexts, LongLinesWrapAtBlanks) {
  const Texts read(mtext("aaaa bbbb cccc", {{41, width_of(L"aaaa bbbb") + 0.5}}));
  ASSERT_EQ(read.calls.size(), 2U);
  EXPECT_EQ(read.words()[0].substr(0, 9), L"aaaa bbbb");
  EXPECT_EQ(read.words()[1], L"cccc");
}

TEST(DxfTexts, InlineCodes) {
  const Texts read(
      mtext("a\\~b {\\fArial|b1|i0;\\H10;c} \\S1/2; \\C1;red\\L \\Wx\\A1;\\\\ \\{d\\}"));
  std::wstring all;
  for (const std::wstring& word : read.words()) all += word;
  EXPECT_EQ(all, L"a\u00A0b c 1/2 red \\ {d}");
  ASSERT_GE(read.calls.size(), 4U);
  const LM_Font_Description font = read.calls[1].text_attributes.font.description();
  EXPECT_EQ(font.name, L"Arial");
  EXPECT_TRUE(font.bold != 0 && font.italic == 0);
  EXPECT_EQ(read.calls.back().color.word, 0xFF0000U);
}

TEST(DxfTexts, LongParagraphsComeInChunks) {
  const std::string chunk(250, 'x');
  const Texts read(groups({{0, "MTEXT"},
                           {8, "0"},
                           {10, 10},
                           {20, 20},
                           {40, 5},
                           {71, 1},
                           {3, chunk},
                           {3, chunk},
                           {1, "end"}}));
  ASSERT_EQ(read.calls.size(), 1U);
  EXPECT_EQ(read.words()[0].size(), 503U);
  const Texts whole(mtext(std::string(2000, 'y')));
  EXPECT_EQ(whole.words()[0].size(), 2000U);
}

TEST(DxfTexts, AttributesAreDrawnUnlessInvisible) {
  const auto attribute = [](const char* words, int flags) {
    return entity("ATTRIB", {{10, 1}, {20, 2}, {40, 5}, {1, words}, {2, "TAG"}, {70, flags}});
  };
  const Texts read(
      entity("INSERT", {{2, "B"}, {10, 50}, {20, 50}, {66, 1}}) + attribute("seen", 0) +
          attribute("unseen", 1) + entity("SEQEND", {}),
      block("B",
            line(0, 0, 1, 1) + entity("ATTDEF", {{10, 0}, {40, 5}, {1, "default"}, {2, "TAG"}})));
  ASSERT_THAT(read.words(), ElementsAre(L"seen"));
  EXPECT_NEAR(read.x(0), 1, tolerance);
}

/// The text of a block in an insert with these scales and this turn, and the
/// by-hand expectation of where its box starts and how it is turned.
struct Placed {
  double scale_x;
  double scale_y;
  double degrees;
  double start_x;  ///< of the width of the text
  double start_y;  ///< of the height of its capitals
  double rotation;
};

TEST(DxfTexts, MirroredTextsStayReadableInTheirBoxes) {
  const double width = width_of(L"Width");
  for (const Placed& c : {Placed{1, 1, 0, 0, 0, 0}, Placed{-1, 1, 0, -1, 0, 0},
                          Placed{1, -1, 0, 0, -1, 0}, Placed{1, 1, 180, 0, 0, pi}}) {
    SCOPED_TRACE(testing::Message() << c.scale_x << " " << c.scale_y << " " << c.degrees);
    const Texts read(
        insert("B", 30, 40, c.scale_x, c.scale_y, c.degrees),
        block("B", groups({{0, "TEXT"}, {8, "0"}, {10, 0}, {20, 0}, {40, 5}, {1, "Width"}})));
    ASSERT_EQ(read.calls.size(), 1U);
    EXPECT_NEAR(read.x(0), 30 + c.start_x * width, 1e-3);
    EXPECT_NEAR(read.y(0), 40 + c.start_y * 5, 1e-3);
    // In these coordinates, whose y runs down, sizes are negative where it runs up.
    const LM_Text_Attributes& set = read.calls[0].text_attributes;
    const double seen = set.size < 0 ? -set.rotation : set.rotation;
    EXPECT_NEAR(std::remainder(seen - c.rotation, 2 * pi), 0, tolerance);
  }
}

TEST(DxfTexts, TextsInTurnedMirrorsRunAlongTheTurn) {
  const Texts read(
      insert("B", 0, 0, -1, 1, 30),
      block("B", groups({{0, "TEXT"}, {8, "0"}, {10, 0}, {20, 0}, {40, 5}, {1, "Width"}})));
  ASSERT_EQ(read.calls.size(), 1U);
  const double width = width_of(L"Width");
  EXPECT_NEAR(read.x(0), -width * std::cos(pi / 6), 1e-3);
  EXPECT_NEAR(read.y(0), -width * std::sin(pi / 6), 1e-3);
  EXPECT_NEAR(read.calls[0].text_attributes.rotation, pi / 6, tolerance);
}

TEST(DxfTexts, LongTextsAreWhole) {
  const std::string words = std::string(1500, 'x') + "END";
  const Texts read(text(words) + entity("ATTRIB", {{10, 1}, {20, 2}, {40, 5}, {1, words}}));
  ASSERT_EQ(read.calls.size(), 2U);
  EXPECT_EQ(read.words()[0], std::wstring(words.begin(), words.end()));
  EXPECT_EQ(read.words()[1], read.words()[0]);
}

TEST(DxfTexts, WithoutHeightAreCounted) {
  const std::string flat = entity("TEXT", {{10, 1}, {20, 1}, {40, 0}, {1, "flat"}});
  EXPECT_EQ(Texts(flat + flat).read.drawing.remarks,
            "left out: 2 entities without size or too far away");
  EXPECT_THAT(DxfDrawing({flat}).recorded.problem,
              testing::HasSubstr("(left out: 1 entity without size or too far away)"));
}

TEST(DxfTexts, BlanksWhereALineIsFullDoNotBeginTheNext) {
  const Texts read(mtext("aaaa {\\C1;  bbbb}", {{41, width_of(L"aaaa") + 0.1}}));
  ASSERT_EQ(read.calls.size(), 2U);
  EXPECT_EQ(read.words()[1], L"bbbb");
  EXPECT_NEAR(read.x(1), 10, tolerance);
}

}  // namespace
