// The commands that keep drawings in files and tell what is in them.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <regex>
#include <utility>
#include <vector>

#include "displaylist/displaylist.h"
#include "files/drawing_file.h"
#include "tests/cli/dlview_run.h"
#include "tests/importers/geojson.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/temporary_locale.h"

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

TEST_F(DrawingFile, HoldsAsManyDrawablesWhenReordered) {
  run({"convert", world, kept, "--reorder"});
  EXPECT_THAT(run({"info", kept}), HasSubstr("drawables   839\n"));
}

TEST_F(DrawingFile, AndDrawingsWithAnOrderOfTheirOwnAreNotReordered) {
  run({"convert", house, kept});
  run({"convert", house, folder.path("house.dlf"), "--reorder"});
  EXPECT_TRUE(bytes_of(kept) == bytes_of(folder.path("house.dlf")));
  run({"convert", world, kept});
  run({"convert", kept, folder.path("first.dlf")});
  run({"convert", kept, folder.path("second.dlf"), "--reorder"});
  EXPECT_TRUE(bytes_of(folder.path("first.dlf")) == bytes_of(folder.path("second.dlf")));
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

TEST_F(DrawingFile, DumpIsWrittenInFewPieces) {
  // A pipe tells how much came at once.
  const std::string pipe = folder.path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  std::size_t reads = 0;
  std::size_t lines = 0;
  auto reader = std::async(std::launch::async, [&] {
    const int descriptor = open(pipe.c_str(), O_RDONLY);
    std::vector<char> buffer(1U << 16U);
    for (ssize_t got = 0; (got = read(descriptor, buffer.data(), buffer.size())) > 0; ++reads) {
      lines += static_cast<std::size_t>(std::count(buffer.begin(), buffer.begin() + got, '\n'));
    }
    close(descriptor);
  });
  const DlviewRun done({"dump", world}, pipe);
  reader.get();
  EXPECT_EQ(done.status, 0);
  EXPECT_GT(lines, 839U);
  EXPECT_LT(reads, lines / 5);
}

TEST_F(DrawingFile, WhatCannotBePrintedIsAFailure) {
  run({"convert", world, kept});
  for (const char* command : {"info", "dump", "verify"}) {
    const DlviewRun done({command, kept}, "/dev/full");
    EXPECT_EQ(done.status, 1) << command;
    EXPECT_THAT(done.err,
                AllOf(StartsWith("dlview: standard output cannot be written to"), EndsWith(".\n")));
  }
}

TEST_F(DrawingFile, InfoReplacesControlCharacters) {
  DL::DisplayList list;
  list.add(
      new DL::DLPolyline({}, 2, std::array<DL::PointTemplate<long>, 2>{{{0, 0}, {9, 9}}}.data()));
  files::Properties properties;
  properties.layers = {"W\xC3\xA4nde\x1B[31m\n",
                       "a\xC2\x9B"
                       "1m\x7F"};
  ASSERT_EQ(files::write_file(kept, list, properties), "");
  EXPECT_THAT(run({"info", kept}), HasSubstr("layers      2: W\xC3\xA4nde?[31m?, a?1m?\n"));
}

TEST_F(DrawingFile, WithNothingToDrawIsRefused) {
  DL::DisplayList empty;
  DL::DisplayList rootless;
  delete std::exchange(rootless.m_pRootGroup, nullptr);
  for (DL::DisplayList* list : {&empty, &rootless}) {
    files::Properties properties;
    properties.notes.emplace_back("drawing extent", "0 0 10 10");
    ASSERT_EQ(files::write_file(kept, *list, properties), "");
    expect_failure({"dump", kept}, "nothing to draw");
    expect_failure({"info", kept}, "nothing to draw");
    expect_failure({"render", kept, "-o", folder.path("out.png")}, "nothing to draw");
    run({"verify", kept});
  }
}

TEST_F(DrawingFile, KeepsTheNotesOfOthersWhenConverted) {
  DL::DisplayList list;
  list.add(new DL::DLDot({}, {1, 2}));
  list.add(new DL::DLDot({}, {10, 20}));
  files::Properties properties;
  properties.notes = {{"title", "A house"}, {"points", "of view"}, {"title", "twice"}};
  ASSERT_EQ(files::write_file(kept, list, properties), "");
  run({"convert", kept, folder.path("again.dlf")});
  run({"convert", folder.path("again.dlf"), folder.path("third.dlf")});
  EXPECT_TRUE(bytes_of(folder.path("again.dlf")) == bytes_of(folder.path("third.dlf")));
  files::Contents contents;
  ASSERT_EQ(files::read_file(folder.path("third.dlf"), {}, contents), "");
  for (const auto& note : properties.notes) {
    EXPECT_THAT(contents.properties.notes, testing::Contains(note));
  }
}

TEST_F(DrawingFile, KeepsMultibyteTextsWhateverTheLocale) {
  const std::string name =
      "\xC3\x9C"
      "berma\xC3\x9F";
  {
    const SelectedLocale locale("C.UTF-8");
    DL::DisplayList list;
    list.add(new DL::DLText({}, LM_Font(), {1, 2}, name.c_str(), 7, 10, 0.5, {1, 2, 30, 40},
                            nullptr, false));
    ASSERT_EQ(files::write_file(kept, list), "");
  }
  for (const char* locale : {"C", "C.UTF-8"}) {
    setenv("LC_ALL", locale, 1);
    run({"convert", kept, folder.path("again.dlf")});
    unsetenv("LC_ALL");
    const SelectedLocale selected("C.UTF-8");
    files::Contents contents;
    ASSERT_EQ(files::read_file(folder.path("again.dlf"), {}, contents), "");
    DL::DisplayListIterator at(contents.list.get());
    const DL::EncodedText& text = *static_cast<DL::DLText*>(at.current())->text();
    EXPECT_EQ(reinterpret_cast<const char*>(text.multiByteString()), name) << locale;
    EXPECT_EQ(text.length(), 7) << locale;
  }
}

TEST_F(DrawingFile, IsWrittenThroughALink) {
  std::filesystem::create_symlink("kept.dlf", folder.path("link.dlf"));
  run({"convert", world, folder.path("link.dlf")});
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link.dlf")));
  run({"verify", kept});
}

TEST_F(DrawingFile, HasItsEndingInLettersOfAnyCase) {
  const std::string damaged = folder.write("damaged.DLF", "no display list");
  expect_failure({"info", damaged}, "it is no display list file");
  run({"convert", world, folder.path("kept.DLF")});
  EXPECT_THAT(run({"info", folder.path("kept.DLF")}), HasSubstr("drawables   839\n"));
}

TEST_F(DrawingFile, HelpTellsWhichOptionsItTakesNoHeedOf) {
  const std::string help = run({"render", "--help"});
  for (const char* option : {"--line-color", "--point-size", "--no-fill", "--reorder"}) {
    const std::string about = help.substr(help.find(option));
    EXPECT_THAT(about.substr(0, about.find("\n  -", 1)), HasSubstr(".dlf")) << option;
  }
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
