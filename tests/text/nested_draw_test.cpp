#include <gtest/gtest.h>

#include <utility>

#include "lumen/selector_device.h"
#include "tests/support/contours.h"
#include "tests/support/point_printing.h"
#include "tests/text/nested_lists.h"

// Which draw forms a nested list draws its child with, and what they see.

namespace {

using namespace nested;

/// A child of one probe over a box, closed, in a parent at a scale of one.
struct NestedDraw : testing::Test, Parent {
  NestedDraw() {
    probes.add(1, {10, 10, 20, 20});
    probes.list->m_pRootGroup->close();
    nested = nest(probes.list);
  }
  ProbeCalls drawn_unclipped() {
    nested->draw_unclipped(list);
    return probes.log.take();
  }
  ProbeCalls drawn_clipped() {
    nested->draw_clipped(list);
    return probes.log.take();
  }
  void clip_to(const ContourPoints& points) {
    list.m_rendition.set_complex_clip(contour_set({points}), true);
  }
  void look_for_selection(LM_Option_Table::Value value = {1}) {
    recorder->option_table.set(LM_IS_SELECTOR, std::move(value));
  }

  ProbeChild probes;
  std::unique_ptr<Nested> nested;
};

const ProbeCalls kUnclipped = {{1, DrawSlot::unclipped}};
const ProbeCalls kClipped = {{1, DrawSlot::clipped}};
const ProbeCalls kUnclippedSelection = {{1, DrawSlot::unclipped_selection}};
const ProbeCalls kClippedSelection = {{1, DrawSlot::clipped_selection}};

TEST_F(NestedDraw, ChildIsDrawnWhole) {
  EXPECT_EQ(drawn_unclipped(), kUnclipped);
  EXPECT_EQ(drawn_clipped(), kUnclipped) << "it lies inside its window";
}

TEST_F(NestedDraw, ClippedDrawingIsBoundedByTheWindow) {
  nested->set_offset({-15, 0});
  EXPECT_EQ(drawn_clipped(), kClipped);
  EXPECT_EQ(drawn_unclipped(), kUnclipped);
}

TEST_F(NestedDraw, OnlyGroupsThatMeetTheWindowAreDrawnClipped) {
  ProbeChild many;
  many.list->m_cMaxOpenDrawables = 1;
  for (int i = 0; i < 8; ++i) many.add(i, {i * 100, 0, i * 100 + 10, 10});
  many.list->m_pRootGroup->close();
  const auto row = nest(many.list, {1, 1}, {-305, 0});
  row->draw_clipped(list);
  EXPECT_EQ(many.log.take(), (ProbeCalls{{3, DrawSlot::clipped}, {4, DrawSlot::clipped}}));
  row->set_offset({-350, 0});
  row->draw_clipped(list);
  EXPECT_EQ(many.log.take(), calls_of(DrawSlot::unclipped, {4}));
}

TEST_F(NestedDraw, ChildSeesWhatItIsLent) {
  const auto selector = LM_Create<LM_Selector_Data>();
  list.m_rendition.set_selector_data(selector);
  list.m_bAlternateScale = true;
  recorder->options.supports_complex_clip = true;
  nested->set_offset({3, 4});
  int seen = 0;
  probes.log.on_draw = [&](int, DL::DisplayList& inner) {
    ++seen;
    EXPECT_EQ(&inner, probes.list);
    EXPECT_EQ(inner.m_pRenderer.get(), recorder.get());
    EXPECT_EQ(inner.m_rendition.selector_data().get(), selector.get());
    EXPECT_EQ(inner.m_rendition.clip_rectangle(), list.m_rendition.clip_rectangle());
    EXPECT_EQ(inner.m_offset, (Factors{3, 4}));
    EXPECT_TRUE(inner.m_bAlternateScale);
    EXPECT_TRUE(inner.m_bComplexClipSupported);
  };
  nested->draw_unclipped(list);
  nested->draw_clipped(list);
  EXPECT_EQ(seen, 2);
  EXPECT_EQ(probes.list->m_pRenderer.get(), nullptr);
  EXPECT_EQ(probes.list->m_rendition.selector_data().get(), nullptr);
}

TEST_F(NestedDraw, ParentsRenditionIsNotChanged) {
  list.m_rendition.set_color({0x123456}, true);
  const LM_Rendition before = list.m_rendition;
  probes.log.on_draw = [](int, DL::DisplayList& inner) {
    inner.m_rendition.set_color({0xABCDEF}, true);
    inner.m_rendition.set_clip_rectangle({0, 1, 0, 1});
  };
  drawn_unclipped();
  drawn_clipped();
  EXPECT_TRUE(list.m_rendition.shares_data_with(before));
}

TEST_F(NestedDraw, NeitherChildNorBoundsNorRootDrawNothing) {
  const auto none = nest(nullptr, {1, 1}, {0, 0}, LogicalBounds{0, 0, 10, 10});
  DL::DisplayList parent;
  DL::BoundsTemplate<int> clip;
  EXPECT_FALSE(none->push_transform(parent, clip));
  EXPECT_TRUE(none->push_view(parent));
  none->pop_view(parent);
  none->draw_unclipped(list);
  none->draw_clipped(list);
  const LogicalBounds empty;
  nested->set_bounds(&empty);
  EXPECT_TRUE(drawn_unclipped().empty());
  EXPECT_TRUE(drawn_clipped().empty());
  auto* bare = new DL::DisplayList;
  delete std::exchange(bare->m_pRootGroup, nullptr);
  const auto rootless = nest(bare, {1, 1}, {0, 0}, LogicalBounds{0, 0, 10, 10});
  rootless->draw_unclipped(list);
  rootless->draw_clipped(list);
  EXPECT_TRUE(take_lines().empty());
}

TEST_F(NestedDraw, ClientsPushThatRefusesDrawsNothing) {
  struct Client : Nested {
    using Nested::Nested;
    bool push_view(DL::DisplayList&) override { return false; }
    void pop_view(DL::DisplayList&) override { ++pops; }
    int pops = 0;
  };
  const std::unique_ptr<Client> client(new Client(nullptr, child_with_a_dot({1, 1}), nullptr));
  client->draw_unclipped(list);
  client->draw_clipped(list);
  EXPECT_TRUE(take_lines().empty());
  EXPECT_EQ(client->pops, 0);
}

TEST_F(NestedDraw, ChildOutsideIsDrawnInTheWindowOfItsLastPush) {
  nested->set_offset({-15, 0});
  EXPECT_EQ(drawn_clipped(), kClipped);
  nested->set_offset({-500, 0});
  probes.log.on_draw = [](int, DL::DisplayList& inner) {
    EXPECT_EQ(inner.m_offset, (Factors{-500, 0})) << "with the transform of this one";
    EXPECT_EQ(inner.m_screenBounds.min, (DL::PointTemplate<int>{0, 10}));
  };
  EXPECT_EQ(drawn_clipped(), kClipped);
  EXPECT_EQ(drawn_unclipped(), kUnclipped);
}

TEST_F(NestedDraw, ChildNeverSeenIsNotDrawnBounded) {
  nested->set_offset({-500, 0});
  EXPECT_TRUE(drawn_clipped().empty());
  EXPECT_EQ(drawn_unclipped(), kUnclipped);
}

// --- Complex clips ------------------------------------------------------------

struct NestedComplexClip : NestedDraw {
  NestedComplexClip() { recorder->options.supports_complex_clip = false; }

  // Its corners lie close enough to a circle; the child lies outside it.
  const ContourPoints square = rectangle(80, 80, 90, 90);
  const ContourPoints oblong = rectangle(0, 12, 90, 18);
  const ContourPoints elsewhere = rectangle(0, 0, 90, 5);
};

TEST_F(NestedComplexClip, CircularClipIsTakenForACircle) {
  clip_to(square);
  EXPECT_EQ(drawn_unclipped(), kUnclipped) << "no group is told to lie outside a circle";
  EXPECT_EQ(probes.list->m_circleCenter.x, 85.0F);
  EXPECT_EQ(probes.list->m_circleRadiusSquared, 25.0F);
}

TEST_F(NestedComplexClip, OtherClipsAreTakenAsTheyAre) {
  clip_to(oblong);
  EXPECT_EQ(drawn_unclipped(), kUnclipped);
  clip_to(elsewhere);
  EXPECT_TRUE(drawn_unclipped().empty());
}

TEST_F(NestedComplexClip, RendererThatClipsItselfGetsEverything) {
  recorder->options.supports_complex_clip = true;
  for (const ContourPoints* clip : {&square, &oblong, &elsewhere}) {
    clip_to(*clip);
    EXPECT_EQ(drawn_unclipped(), kUnclipped);
  }
  EXPECT_EQ(probes.list->m_circleRadiusSquared, 0.0F) << "no circle is looked for";
}

TEST_F(NestedComplexClip, BoundedDrawingDoesNotLookAtIt) {
  clip_to(elsewhere);
  EXPECT_EQ(drawn_clipped(), kUnclipped);
}

TEST_F(NestedComplexClip, SelectionDoesNotLookAtIt) {
  clip_to(elsewhere);
  look_for_selection();
  EXPECT_EQ(drawn_unclipped(), kUnclippedSelection);
}

TEST_F(NestedComplexClip, ChildsOwnClipDoesNotMatter) {
  probes.list->m_rendition.set_complex_clip(contour_set({elsewhere}), true);
  EXPECT_EQ(drawn_unclipped(), kUnclipped);
}

// --- Selection ----------------------------------------------------------------

struct NestedSelection : NestedDraw {};

TEST_F(NestedSelection, SelectorsGetTheSelectionForms) {
  look_for_selection();
  EXPECT_EQ(drawn_unclipped(), kUnclippedSelection);
  EXPECT_EQ(drawn_clipped(), kUnclippedSelection);
  nested->set_offset({-15, 0});
  EXPECT_EQ(drawn_clipped(), kClippedSelection);
  EXPECT_EQ(drawn_unclipped(), kUnclippedSelection);
}

TEST_F(NestedSelection, OptionIsItsFirstByteAtEachPush) {
  for (const LM_Option_Table::Value& none : {LM_Option_Table::Value{}, {0}, {0, 1}}) {
    look_for_selection(none);
    EXPECT_EQ(drawn_unclipped(), kUnclipped);
  }
  for (const LM_Option_Table::Value& some : {LM_Option_Table::Value{1}, {2}, {255, 0}}) {
    look_for_selection(some);
    EXPECT_EQ(drawn_unclipped(), kUnclippedSelection);
  }
  list.m_pRenderer = LM_Create<LM_Renderer>();
  EXPECT_EQ(drawn_unclipped(), kUnclipped);
}

TEST_F(NestedSelection, ClonesTakeTheFormOfTheirOwnLastPush) {
  look_for_selection();
  drawn_unclipped();
  const std::unique_ptr<Nested> copy(static_cast<Nested*>(nested->clone()));
  copy->set_offset({-500, 0});
  copy->draw_unclipped(list);
  EXPECT_EQ(probes.log.take(), kUnclippedSelection) << "taken over; this push shows nothing";
}

TEST_F(NestedSelection, KeysAreTheDrawablesOfTheChild) {
  look_for_selection();
  list.m_rendition.set_selector_data(LM_Create<LM_Selector_Data>());
  auto* inner = new DL::DisplayList;
  auto* low = new DL::DLDot({}, {1, 1});
  auto* high = new DL::DLDot({}, {2, 2});
  inner->add(low);
  inner->add(high);
  add(nest(inner));
  auto* last = new DL::DLDot({}, {3, 3});
  list.add(last);
  list.m_pRootGroup->draw_unclipped_selection(list);
  std::vector<const void*> keys;
  for (const lumen::RecordedCall& call : recorder->calls()) keys.push_back(call.selection_key);
  EXPECT_EQ(keys, (std::vector<const void*>{low, high, last}));
}

TEST_F(NestedSelection, SelectorDeviceHitsWhatLiesUnderThePointer) {
  const auto device = LM_Create<lumen::SelectorDevice>();
  list.m_pRenderer = device;
  list.m_rendition.set_selector_data(LM_Create<LM_Selector_Data>());
  auto* inner = new DL::DisplayList;
  DL::Drawable* square = make_polygon({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
  inner->add(square);
  auto* middle = new DL::DisplayList;
  middle->add(nest(inner, {2, -1}, {0, 0}).release());
  add(nest(middle, {1, 1}, {50, 50}));
  const auto hits_at = [&](std::int32_t x, std::int32_t y) {
    device->set_pick_box({x, x, y, y});
    list.m_pRootGroup->draw_bounded_selection(list, list.m_logicalBounds, list.m_logicalBounds);
    return device->hits();
  };
  using Hits = std::vector<lumen::SelectorDevice::Hit>;
  EXPECT_EQ(hits_at(60, 45), (Hits{{square, 0}}));
  EXPECT_EQ(hits_at(60, 55), Hits());
  EXPECT_EQ(hits_at(45, 45), Hits());
}

// --- Depth --------------------------------------------------------------------

TEST(NestedDepth, HundredListsInEachOther) {
  std::vector<DL::DisplayList*> lists = {child_with_a_dot({0, 0}, {0x00ABCDEF})};
  for (int i = 1; i < 100; ++i) {
    auto* outer = new DL::DisplayList;
    outer->add(nest(lists.back(), {1, 1}, {0.5, 1}, LogicalBounds{0, 0, 100, 100}).release());
    lists.push_back(outer);
  }
  Parent parent;
  parent.add(nest(lists.back(), {1, 1}, {0.5, 0}, LogicalBounds{0, 0, 100, 100}));
  parent.list.m_pRootGroup->draw_unclipped(parent.list);
  EXPECT_EQ(parent.take_lines(), std::vector<std::string>{"dot_unclipped color=00ABCDEF (50,99)"});
  parent.draw_window();
  EXPECT_EQ(parent.take_lines(), std::vector<std::string>{"dot_clipped color=00ABCDEF (50,99)"});
  for (const DL::DisplayList* list : lists) EXPECT_EQ(list->m_pRenderer.get(), nullptr);
}

TEST(NestedDepth, ChildInTwoPlacesIsDrawnInBoth) {
  Parent parent;
  auto first = nest(child_with_a_dot({5, 5}, {0x00000001}));
  std::unique_ptr<Nested> second(static_cast<Nested*>(first->clone()));
  second->set_scale({2, -2});
  second->set_offset({20, 30});
  parent.add(std::move(first));
  parent.add(std::move(second));
  parent.draw_window();
  EXPECT_EQ(parent.take_lines(), (std::vector<std::string>{"dot_clipped color=00000001 (5,5)",
                                                           "dot_clipped color=00000001 (30,20)"}));
}

}  // namespace
