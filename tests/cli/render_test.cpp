// What the tool draws.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <regex>
#include <set>

#include "lumen/png_file.h"
#include "tests/cli/dlview_run.h"
#include "tests/importers/geojson.h"
#include "tests/support/temporary_folder.h"

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

constexpr const char* world = DISPLAYLIST_SOURCE_DIR "/examples/data/world-110m.json";
constexpr const char* island = DISPLAYLIST_SOURCE_DIR "/examples/data/island.geojson";
constexpr std::uint32_t sea = 0x00D3E6F1;
constexpr std::uint32_t paper = 0x00FBFAF6;
constexpr std::uint32_t white = 0x00FFFFFF;

class Render : public testing::Test {
 protected:
  /// Draws, expecting success and nothing on standard error.
  lumen::Picture render(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "render");
    arguments.insert(arguments.end(), {"-o", output});
    const DlviewRun run(arguments);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    printed = run.out;
    std::string problem;
    lumen::Picture picture = lumen::read_png(output, &problem);
    EXPECT_EQ(problem, "");
    return picture;
  }

  TemporaryFolder folder;
  std::string output = folder.path("out.png");
  std::string printed;
};

/// A map of the whole world of 3601 by 1801 pixels: 10 pixels a degree.
const std::vector<std::string> tenths{world,  "--size", "3601x1801", "--window",
                                      "-180", "-90",    "180",       "90"};

std::uint32_t at(const lumen::Picture& picture, double longitude, double latitude) {
  return picture
      .pixel(static_cast<int>(std::lround((longitude + 180) * 10)),
             static_cast<int>(std::lround((90 - latitude) * 10)))
      .word;
}

TEST_F(Render, PutsLandAndSeaWhereTheyAre) {
  const lumen::Picture map = render(tenths);
  ASSERT_EQ(map.width(), 3601);
  ASSERT_EQ(map.height(), 1801);
  for (const auto& [longitude, latitude] : {std::pair{-30.0, 40.0},
                                            {-150.0, 0.0},
                                            {80.0, -30.0},
                                            {51.0, 42.0},  // a hole in the land
                                            {0.0, 67.0}}) {
    EXPECT_EQ(at(map, longitude, latitude), sea) << longitude << ' ' << latitude;
  }
  for (const auto& [longitude, latitude] : {std::pair{2.5, 47.0},
                                            {-100.0, 40.0},
                                            {-55.0, -10.0},
                                            {25.0, 0.0},
                                            {135.0, -25.0},
                                            {100.0, 60.0},
                                            {-40.0, 75.0},
                                            {0.0, -80.0},
                                            {179.0, -89.0},
                                            {-178.0, 68.0}}) {  // east of the antimeridian
    EXPECT_NE(at(map, longitude, latitude), sea) << longitude << ' ' << latitude;
  }
  EXPECT_NE(at(map, 2.5, 47.0), at(map, 10.0, 51.0)) << "neighbours differ";
  EXPECT_EQ(at(map, 100.0, 60.0), at(map, -178.0, 68.0)) << "one country has one colour";
}

TEST_F(Render, DrawsTheSameThroughTheUnclippedForm) {
  const lumen::Picture bounded = render(tenths);
  std::vector<std::string> arguments = tenths;
  arguments.insert(arguments.end(), {"--form", "unclipped"});
  EXPECT_TRUE(render(arguments) == bounded);
}

TEST_F(Render, DrawsAWindowTheSameThroughBothForms) {
  const std::vector<std::string> europe{world, "--window", "-12",    "34",
                                        "34",  "62",       "--size", "640x480"};
  const lumen::Picture bounded = render(europe);
  std::vector<std::string> arguments = europe;
  arguments.insert(arguments.end(), {"--form", "unclipped"});
  EXPECT_TRUE(render(arguments) == bounded);
}

TEST_F(Render, ClipsToACircle) {
  std::vector<std::string> arguments = tenths;
  arguments.insert(arguments.end(), {"--form", "circled"});
  const lumen::Picture map = render(arguments);
  EXPECT_EQ(at(map, -100, 40), white);
  EXPECT_EQ(at(map, 135, -25), white);
  EXPECT_EQ(at(map, -30, 40), sea);
  EXPECT_NE(at(map, 25, 0), sea);
  EXPECT_NE(at(map, 25, 0), white);
}

TEST_F(Render, ClipsToAStar) {
  std::vector<std::string> arguments = tenths;
  arguments.insert(arguments.end(), {"--form", "complex"});
  const lumen::Picture map = render(arguments);
  EXPECT_EQ(at(map, -178, 88), white);
  EXPECT_EQ(at(map, 178, -89), white);
  EXPECT_EQ(at(map, -30, 40), sea);
  EXPECT_NE(at(map, -100, 40), sea);
  EXPECT_NE(at(map, -100, 40), white);
}

TEST_F(Render, WidensTheWindowToTheProportionsOfThePicture) {
  const std::string square = folder.write(
      "a.geojson", geojson::geometry("Polygon", "[[[0,0],[10,0],[10,10],[0,10],[0,0]]]"));
  const lumen::Picture wide =
      render({square, "--window", "0", "0", "10", "10", "--size", "301x101"});
  EXPECT_EQ(wide.pixel(50, 50).word, sea);
  EXPECT_EQ(wide.pixel(250, 50).word, sea);
  EXPECT_NE(wide.pixel(105, 50).word, sea);
  EXPECT_NE(wide.pixel(195, 50).word, sea);
}

TEST_F(Render, ShowsTheWholeDrawingInAPictureOfAnyProportions) {
  const std::string square = folder.write(
      "a.geojson", geojson::geometry("Polygon", "[[[0,0],[10,0],[10,10],[0,10],[0,0]]]"));
  const lumen::Picture strip = render({square, "--size", "4000x40"});
  EXPECT_EQ(strip.pixel(1950, 20).word, sea);
  EXPECT_NE(strip.pixel(2000, 20).word, sea);
  EXPECT_EQ(strip.pixel(2050, 20).word, sea);
}

TEST_F(Render, HasYUpward) {
  const std::string two = folder.write(
      "a.geojson", geojson::collection({geojson::geometry("Point", "[0,10]"),
                                        geojson::geometry("LineString", "[[-5,0],[5,0]]")}));
  const lumen::Picture picture =
      render({two, "--window", "-10", "-5", "10", "15", "--size", "201x201"});
  EXPECT_NE(picture.pixel(100, 50).word, paper);
  EXPECT_NE(picture.pixel(100, 150).word, paper);
  EXPECT_EQ(picture.pixel(100, 100).word, paper);
}

TEST_F(Render, DrawsASinglePoint) {
  const std::string point = folder.write("a.geojson", geojson::geometry("Point", "[5,5]"));
  const lumen::Picture picture = render({point, "--size", "101x101", "--point-size", "9"});
  EXPECT_NE(picture.pixel(50, 50).word, paper);
  EXPECT_NE(picture.pixel(47, 53).word, paper);
  EXPECT_EQ(picture.pixel(40, 50).word, paper);
}

TEST_F(Render, LeavesTheLakeOfTheIslandOpen) {
  const lumen::Picture picture =
      render({island, "--window", "0", "0", "1.2", "0.8", "--size", "1201x801"});
  EXPECT_EQ(picture.pixel(480, 800 - 440).word, sea);
  EXPECT_NE(picture.pixel(550, 800 - 440).word, sea) << "the islet in the lake";
  EXPECT_NE(picture.pixel(300, 800 - 450).word, sea);
  EXPECT_EQ(picture.pixel(20, 20).word, sea);
}

TEST_F(Render, TakesColorsAndWidths) {
  const std::string line =
      folder.write("a.geojson", geojson::geometry("LineString", "[[0,0],[10,0]]"));
  const lumen::Picture picture = render({line, "--size", "101x101", "--background", "#102030",
                                         "--line-color", "#FFEE00", "--line-width", "11"});
  EXPECT_EQ(picture.pixel(0, 0).word, 0x00102030U);
  EXPECT_EQ(picture.pixel(50, 50).word, 0x00FFEE00U);
  EXPECT_EQ(picture.pixel(50, 46).word, 0x00FFEE00U);
  EXPECT_EQ(picture.pixel(50, 40).word, 0x00102030U);
}

/// Whether the pixels around (x, y) that differ from the background are a
/// square of this side.
testing::AssertionResult is_square(const lumen::Picture& picture, int x, int y, int side) {
  int count = 0;
  int low_x = x, high_x = x, low_y = y, high_y = y;
  for (int row = y - 2 * side; row <= y + 2 * side; ++row) {
    for (int column = x - 2 * side; column <= x + 2 * side; ++column) {
      if (picture.pixel(column, row).word == paper) continue;
      ++count;
      low_x = std::min(low_x, column);
      high_x = std::max(high_x, column);
      low_y = std::min(low_y, row);
      high_y = std::max(high_y, row);
    }
  }
  const int width = high_x - low_x + 1;
  const int height = high_y - low_y + 1;
  if (width == side && height == side && count == side * side) return testing::AssertionSuccess();
  return testing::AssertionFailure() << count << " pixels in " << width << 'x' << height;
}

/// A line along the lower border and one that is smaller than a pixel.
const std::string long_and_tiny =
    geojson::collection({geojson::geometry("LineString", "[[-50,-45],[50,-45]]"),
                         geojson::geometry("LineString", "[[0,0],[0.001,0.001]]")});

TEST_F(Render, KeepsTheLineWidthOfLinesThatAreSmallerThanAPixel) {
  const std::string lines = folder.write("a.geojson", long_and_tiny);
  for (const int width : {1, 2, 3, 7, 8}) {
    SCOPED_TRACE(width);
    const lumen::Picture picture =
        render({lines, "--window", "-50", "-50", "50", "50", "--size", "101x101", "--line-width",
                std::to_string(width), "--aliased"});
    EXPECT_TRUE(is_square(picture, 50, 50, width));
  }
}

TEST_F(Render, DrawsPointsAsSquaresOfTheirSize) {
  const std::string point = folder.write("a.geojson", geojson::geometry("Point", "[5,5]"));
  for (const int size : {1, 2, 5, 8}) {
    SCOPED_TRACE(size);
    const lumen::Picture picture =
        render({point, "--size", "101x101", "--point-size", std::to_string(size), "--aliased"});
    EXPECT_TRUE(is_square(picture, 50, 50, size));
  }
}

TEST_F(Render, DrawsALayerOnceThatIsChosenTwice) {
  render({world, "--stats", "--size", "200x100", "--layer", "land"});
  const int once = std::stoi(printed);
  render({world, "--stats", "--size", "200x100", "--layer", "land", "--layer", "land"});
  EXPECT_EQ(std::stoi(printed), once);
}

TEST_F(Render, DrawsOutlinesAlongTheBorderOfTheMap) {
  const std::string globe = folder.write(
      "a.geojson",
      geojson::geometry("Polygon", "[[[-180,-90],[180,-90],[180,90],[-180,90],[-180,-90]]]"));
  const lumen::Picture picture =
      render({globe, "--no-fill", "--window", "-200", "-100", "200", "100", "--size", "401x201"});
  EXPECT_NE(picture.pixel(20, 100).word, paper);
  EXPECT_NE(picture.pixel(380, 100).word, paper);
  EXPECT_NE(picture.pixel(200, 10).word, paper);
  EXPECT_NE(picture.pixel(200, 190).word, paper);
}

TEST_F(Render, DrawsOutlinesOnlyWithoutFill) {
  std::vector<std::string> arguments = tenths;
  arguments.push_back("--no-fill");
  const lumen::Picture map = render(arguments);
  EXPECT_EQ(at(map, 100, 60), paper);
  EXPECT_EQ(at(map, -30, 40), paper);
}

/// Points apart from each other, each far from the one before.
std::string strewn_points() {
  std::string points;
  for (int i = 0; i < 3000; ++i) {
    const int place = i * 1009 % 3000;
    points += (points.empty() ? "[" : ",[") + std::to_string(place % 60 * 6 - 177) + "," +
              std::to_string(place / 60 * 3 - 74) + "]";
  }
  return geojson::geometry("MultiPoint", "[" + points + "]");
}

TEST_F(Render, DrawsTheSameOfWhatDoesNotOverlapWhenReordered) {
  const std::string strewn = folder.write("strewn.geojson", strewn_points());
  for (const std::string& drawing : {strewn, std::string(world)}) {
    const lumen::Picture as_is = render({drawing, "--size", "800x400", "--aliased"});
    const lumen::Picture reordered =
        render({drawing, "--size", "800x400", "--aliased", "--reorder"});
    EXPECT_TRUE(as_is == reordered) << drawing;
  }
}

TEST_F(Render, VisitsFewerGroupsWhenReordered) {
  const std::string strewn = folder.write("strewn.geojson", strewn_points());
  const auto groups_visited = [&](const std::vector<std::string>& more) {
    std::vector<std::string> arguments{strewn, "--stats", "--window", "10", "10", "30", "20"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    render(arguments);
    std::smatch found;
    EXPECT_TRUE(std::regex_search(printed, found, std::regex("([0-9]+) groups visited")));
    return std::stoi(found[1]);
  };
  EXPECT_LT(10 * groups_visited({"--reorder"}), groups_visited({}));
}

std::size_t color_count(const lumen::Picture& picture) {
  std::set<std::uint32_t> colors;
  for (std::int32_t y = 0; y < picture.height(); ++y) {
    colors.insert(picture.row(y), picture.row(y) + picture.width());
  }
  return colors.size();
}

TEST_F(Render, DrawsSmoothEdgesUnlessAliased) {
  const std::vector<std::string> small{island, "--size", "300x200"};
  const std::size_t smooth = color_count(render(small));
  std::vector<std::string> arguments = small;
  arguments.push_back("--aliased");
  const std::size_t hard = color_count(render(arguments));
  EXPECT_LE(hard, 7U);
  EXPECT_GT(smooth, 3 * hard);
}

TEST_F(Render, DrawsChosenLayersOnly) {
  std::vector<std::string> arguments = tenths;
  arguments.insert(arguments.end(), {"--layer", "land"});
  const lumen::Picture map = render(arguments);
  EXPECT_EQ(at(map, 2.5, 47.0), at(map, 10.0, 51.0));
  EXPECT_NE(at(map, 2.5, 47.0), sea);
}

TEST_F(Render, DrawsWhatIsLeftOfADamagedDrawing) {
  const std::string bad =
      folder.write("a.geojson", geojson::geometry("LineString", "[[0,0],[5,0],[6,NaN],[10,0]]"));
  const lumen::Picture picture = render({bad, "--skip-unusable", "--size", "101x101"});
  EXPECT_NE(picture.pixel(50, 50).word, paper);
}

TEST_F(Render, PrintsOneLineOfStatistics) {
  render({world, "--stats", "--size", "400x200"});
  EXPECT_THAT(printed, MatchesRegex("[0-9]+ of [0-9]+ drawables, [0-9]+ groups visited, "
                                    "[0-9]+\\.[0-9]+ ms, .*/out\\.png\n"));
  const int all = std::stoi(printed);
  render({world, "--stats", "--size", "400x200", "--window", "5", "45", "10", "48"});
  EXPECT_LT(std::stoi(printed), all);
  EXPECT_GT(std::stoi(printed), 0);
  EXPECT_THAT(printed, HasSubstr(" of " + std::to_string(all) + " drawables"));
}

TEST_F(Render, LeavesOutWhatTheWindowDoesNotMeetInEveryFormButUnclipped) {
  for (const char* form : {"unclipped", "bounded", "circled", "complex"}) {
    SCOPED_TRACE(form);
    render({world, "--stats", "--size", "400x200", "--form", form});
    const int all = std::stoi(printed);
    render(
        {world, "--stats", "--size", "400x200", "--form", form, "--window", "5", "45", "10", "48"});
    if (std::string(form) == "unclipped") {
      EXPECT_EQ(std::stoi(printed), all);
    } else {
      EXPECT_LT(std::stoi(printed), all);
      EXPECT_GT(std::stoi(printed), 0);
    }
  }
}

TEST_F(Render, TakesTheInputBeforeAndAfterTheOptions) {
  render({"--window", "-10", "-10", "10", "10", "--layer", "land", world, "--size", "40x30"});
  render({world, "--layer", "land", "--window", "-10", "-10", "10", "10", "--size", "40x30"});
}

TEST_F(Render, IsSilentWithoutStatistics) {
  render({island, "--size", "40x30"});
  EXPECT_EQ(printed, "");
}

TEST(Help, MentionsEveryOption) {
  const DlviewRun general({"--help"});
  EXPECT_EQ(general.status, 0);
  EXPECT_THAT(general.out, HasSubstr("render"));
  EXPECT_THAT(general.out, HasSubstr("Exit status"));
  EXPECT_EQ(general.err, "");
  const DlviewRun version({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_THAT(version.out, testing::StartsWith("dlview "));
  const DlviewRun render({"render", "--help"});
  EXPECT_EQ(render.status, 0);
  for (const char* word : {"INPUT",
                           "--output",
                           "-o",
                           "--size",
                           "--window",
                           "--background",
                           "--line-width",
                           "--line-color",
                           "--point-size",
                           "--no-fill",
                           "--layer",
                           "--form",
                           "--stats",
                           "--aliased",
                           "--reorder",
                           "--skip-unusable",
                           "unclipped|bounded|circled|complex",
                           "#RRGGBB",
                           "groups visited",
                           "at most 268 million"}) {
    EXPECT_THAT(render.out, HasSubstr(word));
  }
}

}  // namespace
