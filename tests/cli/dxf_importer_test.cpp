// Which importer the tool reads a DXF file with.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "lumen/png_file.h"
#include "tests/cli/dlview_run.h"
#include "tests/importers/dxf_text.h"
#include "tests/support/temporary_folder.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

class DxfImporter : public testing::Test {
 protected:
  DlviewRun render(const std::string& text, std::vector<std::string> more) {
    std::vector<std::string> arguments{"render",    folder.write("a.dxf", text),
                                       "-o",        output,
                                       "--size",    "101x101",
                                       "--aliased", "--background",
                                       "white",     "--window",
                                       "0",         "0",
                                       "10",        "10"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return DlviewRun(arguments);
  }
  [[nodiscard]] std::uint32_t pixel(std::int32_t x, std::int32_t y) const {
    return lumen::read_png(output).pixel(x, y).word;
  }

  TemporaryFolder folder;
  std::string output = folder.path("out.png");
};

const std::string green_line =
    dxf_text::entity("LINE", {{62, 3}, {10, 0}, {20, 5}, {11, 10}, {21, 5}});

TEST_F(DxfImporter, IsChosenForDxfFiles) {
  const DlviewRun run = render(dxf_text::file({green_line}), {});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(pixel(50, 50), 0x0000FF00U);
}

TEST_F(DxfImporter, CanBeNamedLikeTheOther) {
  EXPECT_EQ(render(dxf_text::file({green_line}), {"--importer", "dxf"}).status, 0);
  EXPECT_EQ(pixel(50, 50), 0x0000FF00U);
  const DlviewRun run = render(dxf_text::file({green_line}), {"--importer", "ogr"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(pixel(50, 50), 0x0000FF00U);
  EXPECT_NE(pixel(50, 50), 0x00FFFFFFU);
}

TEST_F(DxfImporter, ListsTheImportersWhereOneIsUnknown) {
  const DlviewRun run = render(dxf_text::file({green_line}), {"--importer", "dwg"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "dlview: --importer must be dlf, dxf or ogr, not 'dwg'.\n");
}

TEST_F(DxfImporter, TellsWhatItLeavesOutInOneLine) {
  const DlviewRun run = render(
      dxf_text::file({green_line + dxf_text::entity("REGION", {}) + dxf_text::entity("BODY", {})}),
      {});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.err, AllOf(StartsWith("dlview: of '"),
                             HasSubstr("a.dxf' left out: 1 of kind BODY, 1 of kind REGION.\n")));
}

TEST_F(DxfImporter, DrawsLinesAsWideAsAsked) {
  EXPECT_EQ(render(dxf_text::file({green_line}), {"--line-width", "7"}).status, 0);
  EXPECT_EQ(pixel(50, 53), 0x0000FF00U);
  EXPECT_EQ(pixel(50, 55), 0x00FFFFFFU);
}

TEST_F(DxfImporter, AsksForRepairsOrLeavesOut) {
  const std::string text =
      dxf_text::file({green_line + dxf_text::entity("LINE", {{10, "nan"}, {11, 5}})});
  const DlviewRun refused = render(text, {});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("a LINE of layer '0'"));
  EXPECT_EQ(render(text, {"--skip-unusable"}).status, 0);
}

}  // namespace
