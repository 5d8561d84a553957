// What the OGR importer makes of files.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/importers/geojson.h"
#include "tests/importers/recorded_drawing.h"
#include "tests/support/point_printing.h"
#include "tests/support/temporary_folder.h"

namespace {

using geojson::collection;
using geojson::geometry;
using importers::ReadOptions;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr std::int32_t half = 1 << 30;

class OgrImporter : public testing::Test {
 protected:
  TemporaryFolder folder;
};

const std::string square = geometry("Polygon", "[[[0,0],[10,0],[10,10],[0,10],[0,0]]]");
const std::string line = geometry("LineString", "[[0,0],[10,10]]");
const std::string point = geometry("Point", "[5,5]");

TEST_F(OgrImporter, DrawsFillsThenOutlinesThenLinesThenPoints) {
  const RecordedDrawing read(folder.write("a.geojson", collection({point, line, square, square})));
  ASSERT_EQ(read.problem, "");
  EXPECT_THAT(read.actions(),
              ElementsAre("polygon", "polygon", "polyline", "polyline", "polyline", "dot"));
  EXPECT_EQ(read.drawing.drawables, 6U);
  EXPECT_EQ(read.drawing.features, 4U);
}

TEST_F(OgrImporter, MapsCoordinatesAndTellsTheirExtent) {
  const RecordedDrawing read(folder.write("a.geojson", collection({square, point})));
  ASSERT_EQ(read.problem, "");
  EXPECT_EQ(read.drawing.extent, (importers::Extent{0, 0, 10, 10}));
  EXPECT_THAT(read.points_of("polygon"),
              ElementsAre(ElementsAre(LM_DCI_Point{-half, -half, 0}, LM_DCI_Point{half, -half, 0},
                                      LM_DCI_Point{half, half, 0}, LM_DCI_Point{-half, half, 0})));
  EXPECT_THAT(read.points_of("dot"), ElementsAre(ElementsAre(LM_DCI_Point{0, 0, 0})));
}

TEST_F(OgrImporter, DrawsOutlinesOnlyWithoutFill) {
  ReadOptions options;
  options.fill = false;
  options.line_color = LM_RGB32{0x00123456};
  const RecordedDrawing read(folder.write("a.geojson", collection({square})), options);
  ASSERT_EQ(read.problem, "");
  EXPECT_THAT(read.actions(), ElementsAre("polyline"));
  EXPECT_EQ(read.recorder->calls()[0].color, (LM_RGB32{0x00123456}));
  EXPECT_FALSE(read.drawing.is_map);
}

/// Whether the even-odd rule puts (x, y) inside the contour.
bool is_inside(const std::vector<LM_DCI_Point>& contour, double x, double y) {
  bool inside = false;
  for (std::size_t i = 0; i < contour.size(); ++i) {
    const LM_DCI_Point& a = contour[i];
    const LM_DCI_Point& b = contour[(i + 1) % contour.size()];
    if ((a.y > y) == (b.y > y)) continue;
    const double at = a.x + (y - a.y) / (static_cast<double>(b.y) - a.y) * (double{1} * b.x - a.x);
    if (at > x) inside = !inside;
  }
  return inside;
}

TEST_F(OgrImporter, LeavesHolesOpenInOnePolygon) {
  const std::string holes = geometry("Polygon",
                                     "[[[0,0],[8,0],[8,8],[0,8],[0,0]],"
                                     "[[1,1],[3,1],[3,3],[1,3],[1,1]],"
                                     "[[5,5],[7,5],[7,7],[5,7],[5,5]]]");
  const RecordedDrawing read(folder.write("a.geojson", collection({holes})));
  ASSERT_EQ(read.problem, "");
  const auto polygons = read.points_of("polygon");
  ASSERT_EQ(polygons.size(), 1U);
  const auto inside = [&](double x, double y) {
    return is_inside(polygons[0], read.drawing.mapping.logical_x(x),
                     read.drawing.mapping.logical_y(y));
  };
  EXPECT_FALSE(inside(2.1, 2.2));
  EXPECT_FALSE(inside(6.1, 6.2));
  EXPECT_TRUE(inside(4.1, 4.2));
  EXPECT_TRUE(inside(0.5, 4.1));
  EXPECT_TRUE(inside(7.5, 6.2));
  EXPECT_FALSE(inside(8.5, 4.1));
  EXPECT_EQ(read.points_of("polyline").size(), 3U);
}

TEST_F(OgrImporter, ReadsMultiGeometriesAndCollections) {
  const std::string parts =
      R"({"type":"GeometryCollection","geometries":[)" + geometry("MultiPoint", "[[0,0],[1,1]]") +
      "," + geometry("MultiLineString", "[[[0,0],[1,0]],[[0,1],[1,1]]]") + "," +
      geometry("MultiPolygon", "[[[[0,0],[1,0],[1,1],[0,0]]],[[[2,2],[3,2],[3,3],[2,2]]]]") + "]}";
  const RecordedDrawing read(folder.write("a.geojson", collection({parts})));
  ASSERT_EQ(read.problem, "");
  EXPECT_EQ(read.points_of("dot").size(), 2U);
  EXPECT_EQ(read.points_of("polygon").size(), 2U);
  EXPECT_EQ(read.points_of("polyline").size(), 4U);
}

TEST_F(OgrImporter, MakesChainsOfCurves) {
  const RecordedDrawing read(folder.write("a.csv", "id,WKT\n1,\"CIRCULARSTRING(0 0,1 1,2 0)\"\n"));
  ASSERT_EQ(read.problem, "");
  const auto lines = read.points_of("polyline");
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_GT(lines[0].size(), 10U);
  for (const LM_DCI_Point& p : lines[0]) {
    const double scale = read.drawing.mapping.scale;
    const double x = p.x / scale + read.drawing.mapping.origin_x - 1.0;
    const double y = p.y / scale + read.drawing.mapping.origin_y;
    EXPECT_NEAR(std::hypot(x, y), 1.0, 1e-6);
  }
}

TEST_F(OgrImporter, SplitsLongLinesIntoPiecesThatShareTheirEnds) {
  std::string coordinates;
  for (int i = 0; i < 1000; ++i) {
    coordinates += (i > 0 ? ",[" : "[") + std::to_string(i) + "," + std::to_string(i % 7) + "]";
  }
  const RecordedDrawing read(
      folder.write("a.geojson", collection({geometry("LineString", "[" + coordinates + "]")})));
  ASSERT_EQ(read.problem, "");
  const auto pieces = read.points_of("polyline");
  ASSERT_EQ(pieces.size(), 4U);
  std::vector<LM_DCI_Point> joined{pieces[0].front()};
  for (const std::vector<LM_DCI_Point>& piece : pieces) {
    EXPECT_LE(piece.size(), 256U);
    EXPECT_EQ(piece.front(), joined.back());
    joined.insert(joined.end(), piece.begin() + 1, piece.end());
  }
  ASSERT_EQ(joined.size(), 1000U);
  for (std::size_t i = 0; i < joined.size(); ++i) {
    const auto x = static_cast<double>(i);
    const DL::PointTemplate<long> expected =
        read.drawing.mapping.to_logical(x, static_cast<double>(i % 7));
    EXPECT_EQ(joined[i], (LM_DCI_Point{expected.x, expected.y, 0}));
  }
}

TEST_F(OgrImporter, LeavesOutAndCountsCoordinatesThatAreNoNumbers) {
  const std::string bad = geometry("LineString", "[[0,0],[NaN,1],[2,2],[1e999,3],[4,-1e300]]");
  const RecordedDrawing read(folder.write("bad.geojson", collection({point, bad})));
  ASSERT_EQ(read.problem, "");
  EXPECT_EQ(read.drawing.unusable_points, 3U);
  EXPECT_EQ(read.drawing.first_unusable, "feature 2 of layer 'bad'");
  EXPECT_EQ(read.drawing.extent, (importers::Extent{0, 0, 5, 5}));
  const auto lines = read.points_of("polyline");
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].size(), 2U);
}

TEST_F(OgrImporter, SaysWhenNoCoordinateIsUsable) {
  const std::string path = folder.write("a.geojson", collection({geometry("Point", "[NaN,1]")}));
  EXPECT_THAT(RecordedDrawing(path).problem, AllOf(HasSubstr(path), HasSubstr("finite")));
}

TEST_F(OgrImporter, SaysWhenThereIsNoGeometry) {
  const std::string none = folder.write("none.geojson", collection({}));
  EXPECT_THAT(RecordedDrawing(none).problem, AllOf(HasSubstr(none), HasSubstr("no geometry")));
  const std::string null = folder.write("null.geojson", collection({"null"}));
  EXPECT_THAT(RecordedDrawing(null).problem, AllOf(HasSubstr(null), HasSubstr("no geometry")));
}

TEST_F(OgrImporter, CountsFeaturesWithoutGeometry) {
  const std::string speck = geometry("Polygon", "[[[0,0],[1,1],[0,0]]]");
  const RecordedDrawing read(folder.write("a.geojson", collection({point, "null", speck})));
  ASSERT_EQ(read.problem, "");
  EXPECT_EQ(read.drawing.features, 3U);
  EXPECT_EQ(read.drawing.empty_features, 2U);
}

TEST_F(OgrImporter, ReadsASinglePoint) {
  const RecordedDrawing read(folder.write("a.geojson", point));
  ASSERT_EQ(read.problem, "");
  EXPECT_EQ(read.drawing.extent, (importers::Extent{5, 5, 5, 5}));
  EXPECT_THAT(read.points_of("dot"), ElementsAre(ElementsAre(LM_DCI_Point{0, 0, 0})));
}

TEST_F(OgrImporter, DrawsPointsAsTheSizeAsks) {
  ReadOptions options;
  options.point_size = 7;
  const std::string path = folder.write("a.geojson", point);
  const RecordedDrawing wide(path, options);
  ASSERT_EQ(wide.drawing.renditions.size(), 1U);
  EXPECT_EQ(wide.drawing.renditions[0]->line_style().weight, 7);
  options.point_size = 1;
  const RecordedDrawing single(path, options);
  EXPECT_TRUE(single.drawing.renditions.empty());
  EXPECT_THAT(single.actions(), ElementsAre("dot"));
}

constexpr const char* two_layers = R"({"type":"Topology","arcs":[[[0,0],[4,0],[4,4],[0,0]],
  [[1,1],[2,1],[2,2],[1,1]]],"objects":{
  "fine":{"type":"GeometryCollection","geometries":[{"type":"Polygon","arcs":[[1]]}]},
  "coarse":{"type":"GeometryCollection","geometries":[{"type":"Polygon","arcs":[[0]]}]}}})";

TEST_F(OgrImporter, DrawsCoarseLayersBelowFineOnes) {
  const RecordedDrawing read(folder.write("a.json", two_layers));
  ASSERT_EQ(read.problem, "");
  EXPECT_THAT(read.drawing.layers, ElementsAre("coarse", "fine"));
}

TEST_F(OgrImporter, ReadsChosenLayersInTheirOrder) {
  const std::string path = folder.write("a.json", two_layers);
  ReadOptions options;
  options.layers = {"fine"};
  const RecordedDrawing one(path, options);
  EXPECT_THAT(one.drawing.layers, ElementsAre("fine"));
  EXPECT_EQ(one.drawing.extent, (importers::Extent{1, 1, 2, 2}));
  options.layers = {"fine", "coarse"};
  EXPECT_THAT(RecordedDrawing(path, options).drawing.layers, ElementsAre("fine", "coarse"));
}

TEST_F(OgrImporter, ReadsALayerOnceThatIsChosenTwice) {
  ReadOptions options;
  options.layers = {"fine", "coarse", "fine"};
  const RecordedDrawing read(folder.write("a.json", two_layers), options);
  EXPECT_THAT(read.drawing.layers, ElementsAre("fine", "coarse"));
  EXPECT_EQ(read.drawing.drawables, 4U);
}

TEST_F(OgrImporter, NamesTheLayersWhenOneIsMissing) {
  ReadOptions options;
  options.layers = {"finest"};
  const std::string path = folder.write("a.json", two_layers);
  EXPECT_THAT(RecordedDrawing(path, options).problem,
              AllOf(HasSubstr(path), HasSubstr("'finest'"), HasSubstr("'fine', 'coarse'")));
  options.layers = {""};
  EXPECT_THAT(RecordedDrawing(path, options).problem, HasSubstr("no layer ''"));
}

TEST_F(OgrImporter, TellsWhatIsAMap) {
  EXPECT_TRUE(RecordedDrawing(folder.write("a.geojson", collection({square}))).drawing.is_map);
  EXPECT_FALSE(RecordedDrawing(folder.write("b.geojson", collection({line}))).drawing.is_map);
  const std::string plan = folder.write("plan.csv", "id,WKT\n1,\"POLYGON((0 0,1 0,1 1,0 0))\"\n");
  const RecordedDrawing read(plan);
  EXPECT_EQ(read.problem, "");
  EXPECT_FALSE(read.drawing.is_map);
}

TEST_F(OgrImporter, StopsWhenProgressSaysSo) {
  std::string rows = "id,WKT\n";
  for (int i = 0; i < 2000; ++i) rows += std::to_string(i) + ",\"POINT(1 2)\"\n";
  const std::string path = folder.write("a.csv", rows);
  std::size_t seen = 0;
  ReadOptions options;
  options.progress = [&](const importers::Progress& progress) {
    seen = progress.features;
    return false;
  };
  EXPECT_THAT(RecordedDrawing(path, options).problem,
              AllOf(HasSubstr(path), HasSubstr("cancelled")));
  EXPECT_GT(seen, 0U);
  EXPECT_LT(seen, 2000U);
}

TEST_F(OgrImporter, SaysWhatIsWrongWithADamagedFile) {
  const std::string path = folder.write("a.geojson", collection({square}).substr(0, 60));
  EXPECT_THAT(RecordedDrawing(path).problem,
              AllOf(StartsWith("cannot read '" + path + "'"), HasSubstr("complete")));
}

TEST_F(OgrImporter, CutsTheWorldAtTheAntimeridian) {
  const RecordedDrawing read(DISPLAYLIST_SOURCE_DIR "/examples/data/world-110m.json");
  ASSERT_EQ(read.problem, "");
  EXPECT_THAT(read.drawing.layers, ElementsAre("land", "countries"));
  EXPECT_EQ(read.drawing.extent.min_x, -180.0);
  EXPECT_EQ(read.drawing.extent.max_x, 180.0);
  const auto lines = read.points_of("polyline");
  EXPECT_GT(lines.size(), 300U);
  for (const std::vector<LM_DCI_Point>& each : lines) {
    for (std::size_t i = 1; i < each.size(); ++i) {
      EXPECT_LT(std::abs(static_cast<double>(each[i].x) - each[i - 1].x), half / 4.0);
    }
  }
}

std::size_t edge_count(const std::vector<std::vector<LM_DCI_Point>>& lines) {
  std::size_t edges = 0;
  for (const std::vector<LM_DCI_Point>& each : lines) edges += each.size() - 1;
  return edges;
}

TEST_F(OgrImporter, KeepsOutlinesAlongTheBorderOfTheMap) {
  const std::string globe =
      geometry("Polygon", "[[[-180,-90],[180,-90],[180,90],[-180,90],[-180,-90]]]");
  const RecordedDrawing whole(folder.write("globe.geojson", collection({globe})));
  EXPECT_EQ(edge_count(whole.points_of("polyline")), 4U);
  const std::string east = geometry("Polygon", "[[[170,0],[180,0],[180,10],[170,10],[170,0]]]");
  const RecordedDrawing plan(folder.write("east.geojson", collection({east})));
  EXPECT_EQ(edge_count(plan.points_of("polyline")), 4U);
}

/// TopoJSON of a single ring.
std::string topology(const std::string& ring) {
  return R"({"type":"Topology","arcs":[)" + ring + R"(],"objects":{"a":{"type":
    "GeometryCollection","geometries":[{"type":"Polygon","arcs":[[0]]}]}}})";
}

TEST_F(OgrImporter, LeavesOutTheEdgesAlongWhichItCut) {
  const RecordedDrawing cut(
      folder.write("cut.json", topology("[[170,0],[-170,0],[-170,10],[170,10],[170,0]]")));
  ASSERT_EQ(cut.problem, "");
  EXPECT_EQ(cut.points_of("polygon").size(), 1U);
  EXPECT_EQ(edge_count(cut.points_of("polyline")), 6U);
  const RecordedDrawing own(
      folder.write("own.json", topology("[[170,0],[180,0],[180,10],[170,10],[170,0]]")));
  EXPECT_EQ(edge_count(own.points_of("polyline")), 4U);
}

TEST_F(OgrImporter, KeepsAnOutlineThatHasOnlyEdgesAlongTheCut) {
  const RecordedDrawing read(
      folder.write("pole.json", topology("[[-120,90],[0,90],[120,90],[-120,90]]")));
  ASSERT_EQ(read.problem, "");
  EXPECT_GT(edge_count(read.points_of("polyline")), 0U);
}

}  // namespace
