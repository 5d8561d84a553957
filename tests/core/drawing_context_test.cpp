#include <gtest/gtest.h>

#include <set>
#include <string>

#include "displaylist/platform/renderer.h"
#include "tests/support/point_printing.h"
#include "tests/support/recorded_list.h"

namespace {

const std::set<std::string> kCatalogue = {
    "dot_clipped",
    "dot_unclipped",
    "polyline_clipped",
    "polyline_unclipped",
    "gouraud_polyline_clipped",
    "gouraud_polyline_unclipped",
    "polygon_clipped",
    "polygon_unclipped",
    "triangle_strip_clipped",
    "triangle_strip_unclipped",
    "gouraud_triangle_strip_clipped",
    "textured_triangle_strip_clipped",
    "textured_triangle_strip_unclipped",
    "marker_clipped",
    "marker_unclipped",
    "image_clipped",
    "image_unclipped",
    "elliptical_arc",
    "elliptical_arc_colored",
    "elliptical_area",
};

/// Calls every action of a table with zeros.
void call_all(const LM_Device_Actions& actions, LM_Rendition* rendition) {
  const auto call = [&]<class... Arguments>(const LM_Device_Action<Arguments...>& action) {
    action(rendition, Arguments{}...);
  };
#define CALL_ACTION(name, type) call(actions.name);
  LM_DEVICE_ACTIONS(CALL_ACTION)
#undef CALL_ACTION
}

TEST(ActionTable, HoldsTheWholeCatalogue) {
  std::set<std::string> names;
#define TAKE_NAME(name, type) EXPECT_TRUE(names.insert(#name).second);
  LM_DEVICE_ACTIONS(TAKE_NAME)
#undef TAKE_NAME
  EXPECT_EQ(names, kCatalogue);
  // Nothing but the listed entries, each a context and a function.
  EXPECT_EQ(sizeof(LM_Device_Actions), kCatalogue.size() * 2 * sizeof(void*));
}

TEST(ActionTable, OfAnEmptyRendererIsCallableAndDrawsNothing) {
  const LM_Renderer renderer;
  LM_Rendition rendition;
  call_all(renderer.actions, &rendition);
  call_all(renderer.actions, nullptr);
  EXPECT_FALSE(renderer.options.supports_complex_clip);
#define CHECK_FUNCTION(name, type) EXPECT_NE(renderer.actions.name.function, nullptr);
  LM_DEVICE_ACTIONS(CHECK_FUNCTION)
#undef CHECK_FUNCTION
}

TEST(ActionTable, OfADeviceCallsEachOfItsFunctionsOnce) {
  const auto recorder = LM_Create<lumen::Recorder>();
  LM_Rendition rendition;
  call_all(recorder->actions, &rendition);
  std::set<std::string> called;
  for (const lumen::RecordedCall& call : recorder->calls()) {
    EXPECT_TRUE(called.insert(call.action).second) << call.action;
    EXPECT_EQ(call.rendition, &rendition);
  }
  EXPECT_EQ(called, kCatalogue);
}

TEST(ActionTable, TheContextWordComesFirst) {
  LM_Points_Action action;
  struct Seen {
    void* context = nullptr;
    LM_Rendition* rendition = nullptr;
    std::int32_t count = 0;
    const LM_DCI_Point* points = nullptr;
  } seen;
  action.context = &seen;
  action.function = [](void* context, LM_Rendition* rendition, std::int32_t count,
                       const LM_DCI_Point* points) {
    *static_cast<Seen*>(context) = {context, rendition, count, points};
  };
  LM_Rendition rendition;
  const LM_DCI_Point points[] = {{1, 2, 0}, {3, 4, 0}};
  action(&rendition, 2, points);
  EXPECT_EQ(seen.context, &seen);
  EXPECT_EQ(seen.rendition, &rendition);
  EXPECT_EQ(seen.count, 2);
  EXPECT_EQ(seen.points, points);
}

TEST(NewList, DrawsThroughARendererThatDrawsNothing) {
  DL::DisplayList list;
  list.add(make_polyline({{0, 0}, {10, 10}}));
  ASSERT_TRUE(list.m_pRenderer);
  list.m_pRootGroup->draw_unclipped(list);
  list.m_pRootGroup->draw_bounded(list, {}, LogicalBounds::plane());
  EXPECT_EQ(list.m_pRootGroup->m_pFirst.drawable, list.m_pRootGroup->m_pLastChild.drawable);
}

TEST(ClipRectangle, IsInclusiveAtAllFourEnds) {
  const LM_Clip_Rectangle clip{.min_x = 10, .max_x = 20, .min_y = 30, .max_y = 40};
  for (const LM_DCI_Point& p : {LM_DCI_Point{10, 30, 0}, {20, 40, 0}, {10, 40, 0}, {20, 30, 0}}) {
    EXPECT_TRUE(clip.contains(p)) << p;
  }
  for (const LM_DCI_Point& p : {LM_DCI_Point{9, 35, 0}, {21, 35, 0}, {15, 29, 0}, {15, 41, 0}}) {
    EXPECT_FALSE(clip.contains(p)) << p;
  }
}

TEST(ClipRectangle, OfANewRenditionIsTheWholeDevicePlane) {
  const LM_Clip_Rectangle clip = LM_Rendition().clip_rectangle();
  EXPECT_TRUE(clip.contains({INT32_MIN, INT32_MIN, 0}));
  EXPECT_TRUE(clip.contains({INT32_MAX, INT32_MAX, 0}));
}

/// The actions that draw_unclipped and draw_clipped of a polyline call.
struct ChoiceOfEntry : testing::Test {
  ChoiceOfEntry() {
    scene.list.m_rendition.set_clip_rectangle({.min_x = 0, .max_x = 100, .min_y = 0, .max_y = 100});
  }
  std::string action_of(std::initializer_list<LogicalPoint> points, bool clipped) {
    const std::unique_ptr<DL::DLPolyline> line(make_polyline(points));
    DL::Drawable& drawable = *line;
    clipped ? drawable.draw_clipped(scene.list) : drawable.draw_unclipped(scene.list);
    std::string actions;
    for (const lumen::RecordedCall& call : scene.recorder->calls()) actions += call.action;
    scene.recorder->clear();
    return actions;
  }

  RecordedList scene;
};

TEST_F(ChoiceOfEntry, PointOnTheMaximumIsInside) {
  EXPECT_EQ(action_of({{0, 0}, {100, 100}}, false), "polyline_unclipped");
}

TEST_F(ChoiceOfEntry, OneUnitFurtherSendsTheWholeDrawableToTheClippedEntry) {
  EXPECT_EQ(action_of({{0, 0}, {101, 100}}, false), "polyline_clipped");
  EXPECT_EQ(action_of({{0, 0}, {100, 101}}, false), "polyline_clipped");
  EXPECT_EQ(action_of({{-1, 0}, {100, 100}}, false), "polyline_clipped");
  EXPECT_EQ(action_of({{0, -1}, {100, 100}}, false), "polyline_clipped");
}

TEST_F(ChoiceOfEntry, DrawClippedDoesNotTest) {
  EXPECT_EQ(action_of({{10, 10}, {20, 20}}, true), "polyline_clipped");
}

TEST_F(ChoiceOfEntry, DrawableWithoutPointsMakesNoCall) {
  EXPECT_EQ(action_of({}, false), "");
  EXPECT_EQ(action_of({}, true), "");
}

}  // namespace
