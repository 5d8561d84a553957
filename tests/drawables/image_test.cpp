#include "displaylist/drawables/image.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <memory>
#include <typeinfo>

#include "displaylist/drawables/variants.h"
#include "tests/drawables/watched_image.h"
#include "tests/support/drawable_answers.h"
#include "tests/support/drawable_chain.h"
#include "tests/support/failing_default_heap.h"
#include "tests/support/point_printing.h"
#include "tests/support/recorded_list.h"

namespace {

using answers::clipped;
using answers::Lines;
using answers::text;
using answers::unclipped;
using DL::DLImage;
using Vector = DL::VectorTemplate<long>;

struct Image : testing::Test {
  /// An image of 4 by 3 pixels whose left upper one stands at `corner`.
  static DLImage at(LogicalPoint corner) {
    return {{0x10}, {corner.x, corner.y - 100, corner.x + 50, corner.y}, picture()};
  }
  static LM_Handle<LM_Image> picture(std::int32_t width = 4, std::int32_t height = 3) {
    return LM_Create<WatchedImage>(width, height);
  }

  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
};

TEST_F(Image, StandsAtItsLeftUpperCornerWithItsCell) {
  list.m_scale = {2.0, -3.0};
  list.m_offset = {100.0, 7.0};
  DLImage image({0x10}, {10, 20, 30, 40}, picture());
  image.draw_unclipped(list);
  image.draw_clipped(list);
  ASSERT_EQ(recorded.recorder->calls().size(), 2U);
  for (const lumen::RecordedCall& call : recorded.recorder->calls()) {
    EXPECT_EQ(call.image_cell, image.m_pImageRef);
    EXPECT_EQ(*call.image_cell, image.image());
    EXPECT_EQ(call.rendition, &list.m_rendition);
  }
  EXPECT_EQ(recorded.take_lines(), (Lines{"image_unclipped color=00000010 (120,-113)",
                                          "image_clipped color=00000010 (120,-113)"}));
}

TEST_F(Image, WithBothCornersOnTheClipRectangleIsDrawnUnclipped) {
  list.m_rendition.set_clip_rectangle({-5, -2, 7, 9});  // as large as the image
  DLImage image = at({-5, 7});
  EXPECT_EQ(unclipped(recorded, image), Lines{"image_unclipped color=00000010 (-5,7)"});
}

TEST_F(Image, WithOneOfItsCornersOnePixelOutsideIsDrawnClipped) {
  list.m_rendition.set_clip_rectangle(answers::kClip);
  for (const LogicalPoint inside : {LogicalPoint{-5, -7}, {17, 28}, {-5, 28}, {17, -7}}) {
    DLImage image = at(inside);
    EXPECT_EQ(unclipped(recorded, image), Lines{"image_unclipped color=00000010 " + text(inside)});
  }
  for (const LogicalPoint outside : {LogicalPoint{-6, 0}, {0, -8}, {18, 0}, {0, 29}}) {
    DLImage image = at(outside);
    EXPECT_EQ(unclipped(recorded, image), Lines{"image_clipped color=00000010 " + text(outside)});
  }
}

TEST_F(Image, ClippedDrawingNeverTests) {
  DLImage image = at({1, 2});
  EXPECT_EQ(clipped(recorded, image), Lines{"image_clipped color=00000010 (1,2)"});
}

TEST_F(Image, IsNeitherTurnedNorClippedForATurnedView) {
  answers::turn_by_a_quarter(list);
  list.m_bRotationSecondary = true;
  DLImage image = at({1, 2});
  EXPECT_EQ(unclipped(recorded, image), Lines{"image_unclipped color=00000010 (7,14)"});
}

TEST_F(Image, BeyondTheDeviceSaturatesOrWrapsAsTheListSays) {
  list.m_scale = {4.0, -4.0};
  list.m_rendition.set_clip_rectangle({-100, 100, -100, 100});
  DLImage image({0x10}, {INT32_MAX, 0, INT32_MAX, INT32_MAX}, picture());
  EXPECT_EQ(unclipped(recorded, image),
            Lines{"image_clipped color=00000010 (-2147483648,-2147483648)"});
  list.m_bCheckOverflow = true;
  EXPECT_EQ(unclipped(recorded, image),
            Lines{"image_clipped color=00000010 (2147483647,-2147483648)"});
  EXPECT_EQ(clipped(recorded, image),
            Lines{"image_clipped color=00000010 (2147483647,-2147483648)"});
}

TEST_F(Image, FarCornerWrapsAroundAtTheEndOfTheDevicePlane) {
  list.m_rendition.set_clip_rectangle({0, INT32_MAX, 0, INT32_MAX});
  DLImage last({0x10}, {INT32_MAX - 3, 0, INT32_MAX, INT32_MAX - 2}, picture());
  DLImage beyond({0x10}, {INT32_MAX - 2, 0, INT32_MAX, INT32_MAX - 2}, picture());
  EXPECT_EQ(unclipped(recorded, last),
            Lines{"image_unclipped color=00000010 (2147483644,2147483645)"});
  EXPECT_EQ(unclipped(recorded, beyond),
            Lines{"image_clipped color=00000010 (2147483645,2147483645)"});
}

RC_GTEST_PROP(ImageProperty, IsDrawnAsThePlainWayHasIt, ()) {
  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  list.m_scale = {*rc::gen::inRange(-400, 400) / 64.0, *rc::gen::inRange(-400, 400) / 64.0};
  list.m_offset = {*rc::gen::inRange(-400, 400) / 8.0, 0.5};
  list.m_bCheckOverflow = *rc::gen::arbitrary<bool>();
  list.m_rendition.set_clip_rectangle({-20, 30, -40, 50});
  const auto coordinate =
      rc::gen::oneOf(rc::gen::inRange<std::int32_t>(-30, 40), rc::gen::arbitrary<std::int32_t>());
  const LogicalBounds rectangle{*coordinate, *coordinate, *coordinate, *coordinate};
  const std::int32_t width = *rc::gen::inRange(1, 20);
  const std::int32_t height = *rc::gen::inRange(1, 20);
  DLImage image({}, rectangle, LM_Create<WatchedImage>(width, height));
  image.draw_unclipped(list);
  LM_DCI_Point corner;
  list.transform_point(LogicalPoint{rectangle.min.x, rectangle.max.y}, corner);
  const auto inside = [](std::int64_t x, std::int64_t y) {
    return x >= -20 && x <= 30 && y >= -40 && y <= 50;
  };
  const bool unclipped = inside(corner.x, corner.y) && inside(std::int64_t{corner.x} + width - 1,
                                                              std::int64_t{corner.y} + height - 1);
  RC_ASSERT(recorded.recorder->calls().size() == 1U);
  const lumen::RecordedCall& call = recorded.recorder->calls()[0];
  RC_ASSERT(call.action == (unclipped ? "image_unclipped" : "image_clipped"));
  RC_ASSERT(call.points == std::vector<LM_DCI_Point>{corner});
}

TEST_F(Image, WithoutAnImageDrawsNothing) {
  DLImage none({0x10}, {1, 2, 3, 4}, nullptr);
  EXPECT_EQ(none.image(), nullptr);
  EXPECT_TRUE(answers::all_ways(recorded, none).empty());
  const std::unique_ptr<DL::Drawable> copy(none.clone());
  EXPECT_TRUE(answers::all_ways(recorded, *copy).empty());
}

TEST_F(Image, WithoutMemoryForItsCellDrawsNothingAndHoldsNothing) {
  const LM_Handle<LM_Image> held = picture();
  const FailingDefaultHeap no_memory;
  DLImage image({0x10}, {1, 2, 3, 4}, held);
  EXPECT_EQ(image.m_pImageRef, nullptr);
  EXPECT_EQ(image.image(), nullptr);
  EXPECT_FALSE(held->is_shared());
  EXPECT_TRUE(answers::all_ways(recorded, image).empty());
  EXPECT_EQ(bounds_of(image), LogicalBounds(1, 2, 3, 4));
}

TEST_F(Image, WidensEachCornerByItself) {
  const DLImage image({}, {10, 20, 30, 40}, picture());
  EXPECT_EQ(bounds_of(image), LogicalBounds(10, 20, 30, 40));
  LogicalBounds bounds(0, 25, 20, 50);
  image.add_bounds(bounds);
  EXPECT_EQ(bounds, LogicalBounds(0, 20, 30, 50));
  const DLImage inverted({}, {30, 20, 10, 40}, picture());
  EXPECT_EQ(bounds_of(inverted), LogicalBounds(30, 20, 10, 40));
}

TEST_F(Image, IsFoundByASearchForTheSameRectangleWhateverItShows) {
  DLImage wanted({1}, {10, 20, 30, 40}, picture());
  DLImage same({2}, {10, 20, 30, 40}, picture(9, 9));
  DLImage none({2}, {10, 20, 30, 40}, nullptr);
  EXPECT_TRUE(answers::finds(wanted, same));
  EXPECT_TRUE(answers::finds(wanted, none));
  for (const LogicalBounds other :
       {LogicalBounds{11, 20, 30, 40}, {10, 21, 30, 40}, {10, 20, 31, 40}, {10, 20, 30, 41}}) {
    DLImage image({1}, other, picture());
    EXPECT_FALSE(answers::finds(wanted, image));
  }
  DL::Search for_another_class;
  for_another_class.prototype = &wanted;
  for_another_class.type = DL::DLDot::my_type();
  EXPECT_FALSE(same.remove(for_another_class));
}

TEST_F(Image, HasItsFourEdgesAsVectorsAndNoOther) {
  DLImage image({}, {10, 20, 30, 40}, picture());
  const Vector edges[] = {
      {{10, 20}, {30, 20}}, {{30, 20}, {30, 40}}, {{30, 40}, {10, 40}}, {{10, 40}, {10, 20}}};
  ASSERT_EQ(image.get_vector_count(), 4);
  for (int i = 0; i < 4; ++i) {
    Vector vector{};
    EXPECT_TRUE(image.get_vector(i, vector));
    EXPECT_EQ(vector, edges[i]);
    EXPECT_EQ(vector.to, edges[(i + 1) % 4].from);
  }
  for (const int index : {4, -1, 5, INT32_MAX, INT32_MIN}) {
    Vector vector{{1, 2}, {3, 4}};
    EXPECT_FALSE(image.get_vector(index, vector));
    EXPECT_EQ(vector, (Vector{{1, 2}, {3, 4}}));
  }
  const std::unique_ptr<DL::DrawableVectorIterator> iterator(image.create_vector_iterator(false));
  const DL::DrawableVectorIterator& indexed = *iterator;
  EXPECT_EQ(typeid(indexed), typeid(DL::DrawableVectorIterator));
  EXPECT_EQ(iterator->m_vector, edges[0]);
  for (int i = 1; i < 4; ++i) {
    ASSERT_NE(iterator->next(), nullptr);
    EXPECT_EQ(iterator->m_vector, edges[i]);
  }
  EXPECT_EQ(iterator->next(), nullptr);
}

TEST_F(Image, IsNotStoredAndLeftOutOfAChain) {
  DLImage image({}, {1, 2, 3, 4}, picture());
  answers::expect_not_stored(image);
  const DrawableChain chain{new DL::DLDot({1}, {1, 1}), new DLImage({}, {1, 2, 3, 4}, picture()),
                            new DL::DLDot({2}, {2, 2})};
  EXPECT_EQ(answers::record_of(*chain.first(), list),
            (answers::Words{0x80000010, 1, 1, 0x20000002, 1, 0x80000010, 2, 2, 0x20000002, 2,
                            0x10000002}));
}

TEST_F(Image, DumpLineTellsTheLevel) {
  const DLImage image({}, {1, 2, 3, 4}, picture());
  answers::expect_dump(image, 3, "            DLImage: level  3", 56);
  answers::expect_dump(image, 0, "DLImage: level  0", 56);
}

}  // namespace
