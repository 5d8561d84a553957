// The commands that keep drawings in files and tell what is in them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

#include "tests/cli/dlview_run.h"
#include "tests/importers/geojson.h"
#include "tests/support/temporary_folder.h"

namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* world = DISPLAYLIST_SOURCE_DIR "/examples/data/world-110m.json";
constexpr const char* house = DISPLAYLIST_SOURCE_DIR "/examples/data/house.dxf";

std::string bytes_of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class DrawingFile : public testing::Test {
 protected:
  /// Expects success and nothing on standard error; returns what was printed.
  static std::string run(const std::vector<std::string>& arguments) {
    const DlviewRun done(arguments);
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(done.err, "");
    return done.out;
  }
  /// Expects status 1 and one sentence that says `words`.
  static void expect_failure(const std::vector<std::string>& arguments, const std::string& words) {
    const DlviewRun done(arguments);
    EXPECT_EQ(done.status, 1);
    EXPECT_EQ(done.out, "");
    EXPECT_THAT(done.err, AllOf(StartsWith("dlview: "), HasSubstr(words), EndsWith(".\n")));
    EXPECT_EQ(std::count(done.err.begin(), done.err.end(), '\n'), 1);
  }

  TemporaryFolder folder;
  std::string kept = folder.path("kept.dlf");
};

TEST_F(DrawingFile, IsDrawnLikeTheDrawingItWasMadeOf) {
  for (const char* drawing : {world, house}) {
    EXPECT_EQ(run({"convert", drawing, kept}), "");
    run({"render", drawing, "-o", folder.path("drawing.png"), "--size", "800x600"});
    run({"render", kept, "-o", folder.path("kept.png"), "--size", "800x600"});
    EXPECT_TRUE(bytes_of(folder.path("drawing.png")) == bytes_of(folder.path("kept.png")))
        << drawing;
  }
}

TEST_F(DrawingFile, OfADrawingFileIsTheSameFile) {
  run({"convert", house, kept});
  run({"convert", kept, folder.path("again.dlf")});
  run({"convert", folder.path("again.dlf"), folder.path("third.dlf")});
  EXPECT_TRUE(bytes_of(folder.path("again.dlf")) == bytes_of(folder.path("third.dlf")));
}

TEST_F(DrawingFile, IsKnownByWhatItHoldsNotByItsName) {
  run({"convert", world, kept});
  std::filesystem::rename(kept, folder.path("drawing"));
  EXPECT_THAT(run({"info", folder.path("drawing")}), HasSubstr("drawables   839\n"));
}

TEST_F(DrawingFile, HoldsTheLayersAskedFor) {
  run({"convert", world, kept, "--layer", "countries", "--no-fill", "--line-color", "#102030"});
  EXPECT_THAT(run({"info", kept}),
              AllOf(HasSubstr("layers      1: countries\n"), Not(HasSubstr("DLPolygon"))));
}

TEST_F(DrawingFile, CompressesHarderWhenAsked) {
  run({"convert", world, kept, "--compression", "1"});
  const auto quick = std::filesystem::file_size(kept);
  run({"convert", world, kept, "--compression", "19"});
  EXPECT_LT(std::filesystem::file_size(kept), quick);
}

TEST_F(DrawingFile, InfoTellsTheSameOfTheDrawingAndOfTheFile) {
  const auto without_file = [](std::string text) { return text.substr(text.find('\n')); };
  for (const char* drawing : {world, house}) {
    run({"convert", drawing, kept});
    const std::regex memory("memory .*");
    EXPECT_EQ(std::regex_replace(without_file(run({"info", kept})), memory, ""),
              std::regex_replace(without_file(run({"info", drawing})), memory, ""));
  }
}

TEST_F(DrawingFile, InfoTellsExtentLayersClassesAndTree) {
  EXPECT_THAT(run({"info", world}),
              AllOf(HasSubstr("extent      -180 -90 to 180 83.64513"),
                    HasSubstr("layers      2: land, countries\n"), HasSubstr("drawables   839\n"),
                    ContainsRegex("  DLPolygon +408\n"), ContainsRegex("  DLPolyline +431\n"),
                    ContainsRegex("groups      [0-9]+, of them [0-9]+ with drawables, 0 hidden"),
                    ContainsRegex("fill        [0-9.]+ drawables in a group"),
                    ContainsRegex("memory      [0-9]+ bytes")));
  EXPECT_THAT(run({"info", house}),
              ContainsRegex("nested      [0-9]+ lists with [0-9]+ drawables"));
}

TEST_F(DrawingFile, DumpPrintsEveryGroupAndDrawable) {
  const std::string dump = run({"dump", world});
  EXPECT_THAT(dump, AllOf(StartsWith("Group: level  0, this = 0x"),
                          HasSubstr("\n    BottomGroup: level  1, this = 0x"),
                          HasSubstr("\n        DLPolygon: level  2, points = ")));
  const std::regex polygon("DLPolygon: level ");
  EXPECT_EQ(std::distance(std::sregex_iterator(dump.begin(), dump.end(), polygon), {}), 408);
}

TEST_F(DrawingFile, VerifyTellsThatAFileIsWhole) {
  run({"convert", world, kept});
  EXPECT_THAT(run({"verify", kept}), ContainsRegex("is whole: 839 drawables in [0-9]+ groups\n"));
}

TEST_F(DrawingFile, VerifyTellsOfDamage) {
  run({"convert", world, kept});
  const std::string whole = bytes_of(kept);
  std::string damaged = whole;
  damaged[damaged.size() / 2] = static_cast<char>(damaged[damaged.size() / 2] ^ 0x10);
  std::ofstream(kept, std::ios::binary) << damaged;
  expect_failure({"verify", kept}, kept);
  expect_failure({"render", kept, "-o", folder.path("out.png")}, kept);
  EXPECT_FALSE(std::filesystem::exists(folder.path("out.png")));
  std::ofstream(kept, std::ios::binary) << whole.substr(0, whole.size() - 1);
  expect_failure({"verify", kept}, kept);
  expect_failure({"verify", world}, world);
  expect_failure({"verify", folder.path("nowhere.dlf")}, "nowhere.dlf");
}

TEST_F(DrawingFile, IsNotReplacedByAFailure) {
  run({"convert", world, kept});
  const std::string whole = bytes_of(kept);
  expect_failure({"convert", folder.path("nowhere.json"), kept}, "nowhere.json");
  EXPECT_TRUE(bytes_of(kept) == whole);
}

TEST_F(DrawingFile, ConvertNamesTheEndingAndTheOutput) {
  expect_failure({"convert", world, folder.path("world.png")}, "end the name in .dlf");
  expect_failure({"convert", world, "/nowhere/world.dlf"}, "there is no folder '/nowhere'");
  run({"convert", world, kept});
  expect_failure({"convert", kept, kept}, "it is the drawing that is to be read");
  expect_failure({"render", kept, "-o", folder.path("out.png"), "--layer", "land"}, "layers");
}

}  // namespace
