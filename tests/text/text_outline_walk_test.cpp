#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/text/text_walks.h"

// The outlines that a walk over a text goes along.

namespace {

using namespace text_walks;

struct TextOutlineWalk : TextWalk {};

TEST_F(TextOutlineWalk, OutlinesAreInLogicalUnits) {
  list.m_scale = {2.0, 4.0};
  list.m_offset = {100.0, 200.0};
  renderer->corners = {{{120, 280, 0}, {180, 280, 0}, {180, 320, 0}, {120, 320, 0}}};
  renderer->outlines['a'] = contours({{{0, 0, 0}, {6, 0, 0}, {0, 40, 0}}});
  renderer->outlines['b'] = renderer->outlines['a'];
  renderer->advances['a'] = 8.0F;
  EXPECT_EQ(walk(*text_of(L"ab"), false), together({around({{10, 20}, {13, 20}, {10, 30}}),
                                                    around({{14, 20}, {17, 20}, {14, 30}})}));
}

TEST_F(TextOutlineWalk, OutlinesAreByTheAlternateScaleWhereItIsInForce) {
  list.m_bAlternateScale = true;
  list.m_scale = {99.0, 99.0};
  list.m_deviceScale = {10.0, 20.0};
  list.m_deviceOffset = {1000.0, 2000.0};
  renderer->outlines['a'] = contours({{{0, 0, 0}, {30, 0, 0}, {0, 40, 0}}});
  EXPECT_EQ(walk(*text_of(L"a"), false), around({{10, 20}, {13, 20}, {10, 22}}));
}

TEST_F(TextOutlineWalk, OutlinesAreTurnedWithTheTextAndMirroredInAnUpsideDownView) {
  renderer->outlines['a'] = contours({{{0, 0, 0}, {4, 0, 0}, {0, 8, 0}}});
  EXPECT_EQ(walk(*text_of(L"a", {.rotation = M_PI / 2}), false),
            around({{10, 20}, {10, 24}, {2, 20}}));
  list.m_scale.y = -1.0;
  EXPECT_EQ(walk(*text_of(L"a", {.rotation = M_PI / 2}), false),
            around({{10, 20}, {10, 24}, {18, 20}}));
}

TEST_F(TextOutlineWalk, OutlinesFollowTheDirectionOfTheTextsBox) {
  renderer->corners = {{{10, 20, 0}, {13, 24, 0}, {9, 27, 0}, {6, 23, 0}}};
  renderer->outlines['b'] = contours({{{0, 0, 0}, {1, 0, 0}}});
  renderer->advances['a'] = 10.0F;
  const auto text = text_of(L"ab", {.rotation = std::atan2(4.0, 3.0)});
  EXPECT_EQ(walk(*text, false), around({{16, 28}, {17, 29}}));
}

TEST_F(TextOutlineWalk, OutlinesOfSeveralContoursGoOnWithTheNextOne) {
  renderer->outlines['a'] = contours({{{0, 0, 0}, {4, 0, 0}, {4, 4, 0}}, {{1, 1, 0}, {2, 2, 0}}});
  EXPECT_EQ(walk(*text_of(L"a"), false),
            together({around({{10, 20}, {14, 20}, {14, 24}}), around({{11, 21}, {12, 22}})}));
}

TEST_F(TextOutlineWalk, OutlinesWithoutPointsAreLeftOut) {
  renderer->outlines['a'] = contours({{}, {{5, 5, 0}}, {}});
  renderer->outlines['b'] = contours({});
  renderer->outlines['b']->add_contour(nullptr, 3);
  renderer->outlines['d'] = contours({{{0, 0, 0}, {1, 0, 0}}});
  renderer->advances['a'] = 1.0F;
  renderer->advances['c'] = 100.0F;
  renderer->widths = {1, 1, 1, 1};
  EXPECT_EQ(walk(*text_of(L"abcd"), false),
            together({{{{15, 25}, {15, 25}}}, around({{111, 20}, {112, 20}})}))
      << "a contour of one point is a segment of no length";
}

TEST_F(TextOutlineWalk, OutlineOfASurrogatePairIsThereOnce) {
  renderer->outlines[0x1F600] = contours({{{0, 0, 0}, {4, 0, 0}}});
  renderer->outlines['b'] = renderer->outlines[0x1F600];
  renderer->advances[0x1F600] = 6.0F;
  renderer->widths = {1, 1, 1};
  EXPECT_EQ(walk(*text_of({wchar_t{0xD83D}, wchar_t{0xDE00}, 'b'}), false),
            together({around({{10, 20}, {14, 20}}), around({{16, 20}, {20, 20}})}));
}

TEST_F(TextOutlineWalk, OutlinesOfAMultibyteTextAreThereToo) {
  renderer->outlines['b'] = contours({{{0, 0, 0}, {4, 0, 0}}});
  EXPECT_EQ(walk(*multibyte_text("ab", {.list = &list}), false), around({{10, 20}, {14, 20}}));
}

TEST_F(TextOutlineWalk, CornersAreRoundedToNearest) {
  renderer->corners = {{{0.5F, 1.5F, 0}, {2.5F, -0.5F, 0}, {2.4F, 9.6F, 0}, {-1.6F, 7, 0}}};
  EXPECT_EQ(walk(*text_of(L"ab", {.height = 1.0}), false),
            around({{0, 2}, {2, 0}, {2, 10}, {-2, 7}}));
}

TEST_F(TextOutlineWalk, CornersFarOutAreSaturated) {
  const float inf = std::numeric_limits<float>::infinity();
  renderer->corners = {{{3e9F, -3e9F, 0}, {inf, -inf, 0}, {NAN, 0, 0}, {0, 0, 0}}};
  EXPECT_EQ(walk(*text_of(L"ab", {.height = 1.0}), false),
            around({{INT32_MAX, INT32_MIN}, {INT32_MAX, INT32_MIN}, {INT32_MIN, 0}, {0, 0}}));
}

}  // namespace
