// What a file keeps of a drawing, and drawings of files that others wrote.

#include "importers/drawing_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <utility>

#include "displaylist/displaylist.h"

namespace {

using importers::Drawing;
using testing::HasSubstr;
using testing::IsEmpty;

/// Contents with two dots in them.
files::Contents dots() {
  files::Contents contents;
  contents.heap = std::make_unique<lumen::PackedHeap>();
  contents.list = std::make_unique<DL::DisplayList>();
  contents.list->add(new DL::DLDot({}, {-1000000, 2}));
  contents.list->add(new DL::DLDot({}, {1000000, 20}));
  return contents;
}

std::string taken_over(files::Contents contents) {
  Drawing drawing;
  return importers::take_over(std::move(contents), drawing);
}

TEST(DrawingOfAFile, HasTheNotesOfOthers) {
  files::Contents contents = dots();
  contents.properties.notes = {
      {"title", "A house"}, {"points", "of view"}, {"drawing points", "7"}};
  Drawing drawing;
  ASSERT_EQ(importers::take_over(std::move(contents), drawing), "");
  EXPECT_EQ(drawing.points, 7U);
  const std::vector<std::pair<std::string, std::string>> others = {{"title", "A house"},
                                                                   {"points", "of view"}};
  EXPECT_EQ(drawing.notes, others);
  const files::Properties properties = importers::properties_of(drawing);
  for (const auto& note : others) EXPECT_THAT(properties.notes, testing::Contains(note));
}

TEST(DrawingOfAFile, IsRefusedWithNothingToDraw) {
  files::Contents rootless = dots();
  delete std::exchange(rootless.list->m_pRootGroup, nullptr);
  files::Contents empty = dots();
  empty.list = std::make_unique<DL::DisplayList>();
  for (files::Contents* contents : {&rootless, &empty}) {
    contents->properties.notes = {{"drawing extent", "0 0 10 10"}};
    EXPECT_THAT(taken_over(std::move(*contents)), HasSubstr("nothing to draw"));
  }
}

TEST(DrawingOfAFile, IsRefusedWithUnitsThatGiveNoExtent) {
  constexpr double infinite = std::numeric_limits<double>::infinity();
  constexpr double smallest = std::numeric_limits<double>::denorm_min();
  for (const double scale : {0.0, -1.0, infinite, smallest, 1e-303}) {
    files::Contents contents = dots();
    contents.properties.unit_scale = scale;
    EXPECT_THAT(taken_over(std::move(contents)), HasSubstr("a unit that is no length")) << scale;
  }
  files::Contents wide = dots();
  wide.properties.notes = {{"drawing extent", "-1e308 0 1e308 10"}};
  EXPECT_THAT(taken_over(std::move(wide)), HasSubstr("a unit that is no length"));
  EXPECT_THAT(taken_over(dots()), IsEmpty());
}

}  // namespace
