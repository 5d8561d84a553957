#include "displaylist/drawables/drawable_junk.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "tests/support/point_printing.h"
#include "tests/support/recorded_list.h"

namespace {

TEST(DrawableJunk, DrawsNothing) {
  RecordedList recorded;
  DrawableJunk junk;
  DL::Drawable& drawable = junk;
  drawable.draw_unclipped(recorded.list);
  drawable.draw_clipped(recorded.list);
  drawable.draw_unclipped_selection(recorded.list);
  drawable.draw_clipped_selection(recorded.list);
  EXPECT_TRUE(recorded.take_lines().empty());
}

TEST(DrawableJunk, HasNoBounds) {
  const DrawableJunk junk;
  EXPECT_TRUE(bounds_of(junk).is_empty());
  LogicalBounds bounds(1, 2, 3, 4);
  junk.add_bounds(bounds);
  EXPECT_EQ(bounds, LogicalBounds(1, 2, 3, 4));
}

TEST(DrawableJunk, MatchesNoSearchAndHasNoTypeAndNoCopy) {
  DrawableJunk junk;
  DL::Search search;
  search.prototype = &junk;
  search.type = junk.type();
  EXPECT_FALSE(junk.remove(search));
  EXPECT_EQ(junk.type(), nullptr);
  EXPECT_EQ(junk.clone(), nullptr);
  EXPECT_EQ(junk.partial_clone(0, 1), nullptr);
}

TEST(DrawableJunk, IsOfNoKind) {
  const DrawableJunk junk;
  EXPECT_FALSE(junk.isKindOf(DL::Drawable::my_type()));
  EXPECT_FALSE(junk.isKindOf(DL::DLDot::my_type()));
}

TEST(DrawableJunk, IsDoneAtOnceInAnIterator) {
  DrawableJunk junk;
  EXPECT_EQ(junk.get_vector_count(), 0);
  const std::unique_ptr<DL::DrawableVectorIterator> iterator(junk.create_vector_iterator(true));
  ASSERT_NE(iterator, nullptr);
  EXPECT_TRUE(iterator->m_bDone);
}

TEST(DrawableJunk, PrintsTheBaseLineAndCountsNoMemory) {
  const DrawableJunk junk;
  std::ostringstream os;
  DL::DisplayListDebug statistics;
  junk.dump(os, 2, statistics);
  std::ostringstream expected;
  expected << "        Drawable: level  2, this = " << static_cast<const void*>(&junk) << '\n';
  EXPECT_EQ(os.str(), expected.str());
  EXPECT_EQ(statistics.m_cDrawableBytes, 0U);
  EXPECT_EQ(statistics.m_cEntryBytes, 0U);
  EXPECT_EQ(statistics.m_cDrawables, 0U);
}

TEST(DrawableJunk, CanBeHeldByValueAndOnTheHeap) {
  DrawableJunk by_value;
  EXPECT_EQ(by_value.m_pNext, nullptr);
  EXPECT_EQ(by_value.drawable_info(), nullptr);
  const std::unique_ptr<DL::Drawable> on_heap(new DrawableJunk);
  EXPECT_FALSE(on_heap->is_hidden());
}

}  // namespace
