#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>

#include "tests/support/client_drawables.h"
#include "tests/support/sample_drawables.h"

// The line that each class prints and the memory that it counts.

namespace {

struct Dump {
  std::string line;
  DL::DisplayListDebug statistics;
};

Dump dump(const DL::Drawable& drawable, int level) {
  Dump result;
  std::ostringstream os;
  drawable.dump(os, level, result.statistics);
  result.line = os.str();
  return result;
}

std::string address(const void* pointer) {
  std::ostringstream os;
  os << pointer;
  return os.str();
}

void expect_dump(const DL::Drawable& drawable, const std::string& text, std::uint32_t bytes) {
  const Dump dumped = dump(drawable, 3);
  EXPECT_EQ(dumped.line, "            " + text + ", this = " + address(&drawable) + "\n");
  EXPECT_EQ(dumped.statistics.m_cDrawableBytes, bytes);
  EXPECT_EQ(dumped.statistics.m_cEntryBytes, 32U);
  EXPECT_EQ(dumped.statistics.m_cDrawables, 0U);
  EXPECT_EQ(dumped.statistics.m_cGroups, 0U);
  EXPECT_EQ(dumped.statistics.m_cGroupBytes, 0U);
}

TEST(DumpLine, OfTheBaseCountsNoMemory) {
  const client::Mark mark;
  const Dump dumped = dump(mark, 0);
  EXPECT_EQ(dumped.line, "Drawable: level  0, this = " + address(&mark) + "\n");
  EXPECT_EQ(dumped.statistics.m_cDrawableBytes, 0U);
  EXPECT_EQ(dumped.statistics.m_cEntryBytes, 0U);
}

TEST(DumpLine, IsIndentedByFourBlanksPerLevel) {
  const DL::DLDot dot({}, {});
  const std::string this_dot = ", this = " + address(&dot) + "\n";
  EXPECT_EQ(dump(dot, 0).line, "DLDot: level  0" + this_dot);
  EXPECT_EQ(dump(dot, 1).line, "    DLDot: level  1" + this_dot);
  EXPECT_EQ(dump(dot, 3).line, "            DLDot: level  3" + this_dot);
  EXPECT_EQ(dump(dot, -2).line, "DLDot: level  -2" + this_dot);
}

TEST(DumpLine, OfDots) {
  expect_dump(*samples::make_plain<DL::DLDot>(), "DLDot: level  3", 40);
  LM_Rendition rendition;
  expect_dump(*samples::make_palettized<DL::DLDot>(&rendition), "DLDot: level  3", 40);
  expect_dump(*samples::make_plain<DL::DLColorizedDot>(), "DLColorizedDot: level  3", 48);
}

TEST(DumpLine, OfAPolylineNamesItsFirstAndLastPointAndNoLevel) {
  const auto polyline = samples::make_plain<DL::DLPolyline>();
  expect_dump(*polyline, "DLPolyline: color = 1193046, points = 4, (10,20)x(12,7)", 4 * 8 + 48);
}

TEST(DumpLine, OfAPolylinePrintsTheColorAsASignedNumber) {
  const std::unique_ptr<DL::Drawable> polyline(make_polyline({{1, -2}, {-3, 4}}, {0xFFFFFFFF}));
  expect_dump(*polyline, "DLPolyline: color = -1, points = 2, (1,-2)x(-3,4)", 2 * 8 + 48);
}

TEST(DumpLine, OfAPalettizedPolylineNamesItsRendition) {
  LM_Rendition rendition;
  const auto polyline = samples::make_palettized<DL::DLPolyline>(&rendition);
  expect_dump(
      *polyline,
      "Palettized DLPolyline: rendition = " + address(&rendition) + ", points = 4, (10,20)x(12,7)",
      4 * 8 + 48);
}

TEST(DumpLine, OfPolythingsTellsThePointCount) {
  expect_dump(*samples::make_plain<DL::DLPolygon>(), "DLPolygon: level  3, points = 4", 4 * 8 + 48);
  expect_dump(*samples::make_plain<DL::DLGouraudPolyline>(), "GoraudPolyline: level  3, points = 4",
              4 * 12 + 56);
}

TEST(DumpLine, OfThePolythingBaseTellsThePointCount) {
  class Bare final : public DL::Polything {
   public:
    Bare() : Polything({}, samples::kPointCount, samples::kPoints, nullptr) {}
    void draw_unclipped(DL::DisplayList&) override {}
    void draw_clipped(DL::DisplayList&) override {}
    bool remove(DL::Search&) override { return false; }
    Drawable* clone() override { return nullptr; }
  };
  expect_dump(Bare(), "Polything: level  3, points = 4", 4 * 8 + 48);
}

TEST(DumpLine, AddsUpOverDrawables) {
  const auto dot = samples::make_plain<DL::DLDot>();
  const auto polygon = samples::make_plain<DL::DLPolygon>();
  DL::DisplayListDebug statistics;
  statistics.m_cDrawableBytes = 1000;
  std::ostringstream os;
  dot->dump(os, 0, statistics);
  polygon->dump(os, 0, statistics);
  EXPECT_EQ(statistics.m_cDrawableBytes, 1000U + 40U + 80U);
  EXPECT_EQ(statistics.m_cEntryBytes, 64U);
}

TEST(DumpLine, IsFlushed) {
  class CountingBuffer final : public std::stringbuf {
   public:
    int flushes = 0;

   protected:
    int sync() override {
      ++flushes;
      return 0;
    }
  };
  CountingBuffer buffer;
  std::ostream os(&buffer);
  DL::DisplayListDebug statistics;
  samples::make_plain<DL::DLDot>()->dump(os, 0, statistics);
  EXPECT_EQ(buffer.flushes, 1);
}

}  // namespace
