#include "importers/ogr/data_set.h"

#include <ogrsf_frmts.h>

#include <algorithm>
#include <string_view>

namespace importers::ogr {

DataSet open(const std::string& path) {
  constexpr unsigned flags = GDAL_OF_VECTOR | GDAL_OF_READONLY;
  return DataSet(GDALDataset::Open(path.c_str(), flags));
}

std::optional<std::string> choose_layers(GDALDataset& data_set, const ReadOptions& options,
                                         std::vector<OGRLayer*>& layers) {
  if (options.layers.empty()) {
    for (OGRLayer* layer : data_set.GetLayers()) layers.push_back(layer);
  }
  for (const std::string& name : options.layers) {
    OGRLayer* layer = data_set.GetLayerByName(name.c_str());
    if (layer == nullptr) return name;
    if (std::find(layers.begin(), layers.end(), layer) == layers.end()) layers.push_back(layer);
  }
  return {};
}

std::string layer_names(GDALDataset& data_set) {
  constexpr int most_names = 12;
  std::string names;
  for (int i = 0; i < data_set.GetLayerCount(); ++i) {
    if (i > 0) names += ", ";
    if (i == most_names) return names + "...";
    names += "'" + std::string(data_set.GetLayer(i)->GetName()) + "'";
  }
  return names;
}

bool is_spherical(GDALDataset& data_set) {
  const GDALDriver* driver = data_set.GetDriver();
  return driver != nullptr && std::string_view(driver->GetDescription()) == "TopoJSON";
}

bool is_geographic(GDALDataset& data_set, OGRLayer& layer) {
  const OGRSpatialReference* reference = layer.GetSpatialRef();
  return reference != nullptr ? reference->IsGeographic() != 0 : is_spherical(data_set);
}

}  // namespace importers::ogr
