#include "displaylist/platform/rendition.h"

#include <gtest/gtest.h>

namespace {

LM_Contour_Set square_clip() {
  auto clip = LM_Create<LM_Contour_Set_Data>();
  const LM_Point corners[] = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}};
  clip->add_contour(corners, 4);
  return clip;
}

TEST(ChangeCounter, NeverGivesASerialTwice) {
  const std::uint64_t first = LUMEN.next_change_serial();
  EXPECT_GT(LUMEN.next_change_serial(), first);
}

TEST(Rendition, CopiesShareUntilOneIsChanged) {
  LM_Rendition original;
  original.set_color({0x112233}, true);
  LM_Rendition copy = original;
  EXPECT_TRUE(copy.shares_data_with(original));

  copy.set_color({0x445566}, true);
  EXPECT_FALSE(copy.shares_data_with(original));
  EXPECT_EQ(original.color().word, 0x112233U);
  EXPECT_EQ(copy.color().word, 0x445566U);
}

TEST(Rendition, EqualValuesAreLeftAlone) {
  LM_Rendition original;
  original.set_color({7}, true);
  original.set_line_weight(3);
  original.set_line_pattern(LM_PATTERN_DOT);
  original.set_end_styles(LM_END_ROUND, LM_END_SQUARE);
  original.set_edge_mode(LM_EDGE_MODE_OUTLINE);
  original.set_clip_rectangle({1, 2, 3, 4});
  const auto selector = LM_Create<LM_Selector_Data>();
  original.set_selector_data(selector);
  const LM_Contour_Set clip = square_clip();
  original.set_complex_clip(clip, true);

  LM_Rendition copy = original;
  copy.set_color({7}, true);
  copy.set_line_weight(3);
  copy.set_line_pattern(LM_PATTERN_DOT);
  copy.set_end_styles(LM_END_ROUND, LM_END_SQUARE);
  copy.set_edge_mode(LM_EDGE_MODE_OUTLINE);
  copy.set_clip_rectangle({1, 2, 3, 4});
  copy.set_selector_data(selector);
  copy.set_complex_clip(clip, true);
  EXPECT_TRUE(copy.shares_data_with(original));
}

TEST(Rendition, AnEqualColorIsStampedWhenItIsNotToBeKept) {
  LM_Rendition rendition;
  rendition.set_color({7}, true);
  const std::uint64_t serial = rendition.change_serial();
  rendition.set_color({7}, true);
  EXPECT_EQ(rendition.change_serial(), serial);
  rendition.set_color({7}, false);
  EXPECT_GT(rendition.change_serial(), serial);
}

TEST(Rendition, EveryChangeIsStampedAfresh) {
  LM_Rendition rendition;
  std::uint64_t last = rendition.change_serial();
  const auto expect_fresh = [&] {
    EXPECT_GT(rendition.change_serial(), last);
    last = LUMEN.next_change_serial();
  };
  rendition.set_color({1}, true);
  expect_fresh();
  rendition.set_clip_rectangle({0, 1, 0, 1});
  expect_fresh();
  rendition.set_edge_mode(1);
  expect_fresh();
  rendition.set_selector_data(LM_Create<LM_Selector_Data>());
  expect_fresh();
  rendition.set_complex_clip(square_clip(), false);
  expect_fresh();
}

TEST(Rendition, LineStyleChangesStampTheStyleToo) {
  LM_Rendition rendition;
  std::uint64_t last = rendition.line_style().change_serial;
  const auto expect_fresh = [&] {
    EXPECT_GT(rendition.change_serial(), last);
    EXPECT_GT(rendition.line_style().change_serial, last);
    last = LUMEN.next_change_serial();
  };
  rendition.set_line_weight(5);
  expect_fresh();
  rendition.set_line_pattern(LM_PATTERN_DASH);
  expect_fresh();
  rendition.set_end_styles(LM_END_ROUND);
  expect_fresh();

  const std::uint64_t style_serial = rendition.line_style().change_serial;
  rendition.set_color({9}, true);
  EXPECT_EQ(rendition.line_style().change_serial, style_serial);
}

TEST(Rendition, CommonEndStyleTellsDifferentEndsApart) {
  LM_Rendition rendition;
  rendition.set_end_styles(LM_END_ROUND);
  EXPECT_EQ(rendition.line_style().common_end_style(), LM_END_ROUND);
  rendition.set_end_styles(LM_END_ROUND, LM_END_FLAT);
  EXPECT_EQ(rendition.line_style().common_end_style(), -1);
}

TEST(Rendition, ARectangleOfItsOwnDataMayBeSet) {
  LM_Rendition rendition;
  rendition.set_clip_rectangle({1, 2, 3, 4});
  LM_Rendition other;
  other.set_clip_rectangle(rendition.clip_rectangle());
  EXPECT_EQ(other.clip_rectangle(), (LM_Clip_Rectangle{1, 2, 3, 4}));
}

TEST(Rendition, TheHardClipFollowsTheClipWhenInvalidated) {
  LM_Rendition rendition;
  const LM_Contour_Set clip = square_clip();
  rendition.set_complex_clip(clip, true);
  EXPECT_FALSE(rendition.hard_complex_clip_validated());
  EXPECT_EQ(rendition.hard_complex_clip(), nullptr);

  rendition.validate_hard_complex_clip();
  EXPECT_TRUE(rendition.hard_complex_clip_validated());
  EXPECT_EQ(rendition.hard_complex_clip(), clip.get());

  rendition.set_complex_clip(square_clip(), false);
  EXPECT_EQ(rendition.hard_complex_clip(), clip.get());

  rendition.set_complex_clip(nullptr, true);
  EXPECT_FALSE(rendition.hard_complex_clip_validated());
  EXPECT_EQ(rendition.hard_complex_clip(), nullptr);
  rendition.validate_hard_complex_clip();
  EXPECT_TRUE(rendition.hard_complex_clip_validated());
  EXPECT_EQ(rendition.hard_complex_clip(), nullptr);
}

TEST(Rendition, ValidatingTheHardClipIsNoChange) {
  LM_Rendition original;
  original.set_complex_clip(square_clip(), true);
  LM_Rendition copy = original;
  const std::uint64_t serial = copy.change_serial();
  copy.validate_hard_complex_clip();
  EXPECT_EQ(copy.change_serial(), serial);
  EXPECT_FALSE(original.hard_complex_clip_validated());
}

TEST(Rendition, TextAttributesAreThereFromTheStart) {
  const LM_Rendition rendition;
  EXPECT_EQ(rendition.text_attributes().width_scale, 1.0F);
  EXPECT_EQ(rendition.text_attributes().rotation, 0.0F);
}

}  // namespace
