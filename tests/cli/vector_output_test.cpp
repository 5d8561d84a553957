// Drawings as PDF and SVG.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "lumen/png_file.h"
#include "tests/cli/dlview_run.h"
#include "tests/support/temporary_folder.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char* world = DISPLAYLIST_SOURCE_DIR "/examples/data/world-110m.json";
constexpr const char* island = DISPLAYLIST_SOURCE_DIR "/examples/data/island.geojson";
constexpr std::uint32_t sea = 0x00D3E6F1;
constexpr std::uint32_t white = 0x00FFFFFF;

class VectorOutput : public testing::TestWithParam<const char*> {
 protected:
  /// Draws, expecting success and nothing on standard error; the bytes of the file.
  std::string render(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "render");
    arguments.insert(arguments.end(), {"-o", output});
    const DlviewRun run(arguments);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    std::ifstream stream(output, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  /// What other programs make of the file, a pixel for a unit.
  lumen::Picture shown() {
    const std::string root = folder.path("shown");
    const std::string command =
        std::string(GetParam()) == "svg"
            ? "rsvg-convert --background-color=white -o '" + root + ".png' '" + output + "'"
            : "pdftocairo -r 96 -png -singlefile '" + output + "' '" + root + "'";
    EXPECT_EQ(std::system(command.c_str()), 0);
    return lumen::read_png(root + ".png");
  }

  TemporaryFolder folder;
  std::string output = folder.path(std::string("out.") + GetParam());
};

INSTANTIATE_TEST_SUITE_P(Formats, VectorOutput, testing::Values("pdf", "svg"),
                         [](const auto& format) { return std::string(format.param); });

const std::vector<std::string> whole_world{world,  "--size", "721x361", "--window",
                                           "-180", "-90",    "180",     "90"};

/// Two pixels a degree.
std::uint32_t at(const lumen::Picture& picture, int longitude, int latitude) {
  return picture.pixel((longitude + 180) * 2, (90 - latitude) * 2).word;
}

TEST_P(VectorOutput, PutsLandAndSeaWhereTheyAre) {
  render(whole_world);
  const lumen::Picture map = shown();
  ASSERT_EQ(map.width(), 721);
  ASSERT_EQ(map.height(), 361);
  EXPECT_EQ(at(map, -30, 40), sea);
  EXPECT_EQ(at(map, -150, 0), sea);
  EXPECT_NE(at(map, -100, 40), sea);
  EXPECT_NE(at(map, 25, 0), sea);
  EXPECT_NE(at(map, 135, -25), sea);
  EXPECT_EQ(map.pixel(0, 0).word, sea);
}

TEST_P(VectorOutput, ClipsToACircleAndToAStar) {
  for (const char* form : {"circled", "complex"}) {
    SCOPED_TRACE(form);
    std::vector<std::string> arguments = whole_world;
    arguments.insert(arguments.end(), {"--form", form});
    render(arguments);
    const lumen::Picture map = shown();
    EXPECT_EQ(at(map, -178, 88), white);
    EXPECT_EQ(at(map, 178, -88), white);
    EXPECT_EQ(at(map, -30, 40), sea);
    EXPECT_NE(at(map, 25, 0), sea);
    EXPECT_NE(at(map, 25, 0), white);
  }
}

TEST_P(VectorOutput, ReplacesAFileAndLeavesNothingElse) {
  std::ofstream(output) << "as it was";
  EXPECT_THAT(render({island}), Not(HasSubstr("as it was")));
  EXPECT_EQ(folder.file_count(), 1U);
}

TEST(VectorFiles, KnowTheirFormatByEndingsInAnyCase) {
  const TemporaryFolder folder;
  for (const auto& [name, start] : {std::pair{"a.PDF", "%PDF-"}, {"b.Svg", "<?xml"}}) {
    const DlviewRun run({"render", island, "-o", folder.path(name)});
    EXPECT_EQ(run.status, 0) << run.err;
    std::ifstream stream(folder.path(name), std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_THAT(content, StartsWith(start));
  }
}

TEST(VectorFiles, KeepLinesAndAreas) {
  const TemporaryFolder folder;
  const std::string output = folder.path("a.svg");
  const DlviewRun run({"render", world, "-o", output, "--line-width", "3", "--size", "800x400"});
  ASSERT_EQ(run.status, 0) << run.err;
  std::ifstream stream(output);
  const std::string svg{std::istreambuf_iterator<char>(stream), {}};
  EXPECT_THAT(svg, HasSubstr("width=\"800px\" height=\"400px\""));
  EXPECT_THAT(svg, HasSubstr("stroke-width:3;"));
  EXPECT_THAT(svg, HasSubstr("fill-rule:evenodd;"));
  EXPECT_THAT(svg, Not(HasSubstr("<image")));
}

}  // namespace
