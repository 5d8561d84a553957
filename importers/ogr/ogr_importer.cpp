// Reads every vector format that GDAL knows.

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include "importers/build.h"
#include "importers/importer.h"
#include "importers/ogr/data_set.h"
#include "importers/ogr/error_collector.h"
#include "importers/ogr/geometry_reader.h"

namespace importers::ogr {

namespace {

class OgrImporter final : public Importer {
 public:
  OgrImporter() { GDALAllRegister(); }

  [[nodiscard]] const char* name() const override { return "ogr"; }
  [[nodiscard]] const char* description() const override {
    return "GeoJSON, TopoJSON, GeoPackage, Shapefile, FlatGeobuf, KML, DXF and whatever else "
           "GDAL reads as vectors";
  }
  [[nodiscard]] Match can_read(const std::string& path) const override;
  [[nodiscard]] std::string read(const std::string& path, const ReadOptions& options,
                                 Drawing& drawing) const override;
};

/// Tells now and then how far reading is.
class ProgressTeller {
 public:
  ProgressTeller(const ReadOptions& options, const std::vector<OGRLayer*>& layers)
      : m_options(options) {
    if (!options.progress) return;
    for (OGRLayer* layer : layers) {
      // Not counted where counting means reading.
      if (layer->TestCapability(OLCFastFeatureCount) == 0) {
        m_total_known = false;
        return;
      }
      m_total += static_cast<double>(layer->GetFeatureCount(FALSE));
    }
  }

  /// False when reading is to end.
  bool next_feature() {
    constexpr std::size_t features_between_calls = 256;
    if (!m_options.progress || ++m_features % features_between_calls != 0) return true;
    Progress progress{m_features, {}};
    if (m_total_known && m_total > 0) {
      progress.fraction = static_cast<double>(m_features) / m_total;
    }
    return m_options.progress(progress);
  }

 private:
  const ReadOptions& m_options;
  std::size_t m_features = 0;
  double m_total = 0;
  bool m_total_known = true;
};

/// False when cancelled.
bool read_layer(GDALDataset& data_set, OGRLayer& layer, Sketch& sketch, ProgressTeller& progress) {
  GeometryReader reader(sketch, is_spherical(data_set));
  sketch.begin_layer(layer.GetName(), is_geographic(data_set, layer));
  layer.ResetReading();
  while (const OGRFeatureUniquePtr feature{layer.GetNextFeature()}) {
    if (!progress.next_feature()) return false;
    sketch.begin_feature();
    const OGRGeometry* geometry = feature->GetGeometryRef();
    if (geometry != nullptr) reader.add(*geometry);
    sketch.end_feature();
  }
  return true;
}

std::string failure(const std::string& path, const std::string& reason) {
  return "cannot read '" + path + "': " + reason;
}

std::string broken(const std::string& path, const ErrorCollector& errors) {
  const std::string reason = errors.first_error().empty()
                                 ? "it is damaged"
                                 : "GDAL reports \"" + errors.first_error() + "\"";
  return failure(path, reason + "; check that the file is complete");
}

Match OgrImporter::can_read(const std::string& path) const {
  const ErrorCollector errors;
  GDALDriverH driver = GDALIdentifyDriverEx(path.c_str(), GDAL_OF_VECTOR, nullptr, nullptr);
  return driver != nullptr ? Match::general : Match::none;
}

std::string OgrImporter::read(const std::string& path, const ReadOptions& options,
                              Drawing& drawing) const {
  const ErrorCollector errors;
  const DataSet data_set = open(path);
  if (data_set == nullptr) return broken(path, errors);

  std::vector<OGRLayer*> layers;
  const std::optional<std::string> missing = choose_layers(*data_set, options, layers);
  if (missing) {
    return failure(path,
                   "it has no layer '" + *missing + "'; choose from " + layer_names(*data_set));
  }
  Sketch sketch;
  ProgressTeller progress(options, layers);
  for (OGRLayer* layer : layers) {
    if (!read_layer(*data_set, *layer, sketch, progress)) {
      return failure(path, "reading was cancelled");
    }
  }
  if (!errors.first_error().empty()) return broken(path, errors);
  const std::string problem = build(sketch, options, drawing);
  return problem.empty() ? problem : "the drawing '" + path + "' " + problem;
}

}  // namespace

}  // namespace importers::ogr

DISPLAYLIST_IMPORTER_MODULE(importers::ogr::OgrImporter)
