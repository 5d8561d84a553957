#include <gtest/gtest.h>

#include <cmath>

#include "tests/text/texts.h"

// The size, direction and width scale that a text gives to the rendition that
// it is drawn with.

namespace {

using namespace texts;

struct TextAttributes : testing::Test, FakeList {
  /// The size that a text of this height gets.
  float size_of(double height) {
    EXPECT_TRUE(wide_text(L"a", {.height = height})->set_text_attributes(list));
    return attributes().size;
  }
  /// The rotation that a text of this rotation gets.
  float rotation_of(double rotation) {
    EXPECT_TRUE(wide_text(L"a", {.rotation = rotation})->set_text_attributes(list));
    return attributes().rotation;
  }
  std::uint64_t serial() { return attributes().change_serial; }
};

TEST_F(TextAttributes, SizeIsTheHeightByTheVerticalScale) {
  list.m_scale = {100.0, 2.5};
  EXPECT_EQ(size_of(10.0), 25.0F);
  list.m_deviceScale = {100.0, 4.0};
  list.m_bAlternateScale = true;
  EXPECT_EQ(size_of(10.0), 40.0F);
}

TEST_F(TextAttributes, SizeIsNegativeInAnUpsideDownView) {
  list.m_scale.y = -2.0;
  EXPECT_EQ(size_of(10.0), -20.0F);
}

TEST_F(TextAttributes, SizeIs32767AtMost) {
  EXPECT_EQ(size_of(32766.5), 32766.5F);
  EXPECT_EQ(size_of(32767.0), 32767.0F);
  EXPECT_EQ(size_of(32767.5), 32767.0F);
  EXPECT_EQ(size_of(50000.0), 32767.0F);
  EXPECT_EQ(size_of(1e15), 32767.0F);
  EXPECT_EQ(size_of(-50000.0), -50000.0F) << "only above";
}

TEST_F(TextAttributes, OfASizeAbove1e15AreRefusedAndNothingChanges) {
  list.m_rendition.set_color({0xABCDEF}, true);
  list.m_rendition.set_text_size(7.0F);
  list.m_rendition.set_text_rotation(1.0F);
  list.m_rendition.set_text_width_scale(2.0F);
  const LM_Rendition before = list.m_rendition;
  for (const double height : {2e15, 1.000001e15, 1e300, kInfinity}) {
    const auto text = wide_text(L"a", {.height = height});
    EXPECT_FALSE(text->set_text_attributes(list));
    EXPECT_EQ(attributes().size, 7.0F);
    EXPECT_EQ(attributes().rotation, 1.0F);
    EXPECT_EQ(attributes().width_scale, 2.0F);
    EXPECT_TRUE(list.m_rendition.shares_data_with(before));
  }
}

TEST_F(TextAttributes, AreRefusedByTheScaleInForce) {
  const auto text = wide_text(L"a", {.height = 2.0});
  list.m_scale.y = 1e15;
  EXPECT_FALSE(text->set_text_attributes(list));
  list.m_bAlternateScale = true;
  EXPECT_TRUE(text->set_text_attributes(list));
  list.m_deviceScale.y = 1e15;
  EXPECT_FALSE(text->set_text_attributes(list));
}

TEST_F(TextAttributes, OfNumbersThatAreNoneDoNoHarm) {
  EXPECT_TRUE(std::isnan(size_of(kNan)));
  EXPECT_EQ(size_of(-kInfinity), -std::numeric_limits<float>::infinity());
  for (const double rotation : {kNan, kInfinity, -kInfinity}) {
    EXPECT_EQ(rotation_of(rotation), 0.0F) << rotation;
  }
}

TEST_F(TextAttributes, RotationIsNormalizedInSinglePrecision) {
  EXPECT_EQ(rotation_of(0.5), 0.5F);
  EXPECT_EQ(rotation_of(2 * M_PI), 0.0F);
  EXPECT_EQ(rotation_of(-M_PI / 2), kTurn - static_cast<float>(M_PI / 2));
  EXPECT_FLOAT_EQ(rotation_of(-M_PI / 2), static_cast<float>(3 * M_PI / 2));
  EXPECT_EQ(rotation_of(-2 * M_PI), 0.0F);
  EXPECT_EQ(rotation_of(1e-20), 1e-20F);
  EXPECT_NEAR(rotation_of(1.0 + 20 * M_PI), 1.0F, 1e-5F);
  EXPECT_NEAR(rotation_of(1.0 - 20 * M_PI), 1.0F, 1e-5F);
}

TEST_F(TextAttributes, RotationJustBelowAFullTurnIsKept) {
  const float below = std::nextafter(kTurn, 0.0F);
  EXPECT_EQ(rotation_of(below), below) << "a last place is more than the epsilon";
  EXPECT_EQ(rotation_of(-1e-8), 0.0F);
}

TEST_F(TextAttributes, RotationIsAlwaysInOneTurn) {
  for (double rotation = -50.0; rotation < 50.0; rotation += 0.37) {
    const float stored = rotation_of(rotation);
    EXPECT_GE(stored, 0.0F);
    EXPECT_LT(stored, kTurn);
    EXPECT_NEAR(std::cos(stored), std::cos(rotation), 1e-4) << rotation;
    EXPECT_NEAR(std::sin(stored), std::sin(rotation), 1e-4) << rotation;
  }
}

TEST_F(TextAttributes, WidthScaleIsMade1) {
  list.m_rendition.set_text_width_scale(2.0F);
  EXPECT_TRUE(wide_text(L"a")->set_text_attributes(list));
  EXPECT_EQ(attributes().width_scale, 1.0F);
}

/// Turns the view: x' = r4 x + r1 y + r2, y' = r0 x + r5 y + r3.
void turn(DL::DisplayList& list, double r0, double r1, double r4, double r5) {
  list.m_bRotated = true;
  const double rotation[6] = {r0, r1, 1234.0, -5678.0, r4, r5};
  std::copy(rotation, rotation + 6, list.m_rotation);
}

TEST_F(TextAttributes, RotationFollowsATurnedView) {
  turn(list, std::sin(0.3), -std::sin(0.3), std::cos(0.3), std::cos(0.3));
  EXPECT_FLOAT_EQ(rotation_of(0.5), 0.8F);
  turn(list, 5 * std::sin(0.3), -5 * std::sin(0.3), 5 * std::cos(0.3), 5 * std::cos(0.3));
  EXPECT_FLOAT_EQ(rotation_of(0.5), 0.8F) << "a larger one";
}

TEST_F(TextAttributes, RotationIsMirroredByAMirroredView) {
  turn(list, 0.0, 0.0, 1.0, -1.0);
  EXPECT_FLOAT_EQ(rotation_of(0.5), static_cast<float>(2 * M_PI - 0.5));
  turn(list, 0.0, 0.0, -1.0, 1.0);
  EXPECT_FLOAT_EQ(rotation_of(0.5), static_cast<float>(M_PI - 0.5));
}

TEST_F(TextAttributes, RotationIsThatOfTheMappedDirectionInAnyLinearView) {
  const double r[] = {0.7, -1.3, 2.1, 0.4};
  turn(list, r[0], r[1], r[2], r[3]);
  for (const double angle : {0.0, 0.5, 2.0, 3.5, 6.0}) {
    const double x = r[2] * std::cos(angle) + r[1] * std::sin(angle);
    const double y = r[0] * std::cos(angle) + r[3] * std::sin(angle);
    const float stored = rotation_of(angle);
    EXPECT_NEAR(std::cos(stored), x / std::hypot(x, y), 1e-6);
    EXPECT_NEAR(std::sin(stored), y / std::hypot(x, y), 1e-6);
  }
}

TEST_F(TextAttributes, RotationOfAViewThatIsNotTurnedIsNotLookedAt) {
  turn(list, 1.0, -1.0, 0.0, 0.0);
  list.m_bRotated = false;
  EXPECT_EQ(rotation_of(0.5), 0.5F);
}

TEST_F(TextAttributes, ThatAreThereAlreadyChangeNothing) {
  for (const double rotation : {0.5, -M_PI / 2, 2 * M_PI, 100.0}) {
    const auto text = wide_text(L"a", {.height = 50000.0, .rotation = rotation});
    EXPECT_TRUE(text->set_text_attributes(list));
    const LM_Rendition copy = list.m_rendition;
    const std::uint64_t before = serial();
    const std::uint64_t data_before = list.m_rendition.change_serial();
    EXPECT_TRUE(text->set_text_attributes(list));
    EXPECT_EQ(serial(), before) << rotation;
    EXPECT_EQ(list.m_rendition.change_serial(), data_before);
    EXPECT_TRUE(list.m_rendition.shares_data_with(copy));
  }
}

TEST_F(TextAttributes, ThatDifferGetAFreshSerialEach) {
  const auto text = wide_text(L"a", {.rotation = 0.5});
  const auto set = [&] {
    const std::uint64_t before = serial();
    const std::uint64_t given_out = LUMEN.next_change_serial();
    EXPECT_TRUE(text->set_text_attributes(list));
    EXPECT_GT(serial(), before);
    EXPECT_GT(serial(), given_out);
  };
  set();
  list.m_rendition.set_text_size(1.0F);
  set();
  list.m_rendition.set_text_rotation(1.0F);
  set();
  list.m_rendition.set_text_width_scale(3.0F);
  set();
}

TEST_F(TextAttributes, AreNotSeenByOtherHandlesOfTheRendition) {
  list.m_rendition.set_text_size(7.0F);
  const LM_Rendition copy = list.m_rendition;
  const std::uint64_t before = serial();
  EXPECT_TRUE(wide_text(L"a", {.height = 30.0, .rotation = 1.0})->set_text_attributes(list));
  EXPECT_EQ(copy.text_attributes().size, 7.0F);
  EXPECT_EQ(copy.text_attributes().rotation, 0.0F);
  EXPECT_EQ(copy.text_attributes().change_serial, before);
  EXPECT_EQ(attributes().size, 30.0F);
}

TEST_F(TextAttributes, AreGivenToTheRenditionOfAPalettizedText) {
  LM_Rendition own;
  const auto text = palettized_text(&own, L"a", {.height = 30.0, .rotation = 1.0});
  const LM_Rendition before = list.m_rendition;
  EXPECT_TRUE(text->set_text_attributes(list));
  EXPECT_EQ(own.text_attributes().size, 30.0F);
  EXPECT_EQ(own.text_attributes().rotation, 1.0F);
  EXPECT_TRUE(list.m_rendition.shares_data_with(before));
}

TEST_F(TextAttributes, GoWithTheColorOfThePlainText) {
  EXPECT_TRUE(wide_text(L"a")->set_text_attributes(list));
  EXPECT_EQ(list.m_rendition.color(), kColor);
}

}  // namespace
