// Drawings of many formats, written by GDAL itself.

#include <gdal_priv.h>
#include <gtest/gtest.h>
#include <ogrsf_frmts.h>

#include <cctype>
#include <memory>
#include <string>
#include <utility>

#include "lumen/png_file.h"
#include "tests/cli/dlview_run.h"
#include "tests/support/temporary_folder.h"

namespace {

struct Format {
  const char* driver;
  const char* file;
};

std::string test_name(const testing::TestParamInfo<Format>& info) {
  std::string name;
  for (const char* c = info.param.driver; *c != '\0'; ++c) {
    if (std::isalnum(static_cast<unsigned char>(*c)) != 0) name += *c;
  }
  return name;
}

/// Writes one closed line around (0,0)-(10,10).
void write_square(const Format& format, const std::string& path) {
  GDALAllRegister();
  GDALDriver* driver = GetGDALDriverManager()->GetDriverByName(format.driver);
  ASSERT_NE(driver, nullptr);
  GDALDataset* data = driver->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr);
  ASSERT_NE(data, nullptr);
  OGRSpatialReference degrees;
  degrees.importFromEPSG(4326);
  degrees.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
  OGRLayer* layer = data->CreateLayer("square", &degrees, wkbLineString, nullptr);
  ASSERT_NE(layer, nullptr);
  OGRLineString line;
  for (const auto& [x, y] : {std::pair{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}}) {
    line.addPoint(x, y);
  }
  const std::unique_ptr<OGRFeature> feature(new OGRFeature(layer->GetLayerDefn()));
  feature->SetGeometry(&line);
  ASSERT_EQ(layer->CreateFeature(feature.get()), OGRERR_NONE);
  GDALClose(GDALDataset::ToHandle(data));
}

class Formats : public testing::TestWithParam<Format> {};

TEST_P(Formats, AreDrawn) {
  const TemporaryFolder folder;
  const std::string input = folder.path(GetParam().file);
  write_square(GetParam(), input);
  const std::string output = folder.path("out.png");
  const DlviewRun run({"render", input, "-o", output, "--window", "-5", "-5", "15", "15", "--size",
                       "201x201", "--aliased", "--line-color", "#FF0000", "--background", "white"});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.err, "");
  const lumen::Picture picture = lumen::read_png(output);
  EXPECT_EQ(picture.pixel(50, 100).word, 0x00FF0000U);
  EXPECT_EQ(picture.pixel(150, 100).word, 0x00FF0000U);
  EXPECT_EQ(picture.pixel(100, 50).word, 0x00FF0000U);
  EXPECT_EQ(picture.pixel(100, 150).word, 0x00FF0000U);
  EXPECT_EQ(picture.pixel(100, 100).word, 0x00FFFFFFU);
  EXPECT_EQ(picture.pixel(10, 100).word, 0x00FFFFFFU);
}

INSTANTIATE_TEST_SUITE_P(Ogr, Formats,
                         testing::Values(Format{"GeoJSON", "a.geojson"}, Format{"GPKG", "a.gpkg"},
                                         Format{"ESRI Shapefile", "a.shp"},
                                         Format{"FlatGeobuf", "a.fgb"}, Format{"KML", "a.kml"},
                                         Format{"DXF", "a.dxf"}, Format{"GML", "a.gml"},
                                         Format{"SQLite", "a.sqlite"}),
                         test_name);

}  // namespace
