// What the tool says when it cannot draw.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <filesystem>

#include "tests/cli/dlview_run.h"
#include "tests/importers/geojson.h"
#include "tests/support/temporary_folder.h"

namespace {

using geojson::collection;
using geojson::geometry;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace fs = std::filesystem;

constexpr const char* world = DISPLAYLIST_SOURCE_DIR "/examples/data/world-110m.json";

const std::string line = geometry("LineString", "[[0,0],[10,10]]");

class BadInput : public testing::Test {
 protected:
  /// Runs with `arguments` into a picture file; expects a single sentence with
  /// both parts, one of which is the mend, status 1 and no file.
  void expect_sentence(std::vector<std::string> arguments, const std::string& name,
                       const std::string& mend) const {
    arguments.insert(arguments.begin(), "render");
    arguments.insert(arguments.end(), {"-o", output});
    const std::size_t files = folder.file_count();
    const DlviewRun run(arguments);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, AllOf(StartsWith("dlview: "), HasSubstr("'" + name + "'"), HasSubstr("; "),
                               HasSubstr(mend), testing::EndsWith(".\n")));
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1);
    EXPECT_EQ(folder.file_count(), files) << "something was left behind";
  }
  void expect_sentence(const std::string& input, const std::string& mend) const {
    expect_sentence({input}, input, mend);
  }

  TemporaryFolder folder;
  std::string output = folder.path("out.png");
};

TEST_F(BadInput, MissingFile) {
  expect_sentence(folder.path("missing.shp"), "there is no such file; check the path");
}

TEST_F(BadInput, FileWithoutPermission) {
  const std::string input = folder.write("secret.geojson", collection({line}));
  fs::permissions(input, fs::perms::none);
  expect_sentence(input, "change its permissions");
}

TEST_F(BadInput, LinkToItself) {
  const std::string input = folder.path("loop.geojson");
  fs::create_symlink("loop.geojson", input);
  expect_sentence(input, "check the path");
}

TEST_F(BadInput, EmptyFile) {
  expect_sentence(folder.write("empty.geojson", ""), "the file is empty; export");
}

TEST_F(BadInput, UnknownFile) {
  expect_sentence(folder.write("notes.txt", "milk, bread"), "convert it");
}

TEST_F(BadInput, FolderThatIsNoDrawing) {
  fs::create_directory(folder.path("things"));
  expect_sentence(folder.path("things"), "convert it");
}

TEST_F(BadInput, Device) {
  expect_sentence("/dev/null", "name a drawing file");
}

TEST_F(BadInput, TruncatedFiles) {
  const std::string whole = collection({line, line});
  for (std::size_t size = 20; size < whole.size() - 2; size += 11) {
    const std::string input = folder.write("cut.geojson", whole.substr(0, size));
    SCOPED_TRACE(size);
    expect_sentence(input, "; ");
  }
}

TEST_F(BadInput, BytesWithoutSense) {
  std::string bytes;
  for (int i = 0; i < 4000; ++i) bytes += static_cast<char>(i * i * 7 + i / 3);
  for (const char* name : {"a.shp", "a.gpkg", "a.fgb", "a.kml", "a.dxf", "a.json", "a.gml"}) {
    SCOPED_TRACE(name);
    expect_sentence(folder.write(name, bytes), "; ");
  }
}

TEST_F(BadInput, DrawingWithoutGeometry) {
  expect_sentence(folder.write("none.geojson", collection({})), "no geometry");
  expect_sentence(folder.write("null.geojson", collection({"null"})), "no geometry");
}

TEST_F(BadInput, CoordinatesThatAreNoNumbers) {
  for (const char* bad : {"NaN", "Infinity", "-Infinity", "1e999"}) {
    SCOPED_TRACE(bad);
    const std::string coordinates = "[[0,0],[1," + std::string(bad) + "],[2,2]]";
    expect_sentence(
        folder.write("bad.geojson", collection({line, geometry("LineString", coordinates)})),
        "feature 2 of layer 'bad'); repair them");
    expect_sentence(folder.write("point.geojson",
                                 collection({geometry("Point", "[1," + std::string(bad) + "]")})),
                    "repair them");
  }
}

TEST_F(BadInput, EnormousCoordinates) {
  expect_sentence(
      folder.write("huge.geojson", collection({line, geometry("Point", "[1e300,-1e300]")})),
      "repair them");
  expect_sentence(folder.write("all.geojson", geometry("LineString", "[[1e300,0],[0,1e300]]")),
                  "repair them");
}

TEST_F(BadInput, MissingLayer) {
  expect_sentence({world, "--layer", "rivers"}, world, "choose from 'countries', 'land'");
  expect_sentence({world, "--layer", ""}, world, "no layer ''; choose from 'countries', 'land'");
}

TEST_F(BadInput, WindowWithoutArea) {
  const char* mend = "give MINX MINY MAXX MAXY";
  expect_sentence({world, "--window", "5", "5", "5", "9"}, world, mend);
  expect_sentence({world, "--window", "5", "5", "9", "5"}, world, mend);
  expect_sentence({world, "--window", "9", "5", "5", "9"}, world, mend);
}

TEST_F(BadInput, WindowOutsideTheDrawing) {
  expect_sentence({world, "--window", "200", "0", "220", "10"}, world,
                  "choose a window within -180 ");
}

TEST_F(BadInput, WindowTooSmallOrTooLarge) {
  expect_sentence({world, "--window", "8", "47", "8.000001", "47.000001"}, world, "at least");
  expect_sentence({world, "--window", "-1e200", "-1e200", "1e200", "1e200"}, world,
                  "choose a window near");
  expect_sentence({world, "--window", "-1e308", "-1e308", "1e308", "1e308"}, world,
                  "choose a window near");
}

class BadOutput : public testing::Test {
 protected:
  void expect_sentence(const std::string& file, const std::string& mend) const {
    const std::size_t files = folder.file_count();
    const DlviewRun run({"render", world, "-o", file, "--size", "64x64"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, AllOf(StartsWith("dlview: cannot write '" + file + "'"), HasSubstr(mend)));
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1);
    EXPECT_EQ(folder.file_count(), files);
  }

  TemporaryFolder folder;
};

TEST_F(BadOutput, OtherFormats) {
  for (const char* name : {"out.gif", "out", "out.png.txt", "out.svgz", ".pdf"}) {
    expect_sentence(folder.path(name), "end the name in .png, .pdf or .svg");
  }
}

TEST_F(BadOutput, MissingFolder) {
  for (const char* name : {"nowhere/out.png", "nowhere/out.pdf", "nowhere/out.SVG"}) {
    expect_sentence(folder.path(name), "create it or name another");
  }
}

TEST_F(BadOutput, FolderInItsPlace) {
  fs::create_directory(folder.path("out.png"));
  expect_sentence(folder.path("out.png"), "name a file in it");
}

TEST_F(BadOutput, FolderWithoutPermission) {
  fs::create_directory(folder.path("locked"));
  fs::permissions(folder.path("locked"), fs::perms::owner_read | fs::perms::owner_exec);
  expect_sentence(folder.path("locked/out.png"),
                  "may not be written to (Permission denied); name another");
}

TEST_F(BadOutput, FileInPlaceOfTheFolder) {
  const std::string file = folder.write("notes.txt", "milk");
  expect_sentence(file + "/out.png", "is no folder; name another");
}

TEST_F(BadOutput, NamesThatTheSystemRefuses) {
  expect_sentence("/proc/out.png", "; name another");
  expect_sentence(folder.path(std::string(300, 'a') + ".png"), "; choose another name or folder");
  expect_sentence(folder.path(std::string(300, 'a') + "/out.png"), "; name another");
}

TEST_F(BadOutput, TheDrawingItself) {
  const std::string input = folder.write("in.png", collection({line}));
  fs::create_symlink("in.png", folder.path("soft.png"));
  fs::create_hard_link(input, folder.path("hard.png"));
  for (const char* name : {"in.png", "./in.png", "soft.png", "hard.png"}) {
    const DlviewRun run({"render", input, "-o", folder.path(name)});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, AllOf(HasSubstr("cannot write '" + folder.path(name) + "'"),
                               HasSubstr("; name another output.\n")));
  }
  EXPECT_EQ(fs::file_size(input), collection({line}).size());
}

/// Keeps files below a size, in this program and those that it starts.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit limit{bytes, m_before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }

 private:
  rlimit m_before{};
};

TEST_F(BadOutput, PictureBeyondTheLimitOfFileSizes) {
  const FileSizeLimit limit(1024);
  for (const char* name : {"out.png", "out.pdf", "out.svg"}) {
    const std::string output = folder.path(name);
    const DlviewRun run({"render", world, "-o", output, "--size", "640x480"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, AllOf(StartsWith("dlview: cannot write '" + output + "'"),
                               HasSubstr("; choose another name or folder.\n")));
    EXPECT_EQ(folder.file_count(), 0U);
  }
}

TEST_F(BadOutput, LeavesTheFileThatWasThere) {
  const std::string output = folder.write("out.png", "as it was");
  const DlviewRun run({"render", folder.path("missing"), "-o", output});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(fs::file_size(output), 9U);
}

}  // namespace
