// What a client may get wrong without losing drawables or the program.

#include <gtest/gtest.h>

#include <utility>

#include "tests/support/point_printing.h"
#include "tests/support/recorded_list.h"

namespace {

/// A drawable whose bounds are not what they were before.
class ShiftingDot final : public DL::DLDot {
 public:
  explicit ShiftingDot(LogicalPoint point) : DLDot({}, point) {}
  void add_bounds(LogicalBounds& bounds) const override {
    const std::int32_t shift = (++m_asked % 2) * 0x40000000;
    bounds.widen(LogicalPoint{m_point.x - shift, m_point.y - shift});
  }

 private:
  mutable int m_asked = 0;
};

std::size_t drawn_of(RecordedList& recorded) {
  recorded.list.m_pRootGroup->draw_unclipped(recorded.list);
  return recorded.take_lines().size();
}

TEST(ClientMistake, LevelsBelowOneUnitSplitNoFurther) {
  RecordedList recorded;
  recorded.list.m_cMaxOpenDrawables = 1;
  recorded.list.m_cMaxLevel = 1000;
  for (int i = 0; i < 60; ++i) {
    ASSERT_NE(recorded.list.add(new DL::DLDot({}, {7, 7})), nullptr);
  }
  EXPECT_EQ(recorded.list.m_pOpenGroup->level(), 31U);
  EXPECT_EQ(drawn_of(recorded), 60U);
}

TEST(ClientMistake, BoundsThatChangeBetweenTwoQuestionsLoseNothing) {
  RecordedList recorded;
  recorded.list.m_cMaxOpenDrawables = 2;
  for (int i = 0; i < 40; ++i) {
    ASSERT_NE(recorded.list.add(new ShiftingDot({i * 1000, i})), nullptr);
  }
  EXPECT_EQ(drawn_of(recorded), 40U);
}

TEST(ClientMistake, AListClosedByHandGoesOnTakingDrawables) {
  RecordedList recorded;
  recorded.list.m_cMaxOpenDrawables = 2;
  for (int i = 0; i < 5; ++i) recorded.list.add(new DL::DLDot({}, {i, i}));
  DL::Group* open = recorded.list.m_pOpenGroup;
  open->close();
  ASSERT_FALSE(open->is_open());
  ASSERT_NE(recorded.list.add(new DL::DLDot({}, {2, 2})), nullptr);
  EXPECT_TRUE(recorded.list.m_pOpenGroup->is_open());
  EXPECT_EQ(drawn_of(recorded), 6U);
}

TEST(ClientMistake, AListClosedByHandAndEmptiedGoesOnTakingDrawables) {
  RecordedList recorded;
  DL::DisplayList& list = recorded.list;
  list.m_cMaxOpenDrawables = 2;
  for (int i = 0; i < 5; ++i) list.add(new DL::DLDot({}, {i, i}));
  list.m_pOpenGroup->close();
  list.m_pRootGroup->remove_all();
  ASSERT_NE(list.add(new DL::DLDot({}, {2, 2})), nullptr);

  DL::Group* open = list.m_pOpenGroup;
  open->close();
  ASSERT_NE(open->remove(open->m_pFirst.drawable, nullptr), nullptr);
  ASSERT_NE(list.add(new DL::DLDot({}, {3, 3})), nullptr);
  EXPECT_TRUE(list.m_pOpenGroup->is_open());
  EXPECT_EQ(drawn_of(recorded), 1U);
}

TEST(ClientMistake, NoDrawableIsRefused) {
  RecordedList recorded;
  EXPECT_EQ(recorded.list.add(nullptr), nullptr);
  EXPECT_EQ(recorded.list.add(nullptr, LogicalBounds{0, 0, 1, 1}, 0), nullptr);
  EXPECT_EQ(recorded.list.m_cOpenDrawables, 0);
}

TEST(ClientMistake, ARenditionMovedFromIsStillOne) {
  LM_Rendition rendition;
  rendition.set_line_weight(3);
  const LM_Rendition moved(std::move(rendition));
  EXPECT_EQ(moved.line_style().weight, 3);
  EXPECT_EQ(rendition.line_style().weight, 3);  // NOLINT(bugprone-use-after-move): the point
}

}  // namespace
