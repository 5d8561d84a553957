// DXF drawings made by others, as the package librecad-data has them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "displaylist/displaylist.h"
#include "importers/loader.h"
#include "lumen/picture.h"
#include "lumen/raster_device.h"
#include "tests/pictures/golden.h"

namespace {

namespace fs = std::filesystem;

const fs::path library = "/usr/share/librecad";
constexpr std::uint32_t paper = 0x00FFFFFF;

/// The whole drawing in a square of so many pixels; white where it is unreadable.
lumen::Picture picture_of(const fs::path& file, std::int32_t side, std::string& problem) {
  lumen::Picture picture(side, side, {paper});
  importers::Drawing drawing;
  importers::ReadOptions options;
  options.importer = "dxf";
  options.point_size = 2;
  problem = importers::read_drawing(file.string(), options, drawing);
  if (!problem.empty()) return picture;
  DL::DisplayList& list = *drawing.list;
  list.m_pRenderer = LM_Create<lumen::RasterDevice>(picture);
  list.m_bWideDots = true;
  const LM_Clip_Rectangle clip{0, side - 1, 0, side - 1};
  list.m_rendition.set_clip_rectangle(clip);
  for (const auto& rendition : drawing.renditions) rendition->set_clip_rectangle(clip);
  const std::int32_t half = 1127000000;  // with a margin
  list.m_logicalBounds = {-half, -half, half, half};
  list.set_screen_bounds({0, side - 1, side - 1, 0});
  list.recompute_transform();
  list.m_pRootGroup->draw_unclipped(list);
  list.m_pRenderer = nullptr;
  return picture;
}

bool has_ink(const lumen::Picture& picture) {
  for (std::int32_t y = 0; y < picture.height(); ++y) {
    for (std::int32_t x = 0; x < picture.width(); ++x) {
      if (picture.pixel(x, y).word != paper) return true;
    }
  }
  return false;
}

TEST(DxfLibrary, EveryDrawingIsDrawn) {
  if (!fs::exists(library)) GTEST_SKIP() << "the package librecad-data is not installed";
  // These have no entity at all.
  const std::set<std::string> empty{"empty.dxf", "s1.dxf", "speak2.dxf"};
  const auto start = std::chrono::steady_clock::now();
  int drawn = 0;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(library)) {
    if (entry.path().extension() != ".dxf") continue;
    SCOPED_TRACE(entry.path());
    std::string problem;
    const bool inked = has_ink(picture_of(entry.path(), 200, problem));
    if (!inked && empty.contains(entry.path().filename())) {
      EXPECT_THAT(problem, testing::HasSubstr("nothing to draw"));
      continue;
    }
    EXPECT_EQ(problem, "");
    EXPECT_TRUE(inked);
    ++drawn;
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  RecordProperty("drawings", drawn);
  RecordProperty("seconds", std::to_string(taken.count()));
  EXPECT_GT(drawn, 1000);
}

class DxfGolden : public testing::TestWithParam<const char*> {};

TEST_P(DxfGolden, LooksAsItDid) {
  if (!fs::exists(library)) GTEST_SKIP() << "the package librecad-data is not installed";
  std::string problem;
  const lumen::Picture picture = picture_of(library / GetParam(), 300, problem);
  ASSERT_EQ(problem, "");
  expect_golden(picture, "dxf-" + fs::path(GetParam()).stem().string(), {});
}

std::string test_name(const testing::TestParamInfo<const char*>& tested) {
  std::string name = fs::path(tested.param).stem().string();
  std::replace_if(
      name.begin(), name.end(),
      [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(
    Library, DxfGolden,
    testing::Values("library/plan/architect/Complete-Lib-V.dxf",           // inserts and texts
                    "library/kinetics/kin116.dxf",                         // splines
                    "library/elektro/electro-vacuum-iso/Valve-ECF80.dxf",  // paragraphs, dashes
                    "library/elektro/relay-iso/Relay-2p2w.dxf",
                    "library/plan/architect/Bathroom-toilet-E.dxf",  // ellipses
                    "library/elektro/lamp/hl_23.dxf",                // hatches and bulges
                    "library/misc/a3.dxf",                           // a sheet
                    "library/misc/screw.dxf",                        // colours and line types
                    "library/misc/t-part.dxf", "library/misc/tux.dxf",
                    "library/sheets/A4_1_text.dxf",  // letters of strokes
                    "library/plan/vegetation/v24.dxf"),
    test_name);

}  // namespace
