#include "displaylist/polythings/colorized_ellipse.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/polythings/ellipses.h"
#include "tests/support/drawable_chain.h"
#include "tests/support/memory_stream.h"
#include "tests/support/point_printing.h"

namespace {

using namespace ellipses;
using Lines = std::vector<std::string>;

TEST(ColorizedEllipse, AsAnArcIsDrawnLikeTheArcWithItsFill) {
  RecordedList recorded;
  recorded.list.m_scale = {2.0, -3.0};
  const Geometry g{.center = {1, 2}, .rotation = 0.3F, .start = 1.0F, .end = 2.0F, .use_arc = true};
  DL::DLEllipticalArc part = arc(g);
  DL::DLColorizedEllipse filled = colorized(g);
  part.draw_clipped(recorded.list);
  const Lines lines = recorded.take_lines();
  filled.draw_clipped(recorded.list);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(recorded.take_lines(), Lines{lines[0] + " own_color=0000FF00"});
}

TEST(ColorizedEllipse, AsAnAreaGetsTheStoredAnglesAndTheDevicesAxes) {
  for (const bool is_rotated : {false, true}) {
    RecordedList recorded;
    recorded.list.m_scale = {2.0, -3.0};
    recorded.list.m_bRotated = is_rotated;
    std::copy_n(std::initializer_list<double>{0.5, -2.0, 3.0, 4.0, 1.0, 0.25}.begin(), 6,
                recorded.list.m_rotation);
    Geometry g{.center = {1, 2}, .rotation = 0.3F, .start = -1.25F, .end = 20.5F};
    DL::DLColorizedEllipse as_arc = colorized(g);
    g.use_arc = false;
    DL::DLColorizedEllipse as_area = colorized(g);
    const auto arcs = drawn(recorded, as_arc);
    const auto areas = drawn(recorded, as_area);
    ASSERT_EQ(arcs.size(), 1U);
    ASSERT_EQ(areas.size(), 1U);
    EXPECT_EQ(arcs[0].action, "elliptical_arc");
    EXPECT_EQ(areas[0].action, "elliptical_arc_colored");
    EXPECT_EQ(areas[0].points, arcs[0].points);
    EXPECT_EQ(areas[0].angles, (std::vector<double>{-1.25, 20.5, arcs[0].angles[2]}));
    EXPECT_EQ(areas[0].own_color, kGreen);
    EXPECT_EQ(areas[0].color, kRed);
    EXPECT_EQ(areas[0].rendition, &recorded.list.m_rendition);
  }
}

TEST(ColorizedEllipse, IsDrawnAlikeClippedAndUnclipped) {
  for (const bool use_arc : {false, true}) {
    RecordedList recorded;
    DL::DLColorizedEllipse drawable = colorized({.start = 1.0F, .end = 2.0F, .use_arc = use_arc});
    for (const std::int32_t size : {1000, 1}) {
      recorded.list.m_rendition.set_clip_rectangle({-size, size, -size, size});
      drawable.draw_clipped(recorded.list);
      const Lines lines = recorded.take_lines();
      ASSERT_EQ(lines.size(), 1U);
      drawable.draw_unclipped(recorded.list);
      EXPECT_EQ(recorded.take_lines(), lines);
    }
  }
}

TEST(ColorizedEllipse, HiddenDrawsNothing) {
  RecordedList recorded;
  const std::unique_ptr<DL::Drawable> drawable(
      new DL::DLColorizedEllipse(kRed, {1, 2}, 3, 4, 0.0F, 1.0F, 2.0F, kGreen, false, nullptr));
  drawable->hide();
  EXPECT_TRUE(drawable->is_hidden());
  EXPECT_TRUE(drawn(recorded, *drawable).empty());
  drawable->unhide();
  EXPECT_EQ(drawn(recorded, *drawable).size(), 1U);
}

TEST(ColorizedEllipse, IsFoundByASearchForTheSameInEverythingButTheColor) {
  const Geometry g{.center = {1, 2}, .rotation = 0.5F, .start = 1.0F, .end = 2.0F};
  DL::DLColorizedEllipse wanted = colorized(g);
  DL::DLColorizedEllipse there = colorized(g);
  there.m_colorData.m_color = {0x77};
  EXPECT_TRUE(finds(wanted, there));
  std::vector<Geometry> others(10, g);
  others[0].center.x = 2;
  others[1].center.y = 1;
  others[2].major = 99;
  others[3].minor = 99;
  others[4].rotation = 0.25F;
  others[5].start = 1.5F;
  others[6].end = 2.5F;
  others[7].fill = kRed;
  others[8].use_arc = false;
  others[9].start = kNan;
  for (const Geometry& other : others) {
    DL::DLColorizedEllipse different = colorized(other);
    EXPECT_FALSE(finds(wanted, different));
    EXPECT_FALSE(finds(different, wanted));
  }
  DL::DLColorizedEllipse odd = colorized(others[9]);
  EXPECT_FALSE(finds(odd, odd));
}

TEST(ColorizedEllipse, CloneKeepsTheFill) {
  DL::DisplayList list;
  for (const bool use_arc : {false, true}) {
    DL::DLColorizedEllipse original = colorized({.center = {1, 2},
                                                 .rotation = 0.5F,
                                                 .start = 1.0F,
                                                 .end = 2.0F,
                                                 .use_arc = use_arc,
                                                 .list = &list});
    original.reserved = 9;
    const std::unique_ptr<DL::Drawable> copy(original.clone());
    ASSERT_EQ(copy->type(), DL::DLColorizedEllipse::my_type());
    const auto& clone = static_cast<DL::DLColorizedEllipse&>(*copy);
    EXPECT_EQ(clone.fill_color, kGreen);
    EXPECT_EQ(clone.use_arc, use_arc);
    EXPECT_EQ(clone.display_list, &list);
    EXPECT_EQ(clone.reserved, 0U);
    EXPECT_TRUE(finds(original, *copy));
  }
}

TEST(ColorizedEllipse, IsNotStored) {
  RecordedList recorded;
  DL::DLColorizedEllipse alone = colorized({});
  MemoryStream nothing;
  alone.serialize_out(&nothing, recorded.list);
  EXPECT_EQ(nothing.writes(), 0U);
  const DrawableChain chain{
      new DL::DLDot({1}, {1, 1}),
      new DL::DLColorizedEllipse(kRed, {1, 2}, 3, 4, 0.0F, 1.0F, 2.0F, kGreen, true, nullptr),
      new DL::DLDot({2}, {2, 2})};
  MemoryStream dots;
  chain.first()->serialize_out(&dots, recorded.list);
  EXPECT_EQ(dots.words(), (std::vector<std::uint32_t>{0x80000010, 1, 1, 0x20000002, 1, 0x80000010,
                                                      2, 2, 0x20000002, 2, 0x10000002}));
}

TEST(ColorizedEllipse, ReadsNothing) {
  RecordedList recorded;
  const Geometry g{.center = {1, 2}, .start = 1.0F, .end = 2.0F};
  DL::DLColorizedEllipse drawable = colorized(g);
  MemoryStream stream({1, 2, 3, 4, 5, 6, 7, 8, 9});
  drawable.serialize_in(&stream, recorded.list);
  EXPECT_EQ(stream.position(), 0U);
  DL::DLColorizedEllipse same = colorized(g);
  EXPECT_TRUE(finds(same, drawable));
}

}  // namespace
