#include "displaylist/platform/rendition.h"

#include <gtest/gtest.h>

#include <vector>

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

TEST(Rendition, DevicesDrawThroughTheClipThatValidatingWouldDerive) {
  LM_Rendition rendition;
  EXPECT_EQ(rendition.device_clip(), nullptr);
  const LM_Contour_Set clip = square_clip();
  rendition.set_complex_clip(clip, true);
  EXPECT_EQ(rendition.device_clip(), clip.get());
  EXPECT_FALSE(rendition.hard_complex_clip_validated());

  rendition.validate_hard_complex_clip();
  EXPECT_EQ(rendition.device_clip(), rendition.hard_complex_clip());
  rendition.set_complex_clip(square_clip(), false);
  EXPECT_EQ(rendition.device_clip(), clip.get());
  rendition.set_complex_clip(nullptr, false);
  EXPECT_EQ(rendition.device_clip(), clip.get());
  rendition.set_complex_clip(nullptr, true);
  EXPECT_EQ(rendition.device_clip(), nullptr);
}

/// A rendition that differs from a new one in everything.
LM_Rendition elaborate_rendition() {
  LM_Rendition rendition;
  rendition.set_color({0x112233}, true);
  rendition.set_clip_rectangle({1, 2, 3, 4});
  rendition.set_line_weight(5);
  rendition.set_line_pattern(LM_PATTERN_DOT);
  rendition.set_end_styles(LM_END_ROUND, LM_END_SQUARE);
  rendition.set_complex_clip(square_clip(), true);
  rendition.validate_hard_complex_clip();
  rendition.set_edge_mode(LM_EDGE_MODE_OUTLINE);
  LM_Marker marker;
  marker.size = 21;
  rendition.set_marker(marker);
  rendition.set_texture_pages(
      LM_Create<LM_Texture_Pages>(std::vector<LM_Handle<const LM_Image>>{}));
  rendition.set_selector_data(LM_Create<LM_Selector_Data>());
  rendition.set_text_size(13.0F);
  rendition.set_text_rotation(1.5F);
  rendition.set_text_width_scale(0.75F);
  rendition.set_shared_font(LM_Font(LM_Font_Description{}));
  return rendition;
}

void expect_equal_text(const LM_Text_Attributes& one, const LM_Text_Attributes& two) {
  EXPECT_EQ(one.size, two.size);
  EXPECT_EQ(one.rotation, two.rotation);
  EXPECT_EQ(one.width_scale, two.width_scale);
  EXPECT_EQ(one.font, two.font);
  EXPECT_EQ(one.change_serial, two.change_serial);
}

void expect_equal_state(const LM_Rendition& one, const LM_Rendition& two) {
  EXPECT_EQ(one.color(), two.color());
  EXPECT_EQ(one.clip_rectangle(), two.clip_rectangle());
  EXPECT_EQ(one.line_style().weight, two.line_style().weight);
  EXPECT_EQ(one.line_style().pattern, two.line_style().pattern);
  EXPECT_EQ(one.line_style().start_style, two.line_style().start_style);
  EXPECT_EQ(one.line_style().end_style, two.line_style().end_style);
  EXPECT_EQ(one.line_style().change_serial, two.line_style().change_serial);
  EXPECT_EQ(one.complex_clip(), two.complex_clip());
  EXPECT_EQ(one.hard_complex_clip_validated(), two.hard_complex_clip_validated());
  EXPECT_EQ(one.hard_complex_clip(), two.hard_complex_clip());
  EXPECT_EQ(one.edge_mode(), two.edge_mode());
  EXPECT_EQ(one.marker(), two.marker());
  EXPECT_EQ(one.texture_pages(), two.texture_pages());
  EXPECT_EQ(one.selector_data(), two.selector_data());
  EXPECT_EQ(one.change_serial(), two.change_serial());
  expect_equal_text(one.text_attributes(), two.text_attributes());
}

TEST(Rendition, CopiedStateIsEqualInEverything) {
  const LM_Rendition original = elaborate_rendition();
  LM_Rendition copy;
  copy.copy_state(original);
  expect_equal_state(copy, original);
  EXPECT_FALSE(copy.shares_data_with(original));

  LM_Rendition plain;
  copy.copy_state(plain);
  expect_equal_state(copy, plain);
}

TEST(Rendition, AfterCopyingStateNeitherHandleSeesChangesOfTheOther) {
  LM_Rendition original = elaborate_rendition();
  LM_Rendition copy;
  copy.copy_state(original);
  copy.set_shared_text_size(70.0F);
  copy.set_shared_text_rotation(0.5F);
  copy.set_shared_font(LM_Font());
  copy.set_color({0x445566}, true);
  LM_Rendition untouched;
  untouched.copy_state(original);
  expect_equal_state(original, untouched);
  EXPECT_EQ(original.text_attributes().size, 13.0F);
  EXPECT_EQ(original.color().word, 0x112233U);

  original.set_shared_text_size(80.0F);
  EXPECT_EQ(copy.text_attributes().size, 70.0F);
  EXPECT_EQ(untouched.text_attributes().size, 13.0F);
}

TEST(Rendition, CopyingStatePartsHandlesThatShare) {
  LM_Rendition original = elaborate_rendition();
  LM_Rendition same_data = original;
  same_data.copy_state(original);
  expect_equal_state(same_data, original);
  EXPECT_FALSE(same_data.shares_data_with(original));

  // Data of its own, but still the text attributes of the other.
  LM_Rendition same_text = original;
  same_text.set_color({1}, true);
  ASSERT_EQ(&same_text.text_attributes(), &original.text_attributes());
  same_text.copy_state(original);
  expect_equal_state(same_text, original);

  original.set_shared_text_size(80.0F);
  EXPECT_EQ(same_data.text_attributes().size, 13.0F);
  EXPECT_EQ(same_text.text_attributes().size, 13.0F);
}

TEST(Rendition, CopyingStateLeavesThirdHandlesAlone) {
  const LM_Rendition original = elaborate_rendition();
  LM_Rendition target;
  target.set_text_size(9.0F);
  const LM_Rendition third = target;
  LM_Rendition third_with_text = target;
  third_with_text.set_color({3}, true);
  target.copy_state(original);
  expect_equal_state(target, original);
  EXPECT_EQ(third.color().word, 0U);
  EXPECT_EQ(third.text_attributes().size, 9.0F);
  EXPECT_EQ(third_with_text.text_attributes().size, 9.0F);
}

TEST(Rendition, CopyingStateAgainFillsTheSameBlocks) {
  LM_Rendition original = elaborate_rendition();
  LM_Rendition copy;
  copy.copy_state(original);
  const LM_Line_Style* data = &copy.line_style();
  const LM_Text_Attributes* text = &copy.text_attributes();
  for (int i = 0; i < 3; ++i) {
    original.set_line_weight(10 + i);
    original.set_shared_text_size(30.0F + static_cast<float>(i));
    copy.copy_state(original);
    expect_equal_state(copy, original);
    EXPECT_EQ(&copy.line_style(), data);
    EXPECT_EQ(&copy.text_attributes(), text);
  }
}

TEST(Rendition, CopyingItsOwnStateChangesNothing) {
  LM_Rendition rendition = elaborate_rendition();
  const LM_Rendition other = rendition;
  const LM_Rendition& itself = rendition;
  rendition.copy_state(itself);
  expect_equal_state(rendition, other);
  EXPECT_TRUE(rendition.shares_data_with(other));
}

TEST(Rendition, AFontOfItsOwnTextMayBeSet) {
  LM_Rendition rendition = elaborate_rendition();
  const LM_Font font = rendition.text_attributes().font;
  rendition.set_shared_font(rendition.text_attributes().font);
  EXPECT_EQ(rendition.text_attributes().font, font);
}

TEST(Rendition, TextAttributesAreThereFromTheStart) {
  const LM_Rendition rendition;
  EXPECT_EQ(rendition.text_attributes().width_scale, 1.0F);
  EXPECT_EQ(rendition.text_attributes().rotation, 0.0F);
}

}  // namespace
