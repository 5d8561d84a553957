#include "displaylist/core/class_change.h"

#include <gtest/gtest.h>

#include <memory>
#include <typeinfo>
#include <vector>

#include "tests/support/drawable_chain.h"
#include "tests/support/memory_stream.h"
#include "tests/support/palette.h"
#include "tests/support/recorded_list.h"

// Drawables are made, changed and asked in one function, so that the optimiser
// sees all of it: no call may go on to the class that it saw before.

namespace {

using DL::DLDot;
using DL::DLPolyline;
using DL::Drawable;

/// How many actions the drawable causes.
std::size_t draws(Drawable& drawable) {
  RecordedList recorded;
  drawable.draw_unclipped(recorded.list);
  drawable.draw_clipped(recorded.list);
  drawable.draw_unclipped_selection(recorded.list);
  drawable.draw_clipped_selection(recorded.list);
  return recorded.recorder->calls().size();
}

TEST(DrawableChange, IsSeenThroughThePointerThatNewReturned) {
  auto* dot = new DLDot({7}, {1, 2});
  EXPECT_FALSE(dot->is_hidden());
  dot->hide();
  EXPECT_TRUE(dot->is_hidden());
  EXPECT_EQ(draws(*dot), 0U);
  dot->unhide();
  EXPECT_FALSE(dot->is_hidden());
  EXPECT_EQ(draws(*dot), 4U);
  delete dot;
}

TEST(DrawableChange, IsSeenThroughABasePointer) {
  Drawable* drawable = new DLDot({7}, {1, 2});
  drawable->hide();
  EXPECT_TRUE(drawable->is_hidden());
  drawable->unhide();
  EXPECT_FALSE(drawable->is_hidden());
  delete drawable;
}

TEST(DrawableChange, IsSeenWithNothingElseAskedBefore) {
  std::unique_ptr<DLDot> hidden(new DLDot({7}, {1, 2}));
  hidden->hide();
  EXPECT_TRUE(hidden->is_hidden());
  EXPECT_TRUE(std::unique_ptr<Drawable>(hidden->clone())->is_hidden());
}

TEST(DrawableChange, IsSeenThroughEveryNameOfTheObject) {
  std::unique_ptr<DLDot> owner(new DLDot({7}, {1, 2}));
  DLDot& reference = *owner;
  Drawable* base = owner.get();
  const Drawable* constant = base;
  const auto ask = [&reference] { return reference.is_hidden(); };
  bool (Drawable::*member)() const = &Drawable::is_hidden;
  for (const bool hidden : {true, false, true}) {
    hidden ? reference.hide() : base->unhide();
    EXPECT_EQ(owner->is_hidden(), hidden);
    EXPECT_EQ(reference.is_hidden(), hidden);
    EXPECT_EQ(base->is_hidden(), hidden);
    EXPECT_EQ(constant->is_hidden(), hidden);
    EXPECT_EQ(ask(), hidden);
    EXPECT_EQ((base->*member)(), hidden);
  }
}

TEST(DrawableChange, IsSeenInALoopWhoseConditionAsks) {
  Drawable* drawable = new DLDot({7}, {1, 2});
  int rounds = 0;
  while (!drawable->is_hidden() && rounds < 1000) {
    if (++rounds == 5) drawable->hide();
  }
  EXPECT_EQ(rounds, 5);
  for (rounds = 0; drawable->is_hidden() && rounds < 1000; ++rounds) {
    if (rounds == 3) drawable->unhide();
  }
  EXPECT_EQ(rounds, 4);
  delete drawable;
}

TEST(DrawableChange, IsSeenInEveryRoundOfALoop) {
  auto* polyline = make_polyline({{1, 2}, {30, 40}}, {7});
  RecordedList recorded;
  for (int i = 0; i < 100; ++i) {
    if (i % 2 == 0) polyline->hide();
    polyline->draw_clipped(recorded.list);
    polyline->unhide();
    polyline->draw_clipped(recorded.list);
  }
  EXPECT_EQ(recorded.recorder->calls().size(), 50U + 100U);  // every other first draw is hidden
  polyline->hide();
  for (int i = 0; i < 100; ++i) polyline->draw_clipped(recorded.list);
  EXPECT_EQ(recorded.recorder->calls().size(), 50U + 100U);
  delete polyline;
}

TEST(DrawableChange, IsSeenForEachOfManyDrawables) {
  DrawableChain chain{new DLDot({1}, {1, 1}), make_polyline({{1, 2}, {3, 4}}),
                      make_polygon({{1, 2}, {3, 4}, {5, 6}}), new DL::DLColorizedDot({}, {}, {})};
  int changes = 0;
  for (int round = 0; round < 3; ++round) {
    for (Drawable* each = chain.first(); each != nullptr; each = each->m_pNext) {
      const bool before = each->is_hidden();
      before ? each->unhide() : each->hide();
      changes += each->is_hidden() != before ? 1 : 0;
    }
  }
  EXPECT_EQ(changes, 12);
}

TEST(DrawableChange, ChangesNoField) {
  std::unique_ptr<DLDot> dot(new DLDot({7}, {1, 2}));
  dot->m_pNext = dot.get();
  dot->hide();
  dot->m_point.x += 10;
  dot->unhide();
  EXPECT_EQ(dot->m_point.x, 11);
  EXPECT_EQ(dot->m_point.y, 2);
  EXPECT_EQ(dot->m_colorData.m_color.word, 7U);
  EXPECT_EQ(dot->m_pNext, dot.get());
}

TEST(DrawableChange, AgreesWithTheTypeAtRunTime) {
  std::unique_ptr<Drawable> drawable(new DLDot({7}, {1, 2}));
  const Drawable& reference = *drawable;
  EXPECT_EQ(typeid(reference), typeid(DLDot));
  drawable->hide();
  EXPECT_EQ(typeid(reference), typeid(DL::HiddenDrawable<DLDot>));
  EXPECT_NE(dynamic_cast<DLDot*>(drawable.get()), nullptr);
  EXPECT_NE(dynamic_cast<DL::HiddenDrawable<DLDot>*>(drawable.get()), nullptr);
  drawable->unhide();
  EXPECT_EQ(dynamic_cast<DL::HiddenDrawable<DLDot>*>(drawable.get()), nullptr);
}

TEST(DrawableChange, InAConstructorIsSeen) {
  LM_Rendition rendition;
  auto* text = new DL::DLText(&rendition, LM_Font(), {1.0, 2.0}, L"a", 1, 10.0, 0.0, {0, 0, 10, 10},
                              nullptr, true);
  EXPECT_TRUE(text->is_palettized());
  RecordedList recorded;
  EXPECT_EQ(text->rendition(recorded.list), &rendition);
  const std::unique_ptr<Drawable> copy(text->clone());
  EXPECT_TRUE(copy->is_palettized());
  text->hide();
  EXPECT_TRUE(text->is_hidden());
  EXPECT_TRUE(text->is_palettized());
  delete text;
}

TEST(DrawableChange, ToPalettizedByReadingIsSeen) {
  RecordedList recorded;
  Palette palette(recorded.list);
  MemoryStream stream({5, 6, 0x20000002, 3, 0x10000002});
  auto* dot = new DLDot({7}, {1, 2});
  EXPECT_FALSE(dot->is_palettized());
  dot->serialize_in(&stream, recorded.list);
  EXPECT_TRUE(dot->is_palettized());
  EXPECT_EQ(dot->rendition(recorded.list), palette.at(3));
  dot->hide();
  EXPECT_TRUE(dot->is_hidden() && dot->is_palettized());
  EXPECT_EQ(draws(*dot), 0U);
  dot->unhide();
  EXPECT_TRUE(!dot->is_hidden() && dot->is_palettized());
  EXPECT_EQ(typeid(*static_cast<Drawable*>(dot)), typeid(DL::PalettizedDrawable<DLDot>));
  EXPECT_EQ(draws(*dot), 4U);
  delete dot;
}

TEST(DrawableChange, OfACloneIsSeen) {
  LM_Rendition rendition;
  const LogicalPoint points[] = {{1, 2}, {3, 4}};
  std::unique_ptr<DL::PalettizedDrawable<DLPolyline>> original(
      new DL::PalettizedDrawable<DLPolyline>(&rendition, 2, points));
  original->hide();
  const std::unique_ptr<Drawable> copy(original->clone());
  EXPECT_TRUE(copy->is_hidden() && copy->is_palettized());
  copy->unhide();
  EXPECT_TRUE(!copy->is_hidden() && copy->is_palettized());
  EXPECT_TRUE(original->is_hidden());
}

TEST(DrawableChange, LeavesTheWholeObjectToItsDestructor) {
  std::unique_ptr<Drawable> polyline(make_polyline({{1, 2}, {3, 4}}));
  polyline->hide();
  polyline.reset();  // the points must go too; a leak fails the sanitized flavour
  EXPECT_EQ(polyline, nullptr);
}

/// A client's class that takes part, known to this file alone.
class Counter : public DLDot {
 public:
  Counter() : DLDot({1}, {2, 3}) {}
  explicit Counter(DL::class_change::Unfilled unfilled) : DLDot(unfilled) {}
  void draw_unclipped(DL::DisplayList&) override { ++s_draws; }
  void draw_clipped(DL::DisplayList&) override { ++s_draws; }
  void hide() override { DL::class_change::become<DL::HiddenDrawable<Counter>>(this); }
  static inline int s_draws = 0;
};

TEST(DrawableChange, OfAClassOfTheClientIsSeen) {
  DL::DisplayList list;
  auto* counter = new Counter;
  for (int i = 0; i < 10; ++i) {
    if (i == 4) counter->hide();
    if (i == 8) counter->unhide();
    counter->draw_clipped(list);
    counter->draw_unclipped_selection(list);
  }
  EXPECT_EQ(Counter::s_draws, 12);
  delete counter;
}

}  // namespace
