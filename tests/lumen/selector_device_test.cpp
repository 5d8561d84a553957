#include <gtest/gtest.h>

#include "tests/lumen/picking.h"

using picking::Arc;
using picking::Draw;
using picking::image_of;
using picking::Picker;
using picking::points;
using text_art::black;
using text_art::Points;
using text_art::Rows;
using Hits = std::vector<lumen::SelectorDevice::Hit>;

namespace {

constexpr LM_RGB32 invisible{0xFF000000};
constexpr std::int32_t lowest = INT32_MIN;
constexpr std::int32_t highest = INT32_MAX;

TEST(Selector, TakesComplexClips) {
  EXPECT_TRUE(lumen::SelectorDevice().options.supports_complex_clip);
}

TEST(Selector, DotTouchesItsPixelOnly) {
  EXPECT_EQ(Picker().picked(3, 3, picking::dot({1, 2, 0})), (Rows{"...", "...", ".#."}));
}

TEST(Selector, BoxIsInclusiveOnAllSides) {
  Picker picker;
  const LM_Clip_Rectangle box{10, 12, 20, 21};
  for (const LM_DCI_Point& corner : points({{10, 20}, {12, 20}, {10, 21}, {12, 21}})) {
    EXPECT_TRUE(picker.touches(box, picking::dot(corner)));
  }
  for (const LM_DCI_Point& beside : points({{9, 20}, {13, 20}, {10, 19}, {12, 22}})) {
    EXPECT_FALSE(picker.touches(box, picking::dot(beside)));
  }
}

TEST(Selector, ThinLineTouchesItsPixels) {
  EXPECT_EQ(Picker().picked(7, 4, picking::polyline(points({{0, 0}, {5, 2}, {6, 2}}))),
            (Rows{"##.....", "..##...", "....###", "......."}));
}

TEST(Selector, WideLineTouchesItsStroke) {
  Picker picker;
  picker.rendition.set_line_weight(3);
  EXPECT_EQ(picker.picked(8, 6, picking::polyline(points({{2, 2}, {5, 2}}))),
            (Rows{"........", "..####..", "..####..", "..####..", "........", "........"}));
}

TEST(Selector, LineIsNotTouchedBetweenItsDashes) {
  for (const std::int32_t weight : {1, 2}) {
    Picker picker;
    picker.rendition.set_line_weight(weight);
    picker.rendition.set_line_pattern(LM_PATTERN_DASH);
    const Draw line = picking::polyline(points({{0, 5}, {99, 5}}));
    // Dashes of 8 and gaps of 4, times the weight.
    EXPECT_TRUE(picker.touches({0, 8 * weight - 1, 5, 5}, line));
    EXPECT_FALSE(picker.touches({9 * weight, 11 * weight, 0, 9}, line));
    EXPECT_TRUE(picker.touches({12 * weight + 1, 13 * weight, 5, 5}, line));
  }
}

TEST(Selector, PolygonIsTouchedInsideAndNotInItsHole) {
  const Draw ring = picking::polygon(
      points({{0, 0}, {9, 0}, {9, 9}, {0, 9}, {0, 0}, {3, 3}, {6, 3}, {6, 6}, {3, 6}, {3, 3}}));
  Picker picker;
  EXPECT_TRUE(picker.touches(1, 1, ring));
  EXPECT_FALSE(picker.touches({3, 5, 3, 5}, ring));
  EXPECT_TRUE(picker.touches({3, 6, 3, 5}, ring));
  EXPECT_FALSE(picker.touches({9, 20, 9, 20}, ring)) << "right and lower edges are outside";
}

TEST(Selector, BoxDeepInsideAHugeAreaTouchesIt) {
  const Draw all = picking::polygon(
      points({{lowest, lowest}, {highest, lowest}, {highest, highest}, {lowest, highest}}));
  Picker picker;
  for (const std::int32_t x : {lowest, -70000, 0, 1 << 24, highest - 1}) {
    EXPECT_TRUE(picker.touches(x, x, all)) << x;
  }
  EXPECT_FALSE(picker.touches(highest, highest, all));
}

TEST(Selector, StripTouchesEachOfItsTriangles) {
  EXPECT_EQ(Picker().picked(7, 4, picking::strip(points({{0, 0}, {0, 3}, {3, 0}, {6, 3}}))),
            (Rows{"###....", "####...", "#####..", "......."}));
}

TEST(Selector, MarkersOfEachShapeTouchTheirPixels) {
  const std::pair<std::int32_t, Rows> shapes[] = {
      {LM_MARKER_POINT, {".....", ".###.", ".###.", ".###.", "....."}},
      {LM_MARKER_PLUS, {".....", "..#..", ".###.", "..#..", "....."}},
      {LM_MARKER_CROSS, {".....", ".#.#.", "..#..", ".#.#.", "....."}},
      {LM_MARKER_STAR, {".....", ".###.", ".###.", ".###.", "....."}},
      {LM_MARKER_CIRCLE, {".....", "..#..", ".#.#.", "..#..", "....."}},
      {LM_MARKER_SQUARE, {".....", ".###.", ".#.#.", ".###.", "....."}},
      {LM_MARKER_DIAMOND, {".....", "..#..", ".#.#.", "..#..", "....."}},
      {LM_MARKER_TRIANGLE, {".....", "..#..", ".###.", ".###.", "....."}},
  };
  for (const auto& [shape, expected] : shapes) {
    Picker picker;
    picker.rendition.set_marker({shape, 3});
    EXPECT_EQ(picker.picked(5, 5, picking::markers(points({{90, 2}, {2, 2}}))), expected) << shape;
  }
}

TEST(Selector, MarkersAreFoundAtTheEndsOfThePlane) {
  Picker picker;
  picker.rendition.set_marker({LM_MARKER_SQUARE, 7});
  const Draw corner = picking::markers(points({{highest, lowest}}));
  EXPECT_TRUE(picker.touches({highest - 3, highest - 3, lowest, lowest + 3}, corner));
  EXPECT_FALSE(picker.touches({highest - 2, highest, lowest, lowest + 2}, corner));
}

TEST(Selector, ImageIsNotTouchedAtInvisiblePixels) {
  lumen::Picture picture(3, 2, black);
  picture.row(0)[1] = 0xFF123456;
  picture.row(1)[2] = 0xFE123456;
  EXPECT_EQ(Picker().picked(5, 4, picking::image({1, 1, 0}, image_of(picture))),
            (Rows{".....", ".#.#.", ".###.", "....."}));
}

TEST(Selector, ImageIsTouchedWhateverTheColorOfTheRendition) {
  Picker picker;
  picker.rendition.set_color(invisible, true);
  EXPECT_TRUE(picker.touches(0, 0, picking::image({0, 0, 0}, image_of(lumen::Picture(1, 1)))));
}

TEST(Selector, CircleIsTouchedOnItsLineOnlyUnlessFilled) {
  const Arc circle{{3, 3, 0}, {2, 2, 0}};
  const Rows ring = {".......", "..###..", ".#...#.", ".#...#.", ".#...#.", "..###..", "......."};
  const Rows disc = {".......", "..###..", ".#####.", ".#####.", ".#####.", "..###..", "......."};
  EXPECT_EQ(Picker().picked(7, 7, picking::arc_line(circle)), ring);
  EXPECT_EQ(Picker().picked(7, 7, picking::filled_arc(circle, black)), disc);
  EXPECT_EQ(Picker().picked(7, 7, picking::filled_arc(circle, invisible)), ring);
}

TEST(Selector, PieIsTouchedWithinItsAnglesOnly) {
  const Arc quarter{{0, 0, 0}, {10, 10, 0}, 0, 1.5708F, 0};
  for (const Draw& draw : {picking::pie(quarter), picking::area(quarter, black)}) {
    Picker picker;
    EXPECT_TRUE(picker.touches(5, 5, draw));
    EXPECT_FALSE(picker.touches({-9, -1, -9, 9}, draw));
    EXPECT_FALSE(picker.touches(8, 8, draw));
  }
}

TEST(Selector, FlatEllipseIsALine) {
  EXPECT_EQ(Picker().picked(5, 3, picking::pie({{2, 1, 0}, {1, 0, 0}})),
            (Rows{".....", ".###.", "....."}));
}

TEST(Selector, ArcIsFoundFurtherFromItsCenterThanCoordinatesReach) {
  Picker picker;
  picker.rendition.set_line_weight(201);
  const Draw arc = picking::arc_line({{-50, 0, 0}, {highest, highest, 0}});
  EXPECT_TRUE(picker.touches({highest - 51, highest - 49, 0, 0}, arc));
  EXPECT_TRUE(picker.touches({highest - 150, highest - 149, 0, 0}, arc));
  EXPECT_FALSE(picker.touches({highest - 153, highest - 152, 0, 0}, arc));
}

TEST(Selector, NothingIsTouchedOutsideTheClipRectangle) {
  Picker picker;
  picker.rendition.set_line_weight(5);
  picker.rendition.set_clip_rectangle({0, 9, 3, 5});
  const Draw line = picking::polyline(points({{0, 4}, {9, 4}}));
  EXPECT_EQ(picker.picked(2, 9, line),
            (Rows{"..", "..", "..", "##", "##", "##", "..", "..", ".."}));
  picker.device.set_pick_box({0, 0, 2, 2});
  const Points path = points({{0, 4}, {9, 4}});
  picker.device.actions.polyline_unclipped(&picker.rendition, 2, path.data());
  EXPECT_FALSE(picker.device.touched());
}

TEST(Selector, NothingIsTouchedOutsideTheComplexClip) {
  const auto clip = LM_Create<LM_Contour_Set_Data>(LM_Fill_Rule::even_odd);
  const LM_Point diamond[] = {
      {2.5F, -0.75F, 0}, {5.75F, 2.5F, 0}, {2.5F, 5.75F, 0}, {-0.75F, 2.5F, 0}};
  clip->add_contour(diamond, 4);
  const Draw all[] = {
      picking::polygon(points({{0, 0}, {9, 0}, {9, 9}, {0, 9}})),
      picking::strip(points({{0, 0}, {0, 9}, {9, 0}, {9, 9}})),
      picking::image({0, 0, 0}, image_of(lumen::Picture(9, 9))),
      picking::area({{3, 3, 0}, {9, 9, 0}}, black),
  };
  for (const Draw& draw : all) {
    Picker picker;
    picker.rendition.set_complex_clip(clip, true);
    EXPECT_FALSE(picker.touches(0, 0, draw));
    EXPECT_TRUE(picker.touches({0, 1, 0, 1}, draw));
    EXPECT_TRUE(picker.touches(2, 2, draw));
    EXPECT_FALSE(picker.touches({6, 8, 0, 8}, draw));
    EXPECT_FALSE(picker.touches({-9, -1, 0, 8}, draw));
    EXPECT_TRUE(picker.touches({-9, 9, -9, 9}, draw));
  }
  Picker picker;
  picker.rendition.set_complex_clip(clip, true);
  EXPECT_FALSE(picker.touches(0, 0, picking::dot({0, 0, 0})));
  EXPECT_TRUE(picker.touches(2, 2, picking::dot({2, 2, 0})));
  EXPECT_EQ(picker.picked(7, 3, picking::polyline(points({{0, 2}, {6, 2}})))[2], "######.");
}

TEST(Selector, InvisibleInkIsNotTouched) {
  const Points path = points({{0, 0}, {9, 0}, {0, 9}});
  const std::vector<LM_RGB32> hidden(3, invisible);
  const LM_Clip_Rectangle box{0, 9, 0, 9};
  Picker picker;
  picker.rendition.set_color(invisible, true);
  for (const Draw& draw :
       {picking::dot({1, 1, 0}), picking::polyline(path), picking::polygon(path),
        picking::strip(path), picking::markers(path), picking::arc_line({{4, 4, 0}, {3, 3, 0}}),
        picking::pie({{4, 4, 0}, {3, 3, 0}}), picking::area({{4, 4, 0}, {3, 3, 0}}, invisible),
        picking::gouraud_polyline(path, hidden), picking::gouraud_strip(path, hidden),
        picking::textured_strip(path, hidden)}) {
    EXPECT_FALSE(picker.touches(box, draw));
  }
}

TEST(Selector, OneVisibleVertexMakesTheWholeVisible) {
  const Points path = points({{0, 0}, {9, 0}, {0, 9}});
  const std::vector<LM_RGB32> colors = {invisible, invisible, {0x00FF0000}};
  Picker picker;
  picker.rendition.set_color(invisible, true);
  EXPECT_TRUE(picker.touches(3, 0, picking::gouraud_polyline(path, colors)));
  EXPECT_TRUE(picker.touches(3, 1, picking::gouraud_strip(path, colors)));
  EXPECT_TRUE(picker.touches(3, 1, picking::textured_strip(path, colors)));
}

TEST(Selector, TexturedStripOnInvisibleGroundNeedsAPage) {
  const Points path = points({{0, 0}, {9, 0}, {0, 9}});
  const std::vector<LM_RGB32> ground(3, invisible);
  const auto strip = [&](std::uint32_t page) {
    return picking::textured_strip(path, ground, {3, LM_Vertex_Triple::at(0, 0, page)});
  };
  Picker picker;
  EXPECT_FALSE(picker.touches(2, 2, strip(1)));
  const LM_Handle<const LM_Image> page = image_of(lumen::Picture(1, 1, invisible));
  picker.rendition.set_texture_pages(
      LM_Create<LM_Texture_Pages>(std::vector<LM_Handle<const LM_Image>>{nullptr, page}));
  EXPECT_FALSE(picker.touches(2, 2, strip(0)));
  EXPECT_TRUE(picker.touches(2, 2, strip(1))) << "texels are not looked at";
  EXPECT_FALSE(picker.touches(2, 2, strip(2)));
}

TEST(Selector, OwnColorOfADotDecides) {
  Picker picker;
  const LM_DCI_Point point{1, 1, 0};
  for (const bool visible : {false, true}) {
    const LM_RGB32 color = visible ? black : invisible;
    picker.rendition.set_color(visible ? invisible : black, true);
    picker.device.set_pick_box({1, 1, 1, 1});
    picker.device.actions.dot_unclipped(&picker.rendition, &point, &color);
    EXPECT_EQ(picker.device.touched(), visible);
  }
}

/// A picker that is asked under one key after the other.
struct SelectorHits : testing::Test {
  SelectorHits() {
    picker.device.set_pick_box({0, 0, 0, 0});
    picker.rendition.set_selector_data(selector);
  }
  void draw(const void* key, std::int32_t index, const Draw& draw) {
    selector->set_selection_key(key, index);
    draw(picker.device.actions, picker.rendition);
  }

  Picker picker;
  LM_Handle<LM_Selector_Data> selector = LM_Create<LM_Selector_Data>();
  const Draw hit = picking::dot({0, 0, 0});
  const Draw miss = picking::dot({1, 0, 0});
  int one = 0;
  int other = 0;
};

TEST_F(SelectorHits, AreNotedInDrawingOrder) {
  draw(&one, 0, miss);
  EXPECT_TRUE(picker.device.hits().empty());
  draw(&other, 0, hit);
  draw(&one, 2, hit);
  EXPECT_EQ(picker.device.hits(), (Hits{{&other, 0}, {&one, 2}}));
}

TEST_F(SelectorHits, SeveralActionsUnderOneKeyAreOneHit) {
  draw(&one, 0, hit);
  draw(&one, 0, miss);
  draw(&one, 0, hit);
  draw(&one, 1, hit);
  draw(&other, 1, hit);
  draw(&one, 1, hit);
  EXPECT_EQ(picker.device.hits(), (Hits{{&one, 0}, {&one, 1}, {&other, 1}, {&one, 1}}));
}

TEST_F(SelectorHits, HaveNoKeyWithoutSelectorData) {
  picker.rendition.set_selector_data(nullptr);
  draw(&one, 3, hit);
  draw(&one, 3, hit);
  EXPECT_EQ(picker.device.hits(), (Hits{{nullptr, 0}}));
}

TEST_F(SelectorHits, AreForgottenByClearAndWithANewBox) {
  draw(&one, 0, hit);
  picker.device.clear();
  EXPECT_FALSE(picker.device.touched());
  draw(&one, 0, hit);
  EXPECT_EQ(picker.device.hits().size(), 1U);
  picker.device.set_pick_box({1, 1, 0, 0});
  EXPECT_FALSE(picker.device.touched());
  draw(&one, 0, miss);
  EXPECT_EQ(picker.device.hits().size(), 1U);
}

TEST_F(SelectorHits, DoNotHoldTheSelectorData) {
  draw(&one, 0, hit);
  picker.rendition.set_selector_data(nullptr);
  EXPECT_FALSE(selector->is_shared());
}

}  // namespace
