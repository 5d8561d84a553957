#include <gtest/gtest.h>

#include <limits>

#include "tests/lumen/picking.h"

using picking::Arc;
using picking::Draw;
using picking::image_of;
using picking::Picker;
using picking::points;
using text_art::black;
using text_art::Points;
using text_art::Rows;

namespace {

constexpr std::int32_t lowest = INT32_MIN;
constexpr std::int32_t highest = INT32_MAX;

TEST(SelectorBadInput, EmptyAndMissingBoxesAreNotTouched) {
  Picker picker;
  const Draw all = picking::polygon(points({{-9, -9}, {9, -9}, {9, 9}, {-9, 9}}));
  const Draw line = picking::polyline(points({{-9, 0}, {9, 0}}));
  all(picker.device.actions, picker.rendition);
  EXPECT_FALSE(picker.device.touched());
  for (const LM_Clip_Rectangle& box :
       {LM_Clip_Rectangle{1, 0, 0, 5}, {0, 5, 1, 0}, {highest, lowest, highest, lowest}}) {
    EXPECT_FALSE(picker.touches(box, all));
    EXPECT_FALSE(picker.touches(box, line));
    EXPECT_FALSE(picker.touches(box, picking::dot({0, 0, 0})));
    EXPECT_FALSE(picker.touches(box, picking::image({0, 0, 0}, image_of(lumen::Picture(2, 2)))));
  }
  picker.rendition.set_clip_rectangle({5, -5, 5, -5});
  EXPECT_FALSE(picker.touches({-9, 9, -9, 9}, all));
}

TEST(SelectorBadInput, LongSidesAreCutToThoseOfAPicture) {
  Picker picker;
  const std::int32_t last = lowest + lumen::Picture::max_side - 1;
  const LM_Clip_Rectangle plane;
  EXPECT_TRUE(picker.touches(plane, picking::dot({last, lowest, 0})));
  EXPECT_FALSE(picker.touches(plane, picking::dot({last + 1, lowest, 0})));
  EXPECT_TRUE(picker.touches({highest - 9, highest, 0, 9}, picking::dot({highest, 9, 0})));
}

TEST(SelectorBadInput, CountsOfNothingTouchNothing) {
  lumen::SelectorDevice device;
  LM_Rendition rendition;
  device.set_pick_box({-9, 9, -9, 9});
  const LM_RGB32 colors[] = {black, black};
  for (const std::int32_t count : {0, -1, lowest}) {
    device.actions.polyline_clipped(&rendition, count, nullptr);
    device.actions.gouraud_polyline_clipped(&rendition, count, nullptr, colors);
    device.actions.polygon_clipped(&rendition, count, nullptr, 0);
    device.actions.triangle_strip_clipped(&rendition, count, nullptr);
    device.actions.gouraud_triangle_strip_clipped(&rendition, count, nullptr, colors);
    device.actions.textured_triangle_strip_clipped(&rendition, count, nullptr, colors, nullptr, 0,
                                                   nullptr, nullptr);
    device.actions.marker_clipped(&rendition, count, nullptr);
  }
  for (const Draw& draw :
       {picking::polygon(points({{0, 0}, {5, 5}})), picking::strip(points({{0, 0}, {5, 5}}))}) {
    draw(device.actions, rendition);
  }
  EXPECT_FALSE(device.touched());
}

TEST(SelectorBadInput, NullsWhereTheyMayBeTouchNothing) {
  lumen::SelectorDevice device;
  LM_Rendition rendition;
  device.set_pick_box({-9, 9, -9, 9});
  const Points path = points({{0, 0}, {5, 0}, {0, 5}});
  LM_Image* const no_image = nullptr;
  device.actions.image_clipped(&rendition, path.data(), nullptr);
  device.actions.image_clipped(&rendition, path.data(), &no_image);
  device.actions.gouraud_polyline_clipped(&rendition, 3, path.data(), nullptr);
  device.actions.gouraud_triangle_strip_clipped(&rendition, 3, path.data(), nullptr);
  device.actions.textured_triangle_strip_clipped(&rendition, 3, path.data(), nullptr, nullptr, 7,
                                                 nullptr, nullptr);
  picking::image({0, 0, 0}, image_of(lumen::Picture()))(device.actions, rendition);
  EXPECT_FALSE(device.touched());
}

TEST(SelectorBadInput, ArcsThatAreNoneTouchNothing) {
  constexpr float nan = std::numeric_limits<float>::quiet_NaN();
  constexpr float infinite = std::numeric_limits<float>::infinity();
  Picker picker;
  for (const Arc& arc : {Arc{{0, 0, 0}, {5, 5, 0}, nan, 1, 0}, Arc{{0, 0, 0}, {5, 5, 0}, 0, nan, 0},
                         Arc{{0, 0, 0}, {5, 5, 0}, 0, 1, infinite}, Arc{{0, 0, 0}, {-1, 5, 0}},
                         Arc{{0, 0, 0}, {5, lowest, 0}}, Arc{{0, 0, 0}, {lowest, lowest, 0}}}) {
    for (const Draw& draw : {picking::arc_line(arc), picking::filled_arc(arc, black),
                             picking::pie(arc), picking::area(arc, black)}) {
      EXPECT_FALSE(picker.touches({-9, 9, -9, 9}, draw));
    }
  }
}

TEST(SelectorBadInput, ExtremeCoordinatesAreLikeAnyOther) {
  const Points corners = points({{lowest, lowest}, {highest, highest}, {highest, lowest}});
  const std::vector<LM_RGB32> colors(3, black);
  for (const std::int32_t weight : {lowest, 1, 4, highest}) {
    Picker picker;
    picker.rendition.set_line_weight(weight);
    picker.rendition.set_marker({LM_MARKER_STAR, highest});
    for (const LM_Clip_Rectangle& box :
         {LM_Clip_Rectangle{lowest, lowest + 9, lowest, lowest + 9},
          LM_Clip_Rectangle{highest - 9, highest, highest - 9, highest}, LM_Clip_Rectangle{}}) {
      EXPECT_TRUE(picker.touches(box, picking::polyline(corners)));
      EXPECT_TRUE(picker.touches(box, picking::gouraud_polyline(corners, colors)));
      EXPECT_TRUE(picker.touches(box, picking::polygon(corners)));
      EXPECT_TRUE(picker.touches(box, picking::gouraud_strip(corners, colors)));
      EXPECT_TRUE(picker.touches(box, picking::markers(corners)));
    }
  }
}

TEST(SelectorBadInput, PatternsRunAcrossThePlane) {
  const Draw line = picking::polyline(points({{lowest, 7}, {highest, 7}}));
  Picker picker;
  picker.rendition.set_line_pattern(LM_PATTERN_DOT);
  // 2 of 6 pixels; 2^32 is 4 more than a multiple of 6.
  EXPECT_TRUE(picker.touches(highest - 3, 7, line));
  EXPECT_FALSE(picker.touches({highest - 1, highest, 0, 9}, line));
  picker.rendition.set_line_weight(3);
  EXPECT_TRUE(picker.touches({highest - 17, highest, 0, 9}, line));
}

TEST(SelectorBadInput, StyleOutsideItsEnumerationDrawsAsAnother) {
  Picker picker;
  picker.rendition.set_line_weight(lowest);
  picker.rendition.set_line_pattern(99);
  picker.rendition.set_end_styles(-7, 99);
  EXPECT_EQ(picker.picked(3, 1, picking::polyline(points({{0, 0}, {1, 0}}))), (Rows{"##."}));
}

}  // namespace
