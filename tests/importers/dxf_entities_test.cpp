// What becomes of each kind of entity in a DXF file.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "tests/importers/dxf_drawing.h"

namespace {

using dxf_text::entity;
using dxf_text::groups;
using dxf_text::line;
using lumen::RecordedCall;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double tolerance = 1e-6;
constexpr double pi = std::numbers::pi;

/// A line around what else is drawn, so that the mapping is known.
const std::string frame = line(-100, -100, 100, 100);

/// The drawing of the frame and the entities.
DxfDrawing framed(const std::string& entities, const importers::ReadOptions& options = {}) {
  return DxfDrawing({frame + entities}, options);
}

void expect_point(const DxfDrawing& drawing, const LM_DCI_Point& point, double x, double y) {
  EXPECT_NEAR(drawing.x(point), x, tolerance);
  EXPECT_NEAR(drawing.y(point), y, tolerance);
}

/// Angles that differ by whole turns are the same.
void expect_angle(double actual, double expected) {
  EXPECT_NEAR(std::remainder(actual - expected, 2 * pi), 0, tolerance);
}

TEST(DxfEntities, Line) {
  const DxfDrawing read({line(1, 2, 3, 5)});
  ASSERT_EQ(read.recorded.problem, "");
  EXPECT_EQ(read.drawing.extent, (importers::Extent{1, 2, 3, 5}));
  ASSERT_THAT(read.recorded.actions(), ElementsAre("polyline"));
  expect_point(read, read.calls()[0].points[0], 1, 2);
  expect_point(read, read.calls()[0].points[1], 3, 5);
  EXPECT_EQ(read.drawing.remarks, "");
}

TEST(DxfEntities, ClosedLightPolylineIsOneDrawable) {
  const DxfDrawing read = framed(entity(
      "LWPOLYLINE", {{90, 3}, {70, 1}, {10, 0}, {20, 0}, {10, 9}, {20, 0}, {10, 9}, {20, 9}}));
  ASSERT_EQ(read.calls().size(), 2U);
  const std::vector<LM_DCI_Point>& points = read.calls()[1].points;
  ASSERT_EQ(points.size(), 4U);
  expect_point(read, points[2], 9, 9);
  EXPECT_EQ(points.front(), points.back());
}

TEST(DxfEntities, PolylineOfVertices) {
  const DxfDrawing read =
      framed(entity("POLYLINE", {{66, 1}, {70, 0}}) + entity("VERTEX", {{10, 1}, {20, 1}}) +
             entity("VERTEX", {{10, 2}, {20, 3}}) + entity("VERTEX", {{10, 4}, {20, 1}}) +
             entity("SEQEND", {}) + line(5, 5, 6, 6));
  ASSERT_EQ(read.calls().size(), 3U);
  ASSERT_EQ(read.calls()[1].points.size(), 3U);
  expect_point(read, read.calls()[1].points[1], 2, 3);
}

TEST(DxfEntities, ControlFramesOfSplinedPolylinesAreNotDrawn) {
  const DxfDrawing read = framed(
      entity("POLYLINE", {{66, 1}, {70, 4}}) + entity("VERTEX", {{10, 1}, {20, 1}, {70, 16}}) +
      entity("VERTEX", {{10, 2}, {20, 3}, {70, 8}}) +
      entity("VERTEX", {{10, 4}, {20, 1}, {70, 8}}) + entity("SEQEND", {}));
  ASSERT_EQ(read.calls().size(), 2U);
  EXPECT_EQ(read.calls()[1].points.size(), 2U);
}

TEST(DxfEntities, BulgesAreArcsOfTheirCircles) {
  // Half a circle to the right and below, then a quarter, then a straight line.
  const double quarter = std::tan(pi / 8);
  const DxfDrawing read = framed(entity("LWPOLYLINE", {{90, 4},
                                                       {70, 0},
                                                       {10, 0},
                                                       {20, 0},
                                                       {42, 1},
                                                       {10, 10},
                                                       {20, 0},
                                                       {42, -quarter},
                                                       {10, 20},
                                                       {20, 10},
                                                       {10, 30},
                                                       {20, 10}}));
  ASSERT_THAT(read.recorded.actions(),
              ElementsAre("polyline", "elliptical", "elliptical", "polyline"));
  const RecordedCall& half = read.calls()[1];
  expect_point(read, half.points[0], 5, 0);
  EXPECT_NEAR(read.length(half.points[1].x), 5, tolerance);
  EXPECT_NEAR(read.length(half.points[1].y), 5, tolerance);
  expect_angle(half.angles[0], pi);
  expect_angle(half.angles[1], 2 * pi);
  // Clockwise from (10, 0) to (20, 10): around (20, 0).
  const RecordedCall& turn = read.calls()[2];
  expect_point(read, turn.points[0], 20, 0);
  EXPECT_NEAR(read.length(turn.points[1].x), 10, tolerance);
  expect_angle(turn.angles[0], pi / 2);
  expect_angle(turn.angles[1], pi);
  ASSERT_EQ(read.calls()[3].points.size(), 2U);
  expect_point(read, read.calls()[3].points[0], 20, 10);
  EXPECT_EQ(read.drawing.extent, (importers::Extent{-100, -100, 100, 100}));
}

TEST(DxfEntities, ExtentsOfArcsAreExact) {
  const DxfDrawing read({entity("ARC", {{10, 0}, {20, 0}, {40, 2}, {50, 60}, {51, 200}})});
  EXPECT_NEAR(read.drawing.extent.min_x, -2, tolerance);
  EXPECT_NEAR(read.drawing.extent.max_x, 1, tolerance);
  EXPECT_NEAR(read.drawing.extent.max_y, 2, tolerance);
  EXPECT_NEAR(read.drawing.extent.min_y, 2 * std::sin(200 * pi / 180), tolerance);
}

TEST(DxfEntities, CirclesAndArcs) {
  const DxfDrawing read = framed(entity("CIRCLE", {{10, 3}, {20, 4}, {40, 5}}) +
                                 entity("ARC", {{10, 1}, {20, 1}, {40, 2}, {50, 270}, {51, 45}}));
  ASSERT_EQ(read.calls().size(), 3U);
  const RecordedCall& circle = read.calls()[1];
  expect_point(read, circle.points[0], 3, 4);
  EXPECT_NEAR(read.length(circle.points[1].x), 5, tolerance);
  EXPECT_NEAR(circle.angles[1] - circle.angles[0], 2 * pi, 1e-5);
  const RecordedCall& arc = read.calls()[2];
  expect_angle(arc.angles[0], 1.5 * pi);
  expect_angle(arc.angles[1], 2.25 * pi);
}

TEST(DxfEntities, EllipsesOfARoundedWholeTurnAreWhole) {
  for (const double end : {6.2832, 6.283185, 6.28318530717}) {
    const DxfDrawing read =
        framed(entity("ELLIPSE", {{10, 1}, {11, 8}, {40, 0.5}, {41, 0}, {42, end}}));
    ASSERT_EQ(read.calls().size(), 2U);
    const std::vector<double>& angles = read.calls()[1].angles;
    EXPECT_NEAR(angles[1] - angles[0], 2 * pi, 1e-5) << end;
  }
}

TEST(DxfEntities, EllipsesByTheirMajorAxis) {
  const DxfDrawing read = framed(
      entity("ELLIPSE", {{10, 1}, {20, 2}, {11, 0}, {21, 8}, {40, 0.25}, {41, 0}, {42, pi / 2}}));
  ASSERT_EQ(read.calls().size(), 2U);
  const RecordedCall& ellipse = read.calls()[1];
  expect_point(read, ellipse.points[0], 1, 2);
  EXPECT_NEAR(read.length(ellipse.points[1].x), 8, tolerance);
  EXPECT_NEAR(read.length(ellipse.points[1].y), 2, tolerance);
  expect_angle(ellipse.angles[2], pi / 2);
  expect_angle(ellipse.angles[1], pi / 2);
}

TEST(DxfEntities, PlanesSeenFromBehindAreMirrored) {
  const DxfDrawing read = framed(entity(
      "ARC", {{10, -30}, {20, 5}, {40, 4}, {50, 0}, {51, 90}, {210, 0}, {220, 0}, {230, -1}}));
  ASSERT_EQ(read.calls().size(), 2U);
  const RecordedCall& arc = read.calls()[1];
  expect_point(read, arc.points[0], 30, 5);
  expect_angle(arc.angles[0] + arc.angles[2], pi / 2);
  expect_angle(arc.angles[1] + arc.angles[2], pi);
}

TEST(DxfEntities, SplinesKeepWithinTheirKnotsAndWeights) {
  // A quarter of a circle as a rational curve of the second degree.
  const double w = std::sqrt(0.5);
  const DxfDrawing read = framed(entity("SPLINE", {{70, 12},
                                                   {71, 2},
                                                   {72, 6},
                                                   {73, 3},
                                                   {40, 0},
                                                   {40, 0},
                                                   {40, 0},
                                                   {40, 1},
                                                   {40, 1},
                                                   {40, 1},
                                                   {41, 1},
                                                   {41, w},
                                                   {41, 1},
                                                   {10, 10},
                                                   {20, 0},
                                                   {10, 10},
                                                   {20, 10},
                                                   {10, 0},
                                                   {20, 10}}));
  ASSERT_EQ(read.calls().size(), 2U);
  const std::vector<LM_DCI_Point>& points = read.calls()[1].points;
  EXPECT_GT(points.size(), 12U);
  for (const LM_DCI_Point& p : points) {
    EXPECT_NEAR(std::hypot(read.x(p), read.y(p)), 10, tolerance);
  }
  expect_point(read, points.front(), 10, 0);
  expect_point(read, points.back(), 0, 10);
}

TEST(DxfEntities, SplinesWithoutControlPointsGoThroughTheirFitPoints) {
  const DxfDrawing read = framed(entity("SPLINE", {{70, 8},
                                                   {71, 3},
                                                   {72, 0},
                                                   {73, 0},
                                                   {74, 4},
                                                   {11, 0},
                                                   {21, 0},
                                                   {11, 10},
                                                   {21, 10},
                                                   {11, 20},
                                                   {21, 0},
                                                   {11, 30},
                                                   {21, 10}}));
  ASSERT_EQ(read.calls().size(), 2U);
  const std::vector<LM_DCI_Point>& points = read.calls()[1].points;
  ASSERT_EQ(points.size(), 1U + 3 * 24);
  for (std::size_t i = 0; i < 4; ++i) {
    expect_point(read, points[24 * i], 10.0 * static_cast<double>(i), i % 2 == 0 ? 0 : 10);
  }
}

TEST(DxfEntities, SplinesWithSenselessKnotsAreDrawnAllTheSame) {
  const DxfDrawing read = framed(entity("SPLINE", {{70, 8},
                                                   {71, 3},
                                                   {72, 2},
                                                   {73, 4},
                                                   {40, 5},
                                                   {40, 1},
                                                   {10, 0},
                                                   {20, 0},
                                                   {10, 1},
                                                   {20, 5},
                                                   {10, 9},
                                                   {20, 5},
                                                   {10, 10},
                                                   {20, 0}}));
  ASSERT_EQ(read.calls().size(), 2U);
  expect_point(read, read.calls()[1].points.front(), 0, 0);
  expect_point(read, read.calls()[1].points.back(), 10, 0);
}

TEST(DxfEntities, PointsAsLargeAsTheOptionSays) {
  importers::ReadOptions options;
  options.point_size = 3;
  const DxfDrawing read = framed(entity("POINT", {{10, 7}, {20, 8}}), options);
  ASSERT_EQ(read.calls().size(), 2U);
  expect_point(read, read.calls()[1].points[0], 7, 8);
  EXPECT_EQ(read.drawing.renditions.back()->line_style().weight, 3);
}

TEST(DxfEntities, SolidsAreFilledWithTheirLastCornersExchanged) {
  const DxfDrawing read = framed(entity(
      "SOLID", {{10, 0}, {20, 0}, {11, 4}, {21, 0}, {12, 0}, {22, 4}, {13, 4}, {23, 4}, {62, 1}}));
  ASSERT_THAT(read.recorded.actions(), ElementsAre("polyline", "polygon"));
  const std::vector<LM_DCI_Point>& points = read.calls()[1].points;
  ASSERT_EQ(points.size(), 4U);
  expect_point(read, points[2], 4, 4);
  expect_point(read, points[3], 0, 4);
  EXPECT_EQ(read.calls()[1].color.word, 0xFF0000U);
}

std::string face(int hidden_edges, double fourth_x, double fourth_y) {
  return entity("3DFACE", {{10, 0},
                           {20, 0},
                           {30, 5},
                           {11, 4},
                           {21, 0},
                           {12, 4},
                           {22, 4},
                           {13, fourth_x},
                           {23, fourth_y},
                           {70, hidden_edges}});
}

TEST(DxfEntities, FacesAreTheirOutlines) {
  const DxfDrawing square = framed(face(0, 0, 4));
  ASSERT_THAT(square.recorded.actions(), ElementsAre("polyline", "polyline"));
  const std::vector<LM_DCI_Point>& points = square.calls()[1].points;
  ASSERT_EQ(points.size(), 5U);
  expect_point(square, points[3], 0, 4);
  EXPECT_EQ(points.front(), points.back());
  // The fourth corner is the third one again.
  const DxfDrawing triangle = framed(face(0, 4, 4));
  ASSERT_EQ(triangle.calls().size(), 2U);
  EXPECT_EQ(triangle.calls()[1].points.size(), 4U);
}

TEST(DxfEntities, FacesLeaveOutTheirHiddenEdges) {
  const DxfDrawing read = framed(face(1 | 4, 0, 4));
  ASSERT_EQ(read.calls().size(), 3U);
  ASSERT_EQ(read.calls()[1].points.size(), 2U);
  expect_point(read, read.calls()[1].points[0], 4, 0);
  expect_point(read, read.calls()[1].points[1], 4, 4);
  expect_point(read, read.calls()[2].points[0], 0, 4);
  expect_point(read, read.calls()[2].points[1], 0, 0);
  const DxfDrawing hidden = framed(face(15, 0, 4));
  EXPECT_EQ(hidden.calls().size(), 1U);
  EXPECT_EQ(hidden.drawing.remarks, "");
}

/// Whether the even-odd rule puts (x, y) inside the polygon.
bool is_inside(const DxfDrawing& read, const std::vector<LM_DCI_Point>& polygon, double x,
               double y) {
  bool inside = false;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const LM_DCI_Point& a = polygon[i];
    const LM_DCI_Point& b = polygon[(i + 1) % polygon.size()];
    const double ay = read.y(a);
    const double by = read.y(b);
    if ((ay > y) == (by > y)) continue;
    if (read.x(a) + (y - ay) / (by - ay) * (read.x(b) - read.x(a)) > x) inside = !inside;
  }
  return inside;
}

std::string ring(double x, double y, double side) {
  return groups({{92, 2},
                 {72, 0},
                 {73, 1},
                 {93, 4},
                 {10, x},
                 {20, y},
                 {10, x + side},
                 {20, y},
                 {10, x + side},
                 {20, y + side},
                 {10, x},
                 {20, y + side},
                 {97, 0}});
}

std::string hatch(const std::string& loops, int count, bool solid) {
  return entity("HATCH", {{10, 0},
                          {20, 0},
                          {30, 0},
                          {2, solid ? "SOLID" : "ANSI31"},
                          {70, solid ? 1 : 0},
                          {71, 0},
                          {91, count}}) +
         loops + groups({{75, 0}, {76, 1}});
}

TEST(DxfEntities, SolidHatchesLeaveTheirHolesOpen) {
  const DxfDrawing read =
      framed(hatch(ring(0, 0, 50) + ring(10, 10, 10) + ring(30, 30, 10), 3, true));
  const auto polygons = read.recorded.points_of("polygon");
  ASSERT_EQ(polygons.size(), 1U);
  EXPECT_TRUE(is_inside(read, polygons[0], 5.1, 5.3));
  EXPECT_TRUE(is_inside(read, polygons[0], 25.1, 26.3));
  EXPECT_FALSE(is_inside(read, polygons[0], 15.1, 15.3));
  EXPECT_FALSE(is_inside(read, polygons[0], 35.1, 36.3));
  EXPECT_FALSE(is_inside(read, polygons[0], 55.1, 26.3));
}

TEST(DxfEntities, HatchesOfEdgesAreClosed) {
  // Half a disk: a clockwise half circle from (10, 0) below to (-10, 0), and back.
  const std::string loop = groups({{92, 1},
                                   {93, 2},
                                   {72, 2},
                                   {10, 0},
                                   {20, 0},
                                   {40, 10},
                                   {50, 0},
                                   {51, 180},
                                   {73, 0},
                                   {72, 1},
                                   {10, -10},
                                   {20, 0},
                                   {11, 10},
                                   {21, 0},
                                   {97, 0}});
  const DxfDrawing read = framed(hatch(loop, 1, true));
  const auto polygons = read.recorded.points_of("polygon");
  ASSERT_EQ(polygons.size(), 1U);
  EXPECT_TRUE(is_inside(read, polygons[0], 0.1, -9.5));
  EXPECT_FALSE(is_inside(read, polygons[0], 0.1, 5));
  EXPECT_FALSE(is_inside(read, polygons[0], 8, -8));
}

TEST(DxfEntities, HatchesAreOutlinesWithoutFill) {
  importers::ReadOptions options;
  options.fill = false;
  const DxfDrawing read = framed(hatch(ring(0, 0, 50) + ring(10, 10, 10), 2, true), options);
  EXPECT_THAT(read.recorded.actions(), ElementsAre("polyline", "polyline", "polyline"));
}

TEST(DxfEntities, PatternedHatchesAreTheirLines) {
  const std::string lines =
      groups({{78, 1}, {53, 90}, {43, 5}, {44, 0}, {45, -10}, {46, 0}, {79, 0}});
  const DxfDrawing read = framed(hatch(ring(0, 0, 50) + ring(10, 10, 20), 2, false) + lines);
  // Upright lines at 5, 15, ... 45, of which those at 15 and 25 leave the hole out.
  const auto segments = read.recorded.points_of("polyline");
  ASSERT_EQ(segments.size(), 1U + 5 + 2);
  double total = 0;
  for (std::size_t i = 1; i < segments.size(); ++i) {
    EXPECT_NEAR(read.x(segments[i][0]), read.x(segments[i][1]), tolerance);
    EXPECT_NEAR(std::fmod(read.x(segments[i][0]), 10), 5, tolerance);
    total += std::fabs(read.y(segments[i][1]) - read.y(segments[i][0]));
  }
  EXPECT_NEAR(total, 5 * 50 - 2 * 20, tolerance);
}

TEST(DxfEntities, HatchLinesMayBeDashed) {
  const std::string lines =
      groups({{78, 1}, {53, 0}, {43, 2}, {44, 25}, {45, 0}, {46, 100}, {79, 2}, {49, 6}, {49, -4}});
  const DxfDrawing read = framed(hatch(ring(0, 0, 50), 1, false) + lines);
  const auto segments = read.recorded.points_of("polyline");
  // From 2 on every 10, 6 long; the first one ends before the area starts.
  ASSERT_EQ(segments.size(), 1U + 5);
  expect_point(read, segments[1][0], 2, 25);
  expect_point(read, segments[1][1], 8, 25);
  expect_point(read, segments[5][1], 48, 25);
}

TEST(DxfEntities, HatchLinesWithoutDistanceAreOutlines) {
  const std::string lines =
      groups({{78, 1}, {53, 0}, {43, 2}, {44, 25}, {45, 5}, {46, 0}, {79, 0}});
  const DxfDrawing read = framed(hatch(ring(0, 0, 50), 1, false) + lines);
  const auto segments = read.recorded.points_of("polyline");
  ASSERT_EQ(segments.size(), 2U);
  EXPECT_EQ(segments[1].size(), 5U);
}

TEST(DxfEntities, RaysAreCutAtTheExtent) {
  const DxfDrawing read = framed(entity("XLINE", {{10, 0}, {20, 10}, {11, 1}, {21, 0}}) +
                                 entity("RAY", {{10, 50}, {20, 0}, {11, 0}, {21, -1}}) +
                                 entity("RAY", {{10, 500}, {20, 0}, {11, 1}, {21, 0}}));
  EXPECT_EQ(read.drawing.extent, (importers::Extent{-100, -100, 100, 100}));
  ASSERT_EQ(read.calls().size(), 3U);
  expect_point(read, read.calls()[1].points[0], -100, 10);
  expect_point(read, read.calls()[1].points[1], 100, 10);
  expect_point(read, read.calls()[2].points[0], 50, 0);
  expect_point(read, read.calls()[2].points[1], 50, -100);
}

TEST(DxfEntities, DimensionsAreDrawnByTheirBlocks) {
  const std::string dimension = entity("DIMENSION", {{2, "*D1"},
                                                     {10, 0},
                                                     {20, 5},
                                                     {11, 5},
                                                     {21, 6},
                                                     {70, 32},
                                                     {13, 0},
                                                     {23, 0},
                                                     {14, 10},
                                                     {24, 0}});
  const DxfDrawing read({frame + dimension, dxf_text::block("*D1", line(1, 1, 2, 2))});
  EXPECT_THAT(read.recorded.actions(), ElementsAre("polyline", "polyline"));
  expect_point(read, read.calls()[1].points[1], 2, 2);
}

TEST(DxfEntities, DimensionsWithoutBlocksAreDrawnSimply) {
  const DxfDrawing read = framed(entity("DIMENSION", {{10, 10},
                                                      {20, 5},
                                                      {11, 5},
                                                      {21, 6},
                                                      {70, 32},
                                                      {13, 0},
                                                      {23, 0},
                                                      {14, 10},
                                                      {24, 1},
                                                      {50, 0}}));
  ASSERT_EQ(read.recorded.problem, "");
  EXPECT_THAT(read.recorded.actions(), ElementsAre("polyline", "polyline", "polyline", "polyline",
                                                   "polygon", "polygon", "wide"));
  expect_point(read, read.calls()[3].points[0], 0, 5);
  expect_point(read, read.calls()[3].points[1], 10, 5);
  EXPECT_EQ(read.calls()[6].wide_text, L"10");
}

TEST(DxfEntities, LeadersHaveArrows) {
  const DxfDrawing read = framed(entity("LEADER", {{71, 1},
                                                   {72, 0},
                                                   {73, 3},
                                                   {76, 3},
                                                   {10, 0},
                                                   {20, 0},
                                                   {10, 10},
                                                   {20, 10},
                                                   {10, 20},
                                                   {20, 10}}));
  ASSERT_THAT(read.recorded.actions(), ElementsAre("polyline", "polygon", "polyline"));
  expect_point(read, read.calls()[1].points[0], 0, 0);
  EXPECT_EQ(read.calls()[2].points.size(), 3U);
}

TEST(DxfEntities, MeshesAreTheirLines) {
  std::string mesh = entity("POLYLINE", {{66, 1}, {70, 16}, {71, 2}, {72, 3}});
  for (int i = 0; i < 6; ++i) mesh += entity("VERTEX", {{10, i % 3}, {20, i / 3}, {70, 64}});
  const DxfDrawing read = framed(mesh + entity("SEQEND", {}));
  EXPECT_EQ(read.count("polyline"), 1U + 2 + 3);
}

TEST(DxfEntities, WhatIsNotKnownIsCounted) {
  const DxfDrawing read = framed(entity("REGION", {{1, "x"}}) + entity("IMAGE", {{10, 1}}) +
                                 entity("REGION", {{1, "y"}}) + entity("VIEWPORT", {{10, 1}}));
  EXPECT_EQ(read.drawing.remarks, "left out: 1 of kind IMAGE, 2 of kind REGION");
  EXPECT_EQ(read.drawing.drawables, 1U);
}

TEST(DxfEntities, BulgesOfNextToNothingAreStraight) {
  for (const double bulge : {1e-10, -1e-15, 1e-17, 1e-300}) {
    const DxfDrawing read =
        framed(entity("LWPOLYLINE", {{90, 2}, {10, 0}, {20, 0}, {42, bulge}, {10, 9}, {20, 5}}) +
               hatch(groups({{92, 2},
                             {72, 1},
                             {73, 1},
                             {93, 3},
                             {10, 0},
                             {20, 0},
                             {42, bulge},
                             {10, 8},
                             {20, 0},
                             {42, 0},
                             {10, 8},
                             {20, 8},
                             {42, 0}}),
                     1, true));
    ASSERT_THAT(read.recorded.actions(), ElementsAre("polyline", "polyline", "polygon"));
    expect_point(read, read.calls()[1].points[1], 9, 5);
    EXPECT_EQ(read.calls()[2].points.size(), 3U);
    EXPECT_EQ(read.drawing.remarks, "");
  }
}

TEST(DxfEntities, AQuarterOfACircleByItselfIsAnArc) {
  const DxfDrawing read({entity("ARC", {{10, 3}, {20, 7}, {40, 10}, {50, 0}, {51, 90}})});
  ASSERT_THAT(read.recorded.actions(), ElementsAre("elliptical"));
  expect_point(read, read.calls()[0].points[0], 3, 7);
  EXPECT_NEAR(read.length(read.calls()[0].points[1].x), 10, tolerance);
  EXPECT_NEAR(read.drawing.extent.width(), 10, tolerance);
}

TEST(DxfEntities, SizesOfDimensionsComeFromTheHeader) {
  const std::string header =
      groups({{9, "$DIMTXT"}, {40, 20.0}, {9, "$DIMASZ"}, {40, 10.0}, {9, "$DIMSCALE"}, {40, 0.5}});
  const DxfDrawing read({frame + entity("DIMENSION", {{10, 90},
                                                      {20, 5},
                                                      {11, 45},
                                                      {21, 6},
                                                      {70, 32},
                                                      {13, 0},
                                                      {23, 0},
                                                      {14, 90},
                                                      {24, 1}}),
                         "", "", header});
  const auto arrows = read.recorded.points_of("polygon");
  ASSERT_EQ(arrows.size(), 2U);
  EXPECT_NEAR(read.x(arrows[0][1]) - read.x(arrows[0][0]), 5, tolerance);
  ASSERT_EQ(read.recorded.actions().back(), "wide");
  const DxfDrawing usual = framed(entity("TEXT", {{10, 0}, {20, 0}, {40, 10}, {1, "90"}}));
  EXPECT_NEAR(read.calls().back().text_attributes.size, usual.calls().back().text_attributes.size,
              1);
}

TEST(DxfEntities, OfHatchLinesThatAreTooDenseSomeAreDrawn) {
  const std::string lines =
      groups({{78, 1}, {53, 0}, {43, 0}, {44, 0}, {45, 0}, {46, 0.001}, {79, 0}});
  const DxfDrawing read = framed(hatch(ring(0, 0, 50), 1, false) + lines);
  const auto segments = read.recorded.points_of("polyline");
  EXPECT_GT(segments.size(), 2500U);
  EXPECT_LE(segments.size(), 5002U);
}

}  // namespace
