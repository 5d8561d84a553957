#include <gtest/gtest.h>

#include <limits>

#include "tests/lumen/text_art.h"

using text_art::Canvas;
using text_art::points;
using text_art::Rows;

namespace {

LM_Contour_Set contours(LM_Fill_Rule rule, const std::vector<std::vector<LM_Point>>& list) {
  auto set = LM_Create<LM_Contour_Set_Data>(rule);
  for (const auto& contour : list) {
    set->add_contour(contour.data(), static_cast<std::int32_t>(contour.size()));
  }
  return set;
}

std::vector<LM_Point> box(float left, float top, float right, float bottom) {
  return {{left, top, 0}, {right, top, 0}, {right, bottom, 0}, {left, bottom, 0}};
}

/// Lines, a stroke, a polygon and a dot all over the picture.
void draw_everything(Canvas& canvas) {
  for (std::int32_t y = 0; y < 8; y += 2) canvas.polyline(points({{0, y}, {9, y}}));
  canvas.rendition.set_line_weight(2);
  canvas.polyline(points({{-1, 4}, {12, 4}}));
  canvas.polygon(points({{0, 6}, {10, 6}, {10, 8}, {0, 8}}));
  const LM_DCI_Point dot{1, 1, 0};
  canvas.device.actions.dot_clipped(&canvas.rendition, &dot, nullptr);
}

TEST(ComplexClip, HidesWhatIsOutsideTheContours) {
  Canvas canvas(10, 8);
  canvas.rendition.set_complex_clip(
      contours(LM_Fill_Rule::even_odd, {box(1, 1, 9, 8), box(3, 3, 6, 7)}), true);
  draw_everything(canvas);
  EXPECT_EQ(canvas.rows(), (Rows{
                               "..........",
                               ".#........",
                               ".########.",
                               ".##...###.",
                               ".##...###.",
                               "..........",
                               ".##...###.",
                               ".########.",
                           }));
}

TEST(ComplexClip, FollowsItsFillRule) {
  Canvas canvas(10, 8);
  canvas.rendition.set_complex_clip(
      contours(LM_Fill_Rule::non_zero, {box(1, 1, 9, 8), box(3, 3, 6, 7)}), true);
  canvas.polygon(points({{0, 0}, {10, 0}, {10, 8}, {0, 8}}));
  EXPECT_EQ(canvas.rows()[0], "..........");
  for (std::size_t y = 1; y < 8; ++y) EXPECT_EQ(canvas.rows()[y], ".########.");
}

TEST(ComplexClip, JoinsTheClipRectangle) {
  Canvas canvas(10, 3);
  canvas.rendition.set_clip_rectangle({5, 7, 1, 1});
  canvas.rendition.set_complex_clip(contours(LM_Fill_Rule::even_odd, {box(0, 0, 7, 3)}), true);
  canvas.polygon(points({{0, 0}, {10, 0}, {10, 3}, {0, 3}}));
  EXPECT_EQ(canvas.rows(), (Rows{"..........", ".....##...", ".........."}));
}

TEST(ComplexClip, WithoutInsideHidesAll) {
  Canvas canvas(4, 2);
  canvas.rendition.set_complex_clip(LM_Create<LM_Contour_Set_Data>(), true);
  canvas.polygon(points({{0, 0}, {4, 0}, {4, 2}, {0, 2}}));
  canvas.polyline(points({{0, 0}, {3, 0}}));
  EXPECT_EQ(canvas.rows(), (Rows{"....", "...."}));
}

TEST(ComplexClip, TakenAwayShowsAllAgain) {
  Canvas canvas(4, 1);
  canvas.rendition.set_complex_clip(contours(LM_Fill_Rule::even_odd, {box(0, 0, 2, 1)}), true);
  canvas.polyline(points({{0, 0}, {3, 0}}));
  EXPECT_EQ(canvas.rows(), Rows{"##.."});
  canvas.rendition.set_complex_clip(nullptr, true);
  canvas.polyline(points({{0, 0}, {3, 0}}));
  EXPECT_EQ(canvas.rows(), Rows{"####"});
}

TEST(ComplexClip, ClipsInTurnsAreToldApart) {
  Canvas canvas(6, 1);
  for (int turn = 0; turn < 20; ++turn) {
    const auto left = static_cast<float>(turn % 5);
    canvas.picture.clear(text_art::white);
    // Each clip dies before the next is made, and may leave it its address.
    canvas.rendition.set_complex_clip(nullptr, true);
    canvas.rendition.set_complex_clip(contours(LM_Fill_Rule::even_odd, {box(left, 0, left + 2, 1)}),
                                      true);
    canvas.polyline(points({{0, 0}, {5, 0}}));
    Rows expected{"......"};
    for (int x = turn % 5; x < std::min(turn % 5 + 2, 6); ++x) {
      expected[0][static_cast<std::size_t>(x)] = '#';
    }
    EXPECT_EQ(canvas.rows(), expected);
  }
}

TEST(ComplexClip, OneClipServesPicturesOfSeveralSizes) {
  const LM_Contour_Set clip = contours(LM_Fill_Rule::even_odd, {box(1, 0, 3, 9)});
  for (const std::int32_t width : {4, 6, 5, 4, 7, 2}) {
    Canvas canvas(width, 2);
    canvas.rendition.set_complex_clip(clip, true);
    canvas.polygon(points({{0, 0}, {9, 0}, {9, 2}, {0, 2}}));
    const std::string row = std::string(".##....").substr(0, static_cast<std::size_t>(width));
    EXPECT_EQ(canvas.rows(), (Rows{row, row}));
  }
}

TEST(ComplexClip, MasksTooLargeToBeKeptTogetherAreToldApart) {
  // A mask of 36 MB: two are more than a thread keeps.
  constexpr std::int32_t side = 6000;
  const LM_Contour_Set clips[] = {contours(LM_Fill_Rule::even_odd, {box(0, 0, 3, side)}),
                                  contours(LM_Fill_Rule::even_odd, {box(3, 0, side, side)})};
  Canvas canvas(side, side);
  for (const std::uint32_t turn : {0U, 1U, 0U, 1U}) {
    canvas.rendition.set_complex_clip(clips[turn], true);
    canvas.picture.clear(text_art::white);
    canvas.polyline(points({{0, side - 1}, {side - 1, side - 1}}));
    EXPECT_EQ(canvas.picture.pixel(2, side - 1).word & 1, turn);
    EXPECT_EQ(canvas.picture.pixel(3, side - 1).word & 1, 1 - turn);
  }
}

TEST(ComplexClip, AntialiasedEdgesCoverInPart) {
  Canvas canvas(5, 2);
  canvas.device.set_antialiased(true);
  canvas.rendition.set_complex_clip(contours(LM_Fill_Rule::even_odd, {box(1, -3, 3, 9)}), true);
  canvas.polygon(points({{-5, -5}, {20, -5}, {20, 20}, {-5, 20}}));
  EXPECT_EQ(canvas.rows(), (Rows{".5#5.", ".5#5."}));
}

TEST(ComplexClip, OddContoursAreNoHarm) {
  constexpr float huge = std::numeric_limits<float>::max();
  constexpr float nan = std::numeric_limits<float>::quiet_NaN();
  constexpr float infinity = std::numeric_limits<float>::infinity();
  for (const bool antialiased : {false, true}) {
    Canvas canvas(4, 2);
    canvas.device.set_antialiased(antialiased);
    auto set = LM_Create<LM_Contour_Set_Data>();
    set->add_contour(nullptr, 4);
    const LM_Point odd[] = {{-huge, -huge, 0}, {nan, 3, 0},      {huge, -huge, 0},
                            {huge, huge, 0},   {0, infinity, 0}, {-huge, huge, 0}};
    set->add_contour(odd, 6);
    canvas.rendition.set_complex_clip(set, true);
    canvas.polyline(points({{-9, 0}, {9, 0}}));
    EXPECT_EQ(canvas.rows(), (Rows{"####", "...."}));
  }
}

}  // namespace
