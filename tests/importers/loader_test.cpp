#include "importers/loader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "importers/input_file.h"
#include "tests/support/temporary_folder.h"

namespace {

using importers::check_input;
using importers::Drawing;
using importers::load_importers;
using importers::module_folders;
using importers::read_drawing;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* variable = "DISPLAYLIST_IMPORTERS";

/// Names another folder of importers while it exists.
class OtherImporters {
 public:
  explicit OtherImporters(const std::string& folder) { setenv(variable, folder.c_str(), 1); }
  OtherImporters(const OtherImporters&) = delete;
  OtherImporters& operator=(const OtherImporters&) = delete;
  ~OtherImporters() { unsetenv(variable); }
};

TEST(Loader, FindsTheModulesBesideTheProgram) {
  const std::vector<const importers::Importer*> importers = load_importers(module_folders());
  std::vector<std::string> names;
  for (const importers::Importer* importer : importers) names.emplace_back(importer->name());
  EXPECT_THAT(names, testing::Contains("ogr"));
  for (const importers::Importer* importer : importers) EXPECT_STRNE(importer->description(), "");
}

TEST(Loader, LooksWhereTheEnvironmentSays) {
  const OtherImporters other("/some/folder");
  EXPECT_THAT(module_folders(), ElementsAre("/some/folder"));
}

TEST(Loader, TellsWhatCannotBeLoaded) {
  const TemporaryFolder folder;
  const std::string module = folder.write("broken.so", "no library");
  std::vector<std::string> problems;
  EXPECT_TRUE(load_importers({std::filesystem::path(module).parent_path()}, &problems).empty());
  EXPECT_THAT(problems, ElementsAre(HasSubstr("broken.so")));
}

TEST(Loader, SaysThatThereAreNoImporters) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.geojson", "{}");
  const OtherImporters other(folder.path("nowhere"));
  Drawing drawing;
  EXPECT_THAT(read_drawing(file, {}, drawing), AllOf(HasSubstr(file), HasSubstr(variable)));
}

TEST(Loader, SaysThatNoImporterKnowsAFile) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.unknown", "neither map nor plan");
  Drawing drawing;
  EXPECT_THAT(read_drawing(file, {}, drawing), AllOf(HasSubstr(file), HasSubstr("no importer")));
}

TEST(Loader, ReadsWithTheImporterThatIsNamed) {
  const TemporaryFolder folder;
  const std::string file =
      folder.write("a.geojson", R"({"type":"LineString","coordinates":[[0,0],[1,1]]})");
  Drawing drawing;
  importers::ReadOptions options;
  options.importer = "ogr";
  EXPECT_EQ(read_drawing(file, options, drawing), "");
  options.importer = "other";
  EXPECT_THAT(read_drawing(file, options, drawing),
              AllOf(HasSubstr(file), HasSubstr("no importer 'other'"), HasSubstr("'ogr'")));
  EXPECT_THAT(importers::importer_names(), testing::Contains("ogr"));
}

TEST(InputFile, IsFineWhenThereIsSomethingToRead) {
  const TemporaryFolder folder;
  EXPECT_EQ(check_input(folder.write("a", "b")), "");
  EXPECT_EQ(check_input(folder.path(".")), "");
}

TEST(InputFile, IsNamedWhenItCannotBeRead) {
  const TemporaryFolder folder;
  const std::string missing = folder.path("missing");
  EXPECT_THAT(check_input(missing), AllOf(HasSubstr(missing), HasSubstr("no such file")));
  const std::string empty = folder.write("empty", "");
  EXPECT_THAT(check_input(empty), AllOf(HasSubstr(empty), HasSubstr("is empty")));
  EXPECT_THAT(check_input("/dev/null"), HasSubstr("not a file"));
}

}  // namespace
