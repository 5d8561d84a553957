#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tests/polythings/ellipses.h"

// What the classes of the family print, and how their palettized variants
// print and draw.

namespace {

using namespace ellipses;

std::string dump_of(const DL::Drawable& drawable, std::uint32_t bytes) {
  std::ostringstream os;
  DL::DisplayListDebug statistics;
  drawable.dump(os, 2, statistics);
  EXPECT_EQ(statistics.m_cDrawableBytes, bytes);
  EXPECT_EQ(statistics.m_cEntryBytes, 32U);
  std::ostringstream address;
  address << ", this = " << &drawable << '\n';
  const std::string line = os.str();
  const std::size_t at = line.find(address.str());
  return at == std::string::npos ? line : line.substr(0, at);
}

TEST(EllipseVariants, DumpLinesOfTheFamilyAreLetterForLetter) {
  EXPECT_EQ(dump_of(ellipse({}), 64), "        DLEllipse: level  2");
  EXPECT_EQ(dump_of(arc({}), 72), "        EllipsticalArc: level  2");
  EXPECT_EQ(dump_of(pie({}), 72), "        DLEllipticalPie: level  2");
  EXPECT_EQ(dump_of(colorized({}), 80), "        DLColorizedEllipse: level  2");
}

TEST(EllipseVariants, DumpLinesOfPalettizedOnesAreThoseOfTheirClass) {
  LM_Rendition own;
  DL::DisplayList* const none = nullptr;
  const LogicalPoint center{1, 2};
  const DL::PalettizedDrawable<DL::DLEllipse> whole(&own, center, 3, 4, 0.5F, none);
  const DL::PalettizedDrawable<DL::DLEllipticalArc> part(&own, center, 3, 4, 0.5F, 1.0F, 2.0F,
                                                         none);
  const DL::PalettizedDrawable<DL::DLEllipticalPie> sector(&own, center, 3, 4, 0.5F, 1.0F, 2.0F,
                                                           none);
  EXPECT_EQ(dump_of(whole, 64), "        DLEllipse: level  2");
  EXPECT_EQ(dump_of(part, 72), "        EllipsticalArc: level  2");
  EXPECT_EQ(dump_of(sector, 72), "        DLEllipticalPie: level  2");
}

TEST(EllipseVariants, PalettizedIsDrawnWithItsOwnRendition) {
  RecordedList recorded;
  recorded.list.m_rendition.set_color({0x123456}, true);
  LM_Rendition own;
  own.set_color({0x99}, true);
  DL::DisplayList* const none = nullptr;
  const LogicalPoint center{1, 2};
  DL::PalettizedDrawable<DL::DLEllipse> whole(&own, center, 30, 40, 0.5F, none);
  DL::PalettizedDrawable<DL::DLEllipticalArc> part(&own, center, 30, 40, 0.5F, 1.0F, 2.0F, none);
  DL::PalettizedDrawable<DL::DLEllipticalPie> sector(&own, center, 30, 40, 0.5F, 1.0F, 2.0F, none);
  for (DL::Drawable* drawable : std::initializer_list<DL::Drawable*>{&whole, &part, &sector}) {
    const auto calls = drawn(recorded, *drawable);
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].rendition, &own);
    EXPECT_EQ(calls[0].color.word, 0x99U);
  }
  EXPECT_EQ(recorded.list.m_rendition.color().word, 0x123456U);
}

}  // namespace
